#pragma once

#include "host/object.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

class eCamera : public eElement<host::CameraObject> {
public:
    eCamera(eHold& sceneHold, std::size_t place, const eCameraObject& camera)
        : eElement(sceneHold, place), hold(sceneHold), data(camera), targetDistance(camera.targetDistance) {}

    std::uint32_t SuperClassID() const override { return host::kCameraSuperClass; }
    host::ClassId ClassID() const override { return {0x1001, 0}; }

    // With a target node the distance is that of the two nodes at the time, else that of the document.
    void UpdateTargDistance(host::TimeValue t, host::INode& node) override;
    host::CameraState EvalCameraState(host::TimeValue) const override;

private:
    eHold& hold;
    const eCameraObject& data;
    float targetDistance;
};

}  // namespace standalone

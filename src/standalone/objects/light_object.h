#pragma once

#include "host/object.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;

class eLight : public eElement<host::LightObject> {
public:
    eLight(eScene& scene, std::size_t place, const eLightObject& light);

    std::uint32_t SuperClassID() const override { return host::kLightSuperClass; }
    host::ClassId ClassID() const override { return {0x1011, 0}; }

    host::LightState EvalLightState(host::TimeValue) const override;
    host::LightDesc* CreateLightDesc(host::INode& node) override;

private:
    eScene& scene;
    const eLightObject& data;
};

}  // namespace standalone

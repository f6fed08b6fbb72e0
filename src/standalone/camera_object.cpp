#include "standalone/camera_object.h"

#include <numbers>

#include "host/node.h"

namespace standalone {

void eCamera::UpdateTargDistance(host::TimeValue t, host::INode& node) {
    if (const host::INode* target = node.GetTarget()) {
        hold.Record([this, before = targetDistance] { targetDistance = before; });
        targetDistance = Length(target->GetNodeTM(t).GetTrans() - node.GetNodeTM(t).GetTrans());
    }
}

host::CameraState eCamera::EvalCameraState(host::TimeValue) const {
    return {data.fov * std::numbers::pi_v<float> / 180, targetDistance};
}

}  // namespace standalone

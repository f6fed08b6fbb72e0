#include "standalone/objects/camera_object.h"

#include <numbers>

#include "host/node.h"

namespace standalone {

void eCamera::UpdateTargDistance(host::TimeValue t, host::INode& node) {
    hold.Record([this, before = targetDistance] { targetDistance = before; });
    const host::INode* target = node.GetTarget();
    targetDistance = target != nullptr
                         ? Length(target->GetNodeTM(t).GetTrans() - node.GetNodeTM(t).GetTrans())
                         : data.targetDistance;
}

host::CameraState eCamera::EvalCameraState(host::TimeValue) const {
    return {data.fov * std::numbers::pi_v<float> / 180, targetDistance};
}

}  // namespace standalone

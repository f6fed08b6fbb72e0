#include "verify/verify_previews.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "base/number_text.h"
#include "verify/written_blocks.h"
#include "written/exact_space.h"

namespace verify {

namespace {

using inspect::eSdlBlock;

constexpr host::TimeValue kTime = 0;
constexpr double kDegrees = 180 / std::numbers::pi;

eVector Cross(const eVector& a, const eVector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// How far a camera is turned about its axis of view from level, in degrees. What looks straight down or up is
// measured against the x axis.
double RollOf(const host::DMatrix3& camera) {
    const eVector& axis = camera.rows[2];
    const bool isUpright = std::hypot(axis[0], axis[1]) < 1e-3 * Length(axis);
    const eVector level = isUpright ? eVector{1, 0, 0} : Cross(axis, {0, 0, 1});
    const double degrees = AngleBetween(level, camera.rows[0]);
    return Dot(Cross(level, camera.rows[0]), axis) < 0 ? -degrees : degrees;
}

// A full turn more or less is none.
double AngleDistance(double a, double b) {
    return std::fabs(std::remainder(a - b, 360));
}

// The blocks that a light of the type has.
struct eLightForm {
    const char* type;
    bool hasPosition;
    bool hasDirection;
};

const eLightForm* FormOf(int type) {
    static constexpr eLightForm kForms[] = {
        {"point", true, false}, {"spot", true, true}, {"directional", false, true}, {"point", true, false}};
    return type >= 0 && type < 4 ? &kForms[type] : nullptr;
}

class ePreviewComparison {
public:
    ePreviewComparison(const eVerifiedScene& scene, const eSceneModel& model, host::INode& group,
                       const eTolerances& tolerances, eFindings& findings)
        : scene_(scene),
          group_(group),
          toRoot_(host::ExactInverse(NoScale(model.root->GetNodeTM(kTime)))),
          bounds_(tolerances),
          findings_(findings) {}

    void Compare(const eSdlBlock& written) {
        const std::vector<host::INode*> cameras = MembersOf<host::CameraObject>();
        const std::vector<host::INode*> lights = MembersOf<host::LightObject>();
        const eSdlBlock* const camera = written.Find("camera");
        if ((camera == nullptr) != cameras.empty()) {
            findings_.Add("preview camera", 0, group_.GetName());
        } else if (camera != nullptr) {
            CompareCamera(*cameras.front(), *camera);
        }
        const eSdlBlock* const list = written.Find("lights");
        const std::vector<const eSdlBlock*> found =
            list != nullptr ? list->Blocks() : std::vector<const eSdlBlock*>();
        if (found.size() != lights.size()) {
            return findings_.Add("preview lights", 0, group_.GetName());
        }
        for (std::size_t i = 0; i < found.size(); ++i) {
            CompareLight(*lights[i], *found[i]);
        }
    }

private:
    // The parts of the group that show an object of the class.
    template <class ObjectClass>
    std::vector<host::INode*> MembersOf() const {
        std::vector<host::INode*> members;
        for (int i = 0; i < group_.NumberOfChildren(); ++i) {
            host::INode* const child = group_.GetChildNode(i);
            if (child->IsGroupMember() && ObjectOf<ObjectClass>(*child) != nullptr) {
                members.push_back(child);
            }
        }
        return members;
    }
    // Until the next evaluation.
    template <class ObjectClass>
    static ObjectClass* ObjectOf(host::INode& node) {
        return dynamic_cast<ObjectClass*>(node.EvalWorldState(kTime).obj);
    }

    // In the engine's space of the model, in scene units.
    host::DMatrix3 InModel(const host::INode& node) const {
        host::DMatrix3 place = Product(Exact(node.GetNodeTM(kTime)), toRoot_);
        for (eVector& row : place.rows) {
            row[1] = -row[1];
        }
        return place;
    }
    eVector PlaceOf(const host::INode& node) const {
        eVector place = InModel(node).rows[3];
        for (double& coordinate : place) {
            coordinate *= scene_.MetresPerUnit();
        }
        return place;
    }

    void CompareCamera(host::INode& node, const eSdlBlock& written) {
        host::CameraObject& camera = *ObjectOf<host::CameraObject>(node);
        camera.UpdateTargDistance(kTime, node);
        const double fov = camera.EvalCameraState(kTime).fov * kDegrees;
        ComparePoint("camera position", node, PlaceOf(node), NumbersIn(written, "origin"));
        ComparePoint("camera position", node,
                     node.GetTarget() != nullptr ? PlaceOf(*node.GetTarget()) : eVector{},
                     NumbersIn(written, "lookat"));
        CompareAngle("camera angle", node, fov, NumbersIn(written, "fov"));
        std::vector<double> horizon = NumbersIn(written, "horizon");
        horizon.resize(1);  // level without it
        CompareAngle("camera angle", node, RollOf(InModel(node)), horizon);
    }

    void CompareLight(host::INode& node, const eSdlBlock& written) {
        const host::LightState state = ObjectOf<host::LightObject>(node)->EvalLightState(kTime);
        const eLightForm* const form = FormOf(state.type);
        if (form == nullptr) {
            return;
        }
        if (written.ValueOf("type") != form->type) {
            return findings_.Add("light kind", 0, node.GetName());
        }
        if (form->hasPosition) {
            ComparePoint("light position", node, PlaceOf(node), NumbersIn(written, "position"));
        }
        if (form->hasDirection) {
            CompareDirection(node, NumbersIn(written, "direction"));
        }
        if (static_cast<host::LightType>(state.type) == host::LightType::Spot) {
            CompareAngle("light number", node, state.hotsize, NumbersIn(written, "angle"));
            CompareAngle("light number", node, state.fallsize, NumbersIn(written, "angle0"));
        }
        if (form->hasPosition) {
            CompareRange(node, state, NumbersIn(written, "range"));
        }
        // The first directional light of a group tells the scene's ambient colour.
        if (static_cast<host::LightType>(state.type) == host::LightType::Directional && isAmbientPending_) {
            isAmbientPending_ = false;
            CompareColor(node, scene_.host.GetAmbient(kTime), written, "ambient", 0xff000000);
        }
        CompareColor(node, state.color, written, "diffuse", 0xffffffff);
    }

    void ComparePoint(const char* kind, const host::INode& node, const eVector& wanted,
                      const std::vector<double>& found) {
        const double metres =
            found.size() == 3 ? LargestDifference(wanted, {found[0], found[1], found[2]}) : 1e30;
        if (metres > bounds_.metres + TextSlack(Length(wanted))) {
            findings_.Add(kind, metres, node.GetName());
        }
    }

    void CompareAngle(const char* kind, const host::INode& node, double wanted,
                      const std::vector<double>& found) {
        const double degrees = found.size() == 1 ? AngleDistance(wanted, found[0]) : 180;
        if (degrees > bounds_.degrees) {
            findings_.Add(kind, degrees, node.GetName());
        }
    }

    // Against the axis of view; its length says nothing.
    void CompareDirection(const host::INode& node, const std::vector<double>& found) {
        const eVector axis = InModel(node).rows[2];
        const double degrees =
            found.size() == 3 ? AngleBetween({-axis[0], -axis[1], -axis[2]}, {found[0], found[1], found[2]})
                              : 180;
        if (degrees > bounds_.degrees) {
            findings_.Add("light direction", degrees, node.GetName());
        }
    }

    // In scene units, as the host has it.
    void CompareRange(const host::INode& node, const host::LightState& state,
                      const std::vector<double>& found) {
        const bool isThere = found.size() == 1;
        if (isThere != state.useAtten ||
            (isThere && std::fabs(found[0] - state.attenEnd) > TextSlack(state.attenEnd))) {
            findings_.Add("light number", 0, node.GetName());
        }
    }

    // `without`: the colour, packed, that no block stands for.
    void CompareColor(const host::INode& node, const host::Color& wanted, const eSdlBlock& written,
                      const char* name, std::uint32_t without) {
        const bool isThere = written.Find(name) != nullptr;
        const std::uint32_t packed =
            isThere ? static_cast<std::uint32_t>(ReadInteger(written.ValueOf(name))) : without;
        double largest = 0;
        int shift = 16;
        for (const float channel : {wanted.r, wanted.g, wanted.b}) {
            largest = std::max(largest, std::fabs(std::clamp(double{channel}, 0.0, 1.0) * 255 -
                                                  static_cast<double>(packed >> shift & 0xff)));
            shift -= 8;
        }
        if (largest > 1) {
            findings_.Add("light colour", largest, node.GetName());
        }
    }

    const eVerifiedScene& scene_;
    host::INode& group_;
    host::DMatrix3 toRoot_;
    eTolerances bounds_;
    eFindings& findings_;
    bool isAmbientPending_ = true;
};

}  // namespace

void ComparePreviews(const eVerifiedScene& scene, const eSceneModel& model,
                     const std::vector<host::INode*>& nodes, const eWrittenModel& written,
                     const eTolerances& tolerances, eFindings& findings) {
    eWrittenBlocks blocks(written.text.Find("preview"));
    for (host::INode* node : nodes) {
        const eSdlBlock* const block =
            node->IsGroupHead() ? blocks.Take(node->GetName(), "preview", findings) : nullptr;
        if (block != nullptr) {
            ePreviewComparison(scene, model, *node, tolerances, findings).Compare(*block);
        }
    }
    blocks.TellRest("preview", findings);
}

}  // namespace verify

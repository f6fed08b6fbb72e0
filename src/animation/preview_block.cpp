#include "animation/preview_block.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/master_scale.h"
#include "scene/skeleton/matrix_text.h"

namespace {

using host::Color;
using host::Matrix3;
using host::Point3;
using xIo::xSdl::eWriter;

constexpr host::TimeValue kPreviewTime = 0;
constexpr float kDegreesPerRadian = 57.29578F;
constexpr float kNothing = 0.00001F;  // an angle in radians or a colour channel up to this counts as 0

Matrix3 ModelSpace(const Export& run, const host::INode& node) {
    return node.GetNodeTM(kPreviewTime) * Inverse(NoScale(run.model->currentRoot->GetNodeTM(kPreviewTime))) *
           run.mirrorMatrix;
}

void WritePoint(eWriter& writer, const char* word, const Point3& p) {
    writer.BlockBegin().Word(word);
    WritePoint3(writer, p);
    writer.BlockEndLine();
}

void WriteReal(eWriter& writer, const char* word, float value) {
    writer.BlockBegin().Word(word).Real(value).BlockEndLine();
}

bool IsNear(const Color& a, const Color& b) {
    return std::fabs(a.r - b.r) <= kNothing && std::fabs(a.g - b.g) <= kNothing &&
           std::fabs(a.b - b.b) <= kNothing;
}

// A R G B, a byte each, A full. As a decimal number it reads as a negative one.
std::int32_t PackColor(const Color& color) {
    const auto byte = [](float channel) {
        return static_cast<std::uint32_t>(std::clamp(channel, 0.0F, 1.0F) * 255.0F + 0.5F);
    };
    return static_cast<std::int32_t>(0xFF000000U | byte(color.r) << 16 | byte(color.g) << 8 | byte(color.b));
}

void WriteColor(eWriter& writer, const char* word, const Color& color) {
    writer.BlockBegin().Word(word).Integer(PackColor(color)).BlockEndLine();
}

// The roll of a camera about its axis of view, in radians, above -pi and up to pi. Its sign is taken from the
// axis of view, so that it does not depend on where the camera stands. A camera that looks straight down or
// up, where nothing is level, is measured against the x axis.
float RollOf(const Matrix3& camera) {
    constexpr float kHalfTurn = std::numbers::pi_v<float>;
    const Point3 up{0, 0, 1};
    const Point3 axis = host::Normalize(camera.GetRow(2));
    const bool isUpright = 1 - std::fabs(host::DotProd(axis, up)) <= kNothing;
    const Point3 level = host::Normalize(isUpright ? Point3{1, 0, 0} : host::CrossProd(axis, up));
    const Point3 right = host::Normalize(camera.GetRow(0));
    // The cosine alone can't tell angles near 0, and the sine alone none near a half turn.
    const float sine = host::DotProd(host::CrossProd(level, right), axis);
    const float roll = std::atan2(sine, host::DotProd(level, right));
    return kHalfTurn - std::fabs(roll) <= kNothing ? kHalfTurn : roll;
}

void WriteCamera(Export& run, host::INode& node, host::CameraObject& camera) {
    camera.UpdateTargDistance(kPreviewTime, node);
    const host::CameraState state = camera.EvalCameraState(kPreviewTime);
    const Matrix3 place = ModelSpace(run, node);
    const host::INode* target = node.GetTarget();
    const Matrix3 targetPlace = target != nullptr ? ModelSpace(run, *target) : Matrix3();
    const float roll = RollOf(place);
    eWriter& writer = *run.texts->mdlWriter;
    WritePoint(writer, "origin", place.GetTrans() * MasterScale(run));
    WritePoint(writer, "lookat", targetPlace.GetTrans() * MasterScale(run));
    WriteReal(writer, "fov", state.fov * kDegreesPerRadian);
    if (std::fabs(roll) > kNothing) {
        WriteReal(writer, "horizon", roll * kDegreesPerRadian);
    }
}

// Only the first directional light of a group tells the scene's ambient colour.
void WriteAmbient(Export& run, bool& ambientPending) {
    if (!ambientPending) {
        return;
    }
    ambientPending = false;
    const Color ambient = run.host->GetAmbient(kPreviewTime);
    if (!IsNear(ambient, {0, 0, 0})) {
        WriteColor(*run.texts->mdlWriter, "ambient", ambient);
    }
}

// A cone of zero lights nothing in the game, which nobody wants of a light.
void TellEmptyCone(Export& run, const host::INode& node, const host::LightState& state) {
    if (state.fallsize <= 0) {
        TellOfNode(run, eMessageId::PreviewEmptyCone, node);
    }
}

void WriteLight(Export& run, const host::INode& node, const host::LightObject& light, bool& ambientPending) {
    const host::LightState state = light.EvalLightState(kPreviewTime);
    const Matrix3 place = ModelSpace(run, node);
    const Point3 position = place.GetTrans() * MasterScale(run);
    const Point3 direction = -place.GetRow(2) * MasterScale(run);
    eWriter& writer = *run.texts->mdlWriter;
    const auto writeRange = [&] {
        if (state.useAtten) {
            WriteReal(writer, "range", state.attenEnd);
        }
    };
    switch (static_cast<host::LightType>(state.type)) {
        case host::LightType::Omni:
        case host::LightType::Ambient:
            writer.BlockBegin().Word("type point").BlockEndLine();
            WritePoint(writer, "position", position);
            writeRange();
            break;
        case host::LightType::Spot:
            writer.BlockBegin().Word("type spot").BlockEndLine();
            WritePoint(writer, "position", position);
            WritePoint(writer, "direction", direction);
            WriteReal(writer, "angle", state.hotsize);
            WriteReal(writer, "angle0", state.fallsize);
            TellEmptyCone(run, node, state);
            writeRange();
            break;
        case host::LightType::Directional:
            writer.BlockBegin().Word("type directional").BlockEndLine();
            WritePoint(writer, "direction", direction);
            WriteAmbient(run, ambientPending);
            break;
    }
    if (!IsNear(state.color, {1, 1, 1})) {
        WriteColor(writer, "diffuse", state.color);
    }
}

// Calls back for each group member below the node whose object at time 0 is of the class, in child order.
template <class ObjectClass, class Callback>
void ForEachMember(const host::INode& group, Callback callback) {
    for (int i = 0; i < group.NumberOfChildren(); ++i) {
        host::INode& child = *group.GetChildNode(i);
        if (!child.IsGroupMember()) {
            continue;
        }
        if (auto* object = dynamic_cast<ObjectClass*>(child.EvalWorldState(kPreviewTime).obj)) {
            callback(child, *object);
        }
    }
}

void WriteGroupCamera(Export& run, const host::INode& group) {
    bool hasCamera = false;
    ForEachMember<host::CameraObject>(group, [&](host::INode& node, host::CameraObject& camera) {
        if (hasCamera) {
            TellOfNode(run, eMessageId::PreviewSecondCamera, group);
            return;
        }
        hasCamera = true;
        run.texts->mdlWriter->BlockBegin().Word("camera").EndLine();
        WriteCamera(run, node, camera);
        run.texts->mdlWriter->BlockEndLine();
    });
}

void WriteGroupLights(Export& run, const host::INode& group) {
    bool ambientPending = true;
    int lightCount = 0;
    ForEachMember<host::LightObject>(group, [&](host::INode& node, const host::LightObject& light) {
        if (lightCount == 0) {
            run.texts->mdlWriter->BlockBegin().Word("lights").EndLine();
        }
        run.texts->mdlWriter->BlockBegin().String(std::to_string(lightCount)).EndLine();
        WriteLight(run, node, light, ambientPending);
        run.texts->mdlWriter->BlockEndLine();
        ++lightCount;
    });
    if (lightCount > 0) {
        run.texts->mdlWriter->BlockEndLine();
    }
}

}  // namespace

void WritePreviewBlock(Export& run, const std::vector<host::INode*>& previews) {
    eWriter& writer = *run.texts->mdlWriter;
    writer.BlockBegin().String("preview").EndLine();
    for (const host::INode* group : previews) {
        if (!group->IsGroupHead()) {
            TellOfNode(run, eMessageId::PreviewNoGroup, *group);
            continue;
        }
        writer.BlockBegin().String(group->GetName()).EndLine();
        WriteGroupCamera(run, *group);
        WriteGroupLights(run, *group);
        writer.BlockEndLine();
    }
    writer.BlockEndLine();
}

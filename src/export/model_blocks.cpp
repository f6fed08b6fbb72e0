#include "export/model_blocks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_set>

#include "animation/preview_block.h"
#include "base/ansi.h"
#include "base/number_text.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/properties/told_values.h"
#include "scene/run_journal.h"
#include "scene/scene_as_read.h"
#include "volume/obstacle_tags.h"
#include "volume/write_volume.h"
#include "volume/write_zone.h"

namespace {

// Towards 0; what no integer can hold comes to the nearest end, and NaN to 0.
std::int32_t Truncate(float value) {
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    return std::isnan(value) ? 0 : static_cast<std::int32_t>(std::clamp<double>(value, kLowest, kHighest));
}

void WriteSupportPoints(Export& run) {
    if (run.model->supportPoints.empty()) {
        return;
    }
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    writer.BlockBegin().Word("SupportPoints").EndLine();
    for (const auto& [bone, points] : run.model->supportPoints) {
        writer.BlockBegin().Word("bone").String(CleanNodeName(bone->GetName(), true)).EndLine();
        for (const host::Point3& point : points) {
            writer.BlockBegin().Word("point");
            writer.Integer(Truncate(point.x)).Integer(Truncate(point.y)).Integer(Truncate(point.z));
            writer.BlockEndLine();
        }
        writer.BlockEndLine();
    }
    writer.BlockEndLine();
}

void SortByName(std::vector<host::INode*>& nodes) {
    std::ranges::stable_sort(nodes, [](const host::INode* a, const host::INode* b) {
        return CompareNoCase(a->GetName(), b->GetName()) < 0;
    });
}

// The word of a zone's block, null for a zone that its "Obstacle" has switched off.
const char* ZoneTag(Export& run, const host::INode& node) {
    std::string obstacle;
    if (!node.GetUserPropString("Obstacle", obstacle)) {
        return "area";
    }
    if (obstacle.empty()) {
        return "obstacle";
    }
    const std::int32_t number = ReadInteger(obstacle);
    TellOtherNumber(run, node, "Obstacle", static_cast<float>(number));
    return number != 0 ? "obstacle" : nullptr;
}

void WriteZone(Export& run, host::INode& node, const char* tag) {
    run.texts->mdlWriter->BlockBegin().Word(tag).String(CleanNodeName(node.GetName(), true)).EndLine();
    WriteZoneShape(run, node);
    WriteObstacleTags(run, node, false);
    run.texts->mdlWriter->BlockEndLine();
}

// A volume that is a zone too stays a volume.
void NoteZone(Export& run, const host::INode& node, bool isWritten) {
    eNodeNote* const note = NoteOf(run, node);
    if (note == nullptr) {
        return;
    }
    if (note->kind == eNodeKind::Volume) {
        note->isZoneToo = isWritten;
    } else if (!isWritten) {
        note->leftOut = eLeftOut::SwitchedOff;
    }
}

void WriteZones(Export& run, std::vector<host::INode*>& zones) {
    if (zones.empty()) {
        return;
    }
    SortByName(zones);
    run.texts->mdlWriter->BlockBegin().String("zones").EndLine();
    for (host::INode* node : zones) {
        const char* const tag = ZoneTag(run, *node);
        if (tag != nullptr) {
            WriteZone(run, *node, tag);
        }
        NoteZone(run, *node, tag != nullptr);
    }
    run.texts->mdlWriter->BlockEndLine();
}

void TellBodies(Export& run, const std::vector<host::INode*>& bodies) {
    if (!bodies.empty()) {
        Tell(run, eMessageId::ModelsBodies, {.node = host::PathOf(*bodies.front())});
    }
}

void WriteVolumes(Export& run, std::vector<host::INode*>& volumes) {
    if (volumes.empty()) {
        return;
    }
    SortByName(volumes);
    run.texts->defWriter->BlockBegin().String("volumes").EndLine();
    run.texts->mdlWriter->BlockBegin().String("volumes").EndLine();
    std::unordered_set<std::string> keys;
    for (host::INode* node : volumes) {
        const std::string key = CleanNodeName(node->GetName(), true);
        if (keys.insert(key).second) {
            WriteVolume(run, *node);
        } else {
            NoteLeftOut(run, *node, eLeftOut::NameTaken);
            Tell(run, eMessageId::VolumesDuplicateName, {.node = host::PathOf(*node)}, key);
        }
    }
    run.texts->defWriter->BlockEndLine();
    run.texts->mdlWriter->BlockEndLine();
}

}  // namespace

void WriteModelBlocks(Export& run) {
    eExportModel& model = run.scene->models[run.model->modelIndex];
    WriteSupportPoints(run);
    WriteZones(run, model.zones);
    TellBodies(run, model.bodies);
    WriteVolumes(run, model.volumes);
    if (!model.previews.empty()) {
        WritePreviewBlock(run, model.previews);
    }
    if (run.model->landPatch) {
        run.texts->defWriter->BlockBegin().String("land_patch").EndLine().BlockEndLine();
    }
}

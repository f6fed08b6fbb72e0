#include "standalone/loaders/scene_document_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "base/ansi.h"
#include "standalone/loaders/json_parse.h"
#include "standalone/loaders/scene_document_read_context.h"
#include "standalone/loaders/scene_document_read_materials.h"
#include "standalone/loaders/scene_document_read_nodes.h"
#include "standalone/loaders/scene_document_read_objects.h"
#include "standalone/loaders/scene_document_words.h"
#include "standalone/loaders/scene_path.h"

namespace standalone {
namespace {

// False where the rest of the document can't be understood.
bool ReadVersion(eJsonReader& json, eMembers& top) {
    int version = 0;
    if (!top.Required("scene", version)) {
        return top.IsObject();
    }
    if (version != kSceneDocumentVersion) {
        top.LeaveUnread();
        json.Report(top.Find("scene"), "version " + std::to_string(version) +
                                           " of the format is not known, only version " +
                                           std::to_string(kSceneDocumentVersion));
        return false;
    }
    return true;
}

void ReadFile(eMembers& top, const std::string& ownPath, eSceneData& scene) {
    scene.file = ownPath;
    if (top.Optional("file", scene.file)) {
        scene.folder = FolderOf(ownPath);
    }
}

bool HasBitmaps(const eSceneData& scene) {
    return std::any_of(scene.maps.begin(), scene.maps.end(),
                       [](const eMapData& map) { return std::holds_alternative<eBitmapMap>(map.kind); });
}

void ReadRange(eJsonReader& json, eJsonIndex range, eSceneData& scene) {
    std::vector<int> frames;
    if (!json.ExpectCount(range, 2) || !json.Read(range, frames)) {
        return;
    }
    scene.firstFrame = frames[0];
    scene.lastFrame = frames[1];
    if (scene.firstFrame > scene.lastFrame) {
        json.Report(range, "the first frame lies behind the last");
    }
}

void ReadTime(eJsonReader& json, eMembers& top, eSceneData& scene) {
    const eJsonIndex range = top.Find("range");
    if (range != kNoJson) {
        ReadRange(json, range, scene);
    }
    top.Optional("frameTicks", 1, std::numeric_limits<int>::max(), scene.frameTicks);
    // The host counts time in ticks of an int.
    for (const int frame : {scene.firstFrame, scene.lastFrame}) {
        if (std::abs(std::int64_t{frame} * scene.frameTicks) > std::numeric_limits<int>::max()) {
            json.Report(range != kNoJson ? range : top.Object(),
                        "frame " + std::to_string(frame) + " is too far for times in ticks");
        }
    }
}

void ReadSettings(eJsonReader& json, eMembers& top, eSceneData& scene) {
    if (top.Optional("unitMetres", scene.unitMetres) && !(scene.unitMetres > 0)) {
        json.Report(top.Find("unitMetres"), "the number must be above 0");
    }
    ReadTime(json, top, scene);
    top.Optional("ambient", scene.ambient);
}

// One record per member of the section, in its order; the result is false where the section is no object.
template <class Record>
bool CollectIds(eJsonReader& json, eJsonIndex section, std::vector<Record>& records,
                std::unordered_map<std::string_view, int>& ids) {
    if (!json.Expect(section, eJsonKind::Object)) {
        return false;
    }
    records.reserve(json.Tree().Count(section));
    for (const eJsonIndex member : json.Tree().Children(section)) {
        ids.try_emplace(json.Tree().Key(member), static_cast<int>(records.size()));
        json.ReadKey(member, records.emplace_back().id);
        if (json.Tree().Key(member).empty()) {
            json.Report(member, "an id must not be empty");
        }
    }
    return true;
}

void ReadSelectionSets(eDocumentContext& context, eJsonIndex list) {
    if (!context.json.Expect(list, eJsonKind::Array)) {
        return;
    }
    for (const eJsonIndex element : context.json.Tree().Children(list)) {
        eSelectionSet& set = context.scene.selectionSets.emplace_back();
        eMembers members(context.json, element);
        members.Optional("name", set.name);
        if (const eJsonIndex nodes = members.Demand("nodes"); nodes != kNoJson) {
            ReadNodeReferences(context, nodes, set.nodes);
        }
    }
}

// Names and ids first, so that what refers to them may stand anywhere in the document.
void ReadSections(eDocumentContext& context, eMembers& top) {
    const eJsonIndex materials = top.Find("materials");
    const eJsonIndex objects = top.Find("objects");
    const eJsonIndex nodes = top.Find("nodes");
    const eJsonIndex selectionSets = top.Find("selectionSets");
    const bool hasMaterials =
        materials != kNoJson &&
        CollectIds(context.json, materials, context.scene.materials, context.materialIds);
    const bool hasObjects =
        objects != kNoJson && CollectIds(context.json, objects, context.scene.objects, context.objectIds);
    if (nodes != kNoJson) {
        CollectNodes(context, nodes);
    }
    if (hasMaterials) {
        ReadMaterials(context, materials);
    }
    if (hasObjects) {
        std::size_t object = 0;
        for (const eJsonIndex value : context.json.Tree().Children(objects)) {
            ReadObject(context, value, context.scene.objects[object++]);
        }
    }
    ReadNodes(context);
    if (selectionSets != kNoJson) {
        ReadSelectionSets(context, selectionSets);
    }
}

void ReadDocument(eDocumentContext& context, const std::string& ownPath) {
    eMembers top(context.json, kJsonRoot);
    if (!ReadVersion(context.json, top)) {
        return;
    }
    ReadFile(top, ownPath, context.scene);
    ReadSettings(context.json, top, context.scene);
    ReadSections(context, top);
}

}  // namespace

eLoadResult ReadSceneDocument(std::string_view text, const std::string& path) {
    eLoadResult result;
    eJsonTree tree;
    if (std::optional<eProblem> problem = ParseJson(text, tree)) {
        result.problems.push_back(std::move(*problem));
        return result;
    }
    eDocumentContext context(tree);
    const eFromUtf8 ownPath = FromUtf8(path);
    ReadDocument(context, ownPath.text);
    result.problems = context.json.Problems();
    if (result.problems.empty()) {
        if (!ownPath.IsExact() && HasBitmaps(context.scene)) {
            result.warnings.push_back("the path " + path +
                                      " holds characters outside code page 1251: bitmap files beside the "
                                      "document can't be found");
        }
        result.scene = std::move(context.scene);
    }
    return result;
}

}  // namespace standalone

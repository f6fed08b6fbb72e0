#include "standalone/loaders/scene_document/scene_document_reader.h"

#include <algorithm>
#include <limits>

#include "standalone/data/scene_path.h"
#include "standalone/loaders/json/json_parse.h"
#include "standalone/loaders/scene_document/scene_document_read_context.h"
#include "standalone/loaders/scene_document/scene_document_read_materials.h"
#include "standalone/loaders/scene_document/scene_document_read_nodes.h"
#include "standalone/loaders/scene_document/scene_document_read_objects.h"
#include "standalone/loaders/scene_document/scene_document_words.h"

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
        json.Report(top.Find("scene"), eMessageId::DocumentVersion, version, kSceneDocumentVersion);
        return false;
    }
    return true;
}

void ReadFile(eMembers& top, const std::string& ownPath, eSceneData& scene) {
    scene.file = ownPath;
    if (top.OptionalPath("file", scene.file)) {
        scene.folder = FolderOf(ownPath);
    }
}

void ReadRange(eJsonReader& json, eJsonIndex range, eSceneData& scene) {
    std::vector<int> frames;
    if (!json.ExpectCount(range, 2) || !json.Read(range, frames)) {
        return;
    }
    scene.firstFrame = frames[0];
    scene.lastFrame = frames[1];
    if (scene.firstFrame > scene.lastFrame) {
        json.Report(range, eMessageId::DocumentFrameOrder);
    }
}

void ReadTime(eDocumentContext& context, eMembers& top) {
    eSceneData& scene = context.scene;
    top.Optional("frameTicks", 1, std::numeric_limits<host::TimeValue>::max(), scene.frameTicks);
    const eJsonIndex range = top.Find("range");
    if (range != kNoJson) {
        ReadRange(context.json, range, scene);
    }
    const eJsonIndex place = range != kNoJson ? range : top.Object();
    CheckFrame(context, place, scene.firstFrame);
    CheckFrame(context, place, scene.lastFrame);
}

void ReadSettings(eDocumentContext& context, eMembers& top) {
    if (top.Optional("unitMetres", context.scene.unitMetres) && !(context.scene.unitMetres > 0)) {
        context.json.Report(top.Find("unitMetres"), eMessageId::DocumentAboveZero);
    }
    ReadTime(context, top);
    top.Optional("ambient", context.scene.ambient);
}

// One record per member of the section, in its order.
template <class Record>
void CollectIds(eJsonReader& json, const eJsonChildren& section, std::vector<Record>& records,
                std::unordered_map<std::string_view, int>& ids) {
    for (const eJsonIndex member : section) {
        ids.try_emplace(json.Tree().Key(member), static_cast<int>(records.size()));
        json.ReadKey(member, records.emplace_back().id);
        if (json.Tree().Key(member).empty()) {
            json.Report(member, eMessageId::DocumentEmptyId);
        }
    }
}

void ReadSelectionSets(eDocumentContext& context, eJsonIndex list) {
    for (const eJsonIndex element : context.json.Elements(list)) {
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
    const eJsonChildren materials = context.json.Entries(top.Find("materials"));
    const eJsonChildren objects = context.json.Entries(top.Find("objects"));
    CollectIds(context.json, materials, context.scene.materials, context.materialIds);
    CollectIds(context.json, objects, context.scene.objects, context.objectIds);
    if (const eJsonIndex nodes = top.Find("nodes"); nodes != kNoJson) {
        CollectNodes(context, nodes);
    }

    ReadMaterials(context, materials);
    std::size_t object = 0;
    for (const eJsonIndex value : objects) {
        ReadObject(context, value, context.scene.objects[object++]);
    }
    ReadNodes(context);
    ReadSelectionSets(context, top.Find("selectionSets"));
}

void ReadDocument(eDocumentContext& context, const std::string& ownPath) {
    eMembers top(context.json, kJsonRoot);
    if (!ReadVersion(context.json, top)) {
        return;
    }
    ReadFile(top, ownPath, context.scene);
    ReadSettings(context, top);
    ReadSections(context, top);
}

}  // namespace

eLoadResult ReadSceneDocument(std::string_view text, const std::string& path) {
    eLoadResult result;
    eJsonTree tree;
    if (std::optional<eLoadMessage> problem = ParseJson(text, tree)) {
        result.problems.push_back(std::move(*problem));
        return result;
    }
    eDocumentContext context(tree);
    ReadDocument(context, PathTextOf(path));
    result.problems = context.json.Problems();
    if (result.problems.empty()) {
        result.scene = std::move(context.scene);
    }
    return result;
}

}  // namespace standalone

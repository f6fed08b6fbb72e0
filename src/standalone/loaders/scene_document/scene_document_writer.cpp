#include "standalone/loaders/scene_document/scene_document_writer.h"

#include <algorithm>

#include "standalone/data/scene_path.h"
#include "standalone/loaders/json/json_layout.h"
#include "standalone/loaders/scene_document/scene_document_words.h"
#include "standalone/loaders/scene_document/scene_document_write_context.h"
#include "standalone/loaders/scene_document/scene_document_write_materials.h"
#include "standalone/loaders/scene_document/scene_document_write_nodes.h"
#include "standalone/loaders/scene_document/scene_document_write_objects.h"

namespace standalone {
namespace {

// What bitmap files that lie beside the scene need in front to be found from the document.
std::string BitmapFolder(const eSceneData& scene, const std::string& documentPath) {
    const std::string folder = scene.folder.empty() ? FolderOf(scene.file) : scene.folder;
    return folder.empty() || folder == FolderOf(documentPath) ? std::string() : folder + '/';
}

void WriteSettings(eDocumentOutput& output, const std::string& documentPath) {
    const eSceneData& scene = output.scene;
    const eSceneData standard;
    eJsonWriter& json = output.json;
    json.Member("scene", kSceneDocumentVersion);
    json.MemberUnless(documentPath, "file", scene.file);
    json.MemberUnless(standard.unitMetres, "unitMetres", scene.unitMetres);
    json.MemberUnless(standard.frameTicks, "frameTicks", scene.frameTicks);
    if (scene.firstFrame != standard.firstFrame || scene.lastFrame != standard.lastFrame) {
        json.Member("range", std::vector<int>{scene.firstFrame, scene.lastFrame});
    }
    json.MemberUnless(standard.ambient, "ambient", scene.ambient);
}

void WriteSelectionSets(eDocumentOutput& output) {
    if (output.scene.selectionSets.empty()) {
        return;
    }
    output.json.Key("selectionSets");
    output.json.BeginList();
    for (const eSelectionSet& set : output.scene.selectionSets) {
        output.json.BeginObject();
        output.json.MemberUnless(std::string(), "name", set.name);
        output.json.Key("nodes");
        WriteNodeReferences(output, set.nodes);
        output.json.EndObject();
    }
    output.json.EndList();
}

void WriteSharedObjects(eDocumentOutput& output) {
    const std::vector<std::string>& ids = output.objectIds;
    if (std::all_of(ids.begin(), ids.end(), [](const std::string& id) { return id.empty(); })) {
        return;
    }
    output.json.Key("objects");
    output.json.BeginObject();
    for (std::size_t object = 0; object < ids.size(); ++object) {
        if (!ids[object].empty()) {
            output.json.Key(ids[object]);
            WriteObject(output, output.scene.objects[object]);
        }
    }
    output.json.EndObject();
}

}  // namespace

eWrittenDocument WriteSceneDocument(const eSceneData& scene, const std::string& path) {
    const std::string documentPath = PathTextOf(path);
    eDocumentOutput output{scene};
    output.bitmapFolder = BitmapFolder(scene, documentPath);
    SettleNames(output);

    output.json.BeginObject();
    WriteSettings(output, documentPath);
    WriteSelectionSets(output);
    WriteMaterials(output);
    WriteSharedObjects(output);
    if (!scene.roots.empty()) {
        WriteNodes(output);
    }
    output.json.EndObject();
    if (output.json.HasLostNumbers()) {
        output.warnings.push_back(MakeLoadMessage("", eMessageId::DocumentLostNumber));
    }
    return {LayOutJson(output.json.Text()), std::move(output.warnings)};
}

}  // namespace standalone

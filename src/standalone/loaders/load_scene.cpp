#include "standalone/loaders/load_scene.h"

#include "platform/path_lookup.h"
#include "standalone/data/as_model.h"
#include "standalone/data/file_content.h"
#include "standalone/loaders/gltf/gltf_importer.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_format.h"

namespace standalone {

namespace {

eLoadResult ReadDocument(const std::string& content, const std::string& path, const std::string& asModel) {
    eLoadResult result = ReadSceneDocument(content, path);
    if (result.scene && !asModel.empty()) {
        GatherAsModel(*result.scene, asModel);
    }
    return result;
}

}  // namespace

eLoadResult LoadScene(const std::string& path, const eLoadOptions& options) {
    eLoadResult result;
    std::string content;
    const platform::eIoStatus status = ReadFileContent(path, content);
    if (!status.IsOk()) {
        result.problems.push_back({"", "the file can't be read: " + status.Text()});
        return result;
    }
    const std::string fullPath = platform::DiskPath(path, platform::ePathForm::Native);
    switch (SceneFormatOf(content)) {
        case eSceneFormat::Document:
            return ReadDocument(content, fullPath, options.asModel);
        case eSceneFormat::Gltf:
            return ImportGltf(fullPath, content, {options.fps, options.asModel});
        case eSceneFormat::Unknown:
            break;
    }
    result.problems.push_back({"", "the file is neither a scene document nor a glTF file"});
    return result;
}

}  // namespace standalone

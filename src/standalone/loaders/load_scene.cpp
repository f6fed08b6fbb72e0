#include "standalone/loaders/load_scene.h"

#include <algorithm>
#include <iterator>

#include "platform/path_lookup.h"
#include "standalone/data/as_model.h"
#include "standalone/data/file_content.h"
#include "standalone/loaders/assimp/assimp_importer.h"
#include "standalone/loaders/gltf/gltf_importer.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_format.h"
#include "standalone/loaders/shared/fit_meshes.h"
#include "standalone/loaders/shared/property_sidecar.h"

namespace standalone {

namespace {

eLoadResult ReadDocument(std::string_view content, const std::string& path, const std::string& asModel) {
    eLoadResult result = ReadSceneDocument(content, path);
    if (result.scene && !asModel.empty()) {
        GatherAsModel(*result.scene, asModel);
    }
    return result;
}

// The properties that lie beside the scene, or that were asked for.
void ReadSidecar(const std::string& scenePath, const std::string& asked, eLoadResult& result) {
    std::string text;
    const platform::eIoStatus status =
        ReadFileContent(asked.empty() ? scenePath + ".properties" : asked, text);
    if (!status.IsOk() && !asked.empty()) {
        result.problems.push_back(
            MakeLoadMessage("", eMessageId::ScenePropertiesUnreadable, asked, status.Text()));
        result.scene.reset();
    }
    if (!status.IsOk() || !result.scene) {
        return;
    }
    eImportReport report;
    ApplyPropertySidecar(text, *result.scene, report);
    std::ranges::move(report.TakeWarnings(), std::back_inserter(result.warnings));
    if (report.HasProblems()) {
        result.problems = report.TakeProblems();
        result.scene.reset();
    }
}

// What the engine can't hold is put right in scenes that were made for other ends; a scene document says what
// it means.
void FitToEngine(bool splitMeshes, eLoadResult& result) {
    if (!result.scene) {
        return;
    }
    eImportReport report;
    DropFacesWithoutArea(*result.scene, report);
    if (splitMeshes) {
        PartLargeMeshes(*result.scene, report);
    }
    std::ranges::move(report.TakeWarnings(), std::back_inserter(result.warnings));
}

eLoadResult LoadForeign(const std::string& path, std::string_view content, eSceneFormat format,
                        const eLoadOptions& options) {
    if (format == eSceneFormat::Gltf) {
        return ImportGltf(path, content, {options.fps, options.asModel});
    }
    return ImportWithAssimp(path, content, format, {options.fps, options.asModel, options.texturePaths});
}

// The scene as its file has it. The file's bytes are gone afterwards.
eLoadResult ReadScene(const std::string& path, const std::string& fullPath, const eLoadOptions& options,
                      eSceneFormat& format) {
    eLoadResult result;
    eLargeContent content;
    const platform::eIoStatus status = ReadFileContent(path, content);
    if (!status.IsOk()) {
        result.problems.push_back(MakeLoadMessage("", eMessageId::SceneUnreadable, status.Text()));
        return result;
    }
    format = SceneFormatOf(content.View());
    switch (format) {
        case eSceneFormat::Unknown:
            result.problems.push_back(MakeLoadMessage("", eMessageId::SceneUnknownFormat));
            return result;
        case eSceneFormat::Document:
            return ReadDocument(content.View(), fullPath, options.asModel);
        default:
            return LoadForeign(fullPath, content.View(), format, options);
    }
}

}  // namespace

eLoadResult LoadScene(const std::string& path, const eLoadOptions& options) {
    const std::string fullPath = platform::DiskPath(path, platform::ePathForm::Native);
    eSceneFormat format = eSceneFormat::Unknown;
    eLoadResult result = ReadScene(path, fullPath, options, format);
    if (format == eSceneFormat::Unknown) {
        return result;
    }
    ReadSidecar(fullPath, options.propertiesFile, result);
    if (format != eSceneFormat::Document) {
        FitToEngine(options.splitMeshes, result);
    }
    return result;
}

}  // namespace standalone

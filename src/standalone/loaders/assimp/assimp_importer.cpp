#include "standalone/loaders/assimp/assimp_importer.h"

#include <algorithm>
#include <exception>

#include "base/ansi.h"
#include "standalone/data/as_model.h"
#include "standalone/data/node_order.h"
#include "standalone/data/scene_path.h"
#include "standalone/loaders/assimp/assimp_nodes.h"
#include "standalone/loaders/assimp/assimp_objects.h"
#include "standalone/loaders/assimp/assimp_poses.h"
#include "standalone/loaders/assimp/assimp_space.h"
#include "standalone/loaders/assimp/assimp_takes.h"
#include "standalone/loaders/assimp/assimp_visibility.h"
#include "standalone/loaders/assimp/studio_names.h"
#include "standalone/loaders/assimp/wavefront_names.h"
#include "standalone/loaders/fbx/fbx_own_names.h"
#include "standalone/loaders/shared/bind_pose.h"
#include "standalone/loaders/shared/camera_targets.h"
#include "standalone/loaders/shared/take_declarations.h"

namespace standalone {
namespace {

std::string ExtensionOf(eSceneFormat format) {
    switch (format) {
        case eSceneFormat::Collada:
            return ".dae";
        case eSceneFormat::Wavefront:
            return ".obj";
        case eSceneFormat::Studio:
            return ".3ds";
        default:
            return ".fbx";
    }
}

std::vector<eCameraNode> CamerasOf(const eAssimpImport& import) {
    std::vector<eCameraNode> cameras;
    for (std::size_t node = 0; node < import.nodes.size(); ++node) {
        const eObjectData& object =
            import.scene.objects[static_cast<std::size_t>(import.scene.nodes[node].object)];
        if (std::holds_alternative<eCameraObject>(object.kind)) {
            cameras.push_back({static_cast<int>(node), std::nullopt});
        }
    }
    return cameras;
}

std::vector<eTake> TakesOf(const eAssimpImport& import) {
    std::vector<eTake> takes;
    for (const eAssimpTake& take : import.takes) {
        takes.push_back(
            {take.name, static_cast<int>(takes.size()), take.firstFrame, take.lastFrame, take.moved});
    }
    return takes;
}

// The records of the scene, step by step. Each step may find problems; the next one needs it to have found
// none.
void MakeScene(eAssimpImport& import, const eAssimpOptions& options) {
    import.framesPerSecond = options.fps.value_or(OwnFrameRate(import));
    MakeAssimpNodes(import);
    if (import.report.HasProblems()) {
        return;
    }
    MakeAssimpFrames(import);
    GatherSkinnedMeshes(import);
    LayOutAssimpTakes(import);
    MakeAssimpPoses(import);
    SetAssimpVisibility(import);
    if (import.report.HasProblems()) {
        return;
    }
    MakeAssimpObjects(import);
    if (import.report.HasProblems()) {
        return;
    }
    AddCameraTargets(import.scene, CamerasOf(import));
    const std::vector<eDeclaration> declarations = AddTakeSets(import.scene, TakesOf(import));
    SortNodesDepthFirst(import.scene);
    if (!options.asModel.empty()) {
        GatherAsModel(import.scene, options.asModel);
        MakeNamesUnique(import.scene);
    }
    DeclareTakes(import.scene, declarations);
    NoticeBindPoses(import.scene, import.report);
}

// The file as the library can tell all nodes apart; nothing where it can anyway.
std::optional<std::string> WithOwnNames(eSceneFormat format, std::string_view bytes,
                                        std::optional<eFbxModels>& fbx) {
    if (fbx) {
        return WithOwnFbxNames(bytes, *fbx);
    }
    return format == eSceneFormat::Wavefront ? WithOwnWavefrontNames(bytes) : std::nullopt;
}

void TellSharedNames(eSceneFormat format, std::string_view bytes, eImportReport& report) {
    if (format == eSceneFormat::Studio) {
        for (const std::string& name : SharedStudioNames(bytes)) {
            report.Notice(eMessageId::ImportSharedName, ToUtf8(name));
        }
    }
}

std::optional<eSceneData> ImportScene(const std::string& path, std::string_view bytes, eSceneFormat format,
                                      const eAssimpOptions& options, eImportReport& report) {
    const std::string folder = FolderOf(path);
    std::optional<eFbxModels> fbx;
    if (format == eSceneFormat::Fbx) {
        fbx = ReadFbxModels(bytes).value_or(eFbxModels{});
    }
    const std::optional<std::string> renamed = WithOwnNames(format, bytes, fbx);
    TellSharedNames(format, bytes, report);
    const eAssimpSource source{renamed ? *renamed : bytes, ExtensionOf(format), folder};
    const eAssimpScene opened = options.isTried ? OpenAssimpScene(source) : OpenAssimpSceneUntried(source);
    if (!opened.scene) {
        report.Problem(*opened.problem);
        return std::nullopt;
    }
    eAssimpImport import{*opened.scene, opened.names, fbx ? &*fbx : nullptr, report,
                         path,          folder,       options.texturePaths};
    import.scene.file = PathTextOf(path);
    MakeScene(import, options);
    return report.HasProblems() ? std::nullopt : std::optional(std::move(import.scene));
}

}  // namespace

eLoadResult ImportWithAssimp(const std::string& pathUtf8, std::string_view bytes, eSceneFormat format,
                             const eAssimpOptions& options) {
    eLoadResult result;
    eImportReport report;
    try {
        result.scene = ImportScene(pathUtf8, bytes, format, options, report);
    } catch (const std::exception& failure) {
        // Memory that runs out on a file that really is as large as it says.
        report.Problem("", eMessageId::SceneImportFailed, failure.what());
    }
    result.problems = report.TakeProblems();
    result.warnings = report.TakeWarnings();
    return result;
}

}  // namespace standalone

#include "standalone/loaders/gltf/gltf_importer.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

#include "standalone/data/as_model.h"
#include "standalone/data/node_order.h"
#include "standalone/data/scene_path.h"
#include "standalone/loaders/gltf/file/gltf_buffers.h"
#include "standalone/loaders/gltf/file/gltf_conditions.h"
#include "standalone/loaders/gltf/file/gltf_container.h"
#include "standalone/loaders/gltf/file/gltf_extensions.h"
#include "standalone/loaders/gltf/file/gltf_model.h"
#include "standalone/loaders/gltf/file/gltf_schema.h"
#include "standalone/loaders/gltf/file/gltf_unpack.h"
#include "standalone/loaders/gltf/file/gltf_uri.h"
#include "standalone/loaders/gltf/gltf_animation.h"
#include "standalone/loaders/gltf/gltf_cameras.h"
#include "standalone/loaders/gltf/gltf_mesh_carriers.h"
#include "standalone/loaders/gltf/gltf_node_path.h"
#include "standalone/loaders/gltf/gltf_nodes.h"
#include "standalone/loaders/gltf/gltf_objects.h"
#include "standalone/loaders/gltf/gltf_scene_extras.h"
#include "standalone/loaders/gltf/gltf_visibility.h"
#include "standalone/loaders/json/json_parse.h"
#include "standalone/loaders/shared/bind_pose.h"
#include "standalone/loaders/shared/hide_with_above.h"
#include "standalone/loaders/shared/take_declarations.h"

namespace standalone {
namespace {

constexpr double kDefaultFramesPerSecond = 30;

// Extensions become nested values, which are made by recursion.
constexpr std::size_t kMostJsonLevels = 200;

bool IsTooDeep(const eJsonTree& json) {
    std::vector<eJsonIndex> ends;  // of the arrays and objects around a value
    for (eJsonIndex value = 0; value < json.values.size(); ++value) {
        while (!ends.empty() && ends.back() <= value) {
            ends.pop_back();
        }
        if (json.values[value].end > value + 1) {
            ends.push_back(json.values[value].end);
        }
        if (ends.size() > kMostJsonLevels) {
            return true;
        }
    }
    return false;
}

// The document, checked as far as it can be without its buffers. False, with problems, where it is no use to
// go on.
bool ReadDocument(const eGltfContainer& container, eJsonTree& json, eImportReport& report) {
    if (report.HasProblems()) {
        return false;
    }
    if (const std::optional<eLoadMessage> problem = ParseJson(container.json, json)) {
        report.Problem(*problem);
    } else if (IsTooDeep(json)) {
        report.Problem("", eMessageId::GltfTooDeep);
    } else {
        CheckGltfForm(json, report);
        if (!report.HasProblems()) {
            CheckGltfConditions(json, report);
        }
    }
    return !report.HasProblems();
}

void NoticeExtensions(const tinygltf::Model& model, eImportReport& report) {
    for (const std::string& extension : model.extensionsUsed) {
        if (!IsKnownGltfExtension(extension)) {
            report.CannotShow(ePhrase::LostExtension, extension);
        }
    }
}

std::vector<eTake> TakesOf(const eGltfImport& import, const std::vector<eGltfClip>& clips) {
    std::vector<eTake> takes;
    for (const eGltfClip& clip : clips) {
        const tinygltf::Animation& source = import.model.animations[static_cast<std::size_t>(clip.animation)];
        eTake& take =
            takes.emplace_back(eTake{source.name, clip.animation, clip.firstFrame, clip.lastFrame, {}});
        for (const eGltfChannel& channel : clip.channels) {
            const int record = import.nodes[static_cast<std::size_t>(channel.node)].record;
            if (channel.path == eGltfPath::Visibility) {
                AddHiddenWith(
                    import.scene, record, [](int) { return true; }, take.moved);
            } else {
                take.moved.push_back(record);
            }
        }
    }
    return takes;
}

// The records of the scene, step by step. Each step may find problems; the next one needs it to have found
// none.
void MakeScene(eGltfImport& import, const eGltfOptions& options) {
    const eImportReport& report = import.report;
    const std::optional<double> ownRate =
        ReadGltfFrameRate(import.json, import.hierarchy.scene, import.report);
    const double framesPerSecond = options.fps.value_or(ownRate.value_or(kDefaultFramesPerSecond));
    MakeGltfNodes(import);
    const std::vector<eGltfClip> clips = LayOutGltfClips(import, framesPerSecond);
    ReadGltfSceneExtras(import, clips);
    if (report.HasProblems()) {
        return;
    }
    ReadGltfCurves(import, clips, framesPerSecond);
    MakeGltfKeys(import);
    SetGltfVisibility(import);
    if (report.HasProblems()) {
        return;
    }
    MakeGltfObjects(import);
    if (report.HasProblems()) {
        return;
    }
    AddGltfCameraTargets(import);
    const std::vector<eDeclaration> declarations = AddTakeSets(import.scene, TakesOf(import, clips));
    SortNodesDepthFirst(import.scene);
    if (!options.asModel.empty()) {
        GatherAsModel(import.scene, options.asModel);
        MakeNamesUnique(import.scene);
    }
    DeclareTakes(import.scene, declarations);
    NoticeBindPoses(import.scene, import.report);
}

// A file as it is taken apart; what is read of it shows into its bytes.
struct eOpenGltf {
    eGltfContainer container{};
    eJsonTree json{};
    eGltfBuffers buffers{};
    tinygltf::Model model{};
};

// False, with problems, where the file is no use.
bool ReadFile(std::string_view bytes, const std::string& folder, eOpenGltf& file, eImportReport& report) {
    file.container = OpenGltfContainer(bytes, report);
    if (!ReadDocument(file.container, file.json, report)) {
        return false;
    }
    file.buffers = ReadGltfBuffers(file.json, file.container, folder, report);
    if (!report.HasProblems()) {
        file.model = ReadGltfModel(file.json);
        UnpackGltf(file.json, file.model, file.buffers, report);
    }
    return !report.HasProblems();
}

std::optional<eSceneData> ImportScene(const std::string& path, std::string_view bytes, eOpenGltf& file,
                                      const eGltfOptions& options, eImportReport& report) {
    const std::string folder = FolderOfFile(path);
    if (!ReadFile(bytes, folder, file, report)) {
        return std::nullopt;
    }
    const eGltfAccessors accessors(file.model, file.buffers, report);
    eGltfHierarchy hierarchy = ReadGltfHierarchy(file.model, report);
    if (report.HasProblems()) {
        return std::nullopt;
    }
    TakeOutMeshCarriers(file.model, file.json, hierarchy);
    NoticeExtensions(file.model, report);
    eGltfImport import{file.model, file.json, accessors, hierarchy, report, path, folder};
    import.scene.file = PathTextOf(path);
    MakeScene(import, options);
    return report.HasProblems() ? std::nullopt : std::optional(std::move(import.scene));
}

}  // namespace

eLoadResult ImportGltf(const std::string& pathUtf8, std::string_view bytes, const eGltfOptions& options) {
    eLoadResult result;
    eImportReport report;
    eOpenGltf file;
    try {
        result.scene = ImportScene(pathUtf8, bytes, file, options, report);
    } catch (const std::exception& failure) {
        // Memory that runs out on a file that really is as large as it says.
        report.Problem("", eMessageId::SceneImportFailed, failure.what());
    }
    result.problems = report.TakeProblems();
    NameGltfNodes(file.json, result.problems);
    result.warnings = report.TakeWarnings();
    return result;
}

}  // namespace standalone

#include "standalone/loaders/assimp/assimp_library.h"

#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <algorithm>

#include "platform/trial.h"
#include "standalone/loaders/assimp/assimp_files.h"
#include "standalone/loaders/assimp/assimp_functions.h"
#include "standalone/loaders/assimp/assimp_outlines.h"

namespace standalone {
namespace {

constexpr std::uint64_t kLeastMemory = std::uint64_t{2} << 30;
constexpr std::uint64_t kMemoryPerByte = 32;
constexpr unsigned kMostSeconds = 600;
constexpr std::string_view kNameless = "$ColladaAutoName$";
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

// What the library says where it has no words of its own.
constexpr const char* kSilence = "-";

eLoadMessage ProblemOf(const std::string& words) {
    if (words.find("bad_alloc") != std::string::npos) {
        return MakeLoadMessage("", eMessageId::ImportMemory);
    }
    return words == kSilence ? MakeLoadMessage("", eMessageId::ImportNoScene)
                             : MakeLoadMessage("", eMessageId::ImportLibrary, words);
}

std::optional<eLoadMessage> ProblemOf(const platform::eTrial& trial) {
    switch (trial.end) {
        case platform::eTrialEnd::Done:
            return trial.words.empty() ? std::nullopt : std::optional(ProblemOf(trial.words));
        case platform::eTrialEnd::OutOfMemory:
            return MakeLoadMessage("", eMessageId::ImportMemory);
        case platform::eTrialEnd::OutOfTime:
            return MakeLoadMessage("", eMessageId::ImportTime);
        case platform::eTrialEnd::Died:
            break;
    }
    return MakeLoadMessage("", eMessageId::ImportDied, trial.words);
}

using eProperties = std::unique_ptr<aiPropertyStore, decltype(&aiReleasePropertyStore)>;

eProperties ImportProperties(const eAssimpFunctions& assimp) {
    eProperties properties(assimp.createProperties(), assimp.releaseProperties);
    assimp.setInteger(properties.get(), AI_CONFIG_IMPORT_REMOVE_EMPTY_BONES, 0);
    assimp.setInteger(properties.get(), AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, 1);
    return properties;
}

// The names of the nodes of one reading for those of another reading of the same file.
void TakeNames(const aiNode& node, const aiNode& named, eAssimpScene& scene) {
    if (const std::string_view name = named.mName.C_Str(); !name.starts_with(kNameless)) {
        scene.names.emplace(&node, name);
    }
    for (unsigned child = 0; child < std::min(node.mNumChildren, named.mNumChildren); ++child) {
        TakeNames(*node.mChildren[child], *named.mChildren[child], scene);
    }
}

// Collada means a node by its identifier and shows people its name. The library knows only one of both at a
// time, and what moves or skins a node is found by the identifier.
void ReadColladaNames(const eAssimpFunctions& assimp, const std::string& path, eAssimpFiles& files,
                      eAssimpScene& scene) {
    const eProperties properties = ImportProperties(assimp);
    assimp.setInteger(properties.get(), AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, 1);
    const std::unique_ptr<const aiScene, decltype(assimp.release)> named(
        assimp.importFile(path.c_str(), 0, files.Doors(), properties.get()), assimp.release);
    if (named != nullptr && named->mRootNode != nullptr) {
        TakeNames(*scene.scene->mRootNode, *named->mRootNode, scene);
    }
}

// The scene with its polygons as triangles, or null. The library keeps `files` as long as the scene.
const aiScene* ReadScene(const eAssimpFunctions& assimp, const std::string& path, eAssimpFiles& files) {
    const eProperties properties = ImportProperties(assimp);
    const aiScene* scene = assimp.importFile(path.c_str(), 0, files.Doors(), properties.get());
    if (scene == nullptr) {
        return nullptr;
    }
    MendOutlines(const_cast<aiScene&>(*scene));
    return assimp.postProcess(scene, aiProcess_Triangulate);
}

// The scene, or null with what the library says about it in `words`.
eAssimpScene Read(const eAssimpFunctions& assimp, const eAssimpSource& source, std::string& words) {
    const std::string path = "scene" + source.extension;
    const auto files = std::make_shared<eAssimpFiles>(path, source.bytes, source.folder);
    std::shared_ptr<const aiScene> scene(ReadScene(assimp, path, *files),
                                         [&assimp, files](const aiScene* own) { assimp.release(own); });
    if (scene == nullptr || scene->mRootNode == nullptr) {
        words = assimp.errorString();
        words = words.empty() ? kSilence : words;
        return {};
    }
    eAssimpScene opened{std::move(scene), {}};
    if (source.extension == ".dae") {
        ReadColladaNames(assimp, path, *files, opened);
    }
    return opened;
}

}  // namespace

eAssimpScene OpenAssimpSceneUntried(const eAssimpSource& source) {
    std::optional<eLoadMessage> problem;
    const eAssimpFunctions* const assimp = LoadAssimp(problem);
    if (assimp == nullptr) {
        return {nullptr, std::move(problem)};
    }
    std::string words;
    eAssimpScene opened = Read(*assimp, source, words);
    if (!opened.scene) {
        opened.problem = ProblemOf(words);
    }
    return opened;
}

eAssimpScene OpenAssimpScene(const eAssimpSource& source) {
    if (source.bytes.size() > kMostBytes) {
        return {nullptr, MakeLoadMessage("", eMessageId::ImportTooLarge)};
    }
    std::optional<eLoadMessage> problem;
    const eAssimpFunctions* const assimp = LoadAssimp(problem);  // before the copy, which then has it too
    if (assimp == nullptr) {
        return {nullptr, std::move(problem)};
    }
    const auto work = [&] {
        std::string words;
        Read(*assimp, source, words);
        return words;
    };
    const platform::eTrialLimits limits{kLeastMemory + kMemoryPerByte * source.bytes.size(), kMostSeconds};
    problem = ProblemOf(platform::TryInCopy(work, limits));
    return problem ? eAssimpScene{nullptr, std::move(problem)} : OpenAssimpSceneUntried(source);
}

}  // namespace standalone

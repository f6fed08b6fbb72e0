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

constexpr std::string_view kTooMuchMemory =
    "the import library needs more memory for the file than any sound one is worth";

// The library's own words, but where it only names what it has caught.
std::string ProblemOf(const std::string& words) {
    if (words.find("bad_alloc") != std::string::npos) {
        return std::string(kTooMuchMemory);
    }
    return words.empty() ? "the import library finds no scene in the file" : words;
}

std::string TrialProblem(const platform::eTrial& trial) {
    switch (trial.end) {
        case platform::eTrialEnd::Done:
            return trial.words;
        case platform::eTrialEnd::OutOfMemory:
            return std::string(kTooMuchMemory);
        case platform::eTrialEnd::OutOfTime:
            return "the import library doesn't come to an end with the file";
        case platform::eTrialEnd::Died:
            break;
    }
    return "the import library fell over the file (signal " + trial.words + "): it is broken";
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

}  // namespace

eAssimpScene OpenAssimpSceneUntried(const eAssimpSource& source) {
    std::string problem;
    const eAssimpFunctions* const assimp = LoadAssimp(problem);
    if (assimp == nullptr) {
        return {nullptr, problem};
    }
    const std::string path = "scene" + source.extension;
    const auto files = std::make_shared<eAssimpFiles>(path, source.bytes, source.folder);
    std::shared_ptr<const aiScene> scene(ReadScene(*assimp, path, *files),
                                         [assimp, files](const aiScene* own) { assimp->release(own); });
    if (scene == nullptr || scene->mRootNode == nullptr) {
        return {nullptr, ProblemOf(assimp->errorString())};
    }
    eAssimpScene opened{std::move(scene), {}};
    if (source.extension == ".dae") {
        ReadColladaNames(*assimp, path, *files, opened);
    }
    return opened;
}

eAssimpScene OpenAssimpScene(const eAssimpSource& source) {
    if (source.bytes.size() > kMostBytes) {
        return {nullptr, "the file is larger than 1 GB, which no sound scene is"};
    }
    std::string missing;
    if (LoadAssimp(missing) == nullptr) {  // before the copy, which then has it too
        return {nullptr, missing};
    }
    const auto work = [&source] { return OpenAssimpSceneUntried(source).problem; };
    const platform::eTrialLimits limits{kLeastMemory + kMemoryPerByte * source.bytes.size(), kMostSeconds};
    std::string problem = TrialProblem(platform::TryInCopy(work, limits));
    return problem.empty() ? OpenAssimpSceneUntried(source) : eAssimpScene{nullptr, std::move(problem)};
}

}  // namespace standalone

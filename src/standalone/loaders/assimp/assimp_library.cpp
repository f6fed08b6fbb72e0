#include "standalone/loaders/assimp/assimp_library.h"

#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <assimp/Importer.hpp>

#include "platform/trial.h"
#include "standalone/loaders/assimp/assimp_files.h"
#include "standalone/loaders/assimp/assimp_outlines.h"

namespace standalone {
namespace {

constexpr std::uint64_t kLeastMemory = std::uint64_t{2} << 30;
constexpr std::uint64_t kMemoryPerByte = 32;
constexpr unsigned kMostSeconds = 600;
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

std::string TrialProblem(const platform::eTrial& trial) {
    switch (trial.end) {
        case platform::eTrialEnd::Done:
            return trial.words;
        case platform::eTrialEnd::OutOfMemory:
            return "the import library needs more memory for the file than any sound one is worth";
        case platform::eTrialEnd::OutOfTime:
            return "the import library doesn't come to an end with the file";
        case platform::eTrialEnd::Died:
            break;
    }
    return "the import library fell over the file (signal " + trial.words + "): it is broken";
}

}  // namespace

eAssimpScene OpenAssimpSceneUntried(const eAssimpSource& source) {
    const auto importer = std::make_shared<Assimp::Importer>();
    const std::string path = "scene" + source.extension;
    importer->SetIOHandler(new eAssimpFiles(path, source.bytes, source.folder));
    importer->SetPropertyBool(AI_CONFIG_IMPORT_REMOVE_EMPTY_BONES, false);
    importer->SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, true);
    const aiScene* scene = importer->ReadFile(path, 0);
    if (scene != nullptr) {
        MendOutlines(const_cast<aiScene&>(*scene));
        scene = importer->ApplyPostProcessing(aiProcess_Triangulate);
    }
    if (scene == nullptr || scene->mRootNode == nullptr) {
        const std::string words = importer->GetErrorString();
        return {nullptr, words.empty() ? "the import library finds no scene in the file" : words};
    }
    return {{importer, scene}, {}};
}

eAssimpScene OpenAssimpScene(const eAssimpSource& source) {
    if (source.bytes.size() > kMostBytes) {
        return {nullptr, "the file is larger than 1 GB, which no sound scene is"};
    }
    const auto work = [&source] { return OpenAssimpSceneUntried(source).problem; };
    const platform::eTrialLimits limits{kLeastMemory + kMemoryPerByte * source.bytes.size(), kMostSeconds};
    std::string problem = TrialProblem(platform::TryInCopy(work, limits));
    return problem.empty() ? OpenAssimpSceneUntried(source) : eAssimpScene{nullptr, std::move(problem)};
}

}  // namespace standalone

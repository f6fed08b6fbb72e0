#include "standalone/loaders/assimp/assimp_importer.h"

namespace standalone {

eLoadResult ImportWithAssimp(const std::string&, std::string_view, eSceneFormat, const eAssimpOptions&) {
    eLoadResult result;
    result.problems.push_back(MakeLoadMessage("", eMessageId::ImportNotBuilt));
    return result;
}

}  // namespace standalone

#include "standalone/loaders/assimp/assimp_importer.h"

namespace standalone {

eLoadResult ImportWithAssimp(const std::string&, std::string_view, eSceneFormat, const eAssimpOptions&) {
    eLoadResult result;
    result.problems.push_back(
        {"",
         "this program was built without the library that reads FBX, Collada, OBJ and 3DS files; glTF "
         "files and scene documents need none"});
    return result;
}

}  // namespace standalone

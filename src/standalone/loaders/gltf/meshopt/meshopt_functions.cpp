#include "standalone/loaders/gltf/meshopt/meshopt_functions.h"

#include "standalone/data/optional_library.h"

namespace standalone {
namespace {

class eMeshopt {
public:
    eMeshopt() {
        library.Find("meshopt_decodeVertexBuffer", functions.vertices);
        library.Find("meshopt_decodeIndexBuffer", functions.triangles);
        library.Find("meshopt_decodeIndexSequence", functions.indices);
        library.Find("meshopt_decodeFilterOct", functions.octahedral);
        library.Find("meshopt_decodeFilterQuat", functions.quaternion);
        library.Find("meshopt_decodeFilterExp", functions.exponential);
    }

    eMeshoptFunctions functions;
    eOptionalLibrary library{ZYR_MESHOPT_FILE};
};

}  // namespace

const eMeshoptFunctions* LoadMeshopt() {
    static const eMeshopt meshopt;
    return meshopt.library.Problem().empty() ? &meshopt.functions : nullptr;
}

}  // namespace standalone

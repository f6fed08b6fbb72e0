// Proves a written mesh against the scene that it came from, without the exporter's own lists in between.
#pragma once

#include <string>
#include <vector>

#include "mesh/mesh_reader.h"
#include "standalone/standalone_host.h"

namespace mesh_test {

struct eProof {
    std::size_t exact = 0;   // triangles of the file whose corners agree to 1e-5 of the model's size
    std::size_t welded = 0;  // those that only agree within the weld's millimetre
    std::size_t lost = 0;    // triangles of the scene that the weld has folded up, and repeated ones
    std::size_t skinnedCorners = 0;
    std::vector<std::string> faults;  // everything that should not be
};

// Each visible triangle of the node's object must be in the mesh once and show the same side; each skinned
// vertex, moved by the weights and bones of the file, must land where the host's skin has it at the time.
// `scene` is what the host was made of.
eProof ProveMesh(const eFileMesh& mesh, host::INode& node, const standalone::eSceneData& scene,
                 host::TimeValue time);

}  // namespace mesh_test

#include "standalone/objects/recent_meshes.h"

namespace standalone {

void eRecentMeshes::Use(eMeshHolder& holder) {
    if (!holders.empty() && holders.back() == &holder) {
        return;
    }
    std::erase(holders, &holder);
    holders.push_back(&holder);
    if (holders.size() > kKept) {
        holders.front()->ReleaseMesh();
        holders.erase(holders.begin());
    }
}

}  // namespace standalone

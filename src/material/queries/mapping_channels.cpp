#include "material/queries/mapping_channels.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/node_path.h"
#include "messages/tell.h"
#include "run/export.h"

namespace {

// `path` holds the maps on the way down: a map that contains itself is not walked again.
void CheckMaps(const host::MtlBase& element, host::TimeValue t, std::vector<const host::Texmap*>& path,
               std::vector<const host::Texmap*>& found) {
    for (int i = 0; i < element.NumSubTexmaps(); ++i) {
        host::Texmap* map = element.GetSubTexmap(i);
        if (map == nullptr || std::ranges::find(path, map) != path.end()) {
            continue;
        }
        path.push_back(map);
        CheckMaps(*map, t, path, found);
        path.pop_back();
        map->LoadMapFiles(t);
        if (map->GetUVWSource() == host::Texmap::kWorldXYZ && std::ranges::find(found, map) == found.end()) {
            found.push_back(map);
        }
    }
}

}  // namespace

std::vector<const host::Texmap*> CheckMappingChannels(Export& run, host::Mtl* material,
                                                      const host::Face& face) {
    if (material != nullptr && material->IsMultiMtl()) {
        const int count = std::max(material->NumSubMtls(), 1);
        material = material->GetSubMtl(face.getMatID() % count);
    }
    std::vector<const host::Texmap*> path;
    std::vector<const host::Texmap*> found;
    if (material != nullptr) {
        CheckMaps(*material, run.StaticTime(), path, found);
    }
    return found;
}

void TellMappingChannel(const host::Texmap& map, const host::INode& node, int faces) {
    Tell(nullptr, eMessageId::TexturesChannel, {.node = host::PathOf(node), .map = map.GetName()},
         map.GetName(), node.GetName(), faces);
}

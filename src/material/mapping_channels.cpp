#include "material/mapping_channels.h"

#include <algorithm>
#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"

namespace {

// Deeper than any artist nests maps: maps that contain each other are walked no further.
constexpr int kMaxDepth = 64;

bool CheckMaps(const host::MtlBase& element, host::TimeValue t, int depth) {
    if (depth == kMaxDepth) {
        return false;
    }
    bool told = false;
    for (int i = 0; i < element.NumSubTexmaps(); ++i) {
        host::Texmap* map = element.GetSubTexmap(i);
        if (map == nullptr) {
            continue;
        }
        told |= CheckMaps(*map, t, depth + 1);
        map->LoadMapFiles(t);
        if (map->GetUVWSource() == host::Texmap::kWorldXYZ) {
            const auto text =
                format(
                    "Неподдерживаемый канал текстурирования в материале '%s'. Будет использоваться "
                    "'Object XYZ'."_ansi) %
                map->GetName();
            ShowWarning(nullptr, text.Text());
            told = true;
        }
    }
    return told;
}

}  // namespace

bool CheckMappingChannels(Export& run, host::Mtl* material, const host::Face& face) {
    if (material != nullptr && material->IsMultiMtl()) {
        const int count = std::max(material->NumSubMtls(), 1);
        material = material->GetSubMtl(face.getMatID() % count);
    }
    return material != nullptr && CheckMaps(*material, run.StaticTime(), 0);
}

#include "verify/face_surface.h"

#include <algorithm>
#include <cmath>

#include "io/clean_name.h"
#include "material/queries/shade_context.h"

namespace verify {

namespace {

// The host's numbers for the channels of these maps.
constexpr int kBumpId = 8;
constexpr int kSpecularLevelId = 4;

host::Texmap* MapOf(const host::MtlBase* element, int index) {
    return element != nullptr && index < element->NumSubTexmaps() ? element->GetSubTexmap(index) : nullptr;
}

host::Mtl* MaterialOf(const host::Mtl* material, int index) {
    return material != nullptr && index < material->NumSubMtls() ? material->GetSubMtl(index) : nullptr;
}

host::Mtl* Unwrapped(host::Mtl* material) {
    return material != nullptr && material->ClassID() == host::kSorrelClass ? MaterialOf(material, 0)
                                                                            : material;
}

// A material of the face below multi materials; a wheel of them holds none.
host::Mtl* LeafOf(host::Mtl* material, int id) {
    constexpr int kDeepest = 64;
    for (int depth = 0; material != nullptr && material->IsMultiMtl(); ++depth) {
        const int count = std::max(material->NumSubMtls(), 1);
        material = depth < kDeepest ? MaterialOf(material, id % count) : nullptr;
    }
    return material;
}

// The amount of a map that a standard material has switched on. `id` is the host's for the map's channel.
float AmountOf(const host::Mtl* material, int map, int id) {
    const auto* standard = dynamic_cast<const host::StdMtl*>(material);
    if (standard == nullptr || material->ClassID() != host::kStandardClass ||
        MapOf(material, map) == nullptr) {
        return 0;
    }
    const int channel = standard->StdIDToChannel(id);
    return standard->MapEnabled(channel) ? standard->GetTexmapAmt(channel, 0) : 0;
}

struct eLayers {
    host::Texmap* first = nullptr;
    host::Texmap* second = nullptr;
    host::Texmap* blend = nullptr;
    bool isTwofold = false;  // the engine's vertices have both
};

eLayers LayersOf(const host::Mtl* leaf) {
    if (leaf != nullptr && leaf->ClassID() == host::kTwoLayerClass) {
        return {MapOf(MaterialOf(leaf, 0), host::kDiffuseMap), MapOf(MaterialOf(leaf, 1), host::kDiffuseMap),
                nullptr, true};
    }
    host::Texmap* diffuse = MapOf(leaf, host::kDiffuseMap);
    // Such textures share the first coordinates.
    if (AmountOf(leaf, host::kBumpMap, kBumpId) != 0 ||
        AmountOf(leaf, host::kSpecularLevelMap, kSpecularLevelId) != 0) {
        return {.first = diffuse};
    }
    const bool isMixed = diffuse != nullptr && diffuse->ClassID() == host::kMixClass;
    if (isMixed || (diffuse != nullptr && diffuse->ClassID() == host::kRgbMultiplyClass)) {
        return {MapOf(diffuse, 0), MapOf(diffuse, 1), isMixed ? MapOf(diffuse, 2) : nullptr, true};
    }
    return {.first = diffuse};
}

const host::MapChannel* ChannelOf(const host::Mesh& mesh, const host::Texmap& map) {
    const int source = map.GetUVWSource();
    if (source == host::Texmap::kVertexColor) {
        return mesh.FindMap(host::Mesh::kVertexColorChannel);
    }
    return source == host::Texmap::kExplicit && map.GetMapChannel() != -1 ? mesh.FindMap(map.GetMapChannel())
                                                                          : nullptr;
}

}  // namespace

eMapPlace::eMapPlace(const host::Mesh& mesh, const host::Texmap* map, bool isPlaced)
    : mesh_(&mesh), hasMap_(map != nullptr) {
    if (map == nullptr) {
        return;
    }
    channel_ = ChannelOf(mesh, *map);
    placement_ = isPlaced ? map->GetUVTransform() : host::Matrix3();
    if (channel_ == nullptr) {
        constexpr double kThinnest = 0.0001;
        const host::Box3 box = host::BoundsOf(mesh);
        boxCorner_ = Exact(box.pmin);
        boxSize_ = Exact(box.Width());
        for (double& side : boxSize_) {
            side = std::fabs(side) < kThinnest ? kThinnest : side;
        }
    }
}

eVector eMapPlace::At(std::size_t face, std::size_t corner) const {
    if (!hasMap_) {
        return {};
    }
    if (channel_ != nullptr) {
        return Through(Exact(channel_->verts[channel_->faces[face].t[corner]]), Exact(placement_));
    }
    eVector place = Exact(mesh_->verts[mesh_->faces[face].v[corner]]) - boxCorner_;
    for (std::size_t i = 0; i < 3; ++i) {
        place[i] /= boxSize_[i];
    }
    return Through(place, Exact(placement_));
}

eFaceSurface::eFaceSurface(const host::Mesh& mesh, host::Mtl* ownLeaf)
    : leaf(ownLeaf),
      material(leaf != nullptr ? CleanNodeName(leaf->GetName(), false) : std::string()),
      first(mesh, LayersOf(Unwrapped(leaf)).first, true),
      second(mesh, LayersOf(Unwrapped(leaf)).second, true),
      blendPlace(mesh, LayersOf(Unwrapped(leaf)).blend, false),
      blend(LayersOf(Unwrapped(leaf)).blend),
      isBlendedByVertices(blend != nullptr && blend->ClassID() == host::kVertexColorMapClass),
      opacity(leaf != nullptr ? 1 - leaf->GetXParency(0, false) : 1.0F) {
    hasSecondMap = LayersOf(Unwrapped(leaf)).isTwofold;
}

std::vector<eMapUse> MapUsesOf(host::Mtl& leaf) {
    const host::Mtl* const inner = Unwrapped(&leaf);
    const eLayers layers = LayersOf(inner);
    const float bump = AmountOf(inner, host::kBumpMap, kBumpId);
    const float specular = AmountOf(inner, host::kSpecularLevelMap, kSpecularLevelId);
    std::vector<eMapUse> uses;
    const auto add = [&](const eMapUse& use) {
        if (use.map != nullptr) {
            uses.push_back(use);
        }
    };
    add({.key = "diffuse", .map = layers.first});
    if (layers.isTwofold) {
        add({.key = "diffuse1", .map = layers.second});
    } else if (bump > 0) {
        add({.key = "bump", .map = MapOf(inner, host::kBumpMap), .isBump = true, .amount = bump});
    }
    if (specular > 0) {
        add({.key = "specular",
             .map = MapOf(inner, host::kSpecularLevelMap),
             .isSpecular = true,
             .amount = specular});
    }
    return uses;
}

float eFaceSurface::BlendAt(std::size_t face, std::size_t corner, host::TimeValue time) const {
    static const eSceneLights none;
    SContext context(none);
    const eVector uvw = blendPlace.At(face, corner);
    context.time = time;
    context.ambientLight = {1, 1, 1};
    context.duv = {0.01F, 0.01F};
    context.uv = {uvw[0], uvw[1]};
    context.boxPoint = {static_cast<float>(2 * uvw[0] - 1), static_cast<float>(2 * uvw[1] - 1),
                        static_cast<float>(2 * uvw[2] - 1)};
    return blend->EvalMono(context);
}

const eFaceSurface& eSurfaces::Of(const host::Face& face) {
    const std::size_t id = face.getMatID();
    if (id >= byId_.size()) {
        byId_.resize(id + 1);
    }
    if (byId_[id] == nullptr) {
        byId_[id] = std::make_unique<eFaceSurface>(mesh_, LeafOf(material_, static_cast<int>(id)));
    }
    return *byId_[id];
}

}  // namespace verify

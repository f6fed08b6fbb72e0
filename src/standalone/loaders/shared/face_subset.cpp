#include "standalone/loaders/shared/face_subset.h"

#include <limits>

namespace standalone {
namespace {

constexpr std::uint32_t kUnused = std::numeric_limits<std::uint32_t>::max();

// Old numbers to new ones, for those that are used, in the old order.
class eRenumbering {
public:
    explicit eRenumbering(std::size_t count) : numbers(count, kUnused) {}

    void Use(std::uint32_t number) { numbers[number] = 0; }
    void Close() {
        for (std::uint32_t old = 0; old < numbers.size(); ++old) {
            if (numbers[old] != kUnused) {
                numbers[old] = static_cast<std::uint32_t>(kept.size());
                kept.push_back(old);
            }
        }
    }
    std::uint32_t operator[](std::uint32_t number) const { return numbers[number]; }

    template <class Value>
    std::vector<Value> Kept(const std::vector<Value>& all) const {
        std::vector<Value> some;
        some.reserve(kept.size());
        for (const std::uint32_t old : kept) {
            some.push_back(all[old]);
        }
        return some;
    }

    std::vector<std::uint32_t> kept;

private:
    std::vector<std::uint32_t> numbers;
};

host::MapChannel ChannelOf(const host::MapChannel& channel, const std::vector<std::uint32_t>& faces) {
    eRenumbering numbers(channel.verts.size());
    for (const std::uint32_t face : faces) {
        for (const std::uint32_t vertex : channel.faces[face].t) {
            numbers.Use(vertex);
        }
    }
    numbers.Close();
    host::MapChannel some{channel.channel, numbers.Kept(channel.verts), {}};
    some.faces.reserve(faces.size());
    for (const std::uint32_t face : faces) {
        const auto& t = channel.faces[face].t;
        some.faces.push_back({{numbers[t[0]], numbers[t[1]], numbers[t[2]]}});
    }
    return some;
}

host::MeshNormalSpec NormalsOf(const host::MeshNormalSpec& spec, const std::vector<std::uint32_t>& faces) {
    eRenumbering numbers(spec.normals.size());
    const auto forEach = [&](auto take) {
        for (const std::uint32_t face : faces) {
            for (std::size_t corner = 0; corner < 3; ++corner) {
                take(spec.faceNormals[std::size_t{3} * face + corner]);
            }
        }
    };
    forEach([&](std::int32_t normal) {
        if (normal >= 0) {
            numbers.Use(static_cast<std::uint32_t>(normal));
        }
    });
    numbers.Close();
    host::MeshNormalSpec some{numbers.Kept(spec.normals), {}, numbers.Kept(spec.explicitNormals)};
    some.faceNormals.reserve(3 * faces.size());
    forEach([&](std::int32_t normal) {
        some.faceNormals.push_back(
            normal < 0 ? normal : static_cast<std::int32_t>(numbers[static_cast<std::uint32_t>(normal)]));
    });
    return some;
}

eSkinModifier SkinOf(const eSkinModifier& skin, const eRenumbering& vertices) {
    eSkinModifier some{.bones = skin.bones, .bindFrame = skin.bindFrame, .bindMatrices = skin.bindMatrices};
    some.firstWeight.reserve(vertices.kept.size() + 1);
    for (const std::uint32_t vertex : vertices.kept) {
        some.firstWeight.push_back(static_cast<std::uint32_t>(some.weights.size()));
        if (std::size_t{vertex} + 1 < skin.firstWeight.size()) {
            some.weights.insert(some.weights.end(), skin.weights.begin() + skin.firstWeight[vertex],
                                skin.weights.begin() + skin.firstWeight[vertex + 1]);
        }
    }
    some.firstWeight.push_back(static_cast<std::uint32_t>(some.weights.size()));
    return some;
}

}  // namespace

eObjectData SubsetOf(const eObjectData& object, const std::vector<std::uint32_t>& faces) {
    const auto& source = std::get<eMeshObject>(object.kind);
    eRenumbering vertices(source.mesh.verts.size());
    for (const std::uint32_t face : faces) {
        for (const std::uint32_t vertex : source.mesh.faces[face].v) {
            vertices.Use(vertex);
        }
    }
    vertices.Close();
    eMeshObject some;
    some.mesh.verts = vertices.Kept(source.mesh.verts);
    some.mesh.faces.reserve(faces.size());
    for (const std::uint32_t face : faces) {
        host::Face& made = some.mesh.faces.emplace_back(source.mesh.faces[face]);
        for (std::uint32_t& vertex : made.v) {
            vertex = vertices[vertex];
        }
    }
    for (const host::MapChannel& channel : source.mesh.maps) {
        some.mesh.maps.push_back(ChannelOf(channel, faces));
    }
    if (source.mesh.specifiedNormals) {
        some.mesh.specifiedNormals = NormalsOf(*source.mesh.specifiedNormals, faces);
    }
    for (const eVertexKey& key : source.vertexKeys) {
        some.vertexKeys.push_back({key.frame, vertices.Kept(key.vertices)});
    }
    eObjectData result{{}, std::move(some), {}};
    for (const eModifierKind& modifier : object.modifiers) {
        const auto* skin = std::get_if<eSkinModifier>(&modifier);
        result.modifiers.push_back(skin != nullptr ? SkinOf(*skin, vertices) : modifier);
    }
    return result;
}

}  // namespace standalone

#include "standalone/loaders/gltf/shapes/gltf_mesh.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <set>
#include <span>
#include <string_view>

#include "standalone/loaders/gltf/gltf_axes.h"

namespace standalone {
namespace {

using eTriple = std::array<float, 3>;

constexpr int kFirstTextureChannel = 1;
constexpr int kLastTextureSet = 98;

// Morph targets may share their data in the file.
constexpr std::size_t kMostMovements = std::size_t{1} << 26;

void AddFaces(const eGltfVertices& vertices, host::Mesh& mesh) {
    std::size_t count = 0;
    for (const eGltfFaceGroup& group : vertices.Groups()) {
        count += group.corners.size() / 3;
    }
    mesh.faces.reserve(count);
    for (const eGltfFaceGroup& group : vertices.Groups()) {
        host::Face face{.smGroup = 1};
        face.setMatID(group.materialId);
        for (auto corner = group.corners.begin(); corner != group.corners.end(); corner += 3) {
            std::copy_n(corner, 3, face.v);
            mesh.faces.push_back(face);
        }
    }
}

// Corners of primitives without normals, and of normals without length, have none.
void AddNormals(const eGltfVertices& vertices, host::Mesh& mesh) {
    const std::size_t count = mesh.verts.size();
    host::MeshNormalSpec spec{std::vector<host::Point3>(count), {}, {}};
    vertices.ForEach<3>("NORMAL", [&](std::size_t vertex, const eTriple& n) {
        spec.normals[vertex] = Normalize(ToHostPoint({n[0], n[1], n[2]}));
    });
    const auto missing = static_cast<std::size_t>(std::ranges::count(spec.normals, host::Point3{}));
    if (missing == count) {
        return;
    }
    spec.explicitNormals.assign(count, true);
    spec.faceNormals.reserve(3 * mesh.faces.size());
    for (const eGltfFaceGroup& group : vertices.Groups()) {
        spec.faceNormals.insert(spec.faceNormals.end(), group.corners.begin(), group.corners.end());
    }
    if (missing != 0) {
        for (std::int32_t& number : spec.faceNormals) {
            number = spec.normals[static_cast<std::size_t>(number)] == host::Point3{} ? -1 : number;
        }
    }
    mesh.specifiedNormals = std::move(spec);
}

// A channel with a map vertex for every vertex; `value` is for those that the file has none for.
host::MapChannel& AddChannel(host::Mesh& mesh, int number, const host::Point3& value) {
    host::MapChannel& channel = mesh.maps.emplace_back();
    channel.channel = number;
    channel.verts.assign(mesh.verts.size(), value);
    channel.faces.reserve(mesh.faces.size());
    for (const host::Face& face : mesh.faces) {
        channel.faces.push_back({{face.v[0], face.v[1], face.v[2]}});
    }
    return channel;
}

// n of an attribute TEXCOORD_n.
std::optional<int> TextureSet(std::string_view attribute) {
    constexpr std::string_view kName = "TEXCOORD_";
    int number = 0;
    if (!attribute.starts_with(kName)) {
        return std::nullopt;
    }
    const char* end = attribute.data() + attribute.size();
    const auto [behind, error] = std::from_chars(attribute.data() + kName.size(), end, number);
    const bool isSet = error == std::errc() && behind == end && number >= 0 && number <= kLastTextureSet;
    return isSet ? std::optional(number) : std::nullopt;
}

// The exporter turns v downward again, so that the file's own coordinates come out.
void AddTextureSets(const eGltfVertices& vertices, host::Mesh& mesh) {
    std::set<int> sets;
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        for (const auto& [name, accessor] : block.primitive->attributes) {
            if (const std::optional<int> set = TextureSet(name)) {
                sets.insert(*set);
            }
        }
    }
    for (const int set : sets) {
        host::MapChannel& channel = AddChannel(mesh, set + kFirstTextureChannel, {0, 1, 0});
        vertices.ForEach<2>("TEXCOORD_" + std::to_string(set),
                            [&](std::size_t vertex, const std::array<float, 2>& uv) {
                                channel.verts[vertex] = {uv[0], 1 - uv[1], 0};
                            });
    }
}

// Fills a channel from COLOR_0, which some primitives may have with alpha, some without, and some not at all.
template <class Pick>
void AddColorChannel(const eGltfAccessors& accessors, const eGltfVertices& vertices, host::Mesh& mesh,
                     int number, Pick pick) {
    host::MapChannel& channel = AddChannel(mesh, number, {1, 1, 1});
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        const int accessor = block.Attribute("COLOR_0");
        if (accessor < 0) {
            continue;
        }
        const auto take = [&](std::size_t vertex, std::span<const float> color) {
            channel.verts[vertex] = pick(color);
        };
        if (accessors.Width(accessor) == 4) {
            vertices.ForEachOf<4>(block, accessor, take);
        } else {
            vertices.ForEachOf<3>(block, accessor, take);
        }
    }
}

void AddColors(eImportReport& report, const eGltfAccessors& accessors, const eGltfVertices& vertices,
               host::Mesh& mesh) {
    bool hasColor = false, hasAlpha = false;
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        const int accessor = block.Attribute("COLOR_0");
        hasColor = hasColor || accessor >= 0;
        hasAlpha = hasAlpha || (accessor >= 0 && accessors.Width(accessor) == 4);
        if (block.Attribute("COLOR_1") >= 0) {
            report.CannotShow(ePhrase::LostColors);
        }
    }
    if (hasColor) {
        AddColorChannel(accessors, vertices, mesh, host::Mesh::kVertexColorChannel,
                        [](std::span<const float> c) {
                            return host::Point3{c[0], c[1], c[2]};
                        });
    }
    if (hasAlpha) {
        AddColorChannel(accessors, vertices, mesh, host::Mesh::kVertexAlphaChannel,
                        [](std::span<const float> c) {
                            const float alpha = c.size() == 4 ? c[3] : 1;
                            return host::Point3{alpha, alpha, alpha};
                        });
    }
}

void AddTarget(eImportReport& report, const eGltfVertices& vertices, const eGltfVertexBlock& block,
               const std::map<std::string, int>& attributes, std::vector<host::Point3>& movements) {
    for (const auto& [name, accessor] : attributes) {
        if (name == "POSITION") {
            vertices.ForEachOf<3>(block, accessor, [&](std::size_t vertex, const eTriple& p) {
                movements[vertex] = ToHostPoint({p[0], p[1], p[2]});
            });
        } else {
            report.CannotShow(ePhrase::LostMorphs, name);
        }
    }
}

}  // namespace

host::Mesh MakeGltfMesh(eImportReport& report, const eGltfAccessors& accessors,
                        const eGltfVertices& vertices) {
    host::Mesh mesh;
    mesh.verts.resize(vertices.Count());
    vertices.ForEach<3>("POSITION", [&](std::size_t vertex, const eTriple& p) {
        mesh.verts[vertex] = ToHostPoint({p[0], p[1], p[2]});
    });
    AddFaces(vertices, mesh);
    AddNormals(vertices, mesh);
    AddTextureSets(vertices, mesh);
    AddColors(report, accessors, vertices, mesh);
    return mesh;
}

std::vector<std::vector<host::Point3>> ReadGltfTargets(eImportReport& report, const eGltfVertices& vertices) {
    const std::size_t count = vertices.Blocks().front().primitive->targets.size();
    if (count > kMostMovements / std::max(vertices.Count(), std::size_t{1})) {
        report.Problem(vertices.Blocks().front().place + "/targets", eMessageId::GltfMorphCount);
        return {};
    }
    std::vector<std::vector<host::Point3>> movements(count, std::vector<host::Point3>(vertices.Count()));
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        const auto& targets = block.primitive->targets;
        if (targets.size() != count) {
            report.Problem(block.place + "/targets", eMessageId::GltfMorphsDiffer);
            return {};
        }
        for (std::size_t target = 0; target < count; ++target) {
            AddTarget(report, vertices, block, targets[target], movements[target]);
        }
    }
    return movements;
}

}  // namespace standalone

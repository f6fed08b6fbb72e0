#include "gltf/primitive.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/ansi.h"
#include "geometry/vertex_layout.h"

namespace gltf {

namespace {

// Where the normal of baked vertices points.
constexpr host::Point3 kBakedNormal{0, 0, 1};

// Colours of glTF are linear; those of the engine are shown as they are.
std::uint16_t LinearShare(std::uint32_t byte) {
    const double value = byte / 255.0;
    const double linear = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    return static_cast<std::uint16_t>(std::lround(linear * 65535));
}

class ePrimitive {
public:
    ePrimitive(eGlb& glb, const eFileMesh& mesh, const eFileSubMesh& subMesh)
        : glb_(glb), mesh_(mesh), subMesh_(subMesh) {
        for (std::size_t i = 0; i < subMesh.vertexCount; ++i) {
            vertices_.push_back(mesh.Vertex(subMesh, subMesh.firstVertex + i));
        }
    }

    eJson Make(const eMeshShapes* shapes, bool hasTangents) {
        eJson attributes{{"POSITION", Positions()}};
        AddSurface(attributes, hasTangents);
        if (mesh_.skinned) {
            AddSkin(attributes);
        }
        eJson primitive{{"attributes", attributes}, {"indices", glb_.AddIndices(Indices())}};
        for (std::size_t i = 0; shapes != nullptr && i < shapes->shapes.size(); ++i) {
            primitive["targets"].push_back({{"POSITION", Moves(shapes->shapes[i])}});
        }
        primitive["extras"] = Extras();
        return primitive;
    }

private:
    template <class Write>
    int Floats(int components, Write write, bool hasBounds = false) {
        std::vector<float> values;
        values.reserve(vertices_.size() * static_cast<std::size_t>(components));
        for (const eExportVertex& vertex : vertices_) {
            for (const float value : write(vertex)) {
                values.push_back(value);
            }
        }
        return glb_.AddFloats(values, components, eBufferUse::Vertices, hasBounds);
    }

    int Positions() {
        return Floats(
            3,
            [](const eExportVertex& v) {
                return std::array{v.position.x, v.position.y, v.position.z};
            },
            true);
    }

    void AddSurface(eJson& attributes, bool hasTangents) {
        const VertexFormat format = subMesh_.format;
        if ((format & VF_NORMAL) != 0) {
            attributes["NORMAL"] = Floats(3, [](const eExportVertex& v) {
                const host::Point3 n = host::Normalize(v.normal);
                return std::array{n.x, n.y, n.z};
            });
        }
        if ((format & VF_TANGENT) != 0 && hasTangents) {
            attributes["TANGENT"] = Tangents();
        }
        if (UvCount(format) > 0) {
            attributes["TEXCOORD_0"] = Floats(2, [](const eExportVertex& v) {
                return std::array{v.uv0.x, v.uv0.y};
            });
        }
        if (UvCount(format) > 1) {
            attributes["TEXCOORD_1"] = Floats(2, [](const eExportVertex& v) {
                return std::array{v.uv1.x, v.uv1.y};
            });
        }
        if ((format & VF_COLOR) != 0) {
            attributes["COLOR_0"] = Colors();
        }
    }

    // The engine's bitangent points to where v grows, that of glTF upwards on the picture.
    int Tangents() {
        return Floats(4, [](const eExportVertex& v) {
            const host::Point3 t = host::Normalize({v.tangent.x, v.tangent.y, v.tangent.z});
            return std::array{t.x, t.y, t.z, v.tangent.w < 0 ? 1.0F : -1.0F};
        });
    }

    int Colors() {
        std::vector<std::uint16_t> shares;
        for (const eExportVertex& vertex : vertices_) {
            for (const unsigned shift : {16U, 8U, 0U}) {
                shares.push_back(LinearShare(vertex.color >> shift & 0xFFU));
            }
            shares.push_back(static_cast<std::uint16_t>((vertex.color >> 24U) * 257));
        }
        return glb_.AddShares4(shares);
    }

    // The file has the corners of a triangle in reverse order.
    std::vector<std::uint16_t> Indices() const {
        const auto first = mesh_.indices.begin() + 3 * std::ptrdiff_t{subMesh_.firstTriangle};
        std::vector<std::uint16_t> indices(first, first + 3 * std::ptrdiff_t{subMesh_.triangleCount});
        for (std::uint16_t& index : indices) {
            index = static_cast<std::uint16_t>(index - subMesh_.firstVertex);
        }
        for (std::size_t i = 0; i < indices.size(); i += 3) {
            std::swap(indices[i], indices[i + 2]);
        }
        return indices;
    }

    int Moves(const std::vector<host::Point3>& shape) {
        std::vector<float> moves;
        for (std::size_t i = 0; i < vertices_.size(); ++i) {
            const host::Point3 move = shape[subMesh_.firstVertex + i] - vertices_[i].position;
            moves.insert(moves.end(), {move.x, move.y, move.z});
        }
        return glb_.AddFloats(moves, 3, eBufferUse::Vertices, true);
    }

    // A joint stands once at a vertex, and those without a weight are 0.
    void AddSkin(eJson& attributes) {
        std::vector<std::uint8_t> joints;
        std::vector<float> weights;
        for (const eExportVertex& vertex : vertices_) {
            std::array<std::uint8_t, 4> bones{};
            std::array<float, 4> shares{};
            Gather(vertex, bones, shares);
            joints.insert(joints.end(), bones.begin(), bones.end());
            weights.insert(weights.end(), shares.begin(), shares.end());
        }
        attributes["JOINTS_0"] = glb_.AddBytes4(joints);
        attributes["WEIGHTS_0"] = glb_.AddFloats(weights, 4, eBufferUse::Vertices);
    }

    void Gather(const eExportVertex& vertex, std::array<std::uint8_t, 4>& bones,
                std::array<float, 4>& shares) const {
        const int stored = WeightCount(subMesh_.format);
        std::size_t used = 0;
        double rest = 1;
        for (int i = 0; i <= stored; ++i) {
            const double weight = i < stored ? vertex.weights[i] : rest;
            rest -= weight;
            const std::uint8_t bone = BoneOf(vertex, i, stored);
            const auto end = bones.begin() + static_cast<std::ptrdiff_t>(used);
            const auto known = static_cast<std::size_t>(std::find(bones.begin(), end, bone) - bones.begin());
            if (weight > 0 && known == used) {
                bones[used++] = bone;
            }
            shares[known] += static_cast<float>(std::max(weight, 0.0));
        }
    }

    // Without weights a vertex follows no bone of the skin.
    std::uint8_t BoneOf(const eExportVertex& vertex, int i, int stored) const {
        return stored > 0 ? subMesh_.palette[vertex.boneIndices[i]] : std::uint8_t{0};
    }

    eJson Extras() const {
        eJson extras{{"material", ToUtf8(subMesh_.material)}, {"format", subMesh_.format}};
        if (mesh_.skinned) {
            extras["palette"] = subMesh_.palette;
        }
        return extras;
    }

    eGlb& glb_;
    const eFileMesh& mesh_;
    const eFileSubMesh& subMesh_;
    std::vector<eExportVertex> vertices_;
};

}  // namespace

bool HasBakedLight(const eFileMesh& mesh, const eFileSubMesh& subMesh) {
    if ((subMesh.format & VF_NORMAL) == 0 || (subMesh.format & VF_COLOR) == 0) {
        return false;
    }
    for (std::size_t i = 0; i < subMesh.vertexCount; ++i) {
        if (mesh.Vertex(subMesh, subMesh.firstVertex + i).normal != kBakedNormal) {
            return false;
        }
    }
    return true;
}

eJson MakePrimitive(eGlb& glb, const eFileMesh& mesh, const eFileSubMesh& subMesh, const eMeshShapes* shapes,
                    bool hasTangents) {
    return ePrimitive(glb, mesh, subMesh).Make(shapes, hasTangents);
}

}  // namespace gltf

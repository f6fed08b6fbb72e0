#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/values.h"

namespace host {

// One triangle: three vertex numbers, the smoothing groups as a bit mask, and flags with the material id in
// the high 16 bits.
struct Face {
    static constexpr std::uint32_t kHidden = 0x0008;

    std::uint32_t v[3] = {0, 0, 0};
    std::uint32_t smGroup = 0;
    std::uint32_t flags = 0;

    bool Hidden() const { return (flags & kHidden) != 0; }
    std::uint16_t getMatID() const { return static_cast<std::uint16_t>(flags >> 16); }
    void setMatID(std::uint16_t id) { flags = (flags & 0xFFFFU) | (static_cast<std::uint32_t>(id) << 16); }

    friend bool operator==(const Face&, const Face&) = default;
};

// The three numbers of a triangle in a map channel.
struct TVFace {
    std::uint32_t t[3] = {0, 0, 0};

    friend bool operator==(const TVFace&, const TVFace&) = default;
};

// One map channel: its own vertices, and one TVFace per face of the mesh.
struct MapChannel {
    int channel = 0;
    std::vector<Point3> verts;
    std::vector<TVFace> faces;

    friend bool operator==(const MapChannel&, const MapChannel&) = default;
};

// One of several normals of a render vertex, with the smoothing groups that it serves.
struct RNormal {
    Point3 normal;
    std::uint32_t smGroup = 0;

    friend bool operator==(const RNormal&, const RNormal&) = default;
};

// What a vertex looks like to a renderer: `flags` holds the number of its normals in the low 8 bits and
// kSpecifiedNormal. With one normal (or the flag) `normal` is it; with more they stand in
// Mesh::renderNormals from `firstNormal` on.
struct RVertex {
    static constexpr std::uint32_t kNormalCountMask = 0x00FF;
    static constexpr std::uint32_t kSpecifiedNormal = 0x4000;

    std::uint32_t flags = 0;
    std::uint32_t firstNormal = 0;
    Point3 normal;

    std::uint32_t NormalCount() const { return flags & kNormalCountMask; }

    friend bool operator==(const RVertex&, const RVertex&) = default;
};

// The normals that the artist set by hand: one number per face corner into `normals`, negative for none.
struct MeshNormalSpec {
    std::vector<Point3> normals;
    std::vector<std::int32_t> faceNormals;  // three per face
    std::vector<bool> explicitNormals;      // one per entry of `normals`

    int GetNormalIndex(int face, int corner) const {
        return faceNormals[static_cast<std::size_t>(face) * 3 + static_cast<std::size_t>(corner)];
    }
    const Point3& GetNormal(int face, int corner) const {
        return normals[static_cast<std::size_t>(GetNormalIndex(face, corner))];
    }
    bool GetNormalExplicit(int normal) const { return explicitNormals[static_cast<std::size_t>(normal)]; }

    friend bool operator==(const MeshNormalSpec&, const MeshNormalSpec&) = default;
};

// A triangle mesh in object space, in scene units. A host adapter fills the tables; channel 0 is the vertex
// colour, channel -2 the vertex alpha, other channels hold map coordinates.
//
// What a mesh holds may be used without further tests: every index of faces and of channels other than -2
// lies in its table, and every channel has one TVFace per face. Channel -2 is the exception: the exporter
// itself refuses a broken one.
class Mesh {
public:
    static constexpr int kVertexColorChannel = 0;
    static constexpr int kVertexAlphaChannel = -2;

    std::vector<Point3> verts;
    std::vector<Face> faces;
    std::vector<MapChannel> maps;
    std::optional<MeshNormalSpec> specifiedNormals;

    // Filled by buildNormals and buildRenderNormals.
    std::vector<Point3> faceNormals;
    std::vector<RVertex> renderVerts;
    std::vector<RNormal> renderNormals;

    int getNumVerts() const { return static_cast<int>(verts.size()); }
    int getNumFaces() const { return static_cast<int>(faces.size()); }

    // The channel, or null if the mesh lacks it.
    const MapChannel* FindMap(int channel) const;
    MapChannel* FindMap(int channel);

    bool mapSupport(int channel) const { return FindMap(channel) != nullptr; }
    int getNumMapVerts(int channel) const;
    // Empty spans for a channel that the mesh lacks.
    std::span<const Point3> mapVerts(int channel) const;
    std::span<const TVFace> mapFaces(int channel) const;

    int numCVerts() const { return getNumMapVerts(kVertexColorChannel); }
    std::span<const Point3> vertCol() const { return mapVerts(kVertexColorChannel); }
    std::span<const TVFace> vcFace() const { return mapFaces(kVertexColorChannel); }

    // Fills faceNormals: one per face, unit length, zero for a face without area.
    void buildNormals();
    // Fills faceNormals, renderVerts and renderNormals. Per vertex the unit normals of its faces are summed
    // unweighted and normalised, one normal per set of faces whose smoothing groups hang together; faces with
    // smoothing 0 take no part, and hidden faces count like others. Linear in faces and vertices.
    void buildRenderNormals();
    const MeshNormalSpec* GetSpecifiedNormals() const {
        return specifiedNormals ? &*specifiedNormals : nullptr;
    }

    friend bool operator==(const Mesh&, const Mesh&) = default;
};

// The bounds of all vertices, in object space; empty without vertices.
Box3 BoundsOf(const Mesh& mesh);

}  // namespace host

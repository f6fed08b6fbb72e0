#include "mesh/read/corner_color.h"

#include <algorithm>

namespace {

// Cut to a byte; a value that is no number is black.
std::uint32_t ColorByte(float value) {
    return value > 0 ? static_cast<std::uint32_t>(std::min(value, 1.0F) * 255.0F + 0.5F) : 0;
}

// The context in which a blend map is evaluated for a corner; one for the process.
SContext& BlendContext() {
    static const eSceneLights noLights;
    static SContext context(noLights);
    return context;
}

}  // namespace

std::uint32_t PackColor(const host::Color& color, float alpha) {
    return ColorByte(alpha) << 24 | ColorByte(color.r) << 16 | ColorByte(color.g) << 8 | ColorByte(color.b);
}

eCornerColors::eCornerColors(const eNodeReading& ownReading, const eReadingSpace& ownSpace,
                             const host::Mesh& ownMesh, bool hasVertexAlpha)
    : reading(ownReading),
      space(ownSpace),
      mesh(ownMesh),
      light(reading.run, reading.root, reading.time),
      colorVerts(mesh.vertCol()),
      colorFaces(mesh.vcFace()) {
    if (hasVertexAlpha) {
        alphaVerts = mesh.mapVerts(host::Mesh::kVertexAlphaChannel);
        alphaFaces = mesh.mapFaces(host::Mesh::kVertexAlphaChannel);
    }
    isPlain = colorVerts.empty() && alphaVerts.empty() && !light.AnyCounts();
}

eCorners<std::uint32_t> eCornerColors::EachOf(std::size_t face, const eFaceMaterial& material,
                                              const eCorners<host::Point3>& normals, eObjectBox& box) {
    const eFaceMaps& maps = material.maps;
    eCorners<host::Point3> blend{};
    if (maps.blend != nullptr && !maps.vertexBlended) {
        blend = material.blend.Of(face, space.mirrored, box);
    }
    eCorners<std::uint32_t> colors;
    for (std::size_t c = 0; c < 3; ++c) {
        const eHostCorner at{face, space.HostCorner(static_cast<int>(c))};
        const host::Point3& position = mesh.verts[mesh.faces[at.face].v[at.corner]];
        const host::Color color = Tint(at, material) * light.At(position, normals[c]);
        const float alpha = maps.blend == nullptr ? PlainAlpha(at, material)
                            : maps.vertexBlended  ? 1 - VertexColor(at).r
                                                  : 1 - MapBlend(material, blend[c]);
        colors[c] = PackColor(color, alpha);
    }
    return colors;
}

// White for a mesh without vertex colours, as the host shows it.
host::Color eCornerColors::VertexColor(const eHostCorner& at) const {
    if (colorVerts.empty()) {
        return {1, 1, 1};
    }
    const host::Point3& color = colorVerts[colorFaces[at.face].t[at.corner]];
    return {color.x, color.y, color.z};
}

// Vertex colours that blend two layers don't colour them too.
host::Color eCornerColors::Tint(const eHostCorner& at, const eFaceMaterial& material) const {
    return material.maps.vertexBlended ? host::Color{1, 1, 1} : VertexColor(at);
}

float eCornerColors::PlainAlpha(const eHostCorner& at, const eFaceMaterial& material) const {
    return alphaVerts.empty() ? material.opacity
                              : material.opacity * alphaVerts[alphaFaces[at.face].t[at.corner]].x;
}

// The amount of the second layer. The coordinates were turned over for the file, the map wants them back.
float eCornerColors::MapBlend(const eFaceMaterial& material, const host::Point3& uvw) const {
    SContext& context = BlendContext();
    context.time = reading.time;
    context.ambientLight = {1, 1, 1};
    context.duv = {0.01F, 0.01F};
    context.uv = {uvw.x, 1 - uvw.y};
    context.boxPoint = {2 * uvw.x - 1, 2 * (1 - uvw.y) - 1, 2 * uvw.z - 1};
    return material.maps.blend->EvalMono(context);
}

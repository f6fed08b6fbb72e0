#include "mesh/file/mesh_body_writer.h"

#include <string>
#include <vector>

#include "geometry/vertex_layout.h"
#include "host/node.h"
#include "material/queries/material_queries.h"
#include "mesh/file/mesh_format.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "scene/export_bone.h"
#include "scene/properties/node_name.h"

namespace {

void WriteTag(xIo::eStream& stream, const char (&tag)[5]) {
    stream.Write(tag, 4);
}

void WriteHead(xIo::eStream& stream, const eMeshBody& body) {
    WriteTag(stream, mesh_format::kBodyTag);
    WriteTag(stream, mesh_format::kPolygonTag);
    WriteTag(stream, mesh_format::kBoundsTag);
    stream.WriteValue(body.bounds.pmin);
    stream.WriteValue(body.bounds.pmax);
}

void WriteSkin(xIo::eStream& stream, const eMeshBody& body) {
    const std::vector<host::INode*>& bones = body.bone.mesh.skinBones;
    WriteTag(stream, mesh_format::kSkinTag);
    stream.WriteValue(static_cast<std::uint32_t>(bones.size()));
    for (const host::INode* bone : bones) {
        stream.WriteString(bone != nullptr ? CleanNodeName(bone->GetName(), true).c_str() : "");
    }
}

std::string MaterialReference(const Export& run, const host::Mtl* material) {
    const eName name = GetMaterialName(material);
    return run.resources->commonPrefix.IsEmpty() ? name : run.resources->commonPrefix / name;
}

void WriteSubMesh(const Export& run, xIo::eStream& stream, const eMeshBody& body,
                  const eExportSubMesh& subMesh) {
    WriteTag(stream, mesh_format::kSubMeshTag);
    stream.WriteValue(subMesh.format);
    stream.WriteValue(subMesh.firstTriangle);
    stream.WriteValue(subMesh.triangleCount);
    stream.WriteValue(subMesh.firstVertex);
    stream.WriteValue(subMesh.vertexCount);
    stream.WriteValue(subMesh.flags);
    if ((subMesh.flags & kSubMeshSkinned) != 0) {
        const eBonePalette& palette = body.bone.palettes[static_cast<std::size_t>(subMesh.palette)];
        stream.WriteByte(palette.count);
        stream.Write(palette.entries, palette.count);
    }
    stream.WriteString(MaterialReference(run, subMesh.material).c_str());
}

void WriteVertices(xIo::eStream& stream, const eMeshBody& body) {
    const std::size_t count = body.mesh.vertexCount;
    const auto stride = static_cast<std::size_t>(VertexFormatSize(body.format & ~body.absent));
    WriteTag(stream, mesh_format::kVerticesTag);
    stream.WriteValue(static_cast<std::uint32_t>(count));
    stream.WriteValue(static_cast<std::uint16_t>(stride));
    stream.WriteValue(std::uint16_t{0});
    std::vector<std::uint8_t> packed(count * stride);
    std::uint8_t* at = packed.data();
    for (std::size_t i = 0; i < count; ++i) {
        const eExportVertex& vertex = body.welded[body.mesh.vertexRemap[i]];
        PackVertex(vertex, vertex.format & ~body.absent, at);
        at += stride;
    }
    stream.Write(packed.data(), static_cast<int>(packed.size()));
}

void WriteIndices(xIo::eStream& stream, const std::vector<std::uint16_t>& indices) {
    WriteTag(stream, mesh_format::kIndicesTag);
    stream.WriteValue(static_cast<std::uint32_t>(indices.size()));
    // The engine's triangles run the other way round.
    std::vector<std::uint16_t> reversed(indices.size());
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        reversed[i] = indices[i + 2];
        reversed[i + 1] = indices[i + 1];
        reversed[i + 2] = indices[i];
    }
    stream.Write(reversed.data(), static_cast<int>(reversed.size() * sizeof(std::uint16_t)));
}

}  // namespace

void WriteMeshBody(const Export& run, xIo::eStream& stream, const eMeshBody& body) {
    WriteHead(stream, body);
    if (body.skinned) {
        WriteSkin(stream, body);
    }
    for (const eExportSubMesh& subMesh : body.subMeshes.list) {
        WriteSubMesh(run, stream, body, subMesh);
    }
    WriteVertices(stream, body);
    WriteIndices(stream, body.mesh.indices);
}

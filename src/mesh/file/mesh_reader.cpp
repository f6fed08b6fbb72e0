#include "mesh/file/mesh_reader.h"

#include "geometry/vertex_layout.h"
#include "io/streams/byte_reader.h"
#include "mesh/file/mesh_format.h"
#include "mesh/strips/sub_mesh.h"

namespace {

using xIo::eByteReader;

struct eTableEntry {
    std::string name;
    std::uint32_t offset = 0;
};

std::vector<eTableEntry> ReadTable(eByteReader& reader) {
    constexpr std::size_t kSmallestEntry = 5;
    reader.Tag(mesh_format::kFileTag);
    reader.Tag(mesh_format::kTableTag);
    const std::size_t count = reader.Count<std::uint32_t>(kSmallestEntry);
    if (count == 0) {
        reader.Fail("the table names no mesh");
    }
    std::vector<eTableEntry> table;
    for (std::size_t i = 0; i < count && !reader.Failed(); ++i) {
        eTableEntry& entry = table.emplace_back();
        entry.name = reader.String();
        entry.offset = reader.Value<std::uint32_t>();
    }
    return table;
}

void ReadSkin(eByteReader& reader, eFileMesh& mesh) {
    mesh.skinned = reader.TakeTag(mesh_format::kSkinTag);
    const std::size_t bones = mesh.skinned ? reader.Count<std::uint32_t>(1) : 0;
    for (std::size_t i = 0; i < bones && !reader.Failed(); ++i) {
        mesh.bones.push_back(reader.String());
    }
}

eFileSubMesh ReadSubMesh(eByteReader& reader) {
    eFileSubMesh subMesh;
    subMesh.place = reader.Position() - 4;
    subMesh.format = reader.Value<std::uint16_t>();
    subMesh.firstTriangle = reader.Value<std::uint16_t>();
    subMesh.triangleCount = reader.Value<std::uint16_t>();
    subMesh.firstVertex = reader.Value<std::uint16_t>();
    subMesh.vertexCount = reader.Value<std::uint16_t>();
    subMesh.flags = reader.Value<std::uint16_t>();
    if ((subMesh.flags & kSubMeshSkinned) != 0) {
        const auto palette = reader.Bytes(reader.Count<std::uint8_t>(1));
        subMesh.palette.assign(palette.begin(), palette.end());
    }
    subMesh.material = reader.String();
    return subMesh;
}

void ReadVertices(eByteReader& reader, eFileMesh& mesh) {
    reader.Tag(mesh_format::kVerticesTag);
    const auto count = reader.Value<std::uint32_t>();
    mesh.stride = reader.Value<std::uint16_t>();
    reader.Value<std::uint16_t>();  // reserved
    mesh.verticesPlace = reader.Position();
    if (!reader.Failed() && mesh.stride == 0 && count != 0) {
        reader.Fail("the vertices have no size");
    }
    mesh.vertices = reader.Bytes(std::size_t{count} * mesh.stride);
    mesh.vertexCount = reader.Failed() ? 0 : count;
}

void ReadIndices(eByteReader& reader, eFileMesh& mesh) {
    reader.Tag(mesh_format::kIndicesTag);
    const std::size_t count = reader.Count<std::uint32_t>(sizeof(std::uint16_t));
    mesh.indicesPlace = reader.Position();
    const auto indices = reader.Bytes(count * sizeof(std::uint16_t));
    mesh.indices.resize(indices.size() / sizeof(std::uint16_t));
    if (!indices.empty()) {
        std::memcpy(mesh.indices.data(), indices.data(), indices.size());
    }
}

eFileMesh ReadBody(eByteReader& reader, const std::string& name) {
    eFileMesh mesh;
    mesh.name = name;
    mesh.place = reader.Position();
    reader.Tag(mesh_format::kBodyTag);
    reader.Tag(mesh_format::kPolygonTag);
    reader.Tag(mesh_format::kBoundsTag);
    mesh.bounds.pmin = reader.Value<host::Point3>();
    mesh.bounds.pmax = reader.Value<host::Point3>();
    ReadSkin(reader, mesh);
    while (reader.TakeTag(mesh_format::kSubMeshTag)) {
        mesh.subMeshes.push_back(ReadSubMesh(reader));
    }
    ReadVertices(reader, mesh);
    ReadIndices(reader, mesh);
    mesh.size = reader.Position() - mesh.place;
    return mesh;
}

}  // namespace

eExportVertex eFileMesh::Vertex(const eFileSubMesh& subMesh, std::size_t vertex) const {
    return UnpackVertex(subMesh.format, vertices.data() + vertex * stride);
}

std::optional<eMeshFileContent> ReadMeshFile(std::span<const std::uint8_t> bytes, std::string& problem) {
    eByteReader reader(bytes);
    const std::vector<eTableEntry> table = ReadTable(reader);
    const std::size_t bodies = reader.Position();
    eMeshFileContent file;
    for (std::size_t i = 0; i < table.size() && !reader.Failed(); ++i) {
        if (bodies + table[i].offset != reader.Position()) {
            reader.Fail("a body does not stand where the table says");
        }
        file.meshes.push_back(ReadBody(reader, table[i].name));
    }
    if (!reader.Failed() && !reader.AtEnd()) {
        reader.Fail("there are bytes behind the last mesh");
    }
    problem = reader.Problem();
    return reader.Failed() ? std::nullopt : std::optional(std::move(file));
}

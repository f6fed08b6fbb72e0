#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "geometry/export_vertex.h"
#include "host/values.h"

// A sub-mesh as the file holds it (mesh_format.h).
struct eFileSubMesh {
    std::size_t place = 0;  // byte offset of its tag in the file
    std::uint16_t format = 0;
    std::uint16_t firstTriangle = 0;
    std::uint16_t triangleCount = 0;
    std::uint16_t firstVertex = 0;
    std::uint16_t vertexCount = 0;
    std::uint16_t flags = 0;
    std::vector<std::uint8_t> palette;  // empty unless skinned
    std::string material;               // code page 1251
};

// A mesh of the file. The vertices point into the bytes that it was read from.
struct eFileMesh {
    std::string name;       // code page 1251
    std::size_t place = 0;  // byte offset of its body in the file
    std::size_t size = 0;   // bytes of its body
    host::Box3 bounds;      // metres, bone space
    bool skinned = false;
    std::vector<std::string> bones;  // code page 1251
    std::vector<eFileSubMesh> subMeshes;
    std::size_t verticesPlace = 0;
    std::size_t vertexCount = 0;
    std::size_t stride = 0;
    std::span<const std::uint8_t> vertices;  // vertexCount times stride bytes
    std::size_t indicesPlace = 0;
    std::vector<std::uint16_t> indices;

    // The fields of one vertex; `vertex` lies in the range of the sub-mesh.
    eExportVertex Vertex(const eFileSubMesh& subMesh, std::size_t vertex) const;
};

struct eMeshFileContent {
    std::vector<eFileMesh> meshes;
};

// Nothing, with the reason and the byte offset in `problem`, if the bytes are no whole mesh file. Memory is
// taken for what the bytes hold, not for what they claim. Whether the numbers make sense is another question
// (mesh_check.h).
std::optional<eMeshFileContent> ReadMeshFile(std::span<const std::uint8_t> bytes, std::string& problem);

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/mesh.h"
#include "host/values.h"

// The solid of a volume as a small binary image. All numbers are little-endian; tags are four plain bytes
// without a size, so the image can only be read from start to end.
//
//   offset            size     content
//   0                 4        "EVLM"
//   4                 4        "VERT"
//   8                 4        int32 V, number of vertices
//   12                12 * V   per vertex three floats: metres, in the volume's space
//   12 + 12V          4        "INDX"
//   16 + 12V          4        int32 I, number of indices, 3 * F
//   20 + 12V          2 * I    per face three uint16: third, second, first corner
//   20 + 12V + 2I     4        "SIDE"
//   24 + 12V + 2I     4        int32 F, number of faces
//   28 + 12V + 2I     F        per face one byte: its material index plus 1
//
// In the text every byte stands as two lower-case hexadecimal digits, high half first.
struct ePolyhedron {
    std::vector<host::Point3> vertices;
    std::vector<std::uint16_t> indices;  // as in the image: three per face, in reverse order
    std::vector<std::uint8_t> sides;
};

// The most vertices that the 16-bit indices reach.
inline constexpr std::size_t kMaxPolyhedronVertices = 65536;

// The mesh as an image; each vertex goes through `toVolume` and is then scaled to metres. The mesh must not
// have more than kMaxPolyhedronVertices.
std::vector<std::uint8_t> MakePolyhedronImage(const host::Mesh& mesh, const host::Matrix3& toVolume,
                                              float metresPerUnit);

std::string HexText(const std::vector<std::uint8_t>& bytes);

// Reads the text form back. Nothing, with the reason and the byte offset in `problem`, if it is no complete
// image.
std::optional<ePolyhedron> ReadPolyhedron(std::string_view hexText, std::string& problem);

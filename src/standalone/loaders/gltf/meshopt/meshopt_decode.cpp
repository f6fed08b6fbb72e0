#include "standalone/loaders/gltf/meshopt/meshopt_decode.h"

#include "standalone/loaders/gltf/meshopt/meshopt_functions.h"

namespace standalone {
namespace {

// The densest that the format can get: a byte of each element of a block of 256 is four bytes of heads alone.
constexpr std::size_t kMostPerByte = 64;

bool HasGoodStride(const eMeshoptStream& stream) {
    if (stream.mode != "ATTRIBUTES") {
        return stream.stride == 2 || stream.stride == 4;
    }
    return stream.stride >= 4 && stream.stride <= 256 && stream.stride % 4 == 0;
}

bool HasGoodFilter(const eMeshoptStream& stream) {
    if (stream.filter.empty() || stream.filter == "NONE") {
        return true;
    }
    return stream.mode == "ATTRIBUTES" && (stream.filter == "EXPONENTIAL" || stream.stride == 8 ||
                                           (stream.filter == "OCTAHEDRAL" && stream.stride == 4));
}

bool IsPossible(const eMeshoptStream& stream) {
    return HasGoodStride(stream) && HasGoodFilter(stream) &&
           stream.count <= kMostPerByte * stream.bytes.size() / stream.stride &&
           (stream.mode != "TRIANGLES" || stream.count % 3 == 0);
}

eMeshoptDecoder* DecoderOf(const eMeshoptFunctions& functions, std::string_view mode) {
    if (mode == "ATTRIBUTES") {
        return functions.vertices;
    }
    if (mode == "TRIANGLES") {
        return functions.triangles;
    }
    return functions.indices;
}

void Filter(const eMeshoptFunctions& functions, const eMeshoptStream& stream, std::uint8_t* elements) {
    if (stream.filter == "OCTAHEDRAL") {
        functions.octahedral(elements, stream.count, stream.stride);
    } else if (stream.filter == "QUATERNION") {
        functions.quaternion(elements, stream.count, stream.stride);
    } else if (stream.filter == "EXPONENTIAL") {
        functions.exponential(elements, stream.count, stream.stride);
    }
}

}  // namespace

bool KnowsMeshopt() {
    return LoadMeshopt() != nullptr;
}

std::optional<std::vector<std::uint8_t>> DecodeMeshopt(const eMeshoptStream& stream) {
    const eMeshoptFunctions* functions = LoadMeshopt();
    if (functions == nullptr || !IsPossible(stream)) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> elements(stream.count * stream.stride);
    if (DecoderOf(*functions, stream.mode)(elements.data(), stream.count, stream.stride, stream.bytes.data(),
                                           stream.bytes.size()) != 0) {
        return std::nullopt;
    }
    Filter(*functions, stream, elements.data());
    return elements;
}

}  // namespace standalone

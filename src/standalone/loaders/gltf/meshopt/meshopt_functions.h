// The functions of the library that unpacks, which is loaded when the first file asks for it.
#pragma once

#include <meshoptimizer.h>

#include <cstddef>

namespace standalone {

// Unpacks `count` elements of `stride` bytes to `elements`; 0 if all went well.
using eMeshoptDecoder = int(void* elements, std::size_t count, std::size_t stride, const unsigned char* bytes,
                            std::size_t byteCount);

struct eMeshoptFunctions {
    eMeshoptDecoder* vertices = nullptr;
    eMeshoptDecoder* triangles = nullptr;
    eMeshoptDecoder* indices = nullptr;
    decltype(&meshopt_decodeFilterOct) octahedral = nullptr;
    decltype(&meshopt_decodeFilterQuat) quaternion = nullptr;
    decltype(&meshopt_decodeFilterExp) exponential = nullptr;
};

// Null if the library is not installed. Loaded once a process.
const eMeshoptFunctions* LoadMeshopt();

}  // namespace standalone

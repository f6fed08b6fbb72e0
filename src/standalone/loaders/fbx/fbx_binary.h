// The binary form of FBX:
//
//   magic      "Kaydara FBX Binary  " and the bytes 00 1A 00
//   version    u32, 7400 for 7.4
//   records    up to one that is all zeros
//
// A record, with numbers of 32 bits below version 7500 and of 64 bits from there on:
//
//   end        offset of the byte behind the record, from the start of the file; 0 ends a list
//   count      of its values
//   length     of its values in bytes
//   name       u8 length, then the bytes
//   values     a type letter each, then its bytes
//   children   records, up to one that is all zeros; none where the values reach the end
#pragma once

#include "standalone/loaders/fbx/fbx_records.h"

namespace standalone {

inline constexpr std::string_view kFbxMagic{"Kaydara FBX Binary  \0\x1A\0", 23};

// No writer comes near this.
inline constexpr int kMostFbxLevels = 64;

std::optional<eFbxRecord> ReadBinaryFbx(std::string_view bytes);

}  // namespace standalone

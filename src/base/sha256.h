#pragma once

#include <cstdint>
#include <span>
#include <string>

// The SHA-256 digest of the bytes as 64 lower-case hexadecimal digits (FIPS 180-4). About a second for 200
// MB. None of the linked libraries has one, and those that have would be loaded at every start for it alone.
std::string Sha256Hex(std::span<const std::uint8_t> bytes);

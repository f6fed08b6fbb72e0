#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "inspect/description.h"

namespace inspect {

// True if the content is a picture of a kind that the export never writes itself, so that it can only be a
// copy of the artist's file: known by its header, and a tga by the ending of its name too.
bool IsCopiedPicture(const std::string& name, std::span<const std::uint8_t> content);

// What the header of such a picture says.
eDescription DescribeCopiedPicture(std::span<const std::uint8_t> content, std::string& problem);

}  // namespace inspect

#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "gltf/make_glb.h"

namespace cli {

// A model in the resource tree, and how it is turned into glTF.
struct eWrittenModelFlags {
    std::string model;  // a folder with one .mdl, or the .mdl
    std::string commonTextures;
    gltf::eGlbOptions options{};
};

void AddWrittenModelFlags(CLI::App& command, eWrittenModelFlags& flags);

// The .glb of the model, with its warnings told. Where there is none its content is empty, and the user has
// been told why.
gltf::eGlbFile ReadWrittenGlb(const eWrittenModelFlags& flags);

// Writes a file of what has been made of a model, and says what is in it. The exit status of the command.
int FinishWrittenModel(const gltf::eGlbFile& glb, const std::string& target, const std::string& content);

}  // namespace cli

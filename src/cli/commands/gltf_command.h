#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport gltf MODEL OUT.glb`: the written files of a model as one glTF file.
void AddGltfCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli

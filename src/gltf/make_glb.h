// The way back: the files of a model as one glTF file, for a look at them in any viewer.
#pragma once

#include <string>
#include <vector>

#include "gltf/model_files.h"

namespace gltf {

struct eGlbOptions {
    double framesPerSecond = 30;  // of the clips; no file holds it
    double metresPerUnit = 1;     // of the scene, for support points; no file holds it
    eName commonTextures{};       // empty: texture/common in the nearest folder above
    bool hasMarks = true;         // volumes, zones, support points, previews
};

struct eGlbFile {
    std::string content;               // empty where there is a problem
    eBilingual problem;                // UTF-8. What a reader finds broken is English
    std::vector<eBilingual> warnings;  // UTF-8: what is named and not there, and what glTF can't say
    std::size_t bones = 0;
    std::size_t meshes = 0;
    std::size_t triangles = 0;
    std::size_t clips = 0;
};

// Reads the model at `place` (ReadModelFiles) and makes a .glb of it.
eGlbFile MakeGlb(const eName& place, const eGlbOptions& options);

}  // namespace gltf

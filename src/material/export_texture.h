#pragma once

#include <map>
#include <string>
#include <vector>

#include "io/name.h"
#include "material/queries/texture_role.h"

// One texture slot of a material on its way from the host's map to a file; it lives for one step of the
// material pass.
struct eExportTexture {
    host::Texmap* texmap = nullptr;  // may be null
    eTextureRole role;
    int slot = 0;
    int materialIndex = 0;   // index of the material's entry in the material map
    std::string sourcePath;  // first file of the map, normalised; empty when there is none
    eName name;              // engine name, with extension where the file is copied
    bool isCopied = false;   // the file is taken over as it is, and `name` has its extension
    bool inCommon = false;   // the file lies under commonTextureSource
    eName targetPath;        // on disk, without the extension that the writing may add
    eName file;              // on disk, whole
};

// What a texture of the run was made from: names are made from file names and counters, so two can claim one.
struct eTextureClaim {
    eName file;
    std::string source;    // empty for a texture of the whole material
    std::string settings;  // Texmap::PictureSettings
    const host::Mtl* material = nullptr;
    std::string materialName;
    std::string mapName;
    bool isCopied = false;
    eTextureRole role;
};

// By target path without extension, in the order of the claims.
using eTextureClaims = std::map<eName, std::vector<eTextureClaim>>;

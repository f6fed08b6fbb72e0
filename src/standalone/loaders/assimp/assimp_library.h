// The one door to the import library.
#pragma once

#include <assimp/scene.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "standalone/load_message.h"

namespace standalone {

// A scene file as the library is to see it.
struct eAssimpSource {
    std::string_view bytes;
    std::string extension;  // of its format, with the dot: ".fbx"
    std::string folder;     // where the files that it names lie, UTF-8
};

// The scene as the library understands it, or what is wrong with it.
struct eAssimpScene {
    std::shared_ptr<const aiScene> scene;
    std::optional<eLoadMessage> problem;
    // What the file calls its nodes, where the library names them otherwise: by the identifiers of Collada.
    std::unordered_map<const aiNode*, std::string> names{};
};

// Reads the file first in a copy of this process, and here only what did no harm there: broken files make the
// library run wild now and then. Takes the time twice. Polygons come as triangles.
eAssimpScene OpenAssimpScene(const eAssimpSource& source);

// The same without the trial, for whoever watches over the library otherwise.
eAssimpScene OpenAssimpSceneUntried(const eAssimpSource& source);

}  // namespace standalone

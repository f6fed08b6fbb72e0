#pragma once

#include <string>
#include <vector>

#include "standalone/load_message.h"
#include "standalone/scene_data.h"

namespace standalone {

struct eWrittenDocument {
    std::string text;                    // UTF-8
    std::vector<eLoadMessage> warnings;  // what had to change so that the format can say it
};

// The scene as a document for people to read: only what differs from the format's defaults, in a fixed order,
// numbers in the shortest digits that give them again. Reading the text gives the scene again, provided that
// it keeps to the order that readers make (shared objects first) and its ids and referenced names are unique;
// where they are not, new ones are made and the references follow.
// `path` is the document's absolute path, UTF-8: relative bitmap files of a scene that lies elsewhere are
// written with their folder. An image that lies inside the scene file (eBitmapMap::onDisk) is written as its
// `file`, which the caller puts below the document's folder.
eWrittenDocument WriteSceneDocument(const eSceneData& scene, const std::string& path);

}  // namespace standalone

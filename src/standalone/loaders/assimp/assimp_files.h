#pragma once

#include <assimp/cfileio.h>

#include <string>
#include <string_view>

namespace standalone {

// The files that the import library may open: the scene itself, which is in memory, and what it names beside
// it (material libraries). Nothing can be written.
class eAssimpFiles {
public:
    // The bytes must outlive the object.
    eAssimpFiles(std::string scenePath, std::string_view sceneBytes, std::string sceneFolder);
    eAssimpFiles(const eAssimpFiles&) = delete;
    eAssimpFiles& operator=(const eAssimpFiles&) = delete;

    // As the library asks for files; it belongs to the object.
    aiFileIO* Doors() { return &doors; }

private:
    static aiFile* Open(aiFileIO* files, const char* file, const char* mode);

    std::string path;
    std::string_view bytes;
    std::string folder;
    aiFileIO doors{};
};

}  // namespace standalone

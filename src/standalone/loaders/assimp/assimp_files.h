#pragma once

#include <assimp/IOStream.hpp>
#include <assimp/IOSystem.hpp>
#include <string>
#include <string_view>

namespace standalone {

// The files that the import library may open: the scene itself, which is in memory, and what it names beside
// it (material libraries). Nothing can be written.
class eAssimpFiles : public Assimp::IOSystem {
public:
    // The bytes must outlive the object.
    eAssimpFiles(std::string scenePath, std::string_view sceneBytes, std::string sceneFolder)
        : path(std::move(scenePath)), bytes(sceneBytes), folder(std::move(sceneFolder)) {}

    bool Exists(const char* file) const override;
    char getOsSeparator() const override { return '/'; }
    Assimp::IOStream* Open(const char* file, const char* mode) override;
    void Close(Assimp::IOStream* stream) override { delete stream; }

private:
    std::string path;
    std::string_view bytes;
    std::string folder;
};

}  // namespace standalone

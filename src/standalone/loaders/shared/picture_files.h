#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "platform/io_status.h"
#include "standalone/loaders/shared/import_report.h"
#include "standalone/scene_data.h"

namespace standalone {

// A picture that lies inside a scene file.
struct eEmbeddedPicture {
    std::string name;       // code page 1251, with or without its ending
    std::string mediaType;  // "image/png", or its ending: ".png"
    std::string place;      // in the scene file, for problems
    std::string origin;     // the scene file, UTF-8
};

// Where the pixels of a file's pictures are. Pictures in files stay there, unless code page 1251 can't hold
// their name, after which the texture is called; those, and the ones that the file embeds, are written to a
// temporary folder of the scene.
class ePictureFiles {
public:
    ePictureFiles(eSceneData& ownScene, eImportReport& ownReport) : scene(ownScene), report(ownReport) {}

    // The picture in the file at `path`, which the scene file knows as `name`; both UTF-8.
    eBitmapMap InFile(const std::string& path, const std::string& name);

    // Writes the picture under its own name, with the ending that its content asks for. A failure is a
    // problem.
    eBitmapMap Embedded(const eEmbeddedPicture& picture, std::span<const std::uint8_t> content);

private:
    std::string FileName(const std::string& pictureName, std::string_view extension);
    platform::eIoStatus Write(const std::string& name, std::span<const std::uint8_t> content,
                              const std::string& origin);

    eSceneData& scene;
    eImportReport& report;
    std::set<std::string> takenNames;  // lower case
};

}  // namespace standalone

// The import of FBX files and their kin on any bytes, without the trial that shields the program: it must end
// with a scene that a document can hold or with problems. What the import library does wrong on the way is
// its own, and told apart by the place where it falls.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "standalone/loaders/assimp/assimp_importer.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_document/scene_document_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    const standalone::eSceneFormat format = standalone::SceneFormatOf(content);
    if (format < standalone::eSceneFormat::Fbx) {
        return 0;
    }
    standalone::eAssimpOptions options;
    options.isTried = false;
    const standalone::eLoadResult read =
        standalone::ImportWithAssimp("/fuzz/a.fbx", content, format, options);
    if (read.scene.has_value() != read.problems.empty()) {
        std::abort();
    }
    if (read.scene) {
        const auto written = standalone::WriteSceneDocument(*read.scene, "/fuzz/a.scene.json");
        if (!standalone::ReadSceneDocument(written.text, "/fuzz/a.scene.json").scene) {
            std::abort();
        }
    }
    return 0;
}

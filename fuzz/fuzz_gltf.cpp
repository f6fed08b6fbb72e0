// The glTF import on any bytes, whole files and JSON alone: it must end, within its memory, with a scene or
// with problems; and a scene must be one that a document can hold.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "standalone/loaders/gltf/gltf_importer.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_document/scene_document_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    const standalone::eLoadResult read = standalone::ImportGltf("/fuzz/a.gltf", content, {});
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

// The reader of scene documents on any bytes: it must end, within its memory, with a scene or with problems;
// and a scene must come back the same from the document that is written of it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_document/scene_document_writer.h"
#include "standalone/loaders/scene_format.h"

namespace {

void Check(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    standalone::SceneFormatOf(text);
    const standalone::eLoadResult read = standalone::ReadSceneDocument(text, "/fuzz/a.scene.json");
    Check(read.scene.has_value() == read.problems.empty());
    if (read.scene) {
        const auto written = standalone::WriteSceneDocument(*read.scene, "/fuzz/a.scene.json");
        const auto again = standalone::ReadSceneDocument(written.text, "/fuzz/a.scene.json");
        Check(again.scene == read.scene);
    }
    return 0;
}

// The library writes glTF too, and leaves the streams for it to whoever includes it.
#include <fstream>
#define TINYGLTF_IMPLEMENTATION
#include "standalone/loaders/gltf/file/gltf_library.h"

#include <exception>
#include <string>

#include "standalone/loaders/gltf/file/gltf_json.h"

namespace standalone {
namespace {

using eBytes = std::vector<std::uint8_t>;

// The library asks for buffers in files, and in data URIs of types that it does not know, in the order of the
// file. It gets what is read already: left to itself it would take "+" in a URI for a blank, look into the
// current folder too, and refuse files that are longer than told.
struct eBufferQueue {
    std::vector<eBytes> buffers;
    std::size_t next = 0;
};

bool IsAlwaysThere(const std::string&, void*) {
    return true;
}

std::string AsItIs(const std::string& file, void*) {
    return file;
}

bool TakeNextBuffer(eBytes* content, std::string*, const std::string&, void* queue) {
    auto& waiting = *static_cast<eBufferQueue*>(queue);
    if (waiting.next == waiting.buffers.size()) {
        return false;
    }
    *content = std::move(waiting.buffers[waiting.next++]);
    return true;
}

bool WriteNothing(std::string*, const std::string&, const eBytes&, void*) {
    return false;
}

bool KeepImageBytes(tinygltf::Image* image, int, std::string*, std::string*, int, int,
                    const unsigned char* bytes, int size, void*) {
    image->image.assign(bytes, bytes + size);
    image->as_is = true;
    return true;
}

eBufferQueue QueueOf(const eJsonTree& json, std::vector<eBytes> buffers) {
    eBufferQueue queue;
    const std::vector<eJsonIndex> entries = GltfEntries(json, "buffers");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool hasUri = json.FindMember(entries[i], "uri") != kNoJson;
        if (hasUri && !tinygltf::IsDataURI(std::string(JsonText(json, entries[i], "uri")))) {
            queue.buffers.push_back(std::move(buffers[i]));
        }
    }
    return queue;
}

bool Load(tinygltf::TinyGLTF& library, tinygltf::Model& model, std::string& error, std::string_view bytes,
          const eGltfContainer& container) {
    std::string warning;
    if (!container.isBinary) {
        return library.LoadASCIIFromString(&model, &error, &warning, bytes.data(),
                                           static_cast<unsigned>(bytes.size()), "");
    }
    // The library wants a binary part that is not empty, so a file with an empty one is framed anew.
    const std::string framed = container.binary.empty() ? FrameGltf(container.json, {}) : std::string();
    const std::string_view file = framed.empty() ? bytes : std::string_view(framed);
    return library.LoadBinaryFromMemory(&model, &error, &warning,
                                        reinterpret_cast<const unsigned char*>(file.data()),
                                        static_cast<unsigned>(file.size()), "");
}

}  // namespace

std::optional<tinygltf::Model> ReadGltfModel(std::string_view bytes, const eGltfContainer& container,
                                             std::vector<eBytes> buffers, const eJsonTree& json,
                                             eImportReport& report) {
    eBufferQueue queue = QueueOf(json, std::move(buffers));
    tinygltf::TinyGLTF library;
    library.SetFsCallbacks({IsAlwaysThere, AsItIs, TakeNextBuffer, WriteNothing, &queue});
    library.SetImageLoader(KeepImageBytes, nullptr);
    std::optional<tinygltf::Model> model(std::in_place);
    std::string error;
    try {
        if (Load(library, *model, error, bytes, container)) {
            return model;
        }
    } catch (const std::exception& failure) {
        error = failure.what();
    }
    constexpr std::size_t kScreenLine = 200;  // the library quotes what it could not read, however long
    report.Problem("", eMessageId::GltfLibrary, error.substr(0, kScreenLine));
    return std::nullopt;
}

}  // namespace standalone

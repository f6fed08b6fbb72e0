#include "gltf/frame_shapes.h"

#include <algorithm>

#include "base/ansi.h"
#include "messages/utf8_words.h"
#include "written/played_vertices.h"

namespace gltf {

namespace {

constexpr std::size_t kMostShapes = 256;

bool HasVertices(const eAnimation& clip, std::size_t bone) {
    return std::ranges::any_of(clip.frames, [&](const eAnimationFrame& frame) {
        return std::ranges::any_of(frame.keys, [&](const eAnimationKey& key) {
            return key.bone == static_cast<int>(bone) && !key.vertexSection.empty();
        });
    });
}

}  // namespace

eFrameShapes::eFrameShapes(eModelFiles& files) {
    for (std::size_t clip = 0; clip < files.clips.size(); ++clip) {
        const eAnimation& animation = files.clips[clip].played.file;
        for (std::size_t bone = 0; bone < animation.bones.size(); ++bone) {
            if (HasVertices(animation, bone)) {
                Play(clip, animation.bones[bone], bone, files);
            }
        }
    }
}

void eFrameShapes::Play(std::size_t clip, const std::string& bone, std::size_t entry, eModelFiles& files) {
    const int number = files.model.NumberOf(bone);
    const auto& views = files.model.bones[static_cast<std::size_t>(std::max(number, 0))].views;
    const eFileMesh* const mesh = number < 0 || views.empty() ? nullptr : files.MeshOf(views.front());
    const std::string name = ToUtf8(files.clips[clip].name);
    if (mesh == nullptr) {
        files.warnings.push_back(Utf8Words(ePhrase::LacksClipMesh, name, ToUtf8(bone)));
        return;
    }
    const eAnimation& animation = files.clips[clip].played.file;
    eMeshShapes found = meshes_[mesh];
    written::ePlayedVertices played(*mesh);
    for (int frame = 0; frame < animation.frameCount; ++frame) {
        const eAnimationKey* const key = written::KeyIn(animation, frame, entry);
        if (key == nullptr || key->vertexSection.empty()) {
            continue;
        }
        if (!played.Take(key->vertexSection) || found.shapes.size() == kMostShapes) {
            files.warnings.push_back(Utf8Words(ePhrase::UnplayableVertices, name, ToUtf8(bone), frame));
            return;
        }
        found.numbers[{clip, frame}] = found.shapes.size();
        found.shapes.push_back(played.All());
    }
    meshes_[mesh] = std::move(found);
    owners_[mesh] = number;
}

const eMeshShapes* eFrameShapes::Of(const eFileMesh& mesh) const {
    const auto found = meshes_.find(&mesh);
    return found != meshes_.end() && !found->second.shapes.empty() ? &found->second : nullptr;
}

int eFrameShapes::OwnerOf(const eFileMesh& mesh) const {
    const auto found = owners_.find(&mesh);
    return found != owners_.end() ? found->second : -1;
}

}  // namespace gltf

#include "gltf/clips.h"

#include <algorithm>
#include <set>

#include "base/ansi.h"
#include "gltf/key_track.h"
#include "inspect/model_view.h"
#include "messages/utf8_words.h"

namespace gltf {

namespace {

class eClipWriter {
public:
    eClipWriter(eGlb& glb, eModelFiles& files, const eBoneNodes& bones, const eMeshNodes& meshes,
                std::size_t clip, double framesPerSecond)
        : glb_(glb),
          files_(files),
          bones_(bones),
          meshes_(meshes),
          clip_(clip),
          played_(files.clips[clip].played),
          keys_(glb, framesPerSecond) {}

    void Write() {
        for (std::size_t entry = 0; entry < played_.file.bones.size(); ++entry) {
            const int bone = bones_.NumberOf(played_.file.bones[entry]);
            if (bone < 0) {
                Warn(ePhrase::LacksClipBone, played_.file.bones[entry]);
            } else {
                AddBone(bone, entry);
                AddVisibility(bone, entry);
            }
        }
        for (const eMeshNode& node : meshes_.All()) {
            AddShapes(node);
        }
        if (!keys_.IsEmpty()) {
            glb_.Add("animations", keys_.Finish(ToUtf8(files_.clips[clip_].name), Extras()));
        }
    }

private:
    void Warn(ePhrase what, const std::string& name) {
        files_.warnings.push_back(Utf8Words(what, ToUtf8(files_.clips[clip_].name), ToUtf8(name)));
    }

    const eBonePose& Pose(int frame, std::size_t entry) const { return played_.At(frame)[entry]; }

    void AddBone(int bone, std::size_t entry) {
        eKeyTrack positions(3), rotations(4), scales(3);
        eQuaternion last{0, 0, 0, 1};
        for (int frame = 0; frame < played_.file.frameCount; ++frame) {
            const eBonePose& pose = Pose(frame, entry);
            if (!pose.known) {
                continue;
            }
            const ePlacement placement = bones_.Placement(bone, written::MatrixOf(pose));
            last = NearTo(last, placement.rotation);
            positions.Add(frame, placement.position);
            rotations.Add(frame, last);
            scales.Add(frame, placement.scale);
        }
        keys_.Put(positions, bone, "translation", eInterpolation::Linear);
        keys_.Put(rotations, bone, "rotation", eInterpolation::Linear);
        if (!scales.IsConstant() || HasScaleAtRest(bone, scales)) {
            keys_.Put(scales, bone, "scale", eInterpolation::Step);
        }
    }

    // Of the two quaternions of a rotation the one that the way from the last leads to.
    static eQuaternion NearTo(const eQuaternion& last, const eQuaternion& q) {
        const double cosine = last[0] * q[0] + last[1] * q[1] + last[2] * q[2] + last[3] * q[3];
        return cosine < 0 ? eQuaternion{-q[0], -q[1], -q[2], -q[3]} : q;
    }

    // A pose has no scale but a mirror; what the text says beyond that ends with the clip's first key.
    bool HasScaleAtRest(int bone, const eKeyTrack& scales) const {
        const eJson& node = glb_.At("nodes", bone);
        const written::eVector rest =
            node.contains("scale") ? node["scale"].get<written::eVector>() : written::eVector{1, 1, 1};
        return scales.DiffersFrom(rest);
    }

    void AddVisibility(int bone, std::size_t entry) {
        eKeyTrack scales(3);
        bool isEverHidden = bones_.IsHidden(bone);
        for (int frame = 0; frame < played_.file.frameCount; ++frame) {
            const bool isVisible = Pose(frame, entry).visible;
            isEverHidden |= !isVisible;
            const double scale = isVisible ? 1 : 0;
            scales.Add(frame, written::eVector{scale, scale, scale});
        }
        for (const eMeshNode& node : meshes_.All()) {
            if (node.bone != bone || !isEverHidden) {
                continue;
            }
            if (node.mesh->skinned) {
                Warn(ePhrase::HiddenSkin, node.mesh->name);
            } else {
                keys_.Put(scales, node.node, "scale", eInterpolation::Step);
            }
        }
    }

    void AddShapes(const eMeshNode& node) {
        const eMeshShapes* const shapes = meshes_.Shapes().Of(*node.mesh);
        if (shapes == nullptr || meshes_.Shapes().OwnerOf(*node.mesh) != node.bone) {
            return;
        }
        eKeyTrack weights(static_cast<int>(shapes->shapes.size()));
        std::vector<double> now(shapes->shapes.size(), 0);
        bool isMoved = false;
        for (int frame = 0; frame < played_.file.frameCount; ++frame) {
            if (const auto shape = shapes->numbers.find({clip_, frame}); shape != shapes->numbers.end()) {
                std::ranges::fill(now, 0);
                now[shape->second] = 1;
                isMoved = true;
            }
            weights.Add(frame, now);
        }
        if (isMoved) {
            keys_.Put(weights, node.node, "weights", eInterpolation::Linear);
        }
    }

    // {binary "drive" {speed 1}{autostart}}
    eJson Extras() const {
        eJson extras{{"frames", played_.file.frameCount}};
        const inspect::eSdlBlock* const entity = files_.entity.Find("entity");
        const inspect::eSdlBlock* const skeleton = entity != nullptr ? entity->Find("skeleton") : nullptr;
        const inspect::eSdlBlock* const list = skeleton != nullptr ? skeleton->Find("animation") : nullptr;
        for (const inspect::eSdlBlock* block :
             list != nullptr ? list->Blocks("binary") : std::vector<const inspect::eSdlBlock*>()) {
            const std::vector<std::string> values = block->Values();
            if (values.empty() || eName(values.front()).Text() != files_.clips[clip_].name) {
                continue;
            }
            for (const inspect::eSdlBlock* key : block->Blocks()) {
                inspect::AddBlock(extras, *key);
            }
        }
        return extras;
    }

    eGlb& glb_;
    eModelFiles& files_;
    const eBoneNodes& bones_;
    const eMeshNodes& meshes_;
    std::size_t clip_;
    const written::ePlayedClip& played_;
    eClipKeys keys_;
};

}  // namespace

void AddClips(eGlb& glb, eModelFiles& files, const eBoneNodes& bones, const eMeshNodes& meshes,
              double framesPerSecond) {
    for (std::size_t clip = 0; clip < files.clips.size(); ++clip) {
        eClipWriter(glb, files, bones, meshes, clip, framesPerSecond).Write();
    }
}

}  // namespace gltf

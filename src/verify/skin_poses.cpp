#include "verify/skin_poses.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "geometry/vertex_layout.h"
#include "io/clean_name.h"
#include "scene/properties/node_properties.h"
#include "scene/triangle_mesh.h"
#include "verify/bone_place.h"

namespace verify {

namespace {

constexpr int kFramesTried = 8;

// The bones of the model text in the model's space, as they stand in it and as a clip has them.
class ePlayedSkeleton {
public:
    ePlayedSkeleton(const eWrittenModel& model, const ePlayedClip& clip) : model_(model), clip_(clip) {
        for (const eWrittenBone& bone : model.bones) {
            const auto entry = std::ranges::find(clip.file.bones, bone.name);
            entries_.push_back(entry != clip.file.bones.end() ? entry - clip.file.bones.begin() : -1);
        }
        rest_ = Compose([](std::size_t, const eWrittenBone& bone) { return bone.local; });
        for (host::DMatrix3& matrix : rest_) {
            toBone_.push_back(ExactInverse(matrix));
        }
        now_ = rest_;
    }

    void Pose(int frame) {
        const std::span<const eBonePose> poses = clip_.At(frame);
        now_ = Compose([&](std::size_t number, const eWrittenBone& bone) {
            return entries_[number] >= 0 ? MatrixOf(poses[static_cast<std::size_t>(entries_[number])])
                                         : bone.local;
        });
    }

    // From the rest position of the model to the one of the frame, with the bone.
    host::DMatrix3 MovementOf(std::size_t bone) const { return Product(toBone_[bone], now_[bone]); }
    const host::DMatrix3& Rest(std::size_t bone) const { return rest_[bone]; }
    bool Moves(std::size_t bone) const { return entries_[bone] >= 0; }
    int DepthOf(int bone) const {
        int depth = 0;
        for (; bone >= 0; bone = model_.bones[static_cast<std::size_t>(bone)].above) {
            ++depth;
        }
        return depth;
    }

private:
    // A bone stands behind the one above it.
    template <class Local>
    std::vector<host::DMatrix3> Compose(Local local) const {
        std::vector<host::DMatrix3> matrices;
        for (const eWrittenBone& bone : model_.bones) {
            const host::DMatrix3 own = local(matrices.size(), bone);
            matrices.push_back(bone.above >= 0 ? Product(own, matrices[static_cast<std::size_t>(bone.above)])
                                               : own);
        }
        return matrices;
    }

    const eWrittenModel& model_;
    const ePlayedClip& clip_;
    std::vector<std::ptrdiff_t> entries_;
    std::vector<host::DMatrix3> rest_;
    std::vector<host::DMatrix3> toBone_;
    std::vector<host::DMatrix3> now_;
};

// The same bones as the scene has them: at the static frame, and those that the clip moves at another time.
class eSceneSkeleton {
public:
    eSceneSkeleton(const eVerifiedScene& scene, const eSceneModel& model, const eWrittenModel& written)
        : scene_(scene), root_(model.root), written_(written) {
        for (const eWrittenBone& bone : written.bones) {
            const auto known = std::ranges::find_if(model.bones.bones, [&](const eSceneBone& own) {
                return own.level == 0 && own.name == bone.name;
            });
            nodes_.push_back(known != model.bones.bones.end() ? known->node : nullptr);
        }
        for (host::DMatrix3& matrix : Compose([](std::size_t) { return false; }, scene.StaticTime())) {
            toBone_.push_back(ExactInverse(matrix));
        }
    }

    // By bone, from rest to the time.
    std::vector<host::DMatrix3> MovementsAt(host::TimeValue time, const ePlayedSkeleton& played) const {
        std::vector<host::DMatrix3> movements =
            Compose([&](std::size_t bone) { return played.Moves(bone); }, time);
        for (std::size_t i = 0; i < movements.size(); ++i) {
            movements[i] = Product(toBone_[i], movements[i]);
        }
        return movements;
    }

private:
    template <class Moves>
    std::vector<host::DMatrix3> Compose(Moves moves, host::TimeValue time) const {
        std::vector<host::DMatrix3> matrices;
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            const int above = written_.bones[i].above;
            const host::DMatrix3 own = LocalOf(i, moves(i), time);
            matrices.push_back(above >= 0 ? Product(own, matrices[static_cast<std::size_t>(above)]) : own);
        }
        return matrices;
    }

    // A root at rest stands at the origin, as the text has it.
    host::DMatrix3 LocalOf(std::size_t bone, bool isMoved, host::TimeValue time) const {
        const host::INode* const node = nodes_[bone];
        if (node == nullptr || (node == root_ && !isMoved)) {
            return written_.bones[bone].local;
        }
        return PlaceInBoneAbove(scene_, *node, isMoved ? time : scene_.StaticTime(), node == root_);
    }

    const eVerifiedScene& scene_;
    const host::INode* root_;
    const eWrittenModel& written_;
    std::vector<const host::INode*> nodes_;
    std::vector<host::DMatrix3> toBone_;
};

// Where a vertex of the file comes from.
struct eSourceVertex {
    int node = -1;
    std::uint32_t vertex = 0;
    bool isWhole = true;  // all of its bones are in the file
};

class eBentSkin {
public:
    eBentSkin(const eVerifiedScene& scene, const eSceneModel& model, const eVerifiedMesh& mesh,
              const eWrittenModel& skeleton, const ePlayedClip& clip)
        : scene_(scene),
          model_(model),
          mesh_(mesh),
          file_(*mesh.file),
          skeleton_(skeleton, clip),
          sceneSkeleton_(scene, model, skeleton) {
        owner_ = skeleton.NumberOf(CleanNodeName(mesh.source.owner->GetName(), true));
        for (const std::string& name : file_.bones) {
            bones_.push_back(skeleton.NumberOf(name));
            deepest_ = std::max(deepest_, skeleton_.DepthOf(bones_.back()));
        }
        sources_.resize(file_.vertexCount);
        for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
            for (std::size_t c = 0; c < 3 && mesh.vertices[i][c] >= 0; ++c) {
                const eSceneCorner& corner = mesh.scene.triangles[i].corners[c];
                sources_[static_cast<std::size_t>(mesh.vertices[i][c])] = {
                    mesh.scene.triangles[i].node, corner.vertex, !corner.hasMoreWeights};
            }
        }
    }

    // True if the skeleton holds the mesh and all bones of its skin.
    bool CanBend() const {
        return owner_ >= 0 && std::ranges::all_of(bones_, [](int bone) { return bone >= 0; });
    }
    int Depth() const { return deepest_; }

    // The largest distance at the frame of a clip, or at rest without one; `whole` counts only vertices all
    // of whose bones are in the file.
    double Measure(std::optional<int> frame, host::TimeValue time, bool whole) {
        if (frame) {
            skeleton_.Pose(*frame);
        }
        const eMovements movements = PlayedMovements();
        const std::vector<std::vector<eVector>> shown = ShownVertices(time, frame.has_value());
        double largest = 0;
        for (const eFileSubMesh& subMesh : file_.subMeshes) {
            for (std::size_t i = subMesh.firstVertex;
                 i < std::size_t{subMesh.firstVertex} + subMesh.vertexCount; ++i) {
                const eSourceVertex& source = sources_[i];
                if (source.node < 0 || (whole && !source.isWhole) ||
                    shown[static_cast<std::size_t>(source.node)].empty()) {
                    continue;
                }
                const eVector bent = Bend(file_.Vertex(subMesh, i), subMesh, movements);
                largest = std::max(
                    largest, Length(bent - shown[static_cast<std::size_t>(source.node)][source.vertex]));
            }
        }
        return largest;
    }

    // The largest distance between the skin as the clip bends it and as the scene's own bones would, whatever
    // pose it was bound in.
    double MeasureMotion(int frame, host::TimeValue time) {
        skeleton_.Pose(frame);
        const eMovements played = PlayedMovements();
        const eMovements wanted = SceneMovements(time);
        double largest = 0;
        for (const eFileSubMesh& subMesh : file_.subMeshes) {
            for (std::size_t i = subMesh.firstVertex;
                 i < std::size_t{subMesh.firstVertex} + subMesh.vertexCount; ++i) {
                const eExportVertex vertex = file_.Vertex(subMesh, i);
                largest =
                    std::max(largest, Length(Bend(vertex, subMesh, played) - Bend(vertex, subMesh, wanted)));
            }
        }
        return largest;
    }

    // The largest distance at rest of a vertex from a bone of its part: the lever on which a turn works.
    double Reach() const {
        double reach = 0;
        for (const eFileSubMesh& subMesh : file_.subMeshes) {
            for (std::size_t i = subMesh.firstVertex;
                 i < std::size_t{subMesh.firstVertex} + subMesh.vertexCount; ++i) {
                const eVector rest = RestOf(file_.Vertex(subMesh, i));
                for (const std::uint8_t number : subMesh.palette) {
                    const int bone = number > 0 ? bones_[number - 1U] : owner_;
                    const eVector pivot = skeleton_.Rest(static_cast<std::size_t>(bone)).rows[3];
                    reach = std::max(reach, Length(rest - pivot));
                }
            }
        }
        return reach;
    }

private:
    // Of the bones of the skin, and of the mesh's own.
    struct eMovements {
        std::vector<host::DMatrix3> bones;
        host::DMatrix3 own;
    };

    eMovements PlayedMovements() const {
        eMovements movements{.bones = {}, .own = skeleton_.MovementOf(static_cast<std::size_t>(owner_))};
        for (const int bone : bones_) {
            movements.bones.push_back(skeleton_.MovementOf(static_cast<std::size_t>(bone)));
        }
        return movements;
    }
    eMovements SceneMovements(host::TimeValue time) const {
        const std::vector<host::DMatrix3> all = sceneSkeleton_.MovementsAt(time, skeleton_);
        eMovements movements{.bones = {}, .own = all[static_cast<std::size_t>(owner_)]};
        for (const int bone : bones_) {
            movements.bones.push_back(all[static_cast<std::size_t>(bone)]);
        }
        return movements;
    }

    eVector RestOf(const eExportVertex& vertex) const {
        return Through(Exact(vertex.position), skeleton_.Rest(static_cast<std::size_t>(owner_)));
    }

    eVector Bend(const eExportVertex& vertex, const eFileSubMesh& subMesh,
                 const eMovements& movements) const {
        const eVector rest = RestOf(vertex);
        const int stored = WeightCount(vertex.format);
        eVector bent{};
        double left = 1;
        for (int i = 0; i <= stored; ++i) {
            const double weight = i < stored ? vertex.weights[i] : left;
            left -= weight;
            const std::size_t number = stored > 0 ? subMesh.palette[vertex.boneIndices[i]] : 0;
            const eVector moved = Through(rest, number > 0 ? movements.bones[number - 1] : movements.own);
            for (std::size_t k = 0; k < 3; ++k) {
                bent[k] += weight * moved[k];
            }
        }
        return bent;
    }

    // What the nodes of the mesh show, by node and vertex, in the engine's space of the model. A root that
    // the clip does not move stands at the origin.
    std::vector<std::vector<eVector>> ShownVertices(host::TimeValue time, bool isPlayed) const {
        const host::INode* const above = BoneAbove(*model_.root);
        const bool moves = isPlayed && skeleton_.Moves(0) && above != nullptr;
        const host::DMatrix3 toModel =
            host::ExactInverse(NoScale((moves ? *above : *model_.root).GetNodeTM(time)));
        std::vector<std::vector<eVector>> shown;
        for (host::INode* node : mesh_.source.feeders) {
            std::vector<eVector>& vertices = shown.emplace_back();
            const eTriangleMesh triangles(*node, time);
            // A mesh that was read bent has been bent twice by the engine's rules.
            if (!triangles.IsValid() || HasUserProp(*node, "OldSkin")) {
                continue;
            }
            const host::DMatrix3 whole = Product(Exact(node->GetObjTMAfterWSM(time)), toModel);
            for (const host::Point3& vertex : triangles.Mesh().verts) {
                const eVector p = Through(Exact(vertex), whole);
                const double metres = scene_.MetresPerUnit();
                vertices.push_back({p[0] * metres, -p[1] * metres, p[2] * metres});
            }
        }
        return shown;
    }

    const eVerifiedScene& scene_;
    const eSceneModel& model_;
    const eVerifiedMesh& mesh_;
    const eFileMesh& file_;
    ePlayedSkeleton skeleton_;
    eSceneSkeleton sceneSkeleton_;
    int owner_ = -1;
    std::vector<int> bones_;
    int deepest_ = 0;
    std::vector<eSourceVertex> sources_;
};

// One skin in some frames of a clip.
class eSkinComparison {
public:
    eSkinComparison(const eVerifiedScene& scene, const eSceneClip& clip, const std::string& name,
                    eBentSkin& skin, const eTolerances& tolerances, eClipVerdict& verdict)
        : scene_(scene), clip_(clip), name_(name), skin_(skin), verdict_(verdict) {
        // Each bone on the way up may be off along each axis, and so may the corner.
        bound_ = tolerances.metres * std::numbers::sqrt3 * (skin.Depth() + 2);
        const double bind = skin.Measure(std::nullopt, scene.StaticTime(), true);
        isBoundHere_ = bind <= bound_;
        ++verdict.skins;
        verdict.bind = std::max(verdict.bind, bind);
        if (!isBoundHere_) {
            ++verdict.otherwiseBound;
            // What a bone may be turned shows the more the farther a vertex is from it.
            bound_ += tolerances.degrees * std::numbers::pi / 180 * skin.Depth() * skin.Reach();
        }
    }

    void CompareFrame(int frame) {
        const host::TimeValue time = clip_.TimeOf(scene_, frame);
        double metres = 0;
        if (isBoundHere_) {
            verdict_.skin.Meet(skin_.Measure(frame, time, false), frame);
            metres = skin_.Measure(frame, time, true);
        } else {
            metres = skin_.MeasureMotion(frame, time);
            verdict_.motion.Meet(metres, frame);
        }
        if (metres > bound_) {
            verdict_.findings.Add("bent skin", metres, name_ + ", frame " + std::to_string(frame));
        }
    }

private:
    const eVerifiedScene& scene_;
    const eSceneClip& clip_;
    const std::string& name_;
    eBentSkin& skin_;
    eClipVerdict& verdict_;
    double bound_ = 0;
    bool isBoundHere_ = false;
};

}  // namespace

void CompareBentSkin(const eVerifiedScene& scene, const eSceneModel& model, const eSceneClip& clip,
                     const eVerifiedMesh& mesh, const eWrittenModel& skeleton, const ePlayedClip& played,
                     const eTolerances& tolerances, eClipVerdict& verdict) {
    if (mesh.file == nullptr || !mesh.file->skinned) {
        return;
    }
    eBentSkin skin(scene, model, mesh, skeleton, played);
    if (!skin.CanBend()) {
        return;
    }
    eSkinComparison comparison(scene, clip, mesh.source.name, skin, tolerances, verdict);
    const int frames = std::min(played.file.frameCount, clip.FrameCount());
    const int tried = std::min(kFramesTried, frames);
    for (int i = 0; i < tried; ++i) {
        comparison.CompareFrame(tried > 1 ? i * (frames - 1) / (tried - 1) : 0);
    }
}

}  // namespace verify

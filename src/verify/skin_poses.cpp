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
        : scene_(scene), model_(model), mesh_(mesh), file_(*mesh.file), skeleton_(skeleton, clip) {
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
        std::vector<host::DMatrix3> movements;
        for (const int bone : bones_) {
            movements.push_back(skeleton_.MovementOf(static_cast<std::size_t>(bone)));
        }
        const host::DMatrix3 ownMovement = skeleton_.MovementOf(static_cast<std::size_t>(owner_));
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
                const eVector bent = Bend(file_.Vertex(subMesh, i), subMesh, movements, ownMovement);
                largest = std::max(
                    largest, Length(bent - shown[static_cast<std::size_t>(source.node)][source.vertex]));
            }
        }
        return largest;
    }

private:
    eVector Bend(const eExportVertex& vertex, const eFileSubMesh& subMesh,
                 const std::vector<host::DMatrix3>& movements, const host::DMatrix3& ownMovement) const {
        const eVector rest =
            Through(Exact(vertex.position), skeleton_.Rest(static_cast<std::size_t>(owner_)));
        const int stored = WeightCount(vertex.format);
        eVector bent{};
        double left = 1;
        for (int i = 0; i <= stored; ++i) {
            const double weight = i < stored ? vertex.weights[i] : left;
            left -= weight;
            const std::size_t number = stored > 0 ? subMesh.palette[vertex.boneIndices[i]] : 0;
            const eVector moved = Through(rest, number > 0 ? movements[number - 1] : ownMovement);
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
    int owner_ = -1;
    std::vector<int> bones_;
    int deepest_ = 0;
    std::vector<eSourceVertex> sources_;
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
    // Each bone on the way up may be off along each axis, and so may the corner.
    const double bound = tolerances.metres * std::numbers::sqrt3 * (skin.Depth() + 2);
    const double bind = skin.Measure(std::nullopt, scene.StaticTime(), true);
    const bool isBoundHere = bind <= bound;
    ++verdict.skins;
    verdict.bind = std::max(verdict.bind, bind);
    verdict.otherwiseBound += isBoundHere ? 0 : 1;
    const int frames = std::min(played.file.frameCount, clip.FrameCount());
    const int tried = std::min(kFramesTried, frames);
    for (int i = 0; i < tried; ++i) {
        const int frame = tried > 1 ? i * (frames - 1) / (tried - 1) : 0;
        const host::TimeValue time = clip.TimeOf(scene, frame);
        verdict.skin.Meet(skin.Measure(frame, time, false), frame);
        const double metres = skin.Measure(frame, time, true);
        if (isBoundHere && metres > bound) {
            verdict.findings.Add("bent skin", metres, mesh.source.name + ", frame " + std::to_string(frame));
        }
    }
}

}  // namespace verify

#include "verify/frame_meshes.h"

#include <algorithm>

#include "io/clean_name.h"
#include "written/played_vertices.h"

namespace verify {

namespace {

class eVertexComparison {
public:
    eVertexComparison(const eVerifiedScene& scene, const eSceneClip& clip, const eVerifiedMesh& mesh,
                      const eTolerances& tolerances, eClipVerdict& verdict)
        : scene_(scene),
          mesh_(mesh),
          clip_(clip),
          bounds_(tolerances),
          verdict_(verdict),
          noLight_(scene),
          static_(ReadSceneTriangles(scene, mesh.source, noLight_, scene.StaticTime())) {
        for (host::INode* node : mesh.source.feeders) {
            moves_.push_back(clip.Covers(scene, *node));
        }
    }

    void CompareFrame(int frame, const ePlayedVertices& played) {
        const bool isStatic = clip_.firstFrame + frame == 0;
        const eSceneTriangles now =
            isStatic ? static_
                     : ReadSceneTriangles(scene_, mesh_.source, noLight_, clip_.TimeOf(scene_, frame));
        const bool isLike = now.triangles.size() == static_.triangles.size();
        for (std::size_t i = 0; i < mesh_.vertices.size(); ++i) {
            const bool moves = isLike && moves_[static_cast<std::size_t>(static_.triangles[i].node)];
            CompareTriangle((moves ? now : static_).triangles[i], mesh_.vertices[i], frame, played);
        }
    }

private:
    void CompareTriangle(const eSceneTriangle& triangle, const std::array<int, 3>& vertices, int frame,
                         const ePlayedVertices& played) {
        for (std::size_t c = 0; c < 3 && vertices[0] >= 0; ++c) {
            const double metres =
                LargestDifference(triangle.corners[c].position, Exact(played.At(vertices[c])));
            verdict_.vertices.Meet(metres, frame);
            if (metres > bounds_.metres + kSlack) {
                verdict_.findings.Add("vertices", metres,
                                      mesh_.source.name + ", frame " + std::to_string(frame));
            }
        }
    }

    static constexpr double kSlack = 1e-5;  // of single precision

    const eVerifiedScene& scene_;
    const eVerifiedMesh& mesh_;
    const eSceneClip& clip_;
    eTolerances bounds_;
    eClipVerdict& verdict_;
    eBakedLight noLight_;
    eSceneTriangles static_;
    std::vector<bool> moves_;  // by node
};

}  // namespace

void CompareVertices(const eVerifiedScene& scene, const eSceneClip& clip, const eVerifiedMesh& mesh,
                     const eAnimation& written, const eTolerances& tolerances, eClipVerdict& verdict) {
    const std::string bone = CleanNodeName(mesh.source.owner->GetName(), true);
    const auto entry = std::ranges::find(written.bones, bone);
    if (mesh.file == nullptr || entry == written.bones.end()) {
        return;
    }
    ++verdict.frameMeshes;
    ePlayedVertices played(*mesh.file);
    eVertexComparison comparison(scene, clip, mesh, tolerances, verdict);
    for (int frame = 0; frame < written.frameCount; ++frame) {
        const eAnimationKey* const key =
            KeyIn(written, frame, static_cast<std::size_t>(entry - written.bones.begin()));
        if (key != nullptr && !key->vertexSection.empty() && !played.Take(key->vertexSection)) {
            verdict.findings.Add("broken clip", 0, bone + ", frame " + std::to_string(frame));
            return;
        }
        comparison.CompareFrame(frame, played);
    }
}

}  // namespace verify

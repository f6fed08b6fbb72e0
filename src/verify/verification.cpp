#include "verify/verification.h"

#include <algorithm>

#include "verify/frame_meshes.h"
#include "verify/pictures.h"
#include "verify/references.h"
#include "verify/scene_models.h"
#include "verify/skin_poses.h"
#include "verify/verify_clip.h"
#include "verify/verify_mesh.h"
#include "verify/verify_previews.h"
#include "verify/verify_properties.h"
#include "verify/verify_skeleton.h"
#include "verify/verify_supports.h"
#include "verify/verify_volumes.h"
#include "verify/verify_zones.h"

namespace verify {

namespace {

class eVerifier {
public:
    eVerifier(const eVerifiedScene& scene, const eTolerances& tolerances)
        : scene_(scene), tolerances_(tolerances), light_(scene) {}

    eVerification Run() {
        eVerification verification{.root = scene_.options.resourceRoot, .tolerances = tolerances_};
        std::vector<host::INode*> scanLights;
        const std::vector<eSceneModel> models = FindModels(scene_, scanLights);
        light_.Meet(scanLights);
        for (const eSceneModel& model : models) {
            light_.Meet(model.bones.lights);
            verification.models.push_back(VerifyModel(model));
        }
        TellForeignMeshes(models, verification);
        return verification;
    }

private:
    eModelVerdict VerifyModel(const eSceneModel& model) {
        eModelVerdict verdict{.root = model.root->GetName(), .folder = model.folder, .leftOut = model.fault};
        if (!model.fault.empty()) {
            return verdict;
        }
        eWrittenModel written;
        if (scene_.options.exportMesh != 0) {
            written = ReadWrittenModel(model.File(".mdl"));
            CompareTexts(model, written, verdict);
        }
        const eMeshSources sources = FindMeshSources(scene_, model);
        verdict.lostNodes.assign(sources.leftOut.begin(), sources.leftOut.end());
        std::vector<eVerifiedMesh> moving;
        for (const eSceneMesh& source : sources.meshes) {
            eVerifiedMesh mesh = VerifyMesh(scene_, source, light_, meshes_, tolerances_);
            if (mesh.file != nullptr) {
                references_.FollowMaterials(model.folder, *mesh.file, mesh.verdict.findings);
                ComparePictures(model.folder, mesh);
            }
            verdict.meshes.push_back(mesh.verdict);
            if (source.hasFrames || (mesh.file != nullptr && mesh.file->skinned)) {
                moving.push_back(std::move(mesh));
            }
        }
        verdict.pictures = pictures_.Take();
        references_.FollowViews(model.folder, written, verdict.findings);
        for (const eSceneClip& clip : ClipsToVerify(model)) {
            verdict.clips.push_back(VerifyClip(model, clip, moving, written));
        }
        return verdict;
    }

    // Of a model text that is not there nothing else is told.
    void CompareTexts(const eSceneModel& model, const eWrittenModel& written, eModelVerdict& verdict) const {
        eFindings& findings = verdict.findings;
        CompareSkeleton(scene_, model, written, tolerances_, findings);
        if (!written.problem.empty()) {
            return;
        }
        const eSideNodes side = FindSideNodes(scene_, model);
        CompareSupports(scene_, side.supports, written, findings);
        CompareZones(scene_, model, side.zones, written, tolerances_, findings);
        CompareVolumes(scene_, side.volumes, written, tolerances_, findings);
        ComparePreviews(scene_, model, side.previews, written, tolerances_, findings);
        CompareProperties(scene_, model, side, written, findings);
        verdict.compared = {{"bones", model.bones.bones.size()},
                            {"volumes", side.volumes.size()},
                            {"zones", side.zones.size()},
                            {"support points", side.supports.size()},
                            {"previews", side.previews.size()}};
    }

    void ComparePictures(const eName& folder, const eVerifiedMesh& mesh) {
        for (const eFileSubMesh& subMesh : mesh.file->subMeshes) {
            const auto [place, name] = Resolve(folder, subMesh.material);
            const auto known = std::ranges::find(mesh.scene.materials, name);
            host::Mtl* const leaf =
                known != mesh.scene.materials.end()
                    ? mesh.scene.leaves[static_cast<std::size_t>(known - mesh.scene.materials.begin())]
                    : nullptr;
            if (leaf != nullptr) {
                pictures_.Compare(place, name, *leaf);
            }
        }
    }

    std::vector<eSceneClip> ClipsToVerify(const eSceneModel& model) const {
        return scene_.options.exportAnimation != 0 ? FindClips(scene_, model) : std::vector<eSceneClip>();
    }

    // `moving`: the meshes that a clip bends, by a skin or by frames.
    eClipVerdict VerifyClip(const eSceneModel& model, const eSceneClip& clip,
                            const std::vector<eVerifiedMesh>& moving, const eWrittenModel& skeleton) const {
        eClipVerdict verdict{.name = clip.name,
                             .file = clip.file,
                             .frames = clip.FrameCount(),
                             .overwrittenBy = clip.overwrittenBy};
        const std::optional<platform::eFileContent> bytes = ReadWritten(clip.file);
        if (!bytes) {
            verdict.findings.Add("missing clip", 0, clip.name);
            return verdict;
        }
        std::string problem;
        std::optional<eAnimation> file = ReadAnimation(*bytes, problem);
        if (!file) {
            verdict.findings.Add("broken clip", 0, problem);
            return verdict;
        }
        const ePlayedClip played(std::move(*file));
        ComparePoses(scene_, model, clip, played, tolerances_, verdict);
        for (const eVerifiedMesh& mesh : moving) {
            if (mesh.source.hasFrames) {
                CompareVertices(scene_, clip, mesh, played.file, tolerances_, verdict);
            }
            CompareBentSkin(scene_, model, clip, mesh, skeleton, played, tolerances_, verdict);
        }
        return verdict;
    }

    // A file that holds a mesh of the scene must hold no others.
    void TellForeignMeshes(const std::vector<eSceneModel>& models, eVerification& verification) {
        std::vector<std::string> told;
        for (std::size_t i = 0; i < models.size(); ++i) {
            for (const eMeshVerdict& mesh : verification.models[i].meshes) {
                if (std::ranges::find(told, mesh.file) == told.end()) {
                    told.push_back(mesh.file);
                    for (const std::string& name :
                         meshes_.NotTaken(mesh.file.substr(0, mesh.file.rfind('/')))) {
                        verification.models[i].findings.Add("foreign mesh", 0, name);
                    }
                }
            }
        }
    }

    const eVerifiedScene& scene_;
    eTolerances tolerances_;
    eBakedLight light_;
    eWrittenMeshes meshes_;
    eWrittenMaterials materials_{scene_};
    eReferences references_{meshes_, materials_};
    ePictures pictures_{scene_, tolerances_, materials_};
};

bool HasNoFinding(const eModelVerdict& model) {
    return model.findings.IsEmpty() &&
           std::ranges::all_of(model.meshes, [](const eMeshVerdict& m) { return m.findings.IsEmpty(); }) &&
           std::ranges::all_of(model.pictures,
                               [](const ePictureVerdict& p) { return p.findings.IsEmpty(); }) &&
           std::ranges::all_of(model.clips, [](const eClipVerdict& c) { return c.findings.IsEmpty(); });
}

}  // namespace

bool eVerification::IsClean() const {
    return std::ranges::all_of(models, HasNoFinding);
}

std::string eVerification::FromRoot(const std::string& path) const {
    const std::size_t start = path.starts_with(root) ? path.find_first_not_of('/', root.size()) : 0;
    return path.substr(std::min(start, path.size()));
}

eVerification Verify(const eVerifiedScene& scene, const eTolerances& tolerances) {
    return eVerifier(scene, tolerances).Run();
}

}  // namespace verify

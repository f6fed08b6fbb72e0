#include "gltf/make_glb.h"

#include <algorithm>

#include "base/ansi.h"
#include "gltf/bone_nodes.h"
#include "gltf/clips.h"
#include "gltf/marks.h"
#include "gltf/materials.h"
#include "gltf/mesh_nodes.h"
#include "inspect/model_view.h"

namespace gltf {

namespace {

class eGlbMaker {
public:
    eGlbMaker(eModelFiles& files, const eGlbOptions& options) : files_(files), options_(options) {}

    void Make(eGlbFile& result) {
        ePictures pictures(glb_, options_.commonTextures, files_.warnings);
        eMaterials materials(glb_, pictures, files_.warnings);
        eBoneNodes bones(glb_, files_);
        eMeshNodes meshes(glb_, files_, bones, materials);
        if (!meshes.Add(bones, result.problem)) {
            return;
        }
        eMarks marks(glb_, files_, bones, options_.metresPerUnit);
        if (options_.hasMarks) {
            marks.Add();
        }
        AddClips(glb_, files_, bones, meshes, options_.framesPerSecond);
        AddScene(meshes, marks);
        result.content = glb_.File();
        result.warnings = Once(files_.warnings);
        result.bones = files_.model.bones.size();
        result.meshes = static_cast<std::size_t>(
            std::ranges::count_if(meshes.All(), [](const eMeshNode& node) { return node.mesh != nullptr; }));
        result.triangles = meshes.Triangles();
        result.clips = static_cast<std::size_t>(glb_.Count("animations"));
    }

private:
    void AddScene(const eMeshNodes& meshes, const eMarks& marks) {
        std::vector<int> nodes;
        for (std::size_t i = 0; i < files_.model.bones.size(); ++i) {
            if (files_.model.bones[i].above < 0) {
                nodes.push_back(static_cast<int>(i));
            }
        }
        nodes.insert(nodes.end(), meshes.AtTop().begin(), meshes.AtTop().end());
        nodes.insert(nodes.end(), marks.AtTop().begin(), marks.AtTop().end());
        eJson extras{{"model", inspect::DescribeModel(files_.model.text)}};
        if (!files_.entity.Blocks().empty()) {
            extras["entity"] = inspect::DescribeEntity(files_.entity);
        }
        extras["framesPerSecond"] = options_.framesPerSecond;
        glb_.Add("scenes", {{"name", ToUtf8(files_.name)}, {"nodes", nodes}, {"extras", extras}});
        glb_.Root()["scene"] = 0;
    }

    static std::vector<eBilingual> Once(const std::vector<eBilingual>& warnings) {
        std::vector<eBilingual> once;
        for (const eBilingual& warning : warnings) {
            if (std::ranges::find(once, warning) == once.end()) {
                once.push_back(warning);
            }
        }
        return once;
    }

    eGlb glb_;
    eModelFiles& files_;
    const eGlbOptions& options_;
};

}  // namespace

eGlbFile MakeGlb(const eName& place, const eGlbOptions& options) {
    eGlbFile result;
    std::optional<eModelFiles> files = ReadModelFiles(place, result.problem);
    if (files) {
        eGlbMaker(*files, options).Make(result);
    }
    return result;
}

}  // namespace gltf

// A whole export whose meshes a test looks into: the file, and the face soup that it was made of.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <utility>

#include "mesh/extract_node_mesh.h"
#include "mesh/file/mesh_check.h"
#include "mesh/file/mesh_reader.h"
#include "run/export.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"
#include "standalone/terminal/progress_sink.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace mesh_test {

inline std::span<const std::uint8_t> BytesOf(const std::string& file) {
    return {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()};
}

// Copies the face soup of each mesh while its corners are welded, as it goes when they are.
class eSoupKeeper : public standalone::eProgressSink {
public:
    explicit eSoupKeeper(const Export& ownRun) : run(ownRun) {}

    const eExportMesh& Of(const host::INode* node) const { return soups.at(node); }

    void Start(const std::string&) override { isComplete = false; }
    void Update(int percent) override {
        if (percent == 0 || std::exchange(isComplete, true)) {
            return;
        }
        for (const eExportBone& bone : run.model->bones) {
            if (bone.isWritten && !bone.mesh.faces.empty()) {
                soups[bone.node] = bone.mesh;
            }
        }
    }
    void End() override {}

private:
    const Export& run;
    std::map<const host::INode*, eExportMesh> soups;
    bool isComplete = false;  // the stage has done its first percent
};

class eMeshRun : public support::eExportRun {
public:
    explicit eMeshRun(const support::eSceneBuilder& scene) : eMeshRun(scene.Build()) {}
    explicit eMeshRun(standalone::eSceneData scene) : eExportRun(std::move(scene)) {
        host.SetProgressSink(&keeper);
        Do();
    }

    // The slot of the bone as the last model left it.
    eExportBone& Bone(const char* node) {
        for (std::size_t i = 0; i < exporter.model->bones.size(); ++i) {
            if (exporter.model->boneNames[i] == eName(node)) {
                return exporter.model->bones[i];
            }
        }
        ADD_FAILURE() << "no bone " << node;
        return exporter.model->bones.front();
    }
    const eExportMesh& Faces(const char* node) { return keeper.Of(host.GetINodeByName(node)); }
    const eExportMeshFrame& Soup(const char* node) { return Faces(node).frames.front(); }

    // A mesh of the file, which must be sound; an empty mesh if it is not there. What it points to lives as
    // long as the run.
    eFileMesh Mesh(const std::string& name, const std::string& model = "units/tank") {
        file = Read(model + "/.mesh");
        std::string problem;
        const std::optional<eMeshFileContent> content = ReadMeshFile(BytesOf(file), problem);
        EXPECT_TRUE(content || file.empty()) << problem;
        for (const eFileMesh& mesh : content.value_or(eMeshFileContent{}).meshes) {
            EXPECT_TRUE(CheckMesh(mesh).empty()) << CheckMesh(mesh).front();
            if (mesh.name == name) {
                return mesh;
            }
        }
        return {};
    }

private:
    eSoupKeeper keeper{exporter};
    std::string file;
};

// A run that stands before the meshes of the scene's first root: bones are numbered, slots are empty.
class eMeshReading {
public:
    explicit eMeshReading(const support::eSceneBuilder& scene) : host(scene.Build()) {
        run.host = &host;
        run.model->currentRoot = host.GetRootNode()->GetChildNode(0);
        run.scene->models.resize(1);
        EXPECT_FALSE(CollectBones(run, *run.model->currentRoot, run.model->boneCount, false));
        run.model->bones.resize(static_cast<std::size_t>(run.model->boneCount));
    }
    ~eMeshReading() { ForgetBoneNumbers(run); }
    eMeshReading(const eMeshReading&) = delete;
    eMeshReading& operator=(const eMeshReading&) = delete;

    host::INode& Node(const char* name) { return *host.GetINodeByName(name); }
    // The slot of the node as the walk leaves it before the mesh is read.
    eExportBone& Slot(const char* name, std::size_t frames = 1) {
        eExportBone& bone = run.model->bones[static_cast<std::size_t>(NodeIndex(Node(name), nullptr))];
        bone.node = &Node(name);
        bone.hasMesh = 1;
        bone.mesh.frames.resize(frames);
        return bone;
    }

    standalone::StandaloneHost host;
    Export run;
    support::eMessageCollector messages;
};

// The root of the model that Mesh looks for.
inline support::eNode Model(support::eSceneBuilder& scene) {
    return scene.Node("root").Property("Model=units/tank").Object(standalone::eHelperObject{});
}

// A node with a mesh of its own, marked for export.
inline support::eNode MeshNode(support::eNode parent, const std::string& name, const host::Mesh& mesh) {
    return parent.Child(name).Property("Poly").Object(standalone::eMeshObject{mesh, {}});
}

// One triangle in the x-y plane, with map channel 1.
inline host::Mesh TexturedTriangle() {
    host::Mesh mesh = support::TriangleMesh({{0, 0, 0}, {2, 0, 0}, {0, 2, 0}}, {{0, 1, 2}});
    mesh.maps.push_back({1, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}}}});
    return mesh;
}

// A standard material with a map in its diffuse slot.
inline standalone::eStandardMaterial TexturedMaterial(int map) {
    standalone::eStandardMaterial material;
    material.maps[host::kDiffuseMap].map = map;
    return material;
}

}  // namespace mesh_test

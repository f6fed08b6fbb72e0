// The walk over the bones of one model in memory, with a mesh stage that only takes notes.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "io/streams/stream_memory.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/resource_sets.h"
#include "run/run_flags.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"
#include "scene/skeleton/bone_writer.h"
#include "scene/skeleton/mesh_stage.h"
#include "standalone/standalone_host.h"
#include "support/message_collector.h"
#include "support/scene_builder.h"

namespace support {

inline std::string TextOf(const xIo::eMemoryStream& stream) {
    std::string text;
    for (const std::uint8_t byte : stream.Content()) {
        if (byte != '\r') {
            text += static_cast<char>(byte);
        }
    }
    return text;
}

//     support::eSkeletonWalk walk(scene.Build());
//     walk.run.options.exportIK = 0;
//     walk.Do();
//     EXPECT_EQ(walk.mdl, ...);
class eSkeletonWalk : private eMeshStage {
public:
    explicit eSkeletonWalk(standalone::eSceneData scene) : host(std::move(scene)) {
        run.host = &host;
        run.mirrorMatrix = host::ScaleMatrix({1, -1, 1});
        exportSelected = false;
    }
    ~eSkeletonWalk() override {
        exportSelected = false;
        ForgetBoneNumbers(run);
    }
    eSkeletonWalk(const eSkeletonWalk&) = delete;
    eSkeletonWalk& operator=(const eSkeletonWalk&) = delete;

    host::INode& Root() { return *host.GetRootNode()->GetChildNode(0); }
    host::INode& Node(const char* name) { return *host.GetINodeByName(name); }

    // Numbers the bones of the scene's first root; true if an error was told.
    bool Number() {
        run.model->currentRoot = &Root();
        run.scene->models.resize(1);
        run.model->boneCount = 0;
        run.model->boneNames.clear();
        return CollectBones(run, Root(), run.model->boneCount, false);
    }

    // Numbers and writes; the result is that of WriteBone.
    bool Do() {
        EXPECT_FALSE(Number());
        xIo::eMemoryStream mdlStream, defStream;
        run.model->bones.resize(static_cast<std::size_t>(run.model->boneCount));
        run.texts->mdlWriter = std::make_unique<xIo::xSdl::eWriter>();
        run.texts->defWriter = std::make_unique<xIo::xSdl::eWriter>();
        run.texts->mdlWriter->Attach(&mdlStream);
        run.texts->defWriter->Attach(&defStream);
        const bool goesOn = WriteBone(run, *this, Root(), nullptr, DetailEntry | RootBone);
        run.texts->mdlWriter.reset();
        run.texts->defWriter.reset();
        mdl = TextOf(mdlStream);
        def = TextOf(defStream);
        return goesOn;
    }

    std::vector<std::string> Messages() const { return messages.Lines(); }
    // Names of the bones by number.
    std::vector<std::string> BoneNames() const {
        return {run.model->boneNames.begin(), run.model->boneNames.end()};
    }

    std::string mdl;
    std::string def;
    // "read NODE", with " of TARGET" and " into COMMON", and "write NAME to own" or "to common", in order.
    std::vector<std::string> calls;
    // Names of meshes that have nothing to write.
    std::set<std::string> emptyMeshes;

    eMessageCollector messages;
    standalone::StandaloneHost host;
    Export run;

private:
    void ExtractNodeMesh(Export&, host::INode& node, host::INode* meshTarget,
                         host::INode* commonTarget) override {
        calls.push_back("read " + node.GetName() +
                        (meshTarget != nullptr ? " of " + meshTarget->GetName() : "") +
                        (commonTarget != nullptr ? " into " + commonTarget->GetName() : ""));
    }
    bool WriteMesh(Export&, eExportResourceSet& set, const eName& name, int) override {
        calls.push_back("write " + name.Text() +
                        (&set == &run.resources->commonResources ? " to common" : " to own"));
        return !emptyMeshes.contains(name.Text());
    }
};

// A scene of one model, to be filled below its root before it is walked.
class eSkeletonTest : public testing::Test {
protected:
    static eNode Helper(eNode parent, const char* name) {
        return parent.Child(name).Object(standalone::eHelperObject{});
    }
    static eNode Box(eNode parent, const char* name) {
        return parent.Child(name).Object(standalone::eBoxObject{1, 1, 1});
    }

    // The walk over the scene as it is, which must come to its end.
    eSkeletonWalk& Walked() {
        lastWalk.emplace(scene.Build());
        EXPECT_TRUE(lastWalk->Do());
        return *lastWalk;
    }

    eSceneBuilder scene;
    eNode root = scene.Node("root").Property("Model=m").Object(standalone::eHelperObject{});

private:
    std::optional<eSkeletonWalk> lastWalk;
};

}  // namespace support

// Any scene, document or glTF, on its way to the mesh file: whatever the loaders let through must come to an
// end, within its memory, and what is written must read back sound.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

#include "base/diagnostics.h"
#include "export/mesh_stage_driver.h"
#include "io/streams/stream_memory.h"
#include "material/run_materials.h"
#include "mesh/file/mesh_check.h"
#include "mesh/file/mesh_file.h"
#include "mesh/file/mesh_reader.h"
#include "mesh/strips/strip_messages.h"
#include "platform/message_box.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/resource_sets.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/scene_as_read.h"
#include "scene/skeleton/bone_writer.h"
#include "standalone/loaders/gltf/gltf_importer.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_format.h"
#include "standalone/standalone_host.h"

namespace {

void Check(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

void BeSilent() {
    platform::SetMessageBoxSink([](const platform::eMessageBox&) { return platform::eBoxAnswer::Cancel; });
    xDebug::SetLogSink([](const std::string&) {});
    stripMessageSink = [](const char*) {};
}

std::optional<standalone::eSceneData> Load(std::string_view bytes) {
    return standalone::SceneFormatOf(bytes) == standalone::eSceneFormat::Document
               ? standalone::ReadSceneDocument(bytes, "/fuzz/a.scene.json").scene
               : standalone::ImportGltf("/fuzz/a.glb", bytes, {.fps = {}, .asModel = "fuzz"}).scene;
}

// A few bytes may ask for a million triangles, which is no fault but takes its time.
bool IsSmall(const standalone::eSceneData& scene) {
    for (const standalone::eObjectData& object : scene.objects) {
        const auto* sphere = std::get_if<standalone::eSphereObject>(&object.kind);
        const auto* cylinder = std::get_if<standalone::eCylinderObject>(&object.kind);
        if ((sphere != nullptr && sphere->segments > 32) || (cylinder != nullptr && cylinder->sides > 256)) {
            return false;
        }
    }
    return true;
}

void CheckWritten(eExportResourceSet& set) {
    if (set.meshTable.empty()) {
        return;
    }
    xIo::eMemoryStream file;
    WriteMeshes(set, file);
    std::string problem;
    const std::optional<eMeshFileContent> content = ReadMeshFile(file.Content(), problem);
    Check(content.has_value());
    for (const eFileMesh& mesh : content->meshes) {
        Check(CheckMesh(mesh).empty());
    }
}

void WriteModel(Export& run, host::INode& root) {
    run.model->currentRoot = &root;
    run.model->boneCount = 0;
    run.model->boneNames.clear();
    run.materials->materialMap.clear();
    if (!CollectBones(run, root, run.model->boneCount, false)) {
        run.model->bones.clear();
        run.model->bones.resize(static_cast<std::size_t>(run.model->boneCount));
        xIo::eMemoryStream mdl, def;
        run.texts->mdlWriter = std::make_unique<xIo::xSdl::eWriter>();
        run.texts->defWriter = std::make_unique<xIo::xSdl::eWriter>();
        run.texts->mdlWriter->Attach(&mdl);
        run.texts->defWriter->Attach(&def);
        eMeshStageDriver meshStage;
        WriteBone(run, meshStage, root, nullptr, DetailEntry | RootBone);
        run.texts->mdlWriter.reset();
        run.texts->defWriter.reset();
        CheckWritten(run.resources->modelResources);
    }
    ForgetBoneNumbers(run);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    BeSilent();
    std::optional<standalone::eSceneData> scene = Load({reinterpret_cast<const char*>(data), size});
    if (!scene || !IsSmall(*scene)) {
        return 0;
    }
    standalone::StandaloneHost host(std::move(*scene));
    Export run;
    run.host = &host;
    run.options.exportAnimation = 0;
    run.scene->models.resize(1);
    run.modelReports.resize(1);
    for (int i = 0; i < host.GetRootNode()->NumberOfChildren(); ++i) {
        WriteModel(run, *host.GetRootNode()->GetChildNode(i));
    }
    return 0;
}

#pragma once

#include <map>
#include <memory>
#include <vector>

#include "animation/export_animation.h"
#include "animation/frame_table.h"
#include "animation/selection_members.h"
#include "export/common_set.h"
#include "host/interface.h"
#include "host/scene_export.h"
#include "host/timeline.h"
#include "io/name.h"
#include "io/sdl/sdl_writer.h"
#include "io/streams/stream_file.h"
#include "material/export_texture.h"
#include "material/queries/shade_context.h"
#include "mesh/strips/mesh_order.h"
#include "run/export_material.h"
#include "run/options.h"
#include "run/options_dialog.h"
#include "run/resource_set.h"
#include "run/run_flags.h"
#include "run/run_report.h"
#include "scene/export_bone.h"
#include "scene/export_model.h"
#include "scene/instance_map.h"
#include "scene/lod_siblings.h"
#include "scene/mesh_views.h"
#include "scene/shared_view.h"

// One export run and everything that its stages share. The operations of the stages are free functions that
// take the run; a new run rebuilds every member, so nothing but the options file outlives it.
class Export : public host::SceneExport {
public:
    // The number of a bone in its model, attached to the bone's node.
    struct eRenderData : host::RenderData {
        explicit eRenderData(int number) : index(number) {}
        int index;
    };

    Export();
    ~Export() override;

    eExportOptions options;
    // Set by whoever makes the run; without one no dialog can be shown and the loaded options count.
    eOptionsDialog optionsDialog;
    // Set by whoever wants to know.
    eMeshOrderObserver meshOrderObserver;

    // The host and what the run read from it at its start.
    host::Interface* host = nullptr;
    int frameStart = 0;  // the host's animation range, frames
    int frameEnd = 0;
    host::Matrix3 mirrorMatrix;  // scene space to the engine's: the mirror in y
    host::Color sceneAmbient;
    host::Color scaledAmbient;  // sceneAmbient times ambientPercent / 100
    eSceneLights sceneLights;

    // The models in export order and the cursor.
    std::vector<eExportModel> models;
    std::vector<eModelReport> modelReports;  // one per model, in the same order
    unsigned modelIndex = 0;
    host::INode* currentRoot = nullptr;
    bool structureMode = false;  // the current model carries "Structure"

    // What the run has read of the scene so far, so that it is not read again for each node.
    eLodIndex lodIndex;
    eInstanceMap instances;
    eMeshViews meshViews;
    std::vector<host::INode*> numberedNodes;  // the nodes that have an eRenderData

    // The skeleton of the current model.
    int boneCount = 0;
    std::vector<eName> boneNames;    // by bone number, detail levels included
    std::vector<eExportBone> bones;  // by bone number
    std::map<host::INode*, std::vector<host::Point3>, host::IdentityLess> supportPoints;  // scene units
    bool landPatch = false;  // the .def asks for "land_patch"

    // The animations of the current model.
    std::vector<eExportAnimation> animations;
    eFrameTable frames;
    eSelectionMembers selectionMembers;  // of the sets asked for so far in the run

    // The meshes and materials of the current model.
    int meshFrame = 0;    // the mesh frame being filled; 0 outside the frame loop
    int meshCounter = 0;  // meshes triangulated so far, for the progress title
    eExportMaterialMap materialMap;
    eExportResourceSet modelResources;
    eExportResourceSet commonResources;
    eTextureClaims textureClaims;  // of the whole run
    SContext shadeContext{sceneLights};

    // Folders and files of the current model.
    eName modelFolder;
    eName basePath;      // stem of .mdl and .def
    eName commonFolder;  // of the shared resources
    eName commonPrefix;  // "common/", "../common/" or empty: from the model to the shared resources
    host::INode* commonOwner = nullptr;  // the Structure that owns commonFolder
    bool commonPending = false;          // the set of commonOwner is being filled
    eSharedMeshes sharedMeshes;  // of the current model or, while a set is pending, of all that fill it
    std::vector<eWaitingCommonSet> waitingCommonSets;  // of enclosing Structures, the outermost first
    std::unique_ptr<xIo::xSdl::eWriter> mdlWriter;
    std::unique_ptr<xIo::xSdl::eWriter> defWriter;
    std::unique_ptr<xIo::xSdl::eWriter> animWriter;
    std::unique_ptr<xIo::eFileStream> anmStream;

    // The static frame option as a time of the host, in ticks.
    host::TimeValue StaticTime() const { return ::host::TimeOfFrame(*host, options.staticFrame); }

    int ExtCount() override;
    const char* Ext(int n) override;
    const char* LongDesc() override;
    const char* ShortDesc() override;
    const char* AuthorName() override;
    const char* CopyrightMessage() override;
    const char* OtherMessage1() override;
    const char* OtherMessage2() override;
    unsigned Version() override;
    void ShowAbout(void* window) override;
    bool SupportsOptions(int ext, std::uint32_t options) override;

    // One whole run: from the options to the last file. Always 1, also after a cancelled or an empty run.
    int DoExport(const char* name, host::ExpInterface* exportInterface, host::Interface* hostInterface,
                 bool suppressPrompts, std::uint32_t options) override;
};

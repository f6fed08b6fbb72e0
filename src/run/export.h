#pragma once

#include <functional>
#include <vector>

#include "base/owned.h"
#include "host/interface.h"
#include "host/scene_export.h"
#include "host/timeline.h"
#include "run/options.h"
#include "run/options_dialog.h"
#include "run/run_report.h"

struct eCurrentModel;
struct eMeshOrder;
struct eModelMotion;
struct eModelTexts;
struct eResourceSets;
struct eRunJournal;
struct eRunMaterials;
struct eSceneAsRead;
struct eWaitingCommonSet;
class SContext;

// Told of each mesh that is written. Whoever sets it pays for two simulations of the cache a mesh.
using eMeshOrderObserver = std::function<void(const eMeshOrder&)>;

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
    eRunJournal* journal = nullptr;  // run_journal.h; null: nobody asks why

    // The host and what the run read from it at its start.
    host::Interface* host = nullptr;
    int frameStart = 0;  // the host's animation range, frames
    int frameEnd = 0;
    host::Matrix3 mirrorMatrix;  // scene space to the engine's: the mirror in y

    // What the stages share, each record in the folder of those that fill it.
    eOwned<eSceneAsRead> scene;                        // scene/scene_as_read.h
    eOwned<eCurrentModel> model;                       // scene/current_model.h
    eOwned<eModelMotion> motion;                       // animation/model_motion.h
    eOwned<eRunMaterials> materials;                   // material/run_materials.h
    eOwned<SContext> shadeContext;                     // material/queries/shade_context.h
    eOwned<eResourceSets> resources;                   // resource_sets.h
    std::vector<eWaitingCommonSet> waitingCommonSets;  // of enclosing Structures, the outermost first
    eOwned<eModelTexts> texts;                         // model_texts.h
    std::vector<eModelReport> modelReports;            // parallel to the models of the scene

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

#include "export/scan.h"

#include <algorithm>

#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/properties/node_properties.h"
#include "scene/run_journal.h"
#include "scene/scene_as_read.h"

namespace {

void ScanRoot(Export& run, host::INode& root) {
    if (root.IsNodeHidden() || GetLodLevel(root) != 0) {
        NoteLeftOut(run, root, root.IsNodeHidden() ? eLeftOut::Hidden : eLeftOut::DetailRoot);
        return;
    }
    run.model->structureMode = HasUserProp(root, "Structure");
    bool hasError = false;
    if (run.model->structureMode) {
        int number = 0;
        hasError = CollectBones(run, root, number, true);
    }
    if (hasError) {
        NoteLeftOut(run, root, eLeftOut::ModelRefused);
    } else {
        AddModel(run, root);
    }
    run.model->structureMode = false;
}

void BeginReports(Export& run) {
    for (const eExportModel& model : run.scene->models) {
        eModelReport report;
        report.root = model.root->GetName();
        report.skipped = true;
        run.modelReports.push_back(std::move(report));
    }
}

}  // namespace

void ScanScene(Export& run) {
    host::INode& sceneRoot = *run.host->GetRootNode();
    for (int i = 0; i < sceneRoot.NumberOfChildren(); ++i) {
        ScanRoot(run, *sceneRoot.GetChildNode(i));
    }
    if (run.scene->models.empty()) {
        Tell(run, eMessageId::ModelsNone, {});
    }
    std::ranges::reverse(run.scene->models);
    BeginReports(run);
}

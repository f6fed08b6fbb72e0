#include "scene/skeleton/side_lists.h"

#include "run/export.h"
#include "scene/bones/bone_tree.h"
#include "scene/bones/local_matrix.h"
#include "scene/current_model.h"
#include "scene/properties/prop_text.h"
#include "scene/scene_as_read.h"
#include "scene/skeleton/bone_step.h"

namespace {

void AddSupportPoint(Export& run, const host::INode& node) {
    const host::Point3 point = MatrixInParentBone(node, run.StaticTime()).GetTrans();
    run.model->supportPoints[ParentBone(node)].push_back(point);
}

}  // namespace

void SortOntoLists(Export& run, const eBoneStep& step) {
    ePropText props(step.userProps);
    if (props.Find("Land")) {
        run.model->landPatch = true;
    }
    eExportModel& model = run.scene->models[run.model->modelIndex];
    switch (step.kind) {
        case eNodeKind::Volume:
            model.volumes.push_back(&step.node);
            if (props.Find("Obstacle")) {
                model.zones.push_back(&step.node);
            }
            break;
        case eNodeKind::SupportPoint:
            AddSupportPoint(run, step.node);
            break;
        case eNodeKind::Zone:
            model.zones.push_back(&step.node);
            break;
        case eNodeKind::Body:
            model.bodies.push_back(&step.node);
            break;
        case eNodeKind::Preview:
            model.previews.push_back(&step.node);
            break;
        case eNodeKind::Ordinary:
        case eNodeKind::Camera:
        case eNodeKind::Light:
        case eNodeKind::Target:
            break;
    }
}

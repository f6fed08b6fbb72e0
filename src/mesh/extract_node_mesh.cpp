#include "mesh/extract_node_mesh.h"

#include <utility>

#include "animation/animation_table.h"
#include "animation/sample_node.h"
#include "export/export.h"
#include "mesh/extract_mesh.h"
#include "scene/node_name.h"

namespace {

// Reads one animation of a mesh that is animated by frames. Frame 0 was read as the static frame.
void ReadAnimatedFrames(Export& run, host::INode& node, host::INode* commonTarget,
                        const eExportAnimation& animation) {
    const int ticks = run.host->GetTicksPerFrame();
    host::TimeValue first = animation.firstFrame * ticks;
    host::TimeValue last = animation.lastFrame * ticks;
    host::TimeValue step = ticks;
    run.meshFrame = animation.firstFrame;
    if (animation.firstFrame == 0) {
        run.meshFrame = 1;
        first += step;
    }
    if (run.options.reverseAnimation) {
        std::swap(first, last);
        step = -step;
    }
    for (host::TimeValue time = first; step > 0 ? time <= last : time >= last; time += step) {
        ExtractMesh(run, node, time, commonTarget);
        ++run.meshFrame;
    }
}

void ReadGeometry(Export& run, host::INode& node, host::INode* commonTarget) {
    run.meshFrame = 0;
    ExtractMesh(run, node, run.StaticTime(), commonTarget);
    if (run.options.exportAnimation != 0 && commonTarget != nullptr) {
        for (const eExportAnimation& animation : run.animations) {
            if (animation.inRange && AnimationTouchesNode(run, node, animation.selection)) {
                ReadAnimatedFrames(run, node, commonTarget, animation);
            }
        }
    }
    run.meshFrame = 0;
}

}  // namespace

void ExtractNodeMesh(Export& run, host::INode& node, host::INode* meshTarget, host::INode* commonTarget) {
    const host::Object* object = node.EvalWorldState(0).obj;
    if (object == nullptr || object->ClassID() == host::kTargetClass) {
        return;
    }
    if (run.options.exportMesh != 0 && (meshTarget == nullptr || meshTarget == &node) && node.Renderable()) {
        ReadGeometry(run, node, commonTarget);
    }
    const bool isSampled = !node.IsGroupMember() || node.IsGroupHead();
    if (GetLodLevel(node) == 0 && run.options.exportAnimation != 0 && isSampled) {
        SampleNode(run, node, commonTarget);
    }
}

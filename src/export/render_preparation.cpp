#include "export/render_preparation.h"

#include <functional>
#include <vector>

#include "run/export.h"
#include "scene/scene_as_read.h"

namespace {

bool IsMarked(const host::ReferenceTarget& element) {
    return (element.AnimatableFlags() & host::kWorkFlag) != 0;
}

void SetMark(host::ReferenceTarget& element, bool isMarked) {
    const std::uint32_t others = element.AnimatableFlags() & ~host::kWorkFlag;
    element.SetAnimatableFlags(isMarked ? others | host::kWorkFlag : others);
}

// Visits everything that hangs on the scene root once, marking it or, from marked, unmarking it on the way.
// The reference graph has several ways to an element, and is deeper than the stack of the process may be.
void WalkReferences(host::ReferenceTarget& root, bool mark,
                    const std::function<void(host::ReferenceTarget&)>& visit) {
    std::vector<host::ReferenceTarget*> open{&root};
    while (!open.empty()) {
        host::ReferenceTarget& element = *open.back();
        open.pop_back();
        if (IsMarked(element) == mark) {
            continue;
        }
        SetMark(element, mark);
        visit(element);
        for (int i = element.NumRefs() - 1; i >= 0; --i) {
            if (host::ReferenceTarget* reference = element.GetReference(i)) {
                open.push_back(reference);
            }
        }
    }
}

void VisitScene(Export& run, const std::function<void(host::ReferenceTarget&)>& visit) {
    host::INode& root = *run.host->GetRootNode();
    WalkReferences(root, true, visit);
    WalkReferences(root, false, [](host::ReferenceTarget&) {});
}

}  // namespace

void PrepareRendering(Export& run) {
    constexpr float kPerCent = 100;
    run.host->theHold().Begin();
    run.scene->sceneAmbient = run.host->GetAmbient(0);
    run.scene->scaledAmbient =
        run.scene->sceneAmbient * (static_cast<float>(run.options.ambientPercent) / kPerCent);
    const host::TimeValue time = run.StaticTime();
    VisitScene(run, [time](host::ReferenceTarget& element) { element.RenderBegin(time, 0); });
}

void EndRendering(Export& run) {
    const host::TimeValue time = run.StaticTime();
    VisitScene(run, [time](host::ReferenceTarget& element) { element.RenderEnd(time); });
    for (const auto& light : run.scene->sceneLights) {
        light->Node().RenderEnd(time);
    }
    run.host->theHold().Cancel();
}

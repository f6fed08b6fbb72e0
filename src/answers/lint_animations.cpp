#include "answers/lint_animations.h"

#include "host/node_path.h"
#include "run/export.h"
#include "scene/run_journal.h"

namespace answers {

void LintAnimations(const Export& run, std::vector<eMessage>& advice) {
    if (run.journal == nullptr) {
        return;
    }
    for (const eAnimationNote& animation : run.journal->animations) {
        const bool isPose = animation.firstFrame == animation.lastFrame;
        if (!animation.file.IsEmpty() && animation.movingBones.empty() && !isPose) {
            advice.push_back(MakeMessage(
                eMessageId::LintStillAnimation,
                {.node = host::PathOf(*animation.model), .animation = animation.name}, animation.name,
                animation.model->GetName(), animation.firstFrame, animation.lastFrame));
        }
    }
}

}  // namespace answers

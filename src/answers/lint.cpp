#include "answers/lint.h"

#include "answers/lint_animations.h"
#include "answers/lint_keys.h"
#include "answers/lint_names.h"
#include "answers/lint_size.h"
#include "answers/lint_skin.h"
#include "answers/lint_values.h"

namespace answers {
namespace {

struct eSceneLint {
    Export& run;
    const eSceneNames& names;
    std::vector<eMessage>& advice;

    void LintBelow(host::INode& above) {
        for (int i = 0; i < above.NumberOfChildren(); ++i) {
            host::INode& node = *above.GetChildNode(i);
            LintProperties(node);
            LintSkin(run, node, advice);
            LintModelSize(run, node, advice);
            LintBelow(node);
        }
    }
    void LintProperties(host::INode& node) {
        eNodeLint lint{.run = run,
                       .node = node,
                       .advice = advice,
                       .lines = PropertyLines(node.GetUserPropBuffer()),
                       .kind = ClassifyNode(node)};
        LintNames(lint, names);
        LintKeys(lint);
        LintValues(lint);
    }
};

}  // namespace

std::vector<eMessage> LintScene(Export& run) {
    std::vector<eMessage> advice;
    host::INode& root = *run.host->GetRootNode();
    const eSceneNames names(root);
    eSceneLint{run, names, advice}.LintBelow(root);
    LintAnimations(run, advice);
    return advice;
}

}  // namespace answers

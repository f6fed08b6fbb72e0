#include "answers/lint.h"

#include "answers/lint_properties.h"
#include "answers/lint_size.h"
#include "answers/lint_skin.h"
#include "run/export.h"

namespace answers {
namespace {

void LintNode(Export& run, host::INode& node, std::vector<eMessage>& advice) {
    LintProperties(node, advice);
    LintSkin(run, node, advice);
    LintModelSize(run, node, advice);
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        LintNode(run, *node.GetChildNode(i), advice);
    }
}

}  // namespace

std::vector<eMessage> LintScene(Export& run) {
    std::vector<eMessage> advice;
    host::INode& root = *run.host->GetRootNode();
    for (int i = 0; i < root.NumberOfChildren(); ++i) {
        LintNode(run, *root.GetChildNode(i), advice);
    }
    return advice;
}

}  // namespace answers

#include "mesh/read/mirrored_sharing.h"

#include <algorithm>
#include <string>

#include "base/ansi.h"
#include "run/export.h"
#include "scene/scene_as_read.h"
#include "scene/skeleton/mirrored_views.h"

namespace {

// The name of the node whose mesh the node shows, in lower case; empty without.
std::string ShownBy(const host::INode& node) {
    std::string name;
    return node.GetUserPropString("Mesh", name) ? LowerAnsi(name) : std::string();
}

void CollectViews(host::INode& below, eMeshViews::value_type& views) {
    for (int i = 0; i < below.NumberOfChildren(); ++i) {
        host::INode& child = *below.GetChildNode(i);
        if (std::string name = ShownBy(child); !name.empty()) {
            views[std::move(name)].push_back(&child);
        }
        CollectViews(child, views);
    }
}

bool IsBelowAView(const host::INode& node, const std::string& name) {
    const host::INode* above = node.GetParentNode();
    while (above != nullptr && ShownBy(*above) != name) {
        above = above->GetParentNode();
    }
    return above != nullptr;
}

}  // namespace

bool IsSharedMirrored(Export& run, host::INode& owner) {
    if (!run.scene->meshViews) {
        CollectViews(*run.host->GetRootNode(), run.scene->meshViews.emplace());
    }
    const std::string name = LowerAnsi(owner.GetName());
    const auto found = run.scene->meshViews->find(name);
    const host::TimeValue t = run.StaticTime();
    return found != run.scene->meshViews->end() && std::ranges::any_of(found->second, [&](host::INode* view) {
               return !IsBelowAView(*view, name) && IsMirroredAgainst(*view, owner, t);
           });
}

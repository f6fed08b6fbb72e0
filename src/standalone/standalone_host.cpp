#include "standalone/standalone_host.h"

#include "base/ansi.h"
#include "host/timeline.h"

namespace standalone {

StandaloneHost::StandaloneHost(eSceneData sceneData) : scene(std::move(sceneData)) {
    nodesByName.reserve(scene.data.nodes.size());
    for (std::size_t i = 0; i < scene.data.nodes.size(); ++i) {
        nodesByName.try_emplace(LowerAnsi(scene.data.nodes[i].name), static_cast<int>(i));
    }
}

host::INode* StandaloneHost::GetINodeByName(const char* name) {
    const auto found = nodesByName.find(LowerAnsi(name));
    return found != nodesByName.end() ? scene.Node(found->second) : nullptr;
}

host::Interval StandaloneHost::GetAnimRange() {
    return {host::TimeOfFrame(*this, scene.data.firstFrame), host::TimeOfFrame(*this, scene.data.lastFrame)};
}

std::string StandaloneHost::GetDir(int which) {
    return which == kPluginConfigDir ? configFolder : std::string();
}

void StandaloneHost::ProgressStart(const std::string& title) {
    if (progress != nullptr) {
        progress->Start(title);
    }
}

void StandaloneHost::ProgressUpdate(int percent) {
    if (progress != nullptr) {
        progress->Update(percent);
    }
}

void StandaloneHost::ProgressEnd() {
    if (progress != nullptr) {
        progress->End();
    }
}

const std::string& StandaloneHost::GetNamedSelSetName(int set) {
    return Set(set).name;
}

int StandaloneHost::GetNamedSelSetItemCount(int set) {
    return static_cast<int>(Set(set).nodes.size());
}

host::INode* StandaloneHost::GetNamedSelSetItem(int set, int item) {
    return scene.Node(Set(set).nodes[static_cast<std::size_t>(item)]);
}

}  // namespace standalone

#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/interface.h"
#include "standalone/objects/scene.h"
#include "standalone/terminal/progress_sink.h"

namespace standalone {

// A host without a modelling program: answers everything from the records of one scene.
//
//     StandaloneHost host(std::move(*loaded.scene));
//     host.SetConfigFolder(folder);
//     host.SetProgressSink(&face);
//     host.SetCancelSource(platform::WasInterrupted);
//     exporter.DoExport(name, nullptr, &host, silent, options);
class StandaloneHost : public host::Interface {
public:
    explicit StandaloneHost(eSceneData scene);

    // The folder of plug-in configurations, code page 1251, without a slash at the end.
    void SetConfigFolder(const std::string& folder) { configFolder = folder; }
    // Spares this host to decode what the other one has decoded already.
    void TakePictures(StandaloneHost& other) { scene.images.TakeFrom(other.scene.images); }
    // Not owned; null shows nothing.
    void SetProgressSink(eProgressSink* sink) { progress = sink; }
    // Asked at every poll; without one the user never cancels.
    void SetCancelSource(std::function<bool()> source) { cancelSource = std::move(source); }

    // No window.
    void* GetMAXHWnd() override { return nullptr; }

    host::INode* GetRootNode() override { return &scene.Root(); }
    host::INode* GetINodeByName(const char* name) override;
    host::Interval GetAnimRange() override;
    int GetTicksPerFrame() override { return scene.data.frameTicks; }
    host::Color GetAmbient(host::TimeValue) override { return scene.data.ambient; }
    double GetMasterScale(int) override { return scene.data.unitMetres; }

    std::string GetCurFilePath() override { return scene.data.file; }
    std::string GetDir(int which) override;

    // The command panel does not exist; its mode is only kept.
    int GetCommandPanelTaskMode() override { return taskMode; }
    void SetCommandPanelTaskMode(int mode) override { taskMode = mode; }

    void ProgressStart(const std::string& title) override;
    void ProgressUpdate(int percent) override;
    void ProgressEnd() override;
    bool GetCancel() override { return cancelSource && cancelSource(); }

    int GetNumNamedSelSets() override { return static_cast<int>(scene.data.selectionSets.size()); }
    const std::string& GetNamedSelSetName(int set) override;
    int GetNamedSelSetItemCount(int set) override;
    host::INode* GetNamedSelSetItem(int set, int item) override;

    host::Hold& theHold() override { return scene.hold; }
    host::BitmapManager& TheManager() override { return scene.images; }

    // Modules show their boxes and find their drives as the program does.
    const eProcessLink* ProcessLink() override { return &processLink; }

private:
    const eSelectionSet& Set(int set) const {
        return scene.data.selectionSets[static_cast<std::size_t>(set)];
    }

    eScene scene;
    std::unordered_map<std::string, int> nodesByName;  // lower case; the first node of a name
    const eProcessLink processLink = OwnProcessLink();
    std::string configFolder;
    eProgressSink* progress = nullptr;
    std::function<bool()> cancelSource;
    int taskMode = 0;
};

}  // namespace standalone

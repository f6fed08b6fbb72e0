// A whole export of a built scene into a temporary folder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "run/export.h"
#include "standalone/standalone_host.h"
#include "support/message_collector.h"
#include "support/temp_folder.h"

namespace support {

// Runs DoExport on a scene:
//
//     support::eExportRun run(scene.Build());
//     run.SetOptions([](eExportOptions& options) { options.exportAnimation = 0; });
//     run.Do();
//     EXPECT_EQ(run.Model("units/tank/tank.mdl"), ...);
//     EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: ..."));
//
// Resources go to "game", the options file to "config", both in a folder of the run's own. Do may be called
// again: files stay, messages are gathered anew.
class eExportRun {
public:
    explicit eExportRun(standalone::eSceneData scene) : host(std::move(scene)) {
        folder.MakeFolder("config");
        host.SetConfigFolder(folder / "config");
        exporter.optionsDialog = [this](Export& run) {
            run.options.resourceRoot = folder / "game";
            if (setOptions) {
                setOptions(run.options);
            }
            return true;
        };
    }

    // What the user sets in the dialog; the resource root is set already.
    void SetOptions(std::function<void(eExportOptions&)> set) { setOptions = std::move(set); }
    // The host's bit "export selected".
    void ExportSelectedOnly() { optionsWord = 1; }

    int Do() {
        messages.Forget();
        return exporter.DoExport("ignored.mdl", nullptr, &host, false, optionsWord);
    }

    // A file of the resource tree as it stands; empty if it does not exist.
    std::string Read(const std::string& path) const { return folder.Read("game/" + path); }
    bool Has(const std::string& path) const { return folder.Has("game/" + path); }
    // A text file with LF as line end.
    std::string Text(const std::string& path) const {
        std::string text = Read(path);
        for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) {
            text.erase(at, 1);
        }
        return text;
    }
    // A model text without its three comment lines.
    std::string Model(const std::string& path) const {
        std::string text = Text(path);
        for (int line = 0; line < 3 && !text.empty(); ++line) {
            text.erase(0, text.find('\n') + 1);
        }
        return text;
    }
    // What the last run told, in order, in UTF-8; see eMessageCollector::Lines.
    std::vector<std::string> Messages() const { return messages.Lines(); }

    eTempFolder folder;
    eMessageCollector messages;
    standalone::StandaloneHost host;
    Export exporter;

private:
    std::function<void(eExportOptions&)> setOptions;
    std::uint32_t optionsWord = 0;
};

}  // namespace support

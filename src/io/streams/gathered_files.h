#pragma once

#include <optional>

#include "base/event_bus.h"
#include "platform/gathering_layer.h"

namespace xIo {

// As long as it lives, the files that are written on disk get their final names together, at the latest at
// its end or when a fatal error ends the process, and folders are remembered. A file that holds its bytes
// already stays as it is. In front of files in memory it does nothing. One at a time.
class eGatheredFiles : private eEventable {
public:
    eGatheredFiles();
    eGatheredFiles(const eGatheredFiles&) = delete;
    eGatheredFiles& operator=(const eGatheredFiles&) = delete;
    ~eGatheredFiles() override;  // as Settle, but asks nobody

    // Gives the names and ends the gathering. A file whose content did not reach the disk is told and
    // removed; where the name alone can't be given the user is asked whether to try again, and a refusal is
    // fatal.
    void Settle();

private:
    void OnMessage(int message) override;
    void Settle(bool asks);

    platform::eFileLayer& beneath = platform::Files();
    std::optional<platform::eGatheringLayer> layer;  // as long as files are gathered
};

}  // namespace xIo

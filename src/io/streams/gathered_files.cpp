#include "io/streams/gathered_files.h"

#include <string>
#include <vector>

#include "base/ansi.h"
#include "io/streams/file_failure.h"
#include "io/streams/stream_file.h"
#include "platform/file.h"
#include "platform/file_events.h"
#include "platform/folder_memory.h"
#include "platform/path_text.h"

namespace xIo {
namespace {

constexpr platform::ePathForm native = platform::ePathForm::Native;

std::string Shown(const std::string& path) {
    return platform::PathTextFromUtf8(path).value_or(FromUtf8(path).text);
}

void GiveUp(const platform::eUnsettledFile& file) {
    platform::TellFileEvent(platform::eFileAction::Lost, file.target, native);
    TellWriteFailure(Shown(file.target), file.status);
    platform::DiscardFile(file.temporary, native);
}

void AskForName(const platform::eUnsettledFile& file) {
    platform::eIoStatus status = file.status;
    while (!status.IsOk()) {
        AskToRetry(Shown(file.target), status);
        status = platform::RenameOver(file.temporary, file.target, native);
    }
}

}  // namespace

eGatheredFiles::eGatheredFiles() {
    if (platform::Files().IsLasting()) {
        layer.emplace(beneath);
        platform::UseFileLayer(&*layer);
        platform::RememberFolders(true);
        Bus().Subscribe(messageFatalExit, *this);
    }
}

eGatheredFiles::~eGatheredFiles() {
    Settle(false);
}

void eGatheredFiles::Settle() {
    Settle(true);
}

void eGatheredFiles::OnMessage(int) {
    Settle(false);
}

void eGatheredFiles::Settle(bool asks) {
    if (!layer) {
        return;
    }
    // Nothing is looked up any more, and each new name would cost a look at its folder.
    platform::RememberFolders(false);
    const std::vector<platform::eUnsettledFile> unsettled = layer->Settle();
    platform::UseFileLayer(&beneath);
    layer.reset();
    for (const platform::eUnsettledFile& file : unsettled) {
        if (asks && file.isOnDisk) {
            AskForName(file);
        } else {
            GiveUp(file);
        }
    }
}

}  // namespace xIo

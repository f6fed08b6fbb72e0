#include "platform/file_layer.h"

#include "platform/process_state.h"

namespace platform {

eIoStatus ReadWhole(eFileLayer& layer, const std::string& native, eFileContent& content) {
    std::unique_ptr<eOpenFile> file;
    std::int64_t length = 0;
    std::size_t got = 0;
    eIoStatus status = layer.Open(native, eFileAccess::Read, ePathForm::Native, file);
    if (status.IsOk()) {
        status = file->Length(length);
    }
    if (status.IsOk()) {
        content.resize(static_cast<std::size_t>(length));
        status = file->Read(content.data(), content.size(), got);
        content.resize(got);
    }
    return status;
}

eFileLayer& Files() {
    return ProcessState().fileLayer != nullptr ? *ProcessState().fileLayer : DiskLayer();
}

void UseFileLayer(eFileLayer* layer) {
    ProcessState().fileLayer = layer;
}

}  // namespace platform

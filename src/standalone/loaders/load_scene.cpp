#include "standalone/loaders/load_scene.h"

#include "platform/path_lookup.h"
#include "standalone/loaders/file_content.h"
#include "standalone/loaders/scene_document_reader.h"
#include "standalone/loaders/scene_format.h"

namespace standalone {

eLoadResult LoadScene(const std::string& path) {
    eLoadResult result;
    std::string content;
    const platform::eIoStatus status = ReadFileContent(path, content);
    if (!status.IsOk()) {
        result.problems.push_back({"", "the file can't be read: " + status.Text()});
        return result;
    }
    if (LooksLikeSceneDocument(content)) {
        return ReadSceneDocument(content, platform::DiskPath(path, platform::ePathForm::Native));
    }
    result.problems.push_back({"", "the file is no scene document"});
    return result;
}

}  // namespace standalone

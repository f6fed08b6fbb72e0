#include "batch/conflicts.h"

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "batch/build_folder.h"
#include "messages/utf8_words.h"
#include "platform/utf8_path.h"

namespace batch {

namespace {

using nlohmann::json;

// The folders that a scene writes models into.
std::set<std::string> ModelFolders(const std::string& listFile) {
    std::ifstream stream(platform::PathFromUtf8(listFile), std::ios::binary);
    const json list = json::parse(stream, nullptr, false);
    std::set<std::string> folders;
    for (const json& model : list.is_object() ? list.value("models", json::array()) : json::array()) {
        if (model.is_object() && model.contains("folder") && model["folder"].is_string()) {
            folders.insert(model["folder"].get<std::string>());
        }
    }
    return folders;
}

eBilingual ConflictText(const std::string& folder, const std::vector<std::string>& scenes) {
    std::string list;
    for (const std::string& scene : scenes) {
        list += "\n  " + scene;
    }
    return Utf8Words(ePhrase::BatchConflict, folder, scenes.size(), list);
}

}  // namespace

std::vector<eBilingual> FindConflicts(const std::string& buildFolder,
                                      const std::vector<eBatchScene>& scenes) {
    std::map<std::string, std::vector<std::string>> writers;
    for (const eBatchScene& scene : scenes) {
        for (const std::string& folder : ModelFolders(FilesOf(buildFolder, scene.path).models.result)) {
            writers[folder].push_back(scene.path);
        }
    }
    std::vector<eBilingual> conflicts;
    for (const auto& [folder, writing] : writers) {
        if (writing.size() > 1) {
            conflicts.push_back(ConflictText(folder, writing));
        }
    }
    return conflicts;
}

}  // namespace batch

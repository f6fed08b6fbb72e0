#include "batch/scene_list.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "batch/wildcards.h"
#include "messages/utf8_words.h"
#include "platform/utf8_path.h"

namespace batch {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using platform::PathFromUtf8;
using platform::Utf8FromPath;

constexpr int kListSchema = 1;

bool IsSceneName(const fs::path& path) {
    constexpr std::array kEndings = {".scene.json", ".gltf", ".glb", ".fbx", ".dae", ".obj", ".3ds"};
    std::string name = Utf8FromPath(path.filename());
    std::ranges::transform(name, name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return std::ranges::any_of(kEndings, [&](const char* ending) { return name.ends_with(ending); });
}

bool IsDotted(const fs::path& path) {
    return Utf8FromPath(path.filename()).starts_with('.');
}

// Absolute paths of the files below a folder that can be looked into, sorted.
std::vector<std::string> FilesBelow(const fs::path& folder) {
    std::vector<std::string> files;
    std::error_code error;
    auto entry =
        fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::end(entry); entry.increment(error)) {
        if (entry->is_directory(error) && IsDotted(entry->path())) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file(error)) {
            files.push_back(Utf8FromPath(entry->path()));
        }
    }
    std::ranges::sort(files);
    return files;
}

// The folder of a pattern that is sure, with the slash behind it.
std::string SureFolder(const std::string& pattern) {
    return pattern.substr(0, pattern.rfind('/', pattern.find_first_of("*?")) + 1);
}

class eLister {
public:
    eSceneList list;

    void AddWord(const std::string& word, const fs::path& base, const std::vector<std::string>& flags) {
        const fs::path path = (base / PathFromUtf8(word)).lexically_normal();
        const std::size_t before = list.scenes.size() + list.problems.size() + known;
        std::error_code ignored;
        if (fs::is_directory(path, ignored)) {
            AddFiles(FilesBelow(path), "**/*", flags);
        } else if (!fs::exists(path, ignored) && HasWildcards(word)) {
            const std::string pattern = Utf8FromPath(path);
            AddFiles(FilesBelow(PathFromUtf8(SureFolder(pattern))), pattern, flags);
        } else if (path.extension() == ".json" && !IsSceneName(path)) {
            AddList(path, flags);
        } else if (fs::exists(path, ignored)) {
            AddScene(Utf8FromPath(path), flags);
        } else {
            Tell(ePhrase::PathNothing, word);
        }
        if (before == list.scenes.size() + list.problems.size() + known) {
            Tell(ePhrase::ListNoScenes, word);
        }
    }

private:
    void Tell(ePhrase problem, const std::string& place) {
        list.problems.push_back(Utf8Words(problem, place));
    }

    void AddScene(const std::string& path, const std::vector<std::string>& flags) {
        if (paths.insert(path).second) {
            list.scenes.push_back({path, flags});
        } else {
            ++known;
        }
    }

    void AddFiles(const std::vector<std::string>& files, const std::string& pattern,
                  const std::vector<std::string>& flags) {
        for (const std::string& file : files) {
            if (IsSceneName(PathFromUtf8(file)) && MatchesPattern(file, pattern)) {
                AddScene(file, flags);
            }
        }
    }

    void AddList(const fs::path& path, const std::vector<std::string>& flags) {
        std::ifstream stream(path, std::ios::binary);
        const json content = json::parse(stream, nullptr, false);
        const std::string place = Utf8FromPath(path);
        if (!content.is_object() || content.value("schema", json()) != kListSchema ||
            !content.contains("scenes") || !content["scenes"].is_array()) {
            Tell(ePhrase::ListForm, place);
            return;
        }
        TellUnknownKeys(content, {"schema", "flags", "scenes"}, place);
        const std::vector<std::string> ofAll = Joined(flags, content, place);
        for (std::size_t index = 0; index < content["scenes"].size(); ++index) {
            AddEntry(content["scenes"][index], path.parent_path(), ofAll,
                     place + "/scenes/" + std::to_string(index));
        }
    }

    void AddEntry(const json& entry, const fs::path& folder, const std::vector<std::string>& flags,
                  const std::string& place) {
        if (entry.is_string()) {
            AddWord(entry.get<std::string>(), folder, flags);
        } else if (entry.is_object() && entry.contains("scene") && entry["scene"].is_string()) {
            TellUnknownKeys(entry, {"scene", "flags"}, place);
            AddWord(entry["scene"].get<std::string>(), folder, Joined(flags, entry, place));
        } else {
            Tell(ePhrase::ListEntry, place);
        }
    }

    std::vector<std::string> Joined(std::vector<std::string> flags, const json& object,
                                    const std::string& place) {
        const json own = object.value("flags", json::array());
        if (!own.is_array() || !std::ranges::all_of(own, [](const json& flag) { return flag.is_string(); })) {
            Tell(ePhrase::WantedTexts, place + "/flags");
            return flags;
        }
        for (const json& flag : own) {
            flags.push_back(flag.get<std::string>());
        }
        return flags;
    }

    void TellUnknownKeys(const json& object, const std::set<std::string>& keys, const std::string& place) {
        for (const auto& member : object.items()) {
            if (!keys.contains(member.key())) {
                Tell(ePhrase::KeyUnknown, place + "/" + member.key());
            }
        }
    }

    std::set<std::string> paths;
    std::size_t known = 0;  // how often a scene was named again
};

}  // namespace

eSceneList ListScenes(const std::vector<std::string>& words) {
    eLister lister;
    for (const std::string& word : words) {
        lister.AddWord(word, fs::current_path(), {});
    }
    return std::move(lister.list);
}

}  // namespace batch

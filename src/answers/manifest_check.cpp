#include "answers/manifest_check.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "platform/utf8_path.h"

namespace answers {

namespace {

constexpr std::pair<eStanding, const char*> kStandings[] = {
    {eStanding::Sound, "sound"},
    {eStanding::Missing, "missing"},
    {eStanding::Changed, "changed"},
    {eStanding::Stale, "stale"},
};

const char* WordOf(eStanding standing) {
    return std::ranges::find(kStandings, standing, &std::pair<eStanding, const char*>::first)->second;
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

// What has come of the sources, by path: nothing of those that are as they were.
std::map<std::string, std::string> ChangesOf(const std::vector<eManifestSource>& sources) {
    std::map<std::string, std::string> changes;
    for (const eManifestSource& source : sources) {
        const std::optional<eContentMark> now = MarkOf(source.path);
        if (!now) {
            changes[source.path] = NameOf(source.path) + " is gone";
        } else if (*now != source.content) {
            changes[source.path] = NameOf(source.path) + " has changed";
        }
    }
    return changes;
}

// The first of those that were looked for in vain that is there now; empty if none is.
std::string NewlyCome(const std::vector<std::string>& missing) {
    const auto come = std::ranges::find_if(missing, [](const std::string& path) {
        std::error_code ignored;
        return std::filesystem::is_regular_file(platform::PathFromUtf8(path), ignored);
    });
    return come != missing.end() ? NameOf(*come) + " has come, which was missing" : std::string();
}

class eChecker {
public:
    eChecker(const eManifest& manifest, bool doSourcesCount) : manifest_(manifest) {
        if (doSourcesCount) {
            changes_ = ChangesOf(manifest.sources);
            come_ = NewlyCome(manifest.missing);
        }
    }

    eCheckedFile Check(const eManifestFile& file) const {
        const std::optional<eContentMark> now = MarkOf(platform::Utf8FromPath(
            platform::PathFromUtf8(manifest_.root) / platform::PathFromUtf8(file.path)));
        if (!now) {
            return {file.path, eStanding::Missing, "there is no such file that can be read"};
        }
        if (*now != file.content) {
            return {file.path, eStanding::Changed,
                    now->bytes == file.content.bytes ? "its content is another"
                                                     : std::to_string(now->bytes) + " bytes instead of " +
                                                           std::to_string(file.content.bytes)};
        }
        const std::string change = ChangeBehind(file);
        return {file.path, change.empty() ? eStanding::Sound : eStanding::Stale, change};
    }

private:
    std::string ChangeBehind(const eManifestFile& file) const {
        for (const std::string& source : file.sources) {
            if (const auto change = changes_.find(source); change != changes_.end()) {
                return change->second;
            }
        }
        return come_;
    }

    const eManifest& manifest_;
    std::map<std::string, std::string> changes_;
    std::string come_;
};

inspect::eDescription Summary(const eManifestCheck& check) {
    inspect::eDescription summary;
    for (const auto& [standing, word] : kStandings) {
        summary[word] = check.Count(standing);
    }
    return summary;
}

}  // namespace

int eManifestCheck::Count(eStanding standing) const {
    return static_cast<int>(std::ranges::count(files, standing, &eCheckedFile::standing));
}

eManifestCheck CheckManifest(const eManifest& manifest, bool doSourcesCount) {
    const eChecker checker(manifest, doSourcesCount);
    eManifestCheck check{.manifest = {}, .root = manifest.root, .files = {}};
    for (const eManifestFile& file : manifest.files) {
        check.files.push_back(checker.Check(file));
    }
    return check;
}

inspect::eDescription DescribeCheck(const eManifestCheck& check) {
    inspect::eDescription files = inspect::eDescription::array();
    for (const eCheckedFile& file : check.files) {
        files.push_back({{"path", file.path}, {"state", WordOf(file.standing)}, {"why", file.why}});
    }
    return {{"schema", kCheckSchema},   {"manifest", check.manifest}, {"root", check.root},
            {"sound", check.IsSound()}, {"summary", Summary(check)},  {"files", std::move(files)}};
}

std::string CheckText(const eManifestCheck& check) {
    std::string text;
    for (const eCheckedFile& file : check.files) {
        if (file.standing != eStanding::Sound) {
            text += std::string(WordOf(file.standing)) + ": " + file.path + ": " + file.why + "\n";
        }
    }
    const inspect::eDescription summary = Summary(check);
    std::string counts;
    for (const auto& [word, count] : summary.items()) {
        counts += (counts.empty() ? "" : ", ") + count.dump() + " " + word;
    }
    return text + counts + "\n";
}

}  // namespace answers

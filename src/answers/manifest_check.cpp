#include "answers/manifest_check.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "messages/utf8_words.h"
#include "platform/utf8_path.h"

namespace answers {

namespace {

struct eStandingWords {
    eStanding standing;
    const char* word;             // for machines
    std::optional<ePhrase> text;  // of one file that is not sound
    ePhrase count;
};

constexpr eStandingWords kStandings[] = {
    {eStanding::Sound, "sound", {}, ePhrase::CountSound},
    {eStanding::Missing, "missing", ePhrase::StandsMissing, ePhrase::CountMissing},
    {eStanding::Changed, "changed", ePhrase::FileChanged, ePhrase::CountChanged},
    {eStanding::Stale, "stale", ePhrase::StandsStale, ePhrase::CountStale},
};

const eStandingWords& WordsOf(eStanding standing) {
    return *std::ranges::find(kStandings, standing, &eStandingWords::standing);
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

// What has come of the sources, by path: nothing of those that are as they were.
std::map<std::string, eBilingual> ChangesOf(const std::vector<eManifestSource>& sources) {
    std::map<std::string, eBilingual> changes;
    for (const eManifestSource& source : sources) {
        const std::optional<eContentMark> now = MarkOf(source.path);
        if (!now) {
            changes[source.path] = Utf8Words(ePhrase::WhySourceGone, NameOf(source.path));
        } else if (*now != source.content) {
            changes[source.path] = Utf8Words(ePhrase::WhySourceChanged, NameOf(source.path));
        }
    }
    return changes;
}

// The first of those that were looked for in vain that is there now; empty if none is.
eBilingual NewlyCome(const std::vector<std::string>& missing) {
    const auto come = std::ranges::find_if(missing, [](const std::string& path) {
        std::error_code ignored;
        return std::filesystem::is_regular_file(platform::PathFromUtf8(path), ignored);
    });
    return come != missing.end() ? Utf8Words(ePhrase::WhySourceCome, NameOf(*come)) : eBilingual();
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
            return {file.path, eStanding::Missing, Utf8Words(ePhrase::WhyUnreadable)};
        }
        if (*now != file.content) {
            return {file.path, eStanding::Changed,
                    now->bytes == file.content.bytes
                        ? Utf8Words(ePhrase::WhyOtherContent)
                        : Utf8Words(ePhrase::WhyOtherSize, now->bytes, file.content.bytes)};
        }
        const eBilingual change = ChangeBehind(file);
        return {file.path, change.IsEmpty() ? eStanding::Sound : eStanding::Stale, change};
    }

private:
    eBilingual ChangeBehind(const eManifestFile& file) const {
        for (const std::string& source : file.sources) {
            if (const auto change = changes_.find(source); change != changes_.end()) {
                return change->second;
            }
        }
        return come_;
    }

    const eManifest& manifest_;
    std::map<std::string, eBilingual> changes_;
    eBilingual come_;
};

inspect::eDescription Summary(const eManifestCheck& check) {
    inspect::eDescription summary;
    for (const eStandingWords& each : kStandings) {
        summary[each.word] = check.Count(each.standing);
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
        files.push_back(
            {{"path", file.path}, {"state", WordsOf(file.standing).word}, {"why", file.why.english}});
    }
    return {{"schema", kCheckSchema},   {"manifest", check.manifest}, {"root", check.root},
            {"sound", check.IsSound()}, {"summary", Summary(check)},  {"files", std::move(files)}};
}

std::string CheckText(const eManifestCheck& check, eLanguage language) {
    std::string text;
    for (const eCheckedFile& file : check.files) {
        if (const std::optional<ePhrase> standing = WordsOf(file.standing).text) {
            text += Say(language, *standing) + ": " + file.path + ": " + file.why.In(language) + "\n";
        }
    }
    eBilingual counts;
    for (const eStandingWords& each : kStandings) {
        counts.AddToList(Utf8Words(each.count, check.Count(each.standing)));
    }
    return text + counts.In(language) + "\n";
}

}  // namespace answers

#include "answers/manifest_text.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "messages/utf8_words.h"
#include "platform/utf8_path.h"

namespace answers {

namespace {

using nlohmann::ordered_json;
using platform::PathFromUtf8;
using platform::Utf8FromPath;

std::string FromFolder(const std::string& path, const std::string& folder) {
    const std::filesystem::path relative = PathFromUtf8(path).lexically_relative(PathFromUtf8(folder));
    return relative.empty() ? path : Utf8FromPath(relative);
}

// What begins at a root stays as it is.
std::string InFolder(const std::string& path, const std::string& folder) {
    return Utf8FromPath((PathFromUtf8(folder) / PathFromUtf8(path)).lexically_normal());
}

ordered_json Located(const std::vector<std::string>& paths, const std::string& folder) {
    ordered_json list = ordered_json::array();
    for (const std::string& path : paths) {
        list.push_back(FromFolder(path, folder));
    }
    return list;
}

ordered_json FileJson(const eManifestFile& file, const std::string& folder) {
    return {{"path", file.path},
            {"bytes", file.content.bytes},
            {"sha256", file.content.sha256},
            {"rule", file.rule},
            {"models", file.models},
            {"nodes", file.nodes},
            {"materials", file.materials},
            {"animation", file.animation},
            {"sources", Located(file.sources, folder)}};
}

// Reads a manifest key by key; the first that is not as it should be is the problem.
class eManifestReader {
public:
    explicit eManifestReader(eBilingual& problem) : problem_(problem) {}

    std::optional<eManifest> Read(std::string_view text, const std::string& folder) {
        Parse(text);
        if (problem_.IsEmpty() &&
            (!json_.is_object() || !json_.contains("schema") || !json_.contains("files"))) {
            Report(ePhrase::ManifestNone);
        } else if (problem_.IsEmpty() && json_["schema"] != kManifestSchema) {
            Report(ePhrase::ManifestSchema, SchemaWord(), kManifestSchema);
        }
        eManifest manifest;
        if (problem_.IsEmpty()) {
            ReadAll(manifest, folder);
        }
        return problem_.IsEmpty() ? std::optional(manifest) : std::nullopt;
    }

private:
    void Parse(std::string_view text) {
        try {
            json_ = ordered_json::parse(text);
        } catch (const ordered_json::parse_error& error) {
            Report(ePhrase::ManifestNoJson, error.byte);
        } catch (const ordered_json::out_of_range&) {
            Report(ePhrase::ManifestLargeNumber);
        }
    }

    eBilingual SchemaWord() const {
        const ordered_json& schema = json_["schema"];
        return schema.is_number() ? eBilingual{schema.dump(), schema.dump()}
                                  : Utf8Words(ePhrase::ManifestSchemaWord);
    }

    void ReadAll(eManifest& manifest, const std::string& folder) {
        manifest.program = Text(json_, "program", "");
        manifest.scene = InFolder(Text(json_, "scene", ""), folder);
        manifest.root = InFolder(Text(json_, "root", ""), folder);
        manifest.missing = Paths(json_, "missing", "", folder);
        ReadList("sources", [&](const ordered_json& source, const std::string& place) {
            manifest.sources.push_back({InFolder(Text(source, "path", place), folder), Mark(source, place)});
        });
        ReadList("files", [&](const ordered_json& file, const std::string& place) {
            manifest.files.push_back({.path = Text(file, "path", place),
                                      .content = Mark(file, place),
                                      .rule = Text(file, "rule", place),
                                      .models = Texts(file, "models", place),
                                      .nodes = Texts(file, "nodes", place),
                                      .materials = Texts(file, "materials", place),
                                      .animation = Text(file, "animation", place),
                                      .sources = Paths(file, "sources", place, folder)});
        });
    }

    template <class Take>
    void ReadList(const char* key, Take take) {
        const ordered_json& list = Member(json_, key);
        if (!list.is_array()) {
            return Report(ePhrase::WantedList, std::string("/") + key);
        }
        for (std::size_t i = 0; i < list.size(); ++i) {
            take(list[i], std::string("/") + key + "/" + std::to_string(i));
        }
    }

    static const ordered_json& Member(const ordered_json& object, const char* key) {
        static const ordered_json none;
        return object.is_object() && object.contains(key) ? object[key] : none;
    }

    std::string Text(const ordered_json& object, const char* key, const std::string& place) {
        const ordered_json& value = Member(object, key);
        if (!value.is_string()) {
            Report(ePhrase::WantedText, place + "/" + key);
            return {};
        }
        return value.get<std::string>();
    }

    std::vector<std::string> Texts(const ordered_json& object, const char* key, const std::string& place) {
        const ordered_json& list = Member(object, key);
        if (!list.is_array() ||
            !std::ranges::all_of(list, [](const auto& text) { return text.is_string(); })) {
            Report(ePhrase::WantedTexts, place + "/" + key);
            return {};
        }
        return list.get<std::vector<std::string>>();
    }

    std::vector<std::string> Paths(const ordered_json& object, const char* key, const std::string& place,
                                   const std::string& folder) {
        std::vector<std::string> paths = Texts(object, key, place);
        for (std::string& path : paths) {
            path = InFolder(path, folder);
        }
        return paths;
    }

    eContentMark Mark(const ordered_json& object, const std::string& place) {
        const ordered_json& bytes = Member(object, "bytes");
        if (!bytes.is_number_unsigned()) {
            Report(ePhrase::WantedWhole, place + "/bytes");
            return {};
        }
        const std::string digest = Text(object, "sha256", place);
        if (digest.size() != 64 || digest.find_first_not_of("0123456789abcdef") != std::string::npos) {
            Report(ePhrase::WantedDigest, place + "/sha256");
        }
        return {bytes.get<std::uint64_t>(), digest};
    }

    // The first one counts.
    template <class... Values>
    void Report(ePhrase id, const Values&... values) {
        problem_ = problem_.IsEmpty() ? Utf8Words(id, values...) : problem_;
    }

    ordered_json json_;
    eBilingual& problem_;
};

}  // namespace

std::string ManifestText(const eManifest& manifest, const std::string& folder) {
    ordered_json json{{"schema", kManifestSchema},
                      {"program", manifest.program},
                      {"scene", FromFolder(manifest.scene, folder)},
                      {"root", FromFolder(manifest.root, folder)},
                      {"sources", ordered_json::array()},
                      {"missing", Located(manifest.missing, folder)},
                      {"files", ordered_json::array()}};
    for (const eManifestSource& source : manifest.sources) {
        json["sources"].push_back({{"path", FromFolder(source.path, folder)},
                                   {"bytes", source.content.bytes},
                                   {"sha256", source.content.sha256}});
    }
    for (const eManifestFile& file : manifest.files) {
        json["files"].push_back(FileJson(file, folder));
    }
    constexpr int kIndent = 2;
    return json.dump(kIndent, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::optional<eManifest> ReadManifest(std::string_view text, const std::string& folder, eBilingual& problem) {
    problem = {};
    return eManifestReader(problem).Read(text, folder);
}

}  // namespace answers

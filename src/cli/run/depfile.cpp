#include "cli/run/depfile.h"

#include <filesystem>

#include "cli/run/run_record.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "platform/utf8_path.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

bool Stands(const std::string& path) {
    std::error_code ignored;
    return fs::exists(platform::PathFromUtf8(path), ignored);
}

// What has become a folder is no source.
void AddSource(eSources& sources, const std::string& path, const std::string& resourceRoot) {
    std::error_code ignored;
    if (!Stands(path)) {
        if (!path.empty() && !path.starts_with(resourceRoot + "/")) {
            sources.missing.insert(path);
        }
    } else if (!fs::is_directory(platform::PathFromUtf8(path), ignored)) {
        sources.files.insert(path);
    }
}

std::string NearestFolder(std::string path) {
    while (!path.empty() && !Stands(path)) {
        path = platform::NativeParent(path);
    }
    return path;
}

std::string Escaped(const std::string& path) {
    std::string text;
    for (const char letter : path) {
        if (letter == ' ' || letter == '#' || letter == ':') {
            text += '\\';
        } else if (letter == '$') {
            text += '$';
        }
        text += letter;
    }
    return text;
}

bool IsOneLine(const std::string& name) {
    return name.find_first_of("\r\n") == std::string::npos;
}

template <class Names>
void AppendNames(std::string& text, const Names& names) {
    for (const std::string& name : names) {
        if (IsOneLine(name)) {
            text += (text.empty() ? "" : " \\\n  ") + Escaped(name);
        }
    }
}

}  // namespace

eSources SourcesOf(const eRunRecord& record, const platform::eDependencyLayer& layer,
                   const std::vector<std::string>& others) {
    const std::string root = platform::DiskPath(record.options.resourceRoot.Text());
    eSources sources;
    for (const std::string& file : others) {
        AddSource(sources, file, root);
    }
    for (const std::string& asked : layer.Asked()) {
        if (!record.files.contains(asked)) {
            AddSource(sources, asked, root);
        }
    }
    return sources;
}

std::string SourceListText(const eSources& sources) {
    std::string text;
    for (const std::string& file : sources.files) {
        text += IsOneLine(file) ? file + "\n" : std::string();
    }
    for (const std::string& file : sources.missing) {
        text += IsOneLine(file) ? "missing: " + file + "\n" : std::string();
    }
    return text;
}

std::string DepfileText(const std::vector<std::string>& targets, const eSources& sources) {
    std::set<std::string> places = sources.files;
    for (const std::string& file : sources.missing) {
        places.insert(NearestFolder(file));
    }
    places.erase("");
    std::string text;
    AppendNames(text, targets);
    text += ":";
    AppendNames(text, places);
    return text + "\n";
}

}  // namespace cli

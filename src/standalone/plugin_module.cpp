#include "standalone/plugin_module.h"

#include <cstdio>

#include "host/scene_element.h"
#include "messages/utf8_words.h"

namespace standalone {
namespace {

std::string HexText(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(number));
    return text;
}

}  // namespace

eBilingual PluginModule::Load(const std::string& file) {
    if (const std::string unloaded = library.Load(file); !unloaded.empty()) {
        return Utf8Words(ePhrase::PluginNotLoaded, file, unloaded);
    }
    eBilingual problem = FindExports();
    if (problem.IsEmpty()) {
        problem = CheckVersion();
    }
    if (problem.IsEmpty()) {
        problem = FindExporterClass();
    }
    return problem.IsEmpty() ? problem : problem.At(file);
}

eBilingual PluginModule::FindExports() {
    std::string missing;
    const auto find = [&](const char* name, auto& function) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.Find(name));
        if (function == nullptr) {
            missing += (missing.empty() ? "" : ", ") + std::string(name);
        }
    };
    find("LibDescription", description);
    find("LibNumberClasses", numberClasses);
    find("LibClassDesc", classDesc);
    find("LibVersion", version);
    find("CanAutoDefer", canAutoDefer);
    return missing.empty() ? eBilingual() : Utf8Words(ePhrase::PluginLacks, missing);
}

eBilingual PluginModule::CheckVersion() const {
    const std::uint32_t made = version();
    return made == host::kKitVersion
               ? eBilingual()
               : Utf8Words(ePhrase::PluginVersion, HexText(made), HexText(host::kKitVersion));
}

eBilingual PluginModule::FindExporterClass() {
    const int count = numberClasses();
    for (int index = 0; index < count && exporterClass == nullptr; ++index) {
        host::ClassDesc* candidate = classDesc(index);
        if (candidate == nullptr) {
            return Utf8Words(ePhrase::PluginNoDescriptor, index, count);
        }
        if (candidate->SuperClassID() == host::kSceneExportSuperClass) {
            exporterClass = candidate;
        }
    }
    return exporterClass != nullptr ? eBilingual() : Utf8Words(ePhrase::PluginNoExporter, count);
}

std::unique_ptr<host::SceneExport> PluginModule::NewExporter() const {
    constexpr bool kIsLoading = false;
    return std::unique_ptr<host::SceneExport>(
        static_cast<host::SceneExport*>(exporterClass->Create(kIsLoading)));
}

}  // namespace standalone

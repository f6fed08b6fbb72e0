#include "standalone/plugin_module.h"

#include <cstdio>

#include "host/scene_element.h"

namespace standalone {
namespace {

std::string HexText(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(number));
    return text;
}

}  // namespace

std::string PluginModule::Load(const std::string& file) {
    std::string problem = library.Load(file);
    if (!problem.empty()) {
        return file + ": is no plug-in module that can be loaded: " + problem;
    }
    problem = FindExports();
    if (problem.empty()) {
        problem = CheckVersion();
    }
    if (problem.empty()) {
        problem = FindExporterClass();
    }
    return problem.empty() ? problem : file + ": " + problem;
}

std::string PluginModule::FindExports() {
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
    return missing.empty() ? missing : "the plug-in module does not export " + missing;
}

std::string PluginModule::CheckVersion() const {
    const std::uint32_t made = version();
    return made == host::kKitVersion ? std::string()
                                     : "the plug-in module is made for version " + HexText(made) +
                                           " of the host, and this one is " + HexText(host::kKitVersion);
}

std::string PluginModule::FindExporterClass() {
    const int count = numberClasses();
    for (int index = 0; index < count && exporterClass == nullptr; ++index) {
        host::ClassDesc* candidate = classDesc(index);
        if (candidate == nullptr) {
            return "the plug-in module has no descriptor for its class " + std::to_string(index) + " of " +
                   std::to_string(count);
        }
        if (candidate->SuperClassID() == host::kSceneExportSuperClass) {
            exporterClass = candidate;
        }
    }
    return exporterClass != nullptr ? std::string()
                                    : "none of the " + std::to_string(count) +
                                          " classes of the plug-in module is a scene exporter";
}

std::unique_ptr<host::SceneExport> PluginModule::NewExporter() const {
    constexpr bool kIsLoading = false;
    return std::unique_ptr<host::SceneExport>(
        static_cast<host::SceneExport*>(exporterClass->Create(kIsLoading)));
}

}  // namespace standalone

#pragma once

#include <memory>
#include <string>

#include "base/bilingual.h"
#include "host/class_desc.h"
#include "host/scene_export.h"
#include "platform/shared_library.h"

namespace standalone {

// A plug-in module with a scene exporter, used as a modelling host uses it.
//
//     PluginModule plugin;
//     if (const eBilingual problem = plugin.Load(file); problem.IsEmpty()) {
//         plugin.NewExporter()->DoExport(...);
//     }
//
// Everything that came out of the module must be gone before the object is.
class PluginModule {
public:
    // Loads the file (UTF-8), checks that it is made for this host, and finds the exporter among its classes.
    // Empty, or what is wrong, in UTF-8.
    eBilingual Load(const std::string& file);

    // What the module says of itself; valid until the module is asked again.
    std::string Description() const { return description(); }

    // A new exporter; null if the module makes none.
    std::unique_ptr<host::SceneExport> NewExporter() const;

private:
    eBilingual FindExports();
    eBilingual CheckVersion() const;
    eBilingual FindExporterClass();

    platform::eSharedLibrary library;
    host::LibDescriptionFunction description = nullptr;
    host::LibNumberClassesFunction numberClasses = nullptr;
    host::LibClassDescFunction classDesc = nullptr;
    host::LibVersionFunction version = nullptr;
    host::CanAutoDeferFunction canAutoDefer = nullptr;
    host::ClassDesc* exporterClass = nullptr;  // the module's
};

}  // namespace standalone

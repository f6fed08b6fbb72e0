#include "plugin/class_descriptor.h"

#include "export/plugin_strings.h"
#include "host/scene_element.h"
#include "plugin/plugin_export.h"

void* ExpClassDesc::Create(bool) {
    return static_cast<host::SceneExport*>(new PluginExport);
}

const char* ExpClassDesc::ClassName() {
    return GetString(kClassNameString);
}

std::uint32_t ExpClassDesc::SuperClassID() {
    return host::kSceneExportSuperClass;
}

const char* ExpClassDesc::Category() {
    return GetString(kCategoryString);
}

ExpClassDesc& ExporterDescriptor() {
    static ExpClassDesc descriptor;
    return descriptor;
}

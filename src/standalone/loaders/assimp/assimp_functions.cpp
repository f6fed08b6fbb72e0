#include "standalone/loaders/assimp/assimp_functions.h"

#include <assimp/material.h>

#include "standalone/data/optional_library.h"

namespace standalone {
namespace {

// What the doors below lead to.
struct eMaterialFunctions {
    decltype(&aiGetMaterialColor) color = nullptr;
    decltype(&aiGetMaterialFloatArray) floats = nullptr;
    decltype(&aiGetMaterialIntegerArray) integers = nullptr;
    decltype(&aiGetMaterialString) string = nullptr;
    decltype(&aiGetMaterialTextureCount) textureCount = nullptr;
    decltype(&aiGetMaterialUVTransform) uvTransform = nullptr;
};

class eAssimp {
public:
    eAssimp() {
        Find("aiImportFileExWithProperties", functions.importFile);
        Find("aiApplyPostProcessing", functions.postProcess);
        Find("aiReleaseImport", functions.release);
        Find("aiGetErrorString", functions.errorString);
        Find("aiCreatePropertyStore", functions.createProperties);
        Find("aiSetImportPropertyInteger", functions.setInteger);
        Find("aiReleasePropertyStore", functions.releaseProperties);
        Find("aiGetMaterialColor", material.color);
        Find("aiGetMaterialFloatArray", material.floats);
        Find("aiGetMaterialIntegerArray", material.integers);
        Find("aiGetMaterialString", material.string);
        Find("aiGetMaterialTextureCount", material.textureCount);
        Find("aiGetMaterialUVTransform", material.uvTransform);
    }

    eAssimpFunctions functions;
    eMaterialFunctions material;
    eOptionalLibrary library{ZYR_ASSIMP_FILE};

private:
    template <class Function>
    void Find(const char* name, Function& function) {
        library.Find(name, function);
    }
};

const eAssimp& Assimp() {
    static const eAssimp assimp;
    return assimp;
}

}  // namespace

const eAssimpFunctions* LoadAssimp(std::optional<eLoadMessage>& problem) {
    const eAssimp& assimp = Assimp();
    if (assimp.library.Problem().empty()) {
        return &assimp.functions;
    }
    problem =
        MakeLoadMessage("", eMessageId::ImportLibraryMissing, ZYR_ASSIMP_FILE, assimp.library.Problem());
    return nullptr;
}

}  // namespace standalone

extern "C" {

aiReturn aiGetMaterialColor(const aiMaterial* material, const char* key, unsigned type, unsigned index,
                            aiColor4D* out) {
    return standalone::Assimp().material.color(material, key, type, index, out);
}
aiReturn aiGetMaterialFloatArray(const aiMaterial* material, const char* key, unsigned type, unsigned index,
                                 ai_real* out, unsigned* count) {
    return standalone::Assimp().material.floats(material, key, type, index, out, count);
}
aiReturn aiGetMaterialIntegerArray(const aiMaterial* material, const char* key, unsigned type, unsigned index,
                                   int* out, unsigned* count) {
    return standalone::Assimp().material.integers(material, key, type, index, out, count);
}
aiReturn aiGetMaterialString(const aiMaterial* material, const char* key, unsigned type, unsigned index,
                             aiString* out) {
    return standalone::Assimp().material.string(material, key, type, index, out);
}
unsigned aiGetMaterialTextureCount(const aiMaterial* material, aiTextureType type) {
    return standalone::Assimp().material.textureCount(material, type);
}
aiReturn aiGetMaterialUVTransform(const aiMaterial* material, const char* key, unsigned type, unsigned index,
                                  aiUVTransform* out) {
    return standalone::Assimp().material.uvTransform(material, key, type, index, out);
}
}

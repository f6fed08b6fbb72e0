#pragma once

#include "standalone/loaders/gltf/gltf_images.h"

namespace standalone {

// Makes a bitmap map of the use of a texture in a material: its image, the channel of its coordinates, and
// their transform. The result is the record's number, -1 for a texture without an image that is read. The
// material, code page 1251, is who tells of that.
template <class TextureInfo>
int MakeGltfTexture(eGltfImport& import, eGltfImages& images, const TextureInfo& info,
                    const std::string& material);

extern template int MakeGltfTexture(eGltfImport&, eGltfImages&, const tinygltf::TextureInfo&,
                                    const std::string&);
extern template int MakeGltfTexture(eGltfImport&, eGltfImages&, const tinygltf::NormalTextureInfo&,
                                    const std::string&);

}  // namespace standalone

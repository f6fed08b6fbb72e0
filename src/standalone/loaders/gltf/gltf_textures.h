#pragma once

#include "standalone/loaders/gltf/gltf_images.h"

namespace standalone {

// Makes a bitmap map of the use of a texture in a material: its image, the channel of its coordinates, and
// their transform. The result is the record's number, -1 for a texture that has no image.
template <class TextureInfo>
int MakeGltfTexture(eGltfImport& import, eGltfImages& images, const TextureInfo& info);

extern template int MakeGltfTexture(eGltfImport&, eGltfImages&, const tinygltf::TextureInfo&);
extern template int MakeGltfTexture(eGltfImport&, eGltfImages&, const tinygltf::NormalTextureInfo&);

}  // namespace standalone

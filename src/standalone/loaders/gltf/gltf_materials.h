#pragma once

#include "standalone/loaders/gltf/gltf_images.h"
#include "standalone/loaders/shared/unique_names.h"

namespace standalone {

// Makes the materials of a scene from those of the file.
class eGltfMaterials {
public:
    explicit eGltfMaterials(eGltfImport& ownImport);

    // Makes a record of each material of the file: a standard one, within a Sorrel one where it blends or has
    // the parameters of one among its extras.
    void MakeAll();

    // The record for the triangles of a mesh: their one material, or a multi material with one for each
    // primitive; -1 for none.
    int OfMesh(int mesh);

private:
    int Make(std::size_t material, eJsonIndex entry);
    int MakeStandard(const tinygltf::Material& source, const std::string& name);
    // In the first of the variants, where the primitive has any.
    int MaterialOf(const tinygltf::Primitive& primitive);
    int Add(const std::string& id, const std::string& name, eMaterialKind kind);
    void NoticeLosses(const tinygltf::Material& source);

    eGltfImport& import;
    eGltfImages images;
    eUniqueNames ids;
    std::vector<int> records;                     // by material of the file
    std::vector<std::optional<int>> meshRecords;  // by mesh of the file
};

}  // namespace standalone

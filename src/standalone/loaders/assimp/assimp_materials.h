#pragma once

#include <map>
#include <vector>

#include "standalone/loaders/assimp/assimp_import.h"
#include "standalone/loaders/assimp/assimp_pictures.h"
#include "standalone/loaders/shared/unique_names.h"

namespace standalone {

// The materials of the file as standard materials of the scene, and the multi materials of meshes that show
// several.
class eAssimpMaterials {
public:
    // Makes the materials that some mesh shows.
    explicit eAssimpMaterials(eAssimpImport& ownImport);

    // The material of the node's mesh, -1 for none: the only one, or a multi material with a slot for each of
    // its parts.
    int OfNode(const eAssimpNode& node);

private:
    int Make(const aiMaterial& source);
    // -1 where the material has no texture of the kind.
    int MakeMap(const aiMaterial& source, const std::string& material, aiTextureType type);
    int AddMap(const std::string& file, const std::string& material, const eMapCoordinates& coordinates);
    void AddSpecularLevel(const aiMaterial& source, const std::string& material, eStandardMaterial& standard);
    void AddNormals(const aiMaterial& source, const std::string& material, eStandardMaterial& standard);
    int Add(const std::string& name, eMaterialKind kind);

    eAssimpImport& import;
    eAssimpPictures pictures;
    eUniqueNames ids;
    std::vector<int> records;                // by material of the file
    std::map<std::vector<int>, int> multis;  // by their materials
};

}  // namespace standalone

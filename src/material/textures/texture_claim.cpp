#include "material/textures/texture_claim.h"

#include <algorithm>

#include "material/queries/material_queries.h"
#include "material/run_materials.h"
#include "material/textures/texture_source.h"
#include "run/export.h"
#include "run/tell.h"

namespace {

eTextureClaim MakeClaim(const eExportTexture& texture, host::Mtl* material) {
    eTextureClaim claim;
    claim.file = texture.file;
    claim.material = material;
    claim.materialName = GetMaterialName(material);
    claim.mapName = texture.texmap != nullptr ? texture.texmap->GetName() : std::string();
    claim.isCopied = texture.isCopied;
    claim.role = texture.role;
    if (claim.role.isNormal) {
        claim.role.bumpAmount = 0;  // scales heights alone
    }
    const host::Texmap* const map = SourceMap(texture);
    if (map != nullptr && map->ClassID() == host::kBitmapClass) {
        claim.source = texture.sourcePath;
        claim.settings = map->PictureSettings();
    }
    return claim;
}

bool IsSamePicture(const eTextureClaim& a, const eTextureClaim& b) {
    return a.source == b.source && (!a.source.empty() || a.material == b.material);
}

bool IsSameForm(const eTextureClaim& a, const eTextureClaim& b) {
    return a.isCopied == b.isCopied && (a.isCopied || (a.role == b.role && a.settings == b.settings));
}

// The colours and the normals of a picture lie side by side, in files of two kinds.
bool GoTogether(const eTextureClaim& a, const eTextureClaim& b) {
    return IsSamePicture(a, b) && (a.file == b.file ? IsSameForm(a, b) : a.role.isBump != b.role.isBump);
}

void TellRivals(Export& run, const eName& name, const eTextureClaim& earlier, const eTextureClaim& claim) {
    Tell(run, eMessageId::TexturesRivals,
         {.material = claim.materialName, .map = claim.mapName, .file = claim.file.Text()}, name.Text(),
         earlier.materialName, earlier.mapName, claim.materialName, claim.mapName);
}

}  // namespace

bool ClaimTexture(Export& run, const eExportTexture& texture, host::Mtl* material) {
    const eName name =
        texture.isCopied ? texture.targetPath.Part(eName::WithoutExtension) : texture.targetPath;
    const eTextureClaim claim = MakeClaim(texture, material);
    std::vector<eTextureClaim>& claims = run.materials->textureClaims[name];
    const auto owner = std::ranges::find(claims, claim.file, &eTextureClaim::file);
    if (owner != claims.end() && GoTogether(*owner, claim)) {
        return true;
    }
    const bool isFree = owner == claims.end() || !IsSamePicture(*owner, claim);
    const auto rival = std::find_if(claims.rbegin(), claims.rend(), [&](const eTextureClaim& earlier) {
        return !GoTogether(earlier, claim);
    });
    if (rival != claims.rend()) {
        TellRivals(run, name, *rival, claim);
    }
    claims.push_back(claim);
    return isFree;
}

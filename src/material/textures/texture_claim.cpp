#include "material/textures/texture_claim.h"

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"
#include "material/queries/material_queries.h"

namespace {

eTextureClaim MakeClaim(const eExportTexture& texture, host::Mtl* material) {
    eTextureClaim claim;
    claim.source = texture.sourcePath;
    claim.material = material;
    claim.materialName = GetMaterialName(material);
    claim.mapName = texture.texmap != nullptr ? texture.texmap->GetName() : std::string();
    claim.isCopied = texture.isCopied;
    claim.role = RoleOf(material, texture.texmap);
    if (claim.role.isNormal) {
        claim.role.bumpAmount = 0;  // scales heights alone
    }
    return claim;
}

bool IsSamePicture(const eTextureClaim& a, const eTextureClaim& b) {
    return a.source == b.source && (!a.source.empty() || a.material == b.material);
}

// A copy, and the normals of the same picture, lie side by side in files of two kinds.
bool AreFilesOfTwoKinds(const eTextureClaim& a, const eTextureClaim& b) {
    return a.isCopied != b.isCopied || a.role.isBump != b.role.isBump;
}

bool IsSameForm(const eTextureClaim& a, const eTextureClaim& b) {
    return (a.isCopied && b.isCopied) || AreFilesOfTwoKinds(a, b) || a.role == b.role;
}

}  // namespace

void ClaimTexture(Export& run, const eExportTexture& texture, host::Mtl* material) {
    const eName name =
        texture.isCopied ? texture.targetPath.Part(eName::WithoutExtension) : texture.targetPath;
    const eTextureClaim claim = MakeClaim(texture, material);
    const auto [entry, isNew] = run.textureClaims.try_emplace(name, claim);
    const eTextureClaim earlier = entry->second;
    if (isNew || (IsSamePicture(earlier, claim) && IsSameForm(earlier, claim))) {
        return;
    }
    entry->second = claim;
    const auto text =
        format(
            "Текстура '%s' одна, а нужна двум картам в разном виде: материал '%s' (карта '%s') и "
            "материал '%s' (карта '%s').\nВ игре останется только одна из них."_ansi) %
        name.Text() % earlier.materialName % earlier.mapName % claim.materialName % claim.mapName;
    ShowWarning(run.host->GetMAXHWnd(), text.Text());
}

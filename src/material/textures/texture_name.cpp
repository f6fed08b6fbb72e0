#include "material/textures/texture_name.h"

#include "base/ansi.h"
#include "base/format.h"
#include "io/path.h"
#include "material/queries/map_files.h"
#include "platform/path_text.h"
#include "run/export.h"
#include "run/resource_sets.h"
#include "run/tell.h"

namespace {

// How the engine tells a name below commonTextureTarget from one beside the material.
constexpr std::string_view kCommonMark = "$/";

bool HasFile(const host::Texmap* map) {
    return map != nullptr &&
           (map->ClassID() == host::kBitmapClass || map->ClassID() == host::kNormalBumpClass);
}

std::string FindSource(const host::Texmap* map) {
    if (!HasFile(map)) {
        return {};
    }
    std::string path = FirstMapFile(*map, false);
    return path.empty() ? FirstMapFile(*map, true) : path;
}

// A folder, whether or not it is spelled with its closing slash. Empty, everything is common.
std::string CommonSource(const Export& run) {
    const std::string folder = ResolveDots(run.options.commonTextureSource.Text());
    return folder.empty() || folder.ends_with('/') ? folder : folder + '/';
}

void NameCommonTexture(Export& run, eExportTexture& texture) {
    const eName below(std::string_view(texture.sourcePath).substr(CommonSource(run).size()));
    const eName name = texture.isCopied ? below : below.Part(eName::WithoutExtension);
    CreateFolders((run.options.resourceRoot / run.options.commonTextureTarget / name).Part(eName::Folder));
    texture.name = eName(kCommonMark) / name;
}

// The name of a common texture has the folders below the common one, which may have names that the game's
// files lack.
bool CanBeNamed(Export& run, const eExportTexture& texture, std::string_view below) {
    if (!platform::HasEscape(below)) {
        return true;
    }
    const std::string map = texture.texmap->GetName();
    Tell(run, eMessageId::TexturesForeignFolder, {.map = map, .file = texture.sourcePath}, texture.sourcePath,
         map);
    return false;
}

}  // namespace

bool ExtensionIsAccepted(std::string_view path) {
    for (const std::string_view extension : {".bmp", ".tga", ".dds"}) {
        if (path.find(extension) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

void MakeTextureName(Export& run, eExportTexture& texture) {
    texture.inCommon = false;
    texture.isCopied = false;
    texture.sourcePath = FindSource(texture.texmap);
    if (texture.sourcePath.empty()) {
        texture.name = eName((format("tex%1%_%2%") % texture.materialIndex % texture.slot).Text());
        return;
    }
    const std::string commonSource = CommonSource(run);
    const eName source(texture.sourcePath);
    texture.isCopied = texture.texmap->ClassID() == host::kBitmapClass && !texture.role.isBump &&
                       ExtensionIsAccepted(source.Text());
    texture.inCommon =
        EqualNoCase(std::string_view(texture.sourcePath).substr(0, commonSource.size()), commonSource) &&
        CanBeNamed(run, texture, std::string_view(texture.sourcePath).substr(commonSource.size()));
    if (texture.inCommon) {
        NameCommonTexture(run, texture);
    } else {
        texture.name = source.Part(texture.isCopied ? eName::FileName : eName::Title);
    }
}

void MakeTargetPath(Export& run, eExportTexture& texture) {
    if (texture.inCommon) {
        const eName below(std::string_view(texture.name.Text()).substr(kCommonMark.size()));
        texture.targetPath = run.options.resourceRoot / run.options.commonTextureTarget / below;
    } else {
        texture.targetPath = run.resources->commonFolder / texture.name;
    }
    texture.file = texture.targetPath;
    if (!texture.isCopied) {
        texture.file.Append(texture.role.isBump ? ".dds" : ".bmp");
    }
}

std::string GetEngineTextureName(const eExportTexture& texture) {
    return texture.isCopied ? texture.name.Part(eName::WithoutExtension).Text() : texture.name.Text();
}

#include "material/textures/write_texture.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/ansi.h"
#include "io/streams/whole_file.h"
#include "material/queries/map_files.h"
#include "material/queries/material_queries.h"
#include "material/run_materials.h"
#include "material/textures/bmp_file.h"
#include "material/textures/copied_picture.h"
#include "material/textures/normal_map.h"
#include "material/textures/texture_source.h"
#include "messages/phrase.h"
#include "platform/file.h"
#include "platform/file_events.h"
#include "platform/file_time.h"
#include "platform/folder.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/run_journal.h"
#include "texture/compress_image.h"

namespace {

constexpr int kPlainColorSide = 2;
constexpr int kDxt5Format = 3;

// What is to be done for one slot.
struct eTexturePlan {
    std::string source;       // of a map with a file
    host::BitmapHold loaded;  // of a map that is rebuilt: its picture, until the texture is made
    eTextureSource picture;
    int bitsPerPixel = 24;
};

// Where the mesh is that uses the material first.
std::string UserOf(const Export& run, host::Mtl* material) {
    const auto use = run.materials->materialMap.lower_bound({material, 0});
    const bool isUsed = use != run.materials->materialMap.end() && use->first.material == material;
    return isUsed && use->second.node != nullptr ? host::PathOf(*use->second.node) : std::string();
}

struct eTextureRequest {
    Export& run;
    const eExportTexture& texture;
    host::Mtl* material;
    host::TimeValue time;

    // What the file was for.
    eMessagePlace Owner() const {
        return {.node = UserOf(run, material),
                .material = GetMaterialName(material),
                .map = texture.texmap != nullptr ? texture.texmap->GetName() : std::string()};
    }
    // Models of many scenes share the common textures.
    xIo::eSharing Sharing() const { return texture.inCommon ? xIo::eSharing::Shared : xIo::eSharing::Own; }
    // What decides about the file; the first of the reasons stays.
    void Note(eFileRule rule, const std::string& source = {}) const {
        if (eFileNote* const note = NoteFile(run, texture.file, rule)) {
            note->materials.push_back(GetMaterialName(material));
            note->source = source;
        }
    }
    // The values of the text are file, material and map, and what stands behind them.
    template <class... Values>
    void Tell(eMessageId id, const std::string& file, const Values&... values) const {
        eMessagePlace place = Owner();
        place.file = file;
        ::Tell(run, id, place, file, place.material, place.map, values...);
    }
};

bool HasContent(const std::string& path) {
    platform::eFile file;
    std::int64_t length = 0;
    return !platform::IsFolder(path) && file.Open(path, platform::eFileAccess::Read).IsOk() &&
           file.Length(length).IsOk() && length > 0;
}

// An empty file, as a refused normal map leaves it and as a power cut may, is no texture, whatever its time.
eFileRule RuleOfTimes(const std::string& source, const std::string& target) {
    if (IsNewer(source, target)) {
        return platform::LastWriteTime(target) ? eFileRule::SourceNewer : eFileRule::TargetMissing;
    }
    return HasContent(target) ? eFileRule::UpToDate : eFileRule::TargetEmpty;
}

// Loads the picture and takes its size and depth; false if it can't be read.
bool TakeBitmap(const eTextureRequest& request, const std::string& source, eTexturePlan& plan) {
    eBilingual problem;
    plan.loaded.reset(request.run.host->TheManager().Load({source}, &problem));
    if (plan.loaded == nullptr) {
        request.Tell(eMessageId::TexturesUnreadable, source, problem);
        return false;
    }
    const eTextureRole& role = plan.picture.role;
    plan.picture.width = plan.loaded->Width();
    plan.picture.height = plan.loaded->Height();
    plan.bitsPerPixel = (plan.loaded->HasAlpha() || role.isBump) && !role.isSpecular ? 32 : 24;
    return true;
}

// The host need not know a picture's format to copy its file.
bool IsUsable(const eTextureRequest& request, eTexturePlan& plan) {
    if (!request.texture.isCopied) {
        return TakeBitmap(request, plan.source, plan);
    }
    const bool isCutOff = IsCutOffPicture(plan.source);
    if (isCutOff) {
        request.Tell(eMessageId::TexturesUnreadable, plan.source, Words(ePhrase::PictureDamaged));
    }
    return !isCutOff;
}

// What a copy is not, though its name or its map says so.
void TellCopy(const eTextureRequest& request, const eTexturePlan& plan) {
    if (IsMisnamedPicture(plan.source)) {
        request.Tell(eMessageId::TexturesMisnamed, plan.source);
    }
    if (!plan.picture.map->PictureSettings().empty()) {
        request.Tell(eMessageId::TexturesCopiedWhole, plan.source);
    }
}

// Where the file was looked for, if that says more than its own name.
eBilingual PlacesTried(const host::Texmap& map, const std::string& file) {
    const std::vector<std::string> tried = TriedMapPaths(map);
    if (tried.empty() || (tried.size() == 1 && EqualNoCase(tried.front(), file))) {
        return {};
    }
    std::string places;
    for (const std::string& path : tried) {
        places += "\n" + path;
    }
    return Words(ePhrase::PlacesTried, places);
}

// The material names the texture all the same.
void AdviseOnMissing(const eTextureRequest& request, const host::Texmap& map) {
    eMessagePlace place = request.Owner();
    place.map = map.GetName();
    place.file = FirstMapFile(map, true);
    const eBilingual shown =
        place.file.empty() ? Words(ePhrase::MapWithoutFile) : eBilingual{place.file, place.file};
    Tell(request.run, eMessageId::TexturesMissing, place, shown, place.material, place.map,
         PlacesTried(map, place.file));
}

// A map with a file. Nothing if there is nothing to write.
std::optional<eTexturePlan> PlanBitmap(const eTextureRequest& request, eTexturePlan plan) {
    host::Texmap& map = *plan.picture.map;
    map.LoadMapFiles(request.time);
    plan.source = FirstMapFile(map, false);
    if (!platform::LastWriteTime(plan.source)) {
        request.Note(eFileRule::SourceMissing, FirstMapFile(map, true));
        AdviseOnMissing(request, map);
        return std::nullopt;
    }
    const std::string& target = request.texture.file.Text();
    const eFileRule rule = RuleOfTimes(plan.source, target);
    const bool isKept = rule == eFileRule::UpToDate;
    if (!isKept && !IsUsable(request, plan)) {
        request.Note(eFileRule::SourceBroken, plan.source);
        return std::nullopt;
    }
    request.Note(rule, plan.source);
    if (request.texture.isCopied) {
        TellCopy(request, plan);
    }
    if (isKept) {
        platform::TellFileEvent(platform::eFileAction::Kept, target);
        return std::nullopt;
    }
    return plan;
}

std::optional<eTexturePlan> PlanTexture(const eTextureRequest& request, int width, int height) {
    eTexturePlan plan;
    plan.picture.material = request.material;
    plan.picture.role = request.texture.role;
    plan.picture.map = SourceMap(request.texture);
    plan.picture.width = width;
    plan.picture.height = height;
    if (plan.picture.map == nullptr) {
        request.Note(eFileRule::PlainColor);
        plan.picture.width = kPlainColorSide;
        plan.picture.height = kPlainColorSide;
        return plan;
    }
    if (plan.picture.map->ClassID() == host::kBitmapClass) {
        return PlanBitmap(request, std::move(plan));
    }
    request.Note(eFileRule::Procedural);
    return plan;
}

// False for a map of the whole material on a mesh without map coordinates, which settle the size.
bool HasSize(const eTexturePlan& plan) {
    return plan.picture.width > 0 && plan.picture.height > 0;
}

// DXT5 blocks can't hold the picture; what helps depends on where its size comes from.
void TellSides(const eTextureRequest& request, const eTexturePlan& plan) {
    const ePhrase help = plan.source.empty() ? ePhrase::BakePicture : ePhrase::ResizePicture;
    request.Tell(eMessageId::TexturesSides, request.texture.file, plan.picture.width, plan.picture.height,
                 Words(help));
}

// A picture that DXT5 blocks can't hold leaves an empty file: the materials name it, and the engine takes its
// own texture for it.
void WriteNormalMap(const eTextureRequest& request, const eTexturePlan& plan, const eTextureImage& normals) {
    std::vector<std::uint8_t> content;
    constexpr std::size_t kHeaderAndSmallest = 256;
    content.reserve(normals.pixels.size() / 3 + kHeaderAndSmallest);
    const auto append = [&content](const void* buffer, std::size_t byteCount, const eMipInfo*,
                                   std::intptr_t) {
        const auto* bytes = static_cast<const std::uint8_t*>(buffer);
        content.insert(content.end(), bytes, bytes + byteCount);
        return 0;
    };
    CompressionOptions options;
    options.g_texture_format = kDxt5Format;
    options.rescaleFilter = 2;
    const int result = CompressImage(normals.pixels.data(), static_cast<unsigned>(normals.width),
                                     static_cast<unsigned>(normals.height), normals.width * 4,
                                     pixelLayoutBgra, options, append);
    if (result != compressDone) {
        content.clear();
        if (HasSize(plan)) {
            TellSides(request, plan);
        }
    }
    xIo::WriteWholeFile(request.texture.file, content, request.Owner(), request.Sharing());
}

void MakeTexture(const eTextureRequest& request, eTexturePlan plan) {
    if (!HasSize(plan)) {
        request.Tell(eMessageId::TexturesNoSize, request.texture.file);
    }
    const eTextureRows picture = TextureRows(request.run, plan.picture, request.time);
    if (plan.picture.role.isBump) {
        const eTextureImage normals =
            plan.picture.role.isNormal ? NormalsFromPicture(picture) : NormalsFromHeights(picture);
        plan.loaded.reset();
        WriteNormalMap(request, plan, normals);
    } else {
        xIo::WriteWholeFile(request.texture.file, MakeBmp(picture, plan.bitsPerPixel), request.Owner(),
                            request.Sharing());
    }
}

}  // namespace

bool IsNewer(const std::string& source, const std::string& target) {
    const auto sourceTime = platform::LastWriteTime(source);
    const auto targetTime = platform::LastWriteTime(target);
    return sourceTime && (!targetTime || *targetTime < *sourceTime);
}

void WriteTexture(Export& run, const eExportTexture& texture, host::Mtl* material, int width, int height,
                  host::TimeValue t) {
    const eTextureRequest request{.run = run, .texture = texture, .material = material, .time = t};
    std::optional<eTexturePlan> plan = PlanTexture(request, width, height);
    if (!plan) {
        return;
    }
    if (texture.inCommon) {
        run.materials->sharedFolders.insert(texture.file.Part(eName::Folder));
    }
    if (texture.isCopied) {
        xIo::CopyWholeFile(plan->source, texture.file, request.Owner(), request.Sharing());
    } else {
        MakeTexture(request, std::move(*plan));
    }
}

#include "material/textures/write_texture.h"

#include <optional>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/diagnostics.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"
#include "io/streams/whole_file.h"
#include "material/queries/map_files.h"
#include "material/queries/material_queries.h"
#include "material/textures/bmp_file.h"
#include "material/textures/copied_picture.h"
#include "material/textures/normal_map.h"
#include "material/textures/texture_name.h"
#include "material/textures/texture_source.h"
#include "platform/file.h"
#include "platform/file_events.h"
#include "platform/file_time.h"
#include "platform/folder.h"
#include "texture/compress_image.h"

namespace {

constexpr int kPlainColorSide = 2;
constexpr int kDxt5Format = 3;

// What is to be done for one slot.
struct eTexturePlan {
    bool copy = false;
    std::string source;  // of a map with a file
    eTextureSource picture;
    int bitsPerPixel = 24;
    eName target;  // with its extension
};

struct eTextureRequest {
    Export& run;
    const eExportTexture& texture;
    host::Mtl* material;
    host::TimeValue time;

    eName Target(const eTextureRole& role) const {
        return eName(texture.targetPath).Append(role.isBump ? ".dds" : ".bmp");
    }
    // "(материал '...', карта '...')"
    std::string Owner() const {
        return (format("(материал '%s', карта '%s')"_ansi) % GetMaterialName(material) %
                (texture.texmap != nullptr ? texture.texmap->GetName() : std::string()))
            .Text();
    }
    void Tell(const std::string& file, const char* what) const {
        const auto text = format("Текстура '%s' %s %s"_ansi) % file % Owner() % what;
        ShowWarning(run.host->GetMAXHWnd(), text.Text());
    }
    void TellUnreadable(const std::string& file, const std::string& reason) const {
        Tell(file, ("не записана:\nфайл изображения не читается.\n"_ansi + reason).c_str());
    }
};

// An empty file, as a refused normal map leaves it and as a power cut may, is no texture, whatever its time.
bool IsUpToDate(const eTexturePlan& plan) {
    const std::string& target = plan.target.Text();
    platform::eFile file;
    std::int64_t length = 0;
    return !IsNewer(plan.source, target) && !platform::IsFolder(target) &&
           file.Open(target, platform::eFileAccess::Read).IsOk() && file.Length(length).IsOk() && length > 0;
}

// Takes the size and the depth of the picture from its file; false if it can't be read.
bool TakeBitmap(const eTextureRequest& request, const std::string& source, eTexturePlan& plan) {
    std::string problem;
    host::Bitmap* bitmap = request.run.host->TheManager().Load({source}, &problem);
    if (bitmap == nullptr) {
        request.TellUnreadable(source, problem);
        return false;
    }
    const eTextureRole& role = plan.picture.role;
    plan.picture.width = bitmap->Width();
    plan.picture.height = bitmap->Height();
    plan.bitsPerPixel = (bitmap->HasAlpha() || role.isBump) && !role.isSpecular ? 32 : 24;
    bitmap->DeleteThis();
    return true;
}

// The host need not know the engine's own format to copy a file of it.
bool IsUsable(const eTextureRequest& request, eTexturePlan& plan) {
    if (!plan.copy || eName(plan.source).Part(eName::Extension) != ".dds") {
        return TakeBitmap(request, plan.source, plan);
    }
    const std::string damage = DamageOfCopiedPicture(plan.source);
    if (!damage.empty()) {
        request.TellUnreadable(plan.source, damage);
    }
    return damage.empty();
}

// A map with a file. Nothing if there is nothing to write.
std::optional<eTexturePlan> PlanBitmap(const eTextureRequest& request, eTexturePlan plan) {
    host::Texmap& map = *plan.picture.map;
    map.LoadMapFiles(request.time);
    plan.source = FirstMapFile(map, false);
    if (!platform::LastWriteTime(plan.source)) {
        const auto text = format("The texture %s (material %s, map %s) is missing") %
                          FirstMapFile(map, true) % GetMaterialName(request.material) % map.GetName();
        Warn(__FILE__, __LINE__, text.Text());
        return std::nullopt;
    }
    plan.copy = ExtensionIsAccepted(plan.source) && plan.picture.role.bumpAmount == 0;
    plan.target = plan.copy ? request.texture.targetPath : request.Target(plan.picture.role);
    const bool isKept = IsUpToDate(plan);
    if (!isKept && !IsUsable(request, plan)) {
        return std::nullopt;
    }
    if (plan.copy && IsMisnamedPicture(plan.source)) {
        request.Tell(plan.source, "взята как есть, но это не тот формат, который указан в ее имени."_ansi);
    }
    if (isKept) {
        platform::TellFileEvent(platform::eFileAction::Kept, plan.target.Text());
        return std::nullopt;
    }
    return plan;
}

std::optional<eTexturePlan> PlanTexture(const eTextureRequest& request, int width, int height) {
    eTexturePlan plan;
    host::Texmap* map = request.texture.texmap;
    plan.picture.material = request.material;
    plan.picture.role = RoleOf(request.material, map);
    plan.picture.map = plan.picture.role.isNormal && map->NumSubTexmaps() > 0 ? map->GetSubTexmap(0) : map;
    plan.picture.width = width;
    plan.picture.height = height;
    plan.target = request.Target(plan.picture.role);
    if (plan.picture.map == nullptr) {
        plan.picture.width = kPlainColorSide;
        plan.picture.height = kPlainColorSide;
        return plan;
    }
    return plan.picture.map->ClassID() == host::kBitmapClass ? PlanBitmap(request, std::move(plan)) : plan;
}

// A picture that DXT5 blocks can't hold leaves an empty file: the materials name it, and the engine takes its
// own texture for it.
void WriteNormalMap(const eTextureRequest& request, const eTexturePlan& plan, const eTextureImage& image) {
    const eTextureImage normals =
        plan.picture.role.isNormal ? NormalsFromPicture(image) : NormalsFromHeights(image);
    std::vector<std::uint8_t> content;
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
        const auto reason =
            format(
                "не записана:\nстороны карты нормалей, %1% и %2%, должны быть равны 1, 2 или кратны 4."_ansi) %
            normals.width % normals.height;
        request.Tell(plan.target, reason.Text().c_str());
    }
    xIo::WriteWholeFile(plan.target, content, request.Owner());
}

void MakeTexture(const eTextureRequest& request, const eTexturePlan& plan) {
    const eTextureImage image = RenderTexture(request.run, plan.picture, request.time);
    if (plan.picture.role.isBump) {
        WriteNormalMap(request, plan, image);
    } else {
        xIo::WriteWholeFile(plan.target, MakeBmp(image, plan.bitsPerPixel), request.Owner());
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
    const std::optional<eTexturePlan> plan = PlanTexture(request, width, height);
    if (!plan) {
        return;
    }
    if (plan->copy) {
        xIo::CopyWholeFile(plan->source, plan->target, request.Owner());
    } else {
        MakeTexture(request, *plan);
    }
}

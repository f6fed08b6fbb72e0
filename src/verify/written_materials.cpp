#include "verify/written_materials.h"

#include <algorithm>

#include "inspect/sdl_tree.h"

namespace verify {

namespace {

bool IsPictureKey(const std::string& key) {
    constexpr const char* kKeys[] = {"diffuse", "diffuse1", "bump", "specular", "envmap", "mask"};
    return std::ranges::find(kKeys, key) != std::end(kKeys);
}

eWrittenMaterial ReadMaterial(const inspect::eSdlBlock& block) {
    eWrittenMaterial material;
    for (const inspect::eSdlBlock* key : block.Blocks()) {
        const std::vector<std::string> values = key->Values();
        if (IsPictureKey(key->Name()) && !values.empty()) {
            material[key->Name()] = values.front();
        }
    }
    return material;
}

}  // namespace

const eWrittenMaterials::eFile& eWrittenMaterials::In(const eName& folder) {
    const auto [entry, isNew] = files_.try_emplace(folder);
    const eName path = folder / ".material";
    const std::optional<platform::eFileContent> content = isNew ? ReadWritten(path) : std::nullopt;
    if (content) {
        std::string problem;
        const std::string text(reinterpret_cast<const char*>(content->data()), content->size());
        const inspect::eSdlBlock tree = inspect::ReadSdlTree(path, text, problem);
        for (const inspect::eSdlBlock* block : tree.Blocks()) {
            const std::vector<std::string> names = block->Values();
            entry->second.materials.emplace(names.empty() ? std::string() : names.front(),
                                            ReadMaterial(*block));
        }
        entry->second.isBroken = !problem.empty();
    }
    return entry->second;
}

eName eWrittenMaterials::PictureFile(const eName& folder, const std::string& picture) const {
    constexpr std::string_view kCommon = "$/";
    const eName place = picture.starts_with(kCommon)
                            ? scene_.options.resourceRoot / scene_.options.commonTextureTarget /
                                  eName(picture.substr(kCommon.size()))
                            : folder / eName(picture);
    for (const char* ending : {".tga", ".bmp", ".dds"}) {
        eName file = place;
        if (platform::eFile().Open(file.Append(ending).Text(), platform::eFileAccess::Read).IsOk()) {
            return file;
        }
    }
    return {};
}

}  // namespace verify

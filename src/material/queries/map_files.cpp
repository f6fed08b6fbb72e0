#include "material/queries/map_files.h"

#include <vector>

#include "io/name.h"

namespace {

class GetMapFiles : public host::AssetEnumCallback {
public:
    std::vector<std::string> files;
    std::vector<std::string> tried;  // for the first one

    void RecordAsset(const host::AssetUser& asset) override {
        if (files.empty()) {
            tried = asset.TriedPaths();
        }
        std::string path = ResolveDots(asset.GetFullFilePath());
        NormalizeName(path);
        files.push_back(std::move(path));
    }
};

}  // namespace

std::string FirstMapFile(const host::Texmap& map, bool alsoMissing) {
    GetMapFiles list;
    map.EnumAuxFiles(list, alsoMissing ? host::MtlBase::kListMissingFiles : 0);
    return list.files.empty() ? std::string() : list.files.front();
}

std::vector<std::string> TriedMapPaths(const host::Texmap& map) {
    GetMapFiles list;
    map.EnumAuxFiles(list, host::MtlBase::kListMissingFiles);
    return list.tried;
}

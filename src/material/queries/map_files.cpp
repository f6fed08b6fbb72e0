#include "material/queries/map_files.h"

#include <vector>

#include "io/name.h"

namespace {

class GetMapFiles : public host::AssetEnumCallback {
public:
    std::vector<std::string> files;

    void RecordAsset(const host::AssetUser& asset) override {
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

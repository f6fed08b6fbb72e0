#include "inspect/material_view.h"

#include "base/ansi.h"

namespace inspect {

eDescription DescribeMaterials(const eSdlBlock& file) {
    eDescription materials = eDescription::array();
    for (const eSdlBlock* block : file.Blocks()) {
        const std::vector<std::string> values = block->Values();
        eDescription material;
        material["name"] = values.empty() ? "" : ToUtf8(values.front());
        material["type"] = block->Name();
        for (const eSdlBlock* key : block->Blocks()) {
            const std::vector<std::string> content = key->Values();
            material[key->Name()] =
                content.empty() ? eDescription(true) : eDescription(ToUtf8(content.front()));
        }
        materials.push_back(std::move(material));
    }
    return {{"kind", "materials"}, {"count", materials.size()}, {"materials", materials}};
}

}  // namespace inspect

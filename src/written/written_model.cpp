#include "written/written_model.h"

#include <algorithm>

#include "inspect/placement.h"

namespace written {

namespace {

void ReadBones(const inspect::eSdlBlock& around, int above, std::vector<eWrittenBone>& bones) {
    for (const inspect::eSdlBlock* block : around.Blocks("bone")) {
        const std::vector<std::string> values = block->Values();
        const int number = static_cast<int>(bones.size());
        bones.push_back({.name = values.empty() ? std::string() : values.back(),
                         .above = above,
                         .local = inspect::PlacementOf(*block),
                         .views = {},
                         .block = block});
        for (const inspect::eSdlBlock* view : block->Blocks("view")) {
            const std::vector<std::string> words = view->Values();
            bones.back().views.push_back(words.empty() ? std::string() : words.back());
        }
        ReadBones(*block, number, bones);
    }
}

}  // namespace

int eWrittenModel::NumberOf(const std::string& name) const {
    const auto found = std::ranges::find(bones, name, &eWrittenBone::name);
    return found != bones.end() ? static_cast<int>(found - bones.begin()) : -1;
}

eWrittenModel ReadWrittenModel(const eName& file) {
    eWrittenModel model;
    model.text = ReadWrittenText(file, model.problem);
    if (const inspect::eSdlBlock* skeleton = model.text.Find("skeleton")) {
        ReadBones(*skeleton, -1, model.bones);
    }
    return model;
}

inspect::eSdlBlock ReadWrittenText(const eName& file, std::string& problem) {
    const std::optional<platform::eFileContent> content = ReadWritten(file);
    if (!content) {
        problem = "there is no such text that can be read";
        return {};
    }
    return inspect::ReadSdlTree(
        file.Text(), std::string(reinterpret_cast<const char*>(content->data()), content->size()), problem);
}

}  // namespace written

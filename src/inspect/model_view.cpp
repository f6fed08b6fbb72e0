#include "inspect/model_view.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "host/values.h"
#include "volume/polyhedron_image.h"

namespace inspect {

namespace {

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        const std::string shown = ToUtf8(word);
        text += (text.empty() || shown.empty() ? "" : " ") + shown;
    }
    return text;
}

eDescription DescribePolyhedron(const eSdlBlock& block) {
    std::string problem;
    const auto values = block.Values();
    const auto polyhedron = ReadPolyhedron(values.empty() ? "" : values.front(), problem);
    if (!polyhedron) {
        return {{"problem", problem}};
    }
    host::Box3 bounds;
    for (const host::Point3& vertex : polyhedron->vertices) {
        bounds += vertex;
    }
    const host::Point3 size = bounds.IsEmpty() ? host::Point3{} : bounds.Width();
    return {{"vertices", polyhedron->vertices.size()},
            {"faces", polyhedron->sides.size()},
            {"size", {ShownMetres(size.x), ShownMetres(size.y), ShownMetres(size.z)}}};
}

// Blocks that the views tell in words of their own, or leave out.
bool IsTold(const std::string& name) {
    constexpr const char* kTold[] = {"bone", "view", "matrix34", "Position", "orientation", "parameters"};
    return std::ranges::find(kTold, name) != std::end(kTold);
}

std::string PlacementOf(const eSdlBlock& block) {
    for (const char* form : {"Position", "matrix34", "orientation"}) {
        if (const eSdlBlock* placement = block.Find(form)) {
            return std::string(form) + " " + Joined(placement->Values());
        }
    }
    return "identity";
}

// `{bone revolute "name" ...}`: the joint word stands in front of the name.
eDescription DescribeBone(const eSdlBlock& bone) {
    const std::vector<std::string> values = bone.Values();
    eDescription description;
    description["bone"] = values.empty() ? "" : ToUtf8(values.back());
    if (values.size() > 1) {
        description["joint"] = values.front();
    }
    if (bone.Find("parameters") != nullptr) {
        description["parameters"] = ToUtf8(bone.ValueOf("parameters"));
    }
    description["placement"] = PlacementOf(bone);
    for (const eSdlBlock* block : bone.Blocks()) {
        if (!IsTold(block->Name())) {
            AddBlock(description, *block);
        }
    }
    for (const eSdlBlock* view : bone.Blocks("view")) {
        eDescription entry;
        const std::vector<std::string> viewValues = view->Values();
        entry["mesh"] = viewValues.empty() ? "" : ToUtf8(viewValues.back());
        for (const eSdlBlock* block : view->Blocks()) {
            AddBlock(entry, *block);
        }
        description["views"].push_back(std::move(entry));
    }
    for (const eSdlBlock* child : bone.Blocks("bone")) {
        description["children"].push_back(DescribeBone(*child));
    }
    return description;
}

std::size_t CountBones(const eSdlBlock& block) {
    std::size_t count = 0;
    for (const eSdlBlock* bone : block.Blocks("bone")) {
        count += 1 + CountBones(*bone);
    }
    return count;
}

eDescription DescribeVolume(const eSdlBlock& volume) {
    eDescription description;
    description["volume"] = ToUtf8(volume.Name());
    for (const eSdlBlock* block : volume.Blocks()) {
        if (block->Name() == "polyhedron") {
            description["polyhedron"] = DescribePolyhedron(*block);
        } else if (!IsTold(block->Name()) || block->Name() == "bone") {
            AddBlock(description, *block);
        }
    }
    return description;
}

eDescription DescribeSolid(const eSdlBlock& volume) {
    eDescription description = DescribeVolume(volume);
    description["placement"] = PlacementOf(volume);
    return description;
}

eDescription DescribeZone(const eSdlBlock& zone) {
    eDescription description;
    description["zone"] = Joined(zone.Values());
    description["kind"] = ToUtf8(zone.Name());
    for (const eSdlBlock* block : zone.Blocks()) {
        if (block->Name() == "polygon2") {
            description["polygon2"] = {{"vertices", block->Blocks("vertex").size()}};
        } else {
            AddBlock(description, *block);
        }
    }
    return description;
}

template <class Describe>
void AddList(eDescription& description, const eSdlBlock& parent, const char* name, Describe describe) {
    if (const eSdlBlock* list = parent.Find(name)) {
        description[name] = eDescription::array();
        for (const eSdlBlock* block : list->Blocks()) {
            description[name].push_back(describe(*block));
        }
    }
}

eDescription DescribeSupportPoints(const eSdlBlock& bone) {
    return {{"bone", Joined(bone.Values())}, {"points", bone.Blocks("point").size()}};
}

}  // namespace

eDescription DescribeBlock(const eSdlBlock& block) {
    const std::vector<const eSdlBlock*> inner = block.Blocks();
    if (inner.empty()) {
        const std::vector<std::string> values = block.Values();
        return values.empty() ? eDescription(true) : eDescription(Joined(values));
    }
    eDescription description = eDescription::object();
    for (const eSdlBlock* child : inner) {
        AddBlock(description, *child);
    }
    return description;
}

void AddBlock(eDescription& description, const eSdlBlock& block) {
    std::string name = ToUtf8(block.Name());
    if ((!block.Blocks().empty() && !block.Values().empty()) || description.contains(name)) {
        name += " " + Joined(block.Values());
    }
    description[name] = DescribeBlock(block);
}

eDescription DescribeModel(const eSdlBlock& file) {
    eDescription description;
    description["kind"] = "model";
    if (const eSdlBlock* skeleton = file.Find("skeleton")) {
        description["boneCount"] = CountBones(*skeleton);
        for (const eSdlBlock* root : skeleton->Blocks("bone")) {
            description["skeleton"].push_back(DescribeBone(*root));
        }
    }
    AddList(description, file, "SupportPoints", DescribeSupportPoints);
    AddList(description, file, "zones", DescribeZone);
    AddList(description, file, "volumes", DescribeSolid);
    if (const eSdlBlock* preview = file.Find("preview")) {
        description["preview"] = DescribeBlock(*preview);
    }
    return description;
}

eDescription DescribeEntity(const eSdlBlock& file) {
    eDescription description;
    description["kind"] = "entity";
    if (const eSdlBlock* entity = file.Find("entity")) {
        for (const eSdlBlock* block : entity->Blocks()) {
            if (block->Name() == "volumes") {
                AddList(description, *entity, "volumes", DescribeVolume);
            } else {
                AddBlock(description, *block);
            }
        }
    }
    return description;
}

}  // namespace inspect

#include "answers/scene_names.h"

#include "base/ansi.h"
#include "base/nearest_name.h"
#include "host/node.h"
#include "scene/properties/node_name.h"

namespace answers {

bool eSceneNames::Has(std::string_view name) const {
    return known.contains(LowerAnsi(name));
}

std::string eSceneNames::Nearest(std::string_view name) const {
    return NearestName(name, names);
}

void eSceneNames::Collect(const host::INode& above) {
    for (int i = 0; i < above.NumberOfChildren(); ++i) {
        const host::INode& node = *above.GetChildNode(i);
        names.push_back(node.GetName());
        known.insert(LowerAnsi(node.GetName()));
        known.insert(CleanNodeName(node.GetName(), true));
        Collect(node);
    }
}

}  // namespace answers

#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace host {
class INode;
}  // namespace host

namespace answers {

// The names of all nodes of a scene, as they stand and as the game gets them; letter case does not count.
class eSceneNames {
public:
    // Cost: one pass over the scene.
    explicit eSceneNames(const host::INode& sceneRoot) { Collect(sceneRoot); }

    bool Has(std::string_view name) const;
    // Empty if none is near. Cost: the number of the nodes.
    std::string Nearest(std::string_view name) const;

private:
    void Collect(const host::INode& above);

    std::vector<std::string> names;
    std::unordered_set<std::string> known;  // lower case
};

}  // namespace answers

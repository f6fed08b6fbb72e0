#include "answers/property_keys.h"

#include <algorithm>

#include "base/ansi.h"

namespace answers {
namespace {

// By who reads them; the first three rows stand at every model.
const std::string kKeys[] = {
    // models
    "Model", "XModel", "Structure",
    // animations
    "animation", "animationresume", "animationauto",
    // meshes
    "Poly", "Mesh", "CommonMesh", "Voxels", "AniTex", "NoSkin", "OldSkin", "NoGroupMesh",
    // bones
    "IKType", "IKMin", "IKMax", "IKLimit", "IKSpeed", "IKTerminate", "Color", "Layer", "LODLastOff",
    "LODControlBone",
    // what a node is beside the skeleton
    "Volume", "Component", "SupportPoint", "Obstacle", "Area", "Body", "Preview", "Land",
    // volumes and zones
    "Tags", "Thickness", "Proper", "Permit", "Rotate", "Move", "Static", "Clear", "visible", "bullet",
    "overlap", "contact", "contact_ground", "blast", "select", "hole", "holed", "touch", "float", "window",
    // of older exporters
    "DecalTarget", "NoCastShadows", "NoGetShadows", "Hold", "type"};

}  // namespace

std::span<const std::string> PropertyKeys() {
    return kKeys;
}

bool IsPropertyKey(std::string_view key) {
    return std::ranges::any_of(kKeys,
                               [key](const std::string& known) { return EqualNoAsciiCase(known, key); });
}

}  // namespace answers

#include "answers/known_keys.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "base/ansi.h"

namespace answers {
namespace {

using enum eKeyPlace;
using enum eKeyReader;
using enum eValueForm;

const eKnownKey kKeys[] = {
    {"Model", Models, Host, Text},
    {"XModel", Models, Host, Free},
    {"Structure", Models, Own, Mark},
    {"Hold", Models, Trimmed, NodeNames},
    {"animation", Models, Trimmed, Animation},
    {"animationresume", Models, Trimmed, Animation},
    {"animationauto", Models, Trimmed, Animation},
    {"Land", Anywhere, Own, Mark},

    {"Poly", Bones, Own, Mark},
    {"Mesh", Bones, Host, NodeName},
    {"CommonMesh", Bones, Host, NodeNameOrNone},
    {"Voxels", Bones, Host, Free},
    {"AniTex", Bones, Host, Text},
    {"NoSkin", Bones, Host, Mark},
    {"OldSkin", Bones, Own, Mark},
    {"NoGroupMesh", Bones, Own, Mark},
    {"Ground", Bones, Own, Mark},
    {"DecalTarget", Bones, Own, Mark},
    {"NoCastShadows", Bones, Own, Mark},
    {"NoGetShadows", Bones, Own, Mark},
    {"Layer", Bones, Host, Text},
    {"Color", Bones, Host, Free},
    {"LODLastOff", Bones, Own, Mark},
    {"IKType", Bones, Host, Free},
    {"IKTerminate", Bones, Own, Mark},
    {"IKMin", Ranges, Own, Number},
    {"IKMax", Ranges, Own, Number},
    {"IKLimit", Sockets, Own, Number},
    {"IKSpeed", Joints, Own, Number},

    {"Volume", Volumes, Own, Free},
    {"Component", Volumes, Own, Mark},
    {"SupportPoint", SupportPoints, Own, Mark},
    {"Obstacle", VolumesAndZones, Own, WholeNumber},
    {"Area", Zones, Own, Mark},
    {"Body", Bodies, Own, Mark},
    {"Preview", Previews, Own, Mark},

    {"Tags", VolumesAndZones, Own, Tags},
    {"Thickness", Volumes, Own, Numbers},
    {"Proper", Zones, Own, Free},
    {"Permit", Zones, Own, Free},
    {"Rotate", Zones, Own, Mark},
    {"Move", Zones, Own, Mark},
    {"Static", Zones, Own, Mark},
    {"Clear", Volumes, Own, Mark},
    {"visible", Volumes, Own, Free},
    {"bullet", Volumes, Own, Free},
    {"overlap", Volumes, Own, Free},
    {"contact", Volumes, Own, Free},
    {"contact_ground", Volumes, Own, Free},
    {"blast", Volumes, Own, Free},
    {"select", Volumes, Own, Free},
    {"hole", Volumes, Own, Free},
    {"holed", Volumes, Own, Free},
    {"touch", Volumes, Own, Free},
    {"float", Volumes, Own, Free},
    {"window", Volumes, Own, Free},

    // Of older exporters; nobody reads them, and nobody minds.
    {"LODControlBone", Anywhere, Trimmed, Free},
    {"type", Anywhere, Trimmed, Free},
};

}  // namespace

std::span<const eKnownKey> KnownKeys() {
    return kKeys;
}

std::span<const std::string> KnownKeyNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        std::ranges::transform(kKeys, std::back_inserter(all), &eKnownKey::name);
        return all;
    }();
    return names;
}

const eKnownKey* FindKnownKey(std::string_view key) {
    const auto* found = std::ranges::find_if(
        kKeys, [key](const eKnownKey& known) { return EqualNoAsciiCase(known.name, key); });
    return found != std::end(kKeys) ? found : nullptr;
}

}  // namespace answers

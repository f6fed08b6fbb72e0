#include "answers/labelled.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "messages/utf8_words.h"

namespace answers {

namespace {

using inspect::eDescription;

constexpr std::pair<std::string_view, ePhrase> kLabels[] = {
    {"after", ePhrase::HeadAfter},
    {"also", ePhrase::HeadAlso},
    {"animation", ePhrase::HeadAnimation},
    {"animations", ePhrase::HeadAnimations},
    {"before", ePhrase::HeadBefore},
    {"blame", ePhrase::HeadBlame},
    {"bone", ePhrase::HeadBone},
    {"decidedBy", ePhrase::HeadDecidedBy},
    {"faces", ePhrase::HeadFaces},
    {"fate", ePhrase::HeadFate},
    {"feeds", ePhrase::HeadFeeds},
    {"file", ePhrase::HeadFile},
    {"files", ePhrase::HeadFiles},
    {"frames", ePhrase::HeadFrames},
    {"level", ePhrase::HeadLevel},
    {"material", ePhrase::HeadMaterial},
    {"mesh", ePhrase::HeadMesh},
    {"meshBy", ePhrase::HeadMeshBy},
    {"model", ePhrase::HeadModel},
    {"moving", ePhrase::HeadMoving},
    {"name", ePhrase::HeadName},
    {"noMesh", ePhrase::HeadNoMesh},
    {"node", ePhrase::HeadNode},
    {"overlaps", ePhrase::HeadOverlaps},
    {"palette", ePhrase::HeadPalette},
    {"parentBone", ePhrase::HeadParentBone},
    {"plan", ePhrase::HeadPlan},
    {"root", ePhrase::HeadRoot},
    {"rule", ePhrase::HeadRule},
    {"scene", ePhrase::HeadScene},
    {"set", ePhrase::HeadSet},
    {"shows", ePhrase::HeadShows},
    {"state", ePhrase::HeadState},
    {"subMeshes", ePhrase::HeadSubMeshes},
    {"triangles", ePhrase::HeadTriangles},
    {"why", ePhrase::HeadWhy},
};

std::string LabelOf(const std::string& key, eLanguage language) {
    const auto* const label = std::ranges::find(kLabels, key, &std::pair<std::string_view, ePhrase>::first);
    return label != std::end(kLabels) ? Say(language, label->second) : key;
}

}  // namespace

eDescription Labelled(const eDescription& answer, eLanguage language) {
    if (answer.is_boolean()) {
        return Say(language, answer.get<bool>() ? ePhrase::CellYes : ePhrase::CellNo);
    }
    if (answer.is_array() && answer.empty()) {
        return Say(language, ePhrase::CellNone);
    }
    if (!answer.is_structured()) {
        return answer;
    }
    eDescription labelled = answer.is_array() ? eDescription::array() : eDescription::object();
    for (const auto& member : answer.items()) {
        if (answer.is_array()) {
            labelled.push_back(Labelled(member.value(), language));
        } else {
            labelled[LabelOf(member.key(), language)] = Labelled(member.value(), language);
        }
    }
    return labelled;
}

}  // namespace answers

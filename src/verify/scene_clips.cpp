#include "verify/scene_clips.h"

#include <algorithm>

#include "base/ansi.h"
#include "base/number_text.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/text_words.h"

namespace verify {

namespace {

constexpr int kMostFrames = 65536;

bool IsDeclaration(std::string_view key) {
    const char* const kKeys[] = {"animation", "animationresume", "animationauto"};
    return std::ranges::any_of(kKeys, [&](const char* known) { return EqualNoAsciiCase(key, known); });
}

// NAME,SET,FIRST-LAST,FILE,SPEED; a number alone in the place of the file is the speed, in per cent.
struct eFileAndSpeed {
    std::string file;
    float speed = 0;
};
eFileAndSpeed ReadFileAndSpeed(std::string_view rest, const std::string& name) {
    const std::size_t comma = rest.find(',');
    const std::string_view file = TrimBlanks(rest.substr(0, comma));
    const bool isSpeed =
        comma == std::string_view::npos && !rest.empty() && rest.front() >= '0' && rest.front() <= '9';
    const std::string_view speed = isSpeed                           ? rest
                                   : comma != std::string_view::npos ? rest.substr(comma + 1)
                                                                     : std::string_view();
    return {file.empty() || isSpeed ? name : std::string(file), static_cast<float>(ReadReal(speed))};
}

// Nothing of a clip that is played as its file stands, when the game asks for it by the name of the file.
std::string DefinitionOf(std::string_view key, const std::string& name, const eFileAndSpeed& played) {
    constexpr float kPerCent = 100;
    std::string text = played.file != name ? " name " + name : "";
    text += played.speed > 0 ? " speed " + RealText(double{played.speed / kPerCent}) : "";
    text += EqualNoAsciiCase(key, "animationresume") ? " resume" : "";
    text += EqualNoAsciiCase(key, "animationauto") ? " autostart" : "";
    return text.empty() ? text : "binary " + played.file + text;
}

void ReadSet(host::Interface& host, const std::string& name, eSceneClip& clip) {
    for (int set = 0; set < host.GetNumNamedSelSets(); ++set) {
        if (EqualNoCase(host.GetNamedSelSetName(set), name)) {
            for (int item = 0; item < host.GetNamedSelSetItemCount(set); ++item) {
                clip.covered.insert(host.GetNamedSelSetItem(set, item));
            }
            return;
        }
    }
    clip.coversAll = true;
}

bool IsWritten(const eVerifiedScene& scene, const eSceneClip& clip, int rangeFirst, int rangeLast) {
    const bool isSound =
        clip.firstFrame <= clip.lastFrame && std::int64_t{clip.lastFrame} - clip.firstFrame < kMostFrames &&
        host::IsOnTimeline(scene.host, clip.firstFrame) && host::IsOnTimeline(scene.host, clip.lastFrame);
    const bool isInRange = clip.firstFrame >= rangeFirst && clip.lastFrame <= rangeLast;
    return isSound && (!scene.options.currentRangeOnly || isInRange);
}

bool ShareKeys(const eSceneClip& a, const eSceneClip& b) {
    const bool shareFrames = a.firstFrame <= b.lastFrame && b.firstFrame <= a.lastFrame;
    const auto isCovered = [&](const host::INode* node) { return b.covered.contains(node); };
    return shareFrames && (a.coversAll || b.coversAll || std::ranges::any_of(a.covered, isCovered));
}

void FindOverwritten(std::vector<eSceneClip>& clips) {
    for (std::size_t i = 0; i < clips.size(); ++i) {
        for (std::size_t later = i + 1; later < clips.size(); ++later) {
            if (ShareKeys(clips[i], clips[later])) {
                clips[i].overwrittenBy.push_back(clips[later].name);
            }
        }
    }
}

}  // namespace

host::TimeValue eSceneClip::TimeOf(const eVerifiedScene& scene, int frame) const {
    return host::TimeOfFrame(scene.host,
                             scene.options.reverseAnimation ? lastFrame - frame : firstFrame + frame);
}

bool eSceneClip::Covers(const eVerifiedScene& scene, const host::INode& node) const {
    const host::INode& whole = node.IsGroupMember() ? *BoneAbove(node) : node;
    return coversAll ? !scene.options.selectedOnly || whole.Selected() : covered.contains(&whole);
}

std::vector<eSceneClip> FindClips(const eVerifiedScene& scene, const eSceneModel& model) {
    std::vector<eSceneClip> clips;
    const host::Interval range = scene.host.GetAnimRange();
    const int first = range.start / scene.host.GetTicksPerFrame();
    const int last = range.end / scene.host.GetTicksPerFrame();
    const std::string properties = NormalizeUserProps(*model.root, false);
    ePropText pair(properties);
    for (bool more = !properties.empty(); more; more = pair.Next()) {
        if (!IsDeclaration(TrimBlanks(pair.Key()))) {
            continue;
        }
        eSceneClip clip;
        std::string_view rest = pair.Value();
        clip.name = TrimBlanks(CutToken(rest, ","));
        ReadSet(scene.host, std::string(TrimBlanks(CutToken(rest, ","))), clip);
        const std::string_view start = CutToken(rest, " -");
        const std::string_view end = CutToken(rest, " ,-");
        clip.firstFrame = start.empty() ? first : ReadInteger(start);
        clip.lastFrame = end.empty() ? last : ReadInteger(end);
        const eFileAndSpeed played = ReadFileAndSpeed(CutToken(rest, ";"), clip.name);
        clip.file = model.folder / eName(played.file);
        clip.file.Append(".anm");
        clip.inDefinition = DefinitionOf(TrimBlanks(pair.Key()), clip.name, played);
        if (IsWritten(scene, clip, first, last)) {
            std::erase_if(clips, [&](const eSceneClip& earlier) { return earlier.file == clip.file; });
            clips.push_back(std::move(clip));
        }
    }
    FindOverwritten(clips);
    return clips;
}

bool MayMove(const eVerifiedScene& scene, const eSceneBone& bone) {
    const host::Object* object = bone.node->EvalWorldState(0).obj;
    return bone.level == 0 && !bone.node->IsGroupMember() && object != nullptr &&
           scene.options.exportGeometry != 0 && (!scene.selectedOnly || bone.node->Selected()) &&
           object->ClassID() != host::kTargetClass &&
           (object->SuperClassID() == host::kGeometrySuperClass ||
            object->SuperClassID() == host::kHelperSuperClass);
}

}  // namespace verify

#include "animation/animation_table.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "animation/animation_format.h"
#include "animation/model_motion.h"
#include "base/ansi.h"
#include "base/number_text.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/bones/bone_tree.h"
#include "scene/current_model.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/text_words.h"
#include "scene/properties/told_values.h"

namespace {

// False if the key declares no animation.
bool ReadKey(std::string_view key, eExportAnimation& animation) {
    animation.resume = EqualNoAsciiCase(key, "animationresume");
    animation.autostart = EqualNoAsciiCase(key, "animationauto");
    return animation.resume || animation.autostart || EqualNoAsciiCase(key, "animation");
}

int FrameOr(std::string_view text, int byDefault) {
    return text.empty() ? byDefault : ReadInteger(text);
}

// A frame or a speed that says something else than the number that it was read as.
void CheckNumber(Export& run, const eExportAnimation& animation, std::string_view text, float readAs) {
    if (!text.empty() && !SaysNumber(std::string(text), readAs)) {
        Tell(run, eMessageId::AnimationsReadAsNumber, PlaceOf(run, animation), animation.name, text,
             RealText(readAs));
    }
}

// What the speed was read from; empty without one. A lone number behind the range is a speed, anything else a
// file; with a comma it is both.
std::string_view ReadFileAndSpeed(std::string_view rest, eExportAnimation& animation) {
    constexpr std::string_view kDigits = "0123456789";
    std::string_view binary = rest;
    std::string_view speed;
    if (const std::size_t comma = rest.find(','); comma != std::string_view::npos) {
        speed = rest.substr(comma + 1);
        binary = rest.substr(0, comma);
    } else if (!rest.empty() && kDigits.find(rest.front()) != std::string_view::npos) {
        speed = rest;
        binary = {};
    }
    animation.speed = static_cast<float>(ReadReal(speed));
    binary = TrimBlanks(binary);
    animation.binary = binary.empty() ? animation.name : std::string(binary);
    return speed;
}

int FindSelectionSet(Export& run, const eExportAnimation& animation, const std::string& name) {
    for (int set = 0; set < run.host->GetNumNamedSelSets(); ++set) {
        if (EqualNoCase(run.host->GetNamedSelSetName(set), name)) {
            return set;
        }
    }
    Tell(run, eMessageId::AnimationsNoSelectionSet, PlaceOf(run, animation), name);
    return -1;
}

// False, with a message, for a range that can't be exported.
bool CheckRange(Export& run, const eExportAnimation& animation) {
    eMessageId fault{};
    if (animation.firstFrame > animation.lastFrame) {
        fault = eMessageId::AnimationsReversedRange;
    } else if (std::int64_t{animation.lastFrame} - animation.firstFrame >= kMaxAnimationFrames) {
        fault = eMessageId::AnimationsTooManyFrames;
    } else if (!host::IsOnTimeline(*run.host, animation.firstFrame) ||
               !host::IsOnTimeline(*run.host, animation.lastFrame)) {
        fault = eMessageId::AnimationsBeyondTime;
    } else {
        return true;
    }
    Tell(run, fault, PlaceOf(run, animation), animation.name);
    return false;
}

bool IsInRange(const Export& run, const eExportAnimation& animation) {
    return animation.firstFrame >= run.frameStart && animation.lastFrame <= run.frameEnd;
}

// Beyond the timeline nothing moves as a rule: a slip of the pen, unless the range was narrowed to work on a
// part of it.
void TellFramesBeyondTimeline(Export& run, const eExportAnimation& animation) {
    Tell(run, eMessageId::AnimationsBeyondRange, PlaceOf(run, animation), animation.name,
         animation.firstFrame, animation.lastFrame, run.frameStart, run.frameEnd);
}

void AddAnimation(Export& run, eExportAnimation animation, std::string_view declaration) {
    animation.name = TrimBlanks(CutToken(declaration, ","));
    const std::string selectionName(TrimBlanks(CutToken(declaration, ",")));
    const std::string_view first = CutToken(declaration, " -");
    const std::string_view last = CutToken(declaration, " ,-");
    animation.firstFrame = FrameOr(first, run.frameStart);
    animation.lastFrame = FrameOr(last, run.frameEnd);
    CheckNumber(run, animation, first, static_cast<float>(animation.firstFrame));
    CheckNumber(run, animation, last, static_cast<float>(animation.lastFrame));
    animation.selection = FindSelectionSet(run, animation, selectionName);
    if (!CheckRange(run, animation)) {
        return;
    }
    const std::string_view speed = ReadFileAndSpeed(CutToken(declaration, ";"), animation);
    CheckNumber(run, animation, speed, animation.speed);
    animation.inRange = !run.options.currentRangeOnly || IsInRange(run, animation);
    if (!run.options.currentRangeOnly && !IsInRange(run, animation)) {
        TellFramesBeyondTimeline(run, animation);
    }
    run.motion->animations.push_back(std::move(animation));
}

std::unordered_set<const host::INode*> MembersOf(host::Interface& host, int set) {
    std::unordered_set<const host::INode*> members;
    for (int item = 0; item < host.GetNamedSelSetItemCount(set); ++item) {
        members.insert(host.GetNamedSelSetItem(set, item));
    }
    return members;
}

bool IsListed(const eExportAnimation& animation) {
    return animation.binary != animation.name || animation.speed > 0 || animation.resume ||
           animation.autostart;
}

void WriteAnimation(xIo::xSdl::eWriter& writer, const eExportAnimation& animation) {
    constexpr float kPerCent = 100;
    writer.BlockBegin().Word("binary").String(animation.binary);
    if (animation.binary != animation.name) {
        writer.BlockBegin().Word("name").String(animation.name).BlockEnd();
    }
    if (animation.speed > 0) {
        writer.BlockBegin().Word("speed").Real(animation.speed / kPerCent).BlockEnd();
    }
    if (animation.resume) {
        writer.BlockBegin().Word("resume").BlockEnd();
    }
    if (animation.autostart) {
        writer.BlockBegin().Word("autostart").BlockEnd();
    }
    writer.BlockEndLine();
}

}  // namespace

eMessagePlace PlaceOf(const Export& run, const eExportAnimation& animation) {
    return {.node = host::PathOf(*run.model->currentRoot), .animation = animation.name};
}

void ReadAnimations(Export& run) {
    run.motion->animations.clear();
    const std::string userProps = NormalizeUserProps(*run.model->currentRoot, false);
    ePropText pair(userProps);
    for (bool more = !userProps.empty(); more; more = pair.Next()) {
        eExportAnimation animation;
        if (ReadKey(TrimBlanks(pair.Key()), animation)) {
            AddAnimation(run, std::move(animation), pair.Value());
        }
    }
}

bool AnimationTouchesNode(Export& run, const host::INode& node, int selection) {
    const host::INode& covered = OutOfGroup(node);
    if (selection < 0) {
        return !run.options.selectedOnly || covered.Selected();
    }
    auto found = run.motion->selectionMembers.find(selection);
    if (found == run.motion->selectionMembers.end()) {
        found = run.motion->selectionMembers.emplace(selection, MembersOf(*run.host, selection)).first;
    }
    return found->second.contains(&covered);
}

void WriteAnimationBlock(Export& run) {
    if (std::ranges::none_of(run.motion->animations, IsListed)) {
        return;
    }
    xIo::xSdl::eWriter& writer = *run.texts->defWriter;
    writer.BlockBegin().Word("skeleton").EndLine();
    writer.BlockBegin().Word("animation").EndLine();
    for (const eExportAnimation& animation : run.motion->animations) {
        if (IsListed(animation)) {
            WriteAnimation(writer, animation);
        }
    }
    writer.BlockEndLine().BlockEndLine();
}

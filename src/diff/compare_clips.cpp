#include "diff/compare_clips.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "base/ansi.h"
#include "written/exact_space.h"
#include "written/played_clip.h"

namespace diff {

namespace {

using written::operator-;  // of std::array, which no argument leads to
using written::ePlayedClip;

// Between two rotations, in degrees; a rotation and its negative are one.
double AngleBetween(const host::Quat& a, const host::Quat& b) {
    double minus = 0;
    double plus = 0;
    for (const float host::Quat::*part : {&host::Quat::x, &host::Quat::y, &host::Quat::z, &host::Quat::w}) {
        const double first = a.*part;
        const double second = b.*part;
        minus += (first - second) * (first - second);
        plus += (first + second) * (first + second);
    }
    const double halfChord = std::sqrt(std::min(minus, plus)) / 2;
    return 4 * std::asin(std::min(halfChord, 1.0)) * 180 / std::numbers::pi;
}

// The records of vertices that a bone has, by frame.
std::map<int, std::vector<std::uint8_t>> VertexSections(const eAnimation& clip, int bone) {
    std::map<int, std::vector<std::uint8_t>> sections;
    for (const eAnimationFrame& frame : clip.frames) {
        for (const eAnimationKey& key : frame.keys) {
            if (key.bone == bone && !key.vertexSection.empty()) {
                sections[frame.frame].assign(key.vertexSection.begin(), key.vertexSection.end());
            }
        }
    }
    return sections;
}

struct eFarthest {
    double amount = 0;
    int frame = 0;
    int count = 0;

    void Meet(double other, double bound, int at) {
        count += other > bound ? 1 : 0;
        if (other > amount) {
            amount = other;
            frame = at;
        }
    }
};

class eClipComparison {
public:
    eClipComparison(const ePlayedClip& before, const ePlayedClip& after, const eTolerances& tolerances,
                    eChanges& changes)
        : before_(before), after_(after), bounds_(tolerances), changes_(changes) {}

    void Compare() {
        if (before_.file.frameCount != after_.file.frameCount) {
            changes_.push_back(eChange::Value({}, ePhrase::ChangeFrames,
                                              std::to_string(before_.file.frameCount),
                                              std::to_string(after_.file.frameCount)));
        }
        for (std::size_t bone = 0; bone < before_.file.bones.size(); ++bone) {
            const auto found = std::ranges::find(after_.file.bones, before_.file.bones[bone]);
            found == after_.file.bones.end()
                ? changes_.push_back(
                      eChange::Plain(TitleOf(before_.file.bones[bone]), ePhrase::ChangeRemoved))
                : CompareBone(bone, static_cast<std::size_t>(found - after_.file.bones.begin()));
        }
        for (const std::string& bone : after_.file.bones) {
            if (std::ranges::find(before_.file.bones, bone) == before_.file.bones.end()) {
                changes_.push_back(eChange::Plain(TitleOf(bone), ePhrase::ChangeAdded));
            }
        }
    }

private:
    static eBilingual TitleOf(const std::string& bone) { return Utf8Words(ePhrase::OfBone, ToUtf8(bone)); }

    void CompareBone(std::size_t old, std::size_t now) {
        eFarthest moved;
        eFarthest turned;
        eFarthest seen;
        eFarthest mirrored;
        for (int frame = 0; frame < std::min(before_.file.frameCount, after_.file.frameCount); ++frame) {
            const eBonePose& a = before_.At(frame)[old];
            const eBonePose& b = after_.At(frame)[now];
            moved.Meet(written::Length(written::Exact(a.position) - written::Exact(b.position)),
                       bounds_.metres, frame);
            turned.Meet(AngleBetween(a.rotation, b.rotation), bounds_.degrees, frame);
            seen.Meet(a.visible != b.visible ? 1 : 0, 0, frame);
            mirrored.Meet(a.mirrored != b.mirrored ? 1 : 0, 0, frame);
        }
        const eBilingual bone = TitleOf(before_.file.bones[old]);
        TellAmount(bone, ePhrase::ChangeMovedInFrame, "m", moved);
        TellAmount(bone, ePhrase::ChangeTurnedInFrame, "degrees", turned);
        TellFrames(bone, ePhrase::ChangeSeen, seen);
        TellFrames(bone, ePhrase::ChangeMirroredFrames, mirrored);
        if (VertexSections(before_.file, static_cast<int>(old)) !=
            VertexSections(after_.file, static_cast<int>(now))) {
            changes_.push_back(eChange::Plain(bone, ePhrase::ChangeVertexFrames));
        }
    }

    void TellAmount(const eBilingual& bone, ePhrase what, const char* unit, const eFarthest& farthest) {
        if (farthest.count > 0) {
            changes_.push_back(eChange::Amount(bone, Utf8Words(what, farthest.frame), farthest.amount, unit,
                                               farthest.count));
        }
    }
    void TellFrames(const eBilingual& bone, ePhrase what, const eFarthest& counted) {
        if (counted.count > 0) {
            changes_.push_back(eChange::Plain(bone, what, counted.count));
        }
    }

    const ePlayedClip& before_;
    const ePlayedClip& after_;
    eTolerances bounds_;
    eChanges& changes_;
};

}  // namespace

void CompareClips(std::span<const std::uint8_t> before, std::span<const std::uint8_t> after,
                  const eTolerances& tolerances, eChanges& changes, eBilingual& problem) {
    std::string broken;
    std::optional<eAnimation> old = ReadAnimation(before, broken);
    std::optional<eAnimation> now = old ? ReadAnimation(after, broken) : std::nullopt;
    problem = {broken, broken};
    if (now) {
        eClipComparison(ePlayedClip(std::move(*old)), ePlayedClip(std::move(*now)), tolerances, changes)
            .Compare();
    }
}

}  // namespace diff

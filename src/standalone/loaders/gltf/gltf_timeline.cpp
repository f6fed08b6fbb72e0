#include "standalone/loaders/gltf/gltf_timeline.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "standalone/loaders/gltf/file/gltf_place.h"

namespace standalone {
namespace {

using eTargets = std::set<std::pair<int, eGltfPath>>;

std::optional<eGltfPath> PathOf(std::string_view word) {
    constexpr std::array<std::string_view, 5> kWords = {"translation", "rotation", "scale", "weights",
                                                        "extensions/KHR_node_visibility/visible"};
    const auto found = std::ranges::find(kWords, word);
    return found == kWords.end() ? std::nullopt
                                 : std::optional(static_cast<eGltfPath>(found - kWords.begin()));
}

// What a channel moves: a node, and the part of it as a word of the format or the rest of a pointer.
struct eAim {
    int node = -1;
    std::string part;
};

eAim AimOf(const tinygltf::AnimationChannel& channel) {
    const auto extension = channel.target_extensions.find("KHR_animation_pointer");
    if (channel.target_path != "pointer" || extension == channel.target_extensions.end()) {
        return {channel.target_node, channel.target_path};
    }
    constexpr std::string_view kNodes = "/nodes/";
    const std::string& pointer = extension->second.Get("pointer").Get<std::string>();
    const std::size_t end =
        pointer.starts_with(kNodes) ? pointer.find('/', kNodes.size()) : std::string::npos;
    int node = -1;
    if (end == std::string::npos ||
        std::from_chars(pointer.data() + kNodes.size(), pointer.data() + end, node).ptr !=
            pointer.data() + end) {
        return {-1, pointer};
    }
    return {node, pointer.substr(end + 1)};
}

bool IsInScene(const eGltfImport& import, int node) {
    return node >= 0 && static_cast<std::size_t>(node) < import.nodes.size() &&
           import.nodes[static_cast<std::size_t>(node)].record >= 0;
}

std::vector<eGltfChannel> ChannelsOf(const eGltfImport& import, const tinygltf::Animation& animation) {
    std::vector<eGltfChannel> channels;
    for (const tinygltf::AnimationChannel& channel : animation.channels) {
        const eAim aim = AimOf(channel);
        const std::optional<eGltfPath> path = PathOf(aim.part);
        if (!path) {
            import.report.CannotShow(ePhrase::LostAnimation, aim.part);
        } else if (IsInScene(import, aim.node)) {
            channels.push_back({aim.node, *path, channel.sampler});
        }
    }
    return channels;
}

eTargets TargetsOf(const eGltfClip& clip, eImportReport& report) {
    eTargets targets;
    for (const eGltfChannel& channel : clip.channels) {
        if (!targets.emplace(channel.node, channel.path).second) {
            report.Problem(GltfPlace("animations", clip.animation), eMessageId::GltfTwoChannels,
                           channel.node);
        }
    }
    return targets;
}

// The first and last times of the clip's keys, in frames. Times that don't rise are told.
eGltfSpan SpanOf(const eGltfImport& import, const eGltfClip& clip, double framesPerSecond) {
    const std::string place = GltfPlace("animations", clip.animation);
    const tinygltf::Animation& animation = import.model.animations[static_cast<std::size_t>(clip.animation)];
    std::set<int> inputs;
    for (const eGltfChannel& channel : clip.channels) {
        inputs.insert(animation.samplers[static_cast<std::size_t>(channel.sampler)].input);
    }
    eGltfSpan span{std::numeric_limits<double>::max(), 0};
    for (const int input : inputs) {
        const std::vector<float> times = import.accessors.Floats(input, 1, place);
        const auto falls = [](float before, float after) { return !(before < after); };
        if (times.empty()) {
            continue;
        }
        if (std::ranges::adjacent_find(times, falls) != times.end() || times.front() < 0) {
            import.report.Problem(GltfPlace("accessors", input), eMessageId::GltfKeyTimes);
        }
        span.first = std::min(span.first, GltfFrame(times.front(), framesPerSecond));
        span.last = std::max(span.last, GltfFrame(times.back(), framesPerSecond));
    }
    return span;
}

// The host counts time in ticks of an int.
bool IsOnTimeline(double frame, int frameTicks) {
    return frame * frameTicks <= std::numeric_limits<int>::max();
}

void Place(eGltfClip& clip, const eGltfSpan& span, double shift) {
    clip.shift = shift;
    clip.firstFrame = static_cast<int>(std::floor(span.first) + shift);
    clip.lastFrame = static_cast<int>(std::ceil(span.last) + shift);
}

struct eCandidate {
    eGltfClip clip;
    eGltfSpan span;
    bool sharesTimeline = false;
};

std::vector<eCandidate> ReadCandidates(eGltfImport& import, double framesPerSecond) {
    std::vector<eCandidate> candidates;
    eTargets moved;
    for (std::size_t i = 0; i < import.model.animations.size(); ++i) {
        eCandidate candidate;
        candidate.clip.animation = static_cast<int>(i);
        candidate.clip.channels = ChannelsOf(import, import.model.animations[i]);
        if (candidate.clip.channels.empty()) {
            continue;
        }
        candidate.span = SpanOf(import, candidate.clip, framesPerSecond);
        const eTargets targets = TargetsOf(candidate.clip, import.report);
        candidate.sharesTimeline =
            std::ranges::none_of(targets, [&](const auto& target) { return moved.contains(target); });
        moved.insert(targets.begin(), targets.end());
        candidates.push_back(std::move(candidate));
    }
    return candidates;
}

}  // namespace

double GltfFrame(float seconds, double framesPerSecond) {
    constexpr double kWholeWithin = 1e-3;
    const double frame = seconds * framesPerSecond;
    const double whole = std::round(frame);
    return std::fabs(frame - whole) <= kWholeWithin ? whole : frame;
}

std::vector<eGltfClip> LayOutGltfClips(eGltfImport& import, double framesPerSecond) {
    std::vector<eCandidate> candidates = ReadCandidates(import, framesPerSecond);
    if (import.report.HasProblems()) {
        return {};
    }
    double end = 0;
    const auto place = [&](eCandidate& candidate, double shift) {
        const double last = std::ceil(candidate.span.last) + shift;
        if (!IsOnTimeline(last, import.scene.frameTicks)) {
            import.report.Problem(GltfPlace("animations", candidate.clip.animation),
                                  eMessageId::ImportFarKeys);
            return;
        }
        Place(candidate.clip, candidate.span, shift);
        end = std::max(end, last);
    };
    for (eCandidate& candidate : candidates) {
        if (candidate.sharesTimeline) {
            place(candidate, 0);
        }
    }
    std::vector<eGltfClip> clips;
    for (eCandidate& candidate : candidates) {
        if (!candidate.sharesTimeline) {
            place(candidate, end + 2 - std::floor(candidate.span.first));
        }
        clips.push_back(std::move(candidate.clip));
    }
    return clips;
}

}  // namespace standalone

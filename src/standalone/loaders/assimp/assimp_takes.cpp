#include "standalone/loaders/assimp/assimp_takes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <unordered_map>

namespace standalone {
namespace {

constexpr double kDefaultRate = 30;
constexpr double kDefaultTicks = 25;  // what the library means by a rate of 0
constexpr double kSlowestRate = 0.01, kFastestRate = 10000;

double TicksPerSecond(const aiAnimation& take) {
    return take.mTicksPerSecond > 0 ? take.mTicksPerSecond : kDefaultTicks;
}

struct eTicks {
    double first = std::numeric_limits<double>::max();
    double last = std::numeric_limits<double>::lowest();

    template <class Key>
    void Cover(const Key* keys, unsigned count) {
        for (unsigned key = 0; key < count; ++key) {
            if (std::isfinite(keys[key].mTime)) {
                first = std::min(first, keys[key].mTime);
                last = std::max(last, keys[key].mTime);
            }
        }
    }
};

// In the library's ticks. Of an FBX take the file itself says where it ends; the library adds keys of its own
// in front of it.
eTicks SpanOf(const aiAnimation& take, bool isFbx) {
    eTicks span;
    if (isFbx && std::isfinite(take.mDuration) && take.mDuration >= 0) {
        return {0, take.mDuration};
    }
    for (const aiNodeAnim* channel : std::span(take.mChannels, take.mNumChannels)) {
        span.Cover(channel->mPositionKeys, channel->mNumPositionKeys);
        span.Cover(channel->mRotationKeys, channel->mNumRotationKeys);
        span.Cover(channel->mScalingKeys, channel->mNumScalingKeys);
    }
    for (const aiMeshMorphAnim* channel : std::span(take.mMorphMeshChannels, take.mNumMorphMeshChannels)) {
        span.Cover(channel->mKeys, channel->mNumKeys);
    }
    return span;
}

// Where the take begins in the file; the library moves it to 0.
double StartSeconds(const eAssimpImport& import, const std::string& name) {
    if (import.fbx != nullptr) {
        const auto found = std::ranges::find(import.fbx->takes, name, &eFbxTake::name);
        return found == import.fbx->takes.end() ? 0 : found->startSeconds;
    }
    return 0;
}

// The nodes that the channels move, and by which of their steps. A name that several nodes have is the first
// one's.
void FindTargets(eAssimpImport& import, eAssimpTake& take) {
    std::unordered_map<std::string, const aiNodeAnim*> channels;
    for (const aiNodeAnim* channel : std::span(take.source->mChannels, take.source->mNumChannels)) {
        channels.try_emplace(channel->mNodeName.C_Str(), channel);
    }
    for (std::size_t node = 0; node < import.nodes.size(); ++node) {
        bool isMoved = false;
        for (const aiNode* step : import.nodes[node].chain) {
            const auto found = channels.find(step->mName.C_Str());
            if (found != channels.end()) {
                take.channels.emplace(step, found->second);
                channels.erase(found);
                isMoved = true;
            }
        }
        if (isMoved) {
            take.moved.push_back(static_cast<int>(node));
        }
    }
}

// False, with a problem, where the host's timeline, which counts ticks in an int, can't hold the take.
bool Place(eAssimpImport& import, eAssimpTake& take, const eTicks& span, double free) {
    const double start = StartSeconds(import, take.name) * import.framesPerSecond;
    take.rate = import.framesPerSecond / TicksPerSecond(*take.source);
    take.shift = WholeFrame(start);
    const double first = std::floor(WholeFrame(span.first * take.rate + take.shift));
    if (first < free) {
        take.shift += free - first;
    }
    const double last = std::ceil(WholeFrame(span.last * take.rate + take.shift));
    const double most = std::numeric_limits<int>::max() / import.scene.frameTicks;
    if (!(std::fabs(last) <= most && std::fabs(first) <= most)) {
        import.report.Problem(take.name, "the keys lie too far from the start for the host's timeline");
        return false;
    }
    take.firstFrame = static_cast<int>(std::max(first, free));
    take.lastFrame = static_cast<int>(last);
    return true;
}

}  // namespace

double WholeFrame(double frame) {
    constexpr double kWholeWithin = 1e-3;
    const double whole = std::round(frame);
    return std::fabs(frame - whole) <= kWholeWithin ? whole : frame;
}

double OwnFrameRate(const eAssimpImport& import) {
    if (import.fbx == nullptr || import.file.mNumAnimations == 0) {
        return kDefaultRate;
    }
    const double rate = import.file.mAnimations[0]->mTicksPerSecond;
    return rate >= kSlowestRate && rate <= kFastestRate ? rate : kDefaultRate;
}

void LayOutAssimpTakes(eAssimpImport& import) {
    double free = std::numeric_limits<double>::lowest();
    for (const aiAnimation* source : std::span(import.file.mAnimations, import.file.mNumAnimations)) {
        const eTicks span = SpanOf(*source, import.fbx != nullptr);
        if (span.first > span.last) {
            continue;
        }
        eAssimpTake take;
        take.source = source;
        take.name = source->mName.C_Str();
        if (!Place(import, take, span, free)) {
            return;
        }
        FindTargets(import, take);
        const bool isFirst = import.takes.empty();
        import.scene.firstFrame =
            isFirst ? take.firstFrame : std::min(import.scene.firstFrame, take.firstFrame);
        import.scene.lastFrame = isFirst ? take.lastFrame : std::max(import.scene.lastFrame, take.lastFrame);
        free = take.lastFrame + 2;
        import.takes.push_back(std::move(take));
    }
}

}  // namespace standalone

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

double TicksPerSecond(const eAssimpImport& import, const eAssimpTake& take) {
    if (take.source == nullptr) {
        return import.framesPerSecond;
    }
    return take.source->mTicksPerSecond > 0 ? take.source->mTicksPerSecond : kDefaultTicks;
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

// From 0 to the end of the take, or to the last change that it makes where it says no end.
eTicks SpanOfShowings(const eFbxTake& take, double ticksPerSecond) {
    double end = take.endSeconds;
    if (!(end > take.startSeconds)) {
        for (const auto& [model, showings] : take.showings) {
            end = std::max(end, showings.back().seconds);
        }
    }
    return {0, std::max(end - take.startSeconds, 0.0) * ticksPerSecond};
}

// In the library's ticks. Of an FBX take the file itself says where it ends; the library adds keys of its own
// in front of it.
eTicks SpanOf(const eAssimpImport& import, const eAssimpTake& take) {
    if (take.source == nullptr) {
        return SpanOfShowings(*take.facts, TicksPerSecond(import, take));
    }
    const aiAnimation& source = *take.source;
    if (import.fbx != nullptr && std::isfinite(source.mDuration) && source.mDuration >= 0) {
        return {0, source.mDuration};
    }
    eTicks span;
    for (const aiNodeAnim* channel : std::span(source.mChannels, source.mNumChannels)) {
        span.Cover(channel->mPositionKeys, channel->mNumPositionKeys);
        span.Cover(channel->mRotationKeys, channel->mNumRotationKeys);
        span.Cover(channel->mScalingKeys, channel->mNumScalingKeys);
    }
    for (const aiMeshMorphAnim* channel :
         std::span(source.mMorphMeshChannels, source.mNumMorphMeshChannels)) {
        span.Cover(channel->mKeys, channel->mNumKeys);
    }
    return span;
}

eAssimpTake TakeOf(const aiAnimation* source, const eFbxTake* facts) {
    eAssimpTake take;
    take.source = source;
    take.facts = facts;
    take.name = facts != nullptr ? facts->name : source->mName.C_Str();
    return take;
}

// The library's takes with what the file says of each, in the file's order. It names them as the file does,
// and leaves out those that move nothing.
std::vector<eAssimpTake> AllTakes(const eAssimpImport& import) {
    std::vector<const aiAnimation*> sources(import.file.mAnimations,
                                            import.file.mAnimations + import.file.mNumAnimations);
    std::vector<eAssimpTake> takes;
    for (const eFbxTake& facts : import.fbx == nullptr ? std::span<const eFbxTake>() : import.fbx->takes) {
        const auto isNamed = [&](const aiAnimation* source) {
            return facts.nameInFile == source->mName.C_Str();
        };
        const auto found = std::ranges::find_if(sources, isNamed);
        if (found != sources.end()) {
            takes.push_back(TakeOf(*found, &facts));
            sources.erase(found);
        } else if (!facts.showings.empty()) {
            takes.push_back(TakeOf(nullptr, &facts));
        }
    }
    for (const aiAnimation* source : sources) {
        takes.push_back(TakeOf(source, nullptr));
    }
    return takes;
}

// The nodes that the channels move, and by which of their steps. A name that several nodes have is the first
// one's.
void FindTargets(eAssimpImport& import, eAssimpTake& take) {
    if (take.source == nullptr) {
        return;
    }
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
    const double start = take.facts == nullptr ? 0 : take.facts->startSeconds * import.framesPerSecond;
    take.rate = import.framesPerSecond / TicksPerSecond(import, take);
    take.shift = WholeFrame(start);
    const double first = std::floor(WholeFrame(span.first * take.rate + take.shift));
    if (first < free) {
        take.shift += free - first;
    }
    const double last = std::ceil(WholeFrame(span.last * take.rate + take.shift));
    const double most = std::numeric_limits<int>::max() / import.scene.frameTicks;
    if (!(std::fabs(last) <= most && std::fabs(first) <= most)) {
        import.report.Problem(take.name, eMessageId::ImportFarKeys);
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
    if (import.fbx == nullptr) {
        return kDefaultRate;
    }
    const double rate = import.file.mNumAnimations == 0 ? import.fbx->framesPerSecond
                                                        : import.file.mAnimations[0]->mTicksPerSecond;
    return rate >= kSlowestRate && rate <= kFastestRate ? rate : kDefaultRate;
}

void LayOutAssimpTakes(eAssimpImport& import) {
    double free = std::numeric_limits<double>::lowest();
    for (eAssimpTake& take : AllTakes(import)) {
        const eTicks span = SpanOf(import, take);
        if (span.first > span.last) {
            continue;
        }
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

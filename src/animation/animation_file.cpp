#include "animation/animation_file.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <vector>

#include "animation/animation_format.h"
#include "animation/animation_note.h"
#include "animation/animation_table.h"
#include "animation/model_motion.h"
#include "animation/vertex_section.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "run/tell.h"
#include "scene/current_model.h"
#include "scene/run_journal.h"

namespace {

using host::Quat;

constexpr std::uint8_t kNoNumber = 0xFF;

// Whether the animation covers the node that last filled a bone's entries; from frame to frame it is the same
// node, so that the question is asked once.
struct eBoneCover {
    host::INode* node = nullptr;
    bool covered = false;
};

// The file that is being written.
struct eAnimationWriter {
    Export& run;
    const eExportAnimation& animation;
    xIo::eFileStream& stream;
    std::span<const eExportFrame> frames;    // of the animation
    std::vector<std::uint8_t> boneMap = {};  // bone number to number in BMAP
    std::vector<eBoneCover> covers = {};     // by bone number
    std::vector<std::size_t> counting = {};  // scratch: the bones of a frame

    const eExportFrameBone& Entry(int frame, std::size_t bone) const {
        return frames[static_cast<std::size_t>(std::int64_t{frame} - animation.firstFrame)].bones[bone];
    }
    // True if the bone has data of this animation in the frame.
    bool Counts(int frame, std::size_t bone) {
        const eExportFrameBone& entry = Entry(frame, bone);
        if (entry.flags == 0) {
            return false;
        }
        eBoneCover& cover = covers[bone];
        if (cover.node != entry.node) {
            cover = {entry.node, AnimationTouchesNode(run, *entry.node, animation.selection)};
        }
        return cover.covered;
    }
};

// Numbers the bones that have data in the animation. At most 255 can be told apart; a frame that needs
// another ends the file.
int NumberBones(eAnimationWriter& writer) {
    const eExportAnimation& animation = writer.animation;
    int count = 0;
    writer.boneMap.assign(writer.run.model->boneNames.size(), kNoNumber);
    writer.covers.assign(writer.run.model->boneNames.size(), {});
    for (std::size_t bone = 0; bone < writer.boneMap.size() && count < kMaxAnimatedBones; ++bone) {
        for (int frame = animation.firstFrame; frame <= animation.lastFrame; ++frame) {
            if (writer.Counts(frame, bone)) {
                writer.boneMap[bone] = static_cast<std::uint8_t>(count++);
                break;
            }
        }
    }
    return count;
}

void WriteHead(eAnimationWriter& writer) {
    xIo::eFileStream& stream = writer.stream;
    stream.Write("EANM", 4);
    stream.WriteValue(kAnimationVersion);
    stream.Write("FRMS", 4);
    stream.WriteValue(
        static_cast<std::uint32_t>(writer.animation.lastFrame - writer.animation.firstFrame + 1));
    stream.Write("BMAP", 4);
    stream.WriteValue(static_cast<std::uint32_t>(NumberBones(writer)));
    for (std::size_t bone = 0; bone < writer.boneMap.size(); ++bone) {
        if (writer.boneMap[bone] != kNoNumber) {
            stream.WriteString(writer.run.model->boneNames[bone].c_str());
        }
    }
}

// Three floats: a reader takes w as the negative root of what is left of the unit length.
void WriteRotation(xIo::eFileStream& stream, const Quat& rotation) {
    const float length = std::sqrt(rotation.x * rotation.x + rotation.y * rotation.y +
                                   rotation.z * rotation.z + rotation.w * rotation.w);
    const float factor = (rotation.w > 0 ? -1.0F : 1.0F) / (length > 0 ? length : 1.0F);
    stream.WriteValue(rotation.x * factor);
    stream.WriteValue(rotation.y * factor);
    stream.WriteValue(rotation.z * factor);
}

void WriteBoneRecord(eAnimationWriter& writer, int frame, std::size_t bone) {
    const eExportFrameBone& entry = writer.Entry(frame, bone);
    xIo::eFileStream& stream = writer.stream;
    stream.WriteByte(writer.boneMap[bone]);
    const int flagsPosition = stream.Position();
    stream.WriteValue(entry.flags);
    if ((entry.flags & kFramePosition) != 0) {
        stream.WriteValue(entry.position);
    }
    if ((entry.flags & kFrameRotation) != 0) {
        WriteRotation(stream, entry.rotation);
    }
    if ((entry.flags & kFrameVertices) != 0 &&
        !WriteVertexSection(writer.run, writer.animation, frame, bone, stream)) {
        stream.Seek(flagsPosition, xIo::fromStart);
        stream.WriteValue(static_cast<std::uint16_t>(entry.flags & ~kFrameVertices));
        stream.Seek(0, xIo::fromEnd);
    }
}

// False if the frame has a bone beyond those that can be told apart.
bool WriteFrame(eAnimationWriter& writer, int frame) {
    std::vector<std::size_t>& counting = writer.counting;
    counting.clear();
    for (std::size_t bone = 0; bone < writer.boneMap.size(); ++bone) {
        if (writer.Counts(frame, bone)) {
            if (writer.boneMap[bone] == kNoNumber) {
                return false;
            }
            counting.push_back(bone);
        }
    }
    if (counting.empty()) {
        return true;
    }
    xIo::eFileStream& stream = writer.stream;
    stream.Write("FRM2", 4);
    stream.WriteValue(static_cast<std::uint16_t>(frame - writer.animation.firstFrame));
    stream.WriteByte(static_cast<std::uint8_t>(counting.size()));
    for (const std::size_t bone : counting) {
        WriteBoneRecord(writer, frame, bone);
    }
    return true;
}

void WriteFrames(eAnimationWriter& writer) {
    for (int frame = writer.animation.firstFrame; frame <= writer.animation.lastFrame; ++frame) {
        if (!WriteFrame(writer, frame)) {
            Tell(writer.run, eMessageId::AnimationsTooManyBones, PlaceOf(writer.run, writer.animation),
                 writer.animation.name);
            return;
        }
    }
}

bool IsFullPose(std::uint16_t flags) {
    return (flags & kFramePosition) != 0 && (flags & kFrameRotation) != 0 &&
           (flags & (kFrameVisible | kFrameHidden)) != 0;
}

// Looks at what an animation has lost to the later ones over the same frames, whose entries replaced its own.
struct eOverlapCheck {
    eAnimationWriter& writer;
    std::span<const eExportAnimation> later;

    bool Covers(const eExportAnimation& animation, int frame, std::size_t bone) const {
        const host::INode* node = writer.Entry(frame, bone).node;
        return node != nullptr && animation.inRange && animation.firstFrame <= frame &&
               frame <= animation.lastFrame && AnimationTouchesNode(writer.run, *node, animation.selection);
    }
    // The animation that has put something else into an entry, if any.
    template <class IsLost>
    const eExportAnimation* Taker(int frame, IsLost isLost) const {
        for (std::size_t bone = 0; bone < writer.boneMap.size(); ++bone) {
            const auto takes = [&](const eExportAnimation& other) {
                return Covers(other, frame, bone) && isLost(other, writer.Entry(frame, bone));
            };
            const auto found = std::ranges::find_if(later, takes);
            if (found != later.end() && Covers(writer.animation, frame, bone)) {
                return &*found;
            }
        }
        return nullptr;
    }
    // The engine starts or ends without a full pose.
    const eExportAnimation* TakerOfAnEnd() const {
        const auto isLost = [](const eExportAnimation&, const eExportFrameBone& entry) {
            return !IsFullPose(entry.flags);
        };
        const eExportAnimation* taker = Taker(writer.animation.firstFrame, isLost);
        return taker != nullptr ? taker : Taker(writer.animation.lastFrame, isLost);
    }
    // Forward, a frame has one pose for all of its animations; backward, it has that of the mirrored frame.
    const eExportAnimation* TakerOfPoses() const {
        const eExportAnimation& own = writer.animation;
        const auto isLost = [&](const eExportAnimation& other, const eExportFrameBone&) {
            return std::int64_t{own.firstFrame} + own.lastFrame !=
                   std::int64_t{other.firstFrame} + other.lastFrame;
        };
        const eExportAnimation* taker = nullptr;
        for (int frame = own.firstFrame;
             writer.run.options.reverseAnimation && taker == nullptr && frame <= own.lastFrame; ++frame) {
            taker = Taker(frame, isLost);
        }
        return taker;
    }
};

void AdviseOnOverlaps(eAnimationWriter& writer, std::size_t index) {
    const eOverlapCheck check{writer, std::span(writer.run.motion->animations).subspan(index + 1)};
    eMessageId id = eMessageId::AnimationsForeignPoses;
    const eExportAnimation* taker = check.TakerOfPoses();
    if (taker == nullptr) {
        id = eMessageId::AnimationsOverlap;
        taker = check.TakerOfAnEnd();
    }
    if (taker != nullptr) {
        const std::string& name = writer.animation.name;
        Tell(writer.run, id, PlaceOf(writer.run, writer.animation), name, taker->name, name);
    }
}

// The name of an animation's file is one word of a path; anything else would leave the model's folder.
bool IsFileName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." && name.find_first_of("/\\:") == std::string::npos;
}

// The path of the file; empty if none was written.
eName WriteAnimationFile(Export& run, std::size_t index) {
    const eExportAnimation& animation = run.motion->animations[index];
    if (!IsFileName(animation.binary)) {
        Tell(run, eMessageId::AnimationsFileName, PlaceOf(run, animation), animation.binary, animation.name,
             run.model->currentRoot->GetName());
        return {};
    }
    const eName path = (run.model->modelFolder / eName(animation.binary)).Append(".anm");
    run.texts->anmStream = std::make_unique<xIo::eFileStream>();
    if (!run.texts->anmStream->Open(
            path, xIo::streamRead | xIo::streamWrite | xIo::streamTruncate | xIo::streamPrompt)) {
        run.texts->anmStream.reset();
        return {};
    }
    if (eFileNote* const note = NoteFile(run, path, eFileRule::EveryRun)) {
        note->animation = animation.name;
    }
    eAnimationWriter writer{.run = run,
                            .animation = animation,
                            .stream = *run.texts->anmStream,
                            .frames = run.motion->frames.Of(animation)};
    WriteHead(writer);
    WriteFrames(writer);
    run.texts->anmStream->Close();
    run.texts->anmStream.reset();
    AdviseOnOverlaps(writer, index);
    return path;
}

// Of two animations with one file the later one stands.
void WarnAboutSharedFiles(Export& run) {
    for (std::size_t later = 0; later < run.motion->animations.size(); ++later) {
        const eExportAnimation& second = run.motion->animations[later];
        for (std::size_t earlier = 0; earlier < later; ++earlier) {
            const eExportAnimation& first = run.motion->animations[earlier];
            if (first.inRange && second.inRange && eName(first.binary) == eName(second.binary)) {
                Tell(run, eMessageId::AnimationsSharedFile, PlaceOf(run, second), first.name, second.name,
                     second.binary);
                break;
            }
        }
    }
}

}  // namespace

void WriteAnimationFiles(Export& run) {
    WarnAboutSharedFiles(run);
    for (std::size_t index = 0; index < run.motion->animations.size(); ++index) {
        const eExportAnimation& animation = run.motion->animations[index];
        NoteAnimation(run, animation, animation.inRange ? WriteAnimationFile(run, index) : eName());
    }
}

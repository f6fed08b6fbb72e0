#include "animation/vertex_section.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "animation/model_motion.h"
#include "run/export.h"
#include "scene/current_model.h"

namespace {

constexpr float kTolerance = 0.001F;

bool IsNear(float a, float b) {
    return std::fabs(a - b) <= kTolerance;
}
bool IsNear(const host::Point2& a, const host::Point2& b) {
    return IsNear(a.x, b.x) && IsNear(a.y, b.y);
}

// The mesh of one bone in one frame, read in the order of the mesh file.
struct eFrameVertices {
    const eExportFrameMesh& frameMesh;
    const std::vector<std::uint16_t>& vertexRemap;

    const eExportVertex& operator[](int fileIndex) const {
        return frameMesh.vertices[vertexRemap[static_cast<std::size_t>(fileIndex)]];
    }
};

// Writes the blocks of one section.
class eSectionWriter {
public:
    eSectionWriter(const eExportBone& exportBone, const eFrameVertices& frameVertices,
                   xIo::eFileStream& target)
        : bone(exportBone), vertices(frameVertices), stream(target) {}

    bool HasBlocks() const { return sectionStart >= 0; }

    void WriteBlock(int first, int count, const host::Box3* box) {
        if (!HasBlocks()) {
            stream.WriteValue(std::uint32_t{0});
            sectionStart = stream.Position();
        }
        stream.WriteValue(static_cast<std::uint32_t>(first));
        stream.WriteValue(static_cast<std::uint16_t>(count));
        stream.WriteValue(static_cast<std::uint16_t>(box != nullptr ? 1 : 0));
        for (int i = first; i < first + count; ++i) {
            WriteVertex(vertices[i]);
        }
        if (box != nullptr) {
            stream.WriteValue(box->pmin);
            stream.WriteValue(box->pmax);
        }
    }

    // The terminator, and the size in front of the blocks.
    void Finish() {
        stream.WriteValue(std::uint64_t{0});
        const int sectionSize = stream.Position() - sectionStart;
        stream.Seek(sectionStart - static_cast<int>(sizeof(std::uint32_t)), xIo::fromStart);
        stream.WriteValue(static_cast<std::uint32_t>(sectionSize));
        stream.Seek(0, xIo::fromEnd);
    }

private:
    // The colour of an all-white mesh is left out here, not in the stored vertex: another animation may need
    // the same frame again.
    void WriteVertex(const eExportVertex& vertex) {
        const VertexFormat format = bone.colorsAllWhite ? vertex.format & ~VF_COLOR : vertex.format;
        const int size = vertices.frameMesh.vertexSize - (bone.colorsAllWhite ? 4 : 0);
        packed.assign(static_cast<std::size_t>(std::max(size, VertexFormatSize(format))), 0);
        PackVertex(vertex, format, packed.data());
        stream.Write(packed.data(), size);
    }

    const eExportBone& bone;
    const eFrameVertices& vertices;
    xIo::eFileStream& stream;
    int sectionStart = -1;  // position behind the size field
    std::vector<std::uint8_t> packed;
};

host::Box3 BoundsOfFrames(const Export& run, int first, int last, std::size_t bone) {
    host::Box3 box;
    for (int frame = first; frame <= last; ++frame) {
        const auto& mesh = run.motion->frames.At(frame).bones[bone].mesh;
        if (mesh != nullptr) {
            for (const eExportVertex& vertex : mesh->vertices) {
                box += vertex.position;
            }
        }
    }
    return box;
}

void WriteChangedRuns(eSectionWriter& writer, const eFrameVertices& now, const eFrameVertices& before,
                      int count, const host::Box3* box) {
    for (int v = 0; v < count;) {
        if (IsSameVertex(now[v], before[v])) {
            ++v;
            continue;
        }
        const int first = v;
        while (v < count && !IsSameVertex(now[v], before[v])) {
            ++v;
        }
        writer.WriteBlock(first, v - first, box);
    }
}

}  // namespace

bool IsSameVertex(const eExportVertex& a, const eExportVertex& b) {
    return IsNear(a.weights[0], b.weights[0]) && IsNear(a.weights[1], b.weights[1]) &&
           a.position.Equals(b.position, kTolerance) && a.normal.Equals(b.normal, kTolerance) &&
           a.color == b.color && IsNear(a.uv0, b.uv0) && IsNear(a.uv1, b.uv1) &&
           a.tangent.Equals(b.tangent, kTolerance) && a.subset == b.subset &&
           std::memcmp(a.boneIndices, b.boneIndices, sizeof a.boneIndices) == 0 && a.smoothingGroup != 0 &&
           a.smoothingGroup == b.smoothingGroup && a.format == b.format;
}

bool WriteVertexSection(Export& run, const eExportAnimation& animation, int frame, std::size_t bone,
                        xIo::eFileStream& stream) {
    const eExportBone& exportBone = run.model->bones[bone];
    const auto at = [&](int frameNumber) -> const std::unique_ptr<eExportFrameMesh>& {
        return run.motion->frames.At(frameNumber).bones[bone].mesh;
    };
    const eFrameVertices now{*at(frame), exportBone.mesh.vertexRemap};
    const int count = exportBone.vertexCount;
    eSectionWriter writer(exportBone, now, stream);
    if (frame == animation.firstFrame || at(frame - 1) == nullptr) {
        const host::Box3 box = BoundsOfFrames(run, animation.firstFrame, animation.lastFrame, bone);
        writer.WriteBlock(0, count, &box);
    } else {
        const eFrameVertices before{*at(frame - 1), exportBone.mesh.vertexRemap};
        const host::Box3 box = BoundsOfFrames(run, frame, frame, bone);
        WriteChangedRuns(writer, now, before, count, frame == animation.lastFrame ? &box : nullptr);
    }
    if (writer.HasBlocks()) {
        writer.Finish();
    }
    return writer.HasBlocks();
}

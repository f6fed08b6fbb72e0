#include "standalone/loaders/gltf/gltf_animation.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/gltf_axes.h"

namespace standalone {
namespace {

// Splines unfold to a key per frame; beyond this a file asks for more memory than any scene is worth.
constexpr std::size_t kMostUnfolded = std::size_t{1} << 24;

// The motion of one target in one clip.
struct ePiece {
    int node = 0;
    eGltfPath path = eGltfPath::Position;
    eGltfSpan clip;
    eGltfCurve curve;
};

std::size_t TargetCount(const tinygltf::Model& model, int node) {
    const int mesh = model.nodes[static_cast<std::size_t>(node)].mesh;
    return mesh < 0 ? 0 : model.meshes[static_cast<std::size_t>(mesh)].primitives.front().targets.size();
}

std::size_t WidthOf(const tinygltf::Model& model, const eGltfChannel& channel) {
    switch (channel.path) {
        case eGltfPath::Position:
        case eGltfPath::Scale:
            return 3;
        case eGltfPath::Rotation:
            return 4;
        case eGltfPath::Weights:
            return TargetCount(model, channel.node);
        case eGltfPath::Visibility:
            return 1;
    }
    return 0;
}

eGltfMotion MotionOf(const std::string& interpolation) {
    return interpolation == "STEP"          ? eGltfMotion::Step
           : interpolation == "CUBICSPLINE" ? eGltfMotion::Cubic
                                            : eGltfMotion::Linear;
}

class eCurveReader {
public:
    eCurveReader(const eGltfImport& ownImport, double ownFramesPerSecond)
        : import(ownImport), framesPerSecond(ownFramesPerSecond) {}

    void Read(const eGltfClip& clip) {
        const tinygltf::Animation& animation =
            import.model.animations[static_cast<std::size_t>(clip.animation)];
        for (const eGltfChannel& channel : clip.channels) {
            const std::string place =
                GltfPlace("animations", clip.animation) + "/samplers/" + std::to_string(channel.sampler);
            const tinygltf::AnimationSampler& sampler =
                animation.samplers[static_cast<std::size_t>(channel.sampler)];
            std::optional<eGltfKeys> keys = ReadKeys(sampler, channel, clip.shift, place);
            if (keys && Affords(*keys, place)) {
                pieces.push_back({channel.node,
                                  channel.path,
                                  {static_cast<double>(clip.firstFrame), static_cast<double>(clip.lastFrame)},
                                  CurveOf(std::move(*keys))});
            }
        }
    }

    std::vector<ePiece> pieces;

private:
    std::optional<eGltfKeys> ReadKeys(const tinygltf::AnimationSampler& sampler, const eGltfChannel& channel,
                                      double shift, const std::string& place) const {
        eGltfKeys keys{
            MotionOf(sampler.interpolation), WidthOf(import.model, channel), framesPerSecond, {}, {}};
        if (keys.width == 0) {
            import.report.Problem(place, eMessageId::GltfWeightTarget, channel.node);
            return std::nullopt;
        }
        const eGltfNumbers times = import.accessors.Numbers(sampler.input, 1, place);
        keys.frames.reserve(times.Count());
        for (std::size_t key = 0; key < times.Count(); ++key) {
            keys.frames.push_back(GltfFrame(times.At<1>(key)[0], framesPerSecond) + shift);
        }
        const bool areWeights = channel.path == eGltfPath::Weights;
        keys.values = import.accessors.Floats(sampler.output, areWeights ? 1 : keys.width, place);
        const std::size_t partCount = keys.motion == eGltfMotion::Cubic ? 3 : 1;
        if (keys.values.empty() || keys.values.size() != keys.frames.size() * partCount * keys.width) {
            import.report.Problem(place, eMessageId::GltfKeyValues, keys.frames.size(), keys.values.size());
            return std::nullopt;
        }
        return keys;
    }

    bool Affords(const eGltfKeys& keys, const std::string& place) {
        unfolded += keys.motion == eGltfMotion::Cubic ? SplineSize(keys) * keys.width : 0;
        if (unfolded <= kMostUnfolded) {
            return true;
        }
        import.report.Problem(place, eMessageId::ImportAnimationKeys);
        return false;
    }

    const eGltfImport& import;
    double framesPerSecond;
    std::size_t unfolded = 0;  // numbers in splines, so far
};

eGltfCurve& CurveOfPath(eGltfNodeCurves& curves, eGltfPath path) {
    switch (path) {
        case eGltfPath::Position:
            return curves.position;
        case eGltfPath::Rotation:
            return curves.rotation;
        case eGltfPath::Scale:
            return curves.scale;
        case eGltfPath::Weights:
            return curves.weights;
        case eGltfPath::Visibility:
            break;
    }
    return curves.visibility;
}

// Pieces of one target follow one another on the timeline, because a clip that moves it again lies behind.
void JoinPieces(std::vector<ePiece>& pieces, std::vector<eGltfNodeCurves>& curves) {
    const auto isOfOneTarget = [](const ePiece& a, const ePiece& b) {
        return a.node == b.node && a.path == b.path;
    };
    std::ranges::stable_sort(
        pieces, {}, [](const ePiece& piece) { return std::tuple(piece.node, piece.path, piece.clip.first); });
    for (auto piece = pieces.begin(); piece != pieces.end();) {
        const auto end = std::find_if_not(piece, pieces.end(),
                                          [&](const ePiece& other) { return isOfOneTarget(*piece, other); });
        const bool isAlone = end - piece == 1;
        eGltfCurve& curve = CurveOfPath(curves[static_cast<std::size_t>(piece->node)], piece->path);
        for (; piece != end; ++piece) {
            if (!isAlone) {
                HoldWithin(piece->curve, piece->clip);
            }
            AppendCurve(curve, std::move(piece->curve));
        }
    }
}

host::Point3 PointOf(std::span<const float> value) {
    return {value[0], value[1], value[2]};
}

std::vector<eTransformKey> KeysOf(const eGltfNodeCurves& curves, const eAxes& axes) {
    std::vector<eTransformKey> keys;
    keys.reserve(std::max({curves.position.Count(), curves.rotation.Count(), curves.scale.Count()}));
    std::size_t position = 0, rotation = 0, scale = 0;
    const auto frameOf = [](const eGltfCurve& curve, std::size_t key) {
        return key < curve.Count() ? curve.frames[key] : std::numeric_limits<double>::infinity();
    };
    for (;;) {
        const double frame = std::min({frameOf(curves.position, position), frameOf(curves.rotation, rotation),
                                       frameOf(curves.scale, scale)});
        if (frame == std::numeric_limits<double>::infinity()) {
            return keys;
        }
        eTransformKey& key = keys.emplace_back();
        key.frame = frame;
        if (frameOf(curves.position, position) == frame) {
            key.position = ToHostPosition(PointOf(curves.position.Value(position++)), axes);
        }
        if (frameOf(curves.rotation, rotation) == frame) {
            key.rotation = ToHostRotation(curves.rotation.Value(rotation++).first<4>(), axes);
        }
        if (frameOf(curves.scale, scale) == frame) {
            key.scale = ToHostScale(PointOf(curves.scale.Value(scale++)), axes);
        }
    }
}

bool HasRotationOfNoLength(const eGltfCurve& rotation) {
    for (std::size_t key = 0; key < rotation.Count(); ++key) {
        const std::span<const float> q = rotation.Value(key);
        if (!(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3] > 1e-12F)) {
            return true;
        }
    }
    return false;
}

}  // namespace

void ReadGltfCurves(eGltfImport& import, const std::vector<eGltfClip>& clips, double framesPerSecond) {
    import.curves.resize(import.model.nodes.size());
    eCurveReader reader(import, framesPerSecond);
    for (const eGltfClip& clip : clips) {
        reader.Read(clip);
    }
    JoinPieces(reader.pieces, import.curves);
}

void MakeGltfKeys(eGltfImport& import) {
    for (const int node : import.hierarchy.order) {
        const eGltfNodeCurves& curves = import.curves[static_cast<std::size_t>(node)];
        eNodeData& record = import.RecordOf(node);
        const std::string place = GltfPlace("nodes", node);
        const bool isMoved =
            !curves.position.IsEmpty() || !curves.rotation.IsEmpty() || !curves.scale.IsEmpty();
        if (isMoved && record.transform.matrix) {
            import.report.Problem(place, eMessageId::GltfMovedMatrix);
        } else if (HasRotationOfNoLength(curves.rotation)) {
            import.report.Problem(place, eMessageId::GltfMovedRotation);
        } else {
            record.keys = KeysOf(curves, import.AxesOf(node));
        }
    }
}

}  // namespace standalone

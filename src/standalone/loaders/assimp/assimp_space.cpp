#include "standalone/loaders/assimp/assimp_space.h"

#include <algorithm>
#include <cmath>

#include "standalone/data/transform_track.h"
#include "standalone/loaders/assimp/assimp_nodes.h"

namespace standalone {
namespace {

constexpr float kUpright = 0.7F;          // within 45 degrees
constexpr float kSameScale = 1e-3F;       // relative
constexpr float kShearTolerance = 1e-4F;  // relative to the longest row
constexpr double kMetresPerCentimetre = 0.01;

// (x, y, z) -> (x, -z, y): what is y-up becomes z-up.
const host::Matrix3 kTurn({1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {});

template <class Value>
Value SettingOf(const aiScene& file, const char* key, Value otherwise) {
    Value value{};
    return file.mMetaData != nullptr && file.mMetaData->Get(key, value) ? value : otherwise;
}

host::Matrix3 Scaled(host::Matrix3 matrix, double factor) {
    for (int row = 0; row < 4; ++row) {
        matrix.SetRow(row, matrix.GetRow(row) * static_cast<float>(factor));
    }
    return matrix;
}

// The axes of the world as the file's settings name them: where an axis of the file goes in the host.
host::Matrix3 AxesOf(const aiScene& file) {
    const int right = SettingOf(file, "CoordAxis", 0);
    const int up = SettingOf(file, "UpAxis", 1);
    const int front = SettingOf(file, "FrontAxis", 2);
    const auto isAxis = [](int axis) { return axis >= 0 && axis <= 2; };
    if (!isAxis(right) || !isAxis(up) || !isAxis(front) || right == up || up == front || front == right) {
        return kTurn;
    }
    host::Matrix3 axes;
    const auto sign = [&](const char* key) { return SettingOf(file, key, 1) < 0 ? -1.0F : 1.0F; };
    axes.SetRow(right, {sign("CoordAxisSign"), 0, 0});
    axes.SetRow(up, {0, 0, sign("UpAxisSign")});
    axes.SetRow(front, {0, -sign("FrontAxisSign"), 0});
    return axes.Parity() == 0 ? axes : kTurn;
}

void ReadWorld(eAssimpImport& import) {
    if (import.fbx == nullptr) {
        // The library has turned these files to y-up, at their root, and to metres where they name a unit.
        const aiNode& root = *import.file.mRootNode;
        import.toHost = root.mNumMeshes != 0 ? kTurn : HostMatrix(root.mTransformation) * kTurn;
        import.unitMetres = Length(import.toHost.GetRow(0));
        return;
    }
    const double centimetres = SettingOf(import.file, "UnitScaleFactor", 1.0F);
    import.unitMetres = kMetresPerCentimetre * (centimetres > 0 ? centimetres : 1);
    import.toHost = Scaled(AxesOf(import.file), import.unitMetres);
}

// The frame of all that hangs below the root.
host::Matrix3 RootFrame(const eAssimpImport& import, const eAssimpNode& root) {
    const host::Matrix3 world = StillFileMatrix(root) * import.toHost;
    const bool isUpright = host::Normalize(world.GetRow(1)).z > kUpright;
    const float scale = Length(world.GetRow(0));
    const bool isInMetres = std::fabs(scale - 1) <= kSameScale;
    return Scaled(isUpright ? kTurn : host::Matrix3(), isInMetres ? scale : import.unitMetres);
}

// Turns what looks along the axis, with the other axis up, to look along -z with y up.
host::Matrix3 LookingFrame(const aiVector3D& axis, const aiVector3D& up, float scale) {
    const host::Point3 ahead = host::Normalize({axis.x, axis.y, axis.z});
    const host::Point3 right = host::Normalize(CrossProd(ahead, {up.x, up.y, up.z}));
    if (Length(right) == 0) {
        return Scaled(host::Matrix3(), scale);
    }
    return Scaled(host::Inverse({right, CrossProd(right, ahead), -ahead, {}}), scale);
}

host::Matrix3 FrameOf(const eAssimpNode& node, const host::Matrix3& root) {
    const float scale = Length(root.GetRow(0));
    if (node.camera != nullptr) {
        return LookingFrame(node.camera->mLookAt, node.camera->mUp, scale);
    }
    if (node.light != nullptr && node.light->mType != aiLightSource_AMBIENT) {
        return LookingFrame(node.light->mDirection, node.light->mUp, scale);
    }
    return root;
}

// What products of matrices leave beside 0 and 1 goes, so that a plain transform is plain.
float Plain(float part) {
    constexpr float kNoise = 1e-6F;
    const float whole = std::round(part);
    return std::fabs(part - whole) <= kNoise ? whole + 0.0F : part;
}

}  // namespace

host::Matrix3 HostMatrix(const aiMatrix4x4& m) {
    return {{m.a1, m.b1, m.c1}, {m.a2, m.b2, m.c2}, {m.a3, m.b3, m.c3}, {m.a4, m.b4, m.c4}};
}

host::Matrix3 StillFileMatrix(const eAssimpNode& node) {
    host::Matrix3 matrix;
    for (const aiNode* step : node.chain) {
        matrix = HostMatrix(step->mTransformation) * matrix;
    }
    return matrix * node.intoParent;
}

void MakeAssimpFrames(eAssimpImport& import) {
    ReadWorld(import);
    std::vector<host::Matrix3> roots(import.nodes.size());
    for (const int number : ParentsFirst(import)) {
        eAssimpNode& node = import.NodeOf(number);
        host::Matrix3& root = roots[static_cast<std::size_t>(number)];
        root = node.parent < 0 ? RootFrame(import, node) : roots[static_cast<std::size_t>(node.parent)];
        node.frame = FrameOf(node, root);
    }
}

bool SplitMatrix(const host::Matrix3& matrix, ePlacement& parts) {
    const float sign = matrix.Parity() != 0 ? -1.0F : 1.0F;
    host::Matrix3 turn;
    for (int row = 0; row < 3; ++row) {
        parts.scale[row] = Plain(sign * Length(matrix.GetRow(row)));
        turn.SetRow(row, Normalize(matrix.GetRow(row)) * sign);
    }
    // The host's sense of rotation is the opposite of the record's.
    const host::Quat quat(turn);
    parts.rotation = {Plain(-quat.x), Plain(-quat.y), Plain(-quat.z), Plain(quat.w)};
    parts.position = matrix.GetTrans();
    const host::Matrix3 again = PlacementMatrix(parts);
    const float largest =
        std::max({std::fabs(parts.scale.x), std::fabs(parts.scale.y), std::fabs(parts.scale.z)});
    bool isSame = true;
    for (int row = 0; row < 3; ++row) {
        isSame = isSame && again.GetRow(row).Equals(matrix.GetRow(row), kShearTolerance * largest);
    }
    return isSame;
}

eTransform TransformOf(const host::Matrix3& matrix) {
    eTransform transform;
    if (!SplitMatrix(matrix, transform.parts)) {
        transform.parts = {};
        transform.matrix = matrix;
    }
    return transform;
}

}  // namespace standalone

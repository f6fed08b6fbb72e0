#include "standalone/loaders/assimp/assimp_channel.h"

#include <algorithm>
#include <span>

#include "standalone/loaders/assimp/assimp_space.h"

namespace standalone {
namespace {

aiVector3D Between(const aiVector3D& from, const aiVector3D& to, float share) {
    return from + (to - from) * share;
}

aiQuaternion Between(const aiQuaternion& from, const aiQuaternion& to, float share) {
    aiQuaternion result;
    aiQuaternion::Interpolate(result, from, to, share);
    return result.Normalize();
}

template <class Key, class Value>
Value ValueAt(std::span<const Key> keys, double ticks, const Value& otherwise) {
    if (keys.empty()) {
        return otherwise;
    }
    const auto above = std::ranges::upper_bound(keys, ticks, {}, &Key::mTime);
    if (above == keys.begin()) {
        return keys.front().mValue;
    }
    const auto below = above - 1;
    if (above == keys.end() || !(above->mTime > below->mTime)) {
        return below->mValue;
    }
    const auto share = static_cast<float>((ticks - below->mTime) / (above->mTime - below->mTime));
    return Between(below->mValue, above->mValue, share);
}

}  // namespace

host::Matrix3 ChannelMatrix(const aiNodeAnim& channel, double ticks) {
    const std::span<const aiVectorKey> positions(channel.mPositionKeys, channel.mNumPositionKeys);
    const std::span<const aiQuatKey> rotations(channel.mRotationKeys, channel.mNumRotationKeys);
    const std::span<const aiVectorKey> scales(channel.mScalingKeys, channel.mNumScalingKeys);
    return HostMatrix(aiMatrix4x4(ValueAt(scales, ticks, aiVector3D(1, 1, 1)),
                                  ValueAt(rotations, ticks, aiQuaternion()),
                                  ValueAt(positions, ticks, aiVector3D())));
}

}  // namespace standalone

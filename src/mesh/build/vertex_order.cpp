#include "mesh/build/vertex_order.h"

#include <cstring>

#include "geometry/vertex_layout.h"

namespace {

template <class T>
int CompareExactly(T a, T b) {
    return (a > b) - (a < b);
}

int Compare(const host::Point2& a, const host::Point2& b) {
    const int x = CompareWithin(a.x, b.x);
    return x != 0 ? x : CompareWithin(a.y, b.y);
}

int Compare(const host::Point4& a, const host::Point4& b) {
    const int xyz = ComparePoints({a.x, a.y, a.z}, {b.x, b.y, b.z});
    return xyz != 0 ? xyz : CompareWithin(a.w, b.w);
}

int CompareInfluences(const eExportVertex& a, const eExportVertex& b) {
    std::uint32_t bonesOfA = 0, bonesOfB = 0;
    std::memcpy(&bonesOfA, a.boneIndices, sizeof bonesOfA);
    std::memcpy(&bonesOfB, b.boneIndices, sizeof bonesOfB);
    const int bones = CompareExactly(bonesOfA, bonesOfB);
    return bones != 0 ? bones : std::memcmp(a.weights, b.weights, sizeof a.weights);
}

}  // namespace

int CompareBehindPosition(const eExportVertex& a, const eExportVertex& b) {
    if (const int uv0 = Compare(a.uv0, b.uv0); uv0 != 0) {
        return uv0;
    }
    if (const int uv1 = Compare(a.uv1, b.uv1); uv1 != 0) {
        return uv1;
    }
    if (const int subset = CompareExactly(a.subset, b.subset); subset != 0) {
        return subset;
    }
    if (WeightCount(a.format) != 0) {
        if (const int influences = CompareInfluences(a, b); influences != 0) {
            return influences;
        }
    }
    if ((a.format & VF_NORMAL) != 0) {
        if (const int normal = ComparePoints(a.normal, b.normal); normal != 0) {
            return normal;
        }
    }
    if ((a.format & VF_TANGENT) != 0) {
        if (const int tangent = Compare(a.tangent, b.tangent); tangent != 0) {
            return tangent;
        }
    }
    if ((a.format & VF_COLOR) != 0) {
        if (const int color = CompareExactly(a.color, b.color); color != 0) {
            return color;
        }
    }
    return CompareExactly(a.smoothingGroup, b.smoothingGroup);
}

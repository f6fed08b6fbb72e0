#include "scene/skeleton/matrix_text.h"

#include <cmath>

#include "run/export.h"
#include "run/model_texts.h"
#include "scene/master_scale.h"

namespace {

constexpr float kIdentityTolerance = 1e-6F;

bool IsPositionIdentity(const host::Matrix3& matrix) {
    return matrix.GetTrans().Equals({0, 0, 0}, kIdentityTolerance);
}

bool IsRotationIdentity(const host::Matrix3& matrix) {
    const host::Matrix3 identity;
    for (int i = 0; i < 3; ++i) {
        if (!matrix.GetRow(i).Equals(identity.GetRow(i), kIdentityTolerance)) {
            return false;
        }
    }
    return true;
}

void WriteAxes(xIo::xSdl::eWriter& writer, const host::Matrix3& matrix) {
    for (int i = 0; i < 3; ++i) {
        WritePoint3(writer, matrix.GetRow(i));
        writer.EndLine();
    }
}

}  // namespace

void WritePoint3(xIo::xSdl::eWriter& writer, const host::Point3& point) {
    writer.Rounded(point.x).Word("\t").Rounded(point.y).Word("\t").Rounded(point.z);
}

void WriteMatrix(Export& run, const host::Matrix3& matrix) {
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    const host::Point3 metres = matrix.GetTrans() * MasterScale(run);
    const bool hasPosition = !IsPositionIdentity(matrix);
    const bool hasRotation = !IsRotationIdentity(matrix);
    if (hasPosition && hasRotation) {
        writer.BlockBegin().Word("matrix34").EndLine();
        WriteAxes(writer, matrix);
        WritePoint3(writer, metres);
        writer.EndLine().BlockEndLine();
    } else if (hasPosition) {
        writer.BlockBegin().Word("Position");
        WritePoint3(writer, metres);
        writer.BlockEndLine();
    } else if (hasRotation) {
        writer.BlockBegin().Word("orientation").EndLine();
        WriteAxes(writer, matrix);
        writer.BlockEndLine();
    }
}

bool IsOrthonormal(const host::Matrix3& matrix) {
    constexpr float kTolerance = 1e-5F;
    const auto row = [&matrix](int i) { return matrix.GetRow(i); };
    const auto isUnit = [](const host::Point3& axis) {
        return std::fabs(host::Length(axis) - 1) <= kTolerance;
    };
    const auto isRightAngle = [](const host::Point3& a, const host::Point3& b) {
        return std::fabs(host::DotProd(a, b)) <= kTolerance;
    };
    return isUnit(row(0)) && isUnit(row(1)) && isUnit(row(2)) && isRightAngle(row(0), row(1)) &&
           isRightAngle(row(1), row(2)) && isRightAngle(row(0), row(2));
}

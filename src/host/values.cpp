#include "host/values.h"

namespace host {

Point3 Normalize(const Point3& p) {
    const float length = Length(p);
    return length > 0 ? Point3{p.x / length, p.y / length, p.z / length} : p;
}

void Matrix3::NoScale() {
    for (int i = 0; i < 3; ++i) {
        SetRow(i, Normalize(GetRow(i)));
    }
}

int Matrix3::Parity() const {
    return DotProd(CrossProd(rows_[0], rows_[1]), rows_[2]) < 0 ? 1 : 0;
}

Matrix3 operator*(const Matrix3& a, const Matrix3& b) {
    return {VectorTransform(b, a.GetRow(0)), VectorTransform(b, a.GetRow(1)), VectorTransform(b, a.GetRow(2)),
            a.GetTrans() * b};
}

DMatrix3 ExactInverse(const Matrix3& m) {
    const auto at = [&m](int row, int column) { return static_cast<double>(m.GetRow(row)[column]); };
    // The signed cofactor of the 3 by 3 part; wrapping the indices brings the sign with it.
    const auto cofactor = [&at](int row, int column) {
        const int r0 = (row + 1) % 3, r1 = (row + 2) % 3, c0 = (column + 1) % 3, c1 = (column + 2) % 3;
        return at(r0, c0) * at(r1, c1) - at(r0, c1) * at(r1, c0);
    };
    const double determinant =
        at(0, 0) * cofactor(0, 0) + at(0, 1) * cofactor(0, 1) + at(0, 2) * cofactor(0, 2);
    if (determinant == 0 || !std::isfinite(determinant)) {
        return {};
    }
    DMatrix3 inverse;
    auto& rows = inverse.rows;
    for (std::size_t column = 0; column < 3; ++column) {
        for (std::size_t row = 0; row < 3; ++row) {
            rows[row][column] = cofactor(static_cast<int>(column), static_cast<int>(row)) / determinant;
        }
        rows[3][column] =
            -(at(3, 0) * rows[0][column] + at(3, 1) * rows[1][column] + at(3, 2) * rows[2][column]);
    }
    return inverse;
}

Matrix3 Inverse(const Matrix3& m) {
    const DMatrix3 exact = ExactInverse(m);
    const auto row = [&exact](std::size_t i) {
        const auto& [x, y, z] = exact.rows[i];
        return Point3{static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    };
    return {row(0), row(1), row(2), row(3)};
}

Matrix3 ScaleMatrix(const Point3& factors) {
    return {{factors.x, 0, 0}, {0, factors.y, 0}, {0, 0, factors.z}, {0, 0, 0}};
}

Matrix3 TransMatrix(const Point3& translation) {
    Matrix3 m;
    m.SetTrans(translation);
    return m;
}

Matrix3 NoScale(Matrix3 m) {
    m.NoScale();
    return m;
}

namespace {

struct eDoubleQuat {
    double x, y, z, w;
};

// The components of the largest magnitude first, so that no divisor comes near 0 (Shepperd, 1978).
eDoubleQuat FromRows(const Matrix3& m) {
    const auto at = [&m](int row, int column) { return static_cast<double>(m.GetRow(row)[column]); };
    const double trace = at(0, 0) + at(1, 1) + at(2, 2);
    if (trace > 0) {
        const double s = 2 * std::sqrt(1 + trace);
        return {(at(2, 1) - at(1, 2)) / s, (at(0, 2) - at(2, 0)) / s, (at(1, 0) - at(0, 1)) / s, s / 4};
    }
    if (at(0, 0) >= at(1, 1) && at(0, 0) >= at(2, 2)) {
        const double s = 2 * std::sqrt(1 + at(0, 0) - at(1, 1) - at(2, 2));
        return {s / 4, (at(0, 1) + at(1, 0)) / s, (at(0, 2) + at(2, 0)) / s, (at(2, 1) - at(1, 2)) / s};
    }
    if (at(1, 1) >= at(2, 2)) {
        const double s = 2 * std::sqrt(1 + at(1, 1) - at(0, 0) - at(2, 2));
        return {(at(0, 1) + at(1, 0)) / s, s / 4, (at(1, 2) + at(2, 1)) / s, (at(0, 2) - at(2, 0)) / s};
    }
    const double s = 2 * std::sqrt(1 + at(2, 2) - at(0, 0) - at(1, 1));
    return {(at(0, 2) + at(2, 0)) / s, (at(1, 2) + at(2, 1)) / s, s / 4, (at(1, 0) - at(0, 1)) / s};
}

bool IsOtherSign(const eDoubleQuat& q) {
    constexpr double kZero = 1e-6;
    if (std::fabs(q.w) > kZero) {
        return q.w < 0;
    }
    for (const double component : {q.x, q.y, q.z}) {
        if (std::fabs(component) > kZero) {
            return component < 0;
        }
    }
    return false;
}

}  // namespace

Quat::Quat(const Matrix3& m) {
    const eDoubleQuat q = FromRows(m);
    const double sign = IsOtherSign(q) ? -1 : 1;
    x = static_cast<float>(sign * q.x);
    y = static_cast<float>(sign * q.y);
    z = static_cast<float>(sign * q.z);
    w = static_cast<float>(sign * q.w);
}

Matrix3 MatrixFromQuat(const Quat& q) {
    const double x = q.x, y = q.y, z = q.z, w = q.w;
    const auto row = [](double a, double b, double c) {
        return Point3{static_cast<float>(a), static_cast<float>(b), static_cast<float>(c)};
    };
    return {row(1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)),
            row(2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)),
            row(2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)),
            {0, 0, 0}};
}

Box3& Box3::operator+=(const Point3& p) {
    const auto lower = [](float a, float b) { return a < b ? a : b; };
    const auto upper = [](float a, float b) { return a > b ? a : b; };
    pmin = {lower(p.x, pmin.x), lower(p.y, pmin.y), lower(p.z, pmin.z)};
    pmax = {upper(p.x, pmax.x), upper(p.y, pmax.y), upper(p.z, pmax.z)};
    return *this;
}

}  // namespace host

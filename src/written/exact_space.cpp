#include "written/exact_space.h"

#include <algorithm>
#include <numbers>

namespace written {

host::DMatrix3 Exact(const host::Matrix3& m) {
    host::DMatrix3 exact;
    for (int row = 0; row < 4; ++row) {
        exact.rows[static_cast<std::size_t>(row)] = Exact(m.GetRow(row));
    }
    return exact;
}

host::DMatrix3 Product(const host::DMatrix3& a, const host::DMatrix3& b) {
    host::DMatrix3 product;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            product.rows[row][column] = row == 3 ? b.rows[3][column] : 0;
            for (std::size_t i = 0; i < 3; ++i) {
                product.rows[row][column] += a.rows[row][i] * b.rows[i][column];
            }
        }
    }
    return product;
}

host::DMatrix3 ExactInverse(const host::DMatrix3& m) {
    const auto& [x, y, z, t] = m.rows;
    const auto cross = [](const eVector& a, const eVector& b) {
        return eVector{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    };
    const std::array<eVector, 3> columns{cross(y, z), cross(z, x), cross(x, y)};
    const double determinant = Dot(x, columns[0]);
    host::DMatrix3 inverse;
    if (determinant == 0) {
        return inverse;
    }
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            inverse.rows[row][column] = columns[column][row] / determinant;
        }
    }
    const eVector back = Through(t, inverse);
    inverse.rows[3] = {-back[0], -back[1], -back[2]};
    return inverse;
}

eVector Through(const eVector& point, const host::DMatrix3& m) {
    eVector result = m.rows[3];
    for (std::size_t column = 0; column < 3; ++column) {
        for (std::size_t i = 0; i < 3; ++i) {
            result[column] += point[i] * m.rows[i][column];
        }
    }
    return result;
}

eVector NormalThroughInverse(const eVector& normal, const host::DMatrix3& inverse) {
    return {Dot(inverse.rows[0], normal), Dot(inverse.rows[1], normal), Dot(inverse.rows[2], normal)};
}

double LargestDifference(const eVector& a, const eVector& b) {
    const eVector d = a - b;
    return std::max({std::fabs(d[0]), std::fabs(d[1]), std::fabs(d[2])});
}

double AngleBetween(const eVector& a, const eVector& b) {
    const eVector cross{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    return std::atan2(Length(cross), Dot(a, b)) * 180 / std::numbers::pi;
}

}  // namespace written

#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

// The value types of the host: single precision throughout, vectors are rows, a point is multiplied from the
// left, and a product A * B applies A first.
namespace host {

// A moment of the scene's timeline, in ticks. A frame is Interface::GetTicksPerFrame ticks.
using TimeValue = int;

struct Interval {
    TimeValue start = 0;
    TimeValue end = 0;
};

// From the smallest to the largest time value.
inline constexpr Interval kForever{std::numeric_limits<TimeValue>::min(),
                                   std::numeric_limits<TimeValue>::max()};

// The pair of words by which the host tells its classes apart.
struct ClassId {
    std::uint32_t a = 0;
    std::uint32_t b = 0;

    friend bool operator==(const ClassId&, const ClassId&) = default;
};

struct Point2 {
    float x = 0;
    float y = 0;

    friend bool operator==(const Point2&, const Point2&) = default;
};

// A place on a map in double precision: single precision would leave its texel on the way through a tiling.
struct DPoint2 {
    double x = 0;
    double y = 0;
};

struct Point3 {
    float x = 0;
    float y = 0;
    float z = 0;

    float& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }
    float operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }

    Point3& operator+=(const Point3& p) {
        x += p.x;
        y += p.y;
        z += p.z;
        return *this;
    }
    friend Point3 operator+(const Point3& a, const Point3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Point3 operator-(const Point3& a, const Point3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Point3 operator-(const Point3& p) { return {-p.x, -p.y, -p.z}; }
    friend Point3 operator*(const Point3& p, float f) { return {p.x * f, p.y * f, p.z * f}; }
    friend Point3 operator*(float f, const Point3& p) { return p * f; }
    friend bool operator==(const Point3&, const Point3&) = default;

    // True if no component differs by more than the tolerance.
    bool Equals(const Point3& p, float tolerance) const {
        return std::fabs(p.x - x) <= tolerance && std::fabs(p.y - y) <= tolerance &&
               std::fabs(p.z - z) <= tolerance;
    }
};

struct Point4 {
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 0;

    bool Equals(const Point4& p, float tolerance) const {
        return std::fabs(p.x - x) <= tolerance && std::fabs(p.y - y) <= tolerance &&
               std::fabs(p.z - z) <= tolerance && std::fabs(p.w - w) <= tolerance;
    }
};

inline float DotProd(const Point3& a, const Point3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Point3 CrossProd(const Point3& a, const Point3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float Length(const Point3& p) {
    return std::sqrt(DotProd(p, p));
}

// The vector brought to length 1; a vector of length 0 stays as it is.
Point3 Normalize(const Point3& p);

// Colours in linear floats, 0 to 1 where nothing says otherwise.
struct Color {
    float r = 0;
    float g = 0;
    float b = 0;

    friend Color operator*(const Color& c, float f) { return {c.r * f, c.g * f, c.b * f}; }
    friend Color operator*(const Color& c, const Color& d) { return {c.r * d.r, c.g * d.g, c.b * d.b}; }
    friend Color operator+(const Color& c, const Color& d) { return {c.r + d.r, c.g + d.g, c.b + d.b}; }
    Color& operator+=(const Color& c) { return *this = *this + c; }
    friend bool operator==(const Color&, const Color&) = default;
};

struct AColor {
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;
};

// Four rows of three: three axes and the translation.
class Matrix3 {
public:
    // The identity.
    Matrix3() : rows_{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}} {}
    Matrix3(const Point3& row0, const Point3& row1, const Point3& row2, const Point3& translation)
        : rows_{row0, row1, row2, translation} {}

    const Point3& GetRow(int i) const { return rows_[static_cast<std::size_t>(i)]; }
    void SetRow(int i, const Point3& row) { rows_[static_cast<std::size_t>(i)] = row; }
    const Point3& GetTrans() const { return rows_[3]; }
    void SetTrans(const Point3& translation) { rows_[3] = translation; }

    // Brings each of the first three rows to length 1 and leaves their directions, so a mirror stays; a row
    // of length 0 stays as it is.
    void NoScale();

    // 1 if the determinant of the first three rows is negative (a mirror), else 0.
    int Parity() const;

    friend bool operator==(const Matrix3&, const Matrix3&) = default;

private:
    std::array<Point3, 4> rows_;
};

Matrix3 operator*(const Matrix3& a, const Matrix3& b);

// A matrix in double precision: four rows of three.
struct DMatrix3 {
    std::array<std::array<double, 3>, 4> rows{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}};
};

// The inverse, worked out in double precision. A matrix without an inverse gives the identity.
DMatrix3 ExactInverse(const Matrix3& m);
// The same, rounded.
Matrix3 Inverse(const Matrix3& m);

Matrix3 ScaleMatrix(const Point3& factors);
Matrix3 TransMatrix(const Point3& translation);

// The copy of a matrix with the scale removed (Matrix3::NoScale).
Matrix3 NoScale(Matrix3 m);

// A point through the whole matrix.
inline Point3 operator*(const Point3& p, const Matrix3& m) {
    const Point3 &x = m.GetRow(0), &y = m.GetRow(1), &z = m.GetRow(2), &t = m.GetRow(3);
    return {p.x * x.x + p.y * y.x + p.z * z.x + t.x, p.x * x.y + p.y * y.y + p.z * z.y + t.y,
            p.x * x.z + p.y * y.z + p.z * z.z + t.z};
}

// The point (x, y, 0) through the whole matrix, in double precision; its place on the map.
inline DPoint2 operator*(const DPoint2& p, const Matrix3& m) {
    const Point3 &x = m.GetRow(0), &y = m.GetRow(1), &t = m.GetRow(3);
    return {p.x * x.x + p.y * y.x + t.x, p.x * x.y + p.y * y.y + t.y};
}

inline DPoint2 operator*(const DPoint2& p, const DMatrix3& m) {
    const auto& [x, y, z, t] = m.rows;
    return {p.x * x[0] + p.y * y[0] + t[0], p.x * x[1] + p.y * y[1] + t[1]};
}

// A direction through the first three rows.
inline Point3 VectorTransform(const Matrix3& m, const Point3& v) {
    const Point3 &x = m.GetRow(0), &y = m.GetRow(1), &z = m.GetRow(2);
    return {v.x * x.x + v.y * y.x + v.z * z.x, v.x * x.y + v.y * y.y + v.z * z.y,
            v.x * x.z + v.y * y.z + v.z * z.z};
}

// A rotation by the host's left-hand rule: the quaternion of the matrix with the rows (0, 1, 0), (-1, 0, 0),
// (0, 0, 1) is (0, 0, -sin 45, cos 45).
struct Quat {
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 1;

    Quat() = default;
    Quat(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}

    // The rotation of a matrix whose first three rows are orthonormal and right-handed. Of the two
    // quaternions w is above 0; with w = 0 (up to 1e-6 either way, so that rounding does not flip it from
    // frame to frame) the first of x, y, z that is not 0 is positive.
    explicit Quat(const Matrix3& m);

    bool Equals(const Quat& q, float tolerance) const {
        return std::fabs(q.x - x) <= tolerance && std::fabs(q.y - y) <= tolerance &&
               std::fabs(q.z - z) <= tolerance && std::fabs(q.w - w) <= tolerance;
    }
};

// The matrix of a unit quaternion, without translation.
Matrix3 MatrixFromQuat(const Quat& q);

struct Box3 {
    // Empty: the lower corner lies above the upper one until a point is included.
    Point3 pmin{1e30F, 1e30F, 1e30F};
    Point3 pmax{-1e30F, -1e30F, -1e30F};

    bool IsEmpty() const { return pmin.x > pmax.x || pmin.y > pmax.y || pmin.z > pmax.z; }
    Box3& operator+=(const Point3& p);
    Point3 Width() const { return pmax - pmin; }
};

}  // namespace host

#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/VectorMath.h>

#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace KesVizCore {

namespace {

constexpr float kZeroTolerance = 1e-7F;
constexpr float kSnapAbove = 0.9999999F;
constexpr float kSnapBelow = 1.0000001F;
constexpr float kPi = 3.1415925F;  // one unit below the float nearest to pi, and kept so
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr float kRadiansPerDegreeFloat = 0.017453292F;

template <typename Real>
bool isTiny(Real value) {
    return std::fabs(value) < Real{kZeroTolerance};
}

/// True when a component became 0 that was not.
template <typename Real>
bool dropTinyComponents(Real* v) {
    bool dropped = false;
    for (int i = 0; i < 3; ++i) {
        if (isTiny(v[i]) && v[i] != Real{0}) {
            v[i] = Real{0};
            dropped = true;
        }
    }
    return dropped;
}

template <typename Real>
void scaleToUnitLength(Real* v) {
    const Real length = Length(v);
    if (!(length > Real{kZeroTolerance})) {
        throw std::invalid_argument("Invalid argument in Normalize()");
    }
    const Real factor = Real{1} / length;
    for (int i = 0; i < 3; ++i) {
        v[i] *= factor;
    }
}

template <typename Real>
void snapToAxis(Real* v) {
    for (int i = 0; i < 3; ++i) {
        const Real magnitude = std::fabs(v[i]);
        if (magnitude > Real{kSnapAbove} && magnitude < Real{kSnapBelow}) {
            const Real sign = v[i] > Real{0} ? Real{1} : Real{-1};
            v[0] = v[1] = v[2] = Real{0};
            v[i] = sign;
            return;
        }
    }
}

template <typename Real>
Real* normalize(Real* v) {
    for (int i = 0; i < 3; ++i) {
        if (isTiny(v[i])) {
            v[i] = Real{0};  // also a negative zero
        }
    }
    do {
        scaleToUnitLength(v);
    } while (dropTinyComponents(v));
    snapToAxis(v);
    return v;
}

/// Rodrigues' rotation formula, as the matrix that it amounts to. Everything is computed in Real.
template <typename Real>
void rotatePoint(const float* p, Real angle, const float* center, const float* axis, float* out) {
    const Real dx = Real{p[0]} - Real{center[0]};
    const Real dy = Real{p[1]} - Real{center[1]};
    const Real dz = Real{p[2]} - Real{center[2]};
    const Real x = axis[0];
    const Real y = axis[1];
    const Real z = axis[2];
    const Real s = std::sin(angle);
    const Real c = std::cos(angle);
    const Real t = Real{1} - c;
    out[0] = static_cast<float>(dx * (x * x * t + c) + dy * (x * y * t - z * s) +
                                dz * (x * z * t + y * s) + Real{center[0]});
    out[1] = static_cast<float>(dx * (x * y * t + z * s) + dy * (y * y * t + c) +
                                dz * (y * z * t - x * s) + Real{center[1]});
    out[2] = static_cast<float>(dx * (x * z * t - y * s) + dy * (y * z * t + x * s) +
                                dz * (z * z * t + c) + Real{center[2]});
}

template <typename Real>
void setIdentity(Real* m) {
    for (int i = 0; i < 16; ++i) {
        m[i] = i % 5 == 0 ? Real{1} : Real{0};
    }
}

template <typename Real>
void createRotationMatrix(Real* axis, Real angle, Real* m) {
    setIdentity(m);
    Normalize(axis);
    const double x = axis[0];
    const double y = axis[1];
    const double z = axis[2];
    const double s = std::sin(double{angle});
    const double c = std::cos(double{angle});
    const double t = 1.0 - c;
    m[0] = static_cast<Real>(x * x + (1.0 - x * x) * c);
    m[1] = static_cast<Real>(x * y * t + z * s);
    m[2] = static_cast<Real>(x * z * t - y * s);
    m[4] = static_cast<Real>(x * y * t - z * s);
    m[5] = static_cast<Real>(y * y + (1.0 - y * y) * c);
    m[6] = static_cast<Real>(y * z * t + x * s);
    m[8] = static_cast<Real>(x * z * t + y * s);
    m[9] = static_cast<Real>(y * z * t - x * s);
    m[10] = static_cast<Real>(z * z + (1.0 - z * z) * c);
}

template <typename Real>
void multiplyPoint(const Real* p, const Real* m, Real* out) {
    const Real x = p[0];
    const Real y = p[1];
    const Real z = p[2];
    for (int i = 0; i < 3; ++i) {
        out[i] = m[i] * x + m[i + 4] * y + m[i + 8] * z + m[i + 12];
    }
}

float degreesFromRadians(float radians) {
    return radians * 180.0F / kPi;
}

void centerOf(float* out, std::ptrdiff_t count, const float* coords) {
    ClearVector(out);
    for (std::ptrdiff_t point = 0; point < count; ++point) {
        Add(out, coords + 3 * point, out);
    }
    const auto divisor = static_cast<float>(count);
    for (int i = 0; i < 3; ++i) {
        out[i] /= divisor;
    }
}

}  // namespace

float Length(const float* v) {
    const double x = v[0];
    const double y = v[1];
    const double z = v[2];
    return static_cast<float>(std::sqrt(x * x + y * y + z * z));
}

double Length(const double* v) {
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

float* Add(const float* a, const float* b, float* out) {
    for (int i = 0; i < 3; ++i) {
        out[i] = a[i] + b[i];
    }
    return out;
}

float* Subtract(const float* a, const float* b, float* out) {
    for (int i = 0; i < 3; ++i) {
        out[i] = a[i] - b[i];
    }
    return out;
}

float Round(float value, int digits) {
    const double power = std::pow(10.0, digits);
    return static_cast<float>(std::floor(double{value} * power + 0.5) / power);
}

bool AreClose(float a, float b, int digits) {
    return Round(a, digits) == Round(b, digits);
}

bool AreClose(const float* a, const float* b, int digits) {
    return AreClose(a[0], b[0], digits) && AreClose(a[1], b[1], digits) &&
           AreClose(a[2], b[2], digits);
}

bool AreClose(float a, float b) {
    return a == b || (std::fabs(a) + std::fabs(b) + 10.0F) * kZeroTolerance > std::fabs(a - b);
}

bool AreClose(const float* a, const float* b) {
    return AreClose(a[0], b[0]) && AreClose(a[1], b[1]) && AreClose(a[2], b[2]);
}

bool AreOpposite(const float* a, const float* b) {
    return AreClose(a[0], -b[0]) && AreClose(a[1], -b[1]) && AreClose(a[2], -b[2]);
}

float* Negate(float* v) {
    for (int i = 0; i < 3; ++i) {
        v[i] = -v[i];
    }
    return v;
}

void ClearVector(float* v) {
    v[0] = v[1] = v[2] = 0.0F;
}

float* Multiply(float* v, float s) {
    for (int i = 0; i < 3; ++i) {
        v[i] *= s;
    }
    return v;
}

float* Normalize(float* v) {
    return normalize(v);
}

double* Normalize(double* v) {
    return normalize(v);
}

float DotProduct(const float* a, const float* b) {
    const auto product = static_cast<float>(
        double{a[0]} * double{b[0]} + double{a[1]} * double{b[1]} + double{a[2]} * double{b[2]});
    return isTiny(product) ? 0.0F : product;
}

float* CrossProduct(const float* a, const float* b, float* out) {
    const double ax = a[0];
    const double ay = a[1];
    const double az = a[2];
    const double bx = b[0];
    const double by = b[1];
    const double bz = b[2];
    out[0] = static_cast<float>(ay * bz - az * by);
    out[1] = static_cast<float>(az * bx - ax * bz);
    out[2] = static_cast<float>(ax * by - ay * bx);
    return out;
}

float GetAngleRadians(const float* u, const float* v) {
    float unitU[3] = {u[0], u[1], u[2]};
    float unitV[3] = {v[0], v[1], v[2]};
    const float cosine = DotProduct(Normalize(unitU), Normalize(unitV));
    if (cosine > kSnapAbove) {
        return 0.0F;
    }
    if (cosine < -kSnapAbove) {
        return kPi;
    }
    return static_cast<float>(std::acos(double{cosine}));
}

float GetAngleDegrees(const float* u, const float* v) {
    return degreesFromRadians(GetAngleRadians(u, v));
}

float GetAngleRadians(const float* u, const float* v, const float* n) {
    const float angle = GetAngleRadians(u, v);
    if (!(angle > 0.0F && angle < kPi)) {
        return angle;
    }
    float turn[3];
    CrossProduct(u, v, turn);
    return SameHalfSpace(n, turn, u, n) ? angle : -angle;
}

float GetAngleDegrees(const float* u, const float* v, const float* n) {
    return degreesFromRadians(GetAngleRadians(u, v, n));
}

void RotatePoint(float* p, double angleDegrees, float* center, float* axis, float* out) {
    rotatePoint(p, static_cast<float>(angleDegrees * kRadiansPerDegree), center, axis, out);
}

void RotatePointRadians(float* p, double angleRadians, float* center, float* axis, float* out) {
    rotatePoint(p, angleRadians, center, axis, out);
}

void RotatePointAroundOrigin(float* p, double angleDegrees, float* axis, float* out) {
    const float origin[3] = {0.0F, 0.0F, 0.0F};
    rotatePoint(p, angleDegrees * kRadiansPerDegree, origin, axis, out);
}

void CreateRotationMatrixRadians(float* axis, float angle, float* rotatedFromOriginal) {
    createRotationMatrix(axis, angle, rotatedFromOriginal);
}

void CreateRotationMatrixRadians(double* axis, double angle, double* rotatedFromOriginal) {
    createRotationMatrix(axis, angle, rotatedFromOriginal);
}

void CreateRotationMatrixDegrees(float* axis, float angle, float* rotatedFromOriginal) {
    createRotationMatrix(axis, angle * kRadiansPerDegreeFloat, rotatedFromOriginal);
}

void CreateRotationMatrixDegrees(double* axis, double angle, double* rotatedFromOriginal) {
    createRotationMatrix(axis, angle * kRadiansPerDegree, rotatedFromOriginal);
}

void MatrixMultiplyPoint(float* p, float* targetFromSource, float* out) {
    multiplyPoint(p, targetFromSource, out);
}

void MatrixMultiplyPoint(double* p, double* targetFromSource, double* out) {
    multiplyPoint(p, targetFromSource, out);
}

void GetCenter(float* out, const std::vector<float>& coords) {
    centerOf(out, static_cast<std::ptrdiff_t>(coords.size() / 3), coords.data());
}

void GetCenter(float* out, int count, const float* coords) {
    centerOf(out, count, coords);
}

}  // namespace KesVizCore

/// @file
/// See MathReference.h.
#include "MathReference.h"

#include <cmath>

namespace Reference {

float Length(const float* v) {
    double sum = double{v[0]} * double{v[0]};
    sum += double{v[1]} * double{v[1]};
    sum += double{v[2]} * double{v[2]};
    return static_cast<float>(std::sqrt(sum));
}

double Length(const double* v) {
    double sum = v[0] * v[0];
    sum += v[1] * v[1];
    sum += v[2] * v[2];
    return std::sqrt(sum);
}

float Round(float value, int digits) {
    const double power = std::pow(10.0, static_cast<double>(digits));
    double rounded = double{value} * power;
    rounded = std::floor(rounded + 0.5);
    return static_cast<float>(rounded / power);
}

bool AreClose(float a, float b, int digits) {
    const float roundedA = Round(a, digits);
    const float roundedB = Round(b, digits);
    if (std::isnan(roundedA) || std::isnan(roundedB)) {
        return false;
    }
    return roundedA == roundedB;
}

bool AreClose(float a, float b) {
    if (a == b) {
        return true;
    }
    float bound = std::fabs(a) + std::fabs(b);
    bound = bound + 10.0F;
    bound = bound * 1e-7F;
    const float difference = a - b;
    return bound > std::fabs(difference);
}

namespace {

template <typename Real>
bool normalize(Real* v) {
    const Real tiny = 1e-7F;
    for (int i = 0; i < 3; ++i) {
        if (std::fabs(v[i]) < tiny) {
            v[i] = 0;
        }
    }
    bool again = true;
    while (again) {
        const Real length = Length(v);
        if (!(length > tiny)) {
            return false;
        }
        const Real factor = Real{1} / length;
        again = false;
        for (int i = 0; i < 3; ++i) {
            v[i] = v[i] * factor;
            if (v[i] != 0 && std::fabs(v[i]) < tiny) {
                v[i] = 0;
                again = true;
            }
        }
    }
    for (int axis = 0; axis < 3; ++axis) {
        const Real size = std::fabs(v[axis]);
        if (size > Real{0.9999999F} && size < Real{1.0000001F}) {
            const Real one = v[axis] > 0 ? Real{1} : Real{-1};
            for (int i = 0; i < 3; ++i) {
                v[i] = i == axis ? one : Real{0};
            }
            break;
        }
    }
    return true;
}

}  // namespace

bool Normalize(float* v) {
    return normalize(v);
}

bool Normalize(double* v) {
    return normalize(v);
}

float DotProduct(const float* a, const float* b) {
    double sum = double{a[0]} * double{b[0]};
    sum += double{a[1]} * double{b[1]};
    sum += double{a[2]} * double{b[2]};
    const float product = static_cast<float>(sum);
    return std::fabs(product) < 1e-7F ? 0.0F : product;
}

void CrossProduct(const float* a, const float* b, float* out) {
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3;
        const int k = (i + 2) % 3;
        const double first = double{a[j]} * double{b[k]};
        const double second = double{a[k]} * double{b[j]};
        out[i] = static_cast<float>(first - second);
    }
}

bool GetAngleRadians(const float* u, const float* v, float& angle) {
    float unitU[3] = {u[0], u[1], u[2]};
    float unitV[3] = {v[0], v[1], v[2]};
    if (!Normalize(unitU) || !Normalize(unitV)) {
        return false;
    }
    float cosine = DotProduct(unitU, unitV);
    if (cosine > 0.9999999F) {
        cosine = 1;
    }
    if (cosine < -0.9999999F) {
        cosine = -1;
    }
    if (double{cosine} >= 0.9999999) {
        angle = 0;
    } else if (double{cosine} <= -0.9999999) {
        angle = 3.1415925F;
    } else {
        angle = static_cast<float>(std::acos(double{cosine}));
    }
    return true;
}

bool GetAngleRadians(const float* u, const float* v, const float* n, float& angle) {
    if (!GetAngleRadians(u, v, angle)) {
        return false;
    }
    if (0 < angle && angle < 3.1415925F) {
        float w[3];
        CrossProduct(u, v, w);
        if (!SameHalfSpace(n, w, u, n)) {
            angle = -angle;
        }
    }
    return true;
}

float DegreesFromRadians(float radians) {
    const float product = radians * 180.0F;
    return product / 3.1415925F;
}

namespace {

// Row by row: the matrix of the rotation, times what leads from the center to the point.
template <typename Real>
void rotatePoint(const float* p, Real angle, const float* center, const float* axis, float* out) {
    const Real sine = std::sin(angle);
    const Real cosine = std::cos(angle);
    const Real rest = Real{1} - cosine;
    Real d[3];
    for (int i = 0; i < 3; ++i) {
        d[i] = Real{p[i]} - Real{center[i]};
    }
    const Real a[3] = {axis[0], axis[1], axis[2]};
    for (int row = 0; row < 3; ++row) {
        Real sum = 0;
        for (int column = 0; column < 3; ++column) {
            // The product of the two components in the order x, y, z, as the formulas have it.
            const Real low = a[row < column ? row : column];
            const Real high = a[row < column ? column : row];
            Real entry = low * high * rest;
            const int other = 3 - row - column;
            if (row == column) {
                entry = entry + cosine;
            } else if ((row + 1) % 3 == column) {
                entry = entry - a[other] * sine;
            } else {
                entry = entry + a[other] * sine;
            }
            const Real term = d[column] * entry;
            sum = column == 0 ? term : sum + term;
        }
        out[row] = static_cast<float>(sum + Real{center[row]});
    }
}

template <typename Real>
bool createRotationMatrix(Real* axis, Real angle, Real* m) {
    for (int i = 0; i < 16; ++i) {
        m[i] = i / 4 == i % 4 ? Real{1} : Real{0};
    }
    if (!Normalize(axis)) {
        return false;
    }
    const double sine = std::sin(double{angle});
    const double cosine = std::cos(double{angle});
    const double rest = 1.0 - cosine;
    const double a[3] = {double{axis[0]}, double{axis[1]}, double{axis[2]}};
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < 3; ++row) {
            double entry = 0;
            if (row == column) {
                const double square = a[row] * a[row];
                entry = square + (1.0 - square) * cosine;
            } else {
                const double low = a[row < column ? row : column];
                const double high = a[row < column ? column : row];
                const double turn = a[3 - row - column] * sine;
                entry = low * high * rest;
                entry = (row + 1) % 3 == column ? entry - turn : entry + turn;
            }
            m[4 * column + row] = static_cast<Real>(entry);
        }
    }
    return true;
}

template <typename Real>
void multiplyPoint(const Real* p, const Real* m, Real* out) {
    const Real point[4] = {p[0], p[1], p[2], 1};
    for (int row = 0; row < 3; ++row) {
        Real sum = m[row] * point[0];
        sum = sum + m[row + 4] * point[1];
        sum = sum + m[row + 8] * point[2];
        out[row] = sum + m[row + 12];
    }
}

constexpr double radiansPerDegree = 0.017453292519943295;

}  // namespace

void RotatePoint(const float* p, double degrees, const float* center, const float* axis,
                 float* out) {
    rotatePoint(p, static_cast<float>(degrees * radiansPerDegree), center, axis, out);
}

void RotatePointRadians(const float* p, double radians, const float* center, const float* axis,
                        float* out) {
    rotatePoint(p, radians, center, axis, out);
}

void RotatePointAroundOrigin(const float* p, double degrees, const float* axis, float* out) {
    const float origin[3] = {0, 0, 0};
    rotatePoint(p, degrees * radiansPerDegree, origin, axis, out);
}

bool CreateRotationMatrixRadians(float* axis, float angle, float* m) {
    return createRotationMatrix(axis, angle, m);
}

bool CreateRotationMatrixRadians(double* axis, double angle, double* m) {
    return createRotationMatrix(axis, angle, m);
}

void MatrixMultiplyPoint(const float* p, const float* m, float* out) {
    multiplyPoint(p, m, out);
}

void MatrixMultiplyPoint(const double* p, const double* m, double* out) {
    multiplyPoint(p, m, out);
}

void GetCenter(float* out, int count, const float* coords) {
    for (int i = 0; i < 3; ++i) {
        float sum = 0;
        for (int point = 0; point < count; ++point) {
            sum = sum + coords[3 * point + i];
        }
        out[i] = sum / static_cast<float>(count);
    }
}

// --- rays ---------------------------------------------------------------------------------------

namespace {

constexpr float hitTolerance = 1e-9F;

void subtract(const float* a, const float* b, float* out) {
    for (int i = 0; i < 3; ++i) {
        out[i] = a[i] - b[i];
    }
}

// "-1 … 1 across the view" of the middle of a pixel.
float acrossView(int pixel, int count) {
    float place = static_cast<float>(pixel);
    place = place + 0.5F;
    place = place / static_cast<float>(count);
    place = place * 2.0F;
    return place - 1.0F;
}

Answer rayHitsPlane(const float* point, const float* normal, const float* root,
                    const float* direction, float* hitPoint, float& distance) {
    const float size = Length(normal);
    if (size < hitTolerance) {
        return Miss;
    }
    const float unit[3] = {normal[0] / size, normal[1] / size, normal[2] / size};
    float toPoint[3];
    subtract(point, root, toPoint);
    const float height = DotProduct(unit, toPoint);
    const float e[3] = {height * unit[0], height * unit[1], height * unit[2]};
    const float far = Length(e);
    if (far < hitTolerance) {
        for (int i = 0; i < 3; ++i) {
            hitPoint[i] = root[i];
        }
        distance = 0;
        return Hit;
    }

    const float m[3] = {e[0] / far, e[1] / far, e[2] / far};
    float dir[3] = {direction[0], direction[1], direction[2]};
    if (!Normalize(dir)) {
        return Throws;
    }
    const float c = DotProduct(m, dir);
    if (std::fabs(c) < hitTolerance) {
        return Miss;
    }
    const float reach = far / c;
    if (reach < 0) {
        return Miss;
    }
    distance = reach;
    for (int i = 0; i < 3; ++i) {
        const float step = reach * dir[i];
        hitPoint[i] = root[i] + step;
    }
    return Hit;
}

}  // namespace

bool GetRayVector(const Viewport& viewport, const float* eye, const float* target, const float* up,
                  float* rayRoot, float* rayDirection) {
    const float sx = acrossView(viewport.x, viewport.width);
    const float sy = -acrossView(viewport.y, viewport.height);
    float d[3];
    float right[3];
    subtract(eye, target, d);
    CrossProduct(up, d, right);
    if (!Normalize(right)) {
        return false;
    }
    const float along = sx * viewport.viewWidth / 2.0F;
    const float upward = sy * viewport.viewHeight / 2.0F;
    float p[3];
    for (int i = 0; i < 3; ++i) {
        const float h = along * right[i];
        const float v = upward * up[i];
        p[i] = target[i] + h;
        p[i] = p[i] + v;
    }
    float direction[3];
    float root[3];
    if (viewport.perspective) {
        for (int i = 0; i < 3; ++i) {
            direction[i] = p[i] - eye[i];
            root[i] = eye[i];
        }
    } else {
        subtract(target, eye, direction);
        if (!Normalize(direction)) {
            return false;
        }
        const float size = Length(d);
        for (int i = 0; i < 3; ++i) {
            direction[i] = direction[i] * size;
            root[i] = p[i] - direction[i];
        }
    }
    for (int i = 0; i < 3; ++i) {
        rayDirection[i] = direction[i];
        rayRoot[i] = root[i];
    }
    return true;
}

bool SameHalfSpace(const float* p1, const float* p2, const float* q, const float* n) {
    float from1[3];
    float from2[3];
    subtract(p1, q, from1);
    subtract(p2, q, from2);
    const float product = DotProduct(from1, n) * DotProduct(from2, n);
    return product < 0 ? false : true;
}

bool RayHitsLineSegment(const float* a, const float* b, float aperture, const float* root,
                        const float* direction, float* hitPoint, float& distance) {
    float u[3];
    float w[3];
    subtract(b, a, u);
    subtract(a, root, w);
    const float* const v = direction;
    const float bigA = DotProduct(u, v);
    const float bigB = DotProduct(u, u);
    const float bigC = DotProduct(v, v);
    float s = 0;
    float t = 0;
    if (std::fabs(bigA) < hitTolerance) {
        const float minusU[3] = {-u[0], -u[1], -u[2]};
        s = DotProduct(minusU, w) / bigB;
        t = DotProduct(v, w) / bigC;
    } else {
        const float k = bigA / bigB - bigC / bigA;
        if (std::fabs(k) < hitTolerance) {
            s = 0;
            t = DotProduct(v, w) / bigC;
        } else {
            const float first = DotProduct(u, w) / bigB;
            const float second = DotProduct(v, w) / bigA;
            t = (first - second) / k;
            s = t * bigA / bigB - first;
        }
    }
    for (int i = 0; i < 3; ++i) {
        const float step = s * u[i];
        hitPoint[i] = a[i] + step;
    }
    float gap[3];
    for (int i = 0; i < 3; ++i) {
        const float step = t * v[i];
        const float rayPoint = root[i] + step;
        gap[i] = hitPoint[i] - rayPoint;
    }
    distance = t;
    if (!(aperture > Length(gap))) {
        return false;
    }
    const double tolerance = double{hitTolerance};
    return double{s} <= 1.0 + tolerance && double{s} >= -tolerance && double{t} >= -tolerance;
}

Answer RayHitsTriangle(const float* p0, const float* p1, const float* p2, const float* root,
                       const float* direction, float* hitPoint, float& distance, bool* edgeOn) {
    if (edgeOn != nullptr) {
        *edgeOn = false;
    }
    float side1[3];
    float side2[3];
    float normal[3];
    subtract(p1, p0, side1);
    subtract(p2, p0, side2);
    CrossProduct(side1, side2, normal);
    const Answer plane = rayHitsPlane(p0, normal, root, direction, hitPoint, distance);
    if (plane != Hit) {
        return plane;
    }

    const float* const corners[5] = {p0, p1, p2, p0, p1};
    bool inside = true;
    for (int edge = 0; inside && edge < 3; ++edge) {
        float along[3];
        float outward[3];
        subtract(corners[edge + 1], corners[edge + 2], along);
        CrossProduct(along, normal, outward);
        inside = SameHalfSpace(corners[edge], hitPoint, corners[edge + 1], outward);
    }

    bool grazing = false;
    if ((!inside || edgeOn != nullptr) && hitPoint == root) {
        float unitNormal[3] = {normal[0], normal[1], normal[2]};
        float unitDirection[3] = {direction[0], direction[1], direction[2]};
        if (!Normalize(unitNormal) || !Normalize(unitDirection)) {
            return Throws;
        }
        if (std::fabs(DotProduct(unitNormal, unitDirection)) < hitTolerance) {
            grazing = true;
            if (edgeOn != nullptr) {
                *edgeOn = true;
            }
        }
    }
    if (inside || !grazing) {
        return inside ? Hit : Miss;
    }

    const float* const starts[3] = {p0, p1, p0};
    const float* const ends[3] = {p1, p2, p2};
    bool hit = false;
    for (int edge = 0; edge < 3; ++edge) {
        if (!hit) {
            hit = RayHitsLineSegment(starts[edge], ends[edge], hitTolerance, root, direction,
                                     hitPoint, distance);
            continue;
        }
        float point[3];
        float far = 0;
        if (RayHitsLineSegment(starts[edge], ends[edge], hitTolerance, root, direction, point,
                               far) &&
            distance > far) {
            for (int i = 0; i < 3; ++i) {
                hitPoint[i] = point[i];
            }
            distance = far;
        }
    }
    return hit ? Hit : Miss;
}

// --- boxes and transforms -----------------------------------------------------------------------

void Box::Add(const double* point) {
    for (int i = 0; i < 3; ++i) {
        const double oldLow = low[i];
        const double oldHigh = high[i];
        if (empty || (oldLow > point[i] && oldHigh > point[i])) {
            low[i] = point[i];
        }
        if (empty || (point[i] > oldLow && point[i] > oldHigh)) {
            high[i] = point[i];
        }
    }
    empty = false;
}

void Box::Add(const Box& other) {
    if (other.empty) {
        return;
    }
    const Box given = other;
    if (empty) {
        *this = given;
        return;
    }
    Add(given.low);
    Add(given.high);
}

void Box::Scale(double factor) {
    if (!(factor > 0)) {
        return;
    }
    for (int i = 0; i < 3; ++i) {
        low[i] = low[i] * factor;
        high[i] = high[i] * factor;
    }
}

Box Transform::Applied(const Box& box) const {
    double m[16] = {};
    int k = 0;
    for (int c = 0; c < 3; ++c) {
        for (int r = 0; r < 3; ++r) {
            m[k++] = affine[r][c];
        }
    }
    m[9] = translation[0];
    m[10] = translation[1];
    m[11] = translation[2];
    m[12] = 1.0;
    Box moved;
    moved.empty = false;
    multiplyPoint(box.low, m, moved.low);
    multiplyPoint(box.high, m, moved.high);
    return moved;
}

}  // namespace Reference

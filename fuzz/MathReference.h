/// @file
/// The arithmetic of vectors, matrices, rays, boxes and transforms a second time: slow, every step
/// spelled out, without a function of the library. Its source is compiled without fused operations.
#pragma once

namespace Reference {

// Vectors are 3 numbers, matrices 16 in column-major order; see KesVizCore/math/VectorMath.h.
float Length(const float* v);
double Length(const double* v);
float Round(float value, int digits);
bool AreClose(float a, float b, int digits);
bool AreClose(float a, float b);
// False where the library throws; v is then as far as it came.
bool Normalize(float* v);
bool Normalize(double* v);
float DotProduct(const float* a, const float* b);
void CrossProduct(const float* a, const float* b, float* out);
bool GetAngleRadians(const float* u, const float* v, float& angle);
bool GetAngleRadians(const float* u, const float* v, const float* n, float& angle);
float DegreesFromRadians(float radians);
void RotatePoint(const float* p, double degrees, const float* center, const float* axis,
                 float* out);
void RotatePointRadians(const float* p, double radians, const float* center, const float* axis,
                        float* out);
void RotatePointAroundOrigin(const float* p, double degrees, const float* axis, float* out);
bool CreateRotationMatrixRadians(float* axis, float angle, float* m);
bool CreateRotationMatrixRadians(double* axis, double angle, double* m);
void MatrixMultiplyPoint(const float* p, const float* m, float* out);
void MatrixMultiplyPoint(const double* p, const double* m, double* out);
void GetCenter(float* out, int count, const float* coords);

// See KesVizCore/math/HitTests.h. Answers are written through the same arrays as in the library,
// so that one array in two roles has its effect here too.
struct Viewport {
    int x, y, width, height;
    float viewWidth, viewHeight;
    bool perspective;
};
bool GetRayVector(const Viewport& viewport, const float* eye, const float* target, const float* up,
                  float* rayRoot, float* rayDirection);
bool SameHalfSpace(const float* p1, const float* p2, const float* q, const float* n);
bool RayHitsLineSegment(const float* a, const float* b, float aperture, const float* root,
                        const float* direction, float* hitPoint, float& distance);
enum Answer { Miss, Hit, Throws };
Answer RayHitsTriangle(const float* p0, const float* p1, const float* p2, const float* root,
                       const float* direction, float* hitPoint, float& distance, bool* edgeOn);

struct Box {
    double low[3] = {0, 0, 0};
    double high[3] = {0, 0, 0};
    bool empty = true;

    void Add(const double* point);
    void Add(const Box& other);
    void Scale(double factor);
};

struct Transform {
    double affine[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    double translation[3] = {0, 0, 0};
    bool identity = true;

    Box Applied(const Box& box) const;
};

}  // namespace Reference

#pragma once

#include <KesVizCore/Export.h>

#include <vector>

/// @file
/// Vectors, points and matrices as plain arrays.
///
/// A vector or point is 3 numbers x, y, z. A matrix is 16 numbers, column-major: row r of column
/// c at 4c + r, translation at 12..14, 1 at 15.
///
/// The small tolerances below are part of every result: a value below 1e-7 that becomes exactly
/// 0, a component next to 1 that becomes exactly 1. Floats are rounded after every operation
/// unless a function says that it works in double; then it rounds once, at the end. 1e-7,
/// 0.9999999 and 1.0000001 are the nearest floats, also where doubles are compared with them.
///
/// @par Ownership
/// Every array belongs to the caller, and none may be null.
///
/// @par Errors
/// Normalize() and what calls it throw std::invalid_argument for a vector without length. Nothing
/// else is checked; NaN and infinities pass through the arithmetic.
///
/// @par Threads
/// No function keeps anything: any thread may call any of them on arrays of its own.

namespace KesVizCore {

/// @name Sums, products and lengths
/// @{

/// The square root of x² + y² + z², formed in double.
KESVIZCORE_API float Length(const float* v);
/// As for floats, in double throughout.
KESVIZCORE_API double Length(const double* v);

/// Writes a + b and returns @p out, which may be @p a or @p b.
KESVIZCORE_API float* Add(const float* a, const float* b, float* out);
/// Writes a - b and returns @p out, which may be @p a or @p b.
KESVIZCORE_API float* Subtract(const float* a, const float* b, float* out);
/// @}

/// @name Comparisons
/// @{

/// floor(value · 10^digits + 0.5) / 10^digits in double: @p value with that many decimal places.
/// Halves go toward positive infinity, so that -2.5 becomes -2. Negative @p digits round to tens,
/// hundreds and so on. From 270 digits on and from -324 down, where double ends, the answer may be
/// infinite or NaN.
KESVIZCORE_API float Round(float value, int digits);

/// True when Round() makes the same number of both; never for a NaN.
KESVIZCORE_API bool AreClose(float a, float b, int digits);
/// True when the scalar form holds for x, y and z.
KESVIZCORE_API bool AreClose(const float* a, const float* b, int digits);
/// True when equal, or when |a - b| < (|a| + |b| + 10) · 1e-7: to about 1e-6 for small numbers,
/// relative to their size for large ones. Never for a NaN.
KESVIZCORE_API bool AreClose(float a, float b);
/// True when the scalar form holds for x, y and z.
KESVIZCORE_API bool AreClose(const float* a, const float* b);
/// True when a and -b are close component by component, without digits.
KESVIZCORE_API bool AreOpposite(const float* a, const float* b);
/// @}

/// @name Changes in place
/// @{

/// Turns the vector round and returns it.
KESVIZCORE_API float* Negate(float* v);
/// Sets the three components to 0.
KESVIZCORE_API void ClearVector(float* v);
/// Multiplies each component by @p s and returns @p v.
KESVIZCORE_API float* Multiply(float* v, float s);

/// Scales @p v to length 1 and returns it.
///
/// Components below 1e-7 in magnitude become 0, before the vector is scaled and as often as
/// scaling makes new ones; the rest is then scaled again. If at last a component lies strictly
/// between 0.9999999 and 1.0000001 in magnitude, the vector becomes exactly that axis, with the
/// component's sign: vectors within about 0.0004 of an axis end on it.
///
/// Lengths from about 2^126 on lose digits, as 1 / length does; a length that overflows leaves
/// zeros, and a NaN for an infinite component.
///
/// @throws std::invalid_argument "Invalid argument in Normalize()" when the length, without the
/// components below 1e-7, is NaN or not greater than 1e-7. Those components are 0 by then.
KESVIZCORE_API float* Normalize(float* v);
/// As for floats, in double: the vector becomes the axis only within the same two bounds, and
/// lengths overflow from about 1e154 on, where squares do.
KESVIZCORE_API double* Normalize(double* v);
/// @}

/// @name Products of two vectors, and angles
/// @{

/// a · b, formed in double. A result below 1e-7 in magnitude is returned as exactly 0.
KESVIZCORE_API float DotProduct(const float* a, const float* b);
/// Writes a × b, formed in double, and returns @p out, which must be neither @p a nor @p b.
KESVIZCORE_API float* CrossProduct(const float* a, const float* b, float* out);

/// The angle between two vectors of any length in radians, 0 to 3.1415925 (the float below pi),
/// ends included. Where the cosine is beyond ±0.9999999, that is within about 0.0005 of an end, the
/// answer is exactly that end.
/// @throws std::invalid_argument as Normalize() does for either vector.
KESVIZCORE_API float GetAngleRadians(const float* u, const float* v);
/// GetAngleRadians(u, v) · 180 / 3.1415925: 0 to 180, ends included.
/// @throws std::invalid_argument as Normalize() does for either vector.
KESVIZCORE_API float GetAngleDegrees(const float* u, const float* v);

/// The angle in radians from @p u to @p v, negative where it turns clockwise seen from the tip of
/// @p n.
///
/// Asked is whether n and u × v lie on one side of the plane through the point u with normal n.
/// That is the sign of the turn when u and v are perpendicular to n; otherwise it also depends on
/// the lengths of the vectors. An angle of 0 or 3.1415925 is never negative.
/// @throws std::invalid_argument as Normalize() does for @p u or @p v.
KESVIZCORE_API float GetAngleRadians(const float* u, const float* v, const float* n);
/// The signed radians · 180 / 3.1415925: -180 to 180, without -180.
/// @throws std::invalid_argument as Normalize() does for @p u or @p v.
KESVIZCORE_API float GetAngleDegrees(const float* u, const float* v, const float* n);
/// @}

/// @name Rotations about an axis
/// Rodrigues' rotation formula (O. Rodrigues, 1840), right-handed. @p axis is used as it is: unless
/// it has length 1 the result is no rotation. @p out may be @p p but neither @p axis nor @p center.
/// @{

/// Rotates @p p about the line through @p center along @p axis, in single precision: the angle is
/// rounded to a float once it is in radians.
KESVIZCORE_API void RotatePoint(float* p, double angleDegrees, float* center, float* axis,
                                float* out);
/// Rotates @p p about the line through @p center along @p axis, in double.
KESVIZCORE_API void RotatePointRadians(float* p, double angleRadians, float* center, float* axis,
                                       float* out);
/// Rotates @p p about the line through the origin along @p axis, in double.
KESVIZCORE_API void RotatePointAroundOrigin(float* p, double angleDegrees, float* axis, float* out);
/// @}

/// @name Matrices
/// @{

/// Writes the rotation by @p angle radians about @p axis, right-handed, into the 16 numbers at
/// @p rotatedFromOriginal: Rodrigues' formula, formed in double. @p axis itself is normalised.
/// @throws std::invalid_argument as Normalize() does; the matrix is the identity by then. So do the
/// other three.
KESVIZCORE_API void CreateRotationMatrixRadians(float* axis, float angle,
                                                float* rotatedFromOriginal);
/// As for floats.
KESVIZCORE_API void CreateRotationMatrixRadians(double* axis, double angle,
                                                double* rotatedFromOriginal);
/// CreateRotationMatrixRadians() of @p angle degrees · 0.017453292, rounded to a float.
KESVIZCORE_API void CreateRotationMatrixDegrees(float* axis, float angle,
                                                float* rotatedFromOriginal);
/// CreateRotationMatrixRadians() of @p angle degrees · 0.017453292519943295.
KESVIZCORE_API void CreateRotationMatrixDegrees(double* axis, double angle,
                                                double* rotatedFromOriginal);

/// Writes the image of the point @p p, rounding after every step. Mind the order: the point comes
/// before the matrix. The last row of the matrix is not read, and there is no division by a fourth
/// coordinate. @p out may be @p p, but not the matrix.
KESVIZCORE_API void MatrixMultiplyPoint(float* p, float* targetFromSource, float* out);
/// As for floats, in double.
KESVIZCORE_API void MatrixMultiplyPoint(double* p, double* targetFromSource, double* out);
/// @}

/// @name Centres
/// Each writes 3 floats: the mean of points packed x, y, z, summed in float from the first to the
/// last; NaN for no point. @p out must lie outside the points.
/// @{

/// Of size / 3 points; one or two values left over are ignored.
KESVIZCORE_API void GetCenter(float* out, const std::vector<float>& coords);
/// Of @p count points, 3 · count floats at @p coords, which may be null for none. A negative
/// @p count gives zeros.
KESVIZCORE_API void GetCenter(float* out, int count, const float* coords);
/// @}

}  // namespace KesVizCore

#include <KesVizCore/graph/AttributeTransform.h>

#include <cstring>

namespace KesVizCore {

namespace {

constexpr double kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

}  // namespace

// cppcheck-suppress uninitMemberVar ; SetIdentity writes it all
AttributeTransform::AttributeTransform() : Attribute(AttributeType::Transform) {
    SetIdentity(_transform);
}

AttributeTransform::AttributeTransform(double* const matrix) : Attribute(AttributeType::Transform) {
    std::memcpy(_transform, matrix, sizeof _transform);
}

double* AttributeTransform::GetTransform() {
    return _transform;
}

void AttributeTransform::SetTransform(double* const matrix) {
    std::memmove(_transform, matrix, sizeof _transform);  // it may be our own matrix
}

bool AttributeTransform::IsIdentity() {
    // Bytes are what counts: a negative zero is no identity.
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    return std::memcmp(_transform, kIdentity, sizeof kIdentity) == 0;
}

void AttributeTransform::SetIdentity(double* const m) {
    std::memcpy(m, kIdentity, sizeof kIdentity);
}

}  // namespace KesVizCore

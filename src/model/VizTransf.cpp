#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizTransf.h>

#include <algorithm>
#include <cstddef>

namespace KesVizCore {

namespace {

const double kNoTranslation[3] = {0.0, 0.0, 0.0};

}  // namespace

VizTransf::VizTransf() : VizTransf(1.0) {}

// Whatever the array holds, an element of the diagonal either differs from 1 or, being 1, differs
// from 0, so that no array passes for the identity.
VizTransf::VizTransf(const double affine[3][3], const double translation[3])
    : _translation{translation[0], translation[1], translation[2]}, _identity(false) {
    std::copy(&affine[0][0], &affine[0][0] + 9, &_affine[0][0]);
}

VizTransf::VizTransf(const double affine[3][3]) : VizTransf(affine, kNoTranslation) {}

VizTransf::VizTransf(const double translation[3]) : VizTransf(1.0) {
    for (int axis = 0; axis < 3; ++axis) {
        _translation[axis] = translation[axis];
        _identity = _identity && translation[axis] == 0.0;
    }
}

VizTransf::VizTransf(const double& scale)
    : _affine{{scale, 0.0, 0.0}, {0.0, scale, 0.0}, {0.0, 0.0, scale}},
      _translation{0.0, 0.0, 0.0},
      _identity(scale == 1.0) {}

void VizTransf::GetAffine(double out[3][3]) const {
    std::copy(&_affine[0][0], &_affine[0][0] + 9, &out[0][0]);
}

void VizTransf::GetTranslation(double out[3]) const {
    std::copy(_translation, _translation + 3, out);
}

void VizTransf::AsArray(double out[16]) const {
    for (std::size_t row = 0; row < 3; ++row) {
        std::copy(_affine[row], _affine[row] + 3, out + 4 * row);
        out[4 * row + 3] = 0.0;
    }
    std::copy(_translation, _translation + 3, out + 12);
    out[15] = 1.0;
}

bool VizTransf::IsIdentity() const {
    return _identity;
}

// The packing lacks the zero behind each column, and has always done so.
VizBox VizTransf::operator*(const VizBox& box) const {
    double packed[16] = {};
    int place = 0;
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < 3; ++row) {
            packed[place++] = _affine[row][column];
        }
    }
    std::copy(_translation, _translation + 3, packed + 9);
    packed[12] = 1.0;

    double low[3];
    double high[3];
    box.GetLow(low);
    box.GetHigh(high);
    double movedLow[3];
    double movedHigh[3];
    MatrixMultiplyPoint(low, packed, movedLow);
    MatrixMultiplyPoint(high, packed, movedHigh);
    return VizBox(movedLow, movedHigh);
}

}  // namespace KesVizCore

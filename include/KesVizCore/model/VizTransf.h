#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizBox.h>

namespace KesVizCore {

/// An affine transform: a 3 by 3 array of doubles and a translation.
///
/// @par Units and ranges
/// Any doubles are stored as given; the translation is in model units.
///
/// @par Errors
/// No operation fails. Arrays must not be null.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API VizTransf {
public:
    /// The identity.
    VizTransf();
    /// Never the identity for IsIdentity(), whatever is given.
    VizTransf(const double affine[3][3], const double translation[3]);
    /// Never the identity for IsIdentity(), whatever is given.
    explicit VizTransf(const double affine[3][3]);
    explicit VizTransf(const double translation[3]);  ///< the array is the identity
    explicit VizTransf(const double& scale);          ///< on the diagonal of the array

    void GetAffine(double out[3][3]) const;    ///< writes the array as it was given
    void GetTranslation(double out[3]) const;  ///< writes 3 doubles
    /// Writes 16 doubles: the rows of the array, each with a 0 behind it, then the translation and
    /// a 1. Read column by column, that is the transposed array with the translation at 12..14.
    void AsArray(double out[16]) const;
    /// True for the default, for a translation by exactly 0 and for a scale of exactly 1. A
    /// transform made from an array is never the identity, even where the array is.
    bool IsIdentity() const;

    /// The box of the two transformed corners, unsorted and never empty.
    ///
    /// The corners are multiplied by 16 doubles packed without the zero after each column: the
    /// array column by column, the translation, a 1 and three zeros. That is not what AsArray
    /// writes, so that the identity moves a box as well.
    VizBox operator*(const VizBox& box) const;

private:
    double _affine[3][3];
    double _translation[3];
    bool _identity;
};

}  // namespace KesVizCore

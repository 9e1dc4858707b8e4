#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/Attribute.h>

namespace KesVizCore {

/// The placement of a node: a 4 by 4 matrix of doubles.
///
/// @par Units and ranges
/// 16 doubles in the order in which the host hands them over; the library itself reads matrices
/// column by column, with the translation at 12..14. Any value is stored unchecked.
///
/// @par Ownership
/// As for every Attribute; the matrix is stored inside.
///
/// @par Errors
/// No operation fails. Array arguments must not be null.
///
/// @par Threads
/// None of its own: attributes are used on the thread of their graph.
class KESVIZCORE_API AttributeTransform : public Attribute {
public:
    /// The identity.
    AttributeTransform();
    /// Copies 16 doubles.
    explicit AttributeTransform(double* const matrix);

    /// The 16 stored doubles, valid as long as the attribute; writing changes the transform.
    virtual double* GetTransform();
    /// Copies 16 doubles.
    virtual void SetTransform(double* const matrix);
    /// Compares byte for byte: 0.9999999 on the diagonal or a negative zero is no identity.
    virtual bool IsIdentity();

    /// Writes the identity into the 16 doubles at @p m.
    static void SetIdentity(double* const m);

private:
    double _transform[16];
};

}  // namespace KesVizCore

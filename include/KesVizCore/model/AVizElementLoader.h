#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

class VizElement;

/// The base of all loaders: what makes an element, has the host fill it, and stamps its id.
///
/// Elements come into being through loaders alone. A host derives from the loader of a kind
/// (AVizEdgeLoader, AVizFaceLoader, ...), and its createAndFill calls makeOne and fills the new
/// element from the host's own data.
///
/// @par Units and ranges
/// Ids are one sequence for all loaders of the process, from 1, never restarted. It counts in 32
/// bits: after 2147483647 it goes on with negative numbers, sign-extended to 64 bits.
///
/// @par Ownership
/// The host owns the loader. The caller of Load owns the element until it hands it on.
///
/// @par Errors
/// Null where the host's createAndFill answers null; no id is used up then, nor where it throws,
/// which passes through.
///
/// @par Threads
/// One at a time for all loaders of the process: the sequence of ids is unguarded.
class KESVIZCORE_API AVizElementLoader {
public:
    /// Leaves the placement for the host to fill; it is zero until then.
    AVizElementLoader();
    AVizElementLoader(const AVizElementLoader& other);             ///< copies the placement
    AVizElementLoader& operator=(const AVizElementLoader& other);  ///< copies the placement
    virtual ~AVizElementLoader();

    /// The host's element, with the next id. It is deleted as what it is, not as a VizElement.
    VizElement* Load();

protected:
    /// A new, empty element of the loader's kind; null when memory runs out.
    virtual VizElement* makeOne() = 0;
    /// The host's part: makes an element and fills it, or answers null.
    virtual VizElement* createAndFill() = 0;

    /// Uses up the next id of the process and answers it.
    int getNextID();
    /// Whether the placement is exactly the identity: there is no tolerance.
    bool IsIdentityTranformation();

    /// The placement of what is loaded, for the host to fill and to use; read as 16 floats it is
    /// column-major, with the translation at 12..14. Nothing here applies it.
    float _transformation[4][4];
};

}  // namespace KesVizCore

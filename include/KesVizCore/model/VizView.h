#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <string>

namespace KesVizCore {

/// A named view of annotations with the plane in which they are laid out.
///
/// The plane is the frame of its base, VizPMICollection.
///
/// @par Units and ranges
/// Origin and axes are 3 floats each, the origin in model units; stored unchecked.
///
/// @par Ownership
/// Made by AVizViewLoader; owned by its VizPMIContainer.
///
/// @par Errors
/// std::bad_alloc when memory runs out for a text or a copy; nothing else fails. Arrays must not be
/// null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizView : public VizPMICollection {
public:
    static std::string TypeID();  ///< "View"

    VizView(const VizView& other);             ///< member by member
    VizView& operator=(const VizView& other);  ///< member by member

    std::string GetElementType() const override;
    ~VizView() override;

    /// Copies 3 floats each into the frame, as they are; the view is oriented from then on. What
    /// GetPlane handed out may be given.
    void SetPlane(const float* origin, const float* u, const float* v);
    /// Hands out the stored triples, valid as long as the view; the answer is IsViewOriented().
    bool GetPlane(const float*& origin, const float*& u, const float*& v) const;
    /// Writes 3 floats each; the answer is IsViewOriented().
    bool GetPlane(float* origin, float* u, float* v) const;

    /// A line each for name, visual id, mechanical id, hidden, and the plane, set or not.
    std::wstring GetViewAsString() const;

protected:
    friend class AVizViewLoader;

    VizView();
};

}  // namespace KesVizCore

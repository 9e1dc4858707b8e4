#pragma once

#include <KesVizCore/Export.h>

#include <string>

namespace KesVizCore {

class AView3DAdapter;
class VizElement;
struct Ray;

/// The base of what a host fills with the elements of one loaded model and later asks for picks.
///
/// @par Ownership
/// The host owns the container; a container owns what is added to it.
///
/// @par Errors
/// Lookups that find nothing answer false; std::bad_alloc when memory runs out.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API AVizContainer {
public:
    AVizContainer(const AVizContainer& other);             ///< the same number
    AVizContainer& operator=(const AVizContainer& other);  ///< the same number
    virtual ~AVizContainer();

    /// The name of the kind of container: "GeometryContainer", "PMIContainer".
    virtual std::string GetTypeName() = 0;
    /// Writes the element that the ray hits, which the container keeps; the body here answers false
    /// and leaves @p out alone.
    virtual bool PickVisual(AView3DAdapter* adapter, const Ray& ray, VizElement*& out);

    /// The number by which the host knows the model.
    int GetRefID() const;

protected:
    /// Any number.
    explicit AVizContainer(const int& refId);

private:
    int _refId;
};

}  // namespace KesVizCore

#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>
#include <KesVizCore/pmi/VizPMIType.h>

namespace KesVizCore {

class VizPMI;

/// Makes the annotations (VizPMI) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizPMILoader : public AVizElementLoader {
public:
    AVizPMILoader();
    AVizPMILoader(const AVizPMILoader& other);  ///< placement and kinds
    /// Copies: the loader moved from loads on.
    AVizPMILoader(AVizPMILoader&& other);  // NOLINT(performance-noexcept-move-constructor)
    AVizPMILoader& operator=(const AVizPMILoader& other);  ///< placement and kinds
    /// Copies, as the constructor does.
    AVizPMILoader& operator=(AVizPMILoader&& other);  // NOLINT(performance-noexcept-*)
    ~AVizPMILoader() override;

protected:
    /// An annotation of the kinds last given to setGroupAndType; null when memory runs out.
    VizElement* makeOne() override;
    /// The kinds of the annotations made from now on; both empty at first.
    void setGroupAndType(const VizPMIType& group, const VizPMIType& type);

private:
    VizPMIType _groupType;
    VizPMIType _type;
};

}  // namespace KesVizCore

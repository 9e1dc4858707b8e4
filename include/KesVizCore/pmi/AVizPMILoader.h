#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>
#include <KesVizCore/pmi/VizPMIType.h>

namespace KesVizCore {

class VizPMI;

/// Makes the annotations (VizPMI) that a host fills; see AVizElementLoader.
class KESVIZCORE_API AVizPMILoader : public AVizElementLoader {
public:
    AVizPMILoader();
    AVizPMILoader(const AVizPMILoader& other);
    /// Copies: the loader moved from loads on.
    AVizPMILoader(AVizPMILoader&& other);
    AVizPMILoader& operator=(const AVizPMILoader& other);
    AVizPMILoader& operator=(AVizPMILoader&& other);
    ~AVizPMILoader() override;

protected:
    /// An annotation of the kinds last given to setGroupAndType; null when memory runs out.
    VizElement* makeOne() override;
    void setGroupAndType(const VizPMIType& group, const VizPMIType& type);

private:
    VizPMIType _groupType;
    VizPMIType _type;
};

}  // namespace KesVizCore

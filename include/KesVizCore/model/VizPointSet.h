#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <string>
#include <vector>

namespace KesVizCore {

class VizPoints;

/// Lists of points that belong together.
///
/// @par Ownership
/// Made by AVizPointSetLoader; owned by its container. It owns its lists, which a copy shares: do
/// not destroy both.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPointSet : public VizElement {
public:
    static std::string TypeID();  ///< "PointSet"

    VizPointSet(const VizPointSet& other);  ///< shares the lists
    /// Drops its own lists without destroying them.
    VizPointSet& operator=(const VizPointSet& other);

    std::string GetElementType() const override;
    ~VizPointSet() override;

    const std::vector<VizPoints*>& GetPointSets() const;  ///< in the order of adding
    /// Reserves room.
    void SetPointsCountHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddPoints(VizPoints* points);

private:
    friend class AVizPointSetLoader;

    VizPointSet();

    std::vector<VizPoints*> _pointSets;
};

}  // namespace KesVizCore

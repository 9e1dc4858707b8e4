#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/model/VizElement.h>

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace KesVizCore {

class VizPMI;

/// A named set of annotations, known by their visual ids, and the plane in which they are laid
/// out: the base of views and captures.
///
/// The host gives it the names of its members and a map of all elements of the model, has it
/// accumulate extrema, and asks for render ids to show or hide, for extents and for a frame.
///
/// @par Units and ranges
/// The frame is an origin in model units and two axes, each 3 floats: at first the origin, (1, 0,
/// 0) and (0, 1, 0). The axes should have length 1, as those have that AccumulatePMIExtrema makes.
/// 3D extrema are 6 floats (min x, y, z, max x, y, z), 2D extents 4 floats (min u, min v, max u,
/// max v), the rectangle 15 floats (five points, the last as the first).
///
/// @par Ownership
/// Owns extrema, extents and rectangle, which a copy copies; pointers handed out are valid until
/// the collection is destroyed or assigned to. The map of elements is borrowed.
///
/// @par Errors
/// Without a map, frame or extrema the answers are false or null, and so where memory for one of
/// the arrays runs out. Extents and rectangle are worked out once and never again, whatever changes
/// then; accumulating again only widens the extrema. std::bad_alloc when memory runs out for texts
/// or a copy.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPMICollection : public VizElement {
public:
    /// Every element of the model by its entity; null elements are skipped. The order of EntityId
    /// is that of the numbers alone: of elements whose entities differ in type only, the map has
    /// room for one.
    using EntityMap = std::map<EntityId, const VizElement*>;

    VizPMICollection(const VizPMICollection& other);             ///< copies the arrays
    VizPMICollection& operator=(const VizPMICollection& other);  ///< copies the arrays
    ~VizPMICollection() override;

    /// True where the frame means something: it was set, or made from an annotation.
    virtual bool IsViewOriented() const;
    /// Merges the extrema of the members that are annotations, and without a frame makes one from
    /// the first that has a usable edge. Always true.
    ///
    /// Each axis of the result is at least 10 model units long, as far as floats resolve that, and
    /// the frame's origin lies within. Where there are no extrema, for want of members, a map or
    /// annotations among them, the result is a cube with sides of 20 about the frame's origin;
    /// where there are some already but no members or no map, nothing changes. A collection that
    /// had no frame before has its origin in the centre after.
    virtual bool AccumulatePMIExtrema();
    /// The 15 floats of the rectangle that frames the extents, a closed loop, which the collection
    /// owns; null without a frame or extents.
    virtual float* GetRectangle();
    /// Hands out the 4 floats of the extents of the extrema in the frame, 1.1 times as large about
    /// the frame's origin, which the collection owns; false and null without a frame or extrema.
    bool GetExtents(const float*& out);

    using VizElement::Get3DRenderID;
    using VizElement::GetEntityID;
    using VizElement::GetTreeRenderID;
    using VizElement::Set3DRenderID;
    using VizElement::SetEntityID;
    using VizElement::SetTreeRenderID;

    /// "unnamed" at first.
    std::wstring GetName() const;
    void SetName(const std::wstring& name);                  ///< any text
    std::wstring GetMechanicalID() const;                    ///< empty at first
    void SetMechanicalID(const std::wstring& mechanicalId);  ///< any text
    /// The collection's own, apart from the visual id of VizElement; empty at first.
    std::wstring GetVisualID() const;
    void SetVisualID(const std::wstring& visualId);  ///< any text
    /// The collection's own, apart from the hidden state of VizElement; false at first.
    bool GetHidden() const;
    void SetHidden(bool hidden);  ///< kept for the host
    bool GetActive() const;       ///< false at first
    void SetActive(bool active);  ///< kept for the host

    /// @name Members
    /// @{

    /// Appends the visual id of an annotation; twice is twice.
    void AddMember(std::wstring name);
    /// Reserves room; a number below 1 does nothing.
    void SetMemberCountHint(int count);
    const std::vector<std::wstring>& GetMemberList() const;  ///< in the order of adding
    int GetMemberCount() const;                              ///< names that stand twice count twice
    /// Whether the element's visual id is one of the members'; it need not stand in the map.
    bool IsMember(const VizElement& element) const;
    /// The map must outlive the collection; null takes it away.
    void SetEntityMap(const EntityMap* elements);
    /// @}

    /// @name Render ids, to show, hide or highlight
    /// The arrays are the caller's, released by RenderId::DeleteRenderIdArr. A name stands for the
    /// first element of that visual id in the order of the map. False without a map, with @p out
    /// and @p count as they were.
    /// @{

    /// The 3D render ids of the members, in their order, without those that have none; where there
    /// is any and @p withOwn is true, the collection's own behind them. Null and 0 where there is
    /// none; true even so. False when memory runs out.
    bool GetMemberRenderIds(RenderId*& out, int& count, bool withOwn) const;
    /// The 3D render ids, empty where they have none, of all elements that are no members, in the
    /// order of the map.
    ///
    /// There is room for as many as the map has entries more than there are names. Where elements
    /// that share a name, or names that name none, leave more, the answer is false with the array
    /// full; with more names than entries it is false with null and 0, as when memory runs out.
    /// Where it is true with 0 ids, there is still an array to release.
    bool GetNonmemberRenderIds(RenderId*& out, int& count) const;
    /// As GetMemberRenderIds for these names, without the collection's own. False without names.
    bool GetRenderIdsFromList(RenderId*& out, int& count, std::vector<std::wstring> names) const;
    /// @}

protected:
    /// No members, map, frame or extrema.
    VizPMICollection();

    /// Widens the extrema to hold the box of 6 floats, min x, y, z and max x, y, z; false for null
    /// and when memory runs out.
    bool MergeExtrema(const float* box);
    /// Moves the frame's origin to the centre of the extrema; false without extrema.
    bool Recenter();
    /// Makes the frame from the first edge of @p pmi with three points that form a corner, snapped
    /// to a principal plane where it lies in one. False for null; true, with nothing changed,
    /// where there is a frame already or no such edge.
    bool FabricateAxis(const VizPMI* pmi);
    /// Works out the extents; whether there are any.
    bool FindExtents();

    float _origin[3];    ///< x, y, z, in model units
    float _uAxis[3];     ///< x, y, z
    float _vAxis[3];     ///< x, y, z
    bool _viewOriented;  ///< whether the frame means something

private:
    bool fillRenderIds(RenderId*& out, int& count, const std::vector<std::wstring>& names,
                       const RenderId* own) const;
    void mergeMembers();
    void growAroundOrigin();

    float* _extrema;
    float* _extents;
    float* _rectangle;
    float* _spare;
    bool _hidden;
    bool _active;
    std::wstring _name;
    std::wstring _mechanicalId;
    std::wstring _visualId;
    std::vector<std::wstring> _members;
    const EntityMap* _elements;
    std::unordered_set<std::wstring> _memberIndex;  // the names of _members, for quick answers
};

}  // namespace KesVizCore

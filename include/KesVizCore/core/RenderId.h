#pragma once

#include <KesVizCore/Export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace KesVizCore {

/// For which display the path of a RenderId was built.
enum OriginEnum : std::int32_t {
    Unknown = 0,
    View3D = 1,   ///< built by the scene builder for the 3D view
    ViewTree = 2  ///< names an entry of the host's view tree
};

/// The name of one node of a scene graph: the ids on the path from the root down to it.
///
/// It holds numbers only. A render id of a node that is gone is still a good value; it just
/// finds nothing any more.
///
/// @code
/// KesVizCore::RenderId face({1, 12, 7, KesVizCore::FaceType, 3}, KesVizCore::View3D);
/// face.ToString();   // "[ 1, 12, 7, 10002, 3 View3D ]"
/// @endcode
///
/// @par Units and ranges
/// Any number of unsigned 64-bit ids, the outermost first.
///
/// @par Errors
/// A negative length, count or index is refused with std::length_error (SetLength and the
/// constructor from a pointer) or std::out_of_range (SetValue). What copies or grows the path, and
/// ToString, throws std::bad_alloc when memory runs out. The id stays as it was in all these cases.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API RenderId {
public:
    /// No ids, origin Unknown.
    RenderId();
    RenderId(const std::vector<std::uint64_t>& values, OriginEnum origin);  ///< copies the vector
    /// Copies @p count ids from @p values, which may be null when @p count is 0.
    RenderId(const std::uint64_t* values, const int& count, const OriginEnum& origin);

    RenderId(const RenderId& other);      ///< copies ids and origin
    RenderId(RenderId&& other) noexcept;  ///< leaves the other without ids
    /// When memory runs out, this id stays as it was.
    RenderId& operator=(const RenderId& other);
    /// The other is fit to be assigned or destroyed only.
    RenderId& operator=(RenderId&& other) noexcept;
    ~RenderId();

    /// @name Ids on the library's own heap
    /// For a host that lives on another heap: what Create makes is released by Delete, inside
    /// this library. Each Create returns an object that the caller owns, or null when memory
    /// runs out.
    /// @{
    static RenderId* CreateRenderId();  ///< without ids, origin Unknown
    /// Copies the vector.
    static RenderId* CreateRenderId(const std::vector<std::uint64_t>& values,
                                    const OriginEnum& origin);
    /// Copies @p count ids; null and a negative @p count are taken as by the constructor.
    static RenderId* CreateRenderId(const std::uint64_t* values, const int& count,
                                    const OriginEnum& origin);
    /// Destroys one id and sets the pointer to null; null is left alone.
    static void DeleteRenderId(RenderId*& id);
    /// Destroys an array of ids that this library answered, such as
    /// VizPMICollection::GetMemberRenderIds, and sets the pointer to null; null is left alone.
    static void DeleteRenderIdArr(RenderId*& ids);
    /// @}

    OriginEnum GetOrigin() const;              ///< Unknown at first
    void SetOrigin(const OriginEnum& origin);  ///< the ids stay

    /// Appends one id: one level deeper.
    void AddValue(const std::uint64_t& value);
    /// Replaces the id at @p index, first growing the path with zeros to hold that index.
    void SetValue(const int& index, const std::uint64_t& value);
    /// Cuts the path to @p length ids or grows it with zeros.
    void SetLength(const int& length);
    int Length() const;  ///< the number of ids
    /// True without ids; the origin is not looked at.
    bool IsEmpty() const;
    /// The id at @p index, 0 <= index < Length(), unchecked; writable through a const id too, and
    /// valid until the length changes.
    std::uint64_t& operator[](int index) const;
    /// Removes all ids and sets the origin to Unknown.
    void Clear();

    /// Origin, length and every id equal.
    bool operator==(const RenderId& other) const;
    bool operator!=(const RenderId& other) const;  ///< the opposite of ==

    /// "[ 7, 12, 3 View3D ]"; the last word is the origin.
    std::string ToString() const;

private:
    OriginEnum _origin;
    mutable std::vector<std::uint64_t> _values;
};

}  // namespace KesVizCore

namespace std {

/// Lets hosts key unordered containers by render ids.
template <>
struct hash<KesVizCore::RenderId> {
    /// Equal ids have equal hashes. The number may change with the version of the library: do not
    /// store it.
    KESVIZCORE_API size_t operator()(const KesVizCore::RenderId& id) const noexcept;
};

}  // namespace std

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
/// constructor from a pointer) or std::out_of_range (SetValue); the id stays as it was.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API RenderId {
public:
    /// No ids, origin Unknown.
    RenderId();
    RenderId(const std::vector<std::uint64_t>& values, OriginEnum origin);
    /// Copies @p count ids from @p values, which may be null when @p count is 0.
    RenderId(const std::uint64_t* values, const int& count, const OriginEnum& origin);

    RenderId(const RenderId& other);
    RenderId(RenderId&& other) noexcept;
    /// When memory runs out, this id stays as it was.
    RenderId& operator=(const RenderId& other);
    RenderId& operator=(RenderId&& other) noexcept;
    ~RenderId();

    /// @name Ids on the library's own heap
    /// For a host that lives on another heap: what Create makes is released by Delete, inside
    /// this library. Each Create returns an object that the caller owns, or null when memory
    /// runs out.
    /// @{
    static RenderId* CreateRenderId();
    static RenderId* CreateRenderId(const std::vector<std::uint64_t>& values,
                                    const OriginEnum& origin);
    /// A negative @p count is refused as by the constructor.
    static RenderId* CreateRenderId(const std::uint64_t* values, const int& count,
                                    const OriginEnum& origin);
    /// Destroys one id and sets the pointer to null; null is left alone.
    static void DeleteRenderId(RenderId*& id);
    /// Destroys an array of ids made by new[] and sets the pointer to null; null is left alone.
    static void DeleteRenderIdArr(RenderId*& ids);
    /// @}

    OriginEnum GetOrigin() const;
    void SetOrigin(const OriginEnum& origin);

    /// Appends one id: one level deeper.
    void AddValue(const std::uint64_t& value);
    /// Replaces the id at @p index, first growing the path with zeros to hold that index.
    void SetValue(const int& index, const std::uint64_t& value);
    /// Cuts the path to @p length ids or grows it with zeros.
    void SetLength(const int& length);
    int Length() const;
    /// True without ids; the origin is not looked at.
    bool IsEmpty() const;
    /// The id at @p index, 0 <= index < Length(), unchecked; writable through a const id too.
    std::uint64_t& operator[](int index) const;
    /// Removes all ids and sets the origin to Unknown.
    void Clear();

    /// Origin, length and every id equal.
    bool operator==(const RenderId& other) const;
    bool operator!=(const RenderId& other) const;

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
    KESVIZCORE_API size_t operator()(const KesVizCore::RenderId& id) const noexcept;
};

}  // namespace std

#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <string>
#include <vector>

namespace KesVizCore {

class VizPolygon;

/// A surface in triangles: vertices with normals, and the polygons that index them.
///
/// @par Units and ranges
/// Vertices and normals are triples x, y, z of floats, one after the other, the vertices in model
/// units. That there is a normal for each vertex is not checked.
///
/// @par Ownership
/// Made by AVizFaceLoader; owned by the mesh or annotation that holds it. It owns its polygons,
/// which a copy shares: do not destroy both.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizFace : public VizElement {
public:
    static std::string TypeID();  ///< "Face"

    VizFace(const VizFace& other);             ///< shares the polygons
    VizFace& operator=(const VizFace& other);  ///< drops its own polygons without destroying them

    std::string GetElementType() const override;
    ~VizFace() override;
    /// Moves the vertices by 16 floats, read column by column, with the translation at 12..14, and
    /// turns the normals by the same without the translation. These are not brought back to length
    /// 1: a scale stretches them.
    void ApplyTransform(float targetFromSource[4][4]) override;

    const std::vector<float>& GetVertices() const;  ///< x, y, z of each
    /// Appends a copy of @p count triples, 3 · count floats; @p data may be null for none.
    void SetVertices(std::size_t count, const float* data);
    const std::vector<float>& GetNormals() const;  ///< x, y, z of each
    /// Appends a copy of @p count triples, 3 · count floats; @p data may be null for none.
    void SetNormals(std::size_t count, const float* data);
    const std::vector<VizPolygon*>& GetPolygons() const;  ///< in the order of adding
    /// Reserves room.
    void SetPolygonSizeHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddPolygon(VizPolygon* polygon);
    std::wstring GetMechanicalID() const;                    ///< empty at first
    void SetMechanicalID(const std::wstring& mechanicalId);  ///< any text
    /// Makes the colour opaque; an element without a colour stays without.
    void RemoveTransparency();

private:
    friend class AVizFaceLoader;

    VizFace();
    void ApplyTransformToNormals(float targetFromSource[4][4]);

    std::vector<float> _vertices;
    std::vector<float> _normals;
    std::vector<VizPolygon*> _polygons;
    std::wstring _mechanicalId;
};

}  // namespace KesVizCore

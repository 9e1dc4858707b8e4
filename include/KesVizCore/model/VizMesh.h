#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace KesVizCore {

class VizEdge;
class VizFace;

/// Faces and edges that belong together, usually those of one body.
///
/// @par Ownership
/// Made by AVizMeshLoader; owned by its container. It owns its faces and edges, and destroys the
/// faces first; a copy shares them: do not destroy both.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizMesh : public VizElement {
public:
    static std::string TypeID();  ///< "Mesh"

    VizMesh(const VizMesh& other);             ///< shares faces and edges
    VizMesh& operator=(const VizMesh& other);  ///< drops its own without destroying them

    std::string GetElementType() const override;
    ~VizMesh() override;

    const std::vector<VizFace*>& GetFaces() const;  ///< in the order of adding
    /// Reserves room.
    void SetFaceCountHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddFace(VizFace* face);
    const std::vector<VizEdge*>& GetEdges() const;  ///< in the order of adding
    /// Reserves room.
    void SetEdgeCountHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddEdge(VizEdge* edge);
    std::wstring GetMechanicalID() const;                    ///< empty at first
    void SetMechanicalID(const std::wstring& mechanicalId);  ///< any text

    /// @name Maps by visual id
    /// Enter the mesh, then its faces, then its edges, without null ones; of several of one visual
    /// id, the empty one included, the last stays. What else the map holds stays.
    /// @{

    /// The elements themselves, which stay the mesh's.
    void FillVisuIdMap(std::map<std::wstring, VizElement*>& elements);
    /// Their mechanical ids.
    void FillVisuIdMap(std::map<std::wstring, std::wstring>& mechanicalIds);
    /// @}

private:
    friend class AVizMeshLoader;

    VizMesh();

    std::vector<VizFace*> _faces;
    std::vector<VizEdge*> _edges;
    std::wstring _mechanicalId;
};

}  // namespace KesVizCore

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
/// No operation fails, but for the memory that runs out.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizMesh : public VizElement {
public:
    static std::string TypeID();

    VizMesh(const VizMesh& other);
    VizMesh& operator=(const VizMesh& other);

    std::string GetElementType() const override;
    ~VizMesh() override;

    const std::vector<VizFace*>& GetFaces() const;
    /// Reserves room.
    void SetFaceCountHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddFace(VizFace* face);
    const std::vector<VizEdge*>& GetEdges() const;
    /// Reserves room.
    void SetEdgeCountHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddEdge(VizEdge* edge);
    std::wstring GetMechanicalID() const;
    void SetMechanicalID(const std::wstring& mechanicalId);

    /// @name Maps by visual id
    /// Enter the mesh, then its faces, then its edges; of several of one visual id, the empty one
    /// included, the last stays.
    /// @{
    void FillVisuIdMap(std::map<std::wstring, VizElement*>& elements);
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

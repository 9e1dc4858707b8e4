#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizContainer.h>

#include <cstddef>
#include <string>
#include <vector>

namespace KesVizCore {

class VizMesh;
class VizPointSet;
class VizWire;

/// The tessellated geometry of one model: meshes, wires and point sets, each of the model itself
/// and of its construction geometry (CG).
///
/// @par Units and ranges
/// The scale factor is kept for the host; nothing here applies it.
///
/// @par Ownership
/// Owns everything added, and destroys it in the order meshes, wires, point sets, then the same
/// of the construction geometry. A copy shares all of it: do not destroy both.
///
/// @par Errors
/// No operation fails, but for the memory that runs out.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizContainer : public AVizContainer {
public:
    static std::string TypeID();

    explicit VizContainer(const int& refId);
    VizContainer(const VizContainer& other);
    VizContainer& operator=(const VizContainer& other);
    ~VizContainer() override;

    std::string GetTypeName() override;
    /// The mesh, wire or point set to which what the adapter picks belongs.
    ///
    /// The adapter's PickVisual answers the render id of a node. The first element, in the order
    /// of the lists, answers to it that has an entity id, and a 3D render id of the same origin
    /// which is the picked one or a leading part of it. False, with @p out as it was, without an
    /// adapter, a hit or such an element.
    bool PickVisual(AView3DAdapter* adapter, const Ray& ray, VizElement*& out) override;

    /// @name Lists
    /// Each Add appends and takes over, null included; each hint reserves room.
    /// @{
    const std::vector<VizMesh*>& GetMeshes() const;
    void AddMesh(VizMesh* mesh);
    void SetMeshCountHint(std::size_t count);
    const std::vector<VizWire*>& GetWires() const;
    void AddWire(VizWire* wire);
    void SetWireCountHint(std::size_t count);
    const std::vector<VizPointSet*>& GetPointSets() const;
    void AddPointSet(VizPointSet* pointSet);
    void SetPointSetCountHint(std::size_t count);
    const std::vector<VizMesh*>& GetCGMeshes() const;
    void AddCGMesh(VizMesh* mesh);
    void SetCGMeshCountHint(std::size_t count);
    const std::vector<VizWire*>& GetCGWires() const;
    void AddCGWire(VizWire* wire);
    void SetCGWireCountHint(std::size_t count);
    const std::vector<VizPointSet*>& GetCGPointSets() const;
    void AddCGPointSet(VizPointSet* pointSet);
    void SetCGPointSetCountHint(std::size_t count);
    /// @}

    /// 1.0 at first.
    float GetScaleFactor() const;
    void SetScaleFactor(float factor);

private:
    float _scaleFactor;
    std::vector<VizMesh*> _meshes;
    std::vector<VizWire*> _wires;
    std::vector<VizPointSet*> _pointSets;
    std::vector<VizMesh*> _cgMeshes;
    std::vector<VizWire*> _cgWires;
    std::vector<VizPointSet*> _cgPointSets;
};

}  // namespace KesVizCore

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
/// The scale factor is any float, kept for the host; nothing here applies it.
///
/// @par Ownership
/// Owns everything added, and destroys it in the order meshes, wires, point sets, then the same
/// of the construction geometry. A copy shares all of it: do not destroy both.
///
/// @par Errors
/// std::bad_alloc when memory runs out: what was to be added is then still the caller's.
/// std::length_error for a count beyond what a vector can hold. PickVisual passes on what the
/// adapter throws.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizContainer : public AVizContainer {
public:
    static std::string TypeID();  ///< "GeometryContainer"

    /// @p refId is any number; see GetRefID.
    explicit VizContainer(const int& refId);
    VizContainer(const VizContainer& other);  ///< shares all elements
    /// Drops its own elements without destroying them.
    VizContainer& operator=(const VizContainer& other);
    ~VizContainer() override;

    std::string GetTypeName() override;  ///< TypeID()
    /// The mesh, wire or point set to which what the adapter picks belongs.
    ///
    /// The adapter's PickVisual answers the render id of a node. The first element, in the order
    /// of the lists, answers to it that has an entity id, and a 3D render id of the same origin
    /// which is the picked one or a leading part of it. False, with @p out as it was, without an
    /// adapter, a hit or such an element. What @p out points to is the container's.
    bool PickVisual(AView3DAdapter* adapter, const Ray& ray, VizElement*& out) override;

    /// @name Lists
    /// Each Add appends and takes over, null included; what is added twice is destroyed twice. Each
    /// hint reserves room and changes nothing else. The lists are in the order of adding.
    /// @{
    const std::vector<VizMesh*>& GetMeshes() const;           ///< faces and edges of the model
    void AddMesh(VizMesh* mesh);                              ///< to GetMeshes()
    void SetMeshCountHint(std::size_t count);                 ///< for GetMeshes()
    const std::vector<VizWire*>& GetWires() const;            ///< free edges of the model
    void AddWire(VizWire* wire);                              ///< to GetWires()
    void SetWireCountHint(std::size_t count);                 ///< for GetWires()
    const std::vector<VizPointSet*>& GetPointSets() const;    ///< points of the model
    void AddPointSet(VizPointSet* pointSet);                  ///< to GetPointSets()
    void SetPointSetCountHint(std::size_t count);             ///< for GetPointSets()
    const std::vector<VizMesh*>& GetCGMeshes() const;         ///< of construction geometry
    void AddCGMesh(VizMesh* mesh);                            ///< to GetCGMeshes()
    void SetCGMeshCountHint(std::size_t count);               ///< for GetCGMeshes()
    const std::vector<VizWire*>& GetCGWires() const;          ///< of construction geometry
    void AddCGWire(VizWire* wire);                            ///< to GetCGWires()
    void SetCGWireCountHint(std::size_t count);               ///< for GetCGWires()
    const std::vector<VizPointSet*>& GetCGPointSets() const;  ///< of construction geometry
    void AddCGPointSet(VizPointSet* pointSet);                ///< to GetCGPointSets()
    void SetCGPointSetCountHint(std::size_t count);           ///< for GetCGPointSets()
    /// @}

    /// 1.0 at first.
    float GetScaleFactor() const;
    void SetScaleFactor(float factor);  ///< any number

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

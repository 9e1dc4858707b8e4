#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/model/AVizContainer.h>

#include <map>
#include <string>
#include <vector>

namespace KesVizCore {

class SemanticPMI;
class VizCapture;
class VizMesh;
class VizPMI;
class VizPointSet;
class VizView;
class VizWire;

/// The product manufacturing information of one model: annotations by mechanical id, what they
/// mean, the views and captures that show them, and their construction geometry (CG).
///
/// @par Units and ranges
/// The matrix is 16 doubles, column-major, with the translation at 12..14. Matrix and scale factor
/// are kept for the host; nothing here applies them.
///
/// @par Ownership
/// Owns everything added: the annotations of the list, construction geometry, semantic records,
/// views and captures, destroyed in that order, and the matrix. A copy shares all of it: do not
/// destroy both.
///
/// @par Errors
/// Of annotations and semantic records null is ignored, and what is there already is refused
/// without a word and stays the caller's. Lookups that find nothing answer false or null.
/// std::bad_alloc when memory runs out. PickVisual passes on what the adapter throws.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPMIContainer : public AVizContainer {
public:
    static std::string TypeID();  ///< "PMIContainer"

    /// @p refId is any number; see GetRefID.
    explicit VizPMIContainer(const int& refId);
    VizPMIContainer(const VizPMIContainer& other);  ///< shares everything
    /// Drops its own without destroying it.
    VizPMIContainer& operator=(const VizPMIContainer& other);
    ~VizPMIContainer() override;

    std::string GetTypeName() override;  ///< TypeID()
    /// As VizContainer::PickVisual, over annotations, construction meshes, wires and point sets,
    /// views and captures, in this order.
    bool PickVisual(AView3DAdapter* adapter, const Ray& ray, VizElement*& out) override;

    /// @name Adding
    /// @{

    /// Takes the annotation over, unless one of the same mechanical id is here. Any number may
    /// have the empty id; the map names the last of them.
    void AddVizPMI(VizPMI* pmi);
    /// Takes the record over, unless one of the same Id is here.
    void AddSemanticPMI(SemanticPMI* record);
    /// This one and the next four append and take over whatever is given: null is kept, and what is
    /// added twice is destroyed twice.
    void AddVizMarkCGMesh(VizMesh* mesh);
    void AddVizMarkCGWire(VizWire* wire);              ///< as for a mesh
    void AddVizMarkCGPointSet(VizPointSet* pointSet);  ///< as for a mesh
    void AddView(VizView* view);                       ///< as for a mesh
    void AddCapture(VizCapture* capture);              ///< as for a mesh
    /// @}

    /// @name Lists, in the order of adding
    /// @{
    const std::vector<VizPMI*>& GetVizPMIs() const;                  ///< without null
    const std::vector<VizMesh*>& GetVizMarkCGMeshes() const;         ///< null where null was added
    const std::vector<VizWire*>& GetVizMarkCGWires() const;          ///< null where null was added
    const std::vector<VizPointSet*>& GetVizMarkCGPointSets() const;  ///< null where null was added
    const std::vector<VizView*>& GetViews() const;                   ///< null where null was added
    const std::vector<VizCapture*>& GetCaptures() const;             ///< null where null was added
    /// The annotations by mechanical id.
    const std::map<std::wstring, VizPMI*>& GetVizPMIMap() const;
    /// The semantic records by Id.
    const std::map<std::wstring, SemanticPMI*>& GetSemanticPMIs() const;
    bool HasSemanticPMI() const;  ///< whether there is any record
    /// True without annotations in the list, semantic records and construction geometry. Views and
    /// captures do not count.
    bool IsEmpty() const;
    /// @}

    /// @name Asking by mechanical id
    /// @{

    /// The annotation, or null. The container keeps it.
    VizPMI* GetVizPMI(const std::wstring& mechId) const;
    /// The record, which the container keeps; false, with @p out as it was, without one.
    bool GetSemanticPMI(const std::wstring& key, SemanticPMI*& out) const;
    /// The record's ToString, or false and "Semantic PMI not found.".
    bool GetSemanticPMIAsString(const std::wstring& key, std::wstring& out) const;
    /// Appends what of the model the record applies to; whether @p out then holds anything.
    bool GetBREPLinks(const std::wstring& key, std::vector<EntityId>& out) const;
    /// As SemanticPMI::GetPMILinks; false, with @p out as it was, without a record.
    bool GetPMILinks(const std::wstring& key, std::vector<std::wstring>& out) const;
    /// The first that is not empty of the record's name and label and the annotation's name and
    /// type name; empty where all are. False, with @p out as it was, where there is neither.
    bool GetDisplayName(const std::wstring& mechId, std::wstring& out) const;
    /// @}

    /// Destroys the annotation and the semantic record of that id; false where there is neither.
    bool DeletePMI(const std::wstring& mechId);
    /// Empties the list of annotations. They live on, and the map still names them, so that
    /// DeletePMI still destroys them. The destructor does not: it destroys those of the list alone.
    void ClearPMIWithoutDeletingIt();

    /// @name Matrix and scale
    /// @{

    /// Sets the matrix: 16 numbers as they stand; 9 or 4 numbers, each 3 or 2 of them a column, in
    /// the upper left of the identity; with any other count the identity, for which @p matrix may
    /// be null. Where memory runs out on first use, nothing happens.
    void SetMatrix(const double* matrix, int count);
    void SetMatrix(const float* matrix, int count);  ///< the numbers are widened to double
    /// The 16 stored numbers, which the container owns and the caller may change, or null before
    /// SetMatrix.
    double* GetMatrix() const;
    /// 1.0 at first.
    double GetScaleFactor() const;
    void SetScaleFactor(const double& factor);  ///< any number
    /// @}

private:
    std::vector<VizPMI*> _pmis;
    std::vector<VizMesh*> _cgMeshes;
    std::vector<VizWire*> _cgWires;
    std::vector<VizPointSet*> _cgPointSets;
    std::vector<VizCapture*> _captures;
    std::vector<VizView*> _views;
    std::map<std::wstring, VizPMI*> _pmiMap;
    double _scaleFactor;
    double* _matrix;
    std::map<std::wstring, SemanticPMI*> _semanticMap;
};

}  // namespace KesVizCore

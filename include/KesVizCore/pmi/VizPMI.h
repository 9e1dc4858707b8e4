#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>
#include <KesVizCore/pmi/VizPMIType.h>

#include <cstdint>
#include <string>
#include <vector>

namespace KesVizCore {

class VizEdge;
class VizFace;
class VizText;

/// One annotation of the product manufacturing information: a dimension, a tolerance, a note, as
/// the texts, edges and faces with which it is drawn.
///
/// What it means to a machine stands in a SemanticPMI of the same mechanical id.
///
/// @par Units and ranges
/// Extrema are 6 floats in model units: min x, y, z, max x, y, z. They take up edges and texts as
/// these are when they are added, not faces, and start as zeros.
///
/// @par Ownership
/// Made by AVizPMILoader; owned by its VizPMIContainer. It owns its edges, faces and texts and
/// destroys them in that order; a copy shares them: do not destroy both.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails. Arrays must not be null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPMI : public VizElement {
public:
    static std::string TypeID();  ///< "PMI"

    VizPMI(const VizPMI& other);             ///< shares edges, faces and texts
    VizPMI& operator=(const VizPMI& other);  ///< drops its own without destroying them

    std::string GetElementType() const override;
    ~VizPMI() override;

    /// @name Graphics
    /// Each Add appends and takes over; null is ignored. Each hint reserves room and changes
    /// nothing else. The lists are in the order of adding.
    /// @{
    const std::vector<VizEdge*>& GetEdges() const;  ///< leader and extension lines
    void SetEdgeCountHint(std::uint64_t count);     ///< for GetEdges()
    /// The first edge replaces the extrema by its own, and with them what texts added before; each
    /// further one widens them.
    void AddEdge(VizEdge* edge);
    const std::vector<VizFace*>& GetFaces() const;  ///< filled areas, such as arrow heads
    void SetFaceCountHint(std::uint64_t count);     ///< for GetFaces()
    void AddFace(VizFace* face);                    ///< the extrema stay
    const std::vector<VizText*>& GetTexts() const;  ///< what is written
    void SetTextCountHint(std::uint64_t count);     ///< for GetTexts()
    /// Widens the extrema to hold the text's anchor point. Add edges first.
    void AddText(VizText* text);
    /// Writes 6 floats; @p out is not null.
    void GetExtrema(float* out) const;
    /// The 6 stored floats, valid as long as the annotation.
    const float* GetExtrema() const;
    /// @}

    VizPMIType GetGroupType() const;         ///< the group of kinds, from the loader
    VizPMIType GetType() const;              ///< the kind, from the loader
    std::wstring GetName() const;            ///< empty at first
    void SetName(const std::wstring& name);  ///< any text
    std::wstring GetMechanicalID() const;    ///< empty at first
    /// Set it before a container takes the annotation, which it keeps by this id.
    void SetMechanicalID(const std::wstring& mechanicalId);
    /// The visual ids of the model's elements that the annotation speaks of.
    std::vector<std::wstring> GetLinkedEntityIDs() const;
    void SetLinkedEntityIDs(std::vector<std::wstring> visualIds);  ///< replaces all
    /// The mechanical ids of the same elements in the same order; ToString reads them.
    void SetLinkedEntityMechIDs(std::vector<std::wstring> mechanicalIds);
    /// False at first; apart from the hidden state of VizElement.
    bool GetHidden() const;
    void SetHidden(bool hidden);  ///< takes no part in the extrema

    /// The names, ids and links for a reader, in lines. Where the two lists of links differ in
    /// length every mechanical id reads "-1".
    std::wstring ToString() const;

private:
    friend class AVizPMILoader;

    VizPMI() : VizPMI(VizPMIType(), VizPMIType()) {}
    VizPMI(const VizPMIType& groupType, const VizPMIType& type);

    std::vector<VizEdge*> _edges;
    std::vector<VizFace*> _faces;
    std::vector<VizText*> _texts;
    VizPMIType _groupType;
    VizPMIType _type;
    float _extrema[6];
    std::wstring _name;
    std::wstring _mechanicalId;
    std::vector<std::wstring> _linkedEntityIds;
    std::vector<std::wstring> _linkedEntityMechIds;
    bool _hidden;
};

}  // namespace KesVizCore

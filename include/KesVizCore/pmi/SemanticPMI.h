#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/EntityId.h>

#include <map>
#include <string>
#include <vector>

namespace KesVizCore {

/// What one annotation means to a machine: its values, tolerances and references.
///
/// How it is drawn stands in the VizPMI whose mechanical id is this record's Id.
///
/// @par Units and ranges
/// Millimetres and radians, as texts.
///
/// @par Ownership
/// A value. VizPMIContainer::AddSemanticPMI takes one over that was made with new.
///
/// @par Errors
/// std::bad_alloc when memory runs out; nothing else fails.
///
/// @par Threads
/// A value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API SemanticPMI {
public:
    SemanticPMI();
    SemanticPMI(const SemanticPMI& other);  ///< member by member
    /// The other is fit to be assigned or destroyed only.
    SemanticPMI(SemanticPMI&& other) noexcept;
    SemanticPMI& operator=(const SemanticPMI& other);  ///< member by member
    /// The other is fit to be assigned or destroyed only.
    SemanticPMI& operator=(SemanticPMI&& other) noexcept;
    /// The container destroys records through it, also those of a derived class.
    virtual ~SemanticPMI();

    /// The texts under "DatumRefDatas", split at each comma with a blank behind it; empty pieces
    /// count. False, with @p links as it was, without that attribute.
    bool GetPMILinks(std::vector<std::wstring>& links) const;

    /// The record for a reader, in lines: ids, the attributes that have a printed key and a value,
    /// the linked entities and annotations.
    std::wstring ToString() const;

    std::wstring Name;   ///< what users call the annotation, if it is not empty
    std::wstring Label;  ///< the same where there is no name
    std::wstring Id;     ///< the mechanical id of the annotation
    /// By key. ToString prints those it knows: "Value", "LowerVal", "UpperVal", "Precision",
    /// "MainType", "SubType", "Tolerance Value", "Tolerance Type", "Value Type", "TolNote",
    /// "AllAround", "IsComposite", "ProjTolZoneLength", "RateUnit1", "RateUnit2",
    /// "RefineTolerance", "ShiftValue", "ApplicabilityType", "ObtentionType", "Manages_Geometry"
    /// and "Hidden".
    std::map<std::wstring, std::wstring> Attributes;
    std::vector<EntityId> LinkedEntities;  ///< what of the model the annotation applies to
};

}  // namespace KesVizCore

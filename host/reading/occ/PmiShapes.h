#pragma once

/// @file
/// The shapes that entities of the exchange file became.

#include "reading/part21/ExchangeValue.h"

#include <Standard_Handle.hxx>
#include <TopoDS_Shape.hxx>
#include <array>
#include <optional>
#include <string>
#include <unordered_map>

class STEPCAFControl_Reader;
class Standard_Transient;
class TDocStd_Document;
class Transfer_TransientProcess;

namespace kesview {

/// A box along the axes; empty as it is made.
struct PmiBox {
    std::array<double, 3> low = {1, 1, 1};
    std::array<double, 3> high = {-1, -1, -1};

    bool IsEmpty() const { return low[0] > high[0]; }
    void Add(const std::array<double, 3>& point);
    std::array<double, 3> Centre() const;
    double Diagonal() const;
};

/// Looks up shapes by the number of their entity.
class PmiShapes {
public:
    /// @p reader must outlive this and have transferred its file.
    explicit PmiShapes(const STEPCAFControl_Reader& reader);

    /// A null shape where the entity became none.
    TopoDS_Shape Find(EntityNumber number) const;
    /// The XCAF label entry of a product definition; empty where there is none.
    std::string EntryOf(EntityNumber productDefinition) const;

private:
    const STEPCAFControl_Reader& _reader;
    Handle(Transfer_TransientProcess) _process;
    std::unordered_map<EntityNumber, Handle(Standard_Transient)> _entities;
};

/// The box of a shape without its triangles; empty where it has none, or none that is sensible.
PmiBox boxOf(const TopoDS_Shape& shape);

/// The box of everything at the top of the document.
PmiBox boxOfDocument(const Handle(TDocStd_Document) & source);

}  // namespace kesview

#pragma once

/// @file
/// A STEP file as Open CASCADE reads it, to compare with.

#include <STEPCAFControl_Reader.hxx>
#include <Standard_Handle.hxx>
#include <TDocStd_Document.hxx>
#include <set>
#include <string>

namespace kesview {

class StepDocument {
public:
    /// Fails the running test where the file cannot be read.
    explicit StepDocument(const std::string& path);

    /// "type code, value", one for each that is more than a drawing. A value of 0 is one that the
    /// reader could not read, and left out; so are
    /// dimensions between limits, of which it tells the middle of any two values. Dimensions stay
    /// in the unit of the file, angles in degrees; tolerances are in millimetres.
    std::multiset<std::string> Dimensions() const;
    std::multiset<std::string> Tolerances() const;
    /// The letters of the datums, each once.
    std::set<std::string> DatumLetters() const;

private:
    STEPCAFControl_Reader _reader;
    Handle(TDocStd_Document) _document;
};

/// As the sets above tell it.
std::string typeAndValue(int typeCode, double value);

}  // namespace kesview

#include "StepDocument.h"

#include <gtest/gtest.h>

#include <TDF_LabelSequence.hxx>
#include <XCAFDimTolObjects_DatumObject.hxx>
#include <XCAFDimTolObjects_DimensionObject.hxx>
#include <XCAFDimTolObjects_GeomToleranceObject.hxx>
#include <XCAFDoc_Datum.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_Dimension.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GeomTolerance.hxx>
#include <array>
#include <cstdio>

namespace kesview {

StepDocument::StepDocument(const std::string& path) : _document(new TDocStd_Document("BinXCAF")) {
    XCAFDoc_DocumentTool::SetLengthUnit(_document, 0.001);
    _reader.SetGDTMode(true);
    if (_reader.ReadFile(path.c_str()) != IFSelect_RetDone || !_reader.Transfer(_document)) {
        ADD_FAILURE() << path << " cannot be read";
    }
}

std::multiset<std::string> StepDocument::Dimensions() const {
    std::multiset<std::string> dimensions;
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::DimTolTool(_document->Main())->GetDimensionLabels(labels);
    for (const TDF_Label& label : labels) {
        Handle(XCAFDoc_Dimension) attribute;
        label.FindAttribute(XCAFDoc_Dimension::GetID(), attribute);
        const auto dimension = attribute->GetObject();
        const bool drawingOnly =
            dimension->GetType() == XCAFDimTolObjects_DimensionType_CommonLabel ||
            dimension->GetType() == XCAFDimTolObjects_DimensionType_DimensionPresentation;
        const bool unsure = dimension->IsDimWithRange() || dimension->GetValue() == 0;
        if (!drawingOnly && !unsure) {
            dimensions.insert(typeAndValue(dimension->GetType(), dimension->GetValue()));
        }
    }
    return dimensions;
}

std::multiset<std::string> StepDocument::Tolerances() const {
    std::multiset<std::string> tolerances;
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::DimTolTool(_document->Main())->GetGeomToleranceLabels(labels);
    for (const TDF_Label& label : labels) {
        Handle(XCAFDoc_GeomTolerance) attribute;
        label.FindAttribute(XCAFDoc_GeomTolerance::GetID(), attribute);
        const auto tolerance = attribute->GetObject();
        if (tolerance->GetValue() != 0) {
            tolerances.insert(typeAndValue(tolerance->GetType(), tolerance->GetValue()));
        }
    }
    return tolerances;
}

std::set<std::string> StepDocument::DatumLetters() const {
    std::set<std::string> letters;
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::DimTolTool(_document->Main())->GetDatumLabels(labels);
    for (const TDF_Label& label : labels) {
        Handle(XCAFDoc_Datum) attribute;
        label.FindAttribute(XCAFDoc_Datum::GetID(), attribute);
        const auto datum = attribute->GetObject();
        if (!datum->GetName().IsNull() && !datum->GetName()->IsEmpty()) {
            letters.insert(datum->GetName()->ToCString());
        }
    }
    return letters;
}

std::string typeAndValue(int typeCode, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%d %.6g", typeCode, value);
    return text.data();
}

}  // namespace kesview

#include "sample/SampleAssembly.h"

#include <TCollection_ExtendedString.hxx>
#include <TDataStd_Name.hxx>
#include <TopLoc_Location.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>

namespace kesview {
namespace {

void setName(const TDF_Label& label, const std::string& name) {
    constexpr Standard_Boolean isUtf8 = Standard_True;
    TDataStd_Name::Set(label, TCollection_ExtendedString(name.c_str(), isUtf8));
}

TopLoc_Location at(double x, double y, double z) {
    gp_Trsf move;
    move.SetTranslation(gp_Vec(x, y, z));
    return TopLoc_Location(move);
}

/// Makes labels of a document.
class Builder {
public:
    explicit Builder(const Handle(TDocStd_Document) & document)
        : _shapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
          _layers(XCAFDoc_DocumentTool::LayerTool(document->Main())) {}

    TDF_Label AddPart(const SamplePart& part, const std::string& name) {
        constexpr Standard_Boolean asAssembly = Standard_False;
        const TDF_Label label = _shapes->AddShape(part.shape, asAssembly);
        setName(label, name);
        for (const NamedFace& face : part.faces)
            setName(_shapes->AddSubShape(label, face.face), face.name);
        return label;
    }

    TDF_Label AddAssembly(const std::string& name) {
        const TDF_Label label = _shapes->NewShape();
        setName(label, name);
        return label;
    }

    void AddInstance(const TDF_Label& parent, const TDF_Label& child, const std::string& name,
                     const TopLoc_Location& place) {
        setName(_shapes->AddComponent(parent, child, place), name);
    }

    void SetLayer(const TDF_Label& part, const char* layer) { _layers->SetLayer(part, layer); }

    void Finish() { _shapes->UpdateAssemblies(); }

private:
    Handle(XCAFDoc_ShapeTool) _shapes;
    Handle(XCAFDoc_LayerTool) _layers;
};

TDF_Label addFastenerSet(Builder& builder) {
    const TDF_Label bolt = builder.AddPart(makeBolt(), "Bolt M6x20");
    const TDF_Label washer = builder.AddPart(makeWasher(), "Washer 6");
    builder.SetLayer(bolt, "FASTENERS");
    builder.SetLayer(washer, "FASTENERS");
    const TDF_Label set = builder.AddAssembly("Fastener set");
    builder.AddInstance(set, bolt, "Bolt", at(0, 0, 1.6));
    builder.AddInstance(set, washer, "Washer", at(0, 0, 0));
    return set;
}

}  // namespace

TDF_Label SampleAssembly::FaceLabel(const std::string& name) const {
    return XCAFDoc_DocumentTool::ShapeTool(document->Main())
        ->AddSubShape(bracketLabel, bracket.Face(name));
}

SampleAssembly makeSampleAssembly() {
    SampleAssembly sample;
    XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", sample.document);
    sample.bracket = makeBracket();

    Builder builder(sample.document);
    const TDF_Label top = builder.AddAssembly("Bracket assembly");
    sample.bracketLabel = builder.AddPart(sample.bracket, "Bracket");
    const TDF_Label set = addFastenerSet(builder);
    builder.AddInstance(top, sample.bracketLabel, "Bracket", at(0, 0, 0));
    builder.AddInstance(top, set, "Fastener set 1", at(60, 30, 10));
    builder.AddInstance(top, set, "Fastener set 2", at(100, 30, 10));

    builder.Finish();
    return sample;
}

}  // namespace kesview

/// @file
/// See XcafNotes.h.

#include "reading/occ/XcafNotes.h"

#include "reading/occ/Findings.h"

#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDF_Tool.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_NoteComment.hxx>
#include <XCAFDoc_NotesTool.hxx>

namespace kesview {

void readXcafNotes(const Handle(TDocStd_Document) & source, const ShapeLookup& shapes,
                   Document& document) {
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::NotesTool(source->Main())->GetNotes(labels);
    for (const TDF_Label& label : labels) {
        TCollection_AsciiString entry;
        TDF_Tool::Entry(label, entry);
        const auto note = Handle(XCAFDoc_NoteComment)::DownCast(XCAFDoc_Note::Get(label));
        if (note.IsNull()) {
            addFinding(document, {Finding::Severity::Warning, "pmi.note-unread",
                                  "A note holds no text and is left out.", entry.ToCString()});
            continue;
        }
        Annotation annotation;
        annotation.id = shapes.nextId();
        annotation.key = entry.ToCString();
        annotation.kind = AnnotationKind::Note;
        annotation.type = "note";
        annotation.text = TCollection_AsciiString(note->Comment()).ToCString();
        annotation.semantic = true;
        document.annotations.push_back(std::move(annotation));
    }
}

}  // namespace kesview

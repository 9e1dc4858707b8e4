/// @file
/// See ReadCadFile.h.

#include "reading/occ/ReadCadFile.h"

#include "reading/occ/BrepFile.h"
#include "reading/occ/IgesFile.h"
#include "reading/occ/QuietOutput.h"
#include "reading/occ/StepFile.h"
#include "reading/occ/StlFile.h"

#include <Standard_Failure.hxx>
#include <Standard_OutOfMemory.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <fstream>
#include <new>

namespace kesview {

namespace {

void requireReadable(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw ReadError(ReadFailure::Unreadable, "The file " + path + " cannot be opened.");
    }
    if (file.peek() == std::ifstream::traits_type::eof()) {
        throw ReadError(ReadFailure::Damaged, "The file is empty; write or copy it anew.");
    }
}

Document readAs(FileFormat format, const std::string& path, const ReadOptions& options,
                const ReadProgress& progress) {
    switch (format) {
        case FileFormat::Step:
            return readStepFile(path, options, progress);
        case FileFormat::Iges:
            return readIgesFile(path, options, progress);
        case FileFormat::Brep:
            return readBrepFile(path, options, progress);
        case FileFormat::Stl:
            return readStlFile(path, options, progress);
        case FileFormat::Unknown:
            break;
    }
    throw ReadError(ReadFailure::UnknownFormat,
                    "The file is none of STEP, IGES, BREP and STL, which can be read.");
}

}  // namespace

Document readCadFile(const std::string& path, FileFormat format, const ReadOptions& options,
                     const ReadProgress& progress) {
    const QuietOutput quiet;                  // standard output belongs to the caller
    XCAFDoc_ShapeTool::SetAutoNaming(false);  // "SOLID" and "=>[0:1:1:2]" are no names
    requireReadable(path);
    try {
        return readAs(format, path, options, progress);
    } catch (const Standard_OutOfMemory&) {
        throw std::bad_alloc();
    } catch (const Standard_Failure& failure) {
        const std::string reason = failure.GetMessageString();
        throw ReadError(ReadFailure::Damaged,
                        "The file is damaged: the reader failed on it" +
                            (reason.empty() ? std::string(".") : " (" + reason + ")."));
    }
}

}  // namespace kesview

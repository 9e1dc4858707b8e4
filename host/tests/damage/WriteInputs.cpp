/// @file
/// kesview_damage_inputs STEP FOLDER: writes the first solid of a STEP file as solid.iges,
/// solid.brep, solid_binary.brep, solid.stl and solid_binary.stl.

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <BinTools.hxx>
#include <IGESControl_Writer.hxx>
#include <STEPControl_Reader.hxx>
#include <StlAPI_Writer.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

void require(bool done, const std::string& what) {
    if (!done) {
        throw std::runtime_error(what);
    }
}

TopoDS_Shape firstSolid(const std::string& path) {
    STEPControl_Reader reader;
    require(reader.ReadFile(path.c_str()) == IFSelect_RetDone, "cannot read " + path);
    reader.TransferRoots();
    const TopoDS_Shape whole = reader.OneShape();
    TopExp_Explorer solids(whole, TopAbs_SOLID);
    require(solids.More(), "there is no solid in " + path);
    return solids.Current();
}

void writeIges(const TopoDS_Shape& shape, const std::string& path) {
    IGESControl_Writer writer("MM", 1);  // with solids instead of loose faces
    require(writer.AddShape(shape) && writer.Write(path.c_str()), "cannot write " + path);
}

void writeStl(const TopoDS_Shape& shape, const std::string& path, bool ascii) {
    StlAPI_Writer writer;
    writer.ASCIIMode() = ascii;
    require(writer.Write(shape, path.c_str()), "cannot write " + path);
}

void writeAll(const TopoDS_Shape& shape, const std::string& folder) {
    writeIges(shape, folder + "/solid.iges");
    require(BRepTools::Write(shape, (folder + "/solid.brep").c_str()), "cannot write solid.brep");
    require(BinTools::Write(shape, (folder + "/solid_binary.brep").c_str()),
            "cannot write solid_binary.brep");
    const BRepMesh_IncrementalMesh mesh(shape, 0.5);
    require(mesh.IsDone(), "cannot mesh the solid");
    writeStl(shape, folder + "/solid.stl", true);
    writeStl(shape, folder + "/solid_binary.stl", false);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: kesview_damage_inputs STEP FOLDER\n";
        return 2;
    }
    try {
        writeAll(firstSolid(argv[1]), argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "kesview_damage_inputs: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

#pragma once

#include <map>
#include <string>
#include <vector>

namespace KesVizCore::Structure {

/// What g++'s class dump tells of one class.
struct DumpedClass {
    int Size = 0;
    int Alignment = 0;
    /// One entry for each slot: the qualified name without parameters, "__cxa_pure_virtual", or
    /// "0" for the destructors of an abstract class. No entry: the class is not polymorphic.
    std::vector<std::string> Slots;
};

/// Every class of @p file, by its qualified name; the std ones too.
std::map<std::string, DumpedClass> readClassDump(const std::string& file);

/// The mangled names in the slots of every virtual table of the assembly @p file, by the table's
/// demangled name ("vtable for ...").
std::map<std::string, std::vector<std::string>> readVirtualTables(const std::string& file);

}  // namespace KesVizCore::Structure

/// @file
/// Lets allocations inside the DLL count and fail as those of the program do.
///
/// Operators that a program replaces serve itself alone here. The DLL's own stand on the malloc
/// and free that it imports: its two entries for these are led to the heap of the tests.

#include "core/OutOfMemory.h"

#include <KesVizCore/core/RenderId.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <windows.h>

namespace KesVizCore {

namespace {

/// The entry through which @p module calls its import of that name; null when it has none.
ULONGLONG* importOf(HMODULE module, const char* name) {
    auto* const image = reinterpret_cast<unsigned char*>(module);
    const auto* const start = reinterpret_cast<IMAGE_DOS_HEADER*>(image);
    const auto* const headers = reinterpret_cast<IMAGE_NT_HEADERS64*>(image + start->e_lfanew);
    const auto& folder = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(image + folder.VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* names = reinterpret_cast<ULONGLONG*>(image + library->OriginalFirstThunk);
        auto* entry = reinterpret_cast<ULONGLONG*>(image + library->FirstThunk);
        for (; *names != 0; ++names, ++entry) {
            const bool hasName = (*names & IMAGE_ORDINAL_FLAG64) == 0;
            const auto* const import = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(image + *names);
            if (hasName && std::strcmp(import->Name, name) == 0) {
                return entry;
            }
        }
    }
    return nullptr;
}

template <typename Function>
void lead(HMODULE module, const char* name, Function* function) {
    ULONGLONG* const entry = importOf(module, name);
    DWORD protection = 0;
    if (entry == nullptr ||
        VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection) == 0) {
        std::fprintf(stderr, "KesVizCore.dll has no entry for %s that can be changed\n", name);
        std::abort();
    }
    *entry = reinterpret_cast<ULONGLONG>(function);
    VirtualProtect(entry, sizeof *entry, protection, &protection);
}

/// What the DLL allocates once for this thread, at its first exception, must not count as a leak.
void throwInTheLibrary() {
    try {
        RenderId().SetLength(-1);
    } catch (const std::length_error&) {
    }
}

[[maybe_unused]] const bool isLed = [] {
    throwInTheLibrary();
    const HMODULE library = GetModuleHandleW(L"KesVizCore.dll");
    lead(library, "malloc", &allocateForTest);
    lead(library, "free", &releaseForTest);
    return true;
}();

}  // namespace

}  // namespace KesVizCore

#pragma once

/// @file
/// KESVIZCORE_API marks what the shared library exports.
///
/// A host that links the static library defines KESVIZCORE_STATIC; the CMake target does so by
/// itself. KESVIZCORE_EXPORTS is defined while the library itself is compiled, nowhere else.

/// @def KESVIZCORE_API
/// Stands before every class and function that a host may use.

/// @namespace KesVizCore
/// Everything that the library offers.

#if defined(KESVIZCORE_STATIC)
#define KESVIZCORE_API
#elif defined(_WIN32) && defined(KESVIZCORE_EXPORTS)
#define KESVIZCORE_API __declspec(dllexport)
#elif defined(_WIN32)
#define KESVIZCORE_API __declspec(dllimport)
#else
#define KESVIZCORE_API __attribute__((visibility("default")))
#endif

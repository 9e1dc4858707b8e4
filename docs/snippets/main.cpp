/// @file
/// Runs the C++ of all pages, in their order.

#include "Snippets.h"

#include <cstdio>
#include <exception>

int main() {
    try {
        snippets::conventions();
        snippets::sceneProtocol();
        snippets::idsAndPaths();
        snippets::ownership();
        snippets::picking();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "snippets: %s\n", error.what());
        return 1;
    }
}

/// @file
/// Prints the characters of GetExePath as numbers, one a line.

#include <KesVizCore/report/Utils.h>

#include <cstdio>

int main() {
    for (const wchar_t character : KesVizCore::Utils::GetExePath()) {
        std::printf("%lu\n", static_cast<unsigned long>(character));
    }
    return 0;
}

/// @file
/// Writes to dbg while it runs, and once more while its static objects are destroyed.

#include <KesVizCore/report/DebugStream.h>

namespace {

struct LastWords {
    ~LastWords() { KesVizCore::dbg << "last words" << std::endl; }
};

}  // namespace

int main() {
    static const LastWords speaker;
    KesVizCore::dbg << "face \"7\": " << 2.5 << " mm" << std::endl;
    return 0;
}

// The loader finds the library under the name that stands inside it. The name follows the major
// version, so that a host never meets a library that breaks it.

#include "structure/SourceTree.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace KesVizCore::Structure {
namespace {

TEST(SharedObjectNameTest, EndsInTheMajorVersion) {
    static const std::regex line(" *SONAME +(\\S+)");
    std::string name;
    std::smatch match;
    for (const std::string& text : linesOf(KESVIZCORE_LIBRARY_HEADERS)) {
        if (std::regex_match(text, match, line)) {
            name = match[1];
        }
    }
    EXPECT_EQ(name, "libKesVizCore.so." KESVIZCORE_MAJOR_VERSION);
}

}  // namespace
}  // namespace KesVizCore::Structure

// A host that is linked against the DLL finds its operations there by their names: none may go,
// and one that comes is written down.

#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

/// The names of @p list that @p other lacks, for people; both lists are sorted.
std::string notIn(const std::vector<std::string>& other, const std::vector<std::string>& list) {
    std::vector<std::string> names;
    std::set_difference(list.begin(), list.end(), other.begin(), other.end(),
                        std::back_inserter(names));
    std::transform(names.begin(), names.end(), names.begin(), demangled);
    return asLines(names);
}

TEST(ExportBaselineTest, TheDllExportsWhatIsWrittenDown) {
    const std::vector<std::string> found = linesOf(KESVIZCORE_EXPORT_LIST);
    const std::vector<std::string> baseline = linesOf(KESVIZCORE_EXPORT_BASELINE);
    EXPECT_EQ(notIn(found, baseline), "") << "gone: hosts that are compiled no longer start";
    EXPECT_EQ(notIn(baseline, found), "") << "new: write them down with scripts/abi --renew";
}

}  // namespace
}  // namespace KesVizCore::Structure

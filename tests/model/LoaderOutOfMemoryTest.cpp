#include "core/OutOfMemory.h"
#include "support/TestLoaders.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

namespace KesVizCore {
namespace {

using support::EveryLoader;
using support::loadEdge;
using support::PMILoader;

template <typename Loader>
class LoaderOutOfMemoryTest : public ::testing::Test {};

TYPED_TEST_SUITE(LoaderOutOfMemoryTest, EveryLoader);

TYPED_TEST(LoaderOutOfMemoryTest, MakeOneAnswersNullWithoutALeak) {
    const long allocations = FailEachAllocation([](long failing) {
        const long before = OutOfMemory::BlocksInUse();
        bool failed = false;
        {
            TypeParam loader;
            std::unique_ptr<typename TypeParam::Made> element;
            {
                const OutOfMemory outOfMemory(failing);
                element.reset(static_cast<typename TypeParam::Made*>(loader.makeOne()));
                failed = outOfMemory.HasFailed();
            }
            EXPECT_EQ(element == nullptr, failed) << "at allocation " << failing;
        }
        EXPECT_EQ(OutOfMemory::BlocksInUse(), before) << "at allocation " << failing;
        return failed;
    });
    EXPECT_GE(allocations, 1);
}

TYPED_TEST(LoaderOutOfMemoryTest, LoadAnswersNullAndUsesNoId) {
    TypeParam loader;
    const std::uint64_t expected = loadEdge()->GetID() + 1;
    VizElement* element = nullptr;
    bool failed = false;
    {
        const OutOfMemory outOfMemory(1);
        element = loader.Load();
        failed = outOfMemory.HasFailed();
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(element, nullptr);
    EXPECT_EQ(loadEdge()->GetID(), expected);
}

TEST(PMILoaderOutOfMemoryTest, AnAnnotationWhoseTypeNamesCannotBeCopiedIsNotMade) {
    PMILoader loader;
    VizPMIType type;
    type.Name = std::string(1000, 'x');
    loader.setGroupAndType(type, type);
    const long allocations = FailEachAllocation([&](long failing) {
        std::unique_ptr<VizPMI> annotation;
        const OutOfMemory outOfMemory(failing);
        annotation.reset(static_cast<VizPMI*>(loader.makeOne()));
        return annotation == nullptr;
    });
    EXPECT_EQ(allocations, 3);  // the annotation and the two names
}

}  // namespace
}  // namespace KesVizCore

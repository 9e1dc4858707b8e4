#include "view/ViewTestKit.h"

#include <KesVizCore/view/SelectionHolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::pathOf;
using testing::ElementsAre;
using testing::ElementsAreArray;

const RenderId kFirst({1, 2}, View3D);
const RenderId kSecond({1, 3}, View3D);
const RenderId kThird({1, 2, 3}, View3D);

std::vector<RenderId> entries(const SelectionHolder& holder) {
    std::vector<RenderId> ids;
    for (int index = 0; index < holder.Count(); ++index) {
        ids.push_back(holder.At(index));
    }
    return ids;
}

SelectionHolder holderOf(const std::vector<RenderId>& ids) {
    SelectionHolder holder;
    for (const RenderId& id : ids) {
        holder.Add(id);
    }
    return holder;
}

TEST(SelectionHolderTest, IsDestroyedThroughItsBase) {
    EXPECT_TRUE(std::has_virtual_destructor_v<SelectionHolder>);
}

TEST(SelectionHolderTest, StartsEmpty) {
    const SelectionHolder holder;
    EXPECT_TRUE(holder.IsEmpty());
    EXPECT_EQ(holder.Count(), 0);
    EXPECT_FALSE(holder.Contains(RenderId()));
}

TEST(SelectionHolderTest, CopyHoldsTheSameAndIsItsOwn) {
    SelectionHolder holder = holderOf({kFirst, kSecond});
    SelectionHolder copy(holder);
    copy.Remove(kFirst);
    EXPECT_THAT(entries(copy), ElementsAre(kSecond));
    EXPECT_THAT(entries(holder), ElementsAre(kFirst, kSecond));
}

TEST(SelectionHolderTest, AssignmentReplacesWhatWasThere) {
    const SelectionHolder holder = holderOf({kFirst, kSecond});
    SelectionHolder assigned = holderOf({kThird, kThird, kThird});
    assigned = holder;
    EXPECT_THAT(entries(assigned), ElementsAre(kFirst, kSecond));
    assigned.Clear();
    EXPECT_THAT(entries(holder), ElementsAre(kFirst, kSecond));
}

TEST(SelectionHolderTest, AddKeepsTheOrder) {
    EXPECT_THAT(entries(holderOf({kSecond, kThird, kFirst})), ElementsAre(kSecond, kThird, kFirst));
}

TEST(SelectionHolderTest, AddKeepsDuplicates) {
    const SelectionHolder holder = holderOf({kFirst, kSecond, kFirst});
    EXPECT_EQ(holder.Count(), 3);
    EXPECT_FALSE(holder.IsEmpty());
}

TEST(SelectionHolderTest, AddTakesACopy) {
    RenderId id = kFirst;
    SelectionHolder holder;
    holder.Add(id);
    id.AddValue(99);
    EXPECT_EQ(holder.At(0), kFirst);
}

TEST(SelectionHolderTest, AddTakesOneOfItsOwnEntries) {
    SelectionHolder holder = holderOf({kThird});
    for (int count = 0; count < 20; ++count) {
        holder.Add(holder[0]);
    }
    EXPECT_EQ(holder.Count(), 21);
    EXPECT_EQ(holder.At(20), kThird);
}

TEST(SelectionHolderTest, RemoveFromAnEmptyHolderDoesNothing) {
    SelectionHolder holder;
    holder.Remove(kFirst);
    EXPECT_TRUE(holder.IsEmpty());
}

TEST(SelectionHolderTest, RemoveTakesTheFirstEqualEntryOnly) {
    SelectionHolder holder = holderOf({kSecond, kFirst, kThird, kFirst});
    holder.Remove(kFirst);
    EXPECT_THAT(entries(holder), ElementsAre(kSecond, kThird, kFirst));
    EXPECT_TRUE(holder.Contains(kFirst));
    holder.Remove(kFirst);
    EXPECT_THAT(entries(holder), ElementsAre(kSecond, kThird));
    EXPECT_FALSE(holder.Contains(kFirst));
}

TEST(SelectionHolderTest, RemoveOfAnUnknownIdDoesNothing) {
    SelectionHolder holder = holderOf({kFirst, kSecond});
    holder.Remove(kThird);
    EXPECT_THAT(entries(holder), ElementsAre(kFirst, kSecond));
}

TEST(SelectionHolderTest, RemoveTakesOneOfItsOwnEntries) {
    SelectionHolder holder = holderOf({kFirst, kSecond, kFirst});
    holder.Remove(holder[2]);  // equal to the first, which goes
    EXPECT_THAT(entries(holder), ElementsAre(kSecond, kFirst));
}

TEST(SelectionHolderTest, OriginCountsInEquality) {
    SelectionHolder holder = holderOf({kFirst});
    const RenderId elsewhere({1, 2}, ViewTree);
    EXPECT_FALSE(holder.Contains(elsewhere));
    holder.Remove(elsewhere);
    EXPECT_EQ(holder.Count(), 1);
}

TEST(SelectionHolderTest, LengthCountsInEquality) {
    const SelectionHolder holder = holderOf({kThird});
    EXPECT_FALSE(holder.Contains(kFirst));  // the beginning of the third
    EXPECT_TRUE(holder.Contains(pathOf({1, 2, 3})));
}

TEST(SelectionHolderTest, HoldsEmptyIdsToo) {
    const SelectionHolder holder = holderOf({RenderId()});
    EXPECT_EQ(holder.Count(), 1);
    EXPECT_TRUE(holder.Contains(RenderId()));
    EXPECT_FALSE(holder.IsEmpty());
}

TEST(SelectionHolderTest, ClearRemovesAll) {
    SelectionHolder holder = holderOf({kFirst, kFirst});
    holder.Clear();
    EXPECT_TRUE(holder.IsEmpty());
    EXPECT_EQ(holder.Count(), 0);
    EXPECT_FALSE(holder.Contains(kFirst));
}

TEST(SelectionHolderTest, AtAnswersACopy) {
    const SelectionHolder holder = holderOf({kFirst});
    RenderId id = holder.At(0);
    id.AddValue(99);
    EXPECT_EQ(holder.At(0), kFirst);
}

TEST(SelectionHolderTest, AtRefusesAnIndexOutside) {
    const SelectionHolder holder = holderOf({kFirst, kSecond});
    EXPECT_THROW(holder.At(holder.Count()), std::out_of_range);
    EXPECT_THROW(holder.At(-1), std::out_of_range);
    EXPECT_THROW(holder.At(std::numeric_limits<int>::max()), std::out_of_range);
    EXPECT_THROW(holder.At(std::numeric_limits<int>::min()), std::out_of_range);
    EXPECT_THROW(SelectionHolder().At(0), std::out_of_range);
}

TEST(SelectionHolderTest, IndexAnswersTheEntryItself) {
    SelectionHolder holder = holderOf({kFirst, kSecond});
    holder[1] = kThird;
    EXPECT_THAT(entries(holder), ElementsAre(kFirst, kThird));
    const SelectionHolder& constant = holder;
    EXPECT_EQ(&constant[1], &holder[1]);
    EXPECT_EQ(constant[0], kFirst);
}

// A plain list tells what a holder holds after any sequence of operations.
TEST(SelectionHolderTest, BehavesAsAListUnderRandomOperations) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        SelectionHolder holder;
        std::deque<std::uint64_t> list;
        for (int step = 0; step < 200; ++step) {
            const std::uint64_t value = random() % 5;
            const RenderId id = pathOf({1, value});
            const auto found = std::find(list.begin(), list.end(), value);
            EXPECT_EQ(holder.Contains(id), found != list.end());
            if (random() % 3 != 0) {
                holder.Add(id);
                list.push_back(value);
            } else {
                holder.Remove(id);
                if (found != list.end()) {
                    list.erase(found);
                }
            }
            std::vector<RenderId> expected;
            for (const std::uint64_t listed : list) {
                expected.push_back(pathOf({1, listed}));
            }
            ASSERT_THAT(entries(holder), ElementsAreArray(expected)) << "step " << step;
        }
    }
}

}  // namespace
}  // namespace KesVizCore

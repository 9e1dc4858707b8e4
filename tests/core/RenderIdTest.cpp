#include <KesVizCore/core/RenderId.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

using Values = std::vector<std::uint64_t>;

Values valuesOf(const RenderId& id) {
    Values values;
    for (int place = 0; place < id.Length(); ++place) {
        values.push_back(id[place]);
    }
    return values;
}

// ---- OriginEnum

TEST(OriginEnumTest, IsASigned32BitEnumerationOfThree) {
    static_assert(std::is_same_v<std::underlying_type_t<OriginEnum>, std::int32_t>);
    static_assert(!std::is_convertible_v<int, OriginEnum>);
    EXPECT_EQ(OriginEnum::Unknown, 0);
    EXPECT_EQ(OriginEnum::View3D, 1);
    EXPECT_EQ(OriginEnum::ViewTree, 2);
}

// ---- Construction and copies

TEST(RenderIdTest, IsEmptyAndOfUnknownOriginByDefault) {
    const RenderId id;
    EXPECT_EQ(id.Length(), 0);
    EXPECT_TRUE(id.IsEmpty());
    EXPECT_EQ(id.GetOrigin(), Unknown);
}

TEST(RenderIdTest, TakesAVectorAndAnOrigin) {
    const RenderId id(Values{7, 0, kLargest}, ViewTree);
    EXPECT_EQ(valuesOf(id), (Values{7, 0, kLargest}));
    EXPECT_EQ(id.GetOrigin(), ViewTree);
}

TEST(RenderIdTest, CopiesTheVectorItIsMadeOf) {
    Values values{7, 12};
    const RenderId id(values, View3D);
    values[0] = 99;
    values.push_back(100);
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
}

TEST(RenderIdTest, TakesAPointerACountAndAnOrigin) {
    const std::uint64_t values[] = {7, 0, kLargest, 99};
    const RenderId id(values, 3, View3D);
    EXPECT_EQ(valuesOf(id), (Values{7, 0, kLargest}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

TEST(RenderIdTest, CopiesTheValuesBehindThePointer) {
    std::uint64_t values[] = {7, 12};
    const RenderId id(values, 2, View3D);
    values[0] = 99;
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
}

TEST(RenderIdTest, TakesANullPointerWithCountZero) {
    const RenderId id(nullptr, 0, ViewTree);
    EXPECT_TRUE(id.IsEmpty());
    EXPECT_EQ(id.GetOrigin(), ViewTree);
}

TEST(RenderIdTest, RefusesANegativeCount) {
    const std::uint64_t values[] = {7};
    EXPECT_THROW(RenderId(values, -1, View3D), std::length_error);
    EXPECT_THROW(RenderId(nullptr, std::numeric_limits<int>::min(), View3D), std::length_error);
}

TEST(RenderIdTest, CopiesTheValuesAndTheOrigin) {
    const RenderId id({7, 12, 3}, ViewTree);
    const RenderId constructed(id);
    RenderId assigned({1, 2, 3, 4, 5}, View3D);
    assigned = id;
    EXPECT_EQ(valuesOf(constructed), (Values{7, 12, 3}));
    EXPECT_EQ(constructed.GetOrigin(), ViewTree);
    EXPECT_EQ(valuesOf(assigned), (Values{7, 12, 3}));
    EXPECT_EQ(assigned.GetOrigin(), ViewTree);
}

TEST(RenderIdTest, ACopySharesNothingWithTheOriginal) {
    RenderId id({7, 12, 3}, View3D);
    const RenderId copy(id);
    id[0] = 99;
    id.AddValue(100);
    id.SetOrigin(ViewTree);
    EXPECT_EQ(valuesOf(copy), (Values{7, 12, 3}));
    EXPECT_EQ(copy.GetOrigin(), View3D);
}

TEST(RenderIdTest, AssignmentToItselfChangesNothing) {
    RenderId id({7, 12, 3}, View3D);
    const RenderId& same = id;
    id = same;
    EXPECT_EQ(valuesOf(id), (Values{7, 12, 3}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

// ---- Ids on the library's own heap

TEST(RenderIdTest, CreateRenderIdMakesAnEmptyId) {
    RenderId* id = RenderId::CreateRenderId();
    ASSERT_NE(id, nullptr);
    EXPECT_TRUE(id->IsEmpty());
    EXPECT_EQ(id->GetOrigin(), Unknown);
    RenderId::DeleteRenderId(id);
}

TEST(RenderIdTest, CreateRenderIdTakesAVector) {
    RenderId* id = RenderId::CreateRenderId(Values{7, 12, 3}, ViewTree);
    ASSERT_NE(id, nullptr);
    EXPECT_EQ(valuesOf(*id), (Values{7, 12, 3}));
    EXPECT_EQ(id->GetOrigin(), ViewTree);
    RenderId::DeleteRenderId(id);
}

TEST(RenderIdTest, CreateRenderIdTakesAPointer) {
    const std::uint64_t values[] = {7, 12, 3};
    RenderId* id = RenderId::CreateRenderId(values, 2, View3D);
    ASSERT_NE(id, nullptr);
    EXPECT_EQ(valuesOf(*id), (Values{7, 12}));
    EXPECT_EQ(id->GetOrigin(), View3D);
    RenderId::DeleteRenderId(id);
}

TEST(RenderIdTest, CreateRenderIdMakesANewObjectEachTime) {
    RenderId* one = RenderId::CreateRenderId();
    RenderId* other = RenderId::CreateRenderId();
    EXPECT_NE(one, other);
    RenderId::DeleteRenderId(one);
    RenderId::DeleteRenderId(other);
}

TEST(RenderIdTest, CreateRenderIdRefusesANegativeCount) {
    const std::uint64_t values[] = {7};
    EXPECT_THROW(RenderId::CreateRenderId(values, -1, View3D), std::length_error);
}

TEST(RenderIdTest, DeleteRenderIdSetsThePointerToNull) {
    RenderId* id = RenderId::CreateRenderId(Values(1000, 7), View3D);
    RenderId::DeleteRenderId(id);
    EXPECT_EQ(id, nullptr);
}

TEST(RenderIdTest, DeleteRenderIdLeavesNullAlone) {
    RenderId* id = nullptr;
    RenderId::DeleteRenderId(id);
    EXPECT_EQ(id, nullptr);
}

TEST(RenderIdTest, DeleteRenderIdArrDestroysTheArrayAndSetsThePointerToNull) {
    auto* ids = new RenderId[3];
    ids[2].SetLength(1000);  // a leak checker sees whether the last one is destroyed
    RenderId::DeleteRenderIdArr(ids);
    EXPECT_EQ(ids, nullptr);
}

TEST(RenderIdTest, DeleteRenderIdArrLeavesNullAlone) {
    RenderId* ids = nullptr;
    RenderId::DeleteRenderIdArr(ids);
    EXPECT_EQ(ids, nullptr);
}

// ---- Origin

TEST(RenderIdTest, SetOriginLeavesTheValuesAlone) {
    RenderId id({7, 12}, View3D);
    id.SetOrigin(ViewTree);
    EXPECT_EQ(id.GetOrigin(), ViewTree);
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
    id.SetOrigin(Unknown);
    EXPECT_EQ(id.GetOrigin(), Unknown);
}

// ---- AddValue

TEST(RenderIdTest, AddValueAppendsAtTheEnd) {
    RenderId id;
    id.AddValue(7);
    id.AddValue(0);
    id.AddValue(kLargest);
    EXPECT_EQ(valuesOf(id), (Values{7, 0, kLargest}));
    EXPECT_EQ(id.GetOrigin(), Unknown);
}

TEST(RenderIdTest, AddValueTakesOneOfItsOwnValues) {
    RenderId id({1234567}, View3D);
    Values expected{1234567};
    for (int round = 0; round < 100; ++round) {  // whichever step moves the array
        id.AddValue(id[0]);
        expected.push_back(1234567);
        ASSERT_EQ(valuesOf(id), expected);
    }
}

// ---- SetValue

TEST(RenderIdTest, SetValueReplacesOneValue) {
    RenderId id({7, 12, 3}, View3D);
    id.SetValue(1, kLargest);
    EXPECT_EQ(valuesOf(id), (Values{7, kLargest, 3}));
    id.SetValue(2, 0);
    EXPECT_EQ(valuesOf(id), (Values{7, kLargest, 0}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

TEST(RenderIdTest, SetValueBeyondTheEndGrowsWithZeros) {
    RenderId id;
    id.SetValue(4, 77);
    EXPECT_EQ(valuesOf(id), (Values{0, 0, 0, 0, 77}));
}

TEST(RenderIdTest, SetValueJustBehindTheEndAppends) {
    RenderId id({7, 12}, View3D);
    id.SetValue(2, 3);
    EXPECT_EQ(valuesOf(id), (Values{7, 12, 3}));
}

TEST(RenderIdTest, SetValueTakesOneOfItsOwnValuesWhileItGrows) {
    RenderId id({1234567, 1}, View3D);
    id.SetValue(5000, id[0]);
    EXPECT_EQ(id.Length(), 5001);
    EXPECT_EQ(id[5000], 1234567U);
    EXPECT_EQ(id[0], 1234567U);
}

TEST(RenderIdTest, SetValueRefusesANegativeIndexAndStaysAsItWas) {
    RenderId id({7, 12}, View3D);
    EXPECT_THROW(id.SetValue(-1, 5), std::out_of_range);
    EXPECT_THROW(id.SetValue(std::numeric_limits<int>::min(), 5), std::out_of_range);
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

// ---- SetLength, Length, IsEmpty

TEST(RenderIdTest, SetLengthCutsFromTheEnd) {
    RenderId id({7, 12, 3, 4}, View3D);
    id.SetLength(2);
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

TEST(RenderIdTest, SetLengthGrowsWithZeros) {
    RenderId id({7}, View3D);
    id.SetLength(4);
    EXPECT_EQ(valuesOf(id), (Values{7, 0, 0, 0}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

TEST(RenderIdTest, SetLengthForgetsWhatItCuts) {
    RenderId id({7, 12, 3}, View3D);
    id.SetLength(1);
    id.SetLength(3);
    EXPECT_EQ(valuesOf(id), (Values{7, 0, 0}));
}

TEST(RenderIdTest, SetLengthToTheCurrentLengthChangesNothing) {
    RenderId id({7, 12}, ViewTree);
    const std::uint64_t* const first = &id[0];
    id.SetLength(2);
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
    EXPECT_EQ(id.GetOrigin(), ViewTree);
    EXPECT_EQ(&id[0], first);
}

TEST(RenderIdTest, SetLengthZeroLeavesTheOrigin) {
    RenderId id({7, 12}, ViewTree);
    id.SetLength(0);
    EXPECT_TRUE(id.IsEmpty());
    EXPECT_EQ(id.GetOrigin(), ViewTree);
}

TEST(RenderIdTest, SetLengthRefusesANegativeLengthAndStaysAsItWas) {
    RenderId id({7, 12}, View3D);
    EXPECT_THROW(id.SetLength(-1), std::length_error);
    EXPECT_THROW(id.SetLength(std::numeric_limits<int>::min()), std::length_error);
    EXPECT_EQ(valuesOf(id), (Values{7, 12}));
    EXPECT_EQ(id.GetOrigin(), View3D);
}

TEST(RenderIdTest, IsEmptyLooksAtTheValuesAlone) {
    EXPECT_TRUE(RenderId(Values{}, View3D).IsEmpty());
    EXPECT_FALSE(RenderId(Values{0}, Unknown).IsEmpty());
}

// ---- operator[]

TEST(RenderIdTest, AValueCanBeReadAndWrittenInPlace) {
    RenderId id({7, 12, 3}, View3D);
    id[1] = 99;
    EXPECT_EQ(id[0], 7U);
    EXPECT_EQ(id[1], 99U);
    EXPECT_EQ(id[2], 3U);
}

// On purpose: const ids are handed around whose values the receiver fills in.
TEST(RenderIdTest, AValueOfAConstIdCanBeWritten) {
    const RenderId id({7, 12, 3}, View3D);
    static_assert(std::is_same_v<decltype(id[0]), std::uint64_t&>);
    id[2] = kLargest;
    EXPECT_EQ(valuesOf(id), (Values{7, 12, kLargest}));
}

// ---- Clear

TEST(RenderIdTest, ClearRemovesTheValuesAndTheOrigin) {
    RenderId id({7, 12, 3}, ViewTree);
    id.Clear();
    EXPECT_TRUE(id.IsEmpty());
    EXPECT_EQ(id.GetOrigin(), Unknown);
    EXPECT_EQ(id.ToString(), "[  Unknown ]");
}

// ---- Comparison

TEST(RenderIdTest, EqualMeansOriginLengthAndEveryValue) {
    const RenderId id({7, 12, 3}, View3D);
    EXPECT_TRUE(id == RenderId({7, 12, 3}, View3D));
    EXPECT_FALSE(id != RenderId({7, 12, 3}, View3D));
    for (const RenderId& other :
         {RenderId({7, 12, 3}, ViewTree), RenderId({7, 12, 3}, Unknown), RenderId({7, 12}, View3D),
          RenderId({7, 12, 3, 0}, View3D), RenderId({7, 12, 4}, View3D),
          RenderId({8, 12, 3}, View3D), RenderId({7, 3, 12}, View3D), RenderId()}) {
        EXPECT_FALSE(id == other) << other.ToString();
        EXPECT_TRUE(id != other) << other.ToString();
    }
}

TEST(RenderIdTest, EmptyIdsOfDifferentOriginDiffer) {
    EXPECT_TRUE(RenderId() == RenderId(Values{}, Unknown));
    EXPECT_TRUE(RenderId() != RenderId(Values{}, View3D));
}

// ---- ToString

TEST(RenderIdTest, ToStringListsTheValuesThenTheOrigin) {
    EXPECT_EQ(RenderId({7, 12, 3}, View3D).ToString(), "[ 7, 12, 3 View3D ]");
    EXPECT_EQ(RenderId({7}, ViewTree).ToString(), "[ 7 ViewTree ]");
    EXPECT_EQ(RenderId({7, 12}, Unknown).ToString(), "[ 7, 12 Unknown ]");
}

TEST(RenderIdTest, ToStringOfAnEmptyIdHasTwoBlanks) {
    EXPECT_EQ(RenderId(Values{}, View3D).ToString(), "[  View3D ]");
    EXPECT_EQ(RenderId(Values{}, ViewTree).ToString(), "[  ViewTree ]");
    EXPECT_EQ(RenderId().ToString(), "[  Unknown ]");
}

TEST(RenderIdTest, ToStringCallsEveryOtherOriginUnknown) {
    for (const int origin : {-1, 3, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(RenderId({7}, static_cast<OriginEnum>(origin)).ToString(), "[ 7 Unknown ]")
            << "for the origin " << origin;
    }
}

TEST(RenderIdTest, ToStringWritesValuesUnsigned) {
    EXPECT_EQ(RenderId({kLargest, 0, std::uint64_t{1} << 63}, View3D).ToString(),
              "[ 18446744073709551615, 0, 9223372036854775808 View3D ]");
}

// ---- All operations together

TEST(RenderIdTest, BehavesLikeAVectorUnderRandomEdits) {
    std::mt19937 random(20265);
    for (int round = 0; round < 300; ++round) {
        RenderId id;
        Values model;
        std::string history;
        for (int step = 0; step < 40; ++step) {
            const std::uint64_t value = random();
            const auto number = static_cast<std::size_t>(random() % 12);
            const int place = static_cast<int>(number);
            switch (random() % 4) {
                case 0:
                    history += " add";
                    id.AddValue(value);
                    model.push_back(value);
                    break;
                case 1:
                    history += " set " + std::to_string(number);
                    id.SetValue(place, value);
                    while (model.size() <= number) {
                        model.push_back(0);
                    }
                    model[number] = value;
                    break;
                case 2:
                    history += " length " + std::to_string(number);
                    id.SetLength(place);
                    while (model.size() > number) {
                        model.pop_back();
                    }
                    while (model.size() < number) {
                        model.push_back(0);
                    }
                    break;
                default:
                    if (random() % 8 == 0) {
                        history += " clear";
                        id.Clear();
                        model.clear();
                    }
                    break;
            }
            ASSERT_EQ(valuesOf(id), model) << history;
            ASSERT_EQ(id.Length(), static_cast<int>(model.size())) << history;
            ASSERT_EQ(id.IsEmpty(), model.empty()) << history;
            ASSERT_TRUE(id == RenderId(model, Unknown)) << history;
        }
    }
}

// ---- Hash

/// How many of the ids share their hash with an earlier one.
std::size_t collisionsOf(const std::vector<RenderId>& ids) {
    std::unordered_set<std::size_t> hashes;
    for (const RenderId& id : ids) {
        hashes.insert(std::hash<RenderId>()(id));
    }
    return ids.size() - hashes.size();
}

/// How many of 131072 buckets the ids reach when the lowest bits of the hash choose.
std::size_t bucketsOf(const std::vector<RenderId>& ids) {
    std::unordered_set<std::size_t> buckets;
    for (const RenderId& id : ids) {
        buckets.insert(std::hash<RenderId>()(id) % 131072);
    }
    return buckets.size();
}

TEST(RenderIdHashTest, EqualIdsHashEqual) {
    std::mt19937_64 random(20266);
    for (int round = 0; round < 1000; ++round) {
        RenderId grown;
        Values values;
        const std::size_t length = random() % 10;
        while (values.size() < length) {
            values.push_back(random());
            grown.AddValue(values.back());
        }
        grown.SetOrigin(View3D);
        const RenderId made(values, View3D);
        ASSERT_TRUE(grown == made);
        ASSERT_EQ(std::hash<RenderId>()(grown), std::hash<RenderId>()(made)) << made.ToString();
    }
}

TEST(RenderIdHashTest, IsNoexcept) {
    static_assert(noexcept(std::hash<RenderId>()(std::declval<const RenderId&>())));
}

TEST(RenderIdHashTest, SpreadsAHundredThousandPathsOfOneAssembly) {
    std::vector<RenderId> ids;
    for (std::uint64_t body = 0; body < 100; ++body) {
        for (std::uint64_t face = 0; face < 1000; ++face) {
            ids.emplace_back(Values{1, 40, 7, body, 10002, face}, View3D);
        }
    }
    EXPECT_LE(collisionsOf(ids), 2U);
    EXPECT_GE(bucketsOf(ids), 65000U);  // chance alone reaches about 70000
}

TEST(RenderIdHashTest, SpreadsAHundredThousandRandomPaths) {
    std::mt19937_64 random(20267);
    std::vector<RenderId> ids;
    for (int made = 0; made < 100000; ++made) {
        ids.emplace_back(Values{1, random(), random() % 5, random()}, View3D);
    }
    EXPECT_LE(collisionsOf(ids), 2U);
    EXPECT_GE(bucketsOf(ids), 65000U);
}

TEST(RenderIdHashTest, SpreadsIdsThatDifferInTheirHighBitsAlone) {
    for (const unsigned shift : {8U, 16U, 24U, 32U, 40U, 48U, 55U}) {
        std::vector<RenderId> ids;
        for (std::uint64_t one = 0; one < 250; ++one) {
            for (std::uint64_t other = 0; other < 400; ++other) {
                ids.emplace_back(Values{1, one << shift, other << shift}, View3D);
            }
        }
        EXPECT_LE(collisionsOf(ids), 2U) << "shifted by " << shift;
        EXPECT_GE(bucketsOf(ids), 65000U) << "shifted by " << shift;
    }
}

TEST(RenderIdHashTest, TellsLengthsOrdersAndOriginsApart) {
    std::vector<RenderId> ids;
    for (std::size_t length = 0; length < 1000; ++length) {
        for (const OriginEnum origin : {Unknown, View3D, ViewTree}) {
            ids.emplace_back(Values(length, 0), origin);
        }
    }
    ids.emplace_back(Values{1, 2}, View3D);
    ids.emplace_back(Values{2, 1}, View3D);
    EXPECT_EQ(collisionsOf(ids), 0U);
}

TEST(RenderIdHashTest, KeysAnUnorderedMap) {
    std::unordered_map<RenderId, int> keyed;
    keyed[RenderId({7, 12}, View3D)] = 1;
    keyed[RenderId({7, 12}, ViewTree)] = 2;
    keyed[RenderId({7, 12}, View3D)] = 3;
    EXPECT_EQ(keyed.size(), 2U);
    EXPECT_EQ(keyed.at(RenderId({7, 12}, View3D)), 3);
    EXPECT_EQ(keyed.at(RenderId({7, 12}, ViewTree)), 2);
}

}  // namespace
}  // namespace KesVizCore

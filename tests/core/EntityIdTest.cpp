#include <KesVizCore/core/EntityId.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

/// Every number that is a type, written out once more, with the predicates that hold for it.
struct KnownType {
    std::uint64_t number;
    std::vector<std::string> predicates;
};

const std::vector<KnownType>& knownTypes() {
    static const std::vector<KnownType> types = {
        {10000, {"IsVertex"}},
        {10001, {"IsEdge"}},
        {10002, {"IsFace"}},
        {10003, {"IsBody"}},
        {10004, {"IsCloud"}},
        {10005, {"IsAnnotation"}},
        {10006, {}},
        {10007, {"IsGroup"}},
        {10008, {}},
        {10009, {}},
        {10010, {"IsAnnotation", "IsView"}},
        {10012, {"IsAnnotation", "IsCapture"}},
        {10100, {"IsAnnotation"}},
        {10101, {"IsAnnotation"}},
        {10102, {"IsAnnotation"}},
        {10103, {"IsAnnotation"}},
        {10104, {"IsAnnotation"}},
        {10105, {"IsAnnotation"}},
        {11000, {"IsAnnotation"}},
        {20000, {"IsConstruction"}},
        {40000, {"IsPart"}},
        {50000, {}},
        {99999, {"IsOther"}},
    };
    return types;
}

const KnownType* findKnownType(std::uint64_t number) {
    const auto& types = knownTypes();
    const auto found = std::find_if(types.begin(), types.end(),
                                    [&](const KnownType& one) { return one.number == number; });
    return found != types.end() ? &*found : nullptr;
}

/// The names of all predicates that hold for an id, in one fixed order.
std::vector<std::string> predicatesOf(const EntityId& id) {
    const std::pair<const char*, bool> all[] = {
        {"IsVertex", id.IsVertex()},
        {"IsEdge", id.IsEdge()},
        {"IsFace", id.IsFace()},
        {"IsBody", id.IsBody()},
        {"IsCloud", id.IsCloud()},
        {"IsGroup", id.IsGroup()},
        {"IsAnnotation", id.IsAnnotation()},
        {"IsView", id.IsView()},
        {"IsCapture", id.IsCapture()},
        {"IsConstruction", id.IsConstruction()},
        {"IsPart", id.IsPart()},
        {"IsOther", id.IsOther()},
    };
    std::vector<std::string> names;
    for (const auto& [name, holds] : all) {
        if (holds) {
            names.emplace_back(name);
        }
    }
    return names;
}

EntityType typeOf(std::int64_t number) {
    return static_cast<EntityType>(number);
}

// ---- EntityType

TEST(EntityTypeTest, IsASigned32BitEnumerationThatNumbersConvertToOnlyByACast) {
    static_assert(std::is_same_v<std::underlying_type_t<EntityType>, std::int32_t>);
    static_assert(!std::is_convertible_v<int, EntityType>);
    EXPECT_EQ(sizeof(EntityType), 4U);
}

TEST(EntityTypeTest, InvalidTypeHasAllBitsSet) {
    EXPECT_EQ(static_cast<std::uint32_t>(EntityType::InvalidType), 0xFFFFFFFFU);
}

TEST(EntityTypeTest, EveryNameHasItsNumber) {
    EXPECT_EQ(EntityType::VertexType, 10000);
    EXPECT_EQ(EntityType::EdgeType, 10001);
    EXPECT_EQ(EntityType::FaceType, 10002);
    EXPECT_EQ(EntityType::BodyType, 10003);
    EXPECT_EQ(EntityType::CloudType, 10004);
    EXPECT_EQ(EntityType::AnnotationType, 10005);
    EXPECT_EQ(EntityType::WireType, 10006);
    EXPECT_EQ(EntityType::GroupType, 10007);
    EXPECT_EQ(EntityType::MeshType, 10008);
    EXPECT_EQ(EntityType::PointSetType, 10009);
    EXPECT_EQ(EntityType::ViewType, 10010);
    EXPECT_EQ(EntityType::CaptureType, 10012);
    EXPECT_EQ(EntityType::DimensionType, 10100);
    EXPECT_EQ(EntityType::ToleranceType, 10101);
    EXPECT_EQ(EntityType::DatumType, 10102);
    EXPECT_EQ(EntityType::NoteType, 10103);
    EXPECT_EQ(EntityType::SurfaceFinishType, 10104);
    EXPECT_EQ(EntityType::WeldType, 10105);
    EXPECT_EQ(EntityType::AnnotationSetType, 11000);
    EXPECT_EQ(EntityType::ConstructionType, 20000);
    EXPECT_EQ(EntityType::PartType, 40000);
    EXPECT_EQ(EntityType::AssemblyType, 50000);
    EXPECT_EQ(EntityType::OtherType, 99999);
}

// ---- Fields and construction

TEST(EntityIdTest, HoldsItsNumberThenItsOwnersThenTheTypeThenTheFlag) {
    static_assert(std::is_standard_layout_v<EntityId>);
    static_assert(sizeof(EntityId::Flag) == 1);
    EXPECT_EQ(offsetof(EntityId, ID), 0U);
    EXPECT_EQ(offsetof(EntityId, OwnerID), 8U);
    EXPECT_EQ(offsetof(EntityId, Type), 16U);
    EXPECT_EQ(offsetof(EntityId, Flag), 20U);
}

TEST(EntityIdTest, IsEmptyAndOfInvalidTypeByDefault) {
    const EntityId id;
    EXPECT_EQ(id.ID, 0U);
    EXPECT_EQ(id.OwnerID, 0U);
    EXPECT_EQ(id.Type, InvalidType);
    EXPECT_FALSE(id.Flag);
    EXPECT_TRUE(id.IsEmpty());
}

TEST(EntityIdTest, TakesTheOwnersNumberFirstAndItsOwnLast) {
    const EntityId id(5, FaceType, 9);
    EXPECT_EQ(id.OwnerID, 5U);
    EXPECT_EQ(id.Type, FaceType);
    EXPECT_EQ(id.ID, 9U);
    EXPECT_FALSE(id.Flag);
    EXPECT_TRUE(id.IsFace());
    EXPECT_FALSE(id.IsEmpty());
}

TEST(EntityIdTest, StoresATypeThatIsNoneAsItIs) {
    EXPECT_EQ(EntityId(1, typeOf(10011), 2).Type, 10011);
}

TEST(EntityIdTest, CopiesEveryFieldTheFlagIncluded) {
    EntityId id(kLargest, PartType, kLargest - 1);
    id.Flag = true;
    const EntityId constructed(id);
    EntityId assigned;
    assigned = id;
    for (const EntityId& copy : {constructed, assigned}) {
        EXPECT_EQ(copy.OwnerID, kLargest);
        EXPECT_EQ(copy.Type, PartType);
        EXPECT_EQ(copy.ID, kLargest - 1);
        EXPECT_TRUE(copy.Flag);
    }
}

// ---- GetTypeFromInt

TEST(EntityIdTest, GetTypeFromIntKeepsExactlyTheListedNumbers) {
    for (std::uint64_t number = 0; number <= 120000; ++number) {
        const std::int64_t expected =
            findKnownType(number) != nullptr ? static_cast<std::int64_t>(number) : -1;
        ASSERT_EQ(EntityId::GetTypeFromInt(number), expected) << "for the number " << number;
    }
}

TEST(EntityIdTest, GetTypeFromIntRefusesTheNeighboursOfTheListedNumbers) {
    for (const std::uint64_t number : {10011U, 9999U, 10106U, 10099U, 30000U, 100000U, 0U}) {
        EXPECT_EQ(EntityId::GetTypeFromInt(number), InvalidType) << "for the number " << number;
    }
}

TEST(EntityIdTest, GetTypeFromIntKeepsTheNumbersThatStandAlone) {
    EXPECT_EQ(EntityId::GetTypeFromInt(11000), 11000);
    EXPECT_EQ(EntityId::GetTypeFromInt(50000), 50000);
    EXPECT_EQ(EntityId::GetTypeFromInt(99999), 99999);
}

TEST(EntityIdTest, GetTypeFromIntLooksAtAll64Bits) {
    for (const KnownType& known : knownTypes()) {
        for (unsigned bit = 17; bit < 64; ++bit) {  // 99999 and those below have 17 bits
            const std::uint64_t number = known.number | std::uint64_t{1} << bit;
            EXPECT_EQ(EntityId::GetTypeFromInt(number), InvalidType) << "for " << number;
        }
    }
}

TEST(EntityIdTest, GetTypeFromIntRefusesTheLargestNumbersOfEachWidth) {
    for (const std::uint64_t number :
         {std::uint64_t{0x7FFFFFFF}, std::uint64_t{0x80000000}, std::uint64_t{0xFFFFFFFF},
          std::uint64_t{0x100000000}, std::uint64_t{0x7FFFFFFFFFFFFFFF},
          std::uint64_t{0x8000000000000000}, kLargest}) {
        EXPECT_EQ(EntityId::GetTypeFromInt(number), InvalidType) << "for the number " << number;
    }
}

// ---- IsEmpty, Clear

TEST(EntityIdTest, IsEmptyWhenBothNumbersAreZeroWhateverTheType) {
    EXPECT_TRUE(EntityId(0, BodyType, 0).IsEmpty());
    EXPECT_TRUE(EntityId(0, InvalidType, 0).IsEmpty());
}

TEST(EntityIdTest, IsNotEmptyWithEitherNumber) {
    EXPECT_FALSE(EntityId(1, InvalidType, 0).IsEmpty());
    EXPECT_FALSE(EntityId(0, InvalidType, 1).IsEmpty());
    EXPECT_FALSE(EntityId(std::uint64_t{1} << 63, InvalidType, 0).IsEmpty());
    EXPECT_FALSE(EntityId(0, InvalidType, std::uint64_t{1} << 63).IsEmpty());
}

TEST(EntityIdTest, TheFlagTakesNoPartInEmptiness) {
    EntityId id;
    id.Flag = true;
    EXPECT_TRUE(id.IsEmpty());
}

TEST(EntityIdTest, ClearResetsTheNumbersAndTheTypeAndLeavesTheFlag) {
    for (const bool flag : {false, true}) {
        EntityId id(5, FaceType, 9);
        id.Flag = flag;
        id.Clear();
        EXPECT_EQ(id.ID, 0U);
        EXPECT_EQ(id.OwnerID, 0U);
        EXPECT_EQ(id.Type, InvalidType);
        EXPECT_EQ(id.Flag, flag);
    }
}

// ---- Predicates

TEST(EntityIdTest, ExactlyThePredicatesOfATypeHoldForIt) {
    for (std::int64_t number = -2; number <= 120000; ++number) {
        const KnownType* known = findKnownType(static_cast<std::uint64_t>(number));
        const auto expected = known != nullptr ? known->predicates : std::vector<std::string>{};
        ASSERT_EQ(predicatesOf(EntityId(1, typeOf(number), 2)), expected) << "type " << number;
    }
}

TEST(EntityIdTest, PredicatesLookAtTheTypeAlone) {
    for (const KnownType& known : knownTypes()) {
        const EntityType type = EntityId::GetTypeFromInt(known.number);
        EntityId flagged(kLargest, type, 0);
        flagged.Flag = true;
        for (const EntityId& id : {EntityId(0, type, 0), EntityId(0, type, kLargest), flagged}) {
            EXPECT_EQ(predicatesOf(id), known.predicates) << id.ToString();
        }
    }
}

TEST(EntityIdTest, ViewsAndCapturesAreAnnotationsToo) {
    const EntityId view(0, ViewType, 1);
    const EntityId capture(0, CaptureType, 1);
    EXPECT_TRUE(view.IsView() && view.IsAnnotation());
    EXPECT_TRUE(capture.IsCapture() && capture.IsAnnotation());
}

// ---- GetParentEntity

TEST(EntityIdTest, TheParentOfAFaceEdgeOrVertexIsTheBodyThatOwnsIt) {
    for (const EntityType type : {FaceType, EdgeType, VertexType}) {
        const EntityId parent = EntityId(5, type, 9).GetParentEntity();
        EXPECT_EQ(parent.Type, 10003) << "for type " << type;
        EXPECT_EQ(parent.ID, 5U) << "for type " << type;
        EXPECT_EQ(parent.OwnerID, 0U) << "for type " << type;
        EXPECT_FALSE(parent.Flag) << "for type " << type;
    }
}

TEST(EntityIdTest, TheParentOfAnythingElseIsTheEmptyId) {
    for (std::int64_t number = -2; number <= 120000; ++number) {
        if (number >= 10000 && number <= 10002) {
            continue;
        }
        const EntityId parent = EntityId(5, typeOf(number), 9).GetParentEntity();
        ASSERT_EQ(parent.Type, InvalidType) << "for type " << number;
        ASSERT_EQ(parent.ID, 0U) << "for type " << number;
        ASSERT_EQ(parent.OwnerID, 0U) << "for type " << number;
    }
}

TEST(EntityIdTest, TheParentOfABodyAGroupOrAnAnnotationIsEmpty) {
    for (const EntityType type : {BodyType, GroupType, AnnotationType}) {
        EXPECT_EQ(EntityId(5, type, 9).GetParentEntity(), EntityId()) << "for type " << type;
    }
}

// ---- Comparison

TEST(EntityIdTest, EqualMeansTypeAndBothNumbers) {
    const EntityId id(5, FaceType, 9);
    EXPECT_TRUE(id == EntityId(5, FaceType, 9));
    EXPECT_FALSE(id != EntityId(5, FaceType, 9));
    for (const EntityId& other : {EntityId(6, FaceType, 9), EntityId(5, EdgeType, 9),
                                  EntityId(5, FaceType, 8), EntityId(9, FaceType, 5)}) {
        EXPECT_FALSE(id == other) << other.ToString();
        EXPECT_TRUE(id != other) << other.ToString();
    }
}

TEST(EntityIdTest, TheFlagTakesNoPartInComparison) {
    EntityId flagged(5, FaceType, 9);
    flagged.Flag = true;
    const EntityId plain(5, FaceType, 9);
    EXPECT_TRUE(flagged == plain);
    EXPECT_FALSE(flagged != plain);
    EXPECT_FALSE(flagged < plain);
    EXPECT_FALSE(plain < flagged);
}

TEST(EntityIdTest, OrdersByIdThenByOwner) {
    EXPECT_TRUE(EntityId(9, FaceType, 1) < EntityId(5, FaceType, 2));
    EXPECT_FALSE(EntityId(5, FaceType, 2) < EntityId(9, FaceType, 1));
    EXPECT_TRUE(EntityId(5, FaceType, 2) < EntityId(6, FaceType, 2));
    EXPECT_FALSE(EntityId(6, FaceType, 2) < EntityId(5, FaceType, 2));
    EXPECT_FALSE(EntityId(5, FaceType, 2) < EntityId(5, FaceType, 2));
}

TEST(EntityIdTest, OrdersNumbersAsUnsigned) {
    EXPECT_TRUE(EntityId(0, FaceType, 1) < EntityId(0, FaceType, kLargest));
    EXPECT_FALSE(EntityId(0, FaceType, kLargest) < EntityId(0, FaceType, 1));
    EXPECT_TRUE(EntityId(1, FaceType, 0) < EntityId(kLargest, FaceType, 0));
    EXPECT_FALSE(EntityId(kLargest, FaceType, 0) < EntityId(1, FaceType, 0));
}

// On purpose: hosts keep one map entry for an id whatever type it goes by.
TEST(EntityIdTest, IdsThatDifferInTypeAloneAreUnequalYetNeitherIsLess) {
    const EntityId face(5, FaceType, 9);
    const EntityId edge(5, EdgeType, 9);
    EXPECT_FALSE(face == edge);
    EXPECT_FALSE(face < edge);
    EXPECT_FALSE(edge < face);
    std::map<EntityId, int> keyed;
    keyed[face] = 1;
    keyed[edge] = 2;
    ASSERT_EQ(keyed.size(), 1U);
    EXPECT_EQ(keyed.begin()->second, 2);
}

TEST(EntityIdTest, ComparesLikeTuplesOfItsFields) {
    std::mt19937_64 random(20261);
    const std::uint64_t numbers[] = {0, 1, 2, kLargest - 1, kLargest};
    const EntityType types[] = {InvalidType, VertexType, FaceType, OtherType};
    const auto any = [&] {
        return EntityId(numbers[random() % 5], types[random() % 4], numbers[random() % 5]);
    };
    for (int round = 0; round < 20000; ++round) {
        const EntityId a = any();
        const EntityId b = any();
        SCOPED_TRACE(a.ToString() + " and " + b.ToString());
        const bool equal = std::tie(a.ID, a.OwnerID, a.Type) == std::tie(b.ID, b.OwnerID, b.Type);
        ASSERT_EQ(a == b, equal);
        ASSERT_EQ(a != b, !equal);
        ASSERT_EQ(a < b, std::tie(a.ID, a.OwnerID) < std::tie(b.ID, b.OwnerID));
    }
}

// ---- ToString

TEST(EntityIdTest, ToStringNamesTypeThenIdThenOwner) {
    EXPECT_EQ(EntityId(5, FaceType, 9).ToString(),
              "EntityId: EntityType = 10002 ID = 9 OwnerID = 5");
}

TEST(EntityIdTest, ToStringWritesTheTypeSignedAndTheNumbersUnsigned) {
    EXPECT_EQ(EntityId().ToString(), "EntityId: EntityType = -1 ID = 0 OwnerID = 0");
    EXPECT_EQ(EntityId(kLargest - 1, OtherType, kLargest).ToString(),
              "EntityId: EntityType = 99999 ID = 18446744073709551615 "
              "OwnerID = 18446744073709551614");
    EXPECT_EQ(EntityId(0, typeOf(-2147483648LL), 0).ToString(),
              "EntityId: EntityType = -2147483648 ID = 0 OwnerID = 0");
}

TEST(EntityIdTest, TheFlagTakesNoPartInTheText) {
    EntityId id(5, FaceType, 9);
    id.Flag = true;
    EXPECT_EQ(id.ToString(), "EntityId: EntityType = 10002 ID = 9 OwnerID = 5");
}

}  // namespace
}  // namespace KesVizCore

/// @file
/// The ids that renderers hand out for host ids whose top bit may be set.

#include "support/EmptyHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

constexpr std::uint64_t kTop = 9223372036854775808U;      // 2^63
constexpr std::uint64_t kHighest = 9223372036854775807U;  // 2^63 - 1

/// Opens the tables, and forgets all of them when it is destroyed, as every renderer does.
class Renderer : public support::EmptyRenderer {
public:
    using ARenderer::addSignedId;
};

/// Each test starts and ends with empty tables.
class SignedIdTest : public testing::Test {
protected:
    SignedIdTest() { forget(); }
    ~SignedIdTest() override { forget(); }

    static void forget() { const Renderer renderer; }
    static std::uint64_t signedId(std::uint64_t id) { return ARenderer::getSignedId(id); }
    static void add(std::uint64_t id, std::uint64_t signedId) {
        Renderer::addSignedId(id, signedId);
    }
    /// What getSignedId throws; empty where it answers.
    static std::string error(std::uint64_t id) {
        try {
            ARenderer::getSignedId(id);
        } catch (const std::runtime_error& thrown) {
            return thrown.what();
        }
        return std::string();
    }
};

// ---- Ids with the top bit clear

TEST_F(SignedIdTest, AnIdWithItsTopBitClearIsItsOwn) {
    for (const std::uint64_t id : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{5},
                                   std::uint64_t{4294967296}, kHighest - 1, kHighest}) {
        EXPECT_EQ(signedId(id), id);
        EXPECT_EQ(signedId(id), id) << "again";
    }
}

// Such an id is not compared with what was handed out before, so one number can go out twice.
TEST_F(SignedIdTest, AnIdWithItsTopBitClearIsItsOwnEvenWhenItIsTaken) {
    EXPECT_EQ(signedId(kTop + 1 + 5), 5U);
    EXPECT_EQ(signedId(5), 5U);
    EXPECT_EQ(signedId(kTop + 1 + 5), 5U);
}

// ---- Ids with the top bit set

TEST_F(SignedIdTest, AnIdWithItsTopBitSetLosesItAndOne) {
    EXPECT_EQ(signedId(kTop + 1), 0U);
    EXPECT_EQ(signedId(kTop + 2), 1U);
    EXPECT_EQ(signedId(kTop + 6), 5U);
    EXPECT_EQ(signedId(18446744073709551614U), 9223372036854775805U);
    EXPECT_EQ(signedId(18446744073709551615U), 9223372036854775806U);
}

TEST_F(SignedIdTest, TheSameIdIsAnsweredAgain) {
    EXPECT_EQ(signedId(kTop + 6), 5U);
    EXPECT_EQ(signedId(kTop + 6), 5U);
}

TEST_F(SignedIdTest, ATakenNumberGivesWayToTheHighest) {
    EXPECT_EQ(signedId(5), 5U);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    EXPECT_EQ(signedId(kTop + 6), kHighest) << "again";
}

TEST_F(SignedIdTest, FurtherCollisionsTakeTheNextHighest) {
    for (const std::uint64_t taken : {1U, 2U, 3U, 4U}) {
        signedId(taken);
    }
    EXPECT_EQ(signedId(kTop + 2), kHighest);
    EXPECT_EQ(signedId(kTop + 3), kHighest - 1);
    EXPECT_EQ(signedId(kTop + 4), kHighest - 2);
    EXPECT_EQ(signedId(kTop + 5), kHighest - 3);
}

TEST_F(SignedIdTest, TheHighestNumbersThatAreTakenAreLeftOut) {
    signedId(kHighest);
    signedId(kHighest - 1);
    signedId(kHighest - 3);
    signedId(5);
    signedId(6);
    EXPECT_EQ(signedId(kTop + 6), kHighest - 2);
    EXPECT_EQ(signedId(kTop + 7), kHighest - 4);
}

// A number that one collision took from the top is taken for the id that it belongs to.
TEST_F(SignedIdTest, ACollisionMakesAnotherCollision) {
    signedId(5);
    signedId(6);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    EXPECT_EQ(signedId(kTop + 7), kHighest - 1);               // the own number of 2^64 - 1
    EXPECT_EQ(signedId(18446744073709551615U), kHighest - 2);  // and so on
    EXPECT_EQ(signedId(18446744073709551614U), kHighest - 3);
    EXPECT_EQ(signedId(18446744073709551613U), kHighest - 4);
}

TEST_F(SignedIdTest, AnIdKeepsItsOwnNumberWhereCollisionsLeaveIt) {
    signedId(5);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    EXPECT_EQ(signedId(18446744073709551615U), kHighest - 1);
    EXPECT_EQ(signedId(18446744073709551614U), kHighest - 2);
}

// ---- No number

TEST_F(SignedIdTest, TheLowestIdWithItsTopBitSetHasNoNumber) {
    EXPECT_EQ(error(kTop),
              "ARenderer::getLegalSignedId() could not compute a positive, unique id. Input was "
              "9223372036854775808:9223372036854775808");
}

TEST_F(SignedIdTest, AFailureHandsOutNothing) {
    EXPECT_NE(error(kTop), "");
    EXPECT_NE(error(kTop), "") << "again";
    EXPECT_EQ(signedId(5), 5U);
    EXPECT_EQ(signedId(kTop + 7), 6U);
}

// Its own number is -1, for which no collision is looked for.
TEST_F(SignedIdTest, TheLowestIdHasNoNumberEvenWhereMinusOneIsHandedOut) {
    add(1, 18446744073709551615U);
    EXPECT_NE(error(kTop), "");
}

TEST_F(SignedIdTest, AFailureIsARuntimeError) {
    EXPECT_THROW(signedId(kTop), std::runtime_error);
}

// ---- addSignedId

TEST_F(SignedIdTest, AddedNumbersAreAnsweredAsTheyAre) {
    add(5, 77);
    add(kTop, 78);
    add(6, 18446744073709551615U);
    EXPECT_EQ(signedId(5), 77U);
    EXPECT_EQ(signedId(kTop), 78U) << "an id that has no number of its own";
    EXPECT_EQ(signedId(6), 18446744073709551615U) << "even a negative one";
}

TEST_F(SignedIdTest, AddingReplacesTheNumberBefore) {
    EXPECT_EQ(signedId(5), 5U);
    add(5, 77);
    EXPECT_EQ(signedId(5), 77U);
    add(5, 78);
    EXPECT_EQ(signedId(5), 78U);
}

TEST_F(SignedIdTest, AnAddedNumberIsTaken) {
    add(1, 5);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    add(2, kHighest - 1);
    signedId(7);
    EXPECT_EQ(signedId(kTop + 8), kHighest - 2);
}

// Only the numbers that ids have now are taken, not those that were replaced.
TEST_F(SignedIdTest, AReplacedNumberIsFreeAgain) {
    add(1, 5);
    add(1, 77);
    EXPECT_EQ(signedId(kTop + 6), 5U);
    EXPECT_EQ(signedId(kTop + 78), kHighest);
}

TEST_F(SignedIdTest, AReplacedNumberIsFreeForACollisionToo) {
    add(1, kHighest);
    add(1, 5);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
}

TEST_F(SignedIdTest, ANumberThatTwoIdsHadStaysTakenWhileOneHasIt) {
    add(1, 5);
    add(2, 5);
    add(1, 77);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    add(2, 78);
    EXPECT_EQ(signedId(kTop + 7), 6U);
    forget();
    add(1, 5);
    add(1, 5);  // the same again is one id's still
    add(1, 77);
    EXPECT_EQ(signedId(kTop + 6), 5U);
}

// ---- Forgetting

TEST_F(SignedIdTest, AnyRenderersEndForgetsAllNumbers) {
    const Renderer living;
    signedId(5);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    forget();
    EXPECT_EQ(signedId(kTop + 6), 5U);
}

TEST_F(SignedIdTest, AnyRenderersEndForgetsAddedNumbersToo) {
    add(5, 77);
    forget();
    EXPECT_EQ(signedId(5), 5U);
    EXPECT_EQ(signedId(kTop + 78), 77U);
}

TEST_F(SignedIdTest, MakingARendererForgetsNothing) {
    signedId(5);
    EXPECT_EQ(signedId(kTop + 6), kHighest);
    const Renderer renderer;
    EXPECT_EQ(signedId(kTop + 6), kHighest);
}

// ---- At random, and many

/// The allocator again, one step after the other and without any shortcut.
class SlowModel {
public:
    void add(std::uint64_t id, std::uint64_t number) { _numbers[id] = number; }

    /// False where no number can be had.
    bool get(std::uint64_t id, std::uint64_t& number) {
        if (_numbers.count(id) != 0) {
            number = _numbers[id];
            return true;
        }
        if (id < kTop) {
            _numbers[id] = number = id;
            return true;
        }
        if (id == kTop) {
            return false;
        }
        number = id - kTop - 1;
        std::set<std::uint64_t> taken;
        for (const auto& entry : _numbers) {
            taken.insert(entry.second);
        }
        if (taken.count(number) != 0) {
            number = kHighest;
            while (taken.count(number) != 0) {
                --number;
            }
        }
        _numbers[id] = number;
        return true;
    }

private:
    std::map<std::uint64_t, std::uint64_t> _numbers;
};

TEST_F(SignedIdTest, RandomSequencesGiveWhatTheModelGives) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        forget();
        SlowModel model;
        std::mt19937_64 random(seed);
        // Few numbers around the four places where it matters, so that they collide often.
        const auto any = [&random] {
            static const std::uint64_t places[] = {0, kTop - 6, kTop, kTop * 2 - 12};
            return places[random() % 4] + random() % 12;
        };
        for (int step = 0; step < 150; ++step) {
            const std::uint64_t id = any();
            if (random() % 4 == 0) {
                const std::uint64_t number = any();
                SCOPED_TRACE("step " + std::to_string(step) + " adds " + std::to_string(number) +
                             " for " + std::to_string(id));
                add(id, number);
                model.add(id, number);
                continue;
            }
            SCOPED_TRACE("step " + std::to_string(step) + " asks for " + std::to_string(id));
            std::uint64_t expected = 0;
            if (model.get(id, expected)) {
                ASSERT_EQ(error(id), "");
                ASSERT_EQ(signedId(id), expected);
            } else {
                ASSERT_NE(error(id), "");
            }
        }
    }
}

TEST_F(SignedIdTest, OrdersMadeToMisleadTheSearchGiveWhatTheModelGives) {
    SlowModel model;
    const auto expectSame = [&model](std::uint64_t id) {
        std::uint64_t expected = 0;
        ASSERT_TRUE(model.get(id, expected));
        ASSERT_EQ(signedId(id), expected) << "for " << id;
    };
    const auto addBoth = [&model](std::uint64_t id, std::uint64_t number) {
        add(id, number);
        model.add(id, number);
    };
    std::uint64_t colliding = kTop + 1;  // ids whose own numbers are taken by the ids below them
    for (std::uint64_t low = 0; low < 200; ++low) {
        expectSame(low);
    }
    for (std::uint64_t step = 0; step < 40; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        expectSame(colliding++);
        expectSame(kHighest - 2 * step - 3);  // takes the next but one from the search
        expectSame(colliding++);
        // One id has the highest numbers in turn, shares them with another and leaves them.
        addBoth(1000, kHighest - step);
        addBoth(1001, kHighest - step);
        addBoth(1000, 500 + step);
        expectSame(colliding++);
        addBoth(1001, kTop + step);
        expectSame(colliding++);
        // A number that a collision took comes back, between others that stay.
        addBoth(kTop + 1 + 2 * step, step);
        expectSame(colliding++);
    }
}

TEST_F(SignedIdTest, ManyCollisionsTakeTheHighestNumbersInTurn) {
    constexpr std::uint64_t count = 50000;
    for (std::uint64_t low = 0; low < count; ++low) {
        signedId(low);
    }
    for (std::uint64_t low = 0; low < count; ++low) {
        ASSERT_EQ(signedId(kTop + 1 + low), kHighest - low);
    }
}

// The highest number comes back and is taken again each time, above ever more that stay taken.
TEST_F(SignedIdTest, ANumberThatComesBackHasNoOtherPassedAgain) {
    constexpr std::uint64_t count = 50000;
    for (std::uint64_t low = 0; low < 2 * count; ++low) {
        signedId(low);
    }
    std::uint64_t holder = kTop + 1;
    ASSERT_EQ(signedId(holder), kHighest);
    for (std::uint64_t step = 1; step < count; ++step) {
        add(holder, (std::uint64_t{1} << 62U) + step);
        holder = kTop + 1 + 2 * step;
        ASSERT_EQ(signedId(holder), kHighest);
        ASSERT_EQ(signedId(holder + 1), kHighest - step);
    }
}

TEST_F(SignedIdTest, AHundredThousandIdsAreUniqueAndStable) {
    std::mt19937_64 random(20240607);
    std::set<std::uint64_t> ids;
    while (ids.size() < 100000) {
        ids.insert(random() | kTop);
    }
    std::set<std::uint64_t> numbers;
    for (const std::uint64_t id : ids) {
        const std::uint64_t number = signedId(id);
        EXPECT_LT(number, kTop) << id;
        numbers.insert(number);
    }
    EXPECT_EQ(numbers.size(), ids.size());
    for (const std::uint64_t id : ids) {
        EXPECT_EQ(signedId(id), id - kTop - 1);
    }
}

}  // namespace
}  // namespace KesVizCore

#include <KesVizCore/scene/Settings.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

std::array<int, 4> channelsOf(const RGBAColor& color) {
    return {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()};
}

/// All fields as text, one a line, in the order of the record.
std::string textOf(const Settings& record) {
    std::string text;
    for (const RGBAColor& color : {record.Color1, record.Color2, record.Color3, record.Color4,
                                   record.Color5, record.Color6, record.Color7}) {
        for (const int channel : channelsOf(color)) {
            text += std::to_string(channel) + " ";
        }
        text += "\n";
    }
    const auto addFlags = [&text](const std::vector<bool>& flags) {
        for (const bool flag : flags) {
            text += flag ? "true " : "false ";
        }
        text += "\n";
    };
    addFlags({record.Flag1, record.Flag2, record.Flag3, record.Flag4, record.Flag5, record.Flag6,
              record.Flag7});
    text += std::to_string(record.Number1) + " " + std::to_string(record.Number2) + "\n";
    addFlags(
        {record.Flag8, record.Flag9, record.Flag10, record.Flag11, record.Flag12, record.Flag13});
    text += std::to_string(record.Number3) + "\n";
    addFlags({record.LastFlag});
    return text;
}

const char* const kDefaults =
    "245 245 245 255 \n"
    "0 0 0 255 \n"
    "0 151 223 255 \n"
    "0 0 0 255 \n"
    "255 204 0 255 \n"
    "221 239 254 255 \n"
    "171 189 204 255 \n"
    "false false false true false false true \n"
    "0 0\n"
    "true false false false false false \n"
    "4\n"
    "false \n";

/// Gives every field another value than the default, no two colours or numbers the same one.
void changeEveryField(Settings& record) {
    unsigned short next = 0;
    for (RGBAColor* color : {&record.Color1, &record.Color2, &record.Color3, &record.Color4,
                             &record.Color5, &record.Color6, &record.Color7}) {
        ++next;
        *color = RGBAColor(next, 20, 30, 40);
    }
    for (bool* flag : {&record.Flag1, &record.Flag2, &record.Flag3, &record.Flag4, &record.Flag5,
                       &record.Flag6, &record.Flag7, &record.Flag8, &record.Flag9, &record.Flag10,
                       &record.Flag11, &record.Flag12, &record.Flag13, &record.LastFlag}) {
        *flag = !*flag;
    }
    record.Number1 = 101;
    record.Number2 = -102;
    record.Number3 = 103;
}

const char* const kChanged =
    "1 20 30 40 \n"
    "2 20 30 40 \n"
    "3 20 30 40 \n"
    "4 20 30 40 \n"
    "5 20 30 40 \n"
    "6 20 30 40 \n"
    "7 20 30 40 \n"
    "true true true false true true false \n"
    "101 -102\n"
    "false true true true true true \n"
    "103\n"
    "true \n";

/// Puts back what a test changed in the process-wide records.
class SettingsTest : public testing::Test {
protected:
    ~SettingsTest() override {
        Settings fresh;
        Settings::Default()->CopyFrom(&fresh);
        Settings::Current()->CopyFrom(&fresh);
    }
};

// Each death test runs its statement in a process of its own, where no record exists yet.
class SettingsDeathTest : public testing::Test {
protected:
    SettingsDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(SettingsTest, FieldsStandInTheirOrder) {
    static_assert(std::is_standard_layout_v<Settings>);
    const std::vector<std::size_t> offsets = {
        offsetof(Settings, Color1),  offsetof(Settings, Color2),  offsetof(Settings, Color3),
        offsetof(Settings, Color4),  offsetof(Settings, Color5),  offsetof(Settings, Color6),
        offsetof(Settings, Color7),  offsetof(Settings, Flag1),   offsetof(Settings, Flag2),
        offsetof(Settings, Flag3),   offsetof(Settings, Flag4),   offsetof(Settings, Flag5),
        offsetof(Settings, Flag6),   offsetof(Settings, Flag7),   offsetof(Settings, Number1),
        offsetof(Settings, Number2), offsetof(Settings, Flag8),   offsetof(Settings, Flag9),
        offsetof(Settings, Flag10),  offsetof(Settings, Flag11),  offsetof(Settings, Flag12),
        offsetof(Settings, Flag13),  offsetof(Settings, Number3), offsetof(Settings, LastFlag)};
    EXPECT_EQ(offsets.front(), 0U);
    for (std::size_t place = 1; place < offsets.size(); ++place) {
        EXPECT_LT(offsets[place - 1], offsets[place]) << "at field " << place;
    }
}

TEST_F(SettingsTest, ANewRecordHoldsTheDefaults) {
    EXPECT_EQ(textOf(Settings()), kDefaults);
}

TEST_F(SettingsTest, DefaultHoldsTheDefaults) {
    EXPECT_EQ(textOf(*Settings::Default()), kDefaults);
}

TEST_F(SettingsTest, DefaultAnswersTheSameRecordEachTime) {
    Settings* const record = Settings::Default();
    ASSERT_NE(record, nullptr);
    changeEveryField(*record);
    EXPECT_EQ(Settings::Default(), record);
    EXPECT_EQ(textOf(*Settings::Default()), kChanged);
}

TEST_F(SettingsTest, CurrentStartsWithTheDefaults) {
    EXPECT_EQ(textOf(*Settings::Current()), kDefaults);
}

TEST_F(SettingsTest, CurrentAnswersTheSameRecordEachTimeAndNotTheDefaults) {
    Settings* const record = Settings::Current();
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(Settings::Current(), record);
    EXPECT_NE(Settings::Default(), record);
}

TEST_F(SettingsTest, CurrentIsChangedInPlaceAndLeavesTheDefaultsUntouched) {
    changeEveryField(*Settings::Current());
    EXPECT_EQ(textOf(*Settings::Current()), kChanged);
    EXPECT_EQ(textOf(*Settings::Default()), kDefaults);
}

TEST_F(SettingsTest, CurrentIsCopiedOnceAndThenNoLongerFollowsTheDefaults) {
    Settings::Current();
    changeEveryField(*Settings::Default());
    EXPECT_EQ(textOf(*Settings::Current()), kDefaults);
}

TEST_F(SettingsTest, CopyFromCopiesEveryField) {
    Settings other;
    changeEveryField(other);
    Settings record;
    record.CopyFrom(&other);
    EXPECT_EQ(textOf(record), kChanged);
    EXPECT_EQ(textOf(other), kChanged);
}

TEST_F(SettingsTest, CopyFromNullChangesNothing) {
    Settings record;
    changeEveryField(record);
    record.CopyFrom(nullptr);
    EXPECT_EQ(textOf(record), kChanged);
}

TEST_F(SettingsTest, CopyFromItselfChangesNothing) {
    Settings record;
    changeEveryField(record);
    record.CopyFrom(&record);
    EXPECT_EQ(textOf(record), kChanged);
}

TEST_F(SettingsDeathTest, CurrentBeforeDefaultCreatesBothAndNeitherLeaks) {
    EXPECT_EXIT(
        {
            const bool current = textOf(*Settings::Current()) == kDefaults;
            const bool defaults = textOf(*Settings::Default()) == kDefaults;
            std::exit(current && defaults ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(SettingsDeathTest, CurrentCopiesTheDefaultsAsTheyAreOnTheFirstCall) {
    EXPECT_EXIT(
        {
            changeEveryField(*Settings::Default());
            std::exit(textOf(*Settings::Current()) == kChanged ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(SettingsDeathTest, BothRecordsLiveUntilTheProcessEnds) {
    EXPECT_EXIT(
        {
            // Registered before the records exist, so that it runs after all that they register.
            std::atexit([] {
                const bool alive = textOf(*Settings::Current()) == kChanged &&
                                   textOf(*Settings::Default()) == kDefaults;
                std::_Exit(alive ? 0 : 1);
            });
            changeEveryField(*Settings::Current());
            std::exit(2);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace KesVizCore

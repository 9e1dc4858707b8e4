#include <KesVizCore/core/RGBAColor.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

namespace KesVizCore {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr double kNaNFactor = std::numeric_limits<double>::quiet_NaN();

/// Four channels, red first, as plain numbers.
using Channels = std::array<int, 4>;

Channels channelsOf(const RGBAColor& color) {
    return {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()};
}

RGBAColor colorOf(const Channels& channels) {
    return RGBAColor(
        static_cast<unsigned short>(channels[0]), static_cast<unsigned short>(channels[1]),
        static_cast<unsigned short>(channels[2]), static_cast<unsigned short>(channels[3]));
}

RGBAColor fromFloats(float red, float green, float blue, float alpha) {
    float rgba[] = {red, green, blue, alpha};
    return RGBAColor(rgba);
}

Channels anyChannels(std::mt19937& random) {
    std::uniform_int_distribution<int> channel(0, 255);
    return {channel(random), channel(random), channel(random), channel(random)};
}

/// Calls @p check with colours that take each channel through all its values, alone and among
/// random others.
template <typename Check>
void forManyColors(Check check) {
    std::mt19937 random(20262);
    for (std::size_t place = 0; place < 4; ++place) {
        for (int value = 0; value < 256; ++value) {
            for (Channels channels :
                 {Channels{0, 0, 0, 0}, Channels{255, 255, 255, 255}, anyChannels(random)}) {
                channels[place] = value;
                check(channels);
            }
        }
    }
}

std::string nameOf(const Channels& channels) {
    return testing::PrintToString(channels);
}

// ---- Data

TEST(RGBAColorTest, IsFourBytesRedGreenBlueAlpha) {
    const RGBAColor color(1, 2, 3, 4);
    std::array<std::uint8_t, 4> bytes{};
    static_assert(sizeof(RGBAColor) == 4);
    std::memcpy(bytes.data(), &color, bytes.size());
    EXPECT_EQ(bytes, (std::array<std::uint8_t, 4>{1, 2, 3, 4}));
}

TEST(RGBAColorTest, CopyConstructionCopiesTheFourChannels) {
    forManyColors([](const Channels& channels) {
        const RGBAColor color = colorOf(channels);
        const RGBAColor copy(color);
        ASSERT_EQ(channelsOf(copy), channels);
    });
}

// ---- Construction

TEST(RGBAColorTest, IsOpaqueWhiteByDefault) {
    EXPECT_EQ(channelsOf(RGBAColor()), (Channels{255, 255, 255, 255}));
}

TEST(RGBAColorTest, StoresEveryShortBelow256AndClampsEveryOther) {
    for (int value = 0; value <= 65535; ++value) {
        const auto given = static_cast<unsigned short>(value);
        const int expected = value < 256 ? value : 255;
        ASSERT_EQ(channelsOf(RGBAColor(given, 0, 1, 2)), (Channels{expected, 0, 1, 2})) << value;
        ASSERT_EQ(channelsOf(RGBAColor(0, given, 1, 2)), (Channels{0, expected, 1, 2})) << value;
        ASSERT_EQ(channelsOf(RGBAColor(0, 1, given, 2)), (Channels{0, 1, expected, 2})) << value;
        ASSERT_EQ(channelsOf(RGBAColor(0, 1, 2, given)), (Channels{0, 1, 2, expected})) << value;
    }
}

TEST(RGBAColorTest, ClampsAndDoesNotWrapLargeShorts) {
    EXPECT_EQ(channelsOf(RGBAColor(300, 255, 256, 0)), (Channels{255, 255, 255, 0}));
}

TEST(RGBAColorTest, ReadsFourFloatsRedFirst) {
    EXPECT_EQ(channelsOf(fromFloats(0.1F, 0.2F, 0.3F, 0.4F)), (Channels{25, 51, 76, 102}));
}

TEST(RGBAColorTest, TruncatesAndClampsFloats) {
    EXPECT_EQ(channelsOf(fromFloats(1.0F, 0.5F, -0.2F, 2.0F)), (Channels{255, 127, 0, 255}));
    EXPECT_EQ(channelsOf(fromFloats(0.999F, 0.0F, -0.0F, -1.0F)), (Channels{254, 0, 0, 0}));
}

TEST(RGBAColorTest, AFloatOnAStepGivesTheStepAndTheFloatBelowItTheStepBefore) {
    for (int step = 1; step < 256; ++step) {
        const float on = static_cast<float>(step) / 255.0F;
        float below = on;
        while (static_cast<long double>(below) * 255 >= step - 1e-5L) {
            below = std::nextafter(below, 0.0F);
        }
        EXPECT_EQ(channelsOf(fromFloats(on, below, 0, 0)), (Channels{step, step - 1, 0, 0}));
    }
}

TEST(RGBAColorTest, TruncatesTheProductOfRandomFloatsAndClampsIt) {
    std::mt19937 random(20263);
    std::uniform_real_distribution<float> anyFloat(-0.5F, 1.5F);
    for (int round = 0; round < 20000; ++round) {
        const float given = anyFloat(random);
        // 24 and 8 bits: the wide product is exact, so that one rounding to float remains.
        const float product = static_cast<float>(static_cast<long double>(given) * 255.0L);
        const float expected = std::fmin(std::fmax(std::floor(product), 0.0F), 255.0F);
        ASSERT_EQ(fromFloats(0, given, 0, 0).GetGreen(), static_cast<int>(expected))
            << std::hexfloat << given;
    }
}

TEST(RGBAColorTest, FloatsTooLargeForAnIntegerAreClamped) {
    for (const float large : {1e7F, 1e8F, 1e20F, std::numeric_limits<float>::max(), kInfinity}) {
        EXPECT_EQ(channelsOf(fromFloats(large, -large, large, -large)), (Channels{255, 0, 255, 0}))
            << large;
    }
}

TEST(RGBAColorTest, ANaNChannelIsZero) {
    EXPECT_EQ(channelsOf(fromFloats(kNaN, 1, kNaN, 1)), (Channels{0, 255, 0, 255}));
    EXPECT_EQ(channelsOf(fromFloats(1, -kNaN, 1, -kNaN)), (Channels{255, 0, 255, 0}));
}

TEST(RGBAColorTest, LeavesTheFloatsItReadsAlone) {
    float rgba[] = {2.0F, 0.5F, -1.0F, 0.25F};
    RGBAColor color(rgba);
    EXPECT_EQ(color.GetAlpha(), 63);
    EXPECT_EQ((std::array<float, 4>{rgba[0], rgba[1], rgba[2], rgba[3]}),
              (std::array<float, 4>{2.0F, 0.5F, -1.0F, 0.25F}));
}

// ---- Named colours: their alpha is 0 on purpose, unlike that of the default colour

TEST(RGBAColorTest, NamedColorsHaveAlphaZero) {
    EXPECT_EQ(channelsOf(RGBAColor::Black()), (Channels{0, 0, 0, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::Red()), (Channels{255, 0, 0, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::Green()), (Channels{0, 255, 0, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::Blue()), (Channels{0, 0, 255, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::Cyan()), (Channels{0, 255, 255, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::Yellow()), (Channels{255, 255, 0, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::Magenta()), (Channels{255, 0, 255, 0}));
    EXPECT_EQ(channelsOf(RGBAColor::White()), (Channels{255, 255, 255, 0}));
}

TEST(RGBAColorTest, NoNamedColorIsOpaque) {
    for (const RGBAColor& color :
         {RGBAColor::Black(), RGBAColor::Red(), RGBAColor::Green(), RGBAColor::Blue(),
          RGBAColor::Cyan(), RGBAColor::Yellow(), RGBAColor::Magenta(), RGBAColor::White()}) {
        EXPECT_FALSE(color.IsOpaque()) << nameOf(channelsOf(color));
    }
}

TEST(RGBAColorTest, TheNamedWhiteIsNotTheDefaultWhite) {
    EXPECT_FALSE(RGBAColor::White() == RGBAColor());
}

// ---- Channels

TEST(RGBAColorTest, EachChannelReadsBackWhatWasStored) {
    forManyColors([](const Channels& channels) {
        const RGBAColor color = colorOf(channels);
        ASSERT_EQ(channelsOf(color), channels);
        ASSERT_EQ(color.Alpha(), channels[3]);
    });
}

TEST(RGBAColorTest, IsOpaqueAtAlpha255Alone) {
    for (int alpha = 0; alpha < 256; ++alpha) {
        EXPECT_EQ(colorOf({1, 2, 3, alpha}).IsOpaque(), alpha == 255) << "alpha " << alpha;
    }
}

// ---- Conversions

TEST(RGBAColorTest, ToFloatArrayWritesEachChannelDividedBy255) {
    forManyColors([](const Channels& channels) {
        std::array<float, 6> out{-7, -7, -7, -7, -7, -7};  // a guard on either side
        colorOf(channels).ToFloatArray(&out[1]);
        std::array<float, 6> expected{-7, 0, 0, 0, 0, -7};
        for (std::size_t place = 0; place < 4; ++place) {
            expected[place + 1] = static_cast<float>(channels[place] / 255.0L);
        }
        ASSERT_EQ(out, expected) << nameOf(channels);
    });
}

TEST(RGBAColorTest, ThroughFloatsAndBackEveryChannelKeepsItsValue) {
    forManyColors([](const Channels& channels) {
        std::array<float, 4> floats{};
        colorOf(channels).ToFloatArray(floats.data());
        ASSERT_EQ(channelsOf(RGBAColor(floats.data())), channels);
    });
}

TEST(RGBAColorTest, ToInt32PacksAlphaRedGreenBlueFromTheTop) {
    EXPECT_EQ(RGBAColor(0x12, 0x34, 0x56, 0x78).ToInt32(), 0x78123456);
    forManyColors([](const Channels& channels) {
        const long long word =
            channels[3] * 16777216LL + channels[0] * 65536LL + channels[1] * 256LL + channels[2];
        const long long expected = word < 2147483648LL ? word : word - 4294967296LL;
        ASSERT_EQ(colorOf(channels).ToInt32(), expected) << nameOf(channels);
    });
}

TEST(RGBAColorTest, ToInt32IsNegativeFromAlpha128On) {
    EXPECT_EQ(RGBAColor(255, 255, 255, 127).ToInt32(), 2147483647);
    EXPECT_EQ(RGBAColor(0, 0, 0, 128).ToInt32(), std::numeric_limits<int>::min());
    EXPECT_EQ(RGBAColor().ToInt32(), -1);
}

TEST(RGBAColorTest, ToPositiveIntHalvesAlpha) {
    EXPECT_EQ(RGBAColor(0, 0, 0, 255).ToPositiveInt(), 2130706432);
    EXPECT_EQ(RGBAColor(1, 0, 0, 0).ToPositiveInt(), 65536);
    forManyColors([](const Channels& channels) {
        const long long expected = channels[3] / 2 * 16777216LL + channels[0] * 65536LL +
                                   channels[1] * 256LL + channels[2];
        if (expected != 0) {
            ASSERT_EQ(colorOf(channels).ToPositiveInt(), expected) << nameOf(channels);
        }
    });
}

TEST(RGBAColorTest, ToPositiveIntOfAllZerosHasAlphaOne) {
    EXPECT_EQ(RGBAColor(0, 0, 0, 0).ToPositiveInt(), 16777216);
}

// Halved, alpha 1 is as good as 0; a key of 0 must not arise from it either.
TEST(RGBAColorTest, ToPositiveIntOfBlackWithAlphaOneHasAlphaOneToo) {
    EXPECT_EQ(RGBAColor(0, 0, 0, 1).ToPositiveInt(), 16777216);
}

TEST(RGBAColorTest, ToPositiveIntIsAlwaysAboveZero) {
    const int some[] = {0, 1, 2, 127, 128, 254, 255};
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (const int red : some) {
            for (const int green : some) {
                for (const int blue : some) {
                    ASSERT_GT(colorOf({red, green, blue, alpha}).ToPositiveInt(), 0)
                        << nameOf({red, green, blue, alpha});
                }
            }
        }
    }
}

TEST(RGBAColorTest, ToHexStringIsTheWordInLowerCaseHexadecimal) {
    std::wstring text;
    RGBAColor().ToHexString(text);
    EXPECT_EQ(text, L"ffffffff");
    RGBAColor(0xAB, 0xCD, 0xEF, 0x9A).ToHexString(text);
    EXPECT_EQ(text, L"9aabcdef");
}

TEST(RGBAColorTest, ToHexStringPadsWithBlanksToEightPlaces) {
    std::wstring text;
    RGBAColor(255, 0, 0, 0).ToHexString(text);
    EXPECT_EQ(text, L"  ff0000");
    RGBAColor(0x12, 0, 0, 0).ToHexString(text);
    EXPECT_EQ(text, L"  120000");
    RGBAColor(0, 0, 0, 0).ToHexString(text);
    EXPECT_EQ(text, L"       0");
}

TEST(RGBAColorTest, ToHexStringReplacesWhatTheTextHeld) {
    std::wstring text = L"something a good deal longer than eight places";
    RGBAColor(0, 0, 1, 0).ToHexString(text);
    EXPECT_EQ(text, L"       1");
}

TEST(RGBAColorTest, ToHexStringAgreesWithAStreamForEveryChannel) {
    forManyColors([](const Channels& channels) {
        std::wostringstream expected;
        expected << std::hex << std::setw(8)
                 << static_cast<std::uint32_t>(colorOf(channels).ToInt32());
        std::wstring text;
        colorOf(channels).ToHexString(text);
        ASSERT_EQ(text, expected.str()) << nameOf(channels);
    });
}

// ---- Comparison and assignment

TEST(RGBAColorTest, EqualMeansAllFourChannels) {
    const Channels channels{10, 20, 30, 40};
    EXPECT_TRUE(colorOf(channels) == colorOf(channels));
    EXPECT_FALSE(colorOf(channels) != colorOf(channels));
    for (std::size_t place = 0; place < 4; ++place) {
        for (int value = 0; value < 256; ++value) {
            Channels other = channels;
            other[place] = value;
            ASSERT_EQ(colorOf(channels) == colorOf(other), other == channels) << nameOf(other);
            ASSERT_EQ(colorOf(channels) != colorOf(other), other != channels) << nameOf(other);
        }
    }
}

TEST(RGBAColorTest, AssignmentCopiesTheFourChannels) {
    forManyColors([](const Channels& channels) {
        RGBAColor color(9, 8, 7, 6);
        color = colorOf(channels);
        ASSERT_EQ(channelsOf(color), channels);
    });
}

TEST(RGBAColorTest, AssignmentToItselfChangesNothing) {
    RGBAColor color(1, 2, 3, 4);
    const RGBAColor& same = color;
    color = same;
    EXPECT_EQ(channelsOf(color), (Channels{1, 2, 3, 4}));
}

TEST(RGBAColorTest, AssignmentReturnsNothing) {
    static_assert(
        std::is_void_v<decltype(std::declval<RGBAColor&>() = std::declval<const RGBAColor&>())>);
}

// ---- Sum

TEST(RGBAColorTest, TheSumIsClampedForEveryPairOfValuesInEveryChannel) {
    for (int one = 0; one < 256; ++one) {
        for (int other = 0; other < 256; ++other) {
            const int sum = one + other > 255 ? 255 : one + other;
            const RGBAColor color =
                colorOf({one, other, one, other}) + colorOf({other, one, other, one});
            ASSERT_EQ(channelsOf(color), (Channels{sum, sum, sum, sum})) << one << ", " << other;
        }
    }
}

TEST(RGBAColorTest, TheSumTakesEachChannelByItself) {
    EXPECT_EQ(channelsOf(RGBAColor(1, 2, 3, 4) + RGBAColor(10, 20, 255, 40)),
              (Channels{11, 22, 255, 44}));
}

// ---- Product

/// What a product comes to, worked out on whole doubles without any narrowing conversion.
int scaled(double k, int channel) {
    const double product = std::trunc(k * channel);
    if (std::isnan(product)) {
        return 0;
    }
    if (product < -2147483648.0 || product > 2147483647.0) {
        return 255;
    }
    const double rest = std::fmod(product, 65536.0);
    const double wrapped = rest < 0 ? rest + 65536.0 : rest;
    return wrapped > 255 ? 255 : static_cast<int>(wrapped);
}

Channels scaled(double k, const Channels& channels) {
    return {scaled(k, channels[0]), scaled(k, channels[1]), scaled(k, channels[2]),
            scaled(k, channels[3])};
}

TEST(RGBAColorTest, TheProductTruncatesTowardZero) {
    EXPECT_EQ(channelsOf(0.5 * RGBAColor(255, 254, 1, 3)), (Channels{127, 127, 0, 1}));
    EXPECT_EQ(channelsOf(0.999999 * RGBAColor(255, 1, 0, 2)), (Channels{254, 0, 0, 1}));
}

TEST(RGBAColorTest, ALargeProductBecomes255) {
    EXPECT_EQ(channelsOf(2.0 * RGBAColor(200, 127, 128, 255)), (Channels{255, 254, 255, 255}));
}

// Negative numbers wrap to large ones on their way to the clamp.
TEST(RGBAColorTest, MinusOneTurnsEveryChannelBut0Into255) {
    for (int value = 0; value < 256; ++value) {
        const int expected = value == 0 ? 0 : 255;
        EXPECT_EQ(channelsOf(-1.0 * colorOf({value, 0, value, value})),
                  (Channels{expected, 0, expected, expected}))
            << value;
    }
}

TEST(RGBAColorTest, AProductBetweenMinusOneAndZeroIsZero) {
    EXPECT_EQ(channelsOf(-0.1 * RGBAColor(9, 1, 0, 10)), (Channels{0, 0, 0, 255}));
}

// The product passes through 16 bits unsigned, so that 65541 and -65531 both come out as 5.
TEST(RGBAColorTest, TheProductWrapsAt65536) {
    EXPECT_EQ(channelsOf(65535.0 * RGBAColor(1, 0, 0, 0)), (Channels{255, 0, 0, 0}));
    EXPECT_EQ(channelsOf(65536.0 * RGBAColor(1, 2, 255, 0)), (Channels{0, 0, 0, 0}));
    EXPECT_EQ(channelsOf(65541.0 * RGBAColor(1, 2, 51, 52)), (Channels{5, 10, 255, 255}));
    EXPECT_EQ(channelsOf(-65531.0 * RGBAColor(1, 2, 51, 52)), (Channels{5, 10, 255, 255}));
}

TEST(RGBAColorTest, AProductThatDoesNotFit32BitsBecomes255) {
    EXPECT_EQ(channelsOf(2147483647.0 * RGBAColor(1, 0, 0, 0)), (Channels{255, 0, 0, 0}));
    EXPECT_EQ(channelsOf(2147483648.0 * RGBAColor(1, 0, 2, 255)), (Channels{255, 0, 255, 255}));
    EXPECT_EQ(channelsOf(-2147483648.0 * RGBAColor(1, 0, 2, 255)), (Channels{0, 0, 255, 255}));
    EXPECT_EQ(channelsOf(-2147483648.9 * RGBAColor(1, 0, 0, 0)), (Channels{0, 0, 0, 0}));
    EXPECT_EQ(channelsOf(-2147483649.0 * RGBAColor(1, 0, 0, 0)), (Channels{255, 0, 0, 0}));
    EXPECT_EQ(channelsOf(1e300 * RGBAColor(1, 0, 255, 2)), (Channels{255, 0, 255, 255}));
}

TEST(RGBAColorTest, InfinityBecomes255AndInfinityTimesZeroZero) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(channelsOf(infinity * RGBAColor(1, 0, 255, 2)), (Channels{255, 0, 255, 255}));
    EXPECT_EQ(channelsOf(-infinity * RGBAColor(1, 0, 255, 2)), (Channels{255, 0, 255, 255}));
}

TEST(RGBAColorTest, NaNTimesAnyChannelIsZero) {
    EXPECT_EQ(channelsOf(kNaNFactor * RGBAColor(1, 0, 255, 2)), (Channels{0, 0, 0, 0}));
}

TEST(RGBAColorTest, TheProductAgreesWithWholeDoublesForRandomFactors) {
    std::mt19937 random(20264);
    const double magnitudes[] = {1.0, 4.0, 300.0, 70000.0, 3e9, 1e12};
    for (int round = 0; round < 30000; ++round) {
        std::uniform_real_distribution<double> factor(-magnitudes[round % 6],
                                                      magnitudes[round % 6]);
        const double k = factor(random);
        const Channels channels = anyChannels(random);
        ASSERT_EQ(channelsOf(k * colorOf(channels)), scaled(k, channels))
            << std::setprecision(17) << k << " times " << nameOf(channels);
    }
}

TEST(RGBAColorTest, TheProductAgreesWithWholeDoublesAroundTheLimitsOfItsIntegers) {
    for (const double limit : {0.0, 1.0, 255.0, 256.0, 65535.0, 65536.0, 65792.0, 131072.0,
                               2147483647.0, 2147483648.0, 4294967296.0, 9223372036854775808.0}) {
        for (const double offset : {-2.0, -1.0, -0.5, 0.0, 0.5, 1.0, 2.0}) {
            for (int channel = 1; channel < 256; ++channel) {
                for (const double sign : {-1.0, 1.0}) {
                    const double k = sign * (limit + offset) / channel;
                    const Channels channels{channel, 255 - channel, 1, 255};
                    ASSERT_EQ(channelsOf(k * colorOf(channels)), scaled(k, channels))
                        << std::setprecision(17) << k << " times " << nameOf(channels);
                }
            }
        }
    }
}

}  // namespace
}  // namespace KesVizCore

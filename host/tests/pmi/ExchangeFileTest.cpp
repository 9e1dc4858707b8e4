#include "reading/part21/ExchangeFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kesview {
namespace {

using Kind = ExchangeValue::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

ExchangeFile fileOf(const std::string& data) {
    return ExchangeFile::FromText(
        "ISO-10303-21;\nHEADER;\nFILE_NAME('#9=A(1);');\nENDSEC;\nDATA;\n" + data +
        "\nENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(ExchangeFileTest, FindsInstancesByNumberAndType) {
    const ExchangeFile file = fileOf("#1=POINT('',1.);\n#20 = LINE ( #1 , #1 ) ;#3=point('b',2.);");
    EXPECT_EQ(file.Size(), 3U);
    EXPECT_THAT(file.OfType("POINT"), ElementsAre(1U, 3U));
    EXPECT_THAT(file.OfType("LINE"), ElementsAre(20U));
    EXPECT_THAT(file.OfType("PLANE"), IsEmpty());
    EXPECT_TRUE(file.Has(20));
    EXPECT_FALSE(file.Has(9));  // stands in a string of the header
}

TEST(ExchangeFileTest, ParsesEveryKindOfParameter) {
    const ExchangeFile file =
        fileOf(R"(#1=A('t''x',-1.5E2,7,.T.,#12,$,*,(1,(2,#3)),LEN(2.),"0FF");)");
    const ExchangeInstance a = file.Get(1);
    ASSERT_EQ(a.parts.size(), 1U);
    const ExchangeValue& p = a.parts.front().parameters;
    ASSERT_EQ(p.items.size(), 10U);
    EXPECT_EQ(p.At(0).text, "t'x");
    EXPECT_EQ(p.At(1).number, -150.0);
    EXPECT_EQ(p.At(2).number, 7.0);
    EXPECT_EQ(p.At(3).kind, Kind::Enumeration);
    EXPECT_EQ(p.At(3).text, "T");
    EXPECT_EQ(p.At(4).reference, 12U);
    EXPECT_EQ(p.At(5).kind, Kind::Unset);
    EXPECT_EQ(p.At(6).kind, Kind::Derived);
    EXPECT_EQ(p.At(7).At(1).At(0).number, 2.0);
    EXPECT_THAT(p.At(7).References(), ElementsAre(3U));
    EXPECT_EQ(p.At(8).kind, Kind::Typed);
    EXPECT_EQ(p.At(8).Unwrapped().number, 2.0);
    EXPECT_EQ(p.At(9).text, "0FF");
}

TEST(ExchangeFileTest, ParametersThatAreNotThereReadAsUnset) {
    const ExchangeFile file = fileOf("#1=A(1);");
    EXPECT_FALSE(file.Get(1).Attribute("A", 5, 5).IsSet());
    EXPECT_FALSE(file.Get(1).Attribute("A", 0, 0).At(3).IsSet());
    EXPECT_TRUE(file.Get(2).parts.empty());
}

TEST(ExchangeFileTest, ComplexInstancesKeepTheirParts) {
    const ExchangeFile file =
        fileOf("#1=( BASE('n') /* c */ OWN(#4,2.) EMPTY() );\n#4=OWN('m',#1,3.);");
    const ExchangeInstance complex = file.Get(1);
    EXPECT_TRUE(complex.IsComplex());
    EXPECT_TRUE(complex.Is("EMPTY"));
    EXPECT_EQ(complex.Attribute("OWN", 1, 2).number, 2.0);
    EXPECT_EQ(file.Get(4).Attribute("OWN", 1, 2).number, 3.0);
    EXPECT_THAT(file.OfType("OWN"), ElementsAre(1U, 4U));
    EXPECT_THAT(file.OfTypeEnding("SE"), ElementsAre(1U));
}

TEST(ExchangeFileTest, StringsAndCommentsMayHoldAnything) {
    const ExchangeFile file = fileOf("#1=A('#2=B(1);');/* #3=C(1); */\n#4=D(';)(');");
    EXPECT_EQ(file.Size(), 2U);
    EXPECT_EQ(file.Get(4).Attribute("D", 0, 0).text, ";)(");
}

TEST(ExchangeFileTest, SkipsAndCountsAnInstanceWithoutItsEnd) {
    const ExchangeFile file = fileOf("#1=A((1,2\n#2=B(3);\n#3=;\n#4=C();");
    EXPECT_THAT(file.OfType("B"), ElementsAre(2U));
    EXPECT_THAT(file.OfType("C"), ElementsAre(4U));
    EXPECT_EQ(file.Size(), 2U);
    EXPECT_EQ(file.SkippedCount(), 2U);
    EXPECT_FALSE(file.IsTruncated());
}

TEST(ExchangeFileTest, AStringWithoutItsEndCostsOneInstance) {
    const ExchangeFile file = fileOf("#1=A('x);\n#2=B('y');\n#3=C('z');");
    EXPECT_EQ(file.SkippedCount(), 1U);
    EXPECT_EQ(file.Get(2).Attribute("B", 0, 0).text, "y");
    EXPECT_TRUE(file.Has(3));
}

TEST(ExchangeFileTest, TextThatEndsWithinAnInstanceIsTruncated) {
    const ExchangeFile file = ExchangeFile::FromText("DATA;\n#1=A(1);\n#2=B((1,2");
    EXPECT_EQ(file.Size(), 1U);
    EXPECT_EQ(file.SkippedCount(), 1U);
    EXPECT_TRUE(file.IsTruncated());
}

TEST(ExchangeFileTest, OfANumberGivenTwiceTheFirstCounts) {
    const ExchangeFile file = fileOf("#1=A(1);\n#1=B(2);");
    EXPECT_TRUE(file.Get(1).Is("A"));
    EXPECT_THAT(file.OfType("B"), IsEmpty());
    EXPECT_EQ(file.SkippedCount(), 1U);
}

TEST(ExchangeFileTest, DamagedParametersReadAsUnsetAndTheRestIsKept) {
    const ExchangeFile file = fileOf("#1=A(1..2,#,%%,1E999,'ok');");
    const ExchangeInstance a = file.Get(1);
    EXPECT_EQ(a.Attribute("A", 4, 4).text, "ok");
    EXPECT_FALSE(a.Attribute("A", 1, 1).IsSet());
    EXPECT_FALSE(a.Attribute("A", 2, 2).IsSet());
    EXPECT_FALSE(a.Attribute("A", 3, 3).IsSet());
}

TEST(ExchangeFileTest, ListsNestedWithoutEndDoNotOverflow) {
    const std::string deep(100000, '(');
    const ExchangeFile file = fileOf("#1=A" + deep + std::string(100000, ')') + ";");
    EXPECT_EQ(file.Get(1).parts.size(), 1U);
}

TEST(ExchangeFileTest, EveryPrefixOfAFileIsReadWithoutHarm) {
    const std::string whole =
        "DATA;\n#1=A('t\\X2\\2300\\X0\\',(1.,2.),#2,.T.);\n#2=(B()C('x',/*y*/$));\nENDSEC;";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const ExchangeFile file = ExchangeFile::FromText(whole.substr(0, length));
        EXPECT_LE(file.Size(), 2U) << length;
        EXPECT_LE(file.Get(1).References().size(), 1U) << length;
    }
}

TEST(ExchangeFileTest, AFileThatIsNotThereIsNone) {
    EXPECT_FALSE(ExchangeFile::Open("/no/such/file.stp").has_value());
}

}  // namespace
}  // namespace kesview

#include "sample/ExchangeText.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kesview {
namespace {

constexpr const char* small =
    "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n"
    "#1 = POINT('a',(1.,2.));\n"
    "#2 = LINE('b',#1,\n  #1);\n"
    "#7 = LINE('c',#2,#1);\n"
    "ENDSEC;\nEND-ISO-10303-21;\n";

TEST(ExchangeTextTest, EntitiesAreFoundByTheirStart) {
    const ExchangeText text(small);
    EXPECT_EQ(text.Find("LINE("), 2);
    EXPECT_EQ(text.FindAll("LINE("), (std::vector<int>{2, 7}));
    EXPECT_EQ(text.Entity(2), "LINE('b',#1,#1)");
    EXPECT_THROW(text.Find("CIRCLE("), std::runtime_error);
}

TEST(ExchangeTextTest, ReferencesCountFromBothEnds) {
    const ExchangeText text(small);
    EXPECT_EQ(text.Reference(7, 0), 2);
    EXPECT_EQ(text.Reference(7, -1), 1);
    EXPECT_THROW(text.Reference(1, 0), std::out_of_range);
}

TEST(ExchangeTextTest, AddedEntitiesGetTheNextNumberAndStandLast) {
    ExchangeText text(small);
    EXPECT_EQ(text.Add("POINT('d',(0.,0.))"), 8);
    EXPECT_EQ(text.Text(),
              "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n"
              "#1=POINT('a',(1.,2.));\n"
              "#2=LINE('b',#1,#1);\n"
              "#7=LINE('c',#2,#1);\n"
              "#8=POINT('d',(0.,0.));\n"
              "ENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(ExchangeTextTest, AReplacementIsMadeInEveryEntity) {
    ExchangeText text(small);
    text.Replace("LINE('", "CURVE('");
    EXPECT_EQ(text.FindAll("CURVE('").size(), std::size_t(2));
}

TEST(ExchangeTextTest, LongEntitiesAreBrokenAfterCommasAndReadBackEqual) {
    ExchangeText text(small);
    std::string entity = "LIST((";
    for (int i = 0; i < 100; ++i)
        entity += std::to_string(i) + ",";
    entity += "100))";
    const int id = text.Add(entity);
    const ExchangeText back(text.Text());
    EXPECT_EQ(back.Entity(id), entity);
    EXPECT_NE(text.Text().find(",\n  "), std::string::npos);
}

TEST(ExchangeTextTest, WhatIsNoExchangeFileIsRefused) {
    EXPECT_THROW(ExchangeText("nothing"), std::runtime_error);
    EXPECT_THROW(ExchangeText("DATA;\nPOINT();\nENDSEC;\n"), std::runtime_error);
}

TEST(ExchangeTextTest, NumbersHaveAPoint) {
    EXPECT_EQ(real(12), "12.");
    EXPECT_EQ(real(-0.25), "-0.25");
    EXPECT_EQ(real(0), "0.");
    EXPECT_EQ(real(3e-17), "3.E-17");
    EXPECT_EQ(real(-2.5e-17), "-2.5E-17");
}

}  // namespace
}  // namespace kesview

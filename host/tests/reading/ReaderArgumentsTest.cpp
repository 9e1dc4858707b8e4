/// @file
#include "reading/ReaderArguments.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kesview {
namespace {

TEST(ReaderArgumentsTest, ComeBackAsTheyWere) {
    for (const FileFormat format :
         {FileFormat::Step, FileFormat::Iges, FileFormat::Brep, FileFormat::Stl}) {
        ReaderArguments given;
        given.path = "--a path, with\nblanks";
        given.format = format;
        given.options.withPmi = false;
        given.options.withTessellation = format == FileFormat::Step;
        given.options.deflection = 0.1 + 0.2;  // needs all its digits
        given.options.angle = 1e-300;
        const ReaderArguments found = fromCommandLine(toCommandLine(given));
        EXPECT_EQ(found.path, given.path);
        EXPECT_EQ(found.format, given.format);
        EXPECT_EQ(found.options.withPmi, false);
        EXPECT_EQ(found.options.withTessellation, given.options.withTessellation);
        EXPECT_EQ(found.options.deflection, given.options.deflection);
        EXPECT_EQ(found.options.angle, given.options.angle);
    }
}

TEST(ReaderArgumentsTest, OthersAreRefused) {
    EXPECT_THROW(fromCommandLine({}), std::runtime_error);
    EXPECT_THROW(fromCommandLine({"a", "STEP", "1", "1", "0.1"}), std::runtime_error);
    EXPECT_THROW(fromCommandLine({"a", "step", "1", "1", "0.1", "0.5"}), std::runtime_error);
    EXPECT_THROW(fromCommandLine({"a", "unknown", "1", "1", "0.1", "0.5"}), std::runtime_error);
    EXPECT_THROW(fromCommandLine({"a", "STEP", "2", "1", "0.1", "0.5"}), std::runtime_error);
    EXPECT_THROW(fromCommandLine({"a", "STEP", "1", "", "0.1", "0.5"}), std::runtime_error);
    EXPECT_THROW(fromCommandLine({"a", "STEP", "1", "1", "0.1x", "0.5"}), std::runtime_error);
    EXPECT_NO_THROW(fromCommandLine({"a", "STEP", "1", "1", "0.1", "0.5"}));
}

}  // namespace
}  // namespace kesview

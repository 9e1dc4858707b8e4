#include "StepDocument.h"
#include "reading/part21/ExchangePmi.h"
#include "support/RealFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace kesview {
namespace {

using support::realFile;

using testing::IsEmpty;

struct Expected {
    const char* file;
    double millimetres;  ///< in one unit of its dimensions
    std::size_t dimensions;
    std::size_t tolerances;  ///< that the reader has a value of
};

class XcafAgreementTest : public testing::TestWithParam<Expected> {};

std::multiset<std::string> ownSet(const ExchangePmi& pmi, AnnotationKind kind, const char* value,
                                  double millimetres) {
    std::multiset<std::string> own;
    for (const ExchangeAnnotation& read : pmi.annotations) {
        const Annotation& annotation = read.annotation;
        if (annotation.kind == kind && annotation.semantic) {
            const auto found = annotation.attributes.find(value);
            const bool angle = annotation.typeCode == 11 || annotation.typeCode == 28;
            const double scale = angle ? 57.295779513082321 : 1 / millimetres;
            own.insert(typeAndValue(annotation.typeCode, found == annotation.attributes.end()
                                                             ? 0
                                                             : std::stod(found->second) * scale));
        }
    }
    return own;
}

std::vector<std::string> missing(const std::multiset<std::string>& expected,
                                 const std::multiset<std::string>& found) {
    std::vector<std::string> lacking;
    std::set_difference(expected.begin(), expected.end(), found.begin(), found.end(),
                        std::back_inserter(lacking));
    return lacking;
}

TEST_P(XcafAgreementTest, HasEveryValueThatTheReaderHas) {
    KESVIEW_NEEDS_DATA();
    const Expected& expected = GetParam();
    const StepDocument reader(realFile(expected.file));
    const ExchangePmi pmi = readExchangePmi(*ExchangeFile::Open(realFile(expected.file)), 1);
    const auto dimensions = ownSet(pmi, AnnotationKind::Dimension, "Value", expected.millimetres);
    EXPECT_THAT(missing(reader.Dimensions(), dimensions), IsEmpty());
    EXPECT_EQ(reader.Dimensions().size(), expected.dimensions);
    const auto tolerances = ownSet(pmi, AnnotationKind::Tolerance, "Tolerance Value", 1);
    EXPECT_THAT(missing(reader.Tolerances(), tolerances), IsEmpty());
    EXPECT_EQ(reader.Tolerances().size(), expected.tolerances);
    std::set<std::string> letters;
    for (const ExchangeAnnotation& read : pmi.annotations) {
        if (read.annotation.kind == AnnotationKind::Datum && read.annotation.semantic) {
            letters.insert(read.annotation.label);
        }
    }
    for (const std::string& letter : reader.DatumLetters()) {
        EXPECT_EQ(letters.count(letter), 1U) << letter;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, XcafAgreementTest,
                         testing::Values(Expected{"gen_bracket.stp", 1, 2, 1},
                                         Expected{"nist_ctc_01_asme1_ap242-e1.stp", 1, 6, 0},
                                         Expected{"nist_ctc_05_asme1_ap242-e1.stp", 25.4, 6, 10},
                                         Expected{"nist_ftc_07_asme1_ap242-e2.stp", 25.4, 16, 25},
                                         Expected{"nist_ftc_11_asme1_ap242-e1.stp", 1, 6, 4},
                                         Expected{"nist_stc_08_asme1_ap242-e3.stp", 25.4, 7, 29}),
                         [](const auto& test) { return "File" + std::to_string(test.index); });

}  // namespace
}  // namespace kesview

/// @file
#include "document/DocumentStream.h"
#include "document/FullDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace kesview {
namespace {

std::string whyNot(const std::string& bytes) {
    try {
        readDocument(bytes);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "it was read";
}

TEST(DocumentStreamTest, EveryFieldComesBack) {
    const Document document = fullDocument();
    expectSame(document, readDocument(toBytes(document)));
}

TEST(DocumentStreamTest, AnEmptyDocumentComesBack) {
    expectSame(Document(), readDocument(toBytes(Document())));
}

TEST(DocumentStreamTest, WritingWhatWasReadGivesTheSameBytes) {
    const std::string bytes = toBytes(fullDocument());
    EXPECT_EQ(bytes, toBytes(readDocument(bytes)));
}

TEST(DocumentStreamTest, TheSizeIsToldBeforehand) {
    EXPECT_EQ(toBytes(fullDocument()).size(), streamSize(fullDocument()));
    EXPECT_EQ(toBytes(Document()).size(), streamSize(Document()));
}

TEST(DocumentStreamTest, LargeArraysAreHandedOnInOnePiece) {
    Document document;
    document.products.resize(1);
    document.products[0].bodies.resize(1);
    document.products[0].bodies[0].points.assign(300'000, 1.5F);
    const void* points = document.products[0].bodies[0].points.data();
    std::size_t pieces = 0;
    std::size_t total = 0;
    bool passedOn = false;
    writeDocument(document, [&](const char* data, std::size_t size) {
        ++pieces;
        total += size;
        passedOn = passedOn || (data == points && size == 1'200'000);
    });
    EXPECT_TRUE(passedOn);
    EXPECT_EQ(pieces, 3U);
    EXPECT_EQ(total, streamSize(document));
}

TEST(DocumentStreamTest, WhatTheSinkThrowsPassesThrough) {
    const auto refuse = [](const char*, std::size_t) { throw std::length_error("full"); };
    EXPECT_THROW(writeDocument(fullDocument(), refuse), std::length_error);
}

TEST(DocumentStreamTest, AStreamCutAtAnyByteIsRefused) {
    const std::string bytes = toBytes(fullDocument());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        ASSERT_THROW(readDocument(std::string_view(bytes).substr(0, size)), std::runtime_error)
            << "cut to " << size << " of " << bytes.size();
    }
}

TEST(DocumentStreamTest, AStreamThatGoesOnIsRefused) {
    EXPECT_EQ(whyNot(toBytes(fullDocument()) + '\0'),
              "The document's stream goes on after the document.");
}

TEST(DocumentStreamTest, AnotherMagicWordIsRefused) {
    std::string bytes = toBytes(Document());
    bytes[0] = 'X';
    EXPECT_EQ(whyNot(bytes), "The stream is not a document's.");
}

TEST(DocumentStreamTest, AnotherVersionIsRefusedByItsNumber) {
    std::string bytes = toBytes(Document());
    bytes[8] = 77;
    EXPECT_EQ(whyNot(bytes), "The document's stream is of version 77, not 1.");
}

TEST(DocumentStreamTest, ACountBeyondTheRestIsRefusedBeforeItIsAllocated) {
    std::string bytes = toBytes(Document());
    bytes[12 + 7] = 0x7F;  // the highest byte of the length of the format's name
    EXPECT_EQ(whyNot(bytes), "The document's stream promises more than it holds.");
}

TEST(DocumentStreamTest, EnumeratorsAndSwitchesOutOfRangeAreRefused) {
    Document document;
    document.findings.resize(1);
    std::string bytes = toBytes(document);
    const std::size_t finding = bytes.size() - (4 + 8 + 8 + 8 + 8);
    bytes[finding] = 3;
    EXPECT_EQ(whyNot(bytes), "The document's stream holds a value out of its range.");
    bytes[finding] = 2;
    EXPECT_EQ(readDocument(bytes).findings[0].severity, Finding::Severity::Note);
    bytes[finding + 3] = '\xFF';  // negative
    EXPECT_EQ(whyNot(bytes), "The document's stream holds a value out of its range.");

    document = Document();
    document.views.resize(1);
    bytes = toBytes(document);
    bytes[bytes.size() - 8 - 1] = 2;  // showsAll, before the count of findings
    EXPECT_EQ(whyNot(bytes), "The document's stream holds a value out of its range.");
}

TEST(DocumentStreamTest, ADocumentThatDoesNotHoldTogetherIsRefused) {
    Document document = fullDocument();
    document.roots[0].product = 2;
    EXPECT_EQ(whyNot(toBytes(document)), "Component 6 is of a product that does not exist.");
}

TEST(DocumentStreamTest, FlippedBitsAreReadOrRefusedButNeverCrash) {
    const std::string bytes = toBytes(fullDocument());
    constexpr unsigned seed = 4711;
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> position(0, bytes.size() - 1);
    std::uniform_int_distribution<int> bit(0, 7);
    std::uniform_int_distribution<int> flips(1, 4);
    std::size_t refused = 0;
    constexpr int trials = 20'000;
    for (int trial = 0; trial < trials; ++trial) {
        std::string damaged = bytes;
        for (int flip = flips(random); flip > 0; --flip) {
            char& byte = damaged[position(random)];
            byte = static_cast<char>(byte ^ (1 << bit(random)));
        }
        try {
            readDocument(damaged);
        } catch (const std::runtime_error&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 0U);
    EXPECT_LT(refused, static_cast<std::size_t>(trials));
}

}  // namespace
}  // namespace kesview

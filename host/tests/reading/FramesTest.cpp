/// @file
#include "reading/Frames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace kesview {
namespace {

/// What @p write makes of a writer, small enough for a pipe.
template <typename Write>
std::string bytesOf(Write write) {
    std::array<int, 2> pipe = {};
    EXPECT_EQ(::pipe(pipe.data()), 0);
    FrameWriter writer(pipe[1]);
    write(writer);
    ::close(pipe[1]);
    std::string bytes(60'000, '\0');
    bytes.resize(static_cast<std::size_t>(::read(pipe[0], bytes.data(), bytes.size())));
    ::close(pipe[0]);
    return bytes;
}

/// Feeds at most @p piece bytes at a time; answers what is left.
std::string_view feed(FrameParser& parser, std::string_view bytes, std::size_t piece) {
    while (!bytes.empty() && !parser.IsDone()) {
        const auto [place, wanted] = parser.Wanted();
        const std::size_t size = std::min({wanted, piece, bytes.size()});
        std::memcpy(place, bytes.data(), size);
        bytes.remove_prefix(size);
        parser.Took(size);
    }
    return bytes;
}

Document smallDocument() {
    Document document;
    document.author = "the author";
    return document;
}

TEST(FramesTest, ADocumentPassesInPiecesOfAnySize) {
    const std::string bytes =
        bytesOf([](FrameWriter& writer) { writer.WriteDocument(smallDocument()); });
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
        FrameParser parser(1000);
        EXPECT_TRUE(feed(parser, bytes, piece).empty());
        ASSERT_TRUE(parser.IsDone());
        EXPECT_EQ(parser.Result().author, "the author");
    }
}

TEST(FramesTest, ProgressIsToldOnceAndIsNotTheEnd) {
    FrameParser parser(1000);
    feed(parser, bytesOf([](FrameWriter& writer) { writer.WriteProgress("meshing", 0.25); }), 7);
    EXPECT_FALSE(parser.IsDone());
    const auto told = parser.TakeProgress();
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->stage, "meshing");
    EXPECT_EQ(told->fraction, 0.25);
    EXPECT_FALSE(parser.TakeProgress().has_value());
}

TEST(FramesTest, AFailureComesBackAsTheErrorThatItWas) {
    for (const ReadFailure failure : {ReadFailure::Unreadable, ReadFailure::Interrupted}) {
        FrameParser parser(1000);
        feed(parser,
             bytesOf([failure](FrameWriter& writer) { writer.WriteFailure(failure, "It is so."); }),
             1000);
        ASSERT_TRUE(parser.IsDone());
        try {
            parser.Result();
            FAIL() << "no error came";
        } catch (const ReadError& error) {
            EXPECT_EQ(error.Failure(), failure);
            EXPECT_STREQ(error.what(), "It is so.");
        }
    }
}

TEST(FramesTest, NothingIsTakenBeyondTheEnd) {
    const std::string bytes = bytesOf([](FrameWriter& writer) {
        writer.WriteDocument(smallDocument());
        writer.WriteProgress("too late", 1);
    });
    FrameParser parser(1000);
    EXPECT_FALSE(feed(parser, bytes, 100'000).empty());
    EXPECT_TRUE(parser.IsDone());
}

TEST(FramesTest, ADocumentLargerThanAllowedIsRefusedBeforeItIsAllocated) {
    const std::string bytes =
        bytesOf([](FrameWriter& writer) { writer.WriteDocument(smallDocument()); });
    FrameParser parser(bytes.size() - sizeof(FrameHeader) - 1);
    EXPECT_THROW(feed(parser, bytes, 16), std::runtime_error);
}

TEST(FramesTest, EveryFlippedBitOfAHeaderIsRefusedOrLeavesTheFrameOpen) {
    const std::string bytes =
        bytesOf([](FrameWriter& writer) { writer.WriteFailure(ReadFailure::Damaged, "x"); });
    for (std::size_t bit = 0; bit < 8 * sizeof(FrameHeader); ++bit) {
        std::string damaged = bytes;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        FrameParser parser(1000);
        try {
            feed(parser, damaged, 1000);
            if (parser.IsDone()) {
                parser.Result();
                ADD_FAILURE() << "bit " << bit << " made a document";
            }
        } catch (const std::runtime_error&) {
        }
    }
}

TEST(FramesTest, AFailureOfNoKnownKindIsRefused) {
    std::string bytes =
        bytesOf([](FrameWriter& writer) { writer.WriteFailure(ReadFailure::Damaged, "x"); });
    bytes[sizeof(FrameHeader)] = 5;
    FrameParser parser(1000);
    feed(parser, bytes, 1000);
    try {
        parser.Result();
        FAIL() << "no error came";
    } catch (const ReadError&) {
        FAIL() << "it was taken";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "The reader's answer makes no sense.");
    }
}

TEST(FramesTest, WritingWhereNobodyReadsIsAnError) {
    struct sigaction previous = {};
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &ignore, &previous);
    std::array<int, 2> pipe = {};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ::close(pipe[0]);
    EXPECT_THROW(FrameWriter(pipe[1]).WriteProgress("meshing", 0), std::runtime_error);
    ::close(pipe[1]);
    ::sigaction(SIGPIPE, &previous, nullptr);
}

}  // namespace
}  // namespace kesview

// What the comment of every public class tells, under headings that are always the same.

#include "structure/SourceTree.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

/// A class that hosts use, and the lines of the comment right above it.
struct CommentedClass {
    std::string Name;
    std::vector<std::string> Comment;
};

bool isComment(const std::string& line) {
    return line.rfind("///", 0) == 0;
}

/// The exported classes and structures that @p file defines.
std::vector<CommentedClass> classesIn(const SourceFile& file) {
    static const std::regex definition("(?:class|struct) KESVIZCORE_API (\\w+)[^;]*");
    std::vector<CommentedClass> classes;
    std::vector<std::string> comment;
    std::smatch match;
    for (const std::string& line : file.Lines) {
        if (isComment(line)) {
            comment.push_back(line);
            continue;
        }
        if (std::regex_match(line, match, definition)) {
            classes.push_back({match[1], comment});
        }
        comment.clear();
    }
    return classes;
}

/// Whether the comment has @p heading and a sentence under it.
bool tells(const std::vector<std::string>& comment, const std::string& heading) {
    for (std::size_t i = 0; i + 1 < comment.size(); ++i) {
        if (comment[i] == "/// @par " + heading) {
            return comment[i + 1].size() > 4 && comment[i + 1][4] != '@';
        }
    }
    return false;
}

TEST(ReferenceCommentsTest, EveryClassTellsItsErrorsAndItsThreads) {
    std::vector<std::string> silent;
    std::size_t count = 0;
    for (const SourceFile& file : filesBelow("include")) {
        for (const CommentedClass& commented : classesIn(file)) {
            ++count;
            for (const std::string heading : {"Errors", "Threads"}) {
                if (!tells(commented.Comment, heading)) {
                    silent.push_back(commented.Name + " has nothing under @par " + heading);
                }
            }
        }
    }
    EXPECT_GT(count, 0U) << "no class was found";
    EXPECT_EQ(asLines(silent), "");
}

}  // namespace
}  // namespace KesVizCore::Structure

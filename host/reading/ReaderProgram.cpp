/// @file
#include "reading/ReaderProgram.h"

#include "reading/ReadFile.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace kesview {

namespace {

bool canRun(const std::filesystem::path& program) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(program, ignored) &&
           ::access(program.c_str(), X_OK) == 0;
}

}  // namespace

std::string findReaderProgram() {
    const char* named = std::getenv("KESVIEW_READER");
    if (named != nullptr && *named != '\0') {
        if (!canRun(named)) {
            throw ReadError(ReadFailure::Unreadable,
                            "KESVIEW_READER names '" + std::string(named) +
                                "', which is not a program; correct or unset it.");
        }
        return named;
    }
    std::error_code ignored;
    return readerProgramNear(
        std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().string());
}

std::string readerProgramNear(const std::string& folder) {
    const std::filesystem::path beside = std::filesystem::path(folder) / "kesview-reader";
    const std::filesystem::path installed =
        std::filesystem::path(folder) / KESVIEW_READER_FOLDER / "kesview-reader";
    for (const std::filesystem::path& program : {beside, installed}) {
        if (canRun(program)) {
            return program.string();
        }
    }
    throw ReadError(ReadFailure::Unreadable,
                    "The program kesview-reader is not beside this one, in '" + folder +
                        "'; install it again, or name it by KESVIEW_READER.");
}

}  // namespace kesview

#include "SampleKit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace kesview::support {

std::string sampleFile() {
    return KESVIEW_SAMPLE_FILE;
}

TestFolder::TestFolder()
    : _path(std::filesystem::path(testing::TempDir()) /
            (std::string("kesview_sample_") +
             testing::UnitTest::GetInstance()->current_test_info()->name())) {
    std::filesystem::remove_all(_path);
    std::filesystem::create_directories(_path);
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

bool writesGolden() {
    return std::getenv("KESVIEW_WRITE_GOLDEN") != nullptr;
}

}  // namespace kesview::support

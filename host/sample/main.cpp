/// @file
/// kesview-sample FILE: writes the sample that comes with kesview.

#include "document/WriteFile.h"
#include "sample/WriteSample.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: kesview-sample FILE\n";
        return 2;
    }
    try {
        kesview::writeWhole(argv[1], kesview::makeSample());
    } catch (const std::exception& error) {
        std::cerr << "kesview-sample: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

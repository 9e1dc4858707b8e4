#pragma once

/// @file
/// What a verb throws when it cannot go on; each ends in an exit code of its own.

#include <stdexcept>

namespace kesview {

/// Asked for something that means nothing here. The message says what would.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The output cannot be written.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// More than this program handles.
class LimitError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace kesview

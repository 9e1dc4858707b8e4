#pragma once

/// @file
/// Paths of names with wildcards.

#include <string>
#include <vector>

namespace kesview {

/// A pattern for paths such as "Gearbox/Bolt:2/Body 1".
///
/// '*' stands for any letters of one name, none included, '?' for exactly one, a name "**" for any
/// number of names, none included; '\' takes the letter behind it as it is. A pattern that begins
/// with '/' is matched from the top, any other at every depth.
///
/// @par Units and ranges
/// UTF-8; '?' takes a whole letter of several bytes. In a path '/' and '\' that belong to a name
/// are led by '\'.
///
/// @par Errors
/// Every text is a pattern. An empty one, and "/", match nothing.
///
/// @par Threads
/// A plain value: many threads may read one.
class PathPattern {
public:
    explicit PathPattern(const std::string& pattern);

    bool Matches(const std::string& path) const;
    /// Whether a path that begins with @p path, and goes on, can match.
    bool CanMatchBelow(const std::string& path) const;

private:
    std::vector<bool> after(const std::string& path) const;

    std::vector<std::string> _names;
};

/// The names that a path consists of, as they are.
std::vector<std::string> namesOfPath(const std::string& path);

/// @p name with '/' and '\' led by '\', as it stands in a path.
std::string escapedForPath(const std::string& name);

}  // namespace kesview

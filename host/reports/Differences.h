#pragma once

/// @file
/// In what two reports differ.

#include <string>
#include <vector>

namespace kesview {

class XmlReport;

/// One difference between an older report and a newer one.
struct Difference {
    enum class Kind {
        Added,    ///< an element, attribute or text that only the newer one has
        Removed,  ///< one that only the older one has
        Changed,  ///< an attribute or text of another value
        Moved     ///< an element that stands at another place among its neighbours
    };
    Kind kind = Kind::Changed;
    /// Where, in the manner of XPath: "/Scene/Node[@Name='Bolt']/@Color". Elements are told apart
    /// by Name, else by ID, and where that is not enough by their number among equals from 1.
    std::string path;
    std::string before;  ///< value or start tag in the older report; empty when added
    std::string after;   ///< the same in the newer one; empty when removed
};

/// All differences, in the order of the reports; none when they hold the same. Elements are matched
/// by kind and Name, else by kind and ID, and those alike by content before order. Comments count
/// for nothing. An element that was added or removed stands for all that is in it.
std::vector<Difference> differences(const XmlReport& before, const XmlReport& after);

/// "Attribute /Scene/@Unit changed from 'inch' to 'millimetre'."
std::string sentence(const Difference& difference);

}  // namespace kesview

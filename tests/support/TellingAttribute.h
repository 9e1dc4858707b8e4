#pragma once

/// @file
/// Attributes whose death a test can see.

#include <KesVizCore/graph/Attribute.h>

#include <utility>
#include <vector>

namespace KesVizCore::support {

/// An attribute of any kind that writes its type down when it is destroyed.
template <typename Kind>
class TellingAttribute : public Kind {
public:
    template <typename... Arguments>
    explicit TellingAttribute(std::vector<int>& destroyed, Arguments&&... arguments)
        : Kind(std::forward<Arguments>(arguments)...), _destroyed(destroyed) {}
    TellingAttribute(const TellingAttribute&) = delete;
    TellingAttribute& operator=(const TellingAttribute&) = delete;
    ~TellingAttribute() override { _destroyed.push_back(this->GetType()); }

private:
    std::vector<int>& _destroyed;
};

}  // namespace KesVizCore::support

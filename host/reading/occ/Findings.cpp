/// @file
/// See Findings.h.

#include "reading/occ/Findings.h"

#include <algorithm>

namespace kesview {

void addFinding(Document& document, const Remark& remark, std::uint64_t count) {
    if (count == 0) {
        return;
    }
    const auto same = [&remark](const Finding& finding) {
        return finding.code == remark.code && finding.message == remark.message;
    };
    const auto known = std::find_if(document.findings.begin(), document.findings.end(), same);
    if (known != document.findings.end()) {
        known->count += count;
        return;
    }
    document.findings.push_back(
        {remark.severity, remark.code, remark.message, remark.where, count});
}

}  // namespace kesview

#include <KesVizCore/report/AllowThrow.h>

namespace KesVizCore {

namespace {

bool allowThrow = false;

}  // namespace

void SetAllowThrow(const bool& allow) {
    allowThrow = allow;
}

bool GetAllowThrow() {
    return allowThrow;
}

}  // namespace KesVizCore

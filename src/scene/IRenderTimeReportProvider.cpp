#include <KesVizCore/scene/IRenderTimeReportProvider.h>

namespace KesVizCore {

namespace {

/// A DLL exports the table of virtual operations that hosts' classes are built on only where a
/// class of its own stands on it too; none does but this.
class NoRenderTime final : public IRenderTimeReportProvider {
public:
    double GetRenderTime() const override { return 0.0; }
    void AddRenderTime(double /*seconds*/) override {}
    void ClearRenderTime() override {}
};

[[maybe_unused, gnu::used]] const NoRenderTime noRenderTime;

}  // namespace

}  // namespace KesVizCore

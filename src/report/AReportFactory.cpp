#include <KesVizCore/report/AReportFactory.h>

namespace KesVizCore {

AReportFactory* AReportFactory::_activeReportFactory = nullptr;

AReportFactory::AReportFactory(const std::string& name) : _name(name) {}

AReportFactory::~AReportFactory() = default;

std::string AReportFactory::GetName() const {
    return _name;
}

void AReportFactory::SetActiveReportFactory(AReportFactory* f) {
    delete _activeReportFactory;
    _activeReportFactory = f;
}

AReportFactory* AReportFactory::GetActiveReportFactory() {
    return _activeReportFactory;
}

}  // namespace KesVizCore

#include "commands/SceneReport.h"

#include <KesVizCore/graph/GeoNode.h>
#include <KesVizCore/report/AReportFactory.h>

#include <stdexcept>

namespace kesview {

std::unique_ptr<XmlReport> sceneReport(Session& session) {
    viz::AReportFactory* const factory = viz::AReportFactory::GetActiveReportFactory();
    std::unique_ptr<viz::AReport> made(factory == nullptr ? nullptr : factory->MakeReport());
    std::unique_ptr<XmlReport> report(dynamic_cast<XmlReport*>(made.get()));
    if (report == nullptr) {
        throw std::runtime_error("the library makes no XML reports.");
    }
    static_cast<void>(made.release());
    report->StartReport(kReportRoot);
    viz::GeoNode* const root = session.Adapter().GetNode(sceneRoot());
    if (root == nullptr || !root->GetReport(*report)) {
        throw std::runtime_error("the scene gives no report.");
    }
    report->EndReport();
    return report;
}

}  // namespace kesview

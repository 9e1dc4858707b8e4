#pragma once

/// @file
/// Makes XML reports for the library.

#include <KesVizCore/report/AReportFactory.h>

namespace kesview {

namespace viz = KesVizCore;

/// Makes an XmlReport whenever a report is asked for; its name is "XML".
class XmlReportFactory : public viz::AReportFactory {
public:
    XmlReportFactory() : AReportFactory("XML") {}
    /// A new XmlReport, which the caller owns.
    viz::AReport* MakeReport() override;
};

}  // namespace kesview

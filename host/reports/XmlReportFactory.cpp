/// @file
#include "reports/XmlReportFactory.h"

#include "reports/XmlReport.h"

namespace kesview {

viz::AReport* XmlReportFactory::MakeReport() {
    return new XmlReport;
}

}  // namespace kesview

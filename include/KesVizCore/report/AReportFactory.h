#pragma once

#include <KesVizCore/Export.h>

#include <string>

namespace KesVizCore {

class AReport;

/// Makes reports of one kind; the host derives from it and installs one as the active factory.
///
/// @par Ownership
/// The library owns the active factory and destroys it when another takes its place. The one
/// that is active when the process ends is not destroyed: install null to release it.
///
/// @par Errors
/// No operation of this class fails; what MakeReport of a host throws passes through.
///
/// @par Threads
/// The active factory is one pointer for the whole process, which nothing guards.
class KESVIZCORE_API AReportFactory {
public:
    /// A new report, still open, which the caller owns. The library itself never calls it.
    virtual AReport* MakeReport() = 0;

    virtual ~AReportFactory();

    /// The name that the derived class gave to its base.
    std::string GetName() const;

    /// Destroys the factory that was active before, if there was one, and makes @p f the active
    /// one, null for none. The library owns @p f from now on.
    ///
    /// Installing the factory that is active already destroys it and leaves the library with a
    /// dangling pointer.
    static void SetActiveReportFactory(AReportFactory* f);
    /// The active factory, which the library owns, or null: at the start there is none.
    static AReportFactory* GetActiveReportFactory();

protected:
    /// @p name becomes GetName().
    explicit AReportFactory(const std::string& name);

private:
    std::string _name;

    static AReportFactory* _activeReportFactory;
};

}  // namespace KesVizCore

#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RGBAColor.h>

namespace KesVizCore {

/// A record of values for the host's own use; the library keeps two of them and reads none.
///
/// The process has one record of defaults and one of current values. Hosts change the current
/// record in place, field by field.
///
/// @par Units and ranges
/// What the fields mean, and so their units, is the host's.
///
/// @par Ownership
/// The two records belong to the library and live until the process ends.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// Fields are read and written without a lock.
class KESVIZCORE_API Settings {
public:
    /// A record that holds the defaults.
    Settings();

    /// The record of defaults, never null.
    static Settings* Default();
    /// The record of current values, never null; a copy of Default() made on the first call.
    static Settings* Current();

    /// Copies every field; null changes nothing.
    void CopyFrom(Settings* other);

    RGBAColor Color1;  ///< (245, 245, 245, 255) by default
    RGBAColor Color2;  ///< (0, 0, 0, 255) by default
    RGBAColor Color3;  ///< (0, 151, 223, 255) by default
    RGBAColor Color4;  ///< (0, 0, 0, 255) by default
    RGBAColor Color5;  ///< (255, 204, 0, 255) by default
    RGBAColor Color6;  ///< (221, 239, 254, 255) by default
    RGBAColor Color7;  ///< (171, 189, 204, 255) by default
    bool Flag1;        ///< false by default
    bool Flag2;        ///< false by default
    bool Flag3;        ///< false by default
    bool Flag4;        ///< true by default
    bool Flag5;        ///< false by default
    bool Flag6;        ///< false by default
    bool Flag7;        ///< true by default
    int Number1;       ///< 0 by default
    int Number2;       ///< 0 by default
    bool Flag8;        ///< true by default
    bool Flag9;        ///< false by default
    bool Flag10;       ///< false by default
    bool Flag11;       ///< false by default
    bool Flag12;       ///< false by default
    bool Flag13;       ///< false by default
    int Number3;       ///< 4 by default
    bool LastFlag;     ///< false by default

private:
    void initDefaults();
};

}  // namespace KesVizCore

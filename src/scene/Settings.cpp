#include <KesVizCore/scene/Settings.h>

#include <type_traits>

namespace KesVizCore {

// The two records are statics; with nothing to destroy they outlast every other static.
static_assert(std::is_trivially_destructible_v<Settings>);

Settings::Settings() {
    initDefaults();
}

Settings* Settings::Default() {
    static Settings record;
    return &record;
}

Settings* Settings::Current() {
    static Settings record(*Default());
    return &record;
}

void Settings::CopyFrom(Settings* other) {
    if (other != nullptr) {
        *this = *other;
    }
}

void Settings::initDefaults() {
    Color1 = RGBAColor(245, 245, 245, 255);
    Color2 = RGBAColor(0, 0, 0, 255);
    Color3 = RGBAColor(0, 151, 223, 255);
    Color4 = RGBAColor(0, 0, 0, 255);
    Color5 = RGBAColor(255, 204, 0, 255);
    Color6 = RGBAColor(221, 239, 254, 255);
    Color7 = RGBAColor(171, 189, 204, 255);
    Flag1 = Flag2 = Flag3 = false;
    Flag4 = true;
    Flag5 = Flag6 = false;
    Flag7 = true;
    Number1 = Number2 = 0;
    Flag8 = true;
    Flag9 = Flag10 = Flag11 = Flag12 = Flag13 = false;
    Number3 = 4;
    LastFlag = false;
}

}  // namespace KesVizCore

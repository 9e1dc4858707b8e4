#pragma once

#include <clocale>
#include <stdexcept>
#include <string>

namespace KesVizCore::support {

/// The C library's conversions under another locale for as long as it lives.
class LocaleScope {
public:
    explicit LocaleScope(const char* name) : _before(std::setlocale(LC_ALL, nullptr)) {
        if (std::setlocale(LC_ALL, name) == nullptr) {
            throw std::runtime_error(std::string("no locale ") + name);
        }
    }
    ~LocaleScope() { std::setlocale(LC_ALL, _before.c_str()); }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;

private:
    std::string _before;
};

}  // namespace KesVizCore::support

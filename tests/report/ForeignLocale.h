#pragma once

#include "report/TestSystem.h"

#include <clocale>
#include <locale>
#include <string>

namespace KesVizCore::support {

/// As long as it lives, decimals are written with a comma, and thousands apart, by the C locale
/// and by the global one of C++.
class ForeignLocale {
public:
    ForeignLocale() {
        setForeignLocale();
        std::locale::global(std::locale(std::locale::classic(), new Punctuation));
    }
    ~ForeignLocale() {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }
    ForeignLocale(const ForeignLocale&) = delete;
    ForeignLocale& operator=(const ForeignLocale&) = delete;

private:
    class Punctuation : public std::numpunct<wchar_t> {
        wchar_t do_decimal_point() const override { return L','; }
        wchar_t do_thousands_sep() const override { return L'.'; }
        std::string do_grouping() const override { return "\3"; }
    };
};

}  // namespace KesVizCore::support

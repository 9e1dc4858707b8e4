#pragma once

#include <string>

/// @file
/// The lines of which the text dumps of views and captures are made.

namespace KesVizCore {

/// The label and the text, ended.
std::wstring textLine(const std::wstring& label, const std::wstring& text);

/// The label and "YES" or "NO", ended.
std::wstring flagLine(const std::wstring& label, bool flag);

/// The label and the number with six decimal places, ended; nothing where the number takes more
/// than 63 characters.
std::wstring numberLine(const std::wstring& label, float number);

/// The label and three numbers with two decimal places, such as "(0.00, 1.00, 0.00)", ended;
/// nothing where these take more than 63 characters.
std::wstring tripleLine(const std::wstring& label, const float* triple);

}  // namespace KesVizCore

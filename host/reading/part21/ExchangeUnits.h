#pragma once

/// @file
/// Units and measured values of an exchange file.

#include "reading/part21/ExchangeFile.h"

#include <optional>
#include <string>

namespace kesview {

enum class Quantity { Length, Angle, Other };

struct ExchangeUnit {
    Quantity quantity = Quantity::Other;
    double factor = 1;  ///< millimetres or radians in one unit
    std::string name;   ///< lower case: "millimetre", "inch", "degree"
};

/// What the unit instance says; Other with factor 1 where it says nothing that is understood.
ExchangeUnit readUnit(const ExchangeFile& file, EntityNumber unit);

/// Millimetres and radians in one unit of a representation context; none where it names no unit.
struct ContextUnits {
    std::optional<double> length;
    std::optional<double> angle;
};
ContextUnits readContextUnits(const ExchangeFile& file, EntityNumber context);

/// The units of the first context that names a length.
ContextUnits readDefaultUnits(const ExchangeFile& file);

struct ExchangeMeasure {
    double value = 0;  ///< in the unit of the file
    ExchangeUnit unit;
    double Scaled() const { return value * unit.factor; }
};

/// The value of a MEASURE_WITH_UNIT of any kind; none where it holds no number.
std::optional<ExchangeMeasure> readMeasure(const ExchangeFile& file, EntityNumber measure);

}  // namespace kesview

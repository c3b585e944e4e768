#include "foundation/Parameter.h"

#include <algorithm>
#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/NumberScanner.h"
#include "foundation/QuotedText.h"
#include "foundation/UnitList.h"

namespace TKL {

namespace {

double toBase(double valueInUnit, const Unit& unit) {
  UnitList::instance().convert(unit, unit.base(), valueInUnit);
  return valueInUnit;
}

bool holds(double value, Parameter::operator_t op, double limit) {
  switch (op) {
    case Parameter::OP_LESS:
      return value < limit;
    case Parameter::OP_LESS_EQUAL:
      return value <= limit;
    case Parameter::OP_GREATER_EQUAL:
      return value >= limit;
    case Parameter::OP_GREATER:
      return value > limit;
  }
  return false;
}

void checkComparable(const Parameter& parameter, const Parameter& limit, const char* functionId) {
  if (!parameter.isSet() || parameter.name != limit.name) {
    throw Exception(limit.name + " is required", functionId);
  }
  if (parameter.IO_unit.base_id() != limit.IO_unit.base_id()) {
    throw Exception("Invalid or unrecognized unit in parameter '" + parameter.name +
                        "' (must be convertible into " + limit.IO_unit.base().name() + ")",
                    functionId);
  }
}

}  // namespace

Parameter::Parameter(const std::string& parameterName, double valueInUnit, const Unit& unit)
    : name(parameterName), value(toBase(valueInUnit, unit)), IO_unit(unit) {}

Parameter::Parameter(const std::string& parameterName, double valueInUnit, const std::string& unitName)
    : Parameter(parameterName, valueInUnit, Unit(unitName)) {}

void Parameter::clear() {
  *this = Parameter();
}

void Parameter::set(const std::string& parameterName, double valueInUnit, const Unit& unit) {
  *this = Parameter(parameterName, valueInUnit, unit);
}

void Parameter::set(const std::string& parameterName, double valueInUnit, const std::string& unitName) {
  *this = Parameter(parameterName, valueInUnit, unitName);
}

void Parameter::setBaseValue(const std::string& parameterName, double baseValue, const Unit& unit) {
  name = parameterName;
  value = baseValue;
  IO_unit = unit;
}

bool Parameter::set(const std::string& parameterName, const std::string& text, std::string* errorMessage) {
  std::string_view rest = text;
  rest.remove_prefix(std::min(rest.find_first_not_of(WHITE_SPACE), rest.size()));
  double number = 0.0;
  const bool hasNumber = scanNumber(rest, number);
  const std::string unitName(scanWord(rest));
  if (!hasNumber || unitName.empty()) {
    if (errorMessage != nullptr) {
      *errorMessage = FormatString("Error reading parameter from string '%1'.").arg(quotedText(text)).str();
    }
    return false;
  }
  set(parameterName, number, unitName);
  return true;
}

double Parameter::get_value(const Unit& unit) const {
  const char* const FUNC_ID = "[Parameter::get_value]";
  try {
    double converted = value;
    UnitList::instance().convert(IO_unit.base(), unit, converted);
    return converted;
  } catch (const Exception& cause) {
    throw Exception(cause, FormatString("Error converting unit in parameter '%1'.").arg(name), FUNC_ID);
  }
}

void Parameter::test(const Parameter& limit, operator_t op) const {
  const char* const FUNC_ID = "[Parameter::test]";
  static const char* const MESSAGES[] = {
      "Parameter '%1' out of range (must be < %2 %3).", "Parameter '%1' out of range (must be <= %2 %3).",
      "Parameter '%1' out of range (must be >= %2 %3).", "Parameter '%1' out of range (must be > %2 %3)."};
  if (!holds(value, op, limit.value)) {
    throw Exception(FormatString(MESSAGES[op]).arg(name).arg(limit.get_value()).arg(limit.IO_unit.name()),
                    FUNC_ID);
  }
}

void Parameter::checkIfValueIsLowerBound(const Parameter& limit, bool inclusive) const {
  const char* const FUNC_ID = "[Parameter::checkIfValueIsLowerBound]";
  checkComparable(*this, limit, FUNC_ID);
  test(limit, inclusive ? OP_LESS_EQUAL : OP_LESS);
}

void Parameter::checkIfValueIsUpperBound(const Parameter& limit, bool inclusive) const {
  const char* const FUNC_ID = "[Parameter::checkIfValueIsUpperBound]";
  checkComparable(*this, limit, FUNC_ID);
  test(limit, inclusive ? OP_GREATER_EQUAL : OP_GREATER);
}

void Parameter::write(std::ostream& stream, int indent, int nameWidth, bool writeName) const {
  std::ostringstream line;
  line.imbue(std::locale::classic());
  line.precision(stream.precision());
  line << std::string(static_cast<std::size_t>(std::max(indent, 0)), ' ');
  if (isSet() && writeName) {
    const std::size_t width = static_cast<std::size_t>(std::max(nameWidth, 0));
    line << name << std::string(width > name.size() ? width - name.size() : 0, ' ') << " = ";
  }
  line << get_value() << ' ' << IO_unit.name() << '\n';
  stream << line.str();
}

}  // namespace TKL

#pragma once

#include <iosfwd>
#include <string>

#include "foundation/Unit.h"

namespace TKL {

/// A named quantity as in `name = 20 C`. The value is kept in the base unit of the unit's group, the unit in
/// which it was given serves for display. A parameter counts as set when its name is not empty, whatever the
/// value.
class Parameter {
 public:
  /// Comparison of `test`.
  enum operator_t { OP_LESS, OP_LESS_EQUAL, OP_GREATER_EQUAL, OP_GREATER };

  Parameter() = default;
  /// `valueInUnit` is a number in `unit`.
  Parameter(const std::string& parameterName, double valueInUnit, const Unit& unit);
  /// @throws Exception "Unit '%1' not found."
  Parameter(const std::string& parameterName, double valueInUnit, const std::string& unitName);

  bool isSet() const { return !name.empty(); }
  /// Empties the name, zeroes the value and sets the unit to `undefined`.
  void clear();

  /// Takes a number in `unit`; the value is stored in the base unit.
  void set(const std::string& parameterName, double valueInUnit, const Unit& unit);
  /// @throws Exception "Unit '%1' not found."; the parameter is left as it was
  void set(const std::string& parameterName, double valueInUnit, const std::string& unitName);
  /// Takes a value that is in the base unit already and keeps `unit` for display.
  void setBaseValue(const std::string& parameterName, double baseValue, const Unit& unit);
  /// Reads a number and a unit, such as "20 C"; whatever follows is ignored.
  /// @return false, with the reason in `errorMessage` if that is given, when number or unit are missing
  /// @throws Exception "Unit '%1' not found."; in both cases the parameter is left as it was
  bool set(const std::string& parameterName, const std::string& text, std::string* errorMessage = nullptr);

  /// The value in `IO_unit`.
  double get_value() const { return get_value(IO_unit); }
  /// The value in `unit`.
  /// @throws Exception "Error converting unit in parameter '%1'." on top of the cause
  double get_value(const Unit& unit) const;
  /// As above; an unknown unit is "Unit '%1' not found.".
  double get_value(const std::string& unitName) const { return get_value(Unit(unitName)); }

  /// Requires "this `op` limit", both in the base unit.
  /// @throws Exception "Parameter '%1' out of range (must be < %2 %3)." with the operator's sign
  void test(const Parameter& limit, operator_t op) const;
  /// Requires that this value is below the limit, or equal to it if `inclusive`. The parameter must be set,
  /// bear the name of the limit and have a unit of the limit's group.
  void checkIfValueIsLowerBound(const Parameter& limit, bool inclusive) const;
  /// Requires that this value is above the limit, or equal to it if `inclusive`; otherwise as
  /// `checkIfValueIsLowerBound`.
  void checkIfValueIsUpperBound(const Parameter& limit, bool inclusive) const;

  /// Writes a line `name = value unit` behind `indent` blanks, the name in a left-aligned field of
  /// `nameWidth`; without the name if it is not set or not wanted.
  void write(std::ostream& stream, int indent = 0, int nameWidth = 0, bool writeName = true) const;

  std::string name;
  double value = 0.0;  ///< in the base unit of the group of `IO_unit`
  Unit IO_unit;        ///< unit in which the value was given and is shown
};

}  // namespace TKL

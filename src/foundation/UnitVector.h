#pragma once

#include <string>
#include <vector>

#include "foundation/Unit.h"

namespace TKL {

/// A named series of numbers with one unit for all.
class UnitVector {
 public:
  /// Reads numbers up to the first word that is none; that word is the unit. With `convertToBase` the numbers
  /// are converted and `IO_unit` is the base unit of the group; without it the unit is dropped (`IO_unit`
  /// becomes `undefined`). When no word follows the numbers, `IO_unit` is left as it was.
  /// @throws Exception "Error reading vector data. ..." without a number, "Unit '%1' not found."; the vector
  /// is left as it was
  void read(const std::string& text, bool convertToBase);

  /// Converts all numbers; `IO_unit` becomes `target`.
  /// @throws Exception when the units cannot be related or a number cannot be converted; the vector is left
  /// as it was
  void convert(const Unit& target);

  /// Converts one number from `IO_unit` to `target` by way of the base unit, in place.
  /// @throws Exception "Conversion error (square-root of negative number)!"
  void convert_special(const Unit& target, double& value) const;

  std::string name;
  Unit IO_unit;  ///< unit of `data`
  std::vector<double> data;
};

}  // namespace TKL

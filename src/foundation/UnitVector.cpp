#include "foundation/UnitVector.h"

#include <string_view>
#include <utility>

#include "foundation/Exception.h"
#include "foundation/NumberScanner.h"
#include "foundation/UnitList.h"

namespace TKL {

void UnitVector::read(const std::string& text, bool convertToBase) {
  const char* const FUNC_ID = "[UnitVector::read]";
  UnitVector result;
  result.name = name;
  std::string_view rest = text;
  std::string unitName;
  // Units such as "1/K" and "---" begin like numbers: only a whole word counts as one.
  for (std::string_view word = scanWord(rest); !word.empty(); word = scanWord(rest)) {
    double number = 0.0;
    std::string_view tail = word;
    if (!scanNumber(tail, number) || !tail.empty()) {
      unitName = word;
      break;
    }
    result.data.push_back(number);
  }
  if (result.data.empty()) {
    throw Exception(
        "Error reading vector data. String was empty or did not contain any values (started with string or "
        "similar)!",
        FUNC_ID);
  }
  if (unitName.empty()) {
    result.IO_unit = IO_unit;
  } else if (convertToBase) {
    result.IO_unit.set(unitName);
    result.convert(result.IO_unit.base());
  }
  *this = std::move(result);
}

void UnitVector::convert(const Unit& target) {
  if (target == IO_unit) {
    return;
  }
  double factor = 1.0;
  int operation = UnitData::OP_NONE;
  UnitList::instance().relate_units(IO_unit, target, factor, operation);
  switch (operation) {
    case UnitData::OP_ADD:
      for (double& value : data) {
        value += factor;
      }
      break;
    case UnitData::OP_MULTIPLY:
      for (double& value : data) {
        value *= factor;
      }
      break;
    case UnitData::OP_SPECIAL: {
      std::vector<double> converted = data;
      for (double& value : converted) {
        convert_special(target, value);
      }
      data = std::move(converted);
      break;
    }
    default:
      break;
  }
  IO_unit = target;
}

void UnitVector::convert_special(const Unit& target, double& value) const {
  const char* const FUNC_ID = "[UnitVector::convert_special]";
  value = UnitList::instance().specialConversion(
      IO_unit, target, value, "Conversion error (square-root of negative number)!", FUNC_ID);
}

}  // namespace TKL

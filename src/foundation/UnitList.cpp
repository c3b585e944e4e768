#include "foundation/UnitList.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "foundation/CheckedMath.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/NumberScanner.h"
#include "foundation/StringUtilities.h"
#include "foundation/UnitDefinitions.h"

namespace TKL {

namespace {

/// Relation of a special unit to its base: sqrt(base value / scale), or log10(base value * scale).
struct SpecialUnit {
  const char* name;
  bool isRoot;
  double scale;
};

constexpr std::array<SpecialUnit, 6> SPECIAL_UNITS = {{{"sqrt(s)", true, 1.0},
                                                       {"sqrt(h)", true, 3600.0},
                                                       {"log(kg/m3)", false, 1.0},
                                                       {"log(g/m3)", false, 1000.0},
                                                       {"log(mg/m3)", false, 1e6},
                                                       {"log(µg/m3)", false, 1e9}}};

const SpecialUnit* findSpecial(const std::string& name) {
  for (const SpecialUnit& special : SPECIAL_UNITS) {
    if (name == special.name) {
      return &special;
    }
  }
  return nullptr;
}

int operationFromToken(char token) {
  switch (token) {
    case '%':
      return UnitData::OP_SPECIAL;
    case '*':
      return UnitData::OP_MULTIPLY;
    case '+':
      return UnitData::OP_ADD;
    case '-':
      return UnitData::OP_SUBTRACT;
    case '/':
      return UnitData::OP_DIVIDE;
    default:
      return UnitData::OP_NONE;
  }
}

bool isOffset(const UnitData& unit) {
  return unit.operation == UnitData::OP_ADD || unit.operation == UnitData::OP_SUBTRACT;
}

bool isFactor(const UnitData& unit) {
  return unit.operation == UnitData::OP_MULTIPLY || unit.operation == UnitData::OP_DIVIDE;
}

std::string triedToConvert(const UnitData& source, const UnitData& target) {
  return " (tried to convert [" + source.name + "] to [" + target.name + "] )!";
}

/// 1 / x; a unit without size cannot be converted.
double inverse(double x, const UnitData& source, const UnitData& target, const char* functionId) {
  if (x == 0.0) {
    throw Exception("Div by zero!" + triedToConvert(source, target), functionId);
  }
  return 1.0 / x;
}

/// The offset from a unit with an offset to a unit of the same group.
double relateOffset(const UnitData& source, const UnitData& target, const char* functionId) {
  const double d = source.operation == UnitData::OP_ADD ? -source.factor : source.factor;
  if (target.operation == UnitData::OP_ADD) {
    return d + target.factor;
  }
  if (target.operation == UnitData::OP_SUBTRACT) {
    return d - target.factor;
  }
  if (isFactor(target)) {
    throw Exception(
        "* and / operations not allowed when using + and - operations!" + triedToConvert(source, target),
        functionId);
  }
  return source.factor;
}

/// The factor from a unit with a factor to a unit of the same group.
double relateFactor(const UnitData& source, const UnitData& target, const char* functionId) {
  const double d = source.operation == UnitData::OP_MULTIPLY
                       ? inverse(source.factor, source, target, functionId)
                       : source.factor;
  if (target.operation == UnitData::OP_MULTIPLY) {
    return d * target.factor;
  }
  if (target.operation == UnitData::OP_DIVIDE) {
    inverse(target.factor, source, target, functionId);
    return d / target.factor;
  }
  if (isOffset(target)) {
    throw Exception(
        "+ and - operations not allowed when using * and / operations!" + triedToConvert(source, target),
        functionId);
  }
  return d;
}

double apply(int operation, double factor, double value) {
  return operation == UnitData::OP_ADD ? value + factor
                                       : (operation == UnitData::OP_MULTIPLY ? value * factor : value);
}

}  // namespace

const UnitList& UnitList::instance() {
  static const UnitList list = [] {
    UnitList units;
    units.read_default();
    return units;
  }();
  return list;
}

void UnitList::read_default() {
  read(UNIT_DEFINITIONS);
}

void UnitList::read(std::string_view definition) {
  while (!definition.empty()) {
    const std::size_t length = std::min(definition.find(';'), definition.size());
    readGroup(definition.substr(0, length));
    definition.remove_prefix(std::min(length + 1, definition.size()));
  }
}

void UnitList::readGroup(std::string_view group) {
  const char* const FUNC_ID = "UnitList::read_default";
  const std::string baseName(scanWord(group));
  if (baseName.empty()) {
    return;
  }
  const std::uint32_t baseId = addUnit(baseName, nextIndex_, 1.0, UnitData::OP_NONE).id;
  while (true) {
    const std::string_view operationToken = scanWord(group);
    const std::string factorToken(scanWord(group));
    const std::string name(scanWord(group));
    if (name.empty()) {
      return;
    }
    const int operation = operationFromToken(operationToken.front());
    const double factor = string2val<double>(factorToken);
    if (factor == 0.0 && operation != UnitData::OP_SPECIAL) {
      message("Invalid unit definition: factor = 0, but not a special unit conversion!", MSG_WARNING, FUNC_ID,
              2);
      ++nextIndex_;
      continue;
    }
    addUnit(name, baseId, factor, operation);
  }
}

const UnitData& UnitList::addUnit(const std::string& name, std::uint32_t baseId, double factor,
                                  int operation) {
  const char* const FUNC_ID = "[UnitList::read_default]";
  if (byName_.contains(name)) {
    throw Exception(FormatString("Duplicate unit '%1' defined.").arg(name), FUNC_ID);
  }
  const UnitData& entry =
      add(std::make_unique<UnitData>(UnitData{nextIndex_, name, baseId, factor, operation}));
  byName_.emplace(name, &entry);
  byIndex_.emplace(nextIndex_, &entry);
  ++nextIndex_;
  return entry;
}

const UnitData* UnitList::retrieve(const std::string& name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

const UnitData& UnitList::retrieve(std::uint32_t index) const {
  const char* const FUNC_ID = "[UnitList::retrieve]";
  const auto found = byIndex_.find(index);
  if (found == byIndex_.end()) {
    throw Exception("[UnitList::retrieve]  Unit index " + std::to_string(index) + " out of range 0.." +
                        std::to_string(highestIndex()) + "!",
                    FUNC_ID);
  }
  return *found->second;
}

void UnitList::relate_units(const Unit& source, const Unit& target, double& factor, int& operation) const {
  relate(retrieve(source.id()), retrieve(target.id()), factor, operation);
}

void UnitList::relate(const UnitData& source, const UnitData& target, double& factor, int& operation) {
  const char* const FUNC_ID = "[UnitList::relate_units]";
  factor = 1.0;
  operation = UnitData::OP_NONE;
  if (source.id == target.id) {
    return;
  }
  if (source.base_id != target.base_id) {
    throw Exception("Can't relate unit [" + source.name + "] to [" + target.name + "]!", FUNC_ID);
  }
  if (source.operation == UnitData::OP_SPECIAL || target.operation == UnitData::OP_SPECIAL) {
    operation = UnitData::OP_SPECIAL;
  } else if (isOffset(source)) {
    factor = relateOffset(source, target, FUNC_ID);
    operation = UnitData::OP_ADD;
  } else if (isFactor(source)) {
    factor = relateFactor(source, target, FUNC_ID);
    operation = UnitData::OP_MULTIPLY;
  } else if (isOffset(target)) {
    factor = target.operation == UnitData::OP_ADD ? target.factor : -target.factor;
    operation = UnitData::OP_ADD;
  } else if (isFactor(target)) {
    factor = target.operation == UnitData::OP_MULTIPLY ? target.factor
                                                       : inverse(target.factor, source, target, FUNC_ID);
    operation = UnitData::OP_MULTIPLY;
  }
}

void UnitList::convert(const Unit& source, const Unit& target, double& value) const {
  double factor = 1.0;
  int operation = UnitData::OP_NONE;
  relate_units(source, target, factor, operation);
  if (operation == UnitData::OP_SPECIAL) {
    convert_special(source, target, value);
  } else {
    value = apply(operation, factor, value);
  }
}

void UnitList::convert_special(const Unit& source, const Unit& target, double& value) const {
  const char* const FUNC_ID = "[UnitList::convert_special]";
  value = specialConversion(source, target, value, "Trying to take square root of negative number!", FUNC_ID);
}

double UnitList::specialConversion(const Unit& source, const Unit& target, double value,
                                   const char* rootMessage, const char* functionId) const {
  double factor = 1.0;
  int operation = UnitData::OP_NONE;
  if (const SpecialUnit* const special = findSpecial(source.name())) {
    value = special->isRoot ? value * value * special->scale : f_pow10(value) / special->scale;
  } else {
    relate_units(source, source.base(), factor, operation);
    value = apply(operation, factor, value);
  }
  const SpecialUnit* const special = findSpecial(target.name());
  if (special == nullptr) {
    relate_units(source.base(), target, factor, operation);
    return apply(operation, factor, value);
  }
  relate_units(source.base(), target.base(), factor, operation);
  if (special->isRoot) {
    if (value < 0.0) {
      throw Exception(rootMessage, functionId);
    }
    return std::sqrt(value / special->scale);
  }
  if (!(value > 0.0)) {
    throw Exception("Trying to take logarithm of zero or negative number!", functionId);
  }
  return f_log10(value * special->scale);
}

}  // namespace TKL

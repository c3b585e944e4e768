#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "foundation/PtrList.h"
#include "foundation/Unit.h"

namespace TKL {

/// One entry of the unit registry.
struct UnitData {
  /// How a unit follows from the base unit of its group, in numbers of the unit.
  enum operation_t {
    OP_NONE = 0,      ///< a base unit
    OP_ADD = 1,       ///< value = base value + factor
    OP_SUBTRACT = 2,  ///< value = base value - factor
    OP_MULTIPLY = 3,  ///< value = base value * factor: 1 m = 1e3 mm
    OP_DIVIDE = 4,    ///< value = base value / factor: 60 s = 1 min
    OP_SPECIAL = 5    ///< square root of a time, logarithm of a density
  };

  std::uint32_t id = 0;       ///< running number in the registry
  std::string name;           ///< as written in files
  std::uint32_t base_id = 0;  ///< index of the base unit; a base unit is its own base
  double factor = 1.0;        ///< factor or offset of the relation to the base
  int operation = OP_NONE;    ///< one of `operation_t`
};

/// Registry of all units that files may name, in groups with a common base unit.
class UnitList : public ptr_list<UnitData> {
 public:
  /// The one registry of the process, built on first use and never changed afterwards.
  static const UnitList& instance();

  /// An empty registry.
  UnitList() = default;

  /// Fills the registry with the built-in units.
  void read_default();
  /// Adds the units of a definition text: groups end in ";" and consist of words; the first word is the base
  /// unit, then follow triples of operation, factor and name. An incomplete triple ends its group.
  /// @throws Exception "Duplicate unit '%1' defined.", or from `string2val` for a bad factor
  void read(std::string_view definition);

  /// The entry of that name (case-sensitive), or null.
  const UnitData* retrieve(const std::string& name) const;
  /// @throws Exception for an index without entry
  const UnitData& retrieve(std::uint32_t index) const;
  /// The largest index given out so far; 0 for an empty registry.
  std::uint32_t highestIndex() const { return nextIndex_ == 0 ? 0 : nextIndex_ - 1; }

  /// The one operation that takes a number from `source` to `target`: `OP_NONE` nothing, `OP_ADD` value +
  /// factor, `OP_MULTIPLY` value * factor, `OP_SPECIAL` see `convert_special`.
  /// @throws Exception "Can't relate unit [..] to [..]!" for different base units
  void relate_units(const Unit& source, const Unit& target, double& factor, int& operation) const;

  /// As above, for two entries.
  static void relate(const UnitData& source, const UnitData& target, double& factor, int& operation);

  /// Converts `value` in place; it is left as it was when an exception is thrown.
  void convert(const Unit& source, const Unit& target, double& value) const;

  /// Converts `value` in place by way of the base unit, for square root and logarithm units.
  /// @throws Exception for the root of a negative and the logarithm of a non-positive number
  void convert_special(const Unit& source, const Unit& target, double& value) const;

 private:
  friend class UnitVector;
  using ptr_list<UnitData>::add;

  const UnitData& addUnit(const std::string& name, std::uint32_t baseId, double factor, int operation);
  void readGroup(std::string_view group);
  double specialConversion(const Unit& source, const Unit& target, double value, const char* rootMessage,
                           const char* functionId) const;

  std::uint32_t nextIndex_ = 0;
  std::unordered_map<std::string, const UnitData*> byName_;
  std::unordered_map<std::uint32_t, const UnitData*> byIndex_;
};

}  // namespace TKL

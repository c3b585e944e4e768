#pragma once

#include <cstdint>
#include <string>

namespace TKL {

/// A unit of measurement: the index of an entry of the `UnitList`. Default is index 0, the unit `undefined`.
class Unit {
 public:
  Unit() = default;
  /// @throws Exception "Unit '%1' not found."; names are case-sensitive
  explicit Unit(const std::string& name);
  /// @throws Exception "Unit index %1 out of range 0..%2."
  explicit Unit(std::uint32_t index);

  /// @throws Exception "Unit '%1' not found."; the unit is left as it was
  void set(const std::string& name);
  /// @throws Exception "Unit index %1 out of range 0..%2."; the unit is left as it was
  void set(std::uint32_t index);

  std::uint32_t id() const { return id_; }
  /// The name as it is written in files.
  const std::string& name() const;
  /// Index of the base unit of the group.
  std::uint32_t base_id() const;
  /// The base unit of the group; a base unit is its own base.
  Unit base() const { return Unit(base_id()); }

  friend bool operator==(const Unit&, const Unit&) = default;

 private:
  std::uint32_t id_ = 0;
};

}  // namespace TKL

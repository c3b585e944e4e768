#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

namespace VELMORA {

/// Finds the first of several named objects by name, in constant time. Built once for a list, since a
/// project may have as many assignments as conditions.
class NameIndex {
 public:
  static constexpr std::size_t NONE = static_cast<std::size_t>(-1);

  NameIndex() = default;
  /// Index over the member `name` of each object.
  template <class Objects>
  explicit NameIndex(const Objects& objects) {
    std::size_t position = 0;
    for (const auto& object : objects) add(object.name, position++);
  }

  /// The first object of a name counts; a second one only makes the name ambiguous.
  void add(const std::string& name, std::size_t position) {
    const auto [entry, isNew] = entries_.try_emplace(name, Entry{position, false});
    if (!isNew) entry->second.ambiguous = true;
  }

  /// Position of the first object of that name, `NONE` if there is none.
  std::size_t find(const std::string& name) const {
    const auto entry = entries_.find(name);
    return entry == entries_.end() ? NONE : entry->second.position;
  }

  bool isAmbiguous(const std::string& name) const {
    const auto entry = entries_.find(name);
    return entry != entries_.end() && entry->second.ambiguous;
  }

 private:
  struct Entry {
    std::size_t position;
    bool ambiguous;
  };

  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace VELMORA

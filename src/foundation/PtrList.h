#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace TKL {

/// A list of owned pointers in the order in which they were added. The entries keep their addresses for as
/// long as the list lives and are deleted with it.
template <typename T>
class ptr_list {
 public:
  using const_iterator = typename std::vector<std::unique_ptr<T>>::const_iterator;

  /// Takes the entry over and returns a reference to it.
  T& add(std::unique_ptr<T> entry) {
    entries_.push_back(std::move(entry));
    return *entries_.back();
  }

  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }
  const_iterator begin() const { return entries_.begin(); }
  const_iterator end() const { return entries_.end(); }

 private:
  std::vector<std::unique_ptr<T>> entries_;
};

}  // namespace TKL

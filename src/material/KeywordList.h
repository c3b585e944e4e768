#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace MM {

/// Binds the enumerations of the material library to the words of material files. It is a list of its own:
/// no word of a project file stands here. A category is named by the scoped name of its enumeration; an
/// entry may have aliases, words of older files. In the flag categories an index is a bit value.
///
/// All failures are a `TKL::Exception`.
class KeywordList {
 public:
  /// Current keyword of an index.
  /// @throws TKL::Exception "Cannot determine keyword for enumeration type '%1' and index '%2'."
  static std::string Keyword(std::string_view category, std::uint32_t index);

  /// Index of a keyword or alias, the lowest one where several have it. `deprecated`, if given, tells
  /// whether an alias was matched; it is left alone on failure.
  /// @throws TKL::Exception "Cannot determine enumeration value for enumeration type '%1' and keyword
  /// '%2'.", and what `MaxIndex` throws
  static std::int32_t Enumeration(std::string_view category, std::string_view keyword,
                                  bool* deprecated = nullptr);

  /// Highest valid index of a category, 64 in the flag categories.
  /// @throws TKL::Exception "Invalid enumeration type '%1'."
  static std::int32_t MaxIndex(std::string_view category);

  /// True where `Enumeration` finds the keyword.
  /// @throws TKL::Exception what `MaxIndex` throws
  static bool KeywordExists(std::string_view category, std::string_view keyword);
};

}  // namespace MM

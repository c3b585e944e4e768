#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace VELMORA {

/// Binds every enumeration of the project model to the words of the project file. A category is named by
/// the scoped name of its enumeration, as in "VelClimateCond::kind_t"; an index is the value of the
/// enumerator. Besides its current keyword an index may have aliases, words of older project files.
///
/// The tables are constant and each call is a linear scan. Keywords and categories are compared whole and
/// case-sensitively. All failures are a `TKL::Exception`.
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

  /// Sentence for people. `noDescription`, if given, is cleared on entry, and set where the category
  /// offers nothing but the keyword itself, which is then returned.
  /// @throws TKL::Exception "Cannot determine description for enumeration type '%1' and index '%2'."
  static std::string Description(std::string_view category, std::uint32_t index,
                                 bool* noDescription = nullptr);

  /// Highest valid index of a category.
  /// @throws TKL::Exception "Invalid enumeration type '%1'."
  static std::int32_t MaxIndex(std::string_view category);

  /// True where `Enumeration` finds the keyword.
  /// @throws TKL::Exception what `MaxIndex` throws
  static bool KeywordExists(std::string_view category, std::string_view keyword);
};

}  // namespace VELMORA

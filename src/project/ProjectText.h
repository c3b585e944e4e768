#pragma once

#include <array>
#include <iosfwd>
#include <string>

#include "keywords/SectionText.h"

namespace VELMORA {

/// The lines of a project file, sorted into its sections. Sections may stand in any order and may repeat;
/// blank lines count in `PROJECT_INFO` only.
class ProjectText {
 public:
  /// Number of the sections, those of "VelProject::projectParts_t".
  static constexpr std::size_t NUM_SECTIONS = 8;

  /// Reads a whole file. Every line that consists of a section name, in brackets or not, begins a section.
  /// @throws TKL::Exception "Expected keyword, got '%1'!" for text before the first section
  void read(std::istream& file);

  const SectionText& section(std::size_t part) const { return sections_.at(part); }

  /// Text of a line of the file, empty where no section holds it.
  std::string lineText(int number) const;

 private:
  std::array<SectionText, NUM_SECTIONS> sections_;
  TextLine strayLine_;  ///< text before the first section
};

}  // namespace VELMORA

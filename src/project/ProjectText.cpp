#include "project/ProjectText.h"

#include <algorithm>
#include <cstdint>
#include <istream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

const char* const PARTS_CATEGORY = "VelProject::projectParts_t";

using SectionNames = std::array<std::string, ProjectText::NUM_SECTIONS>;

SectionNames sectionNames() {
  SectionNames names;
  for (std::size_t part = 0; part < names.size(); ++part)
    names[part] = KeywordList::Keyword(PARTS_CATEGORY, static_cast<std::uint32_t>(part));
  return names;
}

}  // namespace

void ProjectText::read(std::istream& file) {
  const char* const FUNC_ID = "[VelProject::read]";
  const SectionNames names = sectionNames();
  const auto projectInfo = static_cast<std::size_t>(KeywordList::Enumeration(PARTS_CATEGORY, "PROJECT_INFO"));
  SectionText* current = nullptr;
  std::string raw;
  for (int number = 1; std::getline(file, raw); ++number) {
    TKL::trim(raw);
    const std::string title = TKL::section_title(raw);
    const auto name = std::find(names.begin(), names.end(), title);
    if (name != names.end()) {
      current = &sections_[static_cast<std::size_t>(name - names.begin())];
    } else if (raw.empty()) {
      if (current == &sections_[projectInfo]) current->append({raw, number});
    } else if (current == nullptr) {
      strayLine_ = {raw, number};
      TKL::Exception error(TKL::FormatString("Expected keyword, got '%1'!").arg(quotedText(title)), FUNC_ID);
      error.setInputLine(number);
      throw error;
    } else {
      current->append({raw, number});
    }
  }
}

std::string ProjectText::lineText(int number) const {
  if (number == strayLine_.number) return strayLine_.text;
  for (const SectionText& section : sections_)
    for (const TextLine& line : section)
      if (line.number == number) return line.text;
  return {};
}

}  // namespace VELMORA

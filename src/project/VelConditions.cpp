#include "project/VelConditions.h"

#include <array>
#include <cstdint>
#include <string>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

template <class Record>
void readRecords(VelConditions::conditionType_t type, const SectionText& text, std::vector<Record>& records) {
  std::vector<SectionText> blocks;
  VelConditions::explodeList(type, text, blocks);
  for (const SectionText& block : blocks) {
    records.emplace_back();
    records.back().read(block);
  }
}

}  // namespace

VelConditions::VelConditions()
    : defaultTemperature("DEFAULT_TEMPERATURE", 20.0, "C"), defaultRelHum("DEFAULT_RELHUM", 80.0, "%") {}

void VelConditions::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelConditions::read]";
  const char* const CATEGORY = "VelConditions::conditionList_t";
  std::array<SectionText, NUM_L> lists;
  SectionText* current = nullptr;
  forEachLine(text, [&](const TextLine& line) {
    const std::string title = TKL::section_title(TKL::trim_copy(line.text));
    if (title.empty()) return;
    if (KeywordList::KeywordExists(CATEGORY, title)) {
      current = &lists[static_cast<std::size_t>(KeywordList::Enumeration(CATEGORY, title))];
    } else if (current == nullptr) {
      throw TKL::Exception(TKL::FormatString("Expected keyword indicating a new condition list, got '%1'!")
                               .arg(quotedText(title)),
                           FUNC_ID);
    } else {
      current->append(line);
    }
  });
  readRecords(T_WALL_DATA, lists[L_WALLS], wallData);
  readRecords(T_CLIMATE_COND, lists[L_CLIMATE_CONDITIONS], climateConds);
  readRecords(T_BOUND_COND, lists[L_BOUNDARY_CONDITIONS], boundaryConds);
  readRecords(T_INIT_COND, lists[L_INITIAL_CONDITIONS], initialConds);
  readRecords(T_FIELD_COND, lists[L_FIELD_CONDITIONS], fieldConds);
  readRecords(T_CONTACT_COND, lists[L_CONTACT_CONDITIONS], contactConds);
  readRecords(T_SOLUTION_DEFINITION, lists[L_SOLUTION_DEFINITIONS], solutionDefinitions);
  readDefaults(lists[L_DEFAULT_CONDITIONS]);
}

void VelConditions::explodeList(conditionType_t type, const SectionText& text,
                                std::vector<SectionText>& blocks) {
  const char* const FUNC_ID = "[VelConditions::explodeList]  ";
  const std::string header =
      KeywordList::Keyword("VelConditions::conditionType_t", static_cast<std::uint32_t>(type));
  blocks.clear();
  forEachLine(text, [&](const TextLine& line) {
    const std::string title = TKL::section_title(TKL::trim_copy(line.text));
    if (title.empty()) return;
    if (title == header) {
      blocks.emplace_back();
    } else if (blocks.empty()) {
      throw TKL::Exception(
          TKL::FormatString("Expected condition '%1' but got '%2'!").arg(header).arg(quotedText(title)),
          FUNC_ID);
    } else {
      blocks.back().append(line);
    }
  });
}

void VelConditions::readDefaults(const SectionText& text) {
  const char* const FUNC_ID = "[VelConditions::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (!KeywordList::KeywordExists("VelConditions::defaultInitialCond_t", line.keyword)) {
      warnUnknownKeyword(line, FUNC_ID);
      return;
    }
    const int index = KeywordList::Enumeration("VelConditions::defaultInitialCond_t", line.keyword);
    readParameter(line, index == D_DEFAULT_TEMPERATURE ? defaultTemperature : defaultRelHum, FUNC_ID);
  });
}

}  // namespace VELMORA

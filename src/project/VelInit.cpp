#include "project/VelInit.h"

#include <array>
#include <sstream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

void VelInit::clear() {
  balanceEquations.reset();
  useKirchhoff = true;
  useGravity = false;
  useBuoyancy = false;
  useHydrostatic = false;
  pressureUpdateInterval.set("PRESSURE_UPDATE_INTERVAL", 10.0, "min");
  externalModelUpdateInterval.set("EXTERNAL_MODEL_UPDATE_INTERVAL", 10.0, "min");
  duration.set("DURATION", 10.0, "d");
  startYear = 2000;
  startTime = 0;
  isothermalTRef.set("ISOTHERMAL_T_REF", 20.0, "C");
  saltSettings.clear();
  solverSettings.clear();
  vocDatabase = TKL::Path();
  vocIds.clear();
}

void VelInit::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelInit::read]";
  const char* const CATEGORY = "VelInit::sections_t";
  std::array<SectionText, NUM_S> sections;
  SectionText* current = nullptr;
  forEachLine(text, [&](const TextLine& line) {
    const std::string title = TKL::section_title(line.text);
    if (!title.empty() && KeywordList::KeywordExists(CATEGORY, title))
      current = &sections[static_cast<std::size_t>(KeywordList::Enumeration(CATEGORY, title))];
    else if (current == nullptr)
      throw TKL::Exception(TKL::FormatString("Expected subsection header, got: '%1'!").arg(quotedText(title)),
                           FUNC_ID);
    else
      current->append(line);
  });
  readGeneralParameters(sections[S_GENERAL]);
  saltSettings.read(sections[S_SALT_SETTINGS]);
  solverSettings.read(sections[S_SOLVER_SETTINGS]);
}

void VelInit::readGeneralParameters(const SectionText& text) {
  const char* const FUNC_ID = "[VelInit::readGeneralParameters]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (readSwitch(line) || readValue(line, FUNC_ID)) return;
    warnUnknownKeyword(line, FUNC_ID);
    readDeprecated(line);
  });
}

bool VelInit::readSwitch(const KeywordLine& line) {
  bool* target = nullptr;
  if (line.keyword == "USE_KIRCHHOFF") target = &useKirchhoff;
  if (line.keyword == "USE_GRAVITY") target = &useGravity;
  if (line.keyword == "USE_BUOYANCY") target = &useBuoyancy;
  if (line.keyword == "USE_HYDROSTATIC") target = &useHydrostatic;
  if (target == nullptr) return false;
  *target = isYes(line.value);
  return true;
}

bool VelInit::readValue(const KeywordLine& line, const char* functionId) {
  if (line.keyword == "BALANCE_EQUATIONS")
    readBalanceEquations(line.value);
  else if (line.keyword == "PRESSURE_UPDATE_INTERVAL")
    readParameter(line, pressureUpdateInterval, functionId);
  else if (line.keyword == "EXTERNAL_MODEL_UPDATE_INTERVAL")
    readParameter(line, externalModelUpdateInterval, functionId);
  else if (line.keyword == "DURATION")
    readParameter(line, duration, functionId);
  else if (line.keyword == "ISOTHERMAL_T_REF")
    readParameter(line, isothermalTRef, functionId);
  else if (line.keyword == "START_YEAR")
    startYear = TKL::string2val<std::uint32_t>(line.value);
  else if (line.keyword == "START_TIME")
    startTime = TKL::string2val<std::uint32_t>(line.value);
  else if (line.keyword == "VOC_DATABASE")
    vocDatabase = TKL::Path(line.value);
  else if (line.keyword == "VOC_IDS")
    vocIds = line.value;
  else
    return false;
  return true;
}

void VelInit::readBalanceEquations(const std::string& value) {
  balanceEquations.reset();
  std::istringstream words(value);
  for (std::string word; words >> word;)
    balanceEquations.set(
        static_cast<std::size_t>(KeywordList::Enumeration("VelInit::balance_equations_t", word)));
}

/// Words of older project files that still take effect.
void VelInit::readDeprecated(const KeywordLine& line) {
  if (line.keyword == "INCLUDE_AIR_FLOW" || line.keyword == "USE_AIR_FLOW") {
    if (isYes(line.value)) balanceEquations.set(B_AIR);
  } else if (line.keyword == "FORCE_KL") {
    useKirchhoff = TKL::string_nocase_compare(line.value, "no");
  } else if (line.keyword == "GRAVITY") {
    useGravity = useBuoyancy = isYes(line.value);
  }
}

}  // namespace VELMORA

#include "climate/VelClimateCond.h"

#include <cmath>
#include <numbers>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

constexpr char CONDITION_CATEGORY[] = "VelClimateCond::condition_t";
constexpr char KIND_CATEGORY[] = "VelClimateCond::kind_t";
constexpr char PARA_CATEGORY[] = "VelClimateCond::para_t";
constexpr char OBJECT_NAME[] = "climate condition";

/// A year of 365 days [s].
constexpr double YEAR = 31536000.0;

const char* const READ_ID = "[VelClimateCond::read]";
/// The two blanks belong to the tag.
const char* const PREPARE_CALCULATION_ID = "[VelClimateCond::prepareCalculation]  ";

bool switchValue(const KeywordLine& line) {
  const char* const FUNC_ID = READ_ID;
  if (TKL::string_nocase_compare(line.value, "yes") || line.value == "1") return true;
  if (TKL::string_nocase_compare(line.value, "no") || line.value == "0") return false;
  throw TKL::Exception(TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                           .arg(quotedText(line.value))
                           .arg(line.keyword),
                       FUNC_ID);
}

/// The time within a year of 365 days [s]; the very end of the year stays as it is. The remainder of a
/// division is exact, so it equals a repeated subtraction.
double timeOfYear(double t) {
  if (!(t > YEAR)) return t;
  const double rest = std::fmod(t, YEAR);
  return rest == 0.0 ? YEAR : rest;
}

}  // namespace

void VelClimateCond::read(const SectionText& text) {
  const char* const FUNC_ID = READ_ID;
  if (!text.empty()) inputLine = text.begin()->number;
  forEachKeywordLine(text, FUNC_ID, [this](const KeywordLine& line) { readKeyword(line); });
}

void VelClimateCond::readKeyword(const KeywordLine& line) {
  const char* const FUNC_ID = READ_ID;
  const std::string& keyword = line.keyword;
  if (keyword == "TYPE") {
    condition = static_cast<condition_t>(KeywordList::Enumeration(CONDITION_CATEGORY, line.value));
  } else if (keyword == "NAME") {
    name = line.value;
  } else if (keyword == "KIND") {
    kind = static_cast<kind_t>(KeywordList::Enumeration(KIND_CATEGORY, line.value));
  } else if (keyword == "FILENAME") {
    fileName = TKL::Path(line.value);
  } else if (keyword == "SPECIES") {
    species = line.value;
  } else if (keyword == "USE_INTERPOLATION") {
    useInterpolation = switchValue(line);
  } else if (keyword == "EXTEND_DATA") {
    extendData = switchValue(line);
  } else if (keyword == "CYCLIC_DATA") {
    cyclicData = switchValue(line);
  } else if (KeywordList::KeywordExists(PARA_CATEGORY, keyword)) {
    const auto index = static_cast<std::size_t>(KeywordList::Enumeration(PARA_CATEGORY, keyword));
    readParameter(line, para[index], FUNC_ID);
  } else {
    warnUnknownKeyword(line, FUNC_ID);
  }
}

void VelClimateCond::prepareCalculation(const PlaceholderMap& placeholders) {
  const char* const FUNC_ID = PREPARE_CALCULATION_ID;
  switch (kind) {
    case K_CONSTANT:
      requireParameters(P_CONSTVALUE, P_CONSTVALUE);
      currentValue = para[P_CONSTVALUE].value;
      break;
    case K_SINUS:
      prepareSines(false);
      break;
    case K_2SINUS:
      prepareSines(true);
      break;
    case K_DATLINEAR:
      prepareData(placeholders);
      break;
    default:
      throw TKL::Exception(
          TKL::FormatString("Missing kind type in '%1' with name '%2'!").arg(OBJECT_NAME).arg(name), FUNC_ID);
  }
}

void VelClimateCond::requireParameters(std::size_t first, std::size_t last) const {
  const char* const FUNC_ID = PREPARE_CALCULATION_ID;
  for (std::size_t i = first; i <= last; ++i)
    if (!para[i].isSet())
      throw TKL::Exception(
          TKL::FormatString("Missing parameter in '%1' with name '%2'!").arg(OBJECT_NAME).arg(name), FUNC_ID);
}

void VelClimateCond::requirePositive(para_t index, const char* shownName) const {
  const char* const FUNC_ID = PREPARE_CALCULATION_ID;
  if (para[index].value > 0.0) return;
  throw TKL::Exception(TKL::FormatString("Parameter %1 in climate condition %2 must not be negative or zero!")
                           .arg(shownName)
                           .arg(OBJECT_NAME),
                       FUNC_ID);
}

void VelClimateCond::prepareSines(bool two) {
  requireParameters(P_MEANVALUE, two ? P_PHASESHIFT2 : P_PHASESHIFT1);
  requirePositive(P_OSCPERIOD1, "OSCPERIOD1");
  if (two) requirePositive(P_OSCPERIOD2, "OSCPERIOD2");
  requirePositive(P_AMPLITUDE1, "CP_AMPLITUDE1");
  if (two) requirePositive(P_AMPLITUDE2, "CP_AMPLITUDE2");
  omega1 = 2.0 * std::numbers::pi / para[P_OSCPERIOD1].value;
  if (two) omega2 = 2.0 * std::numbers::pi / para[P_OSCPERIOD2].value;
}

void VelClimateCond::calcCurrentValue(double t) {
  if (cyclicData) t = timeOfYear(t);
  switch (kind) {
    case K_SINUS:
      currentValue = sine1(t) + para[P_MEANVALUE].value;
      break;
    case K_2SINUS:
      currentValue = sine1(t) + para[P_MEANVALUE].value + sine2(t);
      break;
    case K_DATLINEAR:
      currentValue = dataValue(t);
      break;
    default:  // a constant has got its value in `prepareCalculation`
      break;
  }
  // a shifted humidity may leave the range in which vapour and capillary pressure are defined
  if (condition == C_RELHUM && isSet(P_SHIFTVALUE)) {
    constexpr double LOWEST = 0.01, HIGHEST = 1.0;
    if (currentValue < LOWEST) currentValue = LOWEST;
    if (currentValue > HIGHEST) currentValue = HIGHEST;
  }
}

double VelClimateCond::sine1(double t) const {
  return std::sin((t + para[P_PHASESHIFT1].value) * omega1) * para[P_AMPLITUDE1].value;
}

double VelClimateCond::sine2(double t) const {
  return std::sin((t + para[P_PHASESHIFT2].value) * omega2) * para[P_AMPLITUDE2].value;
}

}  // namespace VELMORA

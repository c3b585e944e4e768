#include "project/VelBoundaryCond.h"

#include <algorithm>
#include <cstdint>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "project/ConditionReader.h"

namespace VELMORA {

namespace {

constexpr double SHORT_PI = 3.14;           // of the cross-section of a heat pipe
constexpr double DEFAULT_HYSTERESIS = 2.0;  // [K]

const double* currentValue(const VelClimateCond* climate) {
  return climate != nullptr ? &climate->currentValue : nullptr;
}

double hysteresis(const TKL::Parameter& parameter) {
  return parameter.isSet() ? parameter.value : DEFAULT_HYSTERESIS;
}

/// First line of a failure at calculation. The second line has arguments of its own.
std::string failureOf(const VelBoundaryCond& bc) {
  const std::string type =
      bc.condition < VelBoundaryCond::NUM_C
          ? KeywordList::Keyword("VelBoundaryCond::condition_t", static_cast<std::uint32_t>(bc.condition))
          : std::string();
  return TKL::FormatString("Error in boundary condition '%1' with type '%2'.\n").arg(bc.name).arg(type).str();
}

}  // namespace

void VelBoundaryCond::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelBoundaryCond::read]";
  forEachKeywordLine(text, FUNC_ID, [this](const KeywordLine& line) { readKeyword(line); });
}

void VelBoundaryCond::readKeyword(const KeywordLine& line) {
  const char* const FUNC_ID = "[VelBoundaryCond::read]";
  const char* const PARA = "VelBoundaryCond::para_t";
  const char* const ID_NAME = "VelBoundaryCond::id_name_t";
  const std::string& keyword = line.keyword;
  if (keyword == "TYPE") {
    condition = readEnumerator<condition_t>("VelBoundaryCond::condition_t", line.value);
  } else if (keyword == "NAME") {
    name = line.value;
  } else if (keyword == "KIND") {
    kind = readEnumerator<kind_t>("VelBoundaryCond::kind_t", line.value);
  } else if (keyword == "START_TIME") {
    readParameter(line, startTime, FUNC_ID);
  } else if (keyword == "END_TIME") {
    readParameter(line, endTime, FUNC_ID);
  } else if (keyword == "FLAGS") {
    readFlags("VelBoundaryCond::flag_t", line.value, flags);
  } else if (KeywordList::KeywordExists(PARA, keyword)) {
    readParameter(line, para[readEnumerator<para_t>(PARA, keyword)], FUNC_ID);
  } else if (KeywordList::KeywordExists(ID_NAME, keyword)) {
    idNames[readEnumerator<id_name_t>(ID_NAME, keyword)] = line.value;
  } else if (!readClimateName(line, climateNames)) {
    warnUnknownKeyword(line, FUNC_ID);
    readOldFlag(line);
  }
}

void VelBoundaryCond::readOldFlag(const KeywordLine& line) {
  int value = 0;
  if (!TKL::tryString2val(line.value, value) || (value != 0 && value != 1)) return;
  if (line.keyword == "INCL_RH_CL") flags.set(F_INCLUDE_RH_CLOUD, value == 1);
  if (line.keyword == "INCL_GROUND") flags.set(F_INCLUDE_GROUND, value == 1);
}

void VelBoundaryCond::assignClimateCond(const std::vector<VelClimateCond>& climateConds) {
  linkClimate(climateNames, climateConds, climate, "[VelBoundaryCond::assignClimateCond]");
}

void VelBoundaryCond::assignWallData(const std::vector<VelWallData>& walls) {
  const char* const FUNC_ID = "[VelBoundaryCond::assignWallData]";
  const std::string& wanted = idNames[I_WALLDATA];
  if (wanted.empty()) return;
  const auto found =
      std::find_if(walls.begin(), walls.end(), [&](const VelWallData& wall) { return wall.name == wanted; });
  if (found == walls.end()) {
    TKL::message(TKL::FormatString("Could not find wall data with name '%1'!").arg(wanted), TKL::MSG_ERROR,
                 FUNC_ID, -1);
    throw TKL::Exception("Error linking wall data to boundary condtions!", FUNC_ID);
  }
  wallData = &*found;
}

void VelBoundaryCond::prepareParameters() {
  if (!isHeatPipe()) return;
  heatPipe.reset();
  heatPipe.transfer = para[P_HP_TRANSFER].value;
  heatPipe.capacity = para[P_HP_CAPACITY].value;
  heatPipe.radius = para[P_HP_RADIUS].value;
  heatPipe.length = para[P_HP_LENGTH].value;
  heatPipe.crossSection = heatPipe.radius * SHORT_PI * heatPipe.radius;
  heatPipe.upperLimitActive = para[P_HP_TEMPER_UPPER_LIMIT].isSet();
  heatPipe.lowerLimitActive = para[P_HP_TEMPER_LOWER_LIMIT].isSet();
  heatPipe.upperLimit = para[P_HP_TEMPER_UPPER_LIMIT].value;
  heatPipe.lowerLimit = para[P_HP_TEMPER_LOWER_LIMIT].value;
  heatPipe.upperHysteresis = hysteresis(para[P_HP_TEMPER_UPPER_HYST]);
  heatPipe.lowerHysteresis = hysteresis(para[P_HP_TEMPER_LOWER_HYST]);
}

void VelBoundaryCond::prepareElements(const std::vector<Element>& elements) {
  if (isHeatPipe()) heatPipe.collectShares(elements, this);
}

void VelBoundaryCond::update(std::span<const double> temperature) {
  if (!isHeatPipe()) return;
  HeatPipe::Drive drive;
  drive.massFluxDensity = currentValue(climate[VelClimateCond::C_MASSFLUXDENS]);
  drive.heatFlow = currentValue(climate[VelClimateCond::C_HEATFLOW]);
  drive.temperature = currentValue(climate[VelClimateCond::C_TEMPER]);
  if (drive.temperature == nullptr && para[P_HP_SUPPTEMP].isSet()) {
    drive.temperature = &para[P_HP_SUPPTEMP].value;
  }
  heatPipe.update(temperature, drive);
}

void VelBoundaryCond::failMissingClimate(VelClimateCond::condition_t quantity, const char* functionId) const {
  const std::string type =
      KeywordList::Keyword("VelClimateCond::condition_t", static_cast<std::uint32_t>(quantity));
  throw TKL::Exception(
      failureOf(*this) +
          TKL::FormatString("Climate condition of type '%1' needs to be specified!").arg(type).str(),
      functionId);
}

void VelBoundaryCond::failMissingWall(const char* functionId) const {
  throw TKL::Exception(failureOf(*this) + "Wall definition needs to be specified!", functionId);
}

}  // namespace VELMORA

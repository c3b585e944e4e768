#include "models/WTAConvectionModel.h"

#include <algorithm>
#include <limits>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "keywords/KeywordList.h"

namespace VELMORA {

namespace {

constexpr double GRAVITY = 9.807;    // [m/s2]
constexpr double AIR_DENSITY = 1.3;  // [kg/m3] taken as constant
constexpr double MEAN_HEIGHT = 0.5;  // share of the height that drives the leak

const Element* elementAt(int i, int j, const IndexMatrix& indexMatrix, const std::vector<Element>& elements) {
  const int number = indexMatrix.at(i, j);
  return number < 0 ? nullptr : &elements[static_cast<std::size_t>(number)];
}

}  // namespace

void WTAConvectionModel::assignClimateCond(const std::string& name,
                                           const std::vector<VelClimateCond>& climateConds) {
  definition.name = name;
  indoorTemperature = find(LeakageDefinition::CMC_INDOOR_TEMPER, VelClimateCond::C_TEMPER, climateConds);
  outdoorTemperature = find(LeakageDefinition::CMC_OUTDOOR_TEMPER, VelClimateCond::C_TEMPER, climateConds);
  indoorRelHum = find(LeakageDefinition::CMC_INDOOR_RELHUM, VelClimateCond::C_RELHUM, climateConds);
}

const VelClimateCond* WTAConvectionModel::find(LeakageDefinition::convectionModelClimate_t name,
                                               VelClimateCond::condition_t type,
                                               const std::vector<VelClimateCond>& climateConds) const {
  const char* const FUNC_ID = "[WTAConvectionModel::assignClimateCond]";
  const std::string& wanted = definition.climateNames[name];
  if (wanted.empty()) return nullptr;
  const auto found = std::find_if(
      climateConds.begin(), climateConds.end(),
      [&](const VelClimateCond& climate) { return climate.name == wanted && climate.condition == type; });
  if (found == climateConds.end())
    throw TKL::Exception(
        TKL::FormatString("Invalid climate condition assignment with name '%1', should be of type '%2'")
            .arg(wanted)
            .arg(KeywordList::Keyword("VelClimateCond::condition_t", static_cast<std::uint32_t>(type))),
        FUNC_ID);
  return &*found;
}

bool WTAConvectionModel::prepare(VelFieldCond& fieldCond, const VelSelection::Range& selection,
                                 const IndexMatrix& elementIndexMatrix,
                                 const std::vector<Element>& elements) {
  const char* const FUNC_ID = "[WTAConvectionModel::prepare]";
  const auto require = [&](const Element* element) -> const Element& {
    if (element == nullptr || element->material == nullptr)
      throw TKL::Exception(TKL::FormatString("Invalid field condition assignment of type "
                                             "FC_CONVECTIVE_SOURCE, no material assigned for '%1'.")
                               .arg(fieldCond.name),
                           FUNC_ID);
    return *element;
  };
  flowInX = fieldCond.flags[VelFieldCond::F_CONVECTION_X];
  elementIndexMatrix.forEachUsedCell(selection.left, selection.top, selection.right, selection.bottom,
                                     [&](int, int, int number) { elementIndices.push_back(number); });
  for (const std::int32_t number : elementIndices) require(&elements[static_cast<std::size_t>(number)]);
  const int lastColumn = flowInX ? selection.right : selection.left;
  const int lastRow = flowInX ? selection.top : selection.bottom;
  const Element& first = require(elementAt(selection.left, selection.top, elementIndexMatrix, elements));
  const Element& last = require(elementAt(lastColumn, lastRow, elementIndexMatrix, elements));
  thickness =
      flowInX ? last.x - first.x + (first.dx + last.dx) * 0.5 : first.y - last.y + (first.dy + last.dy) * 0.5;
  return true;
}

double WTAConvectionModel::require(const VelClimateCond* climate,
                                   LeakageDefinition::convectionModelClimate_t name,
                                   const VelFieldCond& fieldCond) const {
  const char* const FUNC_ID = "[WTAConvectionModel::calculate]";
  if (climate != nullptr) return climate->currentValue;
  throw TKL::Exception(TKL::FormatString("Error in in field condition '%1' with type '%2'.\n")
                               .arg(fieldCond.name)
                               .arg(KeywordList::Keyword("VelFieldCond::condition_t",
                                                         static_cast<std::uint32_t>(fieldCond.condition)))
                               .str() +
                           TKL::FormatString("Climate condition of type '%1' needs to be specified!")
                               .arg(KeywordList::Keyword("WTAConvectionModel::convectionModelClimate_t",
                                                         static_cast<std::uint32_t>(name)))
                               .str(),
                       FUNC_ID);
}

void WTAConvectionModel::calculate(double /*t*/, const VelFieldCond& fieldCond,
                                   const std::vector<Element>& /*elements*/,
                                   std::span<const double> temperature) {
  minTemperature = std::numeric_limits<double>::max();
  for (const std::int32_t number : elementIndices)
    minTemperature = std::min(minTemperature, temperature[static_cast<std::size_t>(number)]);
  rhoVaporAtMin = TKL::pSat(minTemperature) / (TKL::R_V * minTemperature);
  const double Ti = require(indoorTemperature, LeakageDefinition::CMC_INDOOR_TEMPER, fieldCond);
  const double To = require(outdoorTemperature, LeakageDefinition::CMC_OUTDOOR_TEMPER, fieldCond);
  const double RHi = require(indoorRelHum, LeakageDefinition::CMC_INDOOR_RELHUM, fieldCond);
  convectiveAirFlow = 0.0;
  convectiveMoistureSource = 0.0;
  const double height = definition.para[LeakageDefinition::CMP_HEIGHT].value;
  const double dp = (Ti - To) * (GRAVITY * height * MEAN_HEIGHT * AIR_DENSITY) / Ti +
                    definition.para[LeakageDefinition::CMP_DIFFPRESSURE_MECH].value;
  if (!(dp > 0.0)) return;
  convectiveAirFlow = dp * definition.leakCoefficient;
  const double excess = TKL::pSat(Ti) * RHi / (TKL::R_V * Ti) - rhoVaporAtMin;
  if (!(excess > 0.0)) return;
  convectiveMoistureSource = excess * convectiveAirFlow / thickness;
}

}  // namespace VELMORA

#include "project/HeatPipe.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "grid/Side.h"

namespace VELMORA {

namespace {

constexpr double PI = 3.141592653589793;
constexpr double START_TEMPERATURE = 293.15;  // [K]

bool carries(const Side& side, const VelBoundaryCond* condition) {
  return std::find(side.boundaryConds.begin(), side.boundaryConds.end(), condition) !=
         side.boundaryConds.end();
}

bool isOuter(const Side& side) {
  return side.elementLeft == nullptr || side.elementRight == nullptr;
}

}  // namespace

void HeatPipe::reset() {
  supplyTemperature = returnTemperature = START_TEMPERATURE;
  heatFlux = massFlowCapacity = efficiency = thermalPower = meanTemperature = 0.0;
  upperLimitPassed = lowerLimitPassed = false;
}

void HeatPipe::collectShares(const std::vector<Element>& elements, const VelBoundaryCond* condition) {
  std::map<int, double> areas;
  double sum = 0.0;
  for (const Element& element : elements) {
    for (const Side* side : {element.sideLeft, element.sideRight, element.sideTop, element.sideBottom}) {
      if (side == nullptr || !isOuter(*side) || !carries(*side, condition)) continue;
      areas[element.number] += side->area;
      sum += side->area;
    }
  }
  shares.clear();
  if (!(sum > 0.0)) return;
  for (const auto& [number, area] : areas) shares.emplace_back(number, area / sum);
}

void HeatPipe::switchByLimits() {
  if (upperLimitActive) {
    if (meanTemperature > upperLimit) {
      upperLimitPassed = true;
    } else if (meanTemperature <= upperLimit - upperHysteresis) {
      upperLimitPassed = false;
    }
  }
  if (lowerLimitActive) {
    if (meanTemperature < lowerLimit) {
      lowerLimitPassed = true;
    } else if (meanTemperature >= lowerLimit + lowerHysteresis) {
      lowerLimitPassed = false;
    }
  }
}

void HeatPipe::update(std::span<const double> temperature, const Drive& drive) {
  if (shares.empty()) return;
  meanTemperature = 0.0;
  for (const auto& [number, share] : shares) {
    meanTemperature += share * temperature[static_cast<std::size_t>(number)];
  }
  switchByLimits();
  const bool flows = drive.massFluxDensity != nullptr && !upperLimitPassed && !lowerLimitPassed;
  const double massFlow = flows ? *drive.massFluxDensity * crossSection : 0.0;  // [kg/s]
  massFlowCapacity = massFlow * capacity;
  const double surface = 2.0 * PI * radius * length;
  efficiency = massFlowCapacity > 0.0 ? 1.0 - std::exp(-transfer * surface / massFlowCapacity) : 0.0;
  if (drive.temperature != nullptr) supplyTemperature = *drive.temperature;
  thermalPower = drive.heatFlow != nullptr ? *drive.heatFlow : 0.0;
  heatFlux = (supplyTemperature - meanTemperature) * massFlowCapacity * efficiency + thermalPower;
  returnTemperature =
      massFlowCapacity == 0.0 ? supplyTemperature : supplyTemperature - heatFlux / massFlowCapacity;
}

const double* HeatPipe::share(int elementNumber) const {
  const auto found =
      std::lower_bound(shares.begin(), shares.end(), elementNumber,
                       [](const std::pair<int, double>& entry, int number) { return entry.first < number; });
  return found != shares.end() && found->first == elementNumber ? &found->second : nullptr;
}

}  // namespace VELMORA

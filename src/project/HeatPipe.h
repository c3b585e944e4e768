#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "grid/Element.h"

namespace VELMORA {

class VelBoundaryCond;

/// A pipe in the wall with a fluid that exchanges heat with the elements around it. The pipe is long in z:
/// its surface is shared out to the elements in proportion to the side areas that bound the pipe.
///
/// The exchange over the whole length L of a pipe with radius r, from a fluid with the heat capacity rate
/// C = m*c [W/K], follows the effectiveness of a heat exchanger with one side at a constant temperature:
/// eps = 1 - exp(-h*2*pi*r*L/C), Q = (Ts - Tm)*C*eps. See Incropera and DeWitt, Fundamentals of Heat and
/// Mass Transfer, chapter on heat exchangers.
class HeatPipe {
 public:
  /// Values of the climate conditions that drive a pipe. A pointer is null where none is attached.
  struct Drive {
    const double* massFluxDensity = nullptr;  ///< [kg/m2s] in the cross-section of the pipe
    const double* temperature = nullptr;      ///< [K] of the supply
    const double* heatFlow = nullptr;         ///< [W] given off beside the exchange
  };

  /// Puts the running values to their start.
  void reset();

  /// Collects the elements at outer sides that carry `condition`, with their shares of the area of all these
  /// sides. Sides between two elements are left out: no boundary flux runs through them.
  void collectShares(const std::vector<Element>& elements, const VelBoundaryCond* condition);

  /// Sets the running values for the current temperatures [K] of all elements. Switches the mass flow with
  /// hysteresis by the mean temperature around the pipe. Does nothing for a pipe without elements.
  void update(std::span<const double> temperature, const Drive& drive);

  /// Share of an element of the surface [-], null for an element that the pipe does not reach.
  const double* share(int elementNumber) const;

  double transfer = 0.0;      ///< [W/m2K]
  double capacity = 0.0;      ///< [J/kgK] of the fluid
  double radius = 0.0;        ///< [m]
  double length = 0.0;        ///< [m]
  double crossSection = 0.0;  ///< [m2]

  bool upperLimitActive = false;
  bool lowerLimitActive = false;
  double upperLimit = 0.0;       ///< [K]
  double lowerLimit = 0.0;       ///< [K]
  double upperHysteresis = 2.0;  ///< [K]
  double lowerHysteresis = 2.0;  ///< [K]

  double supplyTemperature = 293.15;  ///< [K]
  double returnTemperature = 293.15;  ///< [K]
  double heatFlux = 0.0;              ///< [W] from the whole pipe to its surroundings
  double massFlowCapacity = 0.0;      ///< [W/K]
  double efficiency = 0.0;            ///< [-]
  double thermalPower = 0.0;          ///< [W]
  double meanTemperature = 0.0;       ///< [K] around the pipe
  bool upperLimitPassed = false;      ///< the mass flow is off, it is too warm around the pipe
  bool lowerLimitPassed = false;      ///< the mass flow is off, it is too cold around the pipe

  /// Element numbers, rising, with their shares of the surface [-]; these add up to 1.
  std::vector<std::pair<int, double>> shares;

 private:
  void switchByLimits();
};

}  // namespace VELMORA

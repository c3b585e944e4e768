#pragma once

#include "foundation/Parameter.h"
#include "grid/Element.h"

namespace VELMORA_SOLVER {

/// Moisture that an element starts with.
struct InitialMoisture {
  double mw = 0.0;     ///< moisture mass density [kg/m3]
  double pC = -100.0;  ///< capillary pressure [Pa], the start of its first calculation
};

/// Start temperature [K] of an element: its last initial condition of the kind temperature, else the default.
/// The temperature is taken as it is; one that lies far below any climate is warned about.
double initialTemperature(const VELMORA::Element& element, const TKL::Parameter& defaultTemperature);

/// Start moisture of an element at the temperature T [K]: its last initial condition of a moisture kind, else
/// the default relative humidity. A value out of range is corrected after a warning.
InitialMoisture initialMoisture(const VELMORA::Element& element, double T,
                                const TKL::Parameter& defaultRelativeHumidity);

/// Start value [kg/m3] of a pollutant in the pore gas of an element: its last initial condition of the kind
/// VOC mass, else 0. A negative one becomes 0 after a warning.
double initialPollutant(const VELMORA::Element& element);

}  // namespace VELMORA_SOLVER

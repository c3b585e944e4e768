#pragma once

#include "foundation/Parameter.h"
#include "grid/Element.h"

namespace VELMORA_SOLVER {

/// Start temperature [K] of an element: its last initial condition of the kind temperature, else the default.
/// The temperature is taken as it is; one that lies far below any climate is warned about.
double initialTemperature(const VELMORA::Element& element, const TKL::Parameter& defaultTemperature);

}  // namespace VELMORA_SOLVER

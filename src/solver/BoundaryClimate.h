#pragma once

#include "project/VelBoundaryCond.h"

namespace VELMORA_SOLVER {

/// Current value of a climate condition that a boundary condition needs, for the caller `functionId`.
/// @throws TKL::Exception when none is attached
inline double clim(const VELMORA::VelBoundaryCond& bc, VELMORA::VelClimateCond::condition_t quantity,
                   const char* functionId) {
  return bc.requireClimate(quantity, functionId).currentValue;
}

/// Parameter of a boundary condition in base units, 0 if it is not set.
inline double parameter(const VELMORA::VelBoundaryCond& bc, VELMORA::VelBoundaryCond::para_t index) {
  return bc.para[index].value;
}

}  // namespace VELMORA_SOLVER

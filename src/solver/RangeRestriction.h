#pragma once

namespace VELMORA_SOLVER {

/// Brings a moisture content that the integrator tries out back into its range: the content and the moisture
/// mass density are clipped, with a warning unless the excess is very small. With strict checking a state far
/// out of range is refused instead, so that the integrator takes a shorter step.
/// @param element  number of the element, for the message
/// @param t        time [s], for the message
/// @param limit    largest moisture content [m3/m3]
/// @param Theta    moisture content [m3/m3]
/// @param mw       moisture mass density [kg/m3]
/// @return false to ask for a shorter step; nothing is changed then
bool restrictMoistureRange(int element, double t, bool strict, double limit, double& Theta, double& mw);

/// Brings a pollutant mass density m [kg/m3] that is negative back to 0, with a warning unless it is very
/// close to 0. There is no upper limit and no strict mode.
/// @param element  number of the element, for the message
/// @param t        time [s], for the message
void restrictVOCRange(int element, double t, double& m);

inline constexpr double OVERFILL_WINDOW = 0.08;  ///< [kg/m3] room below which flows are throttled

/// Throttles the flows into an element that is almost full, down to nothing when it is full, and renews the
/// sum of the moisture flows. Flows out of the element stay.
/// @param room          moisture mass that the receiving element can still take [kg/m3]
/// @param moistureFlux  record of the side [kg/s]; the sign of its sum tells the receiving element
/// @param heatFlux      record of the side [W]: the enthalpies follow their mass flows
void limitFlowsForOverfilling(double room, double* moistureFlux, double* heatFlux);

}  // namespace VELMORA_SOLVER

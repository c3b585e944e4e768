#pragma once

#include <span>
#include <vector>

#include "grid/Element.h"
#include "grid/Side.h"
#include "output/OutputSource.h"

namespace VELMORA {

/// Climate states that derived quantities refer to.
struct ReferenceState {
  double maxHygRelHum = 0.95;    ///< [-] end of the hygroscopic range
  double expRefTemper = 273.15;  ///< [K] temperature without thermal expansion
  double expRefRelHum = 0.6;     ///< [-] relative humidity without hygric expansion
};

/// Water content [m3/m3] beyond the hygroscopic range: what exceeds the retention curve at the end of that
/// range. In air all water counts, in a material without retention none.
double overhygroscopicWaterContent(const MM::Material& material, double Theta, double T,
                                   const ReferenceState& reference);

/// Water mass per dry mass [g/kg]; 0 in a material without retention or density.
double liquidMassFraction(const MM::Material& material, double Theta);

/// Linear strain [m/m] by the change of the water content since the reference humidity.
double hygricExpansion(const MM::Material& material, double Theta, double T, const ReferenceState& reference);

/// Linear strain [m/m] by the change of the temperature since the reference temperature.
double thermalExpansion(const MM::Material& material, double T, const ReferenceState& reference);

/// Share of the pore volume that is filled with moisture [-].
double saturationDegree(const MM::Material& material, double Theta);

/// Temperature [K] at which air of relative humidity RH [-] and temperature T [K] is saturated. Inverts the
/// two power laws of the saturation pressure, each above or below freezing by `T`.
double dewPoint(double RH, double T);

/// Mean over the existing sides of the magnitude of the flux density.
/// @param flow by side number, e.g. [W]; the result is then in [W/m2]
double meanFluxDensity(const Element& element, const RecordView& flow, std::size_t slot);

/// Flux density through the top or the bottom side, whichever has the larger magnitude; with its sign.
double maxFluxDensityY(const Element& element, std::span<const double> flow);

/// Flux density through the left, then the right side, each where its magnitude exceeds that of the vertical
/// maximum `maxY`; else 0.
double maxFluxDensityX(const Element& element, std::span<const double> flow, double maxY);

}  // namespace VELMORA

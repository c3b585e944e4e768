#pragma once

namespace TKL {

inline constexpr double RHO_W = 1000.0;     ///< [kg/m3] density of liquid water
inline constexpr double C_W = 4180.0;       ///< [J/(kg K)] specific heat capacity of liquid water
inline constexpr double C_V = 2050.0;       ///< [J/(kg K)] specific heat capacity of vapour
inline constexpr double C_A = 1006.0;       ///< [J/(kg K)] specific heat capacity of air
inline constexpr double C_ICE = 2108.0;     ///< [J/(kg K)] specific heat capacity of ice
inline constexpr double R_V = 461.89;       ///< [J/(kg K)] gas constant of water vapour
inline constexpr double R_A = 287.1;        ///< [J/(kg K)] gas constant of air
inline constexpr double H_V0 = 3080000.0;   ///< [J/kg] constant of the vapour enthalpy, see `h_v`
inline constexpr double T_FREEZE = 273.15;  ///< [K] freezing point
inline constexpr double SIGMA = 5.67e-08;   ///< [W/(m2 K4)] Stefan-Boltzmann constant
inline constexpr double G_RHO = 9807.0;     ///< [Pa/m] `RHO_W` times 9.807 m/s2

/// Enthalpy of water vapour [J/kg] at T [K]; the zero of energy is at 0 K.
constexpr double h_v(double T) {
  return C_V * T + H_V0;
}

/// Saturation vapour pressure [Pa] at T [K]: a power law over water from 273.15 K up and one over ice below.
/// The two differ by 1.2 Pa at 273.15 K.
/// @throws Exception from `f_pow` below 124.55 K, where the law over ice has no value
double pSat(double T);

/// Capillary pressure [Pa], negative, that belongs to the relative humidity RH [-] at T [K] by Kelvin's law;
/// limited to the pressure at RH = 1e-10 and to -1 Pa.
double pCFromRH(double RH, double T);

}  // namespace TKL

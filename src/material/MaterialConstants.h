#pragma once

namespace MM {

inline constexpr double T_STORAGE = 293.15;       ///< [K] at which a retention curve is given
inline constexpr double T_DIFFUSION = 296.15;     ///< [K] at which transport data are measured
inline constexpr double D_VAPOUR = 2.662e-05;     ///< [m2/s] diffusivity of vapour in air at 23 C
inline constexpr double LIMIT_TOLERANCE = 0.001;  ///< by which data may miss a limit

}  // namespace MM

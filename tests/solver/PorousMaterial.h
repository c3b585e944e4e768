#pragma once

#include <cmath>
#include <sstream>
#include <string>

namespace VELMORA_SOLVER {

/// A porous material with a retention curve after M.Th. van Genuchten (Soil Sci. Soc. Am. J. 44, 1980) as
/// text behind the name of a material in a project file.
struct PorousMaterial {
  double thetaEff = 0.3;  ///< [m3/m3]
  double alpha = 1e-6;    ///< [1/Pa]
  double n = 1.6;         ///< [-]
  double rhoC = 1.5e6;    ///< [J/m3K]
  double lambda = 0.8;    ///< [W/mK] dry
  double lgKv = -11.0;    ///< [s] as its logarithm
  std::string liquid;     ///< lines of the liquid function
  std::string flags = "AIR_TIGHT";

  static std::string constantDiffusivity(double lgDl, double thetaEff) {
    std::ostringstream text;
    text << "FUNCTION = lgDl(Theta_l)\n  0 " << thetaEff << "\n  " << lgDl << " " << lgDl << "\n";
    return text.str();
  }
  /// Liquid conductivity [s] that rises with the content from one logarithm to another.
  static std::string conductivity(double lgDry, double lgWet, double thetaEff) {
    std::ostringstream text;
    text << "FUNCTION = lgKl(Theta_l)\n  0 " << thetaEff << "\n  " << lgDry << " " << lgWet << "\n";
    return text.str();
  }

  /// Moisture content [m3/m3] at a suction [Pa].
  double content(double suction) const {
    return thetaEff * std::pow(1.0 + std::pow(alpha * suction, n), -(1.0 - 1.0 / n));
  }

  std::string text(const std::string& name) const {
    std::ostringstream x, y, result;
    x.precision(12);
    y.precision(16);
    x << "0";
    y << thetaEff;
    double last = thetaEff;
    for (int i = 10; i <= 240; ++i) {
      const double lgp = 0.05 * i;
      const double theta = content(std::pow(10.0, lgp));
      if (!(theta < last * (1.0 - 1e-10))) continue;
      x << " " << lgp;
      y << " " << theta;
      last = theta;
    }
    result.precision(12);
    result << "RHO = 1000 kg/m3\nCE = " << rhoC / 1000.0 << " J/kgK\nTHETA_POR = " << thetaEff
           << " m3/m3\nTHETA_EFF = " << thetaEff << " m3/m3\nLAMBDA = " << lambda << " W/mK\nMEW = 10 -\n"
           << "[IDENTIFICATION]\nNAME = en:" << name << "\nFLAGS = " << flags << "\n[MOISTURE_STORAGE]\n"
           << "FUNCTION = Theta_l(pC)_de\n  " << x.str() << "\n  " << y.str() << "\n[MOISTURE_TRANSPORT]\n"
           << liquid << "FUNCTION = lgKv(Theta_l)\n  0 " << thetaEff << "\n  " << lgKv << " " << lgKv
           << "\n[HEAT_TRANSPORT]\nFUNCTION = lambda(Theta_l)\n  0 " << thetaEff << "\n  " << lambda << " "
           << lambda + 0.58 * thetaEff << "\n";
    return result.str();
  }
};

}  // namespace VELMORA_SOLVER

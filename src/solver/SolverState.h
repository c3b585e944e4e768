#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VELMORA_SOLVER {

/// Values per element that the decomposition fills, one flat array per physical quantity, indexed by the
/// number of the element.
struct SolverState {
  std::vector<double> U;          ///< internal energy density [J/m3], zero at 0 K
  std::vector<double> mw;         ///< moisture mass density in all phases [kg/m3]
  std::vector<double> T;          ///< temperature [K]
  std::vector<double> Theta;      ///< moisture content, mw / RHO_W [m3/m3]
  std::vector<double> ThetaAir;   ///< volume fraction of the air [m3/m3]
  std::vector<double> rhoVapour;  ///< vapour mass per total volume [kg/m3]
  std::vector<double> rhoLiquid;  ///< liquid mass per total volume [kg/m3]
  std::vector<double> rhoIce;     ///< ice mass per total volume [kg/m3]
  std::vector<double> pC;         ///< capillary pressure [Pa], negative; -1 above the effective saturation
  std::vector<double> pCTotal;    ///< pressure that drives the liquid [Pa], with the weight of water
  std::vector<double> RH;         ///< relative humidity [-]
  std::vector<double> pV;         ///< vapour pressure [Pa]
  std::vector<double> rhoCDry;    ///< volumetric heat capacity of the dry material [J/(m3 K)]
  std::vector<double> lambda;     ///< thermal conductivity [W/(m K)]
  std::vector<double> Kv;         ///< vapour conductivity [s]
  std::vector<double> Kirchhoff;  ///< Kirchhoff potential of the liquid [kg/(m s)]
  std::vector<double> Kl;         ///< liquid conductivity [s]
  std::vector<double> Dl;         ///< liquid diffusivity [m2/s]
  std::vector<double> pAir;       ///< gas pressure [Pa]
  // Of a pollutant; empty in runs without.
  std::vector<double> mVOC1;             ///< mass in the pore gas per total volume [kg/m3]
  std::vector<double> mVOC2;             ///< mass bound in the solid per total volume [kg/m3]
  std::vector<double> rhoVOC;            ///< density in the pore gas [kg/m3]
  std::vector<double> pVOC;              ///< partial pressure [Pa]
  std::vector<double> DVOC;              ///< permeability of the material [s]
  std::vector<std::uint8_t> decomposed;  ///< 1 where the values above belong to the conserved quantities

  /// All arrays to the number of elements, 0 but for the gas pressure at its normal value.
  void resize(std::size_t nElements) {
    for (auto* quantity : {&U, &mw, &T, &Theta, &ThetaAir, &rhoVapour, &rhoLiquid, &rhoIce, &pC, &pCTotal,
                           &RH, &pV, &rhoCDry, &lambda, &Kv, &Kirchhoff, &Kl, &Dl})
      quantity->assign(nElements, 0.0);
    pAir.assign(nElements, 101325.0);
    decomposed.assign(nElements, 0);
  }

  /// The arrays of a pollutant to the number of elements, all 0.
  void resizePollutant(std::size_t nElements) {
    for (auto* quantity : {&mVOC1, &mVOC2, &rhoVOC, &pVOC, &DVOC}) quantity->assign(nElements, 0.0);
  }
};

}  // namespace VELMORA_SOLVER

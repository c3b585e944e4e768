#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "airflow/AirFlowLibrary.h"
#include "foundation/PhysicalConstants.h"
#include "material/Material.h"
#include "project/VelBoundaryCond.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {

constexpr double P_NORMAL = 101325.0;  ///< [Pa]
constexpr double G_AIR = 9.807;        ///< [m/s2]

/// A material of this air conductivity [s] and a porosity of 0.5.
inline MM::Material airMaterialOf(double KG, const std::string& flags = "") {
  const TKL::MessageCapture silence;
  MM::Material material;
  material.readASCII("[IDENTIFICATION]\nNAME = en:Fibres\n" +
                         (flags.empty() ? flags : "FLAGS = " + flags + "\n") +
                         "[STORAGE_BASE_PARAMETERS]\nRHO = 50 kg/m3\nCE = 1000 J/kgK\nTHETA_POR = 0.5 m3/m3\n"
                         "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.04 W/mK\nKG = " +
                         std::to_string(KG * 1e9) + "e-9 s\n",
                     false);
  return material;
}

/// A grid of elements 1 m deep with all their sides, at 20 C and normal pressure to begin with.
class AirBench : public ::testing::Test {
 protected:
  void grid(std::vector<double> widths, std::vector<double> heights) {
    dx = std::move(widths);
    dy = std::move(heights);
    nx = static_cast<int>(dx.size());
    ny = static_cast<int>(dy.size());
    elements.resize(dx.size() * dy.size());
    sides.resize(2 * elements.size() + dx.size() + dy.size());
    for (int j = 0; j < ny; ++j)
      for (int i = 0; i < nx; ++i) makeElement(i, j);
    std::size_t s = 0;
    for (int j = 0; j < ny; ++j)
      for (int i = 0; i <= nx; ++i) vertical(sides[s++], i, j);
    for (int j = 0; j <= ny; ++j)
      for (int i = 0; i < nx; ++i) horizontal(sides[s++], i, j);
    for (std::size_t n = 0; n < sides.size(); ++n) sides[n].number = static_cast<int>(n);
    T.assign(elements.size(), 293.15);
    Theta.assign(elements.size(), 0.0);
    pAir.assign(elements.size(), P_NORMAL);
    flow.assign(sides.size(), 0.0);
  }

  Element& at(int i, int j = 0) { return elements[static_cast<std::size_t>(j * nx + i)]; }
  double& temperature(int i, int j = 0) { return T[static_cast<std::size_t>(at(i, j).number)]; }
  double dp(int i, int j = 0) { return pAir[static_cast<std::size_t>(at(i, j).number)] - P_NORMAL; }
  double through(const Side* side) const { return flow[static_cast<std::size_t>(side->number)]; }
  double rho(int i, int j = 0) { return P_NORMAL / (TKL::R_A * temperature(i, j)); }

  void fill(const MM::Material& material) {
    for (Element& element : elements) element.material = &material;
  }

  /// Opens a side to air of this pressure above normal [Pa].
  VelBoundaryCond& open(Side* side, VelBoundaryCond::kind_t kind, double coefficient, double pressure,
                        double celsius = 20.0) {
    VelBoundaryCond& bc = conditions.emplace_back();
    bc.name = "Opening";
    bc.condition = VelBoundaryCond::C_AIRPRESS;
    bc.kind = kind;
    const auto index =
        kind == VelBoundaryCond::K_EXCHANGE ? VelBoundaryCond::P_EXCOEFF : VelBoundaryCond::P_AP_FLOWCOEFF;
    bc.para[index].setBaseValue("COEFFICIENT", coefficient, TKL::Unit());
    bc.climate[VelClimateCond::C_GASPRESS] = climate(P_NORMAL + pressure);
    bc.climate[VelClimateCond::C_TEMPER] = climate(celsius + 273.15);
    side->boundaryConds.push_back(&bc);
    return bc;
  }
  VelBoundaryCond& exchange(Side* side, double coefficient, double pressure) {
    return open(side, VelBoundaryCond::K_EXCHANGE, coefficient, pressure);
  }

  void start(bool buoyancy = false) {
    air.init(0, elements, sides, std::min(nx, ny) == 1 ? 1 : nx, buoyancy);
    air.temperature = &T;
    air.thetaL = &Theta;
  }
  void update(double time = 0.0) { air.calculate(time, pAir, flow); }
  TKL::Thrown failure() {
    return TKL::thrownBy([this] { update(); });
  }

  /// What an element gains in all [kg/s].
  double gain(const Element& e) const {
    return through(e.sideLeft) - through(e.sideRight) + through(e.sideTop) - through(e.sideBottom);
  }
  double largestGain() const {
    double largest = 0.0;
    for (const Element& e : elements) largest = std::max(largest, std::fabs(gain(e)));
    return largest;
  }

  std::vector<double> dx, dy;
  int nx = 0, ny = 0;
  std::vector<Element> elements;
  std::vector<Side> sides;
  std::deque<VelBoundaryCond> conditions;
  std::deque<VelClimateCond> climates;
  std::vector<double> T, Theta, pAir, flow;
  TKL::MessageCapture capture;
  AirFlowLibrary air;

 private:
  const VelClimateCond* climate(double value) {
    climates.emplace_back().currentValue = value;
    return &climates.back();
  }
  void makeElement(int i, int j) {
    Element& e = at(i, j);
    e.i = i;
    e.j = j;
    e.number = j * nx + i;
    e.dx = dx[static_cast<std::size_t>(i)];
    e.dy = dy[static_cast<std::size_t>(j)];
    e.dz = 1.0;
  }
  static void measure(Side& side, double left, double right, double area) {
    side.weightLeft = left / (left + right);
    side.weightRight = right / (left + right);
    side.invDistance = (left > 0.0 && right > 0.0 ? 2.0 : 1.0) / (left + right);
    side.area = area;
  }
  void vertical(Side& side, int i, int j) {
    side.elementLeft = i > 0 ? &at(i - 1, j) : nullptr;
    side.elementRight = i < nx ? &at(i, j) : nullptr;
    if (side.elementLeft != nullptr) side.elementLeft->sideRight = &side;
    if (side.elementRight != nullptr) side.elementRight->sideLeft = &side;
    measure(side, side.elementLeft ? side.elementLeft->dx : 0.0,
            side.elementRight ? side.elementRight->dx : 0.0, dy[static_cast<std::size_t>(j)]);
  }
  void horizontal(Side& side, int i, int j) {
    side.horizontal = true;
    side.elementLeft = j > 0 ? &at(i, j - 1) : nullptr;
    side.elementRight = j < ny ? &at(i, j) : nullptr;
    if (side.elementLeft != nullptr) side.elementLeft->sideBottom = &side;
    if (side.elementRight != nullptr) side.elementRight->sideTop = &side;
    measure(side, side.elementLeft ? side.elementLeft->dy : 0.0,
            side.elementRight ? side.elementRight->dy : 0.0, dx[static_cast<std::size_t>(i)]);
  }
};

}  // namespace VELMORA

// The ice iteration over random states of all shipped materials.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "foundation/Counters.h"
#include "material/ShippedMaterials.h"
#include "solver/IceBalance.h"
#include "solver/PressureBesideIce.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int RANDOM_STATES = 10000;
#else
constexpr int RANDOM_STATES = 100000;
#endif
constexpr double COLDEST = 228.15;  // [K] -45 C
constexpr double ICE_POINT = 273.15;
constexpr double WATER_CAPACITY = 4180.0;
constexpr double CAPACITY_GAIN = 4180.0 - 2108.0;
constexpr double HEAT_CONSTANT = -232417.0;

bool freezes(const MM::Material& material) {
  return material.moistureStorage.kind != MM::MoistureStorage::K_NONE && !material.isAir() &&
         !(material.isVaporTight() && material.isWaterTight());
}

std::vector<MM::Material> freezingMaterials() {
  const TKL::MessageCapture silence;
  std::vector<MM::Material> materials;
  for (const auto& file : MM::shippedFiles()) {
    MM::Material material = MM::shippedMaterial(file);
    if (freezes(material)) materials.push_back(std::move(material));
  }
  return materials;
}

/// Energy [J/m3] that the element holds in equilibrium at T [K].
double equilibriumEnergy(const MM::Material& material, double mw, double T) {
  const double liquid = 1000.0 * material.moistureStorage.Thetal_pl(pressureBesideIce(T), T);
  const double ice = std::max(mw - liquid, 0.0);
  return (mw * WATER_CAPACITY + material.rhoCDry()) * T - ice * (HEAT_CONSTANT + CAPACITY_GAIN * T);
}

struct RandomState {
  double U, mw, start;
};

/// A state between the freezing point and -45 C.
RandomState randomState(const MM::Material& material, std::mt19937& generator) {
  std::uniform_real_distribution<double> part(0.0, 1.0);
  RandomState state{};
  // as many nearly dry states as wet ones
  const double share = part(generator) < 0.5 ? part(generator) : std::pow(10.0, -6.0 * part(generator));
  state.mw = 1000.0 * material.thetaEff() * share;
  const double warm = equilibriumEnergy(material, state.mw, ICE_POINT);
  const double cold = equilibriumEnergy(material, state.mw, COLDEST);
  state.U = warm - (warm - cold) * part(generator);
  state.start = part(generator) < 0.5 ? 0.0 : state.mw * part(generator);
  return state;
}

}  // namespace

TEST(IceProperty, randomStates_satisfyBothBalances) {
  const std::vector<MM::Material> materials = freezingMaterials();
  ASSERT_GE(materials.size(), 8U);
  std::mt19937 generator(68);
  std::vector<std::uint32_t> passes;
  TKL::MessageCapture capture;
  double worstEnergy = 0.0, worstIce = 0.0;
  int frozen = 0;
  for (int i = 0; i < RANDOM_STATES; ++i) {
    const MM::Material& material = materials[static_cast<std::size_t>(i) % materials.size()];
    const RandomState s = randomState(material, generator);
    const double capacity = s.mw * WATER_CAPACITY + material.rhoCDry();
    double T = s.U / capacity;
    if (!(T < ICE_POINT)) continue;
    const IceBalance balance(s.U, s.mw, material.rhoCDry(), material.moistureStorage,
                             IceBalance::risesToSaturation(material.moistureStorage));
    double ice = s.start;
    const std::uint32_t before = TKL::iceIterationCount;
    ASSERT_EQ(balance.solve(0, ice, T), 0) << material.name() << ' ' << s.U << ' ' << s.mw;
    passes.push_back(TKL::iceIterationCount - before);
    const double U = capacity * T - ice * (HEAT_CONSTANT + CAPACITY_GAIN * T);
    worstEnergy = std::max(worstEnergy, std::fabs(U / s.U - 1.0));
    ASSERT_GE(ice, 0.0);
    ASSERT_LE(ice, s.mw);
    if (ice > 0.0) ++frozen;
    // the root of F, which rises, lies within the tolerance
    double off = IceBalance::ICE_TOL;
    while (balance.excess(ice + off) < 0.0 || (ice > off && balance.excess(ice - off) > 0.0)) off *= 1.5;
    worstIce = std::max(worstIce, off);
  }
  std::sort(passes.begin(), passes.end());
  const std::uint32_t median = passes[passes.size() / 2];
  RecordProperty("median passes", static_cast<int>(median));
  RecordProperty("largest number of passes", static_cast<int>(passes.back()));
  RecordProperty("share of frozen states", std::to_string(1.0 * frozen / RANDOM_STATES));
  RecordProperty("largest error of energy", std::to_string(worstEnergy * 1e12) + "e-12");
  RecordProperty("largest error of ice [kg/m3]", std::to_string(worstIce * 1e8) + "e-8");
  EXPECT_GT(passes.size(), RANDOM_STATES * 0.99);
  EXPECT_GT(frozen, RANDOM_STATES / 3);
  EXPECT_LT(worstEnergy, 1e-9);
  EXPECT_LT(worstIce, 1e-6);
  EXPECT_LT(passes.back(), 199U);
  EXPECT_FALSE(capture.contains("No convergence"));
}

// Heat that is taken away freezes water or cools: with C the capacity without ice, r the ice and L(T) the
// heat of freezing, dU = (C - r (c_w - c_ice)) dT - L dr, and neither T nor the water beside the ice may
// jump.
TEST(IceProperty, temperatureAndIce_areContinuousThroughTheFreezingPoint) {
  const std::vector<MM::Material> materials = freezingMaterials();
  constexpr int STEPS = 2000;
  constexpr double LEAST_HEAT = HEAT_CONSTANT + CAPACITY_GAIN * COLDEST;  // [J/kg] of freezing
  constexpr double ROOT = 2e-8;                                           // [kg/m3] error of the ice
  for (const MM::Material& material : materials)
    for (const double share : {0.02, 0.3, 0.8, 0.999, 1.0}) {
      const double mw = 1000.0 * material.thetaEff() * share;
      const double capacity = mw * WATER_CAPACITY + material.rhoCDry();
      const double least = material.rhoCDry() + mw * (WATER_CAPACITY - CAPACITY_GAIN);
      // from a little above the freezing point to where half of the water would be ice, denser near the start
      const double top = capacity * (ICE_POINT + 1e-3);
      const double range = capacity * 1e-3 + 0.5 * mw * 333550.0;
      double lastU = top, lastT = top / capacity, lastIce = 0.0;
      for (int i = 1; i <= STEPS; ++i) {
        const double U = top - range * std::pow(10.0, 8.0 * (1.0 * i / STEPS - 1.0));
        double T = U / capacity;
        double ice = lastIce;
        const IceBalance balance(U, mw, material.rhoCDry(), material.moistureStorage,
                                 IceBalance::risesToSaturation(material.moistureStorage));
        ASSERT_EQ(T < ICE_POINT ? balance.solve(0, ice, T) : 0, 0);
        const double heat = lastU - U;
        const double rounding = ROOT * 333550.0 / least + 1e-11;  // [K]
        ASSERT_GE(lastT - T, -rounding) << material.name() << ' ' << share << ' ' << T;
        ASSERT_LE(lastT - T, heat / least + rounding) << material.name() << ' ' << share << ' ' << T;
        ASSERT_GE(ice - lastIce, -ROOT) << material.name() << ' ' << share << ' ' << T;
        ASSERT_LE(ice - lastIce, heat / LEAST_HEAT + ROOT) << material.name() << ' ' << share << ' ' << T;
        lastU = U;
        lastT = T;
        lastIce = ice;
      }
    }
}

}  // namespace VELMORA_SOLVER

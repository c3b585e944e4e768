// Functions of a material, the look-up in their tables, and the ice in the pores; one cell after the other as
// in a body, each time a little elsewhere.

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "bench/RateCase.h"
#include "foundation/PhysicalConstants.h"
#include "material/Material.h"
#include "solver/IceBalance.h"

namespace {

using MM::Material;

constexpr std::size_t CELLS = 100;
constexpr double T_MEAN = 285.0;  // [K]

Material shippedMaterial(const std::string& name) {
  const VELMORA_BENCH::Silence silence;
  Material material;
  material.read(TKL::Path(VELMORA_BENCH::database() + "/DB_material_data/" + name + ".m6"));
  return material;
}

/// Calls a function for each cell of a body in turn, whose contents lie between dry and `full` [m3/m3].
template <class Function>
void perCell(benchmark::State& state, double full, Function function) {
  std::vector<double> contents(CELLS);
  for (std::size_t i = 0; i < CELLS; ++i) contents[i] = full * (static_cast<double>(i) + 0.5) / CELLS;
  double swing = 1.0;
  for ([[maybe_unused]] const auto& pass : state) {
    swing = swing > 1.0 ? 0.999 : 1.001;
    for (const double content : contents) benchmark::DoNotOptimize(function(content * swing));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(CELLS));
}

void splineLookUp(benchmark::State& state) {
  std::vector<double> x, y;
  for (int i = 0; i < state.range(0); ++i) {
    x.push_back(std::pow(i, 1.5));
    y.push_back(std::sqrt(i));
  }
  TKL::LinearSpline spline;
  spline.setValues(x, y);
  perCell(state, x.back(), [&](double at) { return spline.value(at); });
}
BENCHMARK(splineLookUp)->RangeMultiplier(10)->Range(10, 1000);

void capillaryPressure(benchmark::State& state, const char* name) {
  const Material material = shippedMaterial(name);
  const auto& storage = material.moistureStorage;
  perCell(state, storage.ThetaEff, [&](double Theta) { return storage.pl_Thetal(Theta, T_MEAN, -1e6); });
}
BENCHMARK_CAPTURE(capillaryPressure, spline, "Brick_2001");
BENCHMARK_CAPTURE(capillaryPressure, humidity, "Concrete_2002");

void liquidContent(benchmark::State& state) {
  const Material material = shippedMaterial("Brick_2001");
  constexpr double LOWEST = -1e7;  // [Pa]
  perCell(state, 1.0, [&](double part) { return material.moistureStorage.Thetal_pl(part * LOWEST, T_MEAN); });
}
BENCHMARK(liquidContent);

void liquidConductivity(benchmark::State& state) {
  const Material material = shippedMaterial("Brick_2001");
  const auto& transport = material.moistureTransport[Material::D_U];
  perCell(state, material.moistureStorage.ThetaEff, [&](double Theta) { return transport.Kl(Theta); });
}
BENCHMARK(liquidConductivity);

void liquidDiffusivity(benchmark::State& state) {
  const Material material = shippedMaterial("LimePlaster_2003");
  const auto& transport = material.moistureTransport[Material::D_U];
  perCell(state, material.moistureStorage.ThetaEff, [&](double Theta) { return transport.Dl(Theta); });
}
BENCHMARK(liquidDiffusivity);

void kirchhoffPotential(benchmark::State& state) {
  const Material material = shippedMaterial("Brick_2001");
  const auto& transport = material.moistureTransport[Material::D_U];
  perCell(state, material.moistureStorage.ThetaEff, [&](double Theta) { return transport.Psi.value(Theta); });
}
BENCHMARK(kirchhoffPotential);

void vapourConductivity(benchmark::State& state) {
  const Material material = shippedMaterial("Brick_2001");
  const auto& transport = material.moistureTransport[Material::D_U];
  perCell(state, 1.0, [&](double RH) { return transport.Kv(0.1 * RH, RH); });
}
BENCHMARK(vapourConductivity);

void thermalConductivity(benchmark::State& state) {
  const Material material = shippedMaterial("Brick_2001");
  perCell(state, material.moistureStorage.ThetaEff,
          [&](double Theta) { return material.conductivity(Theta, T_MEAN, 0.0); });
}
BENCHMARK(thermalConductivity);

/// Ice and temperature of a damp brick between -20 C and the freezing point.
void iceDecomposition(benchmark::State& state) {
  const VELMORA_BENCH::Silence silence;
  const Material material = shippedMaterial("Brick_2001");
  const bool rises = VELMORA_SOLVER::IceBalance::risesToSaturation(material.moistureStorage);
  constexpr double MOISTURE = 100.0, COLDEST = 253.15, RANGE = 20.0;  // [kg/m3], [K]
  const double capacity = material.rhoCDry() + MOISTURE * TKL::C_W;
  double rhoIce = 0.0;
  perCell(state, 1.0, [&](double part) {
    double T = COLDEST + RANGE * part;
    // between all liquid and all frozen at this temperature
    const double U = capacity * T - 0.5 * MOISTURE * 333500.0;
    VELMORA_SOLVER::IceBalance(U, MOISTURE, material.rhoCDry(), material.moistureStorage, rises)
        .solve(0, rhoIce, T);
    return T + rhoIce;
  });
}
BENCHMARK(iceDecomposition);

}  // namespace

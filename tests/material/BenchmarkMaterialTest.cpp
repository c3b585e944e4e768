#include <cmath>

#include "material/MaterialTestSupport.h"
#include "material/ShippedMaterials.h"

// The tables of the benchmark materials against the closed formulas of EN 15026:2007, Annex A, and of
// C.-E. Hagentoft, HAMSTAD WP2 modeling, report R-02:8, Chalmers University of Technology, 2002.

namespace MM {

namespace {

constexpr std::size_t BENCH_POINTS = 10000;
constexpr double RHO_WATER = 1000.0;          // [kg/m3]
constexpr double R_BENCH = 8.314 / 0.018;     // [J/kgK] with the constants of the benchmarks
constexpr double D_BENCH = 26.1e-6;           // [m2/s]
constexpr double HEAD = 9810.0;               // [Pa/m]
constexpr double NEAR_SATURATION = 160.0;     // [Pa] the formulas hold for drier states
constexpr double STORAGE_TOLERANCE = 1.1e-5;  // of the saturation content
constexpr double K_TOLERANCE = 1.2e-3;
constexpr double KV_TOLERANCE = 6e-4;
constexpr double KV_WET_TOLERANCE = 6e-3;  // with less than 1 % of the pores free of water

struct BenchMode {
  double k, a, n, m;
};

double retention(double wSat, const std::vector<BenchMode>& modes, double p) {
  double sum = 0.0;
  for (const BenchMode& mode : modes) sum += mode.k * std::pow(1.0 + std::pow(mode.a * p, mode.n), -mode.m);
  return wSat * sum;
}

/// The modes of benchmark 5: over suction heads, m = 1 - 1/n.
BenchMode headMode(double k, double aPerMetre, double n) {
  return {k, aPerMetre / HEAD, n, 1.0 - 1.0 / n};
}

double permeability(double mu, double p, double T, double share) {
  const double free = 1.0 - share;
  return D_BENCH / (R_BENCH * T * mu) * free / ((1.0 - p) * free * free + p);
}

/// ln of the liquid conductivity of EN 15026, s: content less a reference [kg/m3].
double lnQuintic(double first, double s) {
  return first + 0.0704 * s - 1.742e-4 * s * s - 2.7953e-6 * std::pow(s, 3) - 1.1566e-7 * std::pow(s, 4) +
         2.5969e-9 * std::pow(s, 5);
}

double lnPolynomial(const std::vector<double>& coefficients, double w) {
  double value = 0.0;
  for (auto c = coefficients.rbegin(); c != coefficients.rend(); ++c) value = value * w / 1000.0 + *c;
  return value;
}

struct BenchMaterial {
  explicit BenchMaterial(const char* name) : material(shippedMaterial(shippedFolder() / name)) {}

  double w(double p) const { return RHO_WATER * material.moistureStorage.Thetal_pl(-p, 293.15); }
  double K(double content) const { return transport().Kl(content / RHO_WATER); }
  double Kv(double content) const { return transport().Kv(content / RHO_WATER, 0.5); }
  double lambda(double content) const { return material.conductivity(content / RHO_WATER, 293.15, 0.0); }
  const MoistureTransport& transport() const { return material.moistureTransport[Material::D_U]; }

  TKL::MessageCapture quiet;
  Material material;
};

void expectRetention(const BenchMaterial& bench, double wSat, const Curve& formula, double driest = 1e10) {
  EXPECT_DOUBLE_EQ(bench.material.thetaEff(), wSat / RHO_WATER);
  EXPECT_LT(
      largestError(
          logSpaced(NEAR_SATURATION, driest, BENCH_POINTS), [&](double p) { return bench.w(p); }, formula),
      STORAGE_TOLERANCE * wSat);
  // The polynomial below 100 Pa and its joint with the curve up to 160 Pa.
  EXPECT_LT(largestError(
                logSpaced(1.0, NEAR_SATURATION, BENCH_POINTS), [&](double p) { return bench.w(p); }, formula),
            1e-4 * wSat);
}

void expectLiquid(const BenchMaterial& bench, double wEnd, double tolerance, const Curve& lnK) {
  EXPECT_LT(largestRelativeError(
                evenlySpaced(0.0, wEnd, BENCH_POINTS), [&](double w) { return bench.K(w); },
                [&](double w) { return std::exp(lnK(w)); }),
            tolerance);
}

void expectVapour(const BenchMaterial& bench, double wSat, double mu, double p, double T) {
  const auto table = [&](double w) { return bench.Kv(w); };
  const auto formula = [&](double w) { return permeability(mu, p, T, w / wSat); };
  EXPECT_LT(largestRelativeError(evenlySpaced(0.0, 0.99 * wSat, BENCH_POINTS), table, formula), KV_TOLERANCE);
  EXPECT_LT(
      largestRelativeError(evenlySpaced(0.99 * wSat, (1.0 - 2e-6) * wSat, BENCH_POINTS), table, formula),
      KV_WET_TOLERANCE);
}

void expectHeat(const BenchMaterial& bench, double wSat, double capacity, double dry, double slope) {
  EXPECT_NEAR(bench.material.rhoCDry(), capacity, 1e-9 * capacity);
  EXPECT_LT(largestRelativeError(
                evenlySpaced(0.0, wSat, BENCH_POINTS), [&](double w) { return bench.lambda(w); },
                [&](double w) { return dry + slope * w; }),
            1e-12);
}

}  // namespace

TEST(BenchmarkMaterial, en15026) {
  const BenchMaterial bench("EN15026_3001.m6");
  // over the relative humidity, which is 1e-4 at 1.24e9 Pa
  expectRetention(
      bench, 146, [](double p) { return 146 / std::pow(1 + std::pow(8e-8 * p, 1.6), 0.375); }, 1.24e9);
  expectLiquid(bench, 146, K_TOLERANCE, [](double w) { return lnQuintic(-39.2619, w - 73); });
  expectVapour(bench, 146, 200, 0.497, 303.15);
  expectHeat(bench, 146, 1.824e6, 1.5, 15.8e-3);
}

// The states of the benchmark, as its report prints them: 50 % and 95 % at 20 C.
TEST(BenchmarkMaterial, en15026_statesOfTheBenchmark) {
  const BenchMaterial bench("EN15026_3001.m6");
  const double kelvin = RHO_WATER * R_BENCH * 293.15;
  EXPECT_NEAR(bench.w(-kelvin * std::log(0.5)), 42.9222, 0.003);
  EXPECT_NEAR(bench.w(-kelvin * std::log(0.95)), 129.0212, 0.003);
  const double muDry = D_BENCH / (R_BENCH * 303.15) / bench.Kv(42.9222);
  EXPECT_NEAR(muDry, 212, 0.5);
  const double muWet = D_BENCH / (R_BENCH * 303.15) / bench.Kv(129.0212);
  EXPECT_NEAR(muWet, 866, 1.5);
}

TEST(BenchmarkMaterial, hamstad2) {
  const BenchMaterial bench("HamstadDrying_3002.m6");
  expectRetention(bench, 116, [](double p) {
    const double lnPhi = -p / (RHO_WATER * R_BENCH * 293.15);
    return 116 / std::pow(1 - lnPhi / 0.118, 0.869);
  });
  EXPECT_EQ(bench.transport().liquidKind, MoistureTransport::L_DL);
  for (const double w : {0.0, 50.0, 116.0}) {
    EXPECT_NEAR(bench.transport().Dl(w / RHO_WATER), 6e-10, 1e-22);
    EXPECT_NEAR(bench.Kv(w), 1e-15, 1e-27);
    // A constant diffusivity makes the potential a straight line.
    EXPECT_NEAR(bench.transport().Psi.value(w / RHO_WATER), 6e-10 * w, 1e-18);
  }
  expectHeat(bench, 116, 525.0 * 800.0, 0.15, 0.0);
}

TEST(BenchmarkMaterial, hamstad4_loadBearing) {
  const BenchMaterial bench("HamstadLoadBearing_3003.m6");
  expectRetention(bench, 157, [](double p) {
    return retention(157, {{0.3, 1.25e-5, 1.65, 0.39394}, {0.7, 1.8e-5, 6, 0.83333}}, p);
  });
  expectVapour(bench, 157, 30, 0.497, 293.15);
  expectHeat(bench, 157, 2005.0 * 840.0, 0.5, 4.5e-3);
}

// Points of the benchmark's table of the conductivity, log10 of suction and of conductivity, and the middle
// of two of them.
TEST(BenchmarkMaterial, hamstad4_loadBearing_conductivityOverSuction) {
  const BenchMaterial bench("HamstadLoadBearing_3003.m6");
  const std::vector<std::pair<double, double>> points = {{7.48184696, -16.02314218},
                                                         {6.52184696, -13.83399581},
                                                         {5.56184696, -12.26136355},
                                                         {4.84184696, -11.13719525},
                                                         {4.78184696, (-11.13719525 - 10.14654938) / 2},
                                                         {4.72184696, -10.14654938},
                                                         {4.24184696, -8.7214439},
                                                         {3.0, -8.71974955}};
  for (const auto& [lgP, lgK] : points)
    EXPECT_NEAR(std::log10(bench.K(bench.w(std::pow(10.0, lgP)))), lgK, 1e-6) << lgP;
}

// The benchmark's table falls towards wetter states here, always below 1e-27 s.
TEST(BenchmarkMaterial, hamstad4_loadBearing_dryMaterialConductsNoLiquid) {
  const BenchMaterial bench("HamstadLoadBearing_3003.m6");
  for (const double p : logSpaced(std::pow(10.0, 7.602), 1e12, 1000)) EXPECT_LT(bench.K(bench.w(p)), 1e-27);
}

TEST(BenchmarkMaterial, hamstad4_finishing) {
  const BenchMaterial bench("HamstadFinishing_3004.m6");
  expectRetention(bench, 209, [](double p) { return retention(209, {{1, 2e-6, 1.27, 0.2126}}, p); });
  expectLiquid(bench, 209, K_TOLERANCE, [](double w) { return lnQuintic(-33, w - 120); });
  expectVapour(bench, 209, 3, 0.497, 293.15);
  expectHeat(bench, 209, 790.0 * 870.0, 0.2, 4.5e-3);
}

TEST(BenchmarkMaterial, hamstad5_brick) {
  const BenchMaterial bench("HamstadBrick_3005.m6");
  expectRetention(bench, 373.5, [](double p) {
    return retention(373.5, {headMode(0.46, 0.47, 1.5), headMode(0.54, 0.2, 3.8)}, p);
  });
  const auto lnK = [](double w) {
    return lnPolynomial({-36.484, 461.325, -5240, 2.907e4, -7.41e4, 6.997e4}, w);
  };
  expectLiquid(bench, 265, K_TOLERANCE, lnK);
  expectLiquid(bench, 373.5, 0.09, lnK);  // where the formula falls, a rising curve stands in for it
  expectVapour(bench, 373.5, 7.5, 0.2, 278.15);
  expectHeat(bench, 373.5, 1.6e6, 0.682, 0.0);
}

TEST(BenchmarkMaterial, hamstad5_mortar) {
  const BenchMaterial bench("HamstadMortar_3006.m6");
  expectRetention(bench, 700, [](double p) {
    return retention(700, {headMode(0.2, 0.5, 1.5), headMode(0.8, 0.004, 3.8)}, p);
  });
  expectLiquid(bench, 700, K_TOLERANCE, [](double w) {
    return lnPolynomial({-40.425, 83.319, -175.961, 123.863}, w);
  });
  expectVapour(bench, 700, 50, 0.2, 283.15);
  expectHeat(bench, 700, 230.0 * 920.0, 0.6, 0.56e-3);
}

TEST(BenchmarkMaterial, hamstad5_insulation) {
  const BenchMaterial bench("HamstadInsulation_3007.m6");
  expectRetention(bench, 871, [](double p) {
    return retention(871, {headMode(0.41, 0.006, 2.5), headMode(0.59, 0.012, 2.4)}, p);
  });
  const auto lnK = [](double w) { return lnPolynomial({-46.245, 294.506, -1439, 3249, -3370, 1305}, w); };
  expectLiquid(bench, 195, K_TOLERANCE, lnK);
  expectLiquid(bench, 871, 0.14, lnK);  // where the formula falls, a rising curve stands in for it
  expectVapour(bench, 871, 5.6, 0.2, 288.15);
  expectHeat(bench, 871, 212.0 * 1000.0, 0.06, 0.56e-3);
}

}  // namespace MM

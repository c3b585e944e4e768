#include <cmath>
#include <limits>

#include "foundation/PhysicalConstants.h"
#include "material/MaterialTestSupport.h"
#include "material/ShippedMaterials.h"

// What must hold for every shipped material with moisture functions, in 10,000 points each.

namespace MM {

namespace {

constexpr std::size_t POINTS = 10000;
constexpr double T_20 = 293.15;                             // [K]
constexpr double P_TABLE = 100.01;                          // [Pa] wettest suction that a table serves
constexpr double P_DRY = 1e10;                              // [Pa]
constexpr double KELVIN_20 = TKL::RHO_W * TKL::R_V * T_20;  // [Pa]
const double P_DRY_OVER_RH = -KELVIN_20 * std::log(1e-9);   // the inverse over humidity ends at 1e-10

bool storesMoisture(const Material& material) {
  return material.moistureStorage.kind != MoistureStorage::K_NONE;
}

/// Calls `check` with each shipped material that stores moisture.
template <typename Check>
void forEachMoist(const Check& check) {
  std::size_t count = 0;
  for (const auto& file : shippedFiles()) {
    const TKL::MessageCapture quiet;
    const Material material = shippedMaterial(file);
    if (!storesMoisture(material)) continue;
    ++count;
    SCOPED_TRACE(file.filename().string());
    check(material);
  }
  EXPECT_GE(count, 16U);
}

double driestSuction(const MoistureStorage& storage) {
  return storage.kind == MoistureStorage::K_RH ? P_DRY_OVER_RH : P_DRY;
}

/// Theta over suction.
Curve contentOf(const MoistureStorage& storage) {
  return [&storage](double p) { return storage.Thetal_pl(-p, T_20); };
}

/// Suction of the content at suction `p`, from a guess.
double suctionAgain(const MoistureStorage& storage, double p, double guess) {
  return -storage.pl_Thetal(storage.Thetal_pl(-p, T_20), T_20, -guess);
}

/// The curve alone, so that its inversion has to iterate.
MoistureStorage withoutInverse(const MoistureStorage& storage) {
  MoistureStorage alone = storage;
  alone.functions[MoistureStorage::F_pC_Theta_de].clear();
  return alone;
}

/// Suctions at which the pores are not full within 1e-7.
std::vector<double> resolvedSuctions(const MoistureStorage& storage) {
  constexpr double RESOLVED = 1e-7;
  std::vector<double> xs = logSpaced(P_TABLE, P_DRY, POINTS);
  std::erase_if(xs, [&](double p) { return storage.ThetaEff - storage.Thetal_pl(-p, T_20) < RESOLVED; });
  return xs;
}

double same(double x) {
  return x;
}

}  // namespace

TEST(ShippedMoisture, folderHasAllMaterials) {
  EXPECT_EQ(shippedFiles().size(), 18U);
}

TEST(ShippedMoisture, onlyAirAndSteelStoreNone) {
  for (const auto& file : shippedFiles()) {
    const TKL::MessageCapture quiet;
    const Material material = shippedMaterial(file);
    const bool dry = material.isAir() || (material.isVaporTight() && material.isWaterTight());
    EXPECT_NE(storesMoisture(material), dry) << file;
  }
}

TEST(ShippedMoisture, everyCapillaryMaterial_conductsLiquidAndVapour) {
  forEachMoist([](const Material& material) {
    EXPECT_EQ(material.can(Material::TC_LIQUID), !material.isWaterTight());
    EXPECT_TRUE(material.can(Material::TC_VAPOUR));
  });
}

TEST(ShippedMoisture, overHumidity_suctionComesBackWithoutGuess) {
  std::size_t count = 0;
  forEachMoist([&](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    if (storage.kind != MoistureStorage::K_RH) return;
    ++count;
    const auto xs = logSpaced(P_TABLE, driestSuction(storage), POINTS);
    EXPECT_LT(largestReturnError(xs, same, [&](double p) { return suctionAgain(storage, p, 1.0); }), 1e-6);
  });
  EXPECT_GE(count, 4U);
}

// The guess of a calculation is the state before, not far off. The iteration ends at 1e-10 of log10 of the
// suction; where the pores are full but for less than 1e-7, numbers do not resolve that.
TEST(ShippedMoisture, byIteration_suctionComesBack) {
  std::size_t count = 0;
  forEachMoist([&](const Material& material) {
    if (material.moistureStorage.kind != MoistureStorage::K_SPLINE) return;
    ++count;
    const MoistureStorage storage = withoutInverse(material.moistureStorage);
    const auto xs = resolvedSuctions(storage);
    for (const double guess : {0.9, 0.99, 1.01, 1.1}) {
      const TKL::MessageCapture capture;
      EXPECT_LT(largestReturnError(xs, same, [&](double p) { return suctionAgain(storage, p, guess * p); }),
                1e-6);
      EXPECT_TRUE(capture.messages.empty());
    }
  });
  EXPECT_GE(count, 9U);
}

// From a guess far off the iteration may miss at a kink of the table. It tells so: no wrong value goes
// unseen.
TEST(ShippedMoisture, byIteration_farGuess_isRightOrWarnedOf) {
  forEachMoist([&](const Material& material) {
    if (material.moistureStorage.kind != MoistureStorage::K_SPLINE) return;
    const MoistureStorage storage = withoutInverse(material.moistureStorage);
    std::size_t unseen = 0;
    for (const double p : resolvedSuctions(storage)) {
      for (const double guess : {0.1, 10.0}) {
        const TKL::MessageCapture capture;
        const double error = std::fabs(suctionAgain(storage, p, guess * p) / p - 1.0);
        if (!(error < 1e-6) && capture.messages.empty()) ++unseen;
      }
    }
    EXPECT_EQ(unseen, 0U);
  });
}

// The tolerance is that of the consistency check at reading: 0.001 of log10 of the suction.
TEST(ShippedMoisture, withOwnInverse_suctionComesBackWithinTheCheckedConsistency) {
  constexpr double CONSISTENCY = 0.001;
  std::size_t count = 0;
  forEachMoist([&](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    if (storage.functions[MoistureStorage::F_pC_Theta_de].empty()) return;
    ++count;
    const auto xs = logSpaced(P_TABLE, P_DRY, POINTS);
    const auto lgAgain = [&](double p) { return std::log10(suctionAgain(storage, p, 1.0)); };
    EXPECT_LE(largestError(xs, lgAgain, [](double p) { return std::log10(p); }), CONSISTENCY);
  });
  EXPECT_GE(count, 9U);
}

TEST(ShippedMoisture, contentFallsWithSuction) {
  forEachMoist([](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    const auto xs = logSpaced(1.0, driestSuction(storage), POINTS);
    EXPECT_EQ(stepsNotFalling(xs, contentOf(storage)), 0U);
  });
}

TEST(ShippedMoisture, contentRisesAboveSaturation) {
  forEachMoist([](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    EXPECT_EQ(
        stepsNotFalling(logSpaced(1e6, 1e-3, POINTS), [&](double p) { return storage.Thetal_pl(p, T_20); }),
        0U);
    EXPECT_GT(storage.Thetal_pl(1e-3, T_20), storage.ThetaEff);
  });
}

// The polynomial from 100 Pa to saturation joins the curve and the saturation but for a fit error.
TEST(ShippedMoisture, curveHasNoStepNearSaturation) {
  forEachMoist([](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    const double wet = storage.Thetal_pl(-99.999, T_20), dry = storage.Thetal_pl(-100.001, T_20);
    EXPECT_NEAR(wet, dry, 1e-5 * storage.ThetaEff);
    EXPECT_NEAR(storage.Thetal_pl(-1e-6, T_20), storage.ThetaEff, 1e-5 * storage.ThetaEff);
  });
}

TEST(ShippedMoisture, potentialRisesWithContent) {
  forEachMoist([](const Material& material) {
    const MoistureTransport& transport = material.moistureTransport[Material::D_U];
    if (transport.liquidKind == MoistureTransport::L_NONE) return;
    const auto xs = evenlySpaced(transport.Psi.x.back(), transport.Psi.x.front(), POINTS);
    EXPECT_EQ(stepsNotFalling(xs, [&](double theta) { return transport.Psi.value(theta); }), 0U);
  });
}

// The potential is tabulated over suction in steps of 0.01 of its logarithm; the quotients span five of them,
// so that the ends, which lie between points of the table, count for 3 % at most.
TEST(ShippedMoisture, byKl_quotientOfThePotentialOverPressureIsTheConductivity) {
  const double ratio = std::pow(10.0, 0.05);
  std::size_t count = 0;
  forEachMoist([&](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    const MoistureTransport& transport = material.moistureTransport[Material::D_U];
    if (transport.liquidKind != MoistureTransport::L_KL) return;
    ++count;
    const Curve content = contentOf(storage);
    const auto xs = logSpaced(P_TABLE * ratio, P_DRY / (ratio * ratio), POINTS);
    const double error = largestQuotientError(
        xs, [&](double p) { return p * ratio; }, [&](double p) { return p / ratio; },
        [&](double p) { return -transport.Psi.value(content(p)); },
        [&](double p) { return transport.Kl(content(p)); });
    EXPECT_LT(error, 0.03);
  });
  EXPECT_GE(count, 7U);
}

// The steps are those of the table of the diffusivity, so no margin is needed but for rounding.
TEST(ShippedMoisture, byDl_quotientOfThePotentialIsTheDiffusivityTimesTheDensityOfWater) {
  std::size_t count = 0;
  forEachMoist([&](const Material& material) {
    const MoistureTransport& transport = material.moistureTransport[Material::D_U];
    if (transport.liquidKind != MoistureTransport::L_DL) return;
    ++count;
    const double end = material.thetaEff();
    const double step = end / 100.0;
    const double error = largestQuotientError(
        evenlySpaced(step, end - 2.0 * step, POINTS), [&](double x) { return x + step; },
        [&](double x) { return x - step; }, [&](double x) { return transport.Psi.value(x); },
        [&](double x) { return TKL::RHO_W * transport.Dl(x); });
    EXPECT_LT(error, 1e-9);
  });
  EXPECT_GE(count, 5U);
}

TEST(ShippedMoisture, conductivitiesArePositive) {
  forEachMoist([](const Material& material) {
    const MoistureTransport& transport = material.moistureTransport[Material::D_U];
    const auto contents = evenlySpaced(0.0, material.thetaEff(), POINTS);
    EXPECT_EQ(
        pointsNotPositive(contents, [&](double theta) { return material.conductivity(theta, T_20, 0.0); }),
        0U);
    for (const double RH : {0.0, 0.5, 1.0})
      EXPECT_EQ(pointsNotPositive(contents, [&](double theta) { return transport.Kv(theta, RH); }), 0U);
    if (transport.liquidKind == MoistureTransport::L_KL) {
      EXPECT_EQ(pointsNotPositive(contents, [&](double theta) { return transport.Kl(theta); }), 0U);
    }
    if (transport.liquidKind == MoistureTransport::L_DL) {
      EXPECT_EQ(pointsNotPositive(contents, [&](double theta) { return transport.Dl(theta); }), 0U);
    }
  });
}

TEST(ShippedMoisture, vapourConductivity_isPositiveOverTheWholeRangeOfHumidity) {
  forEachMoist([](const Material& material) {
    const MoistureTransport& transport = material.moistureTransport[Material::D_U];
    for (const double share : {0.0, 0.5, 1.0})
      EXPECT_EQ(pointsNotPositive(evenlySpaced(0.0, 1.0, POINTS),
                                  [&](double RH) { return transport.Kv(share * material.thetaEff(), RH); }),
                0U);
  });
}

TEST(ShippedMoisture, endsOfTheRanges_giveNumbers) {
  constexpr double SMALLEST = std::numeric_limits<double>::min();
  forEachMoist([](const Material& material) {
    const MoistureStorage& storage = material.moistureStorage;
    const MoistureTransport& transport = material.moistureTransport[Material::D_U];
    for (const double pl : {-1e14, -1e12, -100.0, -1.0, -SMALLEST, 0.0, SMALLEST, 1.0, 1e7})
      EXPECT_TRUE(std::isfinite(storage.Thetal_pl(pl, T_20))) << pl;
    const double end = storage.ThetaEff;
    for (const double theta : {0.0, SMALLEST, std::nextafter(end, 0.0), end, std::nextafter(end, 1.0), 1.0}) {
      for (const double guess : {-1e14, -1e5, 0.0, 1e5})
        EXPECT_TRUE(std::isfinite(storage.pl_Thetal(theta, T_20, guess))) << theta << ' ' << guess;
      EXPECT_TRUE(std::isfinite(material.conductivity(theta, T_20, 0.0))) << theta;
      for (const double RH : {0.0, 1.0}) EXPECT_TRUE(std::isfinite(transport.Kv(theta, RH))) << theta;
      if (transport.liquidKind != MoistureTransport::L_NONE) {
        EXPECT_TRUE(std::isfinite(transport.Psi.value(theta))) << theta;
      }
    }
  });
}

// The helpers report a fault that is there.

TEST(ShippedMoistureHelpers, inverseThatIsOff_isFound) {
  const auto xs = logSpaced(1.0, 1e6, 100);
  EXPECT_NEAR(largestReturnError(xs, same, [](double x) { return x > 5e5 ? x * 1.001 : x; }), 0.001, 1e-12);
  EXPECT_EQ(largestReturnError(xs, same, [](double) { return std::nan(""); }), HUGE_VAL);
  EXPECT_EQ(largestReturnError(xs, same, same), 0.0);
}

TEST(ShippedMoistureHelpers, stepThatDoesNotFall_isCounted) {
  EXPECT_EQ(stepsNotFalling({1, 2, 3, 4}, [](double x) { return -std::min(x, 3.0); }), 1U);
  EXPECT_EQ(stepsNotFalling({1, 2}, [](double) { return std::nan(""); }), 1U);
  EXPECT_EQ(stepsNotFalling({1, 2, 3, 4}, [](double x) { return -x; }), 0U);
}

TEST(ShippedMoistureHelpers, valueNotAboveZero_isCounted) {
  EXPECT_EQ(pointsNotPositive({-1, 0, 1}, [](double x) { return x; }), 2U);
  EXPECT_EQ(pointsNotPositive({1, 2}, [](double) { return std::nan(""); }), 2U);
  EXPECT_EQ(pointsNotPositive({1, 2}, [](double) { return HUGE_VAL; }), 2U);
}

TEST(ShippedMoistureHelpers, wrongIntegral_isFound) {
  const auto next = [](double x) { return x + 0.01; };
  const auto previous = [](double x) { return x - 0.01; };
  const auto integrand = [](double x) { return 2.0 * x; };
  const auto xs = evenlySpaced(1.0, 2.0, 100);
  EXPECT_EQ(largestQuotientError(
                xs, next, previous, [](double x) { return x * x; }, integrand),
            0.0);
  EXPECT_GT(largestQuotientError(
                xs, next, previous, [](double x) { return 1.05 * x * x; }, integrand),
            0.03);
  EXPECT_GT(largestQuotientError(
                xs, next, previous, [](double x) { return 0.95 * x * x; }, integrand),
            0.03);
}

TEST(ShippedMoistureHelpers, curveThatIsOff_isMeasured) {
  const auto xs = evenlySpaced(1.0, 2.0, 11);
  EXPECT_NEAR(largestError(
                  xs, [](double x) { return x + 0.25; }, same),
              0.25, 1e-15);
  EXPECT_NEAR(largestRelativeError(
                  xs, [](double x) { return 1.25 * x; }, same),
              0.25, 1e-15);
  EXPECT_EQ(largestError(
                xs, [](double) { return std::nan(""); }, same),
            HUGE_VAL);
  EXPECT_EQ(largestRelativeError(
                xs, [](double) { return std::nan(""); }, same),
            HUGE_VAL);
}

}  // namespace MM

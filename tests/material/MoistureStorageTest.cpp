#include <cmath>

#include "foundation/Counters.h"
#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

const std::string CURVE = "FUNCTION = Theta_l(pC)_de\n0 2 4 6 12\n0.3 0.29 0.2 0.05 0\n";
const std::string INVERSE = "FUNCTION = pC(Theta_l)_de\n0 0.05 0.2 0.29 0.3\n12 6 4 2 0\n";

/// A prepared curve of a material with THETA_EFF = 0.3.
MoistureStorage prepared(const std::string& section,
                         const std::vector<std::string>& parameterLines = {"THETA_EFF = 0.3 m3/m3"}) {
  Material material;
  for (const std::string& line : parameterLines) material.readASCIIParameterFromLine(line);
  MoistureStorage storage;
  storage.read(section);
  storage.prepareCalculation(material);
  return storage;
}

bool warned(const TKL::MessageCapture& capture, const std::string& text) {
  return capture.has(text, TKL::MSG_WARNING, "[MoistureStorage::checkLimits]", 2);
}

}  // namespace

TEST(MoistureStorage, withoutCurve_raisesWhenAsked) {
  const MoistureStorage storage;
  EXPECT_TRUE(has(thrown([&] { storage.Thetal_pl(0.0, 293.15); }),
                  "Unsupported type of moisture storage function or missing initialisation.",
                  "[MoistureStorage::Thetal_pl]"));
  EXPECT_TRUE(has(thrown([&] { storage.pl_Thetal(0.1, 293.15, -1e5); }),
                  "Unsupported type of moisture storage function or missing initialization.",
                  "[MoistureStorage::pl_Thetal]"));
}

TEST(MoistureStorage, withoutThetaEff_endsQuietlyWithoutCurve) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(prepared(CURVE, {}).kind, MoistureStorage::K_NONE);
  EXPECT_TRUE(capture.has("Initializing moisture storage functions.\n", TKL::MSG_STANDARD,
                          "[MoistureStorage::prepareCalculation]", 3));
  EXPECT_TRUE(capture.has("Parameter THETA_EFF missing for moisture storage models.", TKL::MSG_WARNING,
                          "[MoistureStorage::prepareCalculation]", 2));
}

TEST(MoistureStorage, air_hasNoCurve) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE, {"THETA_EFF = 0.3 m3/m3", "FLAGS = AIR"});
  EXPECT_EQ(storage.kind, MoistureStorage::K_NONE);
  EXPECT_TRUE(storage.isAir);
  EXPECT_DOUBLE_EQ(storage.slopeOverSaturation, 1e-07);
}

TEST(MoistureStorage, table_isAskedAtTheLogarithmOfThePressure) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  EXPECT_EQ(storage.kind, MoistureStorage::K_SPLINE);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(-1e4, 293.15), 0.2);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(-1e6, 250.0), 0.05);
}

TEST(MoistureStorage, zeroPressure_isExactlyThetaEff) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(prepared(CURVE).Thetal_pl(0.0, 293.15), 0.3);
  EXPECT_EQ(prepared("FUNCTION = Theta_l(RH)\n0 1\n0 0.25\n").Thetal_pl(0.0, 293.15), 0.3);
}

TEST(MoistureStorage, overSaturation_isLinear) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(1e5, 293.15), 0.31);
  EXPECT_NEAR(storage.pl_Thetal(0.3 + 1e-09, 293.15, -1.0), 0.01, 1e-8);
  EXPECT_EQ(storage.pl_Thetal(0.3, 293.15, -1.0), 0.0);
}

TEST(MoistureStorage, tableAndPolynomial_meetAtMinus100Pa) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  EXPECT_NEAR(storage.Thetal_pl(-100.0 - 1e-9, 293.15), 0.29, 1e-12);
  EXPECT_NEAR(storage.Thetal_pl(-100.0, 293.15), 0.29, 1e-12);
  EXPECT_NEAR(storage.Thetal_pl(-100.0 + 1e-9, 293.15), 0.29, 1e-12);
}

TEST(MoistureStorage, polynomial_hasTheSlopeOfTheTable) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  // central difference of the table over log10(pC) around 100 Pa: 0.005 below, 0.045 above, a decade
  const double slope =
      (0.29 - 0.045 * (std::log10(105.9) - 2.0) - (0.29 - 0.005 * (std::log10(94.406) - 2.0))) / -11.494;
  const double h = 1e-3;
  EXPECT_NEAR((storage.Thetal_pl(-100.0 + h, 293.15) - storage.Thetal_pl(-100.0, 293.15)) / h, slope, 1e-7);
}

TEST(MoistureStorage, polynomialWithTurningPoint_givesWayToAParabola) {
  const TKL::MessageCapture capture;
  // 0.28 m3/m3 at 100 Pa, where the table falls by 0.115 m3/m3 a decade
  const MoistureStorage turning =
      prepared("FUNCTION = Theta_l(pC)_de\n0 1.9 2.1 6 12\n0.3 0.2915 0.2685 0.05 0\n");
  EXPECT_FALSE(turning.nearSaturationFit.useCubic);
  EXPECT_NEAR(turning.Thetal_pl(-1.0, 293.15), 0.3, 1e-12);
  EXPECT_NEAR(turning.Thetal_pl(-100.0, 293.15), 0.28, 1e-12);
}

TEST(NearSaturationFit, flag_choosesThePolynomial) {
  NearSaturationFit fit{1, 2, 3, 4, 10, 20, 30, true};
  EXPECT_DOUBLE_EQ(fit.value(2.0), 1 + 4 + 12 + 32);
  fit.useCubic = false;
  EXPECT_DOUBLE_EQ(fit.value(2.0), 10 + 40 + 120);
  EXPECT_DOUBLE_EQ(NearSaturationFit().value(5.0), 0.0);
}

TEST(MoistureStorage, dryEnd_isMovedTo12) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage =
      prepared("FUNCTION = Theta_l(pC)_de\n0 4 9\n0.3 0.2 0\nFUNCTION = pC(Theta_l)_de\n0 0.2 0.3\n9 4 0\n");
  EXPECT_DOUBLE_EQ(storage.functions[MoistureStorage::F_Theta_pC_de].x.back(), 12.0);
  EXPECT_DOUBLE_EQ(storage.functions[MoistureStorage::F_pC_Theta_de].y.front(), 12.0);
  EXPECT_NEAR(storage.pl_Thetal(0.0, 293.15, -1e5), -1e12, 1e-14 * 1e12);
}

TEST(MoistureStorage, endThatIsNotDry_staysWhereItIs) {
  const TKL::MessageCapture capture;
  EXPECT_DOUBLE_EQ(prepared("FUNCTION = Theta_l(pC)_de\n0 9\n0.3 0.01\n")
                       .functions[MoistureStorage::F_Theta_pC_de]
                       .x.back(),
                   9.0);
}

TEST(MoistureStorage, inverseTable_isUsedWhereItIsGiven) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE + INVERSE);
  const int before = TKL::mrcIterationCount;
  EXPECT_NEAR(storage.pl_Thetal(0.2, 293.15, -1e3), -1e4, 1e-8);
  EXPECT_EQ(TKL::mrcIterationCount, before);
}

TEST(MoistureStorage, iteration_invertsTheTable) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  const int before = TKL::mrcIterationCount;
  for (const double theta : {0.01, 0.05, 0.11, 0.2, 0.25, 0.289})
    EXPECT_NEAR(storage.functions[0].value(std::log10(-storage.pl_Thetal(theta, 293.15, -1e4))), theta, 1e-9);
  EXPECT_GT(TKL::mrcIterationCount, before);
}

TEST(MoistureStorage, iterationOfADryMaterial_is14) {
  const MoistureStorage storage;
  for (const double guess : {-3.0, 0.0, 20.0}) EXPECT_EQ(storage.pC_Thetal_iterative(0.0, guess), 14.0);
}

TEST(MoistureStorage, guessAboveMinus1_countsAsMinus1) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  EXPECT_EQ(storage.pl_Thetal(0.25, 293.15, -0.5), storage.pl_Thetal(0.25, 293.15, -1.0));
  EXPECT_EQ(storage.pl_Thetal(0.25, 293.15, 5.0), storage.pl_Thetal(0.25, 293.15, -1.0));
}

TEST(MoistureStorage, guessOfThePressure_isTheStartOfTheIteration) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared(CURVE);
  for (const auto& [plGuess, logGuess] : {std::pair(-0.5, 0.0), std::pair(-1000.0, 3.0)}) {
    const int before = TKL::mrcIterationCount;
    const double pl = storage.pl_Thetal(0.11, 293.15, plGuess);
    const int between = TKL::mrcIterationCount;
    EXPECT_EQ(pl, -TKL::f_pow10(storage.pC_Thetal_iterative(0.11, logGuess)));
    EXPECT_EQ(TKL::mrcIterationCount - between, between - before);
  }
}

TEST(MoistureStorage, iteration_movesByNoMoreThanOnePointOneAPass) {
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_SPLINE;
  storage.functions[0] = splineOf({0, 10}, {0.3, 0.2});
  const int before = TKL::mrcIterationCount;
  EXPECT_NEAR(storage.pC_Thetal_iterative(0.21, 1.0), 9.0, 1e-9);
  // from 1 to 9 on a straight line: seven steps of 1.1, one of 0.3, and one that finds nothing left to do
  EXPECT_EQ(TKL::mrcIterationCount - before, 9);
}

TEST(MoistureStorage, iteration_doesNotLeaveTheRangeOfTheCurve) {
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_SPLINE;
  storage.functions[0] = splineOf({0, 10}, {0.3, 0.2});
  EXPECT_EQ(storage.pC_Thetal_iterative(0.31, 1.0), 0.0);
  storage.kind = MoistureStorage::K_ANALYTIC;
  storage.modelType = MoistureStorage::MT_VAN_GENUCHTEN;
  storage.vanGenuchten.modes = {{1.0, 1e-4, 2.0}};
  storage.ThetaEff = storage.ThetaLimit = 0.3;
  storage.plLimit = -100.0;
  EXPECT_EQ(storage.pC_Thetal_iterative(0.31, 3.0), 2.0);
}

TEST(MoistureStorage, iterationFromBelowTheCurve_startsAtItsBegin) {
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_SPLINE;
  storage.functions[0] = splineOf({0, 10}, {0.3, 0.2});
  const auto passesFrom = [&storage](double guess) {
    const int before = TKL::mrcIterationCount;
    storage.pC_Thetal_iterative(0.25, guess);
    return TKL::mrcIterationCount - before;
  };
  EXPECT_EQ(passesFrom(-5.0), passesFrom(1e-12));
}

TEST(MoistureStorage, iterationWithoutCurve_isRefused) {
  EXPECT_TRUE(has(thrown([] { MoistureStorage().pC_Thetal_iterative(0.1, 3.0); }),
                  "Invalid MRC function type.", "[MoistureStorage::pC_Thetal_iterative]"));
}

TEST(MoistureStorage, iterationThatDoesNotConverge_warnsAndGoesOn) {
  const TKL::MessageCapture capture;
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_SPLINE;
  // More than the table can hold, from a guess in its falling part: the step limit keeps it wandering.
  storage.functions[0] = splineOf({0, 1000}, {0.3, 0.2});
  const int before = TKL::mrcIterationCount;
  storage.pC_Thetal_iterative(0.21, 1.0);
  EXPECT_EQ(TKL::mrcIterationCount - before, 49);
  EXPECT_TRUE(
      capture.has("Error converging on rMRC calculation with given number of iteration. Returning best bet "
                  "so far (may lead "
                  "to Newton convergence errors).",
                  TKL::MSG_WARNING, "[MoistureStorage::pC_Thetal_iterative]", 1));
}

TEST(MoistureStorage, curveOverHumidity_usesTheKelvinEquation) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared("FUNCTION = Theta_l(RH)\n0 0.5 1\n0 0.05 0.3\n");
  EXPECT_EQ(storage.kind, MoistureStorage::K_RH);
  const double pl = std::log(0.75) * 461890.0 * 280.0;
  EXPECT_NEAR(storage.Thetal_pl(pl, 280.0), 0.175, 1e-12);
  EXPECT_NEAR(storage.pl_Thetal(0.175, 280.0, -1.0), pl, 1e-4);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(1e5, 280.0), 0.31);
}

TEST(MoistureStorage, curveOverHumidityAtZeroContent_staysFinite) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared("FUNCTION = Theta_l(RH)\n0 1\n0 0.3\n");
  EXPECT_NEAR(storage.pl_Thetal(0.0, 280.0, -1.0), std::log(1e-10) * 461890.0 * 280.0, 1.0);
}

TEST(MoistureStorage, reservedKind_isConstantBelowItsLimit) {
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_RESERVED;
  storage.plLimit = -50.0;
  storage.ThetaLimit = 0.2;
  storage.ThetaEff = 0.3;
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(-60.0, 293.15), 0.2);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(50.0, 293.15), 0.2 + 100.0 * 1e-7);
  EXPECT_DOUBLE_EQ(storage.pl_Thetal(0.1, 293.15, -1.0), 0.0);
}

TEST(MoistureStorage, analyticKind_isVanGenuchtenBelowItsLimit) {
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_ANALYTIC;
  storage.plLimit = -100.0;
  storage.ThetaLimit = 0.29;
  storage.ThetaEff = 0.3;
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(-1e4, 293.15), 0.0);
  storage.modelType = MoistureStorage::MT_VAN_GENUCHTEN;
  storage.vanGenuchten.modes = {{1.0, 1e-4, 2.0}};
  EXPECT_NEAR(storage.Thetal_pl(-1e4, 293.15), 0.3 / std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(storage.pl_Thetal(0.3 / std::sqrt(2.0), 293.15, -1e3), -1e4, 1e-3);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(-50.0, 293.15), 0.29 + 50.0 * 1e-7);
  EXPECT_EQ(storage.Thetal_pl(0.0, 293.15), 0.3);
}

TEST(MrcVG, modes_areSummedByWeight) {
  MrcVG curve;
  curve.modes = {{0.5, 1e-4, 2.0}, {0.5, 1e-3, 3.0}};
  EXPECT_NEAR(curve(-1e4), 0.5 / std::sqrt(2.0) + 0.5 * std::pow(1001.0, -2.0 / 3.0), 1e-12);
}

TEST(MoistureStorageModels, moreThanOne_areRefused) {
  const TKL::MessageCapture capture;
  const Records records = thrown([] { prepared("[MODEL]\nTYPE = GAUSS\n[MODEL]\nTYPE = VAN_GENUCHTEN\n"); });
  EXPECT_TRUE(has(records, "There must not be more than one moisture storage model parameter section.",
                  "[MoistureStorage::prepareCalculation]"));
  EXPECT_TRUE(has(records, "Error initializing moisture storage functionality for calculation.",
                  "[MoistureStorage::prepareCalculation]"));
}

TEST(MoistureStorageModels, unknownModel_isWarnedAbout) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(prepared("[MODEL]\nTYPE = FOO\n").kind, MoistureStorage::K_NONE);
  EXPECT_TRUE(capture.has("Unknown MRC model type 'FOO'.", TKL::MSG_WARNING,
                          "[MoistureStorage::prepareCalculation]", 2));
}

TEST(MoistureStorageModels, vanGenuchten_isReportedAndLeftOut) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(prepared("[MODEL]\nTYPE = VAN_GENUCHTEN\n").kind, MoistureStorage::K_NONE);
  EXPECT_TRUE(capture.has("VAN GENUCHTEN Model is recognized, but not supported yet.", TKL::MSG_ERROR,
                          "[MoistureStorage::prepareCalculation]", -1));
}

TEST(MoistureStorageModels, tableBesideAModel_counts) {
  const TKL::MessageCapture capture;
  EXPECT_DOUBLE_EQ(prepared(CURVE + "[MODEL]\nTYPE = GAUSS\n").Thetal_pl(-1e4, 293.15), 0.2);
}

TEST(MoistureStorageModels, gauss_isTheNormalDistributionOfPoreSizes) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage =
      prepared("[MODEL]\nTYPE = GAUSS\nGAUSS_Wi = 1\nGAUSS_Si = 0.5\nGAUSS_Ri = 1e-5\n");
  const double mean = std::log10(0.152 / 1e-5);
  EXPECT_EQ(storage.kind, MoistureStorage::K_SPLINE);
  for (const double x : {3.0, 4.0, 4.5, 5.0, 6.0}) {
    const double share = 0.5 * std::erfc((x - mean) / 0.5 / std::sqrt(2.0));
    EXPECT_NEAR(storage.Thetal_pl(-std::pow(10.0, x), 293.15), 0.3 * share, 1e-4) << x;
  }
  EXPECT_DOUBLE_EQ(storage.functions[0].x[storage.functions[0].size() - 2], 10.0);
  EXPECT_DOUBLE_EQ(storage.functions[0].x.back(), 12.0);
  EXPECT_DOUBLE_EQ(storage.functions[0].y.back(), 0.0);
  EXPECT_TRUE(capture.contains("Generating MRC spline data from GAUSS model.\n"));
  EXPECT_TRUE(
      capture.has("MRC spline generated with " + std::to_string(storage.functions[0].size()) + " points.\n",
                  TKL::MSG_STANDARD, "[MoistureStorage::prepareCalculation]", 3));
}

TEST(MoistureStorageModels, gaussBetweenMinus100PaAndSaturation_is0) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage =
      prepared("[MODEL]\nTYPE = GAUSS\nGAUSS_Wi = 1\nGAUSS_Si = 0.5\nGAUSS_Ri = 1.52e-6\n");
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(-50.0, 293.15), 0.0);
  EXPECT_DOUBLE_EQ(storage.Thetal_pl(0.0, 293.15), 0.3);
}

TEST(MoistureStorageModels, gaussWeights_mustSumUpTo1) {
  const TKL::MessageCapture capture;
  const auto section = [](const std::string& weights) {
    return "[MODEL]\nTYPE = GAUSS\nGAUSS_Wi = " + weights + "\nGAUSS_Si = 0.5 0.5\nGAUSS_Ri = 1e-6 1e-7\n";
  };
  EXPECT_TRUE(has(thrown([&] { prepared(section("0.5 0.49")); }),
                  "Weight factors for MRC Gauss model sum up to 0.99, but sum should be 1.",
                  "[MrcGAUSS_dpC::setData]"));
  EXPECT_FALSE(thrown([&] { prepared(section("0.5 0.4998")); }).empty());
  EXPECT_EQ(prepared(section("0.5 0.49995")).kind, MoistureStorage::K_SPLINE);
}

TEST(MoistureStorageModels, gaussWithoutAList_isRefused) {
  const TKL::MessageCapture capture;
  EXPECT_TRUE(has(thrown([] { prepared("[MODEL]\nTYPE = GAUSS\nGAUSS_Wi = 1\nGAUSS_Si = 0.5\n"); }),
                  "Mismatching or missing GAUSS model parameters.", "[MrcGAUSS::setData]"));
}

TEST(MoistureStorageNormalised, table_isScaledWithinTheTolerance) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared("FUNCTION = Theta_l(pC)_de\n0 4 12\n1.0005 0.5 0\n");
  EXPECT_DOUBLE_EQ(storage.functions[0].y[1], 0.15);
  EXPECT_TRUE(capture.has("Denormalizing Theta_l(pC) spline.\n", TKL::MSG_STANDARD,
                          "[MoistureStorage::denormalize]", 3));
}

TEST(MoistureStorageNormalised, tableBeyondTheTolerance_staysAndIsWarnedAbout) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared("FUNCTION = Theta_l(pC)_de\n0 4 12\n1.002 0.5 0\n");
  EXPECT_DOUBLE_EQ(storage.functions[0].y[1], 0.5);
  EXPECT_TRUE(
      warned(capture,
             "Material has an invalid Theta_l(pC) spline: the maximum Theta_l value (1.002 m3/m3) must be "
             "equal to 'THETA_EFF' (1.002 m3/m3)!"));
}

TEST(MoistureStorageNormalised, tableThatMissesOneEndOfTheForm_stays) {
  const TKL::MessageCapture capture;
  for (const std::string table :
       {"0 4 12\n1.0015 0.5 0\n", "0.0015 4 12\n1 0.5 0\n", "0 4 12\n1 0.5 0.0015\n"})
    EXPECT_DOUBLE_EQ(prepared("FUNCTION = Theta_l(pC)_de\n" + table).functions[0].y[1], 0.5) << table;
  for (const std::string table :
       {"0 0.5 1.0015\n12 4 0\n", "0.0015 0.5 1\n12 4 0\n", "0 0.5 1\n12 4 0.0015\n"})
    EXPECT_DOUBLE_EQ(prepared("FUNCTION = pC(Theta_l)_de\n" + table).functions[1].x[1], 0.5) << table;
  EXPECT_FALSE(capture.contains("Denormalizing"));
}

TEST(MoistureStorageNormalised, tableWithoutThetaEff_stays) {
  const TKL::MessageCapture capture;
  EXPECT_DOUBLE_EQ(prepared("FUNCTION = Theta_l(pC)_de\n0 4 12\n1 0.5 0\n", {}).functions[0].y[1], 0.5);
}

TEST(MoistureStorageLimits, flatIntervals_areNotWarnedAbout) {
  const TKL::MessageCapture capture;
  prepared("FUNCTION = Theta_l(pC)_de\n0 4 6 12\n0.3 0.2 0.2 0\n");
  prepared("FUNCTION = Theta_l(RH)\n0 0.4 0.6 1\n0 0.1 0.1 0.3\n");
  EXPECT_FALSE(capture.contains("slope in interval"));
}

TEST(MoistureStorageNormalised, inverseAndHumidityCurve_areScaled) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage =
      prepared("FUNCTION = pC(Theta_l)_de\n0 0.5 1\n12 4 0\nFUNCTION = Theta_l(RH)\n0 0.5 1\n0 0.2 1\n");
  EXPECT_DOUBLE_EQ(storage.functions[MoistureStorage::F_pC_Theta_de].x[1], 0.15);
  EXPECT_DOUBLE_EQ(storage.functions[MoistureStorage::F_Theta_RH].y[1], 0.06);
  EXPECT_TRUE(capture.contains("Denormalizing pC(Theta_l) spline.\n"));
  EXPECT_TRUE(capture.contains("Denormalizing Theta_l(rh) spline.\n"));
}

TEST(MoistureStorageLimits, faultyTable_isWarnedAbout) {
  const TKL::MessageCapture capture;
  prepared("FUNCTION = Theta_l(pC)_de\n1 2 4 6\n0.25 0.26 0.2 0.01\n");
  const std::string start = "Material has an invalid Theta_l(pC) spline: ";
  EXPECT_TRUE(capture.has("Checking parameter and function limits.\n", TKL::MSG_STANDARD,
                          "[MoistureStorage::checkLimits]", 3));
  EXPECT_TRUE(warned(capture, "Invalid spline data for Theta_l(pC), found positive slope in interval #1."));
  EXPECT_TRUE(warned(capture, start + "the minimum Thetal value (0.01 m3/m3) must be zero!"));
  EXPECT_TRUE(warned(capture, start + "the minimum pC value (1 logPa) must be zero!"));
}

TEST(MoistureStorageLimits, faultyInverse_isWarnedAbout) {
  const TKL::MessageCapture capture;
  prepared(CURVE + "FUNCTION = pC(Theta_l)_de\n0.01 0.1 0.2 0.25\n12 4 4 1\n");
  const std::string start = "Material has an invalid pC(Theta_l) spline: ";
  EXPECT_TRUE(warned(capture, "Invalid spline data for pC(Theta_l), found positive slope in interval #2."));
  EXPECT_TRUE(warned(
      capture, start + "the maximum Thetal value (0.25 m3/m3) must be equal to 'THETA_EFF' (0.3 m3/m3)!"));
  EXPECT_TRUE(warned(capture, start + "the minimum Thetal value (0.01 m3/m3) must be zero!"));
  EXPECT_TRUE(warned(capture, start + "the minimum pC value (1 logPa) must be zero!"));
}

TEST(MoistureStorageLimits, fallingHumidityCurve_isWarnedAbout) {
  const TKL::MessageCapture capture;
  const MoistureStorage storage = prepared("FUNCTION = Theta_l(RH)\n0 0.5 1\n0 0.3 0.2\n");
  EXPECT_TRUE(warned(capture, "Invalid spline data for Theta_l(rh), found negative slope in interval #2."));
  EXPECT_DOUBLE_EQ(storage.pl_Thetal(0.1, 293.15, -1.0), 0.0);
}

TEST(MoistureStorageLimits, fallingInverseOfAHumidityCurve_isWarnedAbout) {
  const TKL::MessageCapture capture;
  MoistureStorage storage;
  storage.kind = MoistureStorage::K_RH;
  storage.inverseRH = splineOf({0, 0.3}, {1, 0});
  storage.checkLimits(Material());
  EXPECT_TRUE(warned(capture, "Invalid spline data for rh(Theta_l), found negative slope in interval #1."));
}

TEST(MoistureStorageReverseCheck, consistentTables_pass) {
  const TKL::MessageCapture capture;
  prepared(CURVE + INVERSE);
  EXPECT_TRUE(capture.has("Performing consistency check between storage functions.\n", TKL::MSG_STANDARD,
                          "[MoistureStorage::doReverseCheck]", 3));
  EXPECT_FALSE(capture.contains("inconsistant"));
}

TEST(MoistureStorageReverseCheck, inconsistentTables_areCounted) {
  const TKL::MessageCapture capture;
  prepared("FUNCTION = Theta_l(pC)_de\n0 4 12\n0.3 0.2 0\nFUNCTION = pC(Theta_l)_de\n0 0.2 0.3\n12 5 0\n");
  const char* const TAG = "[MoistureStorage::doReverseCheck]";
  EXPECT_TRUE(capture.has("pC = 4 -> Theta_l = 0.2 m3/m3 --(rMRC)-> pC = 5.\n", TKL::MSG_STANDARD, TAG, 3));
  EXPECT_TRUE(capture.has("Theta_l = 0.2 m3/m3 -> pC = 5 --(MRC)-> Theta_l = 0.175 m3/m3\n",
                          TKL::MSG_STANDARD, TAG, 3));
  EXPECT_TRUE(capture.has(
      "Material may have inconsistant Theta_l(pC) and pC(Theta_l) functions (1 errors in rMRC check).",
      TKL::MSG_WARNING, TAG, 2));
  EXPECT_TRUE(capture.has(
      "Material may have inconsistant Theta_l(pC) and pC(Theta_l) functions (1 errors in MRC check).",
      TKL::MSG_WARNING, TAG, 2));
}

}  // namespace MM

#include <cmath>

#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

const std::string STORAGE = "FUNCTION = Theta_l(RH)\n0 1\n0 0.3\n";
const std::string LIQUID = "FUNCTION = lgKl(Theta_l)\n0 0.3\n-12 -9\n";
const std::string KL_NORMALISED = "FUNCTION = lgKl(Theta_l)\n0 1\n-6 0\n";
const char* const PREPARE_TAG = "[MoistureTransport::prepareCalculation]";
const char* const DENORMALIZE_TAG = "[MoistureTransport::denormalize]";

struct Prepared {
  Material material;
  MoistureStorage storage;
  MoistureTransport transport;
};

Prepared prepare(const std::string& section, const std::vector<std::string>& lines = {}, int direction = 0) {
  Prepared result;
  for (const std::string line : {"NAME = Brick", "THETA_EFF = 0.3 m3/m3", "THETA_POR = 0.4 m3/m3"})
    result.material.readASCIIParameterFromLine(line);
  for (const std::string& line : lines) result.material.readASCIIParameterFromLine(line);
  result.storage.read(STORAGE);
  result.storage.prepareCalculation(result.material);
  result.transport.read(section);
  result.transport.prepareCalculation(result.material, result.storage, direction);
  return result;
}

Records transportFailure(const std::string& section, const std::vector<std::string>& lines = {},
                         int direction = 0) {
  const TKL::MessageCapture capture;
  return thrown([&] { prepare(section, lines, direction); });
}

}  // namespace

TEST(MoistureTransport, withoutLiquidFunction_hasNeitherLiquidNorVapour) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport = prepare("", {"MEW = 10 -"}).transport;
  EXPECT_EQ(transport.liquidKind, MoistureTransport::L_NONE);
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_NONE);
  EXPECT_DOUBLE_EQ(transport.Kv(0.0, 0.5), 0.0);
  EXPECT_TRUE(capture.has("Initializing moisture transport functions.\n", TKL::MSG_STANDARD, PREPARE_TAG, 3));
}

TEST(MoistureTransport, waterTight_skipsThePotentialAndMovesVapour) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport = prepare(LIQUID, {"MEW = 10 -", "FLAGS = WATERTIGHT"}).transport;
  EXPECT_EQ(transport.liquidKind, MoistureTransport::L_NONE);
  EXPECT_TRUE(transport.Psi.empty());
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_MEW);
}

TEST(MoistureTransport, vaporTight_movesLiquidOnly) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport = prepare(LIQUID, {"MEW = 10 -", "FLAGS = VAPORTIGHT"}).transport;
  EXPECT_EQ(transport.liquidKind, MoistureTransport::L_KL);
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_NONE);
}

TEST(MoistureTransport, conductivity_goesBeforeDiffusivity) {
  const TKL::MessageCapture capture;
  const std::string diffusivity = "FUNCTION = lgDl(Theta_l)\n0 0.3\n-10 -7\n";
  EXPECT_EQ(prepare(LIQUID + diffusivity).transport.liquidKind, MoistureTransport::L_KL);
  const MoistureTransport transport = prepare(diffusivity).transport;
  EXPECT_EQ(transport.liquidKind, MoistureTransport::L_DL);
  EXPECT_NEAR(transport.Dl(0.1), 1e-9, 1e-20);
}

TEST(MoistureTransport, vapourConductivity_isThatOfAirOverTheFactorInTheOpenPores) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport = prepare("", {"MEW = 10 -", "FLAGS = WATERTIGHT"}).transport;
  const double dry = 2.662e-05 / (10.0 * 461.89 * 296.15);
  EXPECT_NEAR(transport.Kv(0.0, 0.5), dry, 1e-20);
  EXPECT_NEAR(transport.Kv(0.1, 0.5), dry * 0.75, 1e-20);
  EXPECT_DOUBLE_EQ(transport.Kv(0.5, 0.5), 0.0);
}

TEST(MoistureTransport, resistanceOverHumidity_isAskedAtTheHumidity) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport =
      prepare("FUNCTION = mew(RH)\n0 1\n20 10\n", {"MEW = 5 -", "FLAGS = WATERTIGHT"}).transport;
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_MEW_RH);
  EXPECT_NEAR(transport.Kv(0.0, 0.5), 2.662e-05 / (15.0 * 461.89 * 296.15), 1e-20);
}

TEST(MoistureTransport, vapourConductivityTable_goesFirst) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport =
      prepare("FUNCTION = mew(RH)\n0 1\n20 10\nFUNCTION = lgKv(Theta_l)\n0 0.4\n-11 -13\n",
              {"FLAGS = WATERTIGHT"})
          .transport;
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_KV);
  EXPECT_NEAR(transport.Kv(0.2, 0.5), 1e-12, 1e-22);
}

TEST(MoistureTransport, withoutPorosity_movesNoVapour) {
  const TKL::MessageCapture capture;
  Material material;
  for (const std::string line : {"MEW = 10 -", "FLAGS = WATERTIGHT"})
    material.readASCIIParameterFromLine(line);
  MoistureTransport transport;
  transport.prepareCalculation(material, MoistureStorage(), 0);
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_NONE);
  EXPECT_TRUE(capture.has("Parameter THETA_POR missing for standard vapor diffusion model.", TKL::MSG_WARNING,
                          PREPARE_TAG, 2));
}

TEST(MoistureTransport, air_hasPorosity1) {
  const TKL::MessageCapture capture;
  Material material;
  for (const std::string line : {"MEW = 1 -", "FLAGS = AIR"}) material.readASCIIParameterFromLine(line);
  MoistureTransport transport;
  transport.prepareCalculation(material, MoistureStorage(), 0);
  EXPECT_EQ(transport.vaporKind, MoistureTransport::V_MEW);
  EXPECT_DOUBLE_EQ(transport.ThetaPor, 1.0);
}

TEST(MoistureTransport, missingResistance_isSilent) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(prepare("", {"FLAGS = WATERTIGHT"}).transport.vaporKind, MoistureTransport::V_NONE);
  EXPECT_FALSE(capture.contains("MEW"));
}

TEST(MoistureTransport, direction_choosesItsResistance) {
  const TKL::MessageCapture capture;
  const std::vector<std::string> lines = {"MEW = 1 -", "MEW_V = 2 -", "MEW_W = 3 -", "FLAGS = WATERTIGHT"};
  EXPECT_DOUBLE_EQ(prepare("", lines, 1).transport.mew, 2.0);
  EXPECT_DOUBLE_EQ(prepare("", lines, 2).transport.mew, 3.0);
}

TEST(MoistureTransport, unknownDirection_isRefused) {
  const Records records = transportFailure("", {"FLAGS = WATERTIGHT"}, 3);
  EXPECT_TRUE(has(records, "Invalid value for material direction.", PREPARE_TAG));
  EXPECT_TRUE(
      has(records, "Error initializing moisture transport functionality for calculation.", PREPARE_TAG));
}

TEST(MoistureTransportNormalised, liquidConductivity_isScaled) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport = prepare(KL_NORMALISED, {"KLEFF = 1e-8 s"}).transport;
  const TKL::LinearSpline& lgKl = transport.functions[MoistureTransport::F_lgKl];
  EXPECT_DOUBLE_EQ(lgKl.x.back(), 0.3);
  EXPECT_DOUBLE_EQ(lgKl.y.front(), -14.0);
  EXPECT_DOUBLE_EQ(lgKl.y.back(), -8.0);
  EXPECT_TRUE(capture.has("Denormalizing Kl(Theta_l) spline.\n", TKL::MSG_STANDARD, DENORMALIZE_TAG, 3));
}

TEST(MoistureTransportNormalised, liquidConductivityWithoutItsParameter_isRefused) {
  EXPECT_TRUE(has(transportFailure(KL_NORMALISED),
                  "Require KLEFF parameter for denormalization of Kl_Thetal spline.", DENORMALIZE_TAG));
  EXPECT_TRUE(has(transportFailure(KL_NORMALISED, {"KLEFF = 0 s"}),
                  "Invalid KLEFF value (0 s) for denormalization of Kl_Thetal spline, must be > 0 s.",
                  DENORMALIZE_TAG));
}

TEST(MoistureTransportNormalised, diffusivity_isScaled) {
  const TKL::MessageCapture capture;
  const std::string section = "FUNCTION = lgDl(Theta_l)\n0 1\n-6 0\n";
  const MoistureTransport transport = prepare(section, {"DLEFF = 1e-7 m2/s"}).transport;
  EXPECT_DOUBLE_EQ(transport.functions[MoistureTransport::F_lgDl].x.back(), 0.3);
  EXPECT_DOUBLE_EQ(transport.functions[MoistureTransport::F_lgDl].y.back(), -7.0);
  EXPECT_TRUE(capture.contains("Denormalizing Dl(Theta_l) spline.\n"));
  EXPECT_TRUE(has(transportFailure(section),
                  "Require DLEFF parameter for denormalization of Dl_Thetal spline.", DENORMALIZE_TAG));
  EXPECT_TRUE(has(transportFailure(section, {"DLEFF = -1 m2/s"}),
                  "Invalid DLEFF value (-1 m2/s) for denormalization of Dl_Thetal spline, must be > 0 m2/s.",
                  DENORMALIZE_TAG));
}

TEST(MoistureTransportNormalised, vapourConductivity_isScaledWithPorosity) {
  const TKL::MessageCapture capture;
  const std::string section = "FUNCTION = lgKv(Theta_l)\n0 1\n-6 0\n";
  const MoistureTransport transport = prepare(section, {"MEW = 10 -", "FLAGS = WATERTIGHT"}).transport;
  EXPECT_DOUBLE_EQ(transport.functions[MoistureTransport::F_lgKv].x.back(), 0.4);
  EXPECT_NEAR(transport.functions[MoistureTransport::F_lgKv].y.back(),
              std::log10(2.662e-05 / (10.0 * 461.89 * 296.15)), 1e-12);
  EXPECT_TRUE(capture.contains("Denormalizing Kv(Theta_l) spline.\n"));
  EXPECT_TRUE(has(transportFailure(section), "Require MEW parameter for denormalization of Kv_Thetal spline.",
                  DENORMALIZE_TAG));
  EXPECT_TRUE(has(transportFailure(section, {"MEW = 0 -"}),
                  "Invalid MEW value (0 -) for denormalization of Kv_Thetal spline, must be > 0.",
                  DENORMALIZE_TAG));
}

TEST(MoistureTransportNormalised, dryValueOfMinus5_countsAsNormalised) {
  const TKL::MessageCapture capture;
  const MoistureTransport transport =
      prepare("FUNCTION = lgKl(Theta_l)\n0 1\n-5 0\n", {"KLEFF = 1e-8 s"}).transport;
  EXPECT_DOUBLE_EQ(transport.functions[MoistureTransport::F_lgKl].x.back(), 0.3);
}

TEST(MoistureTransportNormalised, tableThatMissesOneEndOfTheForm_stays) {
  const TKL::MessageCapture capture;
  for (const std::string table : {"0 1.0015\n-6 0\n", "0.0015 1\n-6 0\n", "0 1\n-6 -0.0015\n"}) {
    const MoistureTransport transport = prepare("FUNCTION = lgKl(Theta_l)\n" + table).transport;
    EXPECT_GT(transport.functions[MoistureTransport::F_lgKl].x.back(), 0.9) << table;
  }
}

TEST(MoistureTransportNormalised, tableAboveTheDryLimit_staysAsItIs) {
  const TKL::MessageCapture capture;
  Prepared result;
  result.transport.read(std::string("FUNCTION = lgKl(Theta_l)\n0 1\n-4.9 0\n"));
  result.material.readASCIIParameterFromLine("FLAGS = WATERTIGHT");
  result.transport.prepareCalculation(result.material, result.storage, 0);
  EXPECT_DOUBLE_EQ(result.transport.functions[MoistureTransport::F_lgKl].x.back(), 1.0);
}

TEST(MoistureTransportMonotony, firstFallingInterval_isWarnedAbout) {
  const TKL::MessageCapture capture;
  const char* const TAG = "[MoistureTransport::checkLiquidFunctionMonotony]";
  prepare("FUNCTION = lgKl(Theta_l)\n0 0.1 0.2 0.3\n-12 -11 -11.5 -11.6\n");
  const std::string start = "Check for monotonic liquid conductivity function failed for material 'Brick'. ";
  EXPECT_TRUE(
      capture.has(start + "Invalid spline data for lgKl(Thetal), found negative slope in interval #2.",
                  TKL::MSG_WARNING, TAG, 2));
  prepare("FUNCTION = lgDl(Theta_l)\n0 0.3\n-7 -8\n");
  EXPECT_TRUE(
      capture.has(start + "Invalid spline data for lgDl(Thetal), found negative slope in interval #1.",
                  TKL::MSG_WARNING, TAG, 2));
}

TEST(MoistureTransportMonotony, missingFunction_isWarnedAbout) {
  const TKL::MessageCapture capture;
  Material material;
  material.readASCIIParameterFromLine("NAME = Brick");
  MoistureTransport().checkLiquidFunctionMonotony(material);
  EXPECT_TRUE(
      capture.has("Liquid transport function for material 'Brick' missing. Either one of lgKl(Ol) or "
                  "lgDl(Ol) is required!",
                  TKL::MSG_WARNING, "[MoistureTransport::checkLiquidFunctionMonotony]", 2));
}

TEST(KirchhoffPotential, ofAConstantConductivity_isConductivityTimesPressure) {
  const TKL::MessageCapture capture;
  const Prepared result = prepare("FUNCTION = lgKl(Theta_l)\n0 0.3\n-9 -9\n");
  const MoistureStorage& storage = result.storage;
  const double plA = -1e5, plB = -1e7;
  const double difference = result.transport.Psi.value(storage.Thetal_pl(plA, 293.15)) -
                            result.transport.Psi.value(storage.Thetal_pl(plB, 293.15));
  // exact but for the interpolation of a table of 100 points a decade
  EXPECT_NEAR(difference, 1e-9 * (plA - plB), 1e-3 * 1e-9 * (plA - plB));
  EXPECT_TRUE(capture.contains("Generating Kirchhoff potential functions.\n"));
  EXPECT_TRUE(capture.has("Converting: Kl -> Psi\n", TKL::MSG_STANDARD,
                          "[MoistureTransport::prepareKichhoffPotential]", 3));
}

TEST(KirchhoffPotential, lastPoint_liesAtAnOverpressureOf200kPa) {
  const TKL::MessageCapture capture;
  const Prepared result = prepare("FUNCTION = lgKl(Theta_l)\n0 0.3\n-9 -9\n");
  const TKL::LinearSpline& Psi = result.transport.Psi;
  EXPECT_DOUBLE_EQ(Psi.x.back(), 0.3 + 0.02);
  EXPECT_NEAR(Psi.y.back() - Psi.y[Psi.size() - 2], 1e-9 * 2e5, 1e-12);
}

TEST(KirchhoffPotential, contents_growStrictly) {
  const TKL::MessageCapture capture;
  Prepared result;
  result.material.readASCIIParameterFromLine("THETA_EFF = 0.3 m3/m3");
  // flat between pC = 1e3 and 1e5 Pa: nothing is gained there
  result.storage.read(std::string("FUNCTION = Theta_l(pC)_de\n0 3 5 12\n0.3 0.2 0.2 0\n"));
  result.storage.prepareCalculation(result.material);
  result.transport.read(std::string("FUNCTION = lgKl(Theta_l)\n0 0.3\n-9 -9\n"));
  result.transport.prepareCalculation(result.material, result.storage, 0);
  const TKL::LinearSpline& Psi = result.transport.Psi;
  for (std::size_t i = 1; i < Psi.size(); ++i) EXPECT_GT(Psi.x[i], Psi.x[i - 1]);
  // the step to the first gain spans the dropped pressures
  const std::size_t last =
      static_cast<std::size_t>(std::lower_bound(Psi.x.begin(), Psi.x.end(), 0.2 - 1e-9) - Psi.x.begin());
  EXPECT_NEAR(Psi.y[last + 1] - Psi.y[last], 1e-9 * 1e5, 0.05 * 1e-9 * 1e5);
}

TEST(KirchhoffPotential, rangeUpToSaturation_isClosedWithTheLastConductivity) {
  const TKL::MessageCapture capture;
  Prepared result;
  result.material.readASCIIParameterFromLine("THETA_EFF = 0.3 m3/m3");
  // dry side only: the table ends below saturation
  result.storage.read(std::string("FUNCTION = Theta_l(RH)\n0 1\n0 0.2\n"));
  result.storage.prepareCalculation(result.material);
  result.transport.read(std::string("FUNCTION = lgKl(Theta_l)\n0 0.3\n-9 -9\n"));
  result.transport.prepareCalculation(result.material, result.storage, 0);
  const TKL::LinearSpline& Psi = result.transport.Psi;
  EXPECT_DOUBLE_EQ(Psi.x[Psi.size() - 2], 0.3);
  EXPECT_NEAR(Psi.y[Psi.size() - 2] - Psi.y[Psi.size() - 3], 1e-9 * 1.0, 1e-12);
}

TEST(KirchhoffPotential, gapBelowSaturation_isClosedOnlyAboveAMillionth) {
  const TKL::MessageCapture capture;
  const auto lastButOne = [](const std::string& contentAtSaturation) {
    Prepared result;
    result.material.readASCIIParameterFromLine("THETA_EFF = 0.3 m3/m3");
    result.storage.read("FUNCTION = Theta_l(RH)\n0 1\n0 " + contentAtSaturation + "\n");
    result.storage.prepareCalculation(result.material);
    result.transport.read(std::string("FUNCTION = lgKl(Theta_l)\n0 0.3\n-9 -9\n"));
    result.transport.prepareCalculation(result.material, result.storage, 0);
    return result.transport.Psi.x[result.transport.Psi.size() - 2];
  };
  EXPECT_EQ(lastButOne("0.299998"), 0.3);
  EXPECT_LT(lastButOne("0.2999995"), 0.3);
}

TEST(KirchhoffPotential, stepsOfPressure_areTrapezoids) {
  const TKL::MessageCapture capture;
  Prepared result;
  result.material.readASCIIParameterFromLine("THETA_EFF = 0.3 m3/m3");
  result.storage.read(std::string("FUNCTION = Theta_l(pC)_de\n0 12\n0.3 0\n"));
  result.storage.prepareCalculation(result.material);
  result.transport.read(std::string("FUNCTION = lgKl(Theta_l)\n0 0.3\n-12 -9\n"));
  result.transport.prepareCalculation(result.material, result.storage, 0);
  const TKL::LinearSpline& Psi = result.transport.Psi;
  // the first step goes from pC = 1e10 Pa to the hundredth of a decade below
  const auto K = [](double logpC) { return std::pow(10.0, -12.0 + 10.0 * 0.3 * (12.0 - logpC) / 12.0); };
  const double first = 0.5 * (K(10.0) + K(9.99)) * (1e10 - std::pow(10.0, 9.99));
  EXPECT_NEAR(Psi.x[0], 0.05, 1e-12);
  EXPECT_NEAR(Psi.y[1] - Psi.y[0], first, 1e-9 * first);
}

TEST(KirchhoffPotential, ofADiffusivity_isItsIntegralTimesTheDensityOfWater) {
  const TKL::MessageCapture capture;
  const TKL::LinearSpline Psi = prepare("FUNCTION = lgDl(Theta_l)\n0 0.1 0.3\n-9 -8 -7\n").transport.Psi;
  ASSERT_EQ(Psi.size(), 4U);
  EXPECT_DOUBLE_EQ(Psi.y[0], 0.0);
  EXPECT_NEAR(Psi.y[1], (1e-6 + 1e-5) * 0.5 * 0.1, 1e-18);
  EXPECT_NEAR(Psi.y[2], Psi.y[1] + (1e-5 + 1e-4) * 0.5 * 0.2, 1e-17);
  EXPECT_DOUBLE_EQ(Psi.x[3], 0.3 + 1e-4);
  EXPECT_NEAR(Psi.y[3], Psi.y[2] + 1e-4 * 1e-4, 1e-17);
  EXPECT_TRUE(capture.contains("Converting: Dl -> Psi\n"));
}

TEST(KirchhoffPotential, diffusivityBeyondSaturation_isRefused) {
  EXPECT_TRUE(has(transportFailure("FUNCTION = lgDl(Theta_l)\n0 0.4\n-9 -7\n"),
                  "Error while generating Psi spline!", "[MoistureTransport::prepareKichhoffPotential]"));
}

TEST(KirchhoffPotential, withoutStorageCurve_isRefused) {
  const TKL::MessageCapture capture;
  MoistureTransport transport;
  transport.read(LIQUID);
  EXPECT_TRUE(has(thrown([&] { transport.prepareCalculation(Material(), MoistureStorage(), 0); }),
                  "Unsupported type of moisture storage function or missing initialisation.",
                  "[MoistureStorage::Thetal_pl]"));
}

}  // namespace MM

#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

const char* const CHECK_TAG = "[ThermalTransport::checkLimits]";

MaterialBase base(const std::vector<std::string>& parameterLines) {
  Material material;
  material.readASCIIParameterFromLine("NAME = Brick");
  for (const std::string& line : parameterLines) material.readASCIIParameterFromLine(line);
  return material;
}

ThermalTransport prepared(const std::vector<std::string>& parameterLines, const TKL::LinearSpline& overTheta,
                          const TKL::LinearSpline& overT, int direction = 0) {
  ThermalTransport group;
  group.functions[ThermalTransport::F_lambda_Theta] = overTheta;
  group.functions[ThermalTransport::F_lambda_T] = overT;
  group.prepareCalculation(base(parameterLines), direction);
  return group;
}

const TKL::LinearSpline NONE;

bool warnedOfThermal(const TKL::MessageCapture& capture, const std::string& text) {
  return capture.has(text, TKL::MSG_WARNING, CHECK_TAG, 2);
}

}  // namespace

TEST(ThermalStorage, inverse_isTheSwappedCurve) {
  ThermalStorage group;
  group.functions[ThermalStorage::F_u_T] = splineOf({273, 293, 294, 313}, {0, 2e4, 2e5, 2.2e5});
  group.prepareCalculation();
  EXPECT_DOUBLE_EQ(group.Tu.value(1e4), 283.0);
  EXPECT_DOUBLE_EQ(group.Tu.value(2e5), 294.0);
}

TEST(ThermalStorage, withoutCurve_hasNoInverse) {
  ThermalStorage group;
  group.Tu = splineOf({0, 1}, {0, 1});
  group.prepareCalculation();
  EXPECT_TRUE(group.Tu.empty());
}

TEST(ThermalStorage, equalEnthalpies_failPreparation) {
  ThermalStorage group;
  group.functions[ThermalStorage::F_u_T] = splineOf({273, 293, 313}, {0, 5, 5});
  EXPECT_TRUE(
      has(thrown([&] { group.prepareCalculation(); }),
          "Error generating inverse thermal storage function T(u):\nX values are not strictly monotonic "
          "increasing (at position/index 1).",
          "[ThermalStorage::prepareCalculation]"));
}

TEST(ThermalTransport, lambdaAlone_isConstant) {
  const TKL::MessageCapture capture;
  const ThermalTransport group = prepared({"LAMBDA = 0.8 W/mK"}, NONE, NONE);
  EXPECT_EQ(group.kind, ThermalTransport::K_CONSTANT);
  EXPECT_DOUBLE_EQ(group.conductivity(0.2, 300.0, 0.1), 0.8);
  EXPECT_TRUE(capture.has("Initializing thermal transport functions.\n", TKL::MSG_STANDARD,
                          "[ThermalTransport::prepareCalculation]", 3));
}

TEST(ThermalTransport, withoutLambda_conductsNothing) {
  const TKL::MessageCapture capture;
  const ThermalTransport group = prepared({}, splineOf({0, 0.3}, {0.8, 1.2}), NONE);
  EXPECT_EQ(group.kind, ThermalTransport::K_NONE);
  EXPECT_DOUBLE_EQ(group.conductivity(0.2, 300.0, 0.0), 0.0);
  EXPECT_TRUE(capture.has("Parameter LAMBDA missing for thermal transport model.", TKL::MSG_WARNING,
                          "[ThermalTransport::prepareCalculation]", 2));
}

TEST(ThermalTransport, zeroLambda_countsAsMissing) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(prepared({"LAMBDA = 0 W/mK"}, NONE, NONE).kind, ThermalTransport::K_NONE);
}

TEST(ThermalTransport, moistureCurve_isInterpolatedAndGainsByIce) {
  const TKL::MessageCapture capture;
  const ThermalTransport group =
      prepared({"LAMBDA = 0.8 W/mK", "THETA_EFF = 0.3 m3/m3"}, splineOf({0, 0.3}, {0.8, 1.4}), NONE);
  EXPECT_EQ(group.kind, ThermalTransport::K_THETA);
  EXPECT_DOUBLE_EQ(group.conductivity(0.1, 300.0, 0.0), 1.0);
  EXPECT_DOUBLE_EQ(group.conductivity(0.1, 300.0, 0.1), 1.0 + 1.6 * 0.1);
  EXPECT_FALSE(capture.contains("invalid"));
}

TEST(ThermalTransport, temperatureCurve_isInterpolated) {
  const TKL::MessageCapture capture;
  const ThermalTransport group =
      prepared({"LAMBDA = 0.8 W/mK"}, NONE, splineOf({273.15, 293.15}, {0.8, 1.2}));
  EXPECT_EQ(group.kind, ThermalTransport::K_T);
  EXPECT_NEAR(group.conductivity(0.1, 283.15, 0.1), 1.0, 1e-12);
}

TEST(ThermalTransport, bothCurves_areMultipliedAndDividedByLambdaOnce) {
  const TKL::MessageCapture capture;
  const ThermalTransport group =
      prepared({"LAMBDA = 0.8 W/mK", "THETA_EFF = 0.3 m3/m3"}, splineOf({0, 0.3}, {0.8, 1.6}),
               splineOf({273.15, 293.15}, {0.6, 1.2}));
  EXPECT_EQ(group.kind, ThermalTransport::K_THETA_AND_T);
  EXPECT_NEAR(group.conductivity(0.15, 283.15, 0.05), 1.2 * 0.9 / 0.8 + 1.6 * 0.05, 1e-12);
}

TEST(ThermalTransport, direction_choosesItsParameter) {
  const TKL::MessageCapture capture;
  const std::vector<std::string> lines = {"LAMBDA = 1 W/mK", "LAMBDA_V = 2 W/mK", "LAMBDA_W = 3 W/mK"};
  EXPECT_DOUBLE_EQ(prepared(lines, NONE, NONE, 1).lambda, 2.0);
  EXPECT_DOUBLE_EQ(prepared(lines, NONE, NONE, 2).lambda, 3.0);
}

TEST(ThermalTransport, unknownDirection_isRefused) {
  const TKL::MessageCapture capture;
  const Records records = thrown([] { prepared({"LAMBDA = 1 W/mK"}, NONE, NONE, 3); });
  EXPECT_TRUE(
      has(records, "Invalid value for material direction.", "[ThermalTransport::prepareCalculation]"));
  EXPECT_TRUE(has(records, "Error initializing thermal transport functionality for calculation.",
                  "[ThermalTransport::prepareCalculation]"));
}

TEST(ThermalTransport, normalisedMoistureCurve_isScaledWithPorosityAndLambda) {
  const TKL::MessageCapture capture;
  const ThermalTransport group =
      prepared({"LAMBDA = 0.8 W/mK", "THETA_POR = 0.4 m3/m3", "THETA_EFF = 0.3 m3/m3"},
               splineOf({0.0009, 0.9991}, {1.0009, 2}), NONE);
  EXPECT_DOUBLE_EQ(group.functions[0].x.back(), 0.9991 * 0.4);
  EXPECT_DOUBLE_EQ(group.functions[0].y.front(), 1.0009 * 0.8);
  EXPECT_TRUE(capture.has("Denormalizing lambda(Theta_l) spline.\n", TKL::MSG_STANDARD,
                          "[ThermalTransport::denormalize]", 3));
}

TEST(ThermalTransport, curveBesideTheNormalisedForm_staysAsItIs) {
  const TKL::MessageCapture capture;
  const std::vector<std::string> lines = {"LAMBDA = 0.8 W/mK", "THETA_POR = 0.4 m3/m3"};
  EXPECT_EQ(prepared(lines, splineOf({0, 1}, {1.002, 2}), NONE).functions[0].y.back(), 2.0);
  EXPECT_EQ(prepared(lines, splineOf({0, 1.002}, {1, 2}), NONE).functions[0].y.back(), 2.0);
  EXPECT_EQ(prepared(lines, splineOf({0.002, 1}, {1, 2}), NONE).functions[0].y.back(), 2.0);
}

TEST(ThermalTransport, normalisedMoistureCurveWithoutPorosity_isRefused) {
  const TKL::MessageCapture capture;
  EXPECT_TRUE(has(thrown([] {
                    prepared({"LAMBDA = 0.8 W/mK"}, splineOf({0, 1}, {1, 2}), NONE);
                  }),
                  "Error creating denormalized lambda(Theta_l) spline.", "[ThermalTransport::denormalize]"));
}

TEST(ThermalTransport, normalisedTemperatureCurve_isScaledWithLambda) {
  const TKL::MessageCapture capture;
  const ThermalTransport group =
      prepared({"LAMBDA = 0.8 W/mK"}, NONE, splineOf({286.15, 296.15, 306.15}, {0.9, 1.0005, 1.1}));
  EXPECT_DOUBLE_EQ(group.functions[1].y.back(), 1.1 * 0.8);
  EXPECT_TRUE(capture.has("Denormalizing lambda(T) spline.\n", TKL::MSG_STANDARD,
                          "[ThermalTransport::denormalize]", 3));
}

TEST(ThermalTransport, invalidTemperatureTable_isRefused) {
  const TKL::MessageCapture capture;
  TKL::LinearSpline falling;
  falling.x = {300.0, 290.0};
  falling.y = {1.0, 1.0};
  EXPECT_TRUE(has(thrown([&] { prepared({"LAMBDA = 0.8 W/mK"}, NONE, falling); }),
                  "Error creating denormalized lambda(T) spline.", "[ThermalTransport::denormalize]"));
}

TEST(ThermalTransportLimits, moistureCurve_isComparedWithTheParameters) {
  const TKL::MessageCapture capture;
  prepared({"LAMBDA = 0.8 W/mK", "THETA_EFF = 0.3 m3/m3"}, splineOf({0.01, 0.25}, {0.7, 1.4}), NONE);
  const std::string start = "Material 'Brick' has an invalid lambda(Theta_l) spline:\n";
  EXPECT_TRUE(warnedOfThermal(capture, start + "The minimum Theta_l value (0.01 m3/m3) should be zero!"));
  EXPECT_TRUE(warnedOfThermal(
      capture, start + "The maximum Thetal value (0.25 m3/m3) should be equal to 'THETA_EFF' (0.3 m3/m3)!"));
  EXPECT_TRUE(
      warnedOfThermal(capture, start + "The lambda-value (0.7 W/mK) at zero must match LAMBDA (0.8 W/mK)!"));
}

TEST(ThermalTransportLimits, temperatureCurve_isAskedAt23) {
  const std::string text =
      "Material 'Brick' has an invalid lambda(T) spline:\n"
      "The lambda-value (0.5 W/mK) at 23 C must match LAMBDA (0.8 W/mK)!";
  {
    const TKL::MessageCapture capture;
    prepared({"LAMBDA = 0.8 W/mK"}, NONE, splineOf({273.15, 296.15}, {0.5, 0.8}));
    EXPECT_TRUE(warnedOfThermal(capture, text));
  }
  {
    const TKL::MessageCapture capture;
    prepared({"LAMBDA = 0.8 W/mK"}, NONE, splineOf({23, 296.15}, {0.8, 0.5}));
    EXPECT_FALSE(capture.contains("invalid"));
  }
}

TEST(ThermalTransportLimits, bothCurves_areWarnedAboutWhereTheyAre1) {
  const TKL::MessageCapture capture;
  prepared({"LAMBDA = 0.8 W/mK"}, splineOf({0, 0.3}, {1, 2}), splineOf({273.15, 296.15}, {1, 2}));
  EXPECT_TRUE(warnedOfThermal(capture,
                              "Material 'Brick' has an invalid lambda(T) spline:\n"
                              "The lambda(T) scaling value (1) at 23 C must be 1!"));
  EXPECT_TRUE(warnedOfThermal(capture,
                              "Material 'Brick' has an invalid lambda(Theta_l) spline:\n"
                              "The lambda(Theta_l) scaling value (1) at 0 m3/m3 must be 1!"));
}

TEST(ThermalTransportLimits, bothCurves_passWhereTheyAreNot1) {
  const TKL::MessageCapture capture;
  prepared({"LAMBDA = 0.8 W/mK"}, splineOf({0, 0.3}, {1.002, 2}), splineOf({273.15, 296.15}, {0.998, 2}));
  EXPECT_FALSE(capture.contains("invalid"));
}

TEST(ThermalTransportLimits, valueNotAbove0_isWarnedAbout) {
  const TKL::MessageCapture capture;
  ThermalTransport group;
  group.kind = ThermalTransport::K_CONSTANT;
  group.lambda = 0.0;
  group.checkLimits(base({}));
  const std::string text = "Material 'Brick' has an invalid lambda dry-value (negativ or zero).\n";
  EXPECT_TRUE(warnedOfThermal(capture, text));
  group.kind = ThermalTransport::K_THETA_AND_T;
  group.functions = {splineOf({0, 0.3}, {2, 2}), splineOf({273, 300}, {2, 2})};
  group.checkLimits(base({}));
  EXPECT_EQ(capture.count(text), 2);
}

}  // namespace MM

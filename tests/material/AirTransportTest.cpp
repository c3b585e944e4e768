#include <sstream>

#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

const char* const PREPARE_TAG = "[AirTransport::prepareCalculation]";

Material base(const std::vector<std::string>& lines) {
  Material material;
  material.readASCIIParameterFromLine("NAME = Brick");
  for (const std::string& line : lines) material.readASCIIParameterFromLine(line);
  return material;
}

AirTransport prepared(const std::vector<std::string>& lines, const TKL::LinearSpline& table = {},
                      int direction = 0) {
  Material material = base(lines);
  AirTransport group;
  group.functions[AirTransport::F_Kg] = table;
  group.prepareCalculation(material, direction);
  return group;
}

}  // namespace

TEST(AirTransport, constant_fallsWithTheFilledPores) {
  const TKL::MessageCapture capture;
  const AirTransport group = prepared({"KG = 1e-5 s", "THETA_POR = 0.4 m3/m3", "THETA_EFF = 0.3 m3/m3"});
  EXPECT_EQ(group.kind, AirTransport::K_CONSTANT);
  EXPECT_DOUBLE_EQ(group.conductivity(0.0), 1e-5);
  EXPECT_DOUBLE_EQ(group.conductivity(0.1), 0.75e-5);
  EXPECT_DOUBLE_EQ(group.conductivity(0.5), 0.0);
  EXPECT_TRUE(capture.has("Initializing air transport functions.\n", TKL::MSG_STANDARD, PREPARE_TAG, 3));
}

TEST(AirTransport, table_isInterpolated) {
  const TKL::MessageCapture capture;
  const AirTransport group =
      prepared({"KG = 1e-4 s", "THETA_POR = 0.4 m3/m3"}, splineOf({0, 0.4}, {1e-4, 1e-6}));
  EXPECT_EQ(group.kind, AirTransport::K_SPLINE);
  EXPECT_DOUBLE_EQ(group.conductivity(0.2), 0.505e-4);
  EXPECT_FALSE(capture.contains("invalid"));
}

TEST(AirTransport, airTightMaterial_needsNothing) {
  const TKL::MessageCapture capture;
  const AirTransport group = prepared({"FLAGS = AIRTIGHT"});
  EXPECT_EQ(group.kind, AirTransport::K_NONE);
  EXPECT_DOUBLE_EQ(group.conductivity(0.0), 0.0);
  EXPECT_FALSE(capture.contains("missing"));
}

TEST(AirTransport, withoutKG_theMaterialBecomesAirTightOnce) {
  const TKL::MessageCapture capture;
  Material material = base({"FLAGS = WOOD"});
  for (int direction = 0; direction < 3; ++direction) AirTransport().prepareCalculation(material, direction);
  EXPECT_EQ(material.identification.flags, 16U + 2U);
  EXPECT_EQ(capture.count("No KG in base parameter section given. Material is set to air tight."), 1);
  EXPECT_TRUE(capture.has("No KG in base parameter section given. Material is set to air tight.",
                          TKL::MSG_WARNING, PREPARE_TAG, 1));
  EXPECT_TRUE(
      capture.has("Parameter KG missing for standard airflow model.", TKL::MSG_WARNING, PREPARE_TAG, 2));
}

TEST(AirTransport, missingKGOfV_closesTheMaterialAfterU) {
  const TKL::MessageCapture capture;
  Material material = base({"KG = 1e-5 s", "THETA_POR = 0.4 m3/m3"});
  AirTransport u, v;
  u.prepareCalculation(material, 0);
  EXPECT_FALSE(material.isAirTight());
  v.prepareCalculation(material, 1);
  EXPECT_TRUE(material.isAirTight());
  EXPECT_EQ(u.kind, AirTransport::K_CONSTANT);
  EXPECT_EQ(v.kind, AirTransport::K_NONE);
}

TEST(AirTransport, otherDirections_haveTheConductivityOfU) {
  const TKL::MessageCapture capture;
  const std::vector<std::string> lines = {"KG = 1e-5 s", "KG_V = 2e-5 s", "KG_W = 3e-5 s",
                                          "THETA_POR = 0.4 m3/m3"};
  EXPECT_DOUBLE_EQ(prepared(lines, {}, 1).KG, 1e-5);
  EXPECT_DOUBLE_EQ(prepared(lines, {}, 2).KG, 1e-5);
}

TEST(AirTransport, unknownDirection_isRefused) {
  const TKL::MessageCapture capture;
  const Records records = thrown([] { prepared({"KG = 1e-5 s"}, {}, 3); });
  EXPECT_TRUE(has(records, "Invalid value for material direction.", PREPARE_TAG));
  EXPECT_TRUE(has(records, "Error initializing air transport functionality for calculation.", PREPARE_TAG));
}

TEST(AirTransport, porosity_isThetaEffWhereThetaPorIsMissing) {
  const TKL::MessageCapture capture;
  EXPECT_DOUBLE_EQ(prepared({"KG = 1e-5 s", "THETA_EFF = 0.3 m3/m3"}).ThetaPor, 0.3);
}

TEST(AirTransport, withoutPorosity_isRefused) {
  const TKL::MessageCapture capture;
  EXPECT_TRUE(has(thrown([] { prepared({"KG = 1e-5 s"}); }),
                  "THETA_POR or THETA_EFF necessary for air flow model.", PREPARE_TAG));
}

TEST(AirTransport, airWithoutPorosity_takes1) {
  const TKL::MessageCapture capture;
  Material material = base({"KG = 1e-5 s", "FLAGS = AIR"});
  AirTransport group;
  group.prepareCalculation(material, 0);
  EXPECT_DOUBLE_EQ(group.ThetaPor, 1.0);
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_THETA_POR].value, 1.0);
  EXPECT_DOUBLE_EQ(material.thetaEff(), 1.0);
  EXPECT_EQ(material.paraStorage[Material::PS_THETA_EFF].IO_unit.name(), "m3/m3");
}

TEST(AirTransportLimits, faultyTable_isWarnedAbout) {
  const TKL::MessageCapture capture;
  prepared({"KG = 0.5 s", "THETA_POR = 0.4 m3/m3"}, splineOf({0.01, 0.3}, {0.4, 0.0}));
  const std::string start = "Material 'Brick' has an invalid Kg(Theta_l) spline:\n";
  for (const std::string end :
       {"the minimum Theta_l value (0.01 m3/m3) should be zero!",
        "the maximum Thetal value (0.3 m3/m3) should be equal to 'THETA_POR' (0.4 m3/m3)!",
        "the Kg-value (0.4 s) at zero must match KG_DRY (0.5 s)!", "the Kg spline must be higher than 0!"})
    EXPECT_TRUE(capture.has(start + end, TKL::MSG_WARNING, "[AirTransport::checkLimits]", 2)) << end;
}

TEST(AirTransportLimits, tables_mayMissTheirEndsByAThousandth) {
  const TKL::MessageCapture capture;
  prepared({"KG = 0.5 s", "THETA_POR = 0.4 m3/m3"}, splineOf({0.0009, 0.3991}, {0.4991, 0.1}));
  EXPECT_FALSE(capture.contains("invalid"));
  prepared({"KG = 0.5 s", "THETA_POR = 0.4 m3/m3"}, splineOf({0.0011, 0.3989}, {0.4989, 0.1}));
  for (const std::string text : {"should be zero!", "should be equal to 'THETA_POR'", "must match KG_DRY"})
    EXPECT_TRUE(capture.contains(text)) << text;
}

TEST(AirTransportLimits, tests_areOneSided) {
  const TKL::MessageCapture capture;
  prepared({"KG = 0.5 s", "THETA_POR = 0.4 m3/m3"}, splineOf({-0.5, 0.9}, {0.5, 0.1}));
  EXPECT_FALSE(capture.contains("invalid"));
}

TEST(VaporContactResistance, section_isRead) {
  VaporContactResistanceModel model;
  model.read(linesOf("WEIGHT_FACTOR_NEG = 0.5\nSCALING_C_NEG = 3\nFUNCTION = sd-(rh)\n0 1\n10 1\n"));
  EXPECT_DOUBLE_EQ(model.parameters[VaporContactResistanceModel::P_WEIGHT_FACTOR_POS], 1.0);
  EXPECT_DOUBLE_EQ(model.parameters[VaporContactResistanceModel::P_WEIGHT_FACTOR_NEG], 0.5);
  EXPECT_DOUBLE_EQ(model.parameters[VaporContactResistanceModel::P_SCALING_A_POS], 0.0);
  EXPECT_DOUBLE_EQ(model.parameters[VaporContactResistanceModel::P_SCALING_C_NEG], 3.0);
  EXPECT_DOUBLE_EQ(model.functions[VaporContactResistanceModel::F_sd_neg].value(0.5), 5.5);
}

TEST(VaporContactResistance, unknownWords_areWarnedAbout) {
  const TKL::MessageCapture capture;
  VaporContactResistanceModel().read(linesOf("SD_VALUE = 1\nFUNCTION = sd(rh)\n0 1\n10 1\n"));
  const char* const TAG = "[VaporContactResistanceModel::read]";
  EXPECT_TRUE(
      capture.has("Invalid or deprecated keyword 'SD_VALUE' in this section!", TKL::MSG_WARNING, TAG, 3));
  EXPECT_TRUE(capture.has("Unknown function type 'sd(rh)'.", TKL::MSG_WARNING, TAG, 3));
}

TEST(VaporContactResistance, failure_hasTheContextOfTheMaterial) {
  const TKL::MessageCapture capture;
  const Records records = thrown([] { materialOf("[VAPOR_CONTACT_RESISTANCE]\nSCALING_A_POS = x\n"); });
  EXPECT_TRUE(has(records, "Error reading vapor transport resistance section!",
                  "[VaporContactResistanceModel::read]"));
  EXPECT_TRUE(
      has(records, "Error reading material vapor transport resistance section!", "[Material::readASCII]"));
}

TEST(VaporContactResistance, parameters_areWrittenWhereTheFirstWeightIsNot1) {
  VaporContactResistanceModel model;
  model.parameters[VaporContactResistanceModel::P_SCALING_A_POS] = 4.0;
  std::ostringstream plain;
  model.write(plain, 0);
  EXPECT_EQ(plain.str(), "[VAPOR_CONTACT_RESISTANCE]\n");
  model.parameters[VaporContactResistanceModel::P_WEIGHT_FACTOR_POS] = 0.5;
  std::ostringstream weighted;
  model.write(weighted, 2);
  EXPECT_EQ(
      weighted.str(),
      "  [VAPOR_CONTACT_RESISTANCE]\n  WEIGHT_FACTOR_POS = 0.5\n  WEIGHT_FACTOR_NEG = 1\n  SCALING_A_POS = "
      "4\n  SCALING_B_POS = 0\n  SCALING_C_POS = 0\n  SCALING_A_NEG = 0\n  SCALING_B_NEG = 0\n  "
      "SCALING_C_NEG = 0\n");
}

TEST(VaporContactResistance, binaryForm_holdsTwoTablesAndEightNumbers) {
  VaporContactResistanceModel model;
  model.functions[0] = splineOf({0, 1}, {2, 3});
  model.parameters[VaporContactResistanceModel::P_SCALING_B_NEG] = 7.0;
  std::stringstream stream;
  model.writeBinary(stream);
  EXPECT_EQ(stream.str().size(), 4U * 4U + 4U * 8U + 8U * 8U);
  VaporContactResistanceModel again;
  again.readBinary(stream);
  EXPECT_EQ(again.parameters, model.parameters);
}

}  // namespace MM

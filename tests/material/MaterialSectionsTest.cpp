#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

const std::string NAMED = "[IDENTIFICATION]\nNAME = en:Brick\n";
const char* const PARAMETER_TAG = "[Material::readASCIIParameterFromLine]";

Records sectionFailure(const std::string& text, bool preV6 = false) {
  const TKL::MessageCapture capture;
  return thrown([&] { materialOf(text, preV6); });
}

Records lineFailure(const std::string& line) {
  return thrown([&] { Material().readASCIIParameterFromLine(line); });
}

}  // namespace

TEST(MaterialParameters, lineWithoutEqualSign_isRefused) {
  EXPECT_TRUE(has(lineFailure("RHO 2000"), "Expected keyword, got 'RHO 2000'!", PARAMETER_TAG));
}

TEST(MaterialParameters, keywordWithoutValue_isRefused) {
  EXPECT_TRUE(has(lineFailure("RHO ="), "Missing value to parameter RHO.", PARAMETER_TAG));
}

TEST(MaterialParameters, valueWithoutUnit_isRefused) {
  EXPECT_TRUE(
      has(lineFailure("RHO = 2000"), "Invalid format of argument '2000' to keyword 'RHO'.", PARAMETER_TAG));
}

TEST(MaterialParameters, valueInAnUnknownUnit_isRefused) {
  const Records records = lineFailure("RHO = 2000 foo");
  EXPECT_TRUE(has(records, "Invalid format of argument '2000 foo' to keyword 'RHO'.", PARAMETER_TAG));
  EXPECT_EQ(records.front().what, "Unit 'foo' not found.");
}

TEST(MaterialParameters, failureInASection_hasItsContext) {
  const Records records = sectionFailure(NAMED + "[STORAGE_BASE_PARAMETERS]\nRHO = heavy\n");
  EXPECT_TRUE(
      has(records, "Error reading material base parameter section!", "[Material::readASCIIParameters]"));
  EXPECT_TRUE(has(records, "Error reading material 'Brick'.", "[Material::readASCII]"));
}

TEST(MaterialParameters, value_isStoredInTheBaseUnit) {
  Material material;
  material.readASCIIParameterFromLine("RHO = 2 kg/dm3");
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, 2000.0);
  EXPECT_EQ(material.paraStorage[Material::PS_RHO].name, "RHO");
}

TEST(MaterialParameters, alias_setsTheCurrentKeywordWithAWarning) {
  const TKL::MessageCapture capture;
  Material material;
  material.readASCIIParameterFromLine("OPOR = 0.5 m3/m3");
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_THETA_POR].value, 0.5);
  EXPECT_EQ(material.paraStorage[Material::PS_THETA_POR].name, "THETA_POR");
  EXPECT_TRUE(
      capture.has("Keyword 'OPOR' is deprecated (new -> 'THETA_POR').", TKL::MSG_WARNING, PARAMETER_TAG, 2));
}

TEST(MaterialParameters, unknownKeyword_isOnlyWarnedAbout) {
  const TKL::MessageCapture capture;
  Material().readASCIIParameterFromLine("FOO = 1 m");
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'FOO'.", TKL::MSG_WARNING, PARAMETER_TAG, 3));
}

TEST(MaterialParameters, unknownKeywordsOfAllSections_areListed) {
  const TKL::MessageCapture capture;
  const Material material =
      materialOf(NAMED +
                 "A = 1\n[STORAGE_BASE_PARAMETERS]\nB = 1 m\n[THERMAL_STORAGE]\nC = "
                 "1\n[MOISTURE_STORAGE]\nFUNCTION = D\n"
                 "0 1\n0 1\n[MOISTURE_TRANSPORT]\nE = 1\n[HEAT_TRANSPORT]\nF = 1\n[AIR_TRANSPORT]\nG = 1\n"
                 "[VAPOR_CONTACT_RESISTANCE]\nH = 1\n");
  EXPECT_EQ(material.unknownKeywords(), (std::vector<std::string>{"A", "B", "C", "D", "E", "F", "G", "H"}));
}

TEST(MaterialParameters, unknownKeywordsOfAnOlderFile_areListed) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[IDENTIFICATION]\nFOO = 1\nwords alone\n[PARAMETER]\nRHOO = 1 kg/m3\nOPOR = 0.3 m3/m3\n", true);
  EXPECT_EQ(material.unknownKeywords(), (std::vector<std::string>{"FOO", "words alone", "RHOO"}));
}

TEST(MaterialParameters, nameAndFlags_goToTheIdentification) {
  Material material;
  material.readASCIIParameterFromLine("NAME = Old");
  material.readASCIIParameterFromLine("FLAGS = AIRTIGHT");
  EXPECT_EQ(material.identification.name.string("en"), "Old");
  EXPECT_TRUE(material.isAirTight());
}

TEST(MaterialParameters, sectionOfAKeyword_doesNotMatter) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[MECHANICAL_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\n[TRANSPORT_BASE_PARAMETERS]\nRHO = 1 kg/m3\nALPHA = "
      "1 "
      "1/K\n");
  EXPECT_DOUBLE_EQ(material.paraTransport[Material::PT_LAMBDA].value, 0.8);
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, 1.0);
  EXPECT_DOUBLE_EQ(material.paraMechanical[Material::PM_ALPHA].value, 1.0);
}

TEST(MaterialParameters, repeatedKeyword_countsWhereItIsReadLast) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[MECHANICAL_BASE_PARAMETERS]\nRHO = 3 kg/m3\n[STORAGE_BASE_PARAMETERS]\nRHO = 2 kg/m3\n"
      "[TRANSPORT_BASE_PARAMETERS]\nRHO = 1 kg/m3\n");
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, 3.0);
}

TEST(MaterialSections, title_isRecognisedWithEqualSign) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[MATERIAL]\nMOISTTRANS =\nFUNCTION = lgKl(Ol)\n0 0.1 0.3\n-12 -11 -9\n[PARAMETER]\nFLAGS = "
      "WATERTIGHT AIRTIGHT\n",
      true);
  EXPECT_EQ(material.moistureTransport[0].functions[MoistureTransport::F_lgKl].size(), 3U);
}

TEST(MaterialSections, measuredData_areIgnored) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(NAMED + "[MEASURED_DATA]\nwhat ever\nstands here = \n");
  EXPECT_EQ(material.name(), "Brick");
}

TEST(MaterialSections, commentLines_areSkipped) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(materialOf("; a\n# b\n[IDENTIFICATION]\n  ; c\nNAME = en:Brick\n").name(), "Brick");
}

TEST(MaterialSections, textBeforeTheFirstTitle_isRefused) {
  EXPECT_TRUE(has(sectionFailure("RHO = 1 kg/m3\n"),
                  "Expected section header in first non-empty line:\n'RHO = 1 kg/m3'",
                  "[TKL::explode_sections]"));
}

TEST(MaterialSections, failureOfAMaterialWithoutName_namesTheFile) {
  EXPECT_TRUE(has(sectionFailure("[IDENTIFICATION]\nNAME\n"), "Error reading material file ''.",
                  "[Material::readASCII]"));
}

TEST(MaterialSections, materialWithoutVAndW_isIsotropic) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(Material().directions, 3);
  EXPECT_EQ(materialOf(NAMED).directions, 0);
}

TEST(MaterialSections, vAndWData_makeThreeDirections) {
  const TKL::MessageCapture capture;
  const std::string heat = "FUNCTION = lambda(T)\n273 373\n1.5 2.5\n";
  const std::string parameters =
      "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 1 W/mK\nLAMBDA_V = 2 W/mK\nLAMBDA_W = 3 W/mK\n";
  EXPECT_EQ(materialOf(parameters + "[HEAT_TRANSPORT_V]\n" + heat).directions, 1);
  const Material material =
      materialOf(parameters + "[HEAT_TRANSPORT_V]\n" + heat + "[HEAT_TRANSPORT_W]\n" + heat);
  EXPECT_EQ(material.directions, 2);
  EXPECT_EQ(material.thermalTransport[0].kind, ThermalTransport::K_CONSTANT);
  EXPECT_EQ(material.thermalTransport[2].kind, ThermalTransport::K_T);
  EXPECT_DOUBLE_EQ(material.thermalTransport[1].lambda, 2.0);
  EXPECT_DOUBLE_EQ(material.thermalTransport[2].lambda, 3.0);
}

TEST(MaterialSections, wDataWithoutVData_areRefused) {
  EXPECT_TRUE(has(sectionFailure(NAMED + "[AIR_TRANSPORT_W]\nFUNCTION = Kg(Theta_l)\n0 1\n1 1\n"),
                  "Found W-direction parameters but no V-direction parameters are given. Invalid anisotropic "
                  "material format!",
                  "[Material::readASCII]"));
}

TEST(MaterialSectionsPreV6, generalWithContent_replacesParameter) {
  const TKL::MessageCapture capture;
  const Material material =
      materialOf("[MATERIAL]\n[GENERAL]\nRHO = 1 kg/m3\n[PARAMETER]\nRHO = 2 kg/m3\nCE = 3 J/kgK\n", true);
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_RHO].value, 1.0);
  EXPECT_FALSE(material.paraStorage[Material::PS_CE].isSet());
  const Material other = materialOf("[GENERAL]\n[PARAMETER]\nRHO = 2 kg/m3\n", true);
  EXPECT_DOUBLE_EQ(other.paraStorage[Material::PS_RHO].value, 2.0);
}

TEST(MaterialSectionsPreV6, functionSections_goToTheirGroups) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[MRC]\nFUNCTION = Ol(pC)\n0 12\n0.3 0\n[MOISTTRANS]\nFUNCTION = My(Phi)\n0 1\n5 5\n"
      "[HEATTRANS]\nFUNCTION = lambda(Ol)\n0 0.3\n0.8 1.2\n[AIRTRANS]\nFUNCTION = Kg(Ol)\n0 0.3\n1e-4 1e-5\n"
      "[PCMMATERIAL]\nFUNCTION = u(T)\n273 300\n0 1e5\n",
      true);
  EXPECT_EQ(material.moistureStorage.functions[MoistureStorage::F_Theta_pC_de].size(), 2U);
  EXPECT_EQ(material.moistureTransport[0].functions[MoistureTransport::F_mew].size(), 2U);
  EXPECT_EQ(material.thermalTransport[0].functions[ThermalTransport::F_lambda_Theta].size(), 2U);
  EXPECT_EQ(material.airTransport[0].functions[AirTransport::F_Kg].size(), 2U);
  EXPECT_EQ(material.thermalStorage.Tu.size(), 2U);
}

TEST(MaterialSectionsPreV6, failingParameter_showsTheWholeSection) {
  EXPECT_TRUE(has(sectionFailure("[PARAMETER]\nRHO = 1 kg/m3\nCE = warm\n", true),
                  "Error reading basic parameters from string:\n-----\nRHO = 1 kg/m3\nCE = warm\n\n-----\n",
                  "[Material::readASCIIPreV6Parameters]"));
}

TEST(MaterialPrepare, failure_namesTheMaterial) {
  EXPECT_TRUE(has(sectionFailure(NAMED + "[THERMAL_STORAGE]\nFUNCTION = u(T)\n273 300\n5 5\n"),
                  "Error initializing material 'Brick'.", "[Material::prepareCalculation]"));
}

TEST(MaterialPrepare, theta80OfAPorousMaterial_isThatOfItsCurve) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[STORAGE_BASE_PARAMETERS]\nTHETA_EFF = 0.3 m3/m3\n[MOISTURE_STORAGE]\nFUNCTION = Theta_l(RH)\n0 1\n0 "
      "0.3\n");
  EXPECT_NEAR(material.paraStorage[Material::PS_THETA_80].value, 0.8 * 0.3, 1e-12);
  EXPECT_EQ(material.paraStorage[Material::PS_THETA_80].IO_unit.name(), "m3/m3");
}

TEST(MaterialPrepare, theta80OfAir_isItsVapourDensity) {
  const TKL::MessageCapture capture;
  const Material material = materialOf("[IDENTIFICATION]\nFLAGS = AIR AIR_TIGHT\n");
  EXPECT_NEAR(material.paraStorage[Material::PS_THETA_80].value,
              TKL::pSat(293.15) * 0.8 / (461.89 * 293.15) / 1000.0, 1e-12);
}

TEST(MaterialPrepare, theta80ThatIsGiven_stays) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[IDENTIFICATION]\nFLAGS = AIR AIR_TIGHT\n[STORAGE_BASE_PARAMETERS]\nTHETA_80 = 0.01 m3/m3\n");
  EXPECT_DOUBLE_EQ(material.paraStorage[Material::PS_THETA_80].value, 0.01);
}

TEST(MaterialPrepare, theta80WithoutCurve_staysUnset) {
  const TKL::MessageCapture capture;
  EXPECT_FALSE(materialOf(NAMED).paraStorage[Material::PS_THETA_80].isSet());
}

TEST(MaterialCapabilities, porousMaterial_hasAllFour) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[STORAGE_BASE_PARAMETERS]\nTHETA_EFF = 0.3 m3/m3\nTHETA_POR = 0.35 m3/m3\n"
      "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\nMEW = 10 -\nKG = 1e-5 s\n"
      "[MOISTURE_STORAGE]\nFUNCTION = Theta_l(RH)\n0 1\n0 0.3\n"
      "[MOISTURE_TRANSPORT]\nFUNCTION = lgKl(Theta_l)\n0 0.3\n-12 -9\n");
  EXPECT_EQ(material.transportCapabilities, 15);
}

TEST(MaterialCapabilities, materialWithoutLambda_conductsNoHeat) {
  const TKL::MessageCapture capture;
  const Material material = materialOf("[IDENTIFICATION]\nFLAGS = AIR AIR_TIGHT\n");
  EXPECT_FALSE(material.can(Material::TC_HEAT));
  EXPECT_EQ(material.thermalTransport[0].kind, ThermalTransport::K_NONE);
  EXPECT_EQ(capture.count("Parameter LAMBDA missing for thermal transport model."), 1);
}

TEST(MaterialCapabilities, materialWithoutStorage_movesNoMoisture) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[IDENTIFICATION]\nFLAGS = WATER_TIGHT\n[STORAGE_BASE_PARAMETERS]\nTHETA_POR = 0.3 m3/m3\n"
      "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\nMEW = 10 -\nKG = 1e-5 s\n");
  EXPECT_EQ(material.moistureTransport[0].vaporKind, MoistureTransport::V_MEW);
  EXPECT_EQ(material.transportCapabilities, 1 << Material::TC_HEAT | 1 << Material::TC_AIR);
}

TEST(MaterialCapabilities, air_movesVapourButNoLiquid) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[IDENTIFICATION]\nFLAGS = AIR AIR_TIGHT\n[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.025 W/mK\nMEW = 1 "
      "-\n");
  EXPECT_EQ(material.transportCapabilities, 1 << Material::TC_HEAT | 1 << Material::TC_VAPOUR);
}

TEST(MaterialCapabilities, directionWithoutAirConductivity_closesAllDirections) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[STORAGE_BASE_PARAMETERS]\nTHETA_POR = 0.3 m3/m3\n[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 1 W/mK\n"
      "LAMBDA_V = 1 W/mK\nKG = 1e-5 s\n[HEAT_TRANSPORT_V]\nFUNCTION = lambda(T)\n273 373\n1.5 2.5\n");
  EXPECT_EQ(material.airTransport[0].kind, AirTransport::K_CONSTANT);
  EXPECT_EQ(material.transportCapabilities, 1 << Material::TC_HEAT);
}

TEST(MaterialCapabilities, tightFlags_closeTheirFlow) {
  const TKL::MessageCapture capture;
  const Material material = materialOf(
      "[IDENTIFICATION]\nFLAGS = AIR_TIGHT VAPOR_TIGHT WATER_TIGHT\n"
      "[STORAGE_BASE_PARAMETERS]\nTHETA_EFF = 0.3 m3/m3\n[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\n"
      "[MOISTURE_STORAGE]\nFUNCTION = Theta_l(RH)\n0 1\n0 0.3\n");
  EXPECT_EQ(material.transportCapabilities, 1 << Material::TC_HEAT);
}

TEST(MaterialBase, porosity_isThetaPorElseThetaEffElse1) {
  Material material;
  EXPECT_DOUBLE_EQ(material.thetaPor(), 1.0);
  material.readASCIIParameterFromLine("THETA_EFF = 0.3 m3/m3");
  EXPECT_DOUBLE_EQ(material.thetaPor(), 0.3);
  material.readASCIIParameterFromLine("THETA_POR = 0.4 m3/m3");
  EXPECT_DOUBLE_EQ(material.thetaPor(), 0.4);
}

TEST(MaterialBase, heatCapacityWithoutDensity_is0) {
  Material material;
  material.readASCIIParameterFromLine("CE = 1000 J/kgK");
  EXPECT_DOUBLE_EQ(material.rhoCDry(), 0.0);
}

TEST(MaterialBase, checkParameter_warnsOutsideTheRange) {
  const TKL::MessageCapture capture;
  TKL::Parameter parameter;
  EXPECT_FALSE(MaterialBase::checkParameter(parameter, "FOO", "a model", "[tag]"));
  parameter.set("FOO", 0.9e-20, TKL::Unit("m"));
  EXPECT_FALSE(MaterialBase::checkParameter(parameter, "FOO", "a model", "[tag]"));
  parameter.set("FOO", 1e-20, TKL::Unit("m"));
  EXPECT_TRUE(MaterialBase::checkParameter(parameter, "FOO", "a model", "[tag]"));
  EXPECT_EQ(capture.messages.size(), 2U);
  EXPECT_TRUE(capture.has("Parameter FOO missing for a model.", TKL::MSG_WARNING, "[tag]", 2));
}

}  // namespace MM

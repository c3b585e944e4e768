#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "project/VelBoundaryCond.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

using BC = VelBoundaryCond;
const char* const BOUNDARYCOND_READ = "[VelBoundaryCond::read]";

BC readBoundaryCond(const std::string& text) {
  return readRecord<BC>(text);
}

const std::vector<std::string> BOUNDARYCOND_PARAMETERS = {"EXCOEFF",
                                                          "EXCH_SLOPE",
                                                          "EXCH_EXP",
                                                          "EXPCOEFF",
                                                          "MINRTEMP",
                                                          "MINRFLUX",
                                                          "SURABSOR",
                                                          "GRDREFLE",
                                                          "SUREMISS",
                                                          "GRDEMISS",
                                                          "SOLAR_ETA0",
                                                          "SOLAR_K0",
                                                          "SOLAR_K1",
                                                          "SD_VALUE",
                                                          "HP_RADIUS",
                                                          "HP_LENGTH",
                                                          "HP_CAPACITY",
                                                          "HP_TRANSFER",
                                                          "HP_SUPPTEMP",
                                                          "HP_QTHERM_T0",
                                                          "HP_COP_T0",
                                                          "HP_TMIN",
                                                          "HP_COP_MIN",
                                                          "HP_TMAX",
                                                          "HP_COP_MAX",
                                                          "HP_RELAX",
                                                          "HP_TEMPER_UPPER_LIMIT",
                                                          "HP_TEMPER_UPPER_HYST",
                                                          "HP_TEMPER_LOWER_LIMIT",
                                                          "HP_TEMPER_LOWER_HYST",
                                                          "AP_FLOWCOEFF"};

}  // namespace

TEST(VelBoundaryCondRead, everyParameter_isRead) {
  EXPECT_TRUE(areNumbered(readBoundaryCond(numberedParameters(BOUNDARYCOND_PARAMETERS, "K")).para,
                          BOUNDARYCOND_PARAMETERS, "K"));
}

TEST(VelBoundaryCondRead, everyClimateName_isRead) {
  EXPECT_TRUE(areClimateNames(readBoundaryCond(climateLines()).climateNames));
}

TEST(VelBoundaryCondRead, everyOtherKeyword_isRead) {
  const BC bc = readBoundaryCond(
      "TYPE = HEATCOND\nNAME = outside air\nKIND = EXCHANGE\nSTART_TIME = 2 h\nEND_TIME = 3 d\n"
      "FLAGS = USE_VAPOR_PRESSURE\nWALLDATA = south\nSOLUTION = brine\nROOM = kitchen");
  EXPECT_EQ(bc.condition, BC::C_HEATCOND);
  EXPECT_EQ(bc.name, "outside air");
  EXPECT_EQ(bc.kind, BC::K_EXCHANGE);
  EXPECT_DOUBLE_EQ(bc.startTime.value, 7200.0);
  EXPECT_EQ(bc.startTime.name, "START_TIME");
  EXPECT_DOUBLE_EQ(bc.endTime.value, 259200.0);
  EXPECT_EQ(bc.flags.to_ulong(), 1u);
  EXPECT_EQ(bc.idNames[BC::I_WALLDATA], "south");
  EXPECT_EQ(bc.idNames[BC::I_SOLUTION], "brine");
  EXPECT_EQ(bc.idNames[BC::I_ROOM], "kitchen");
}

TEST(VelBoundaryCondRead, allKeywordsTogether_areRead) {
  const BC bc =
      readBoundaryCond(climateLines() +
                       "TYPE = RAIN\nKIND = STDRAIN\nNAME = all\nSTART_TIME = 1 s\nEND_TIME = 2 s\nFLAGS = "
                       "INCLUDE_RH_CLOUD\nWALLDATA = w\nSOLUTION = s\nROOM = r\n" +
                       numberedParameters(BOUNDARYCOND_PARAMETERS, "K"));
  EXPECT_TRUE(areNumbered(bc.para, BOUNDARYCOND_PARAMETERS, "K"));
  EXPECT_TRUE(areClimateNames(bc.climateNames));
  EXPECT_EQ(bc.condition, BC::C_RAIN);
  EXPECT_EQ(bc.kind, BC::K_STDRAIN);
  EXPECT_EQ(bc.name + bc.idNames[0] + bc.idNames[1] + bc.idNames[2], "allwsr");
  EXPECT_EQ(bc.startTime.value, 1.0);
  EXPECT_EQ(bc.endTime.value, 2.0);
  EXPECT_EQ(bc.flags.to_ulong(), 2u);
}

TEST(VelBoundaryCondRead, everyType_hasItsIndex) {
  const std::vector<std::string> types = {"HEATCOND", "VAPDIFF",  "RAIN",    "SHWRAD",   "LOWRAD",
                                          "WATCONTC", "AIRPRESS", "VOCDIFF", "SOLCONTC", "ROOM"};
  ASSERT_EQ(types.size(), static_cast<std::size_t>(BC::NUM_C));
  for (std::size_t k = 0; k < types.size(); ++k) {
    EXPECT_EQ(readBoundaryCond("TYPE = " + types[k]).condition, static_cast<BC::condition_t>(k)) << types[k];
  }
}

TEST(VelBoundaryCondRead, everyKind_hasItsIndex) {
  const std::vector<std::string> kinds = {"SURFVAL",     "IMPFLUX", "EXCHANGE", "EXCHANGE_VEL", "HEATPIPE",
                                          "STDRAIN",     "SUNRADM", "LRADCOMP", "SOLARCOLL",    "BOLTZMAN",
                                          "HYDROSTATIC", "DEFAULT", "FLOWCOEFF"};
  ASSERT_EQ(kinds.size(), static_cast<std::size_t>(BC::NUM_K));
  for (std::size_t k = 0; k < kinds.size(); ++k) {
    EXPECT_EQ(readBoundaryCond("KIND = " + kinds[k]).kind, static_cast<BC::kind_t>(k)) << kinds[k];
  }
}

TEST(VelBoundaryCondRead, typeAndKind_areOnePastTheLastIfNotSet) {
  const BC bc = readBoundaryCond("NAME = n");
  EXPECT_EQ(bc.condition, 10);
  EXPECT_EQ(bc.kind, 13);
}

TEST(VelBoundaryCondRead, allElse_isEmptyByDefault) {
  const BC bc;
  EXPECT_FALSE(bc.startTime.isSet());
  EXPECT_FALSE(bc.endTime.isSet());
  for (const TKL::Parameter& parameter : bc.para) EXPECT_FALSE(parameter.isSet());
  for (const std::string& name : bc.climateNames) EXPECT_TRUE(name.empty());
  for (const VelClimateCond* climate : bc.climate) EXPECT_EQ(climate, nullptr);
  EXPECT_TRUE(bc.flags.none());
  EXPECT_FALSE(bc.used);
  EXPECT_EQ(bc.wallData, nullptr);
}

TEST(VelBoundaryCondRead, unknownType_fails) {
  EXPECT_EQ(
      thrownByReading<BC>("TYPE = MAGIC"),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelBoundaryCond::condition_t' and "
              "keyword 'MAGIC'.",
              "[KeywordList::Enumeration]"}));
}

TEST(VelBoundaryCondRead, unknownKind_fails) {
  EXPECT_EQ(
      thrownByReading<BC>("KIND = MAGIC"),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelBoundaryCond::kind_t' and keyword "
              "'MAGIC'.",
              "[KeywordList::Enumeration]"}));
}

TEST(VelBoundaryCondRead, flagsLine_setsTheBitsOfItsWords) {
  const BC bc = readBoundaryCond("FLAGS = INCLUDE_GROUND \t USE_VAPOR_PRESSURE");
  EXPECT_TRUE(bc.flags.test(2));
  EXPECT_TRUE(bc.flags.test(0));
  EXPECT_FALSE(bc.flags.test(1));
}

TEST(VelBoundaryCondRead, flagsLine_clearsTheFlagsBefore) {
  const BC bc = readBoundaryCond("FLAGS = INCLUDE_GROUND\nFLAGS = USE_VAPOR_PRESSURE");
  EXPECT_EQ(bc.flags.to_ulong(), 1u);
}

TEST(VelBoundaryCondRead, oldFlagWords_areKnown) {
  const BC bc = readBoundaryCond("FLAGS = INCL_RH_CL INCL_GROUND");
  EXPECT_TRUE(bc.flags.test(BC::F_INCLUDE_RH_CLOUD));
  EXPECT_TRUE(bc.flags.test(BC::F_INCLUDE_GROUND));
}

TEST(VelBoundaryCondRead, unknownFlag_fails) {
  EXPECT_EQ(
      thrownByReading<BC>("FLAGS = MAGIC"),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelBoundaryCond::flag_t' and keyword "
              "'MAGIC'.",
              "[KeywordList::Enumeration]"}));
}

TEST(VelBoundaryCondRead, oldFlagKeywords_workWithAWarning) {
  TKL::MessageCapture capture;
  const BC bc = readBoundaryCond("INCL_RH_CL = 1\nINCL_GROUND = 1");
  EXPECT_TRUE(bc.flags.test(BC::F_INCLUDE_RH_CLOUD));
  EXPECT_TRUE(bc.flags.test(BC::F_INCLUDE_GROUND));
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'INCL_RH_CL' in this section!", TKL::MSG_WARNING,
                          BOUNDARYCOND_READ, 3));
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'INCL_GROUND' in this section!", TKL::MSG_WARNING,
                          BOUNDARYCOND_READ, 3));
}

TEST(VelBoundaryCondRead, oldFlagKeywordWithZero_clearsTheFlag) {
  TKL::MessageCapture capture;
  const BC bc = readBoundaryCond("FLAGS = INCLUDE_GROUND\nINCL_GROUND = 0");
  EXPECT_TRUE(bc.flags.none());
}

TEST(VelBoundaryCondRead, oldFlagKeywordWithAWord_hasNoEffect) {
  TKL::MessageCapture capture;
  EXPECT_TRUE(readBoundaryCond("INCL_GROUND = yes\nINCL_RH_CL = 2").flags.none());
}

TEST(VelBoundaryCondRead, shwradAsKeyword_isTheClimate) {
  const BC bc = readBoundaryCond("TYPE = SHWRAD\nSHWRAD = sun");
  EXPECT_EQ(bc.condition, BC::C_SHWRAD);
  EXPECT_EQ(bc.climateNames[VelClimateCond::C_SHWRAD], "sun");
}

TEST(VelBoundaryCondRead, oldClimateKeyword_isKnown) {
  EXPECT_EQ(readBoundaryCond("Temper = air").climateNames[VelClimateCond::C_TEMPER], "air");
  EXPECT_EQ(readBoundaryCond("HEATFLUX = lamp").climateNames[VelClimateCond::C_HEATFLUXDENS], "lamp");
}

TEST(VelBoundaryCondRead, unreadableParameter_fails) {
  EXPECT_EQ(thrownByReading<BC>("EXCOEFF = lots"),
            (Thrown{"Invalid parameter value 'lots' for keyword 'EXCOEFF'!", BOUNDARYCOND_READ}));
  EXPECT_EQ(thrownByReading<BC>("START_TIME = now"),
            (Thrown{"Invalid parameter value 'now' for keyword 'START_TIME'!", BOUNDARYCOND_READ}));
  EXPECT_EQ(thrownByReading<BC>("END_TIME = 5"),
            (Thrown{"Invalid parameter value '5' for keyword 'END_TIME'!", BOUNDARYCOND_READ}));
}

TEST(VelBoundaryCondRead, parameter_isStoredInItsBaseUnit) {
  EXPECT_DOUBLE_EQ(readBoundaryCond("MINRTEMP = 1 C").para[BC::P_MINRTEMP].value, 274.15);
}

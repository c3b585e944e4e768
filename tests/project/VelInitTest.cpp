#include "project/VelInit.h"

#include <gtest/gtest.h>

#include "keywords/UnknownKeywords.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using TKL::MessageCapture;
using TKL::Thrown;
using TKL::thrownBy;

VelInit readGeneral(const std::string& lines) {
  VelInit init;
  init.readGeneralParameters(SectionText(lines));
  return init;
}

TEST(VelInit, defaults) {
  const VelInit init;
  EXPECT_TRUE(init.balanceEquations.none());
  EXPECT_TRUE(init.useKirchhoff);
  EXPECT_FALSE(init.useGravity);
  EXPECT_FALSE(init.useBuoyancy);
  EXPECT_FALSE(init.useHydrostatic);
  EXPECT_EQ(init.startYear, 2000U);
  EXPECT_EQ(init.startTime, 0U);
  EXPECT_FALSE(init.vocDatabase.isValid());
  EXPECT_EQ(init.vocIds, "");
}

TEST(VelInit, defaultParameters_haveNameValueAndUnit) {
  const VelInit init;
  EXPECT_EQ(init.pressureUpdateInterval.name, "PRESSURE_UPDATE_INTERVAL");
  EXPECT_DOUBLE_EQ(init.pressureUpdateInterval.value, 600.0);
  EXPECT_EQ(init.pressureUpdateInterval.IO_unit.name(), "min");
  EXPECT_EQ(init.externalModelUpdateInterval.name, "EXTERNAL_MODEL_UPDATE_INTERVAL");
  EXPECT_DOUBLE_EQ(init.externalModelUpdateInterval.value, 600.0);
  EXPECT_EQ(init.duration.name, "DURATION");
  EXPECT_DOUBLE_EQ(init.duration.value, 10 * 86400.0);
  EXPECT_EQ(init.isothermalTRef.name, "ISOTHERMAL_T_REF");
  EXPECT_DOUBLE_EQ(init.isothermalTRef.value, 293.15);
}

TEST(VelInit, clear_bringsTheDefaultsBack) {
  VelInit init = readGeneral("BALANCE_EQUATIONS = ENERGY\nDURATION = 1 h\nUSE_KIRCHHOFF = no\nVOC_IDS = 1 2");
  init.solverSettings.cvodeSettings.relTol = 1.0;
  init.saltSettings.useDensity = false;
  init.clear();
  EXPECT_TRUE(init.balanceEquations.none());
  EXPECT_DOUBLE_EQ(init.duration.value, 10 * 86400.0);
  EXPECT_TRUE(init.useKirchhoff);
  EXPECT_EQ(init.vocIds, "");
  EXPECT_DOUBLE_EQ(init.solverSettings.cvodeSettings.relTol, 1e-5);
  EXPECT_TRUE(init.saltSettings.useDensity);
}

TEST(VelInit, emptySection_isValid) {
  VelInit init;
  EXPECT_NO_THROW(init.read(SectionText()));
}

TEST(VelInit, read_handsEachSubsectionToItsReader) {
  VelInit init;
  init.read(
      SectionText("[GENERAL]\nSTART_YEAR = 2007\n[SALT_SETTINGS]\nUSE_OVERSATURATION = yes\n"
                  "[SOLVER_SETTINGS]\nREL_TOL = 1e-4\n"));
  EXPECT_EQ(init.startYear, 2007U);
  EXPECT_TRUE(init.saltSettings.useOversaturation);
  EXPECT_DOUBLE_EQ(init.solverSettings.cvodeSettings.relTol, 1e-4);
}

TEST(VelInit, read_subsectionTwice_linesAddUp) {
  VelInit init;
  init.read(SectionText("GENERAL\nSTART_YEAR = 2007\nSALT_SETTINGS\nGENERAL=\nSTART_TIME = 60\n"));
  EXPECT_EQ(init.startYear, 2007U);
  EXPECT_EQ(init.startTime, 60U);
}

TEST(VelInit, read_lineBeforeHeader_throws) {
  VelInit init;
  EXPECT_EQ(thrownBy([&] { init.read(SectionText("START_YEAR = 2007")); }),
            (Thrown{"Expected subsection header, got: 'START_YEAR = 2007'!", "[VelInit::read]"}));
}

TEST(VelInit, read_lowerCaseHeader_isNone) {
  VelInit init;
  EXPECT_EQ(thrownBy([&] { init.read(SectionText("[general]")); }),
            (Thrown{"Expected subsection header, got: 'general'!", "[VelInit::read]"}));
}

TEST(VelInit, read_emptyLineBeforeHeader_throws) {
  VelInit init;
  EXPECT_EQ(thrownBy([&] { init.read(SectionText("\n[GENERAL]\n")); }),
            (Thrown{"Expected subsection header, got: ''!", "[VelInit::read]"}));
}

TEST(VelInit, read_generalGoesBeforeSaltAndSaltBeforeSolver) {
  const std::string solver = "[SOLVER_SETTINGS]\nsolver\n";
  const std::string salt = "[SALT_SETTINGS]\nsalt\n";
  const std::string general = "[GENERAL]\ngeneral\n";
  VelInit init;
  EXPECT_EQ(thrownBy([&] { init.read(SectionText(solver + salt + general)); }),
            (Thrown{"Expected keyword, got 'general'!", "[VelInit::readGeneralParameters]"}));
  EXPECT_EQ(thrownBy([&] { init.read(SectionText(solver + salt)); }),
            (Thrown{"Expected keyword, got 'salt'!", "[VelSaltSettings::read]"}));
}

TEST(VelInit, read_errorInSubsection_keepsItsLineNumber) {
  VelInit init;
  try {
    init.read(SectionText("[GENERAL]\nSTART_YEAR = 2007\nnonsense\n", 11));
    FAIL();
  } catch (const TKL::Exception& error) {
    EXPECT_EQ(error.inputLine(), 13);
  }
}

TEST(VelInit, balanceEquations_setTheirBits) {
  EXPECT_EQ(readGeneral("BALANCE_EQUATIONS = ENERGY MOISTURE AIR").balanceEquations.to_ulong(),
            (1U << 0) + (1U << 1) + (1U << 3));
  EXPECT_EQ(readGeneral("BALANCE_EQUATIONS = \tPOLLUTANT  SALT\tICE").balanceEquations.to_ulong(),
            (1U << 2) + (1U << 4) + (1U << 5));
}

TEST(VelInit, balanceEquations_secondLineReplacesTheFirst) {
  EXPECT_EQ(
      readGeneral("BALANCE_EQUATIONS = ENERGY\nBALANCE_EQUATIONS = MOISTURE").balanceEquations.to_ulong(),
      1U << 1);
}

TEST(VelInit, balanceEquations_lowerCase_throws) {
  EXPECT_EQ(thrownBy([] { readGeneral("BALANCE_EQUATIONS = energy"); }),
            (Thrown{"Cannot determine enumeration value for enumeration type 'VelInit::balance_equations_t' "
                    "and keyword 'energy'.",
                    "[KeywordList::Enumeration]"}));
}

TEST(VelInit, switches_areSetByYesInAnyCase) {
  const VelInit init =
      readGeneral("USE_KIRCHHOFF = no\nUSE_GRAVITY = yes\nUSE_BUOYANCY = YES\nUSE_HYDROSTATIC = Yes");
  EXPECT_FALSE(init.useKirchhoff);
  EXPECT_TRUE(init.useGravity);
  EXPECT_TRUE(init.useBuoyancy);
  EXPECT_TRUE(init.useHydrostatic);
}

TEST(VelInit, switches_trueAndOneAreNoWithoutComplaint) {
  const MessageCapture messages;
  EXPECT_FALSE(readGeneral("USE_GRAVITY = true").useGravity);
  EXPECT_FALSE(readGeneral("USE_KIRCHHOFF = 1").useKirchhoff);
  EXPECT_TRUE(messages.messages.empty());
}

TEST(VelInit, newKeywords_setOneSwitchEach) {
  EXPECT_FALSE(readGeneral("USE_GRAVITY = yes").useBuoyancy);
  EXPECT_FALSE(readGeneral("USE_BUOYANCY = yes").useGravity);
}

TEST(VelInit, parameters_areReadWithTheirUnits) {
  const VelInit init = readGeneral(
      "PRESSURE_UPDATE_INTERVAL = 1 h\nEXTERNAL_MODEL_UPDATE_INTERVAL = 30 s\nDURATION = 2 d\n"
      "ISOTHERMAL_T_REF = 10 C");
  EXPECT_DOUBLE_EQ(init.pressureUpdateInterval.value, 3600.0);
  EXPECT_DOUBLE_EQ(init.externalModelUpdateInterval.value, 30.0);
  EXPECT_DOUBLE_EQ(init.duration.value, 2 * 86400.0);
  EXPECT_DOUBLE_EQ(init.isothermalTRef.value, 283.15);
}

TEST(VelInit, parameterWithoutNumber_throws) {
  for (const std::string keyword :
       {"PRESSURE_UPDATE_INTERVAL", "EXTERNAL_MODEL_UPDATE_INTERVAL", "DURATION", "ISOTHERMAL_T_REF"})
    EXPECT_EQ(thrownBy([&] { readGeneral(keyword + " = long"); }),
              (Thrown{"Invalid parameter value 'long' for keyword '" + keyword + "'!",
                      "[VelInit::readGeneralParameters]"}));
}

TEST(VelInit, startTimes_arePlainNumbers) {
  const VelInit init = readGeneral("START_YEAR = 1999\nSTART_TIME = 7200");
  EXPECT_EQ(init.startYear, 1999U);
  EXPECT_EQ(init.startTime, 7200U);
}

TEST(VelInit, startTime_noNumber_throws) {
  EXPECT_EQ(thrownBy([] { readGeneral("START_TIME = noon"); }),
            (Thrown{"Could not convert 'noon' into value.", "[string2val]"}));
}

TEST(VelInit, startYear_negativeNumber_wraps) {
  EXPECT_EQ(readGeneral("START_YEAR = -1").startYear, 4294967295U);
}

TEST(VelInit, pollutantKeys_areKeptAsWritten) {
  const VelInit init = readGeneral("VOC_DATABASE = $(VOC_DIR)/voc.txt\nVOC_IDS = 3, 17 a=b");
  EXPECT_EQ(init.vocDatabase.str(), "$(VOC_DIR)/voc.txt");
  EXPECT_EQ(init.vocIds, "3, 17 a=b");
}

TEST(VelInit, lineWithoutEqualSign_throws) {
  EXPECT_EQ(thrownBy([] { readGeneral("DURATION 10 d"); }),
            (Thrown{"Expected keyword, got 'DURATION 10 d'!", "[VelInit::readGeneralParameters]"}));
}

TEST(VelInit, emptyValue_throws) {
  EXPECT_EQ(thrownBy([] { readGeneral("DURATION ="); }),
            (Thrown{"Missing value for keyword 'DURATION'!", "[VelInit::readGeneralParameters]"}));
}

TEST(VelInit, unknownKeyword_warnsAndGoesOn) {
  const MessageCapture messages;
  EXPECT_EQ(readGeneral("DURATOIN = 3 d\nSTART_YEAR = 1").startYear, 1U);
  EXPECT_TRUE(messages.has("Invalid or deprecated keyword 'DURATOIN' in this section!", TKL::MSG_WARNING,
                           "[VelInit::readGeneralParameters]", 3));
}

/// An old keyword with its warning.
VelInit readDeprecated(const std::string& keyword, const std::string& value, const std::string& before = "") {
  const MessageCapture messages;
  const VelInit init = readGeneral(before + keyword + " = " + value);
  EXPECT_TRUE(messages.has("Invalid or deprecated keyword '" + keyword + "' in this section!",
                           TKL::MSG_WARNING, "[VelInit::readGeneralParameters]", 3));
  return init;
}

TEST(VelInit, oldAirFlowKeywords_setAir) {
  EXPECT_TRUE(readDeprecated("INCLUDE_AIR_FLOW", "yes").balanceEquations.test(VelInit::B_AIR));
  EXPECT_TRUE(readDeprecated("USE_AIR_FLOW", "Yes").balanceEquations.test(VelInit::B_AIR));
}

TEST(VelInit, oldAirFlowKeywords_doNotClearAir) {
  const std::string air = "BALANCE_EQUATIONS = AIR\n";
  EXPECT_TRUE(readDeprecated("INCLUDE_AIR_FLOW", "no", air).balanceEquations.test(VelInit::B_AIR));
  EXPECT_TRUE(readDeprecated("USE_AIR_FLOW", "no", air).balanceEquations.test(VelInit::B_AIR));
}

TEST(VelInit, oldForceKl_isReversed) {
  EXPECT_TRUE(readDeprecated("FORCE_KL", "No", "USE_KIRCHHOFF = no\n").useKirchhoff);
  EXPECT_FALSE(readDeprecated("FORCE_KL", "yes").useKirchhoff);
  EXPECT_FALSE(readDeprecated("FORCE_KL", "maybe").useKirchhoff);
}

TEST(VelInit, oldGravity_setsBothSwitches) {
  const VelInit init = readDeprecated("GRAVITY", "yes");
  EXPECT_TRUE(init.useGravity);
  EXPECT_TRUE(init.useBuoyancy);
}

TEST(VelInit, oldGravity_anythingElseClearsBothSwitches) {
  const VelInit init = readDeprecated("GRAVITY", "true", "USE_GRAVITY = yes\nUSE_BUOYANCY = yes\n");
  EXPECT_FALSE(init.useGravity);
  EXPECT_FALSE(init.useBuoyancy);
}

}  // namespace
}  // namespace VELMORA

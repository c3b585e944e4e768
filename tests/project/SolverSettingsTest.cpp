#include <gtest/gtest.h>

#include "project/VelSaltSettings.h"
#include "project/VelSolverCVODESettings.h"
#include "project/VelSolverSettings.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using TKL::MessageCapture;
using TKL::Thrown;
using TKL::thrownBy;

VelSolverCVODESettings readCvode(const std::string& lines) {
  VelSolverCVODESettings settings;
  settings.read(SectionText(lines));
  return settings;
}

VelSolverCVODESettings readSolver(const std::string& lines) {
  VelSolverSettings settings;
  settings.read(SectionText(lines));
  return settings.cvodeSettings;
}

VelSaltSettings readSalt(const std::string& lines) {
  VelSaltSettings settings;
  settings.read(SectionText(lines));
  return settings;
}

TEST(VelSolverCVODESettings, defaultTimeSteps) {
  const VelSolverCVODESettings settings;
  EXPECT_EQ(settings.para[VelSolverCVODESettings::P_INITIAL_DT].name, "INITIAL_DT");
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_INITIAL_DT].value, 0.01);
  EXPECT_EQ(settings.para[VelSolverCVODESettings::P_MAX_DT].name, "MAX_DT");
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_MAX_DT].value, 1800.0);
  EXPECT_EQ(settings.para[VelSolverCVODESettings::P_MIN_DT].name, "MIN_DT");
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_MIN_DT].value, 1e-9);
}

TEST(VelSolverCVODESettings, defaultTolerances) {
  const VelSolverCVODESettings settings;
  EXPECT_DOUBLE_EQ(settings.relTol, 1e-5);
  EXPECT_DOUBLE_EQ(settings.absTol, 1e-6);
  EXPECT_DOUBLE_EQ(settings.absTolEnergy, 1.0);
  EXPECT_DOUBLE_EQ(settings.absTolMoisture, 1e-6);
  EXPECT_DOUBLE_EQ(settings.absTolAir, 1e-6);
  EXPECT_DOUBLE_EQ(settings.absTolSalt, 1e-10);
  EXPECT_DOUBLE_EQ(settings.absTolPollutant, 1e-12);
}

TEST(VelSolverCVODESettings, defaultLimitsAndSwitches) {
  const VelSolverCVODESettings settings;
  EXPECT_EQ(settings.maxOrder, 5);
  EXPECT_EQ(settings.maxSteps, 1000000);
  EXPECT_TRUE(settings.useAutoRecover);
  EXPECT_FALSE(settings.useMonitorsFile);
  EXPECT_FALSE(settings.useOneStepMonitors);
  EXPECT_TRUE(settings.preventOverfilling);
  EXPECT_FALSE(settings.useStrictRangeChecking);
}

TEST(VelSolverCVODESettings, everyKeyword_setsItsField) {
  const VelSolverCVODESettings settings = readCvode(
      "INITIAL_DT = 1 s\nMAX_DT = 2 h\nMIN_DT = 3 ms\nREL_TOL = 1e-1\nABS_TOL_ENERGY = 1e-2\n"
      "ABS_TOL_MOISTURE = 1e-3\nABS_TOL_AIR = 1e-4\nABS_TOL_SALT = 1e-5\nABS_TOL_POLLUTANT = 1e-7\n"
      "USE_AUTO_RECOVER = no\nMAX_ORDER = 2\nMAX_STEPS = 17\nUSE_MONITORS_FILE = yes\n"
      "USE_ONE_STEP_MONITORS = yes\nPREVENT_OVERFILLING = no\nUSE_STRICT_RANGE_CHECKING = yes\n");
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_INITIAL_DT].value, 1.0);
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_MAX_DT].value, 7200.0);
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_MIN_DT].value, 3e-3);
  EXPECT_DOUBLE_EQ(settings.relTol, 1e-1);
  EXPECT_DOUBLE_EQ(settings.absTolEnergy, 1e-2);
  EXPECT_DOUBLE_EQ(settings.absTolMoisture, 1e-3);
  EXPECT_DOUBLE_EQ(settings.absTolAir, 1e-4);
  EXPECT_DOUBLE_EQ(settings.absTolSalt, 1e-5);
  EXPECT_DOUBLE_EQ(settings.absTolPollutant, 1e-7);
  EXPECT_FALSE(settings.useAutoRecover);
  EXPECT_EQ(settings.maxOrder, 2);
  EXPECT_EQ(settings.maxSteps, 17);
  EXPECT_TRUE(settings.useMonitorsFile);
  EXPECT_TRUE(settings.useOneStepMonitors);
  EXPECT_FALSE(settings.preventOverfilling);
  EXPECT_TRUE(settings.useStrictRangeChecking);
}

TEST(VelSolverCVODESettings, linearSolver_isOneOfItsWords) {
  EXPECT_EQ(VelSolverCVODESettings().linearSolver, VelSolverCVODESettings::L_AUTO);
  EXPECT_EQ(readCvode("LINEAR_SOLVER = AUTO").linearSolver, VelSolverCVODESettings::L_AUTO);
  EXPECT_EQ(readCvode("LINEAR_SOLVER = BAND").linearSolver, VelSolverCVODESettings::L_BAND);
  EXPECT_EQ(readCvode("LINEAR_SOLVER = KLU").linearSolver, VelSolverCVODESettings::L_KLU);
  EXPECT_EQ(readCvode("LINEAR_SOLVER = BLOCK").linearSolver, VelSolverCVODESettings::L_BLOCK);
  EXPECT_EQ(readCvode("LINEAR_SOLVER = GMRES").linearSolver, VelSolverCVODESettings::L_GMRES);
}

TEST(VelSolverCVODESettings, unknownLinearSolver_throws) {
  EXPECT_EQ(thrownBy([] { readCvode("LINEAR_SOLVER = block"); }),
            (Thrown{"Unknown linear solver 'block', expected one of AUTO, BAND, KLU, BLOCK, GMRES.",
                    "[VelSolverCVODESettings::read]"}));
}

TEST(VelSolverCVODESettings, textBehindANumber_isIgnored) {
  EXPECT_EQ(readCvode("MAX_STEPS = 12x").maxSteps, 12);
}

TEST(VelSolverCVODESettings, ranges_areNotTested) {
  const VelSolverCVODESettings settings = readCvode("MAX_ORDER = -3\nREL_TOL = -1\nMAX_DT = -5 s");
  EXPECT_EQ(settings.maxOrder, -3);
  EXPECT_DOUBLE_EQ(settings.relTol, -1.0);
  EXPECT_DOUBLE_EQ(settings.para[VelSolverCVODESettings::P_MAX_DT].value, -5.0);
}

TEST(VelSolverCVODESettings, noNumber_throws) {
  for (const std::string keyword : {"REL_TOL", "ABS_TOL_SALT", "MAX_ORDER", "MAX_STEPS"})
    EXPECT_EQ(thrownBy([&] { readCvode(keyword + " = small"); }),
              (Thrown{"Could not convert 'small' into value.", "[string2val]"}));
}

TEST(VelSolverCVODESettings, timeStepWithUnknownUnit_throws) {
  EXPECT_EQ(
      thrownBy([] { readCvode("MAX_DT = 5 ticks"); }),
      (Thrown{"Invalid parameter value '5 ticks' for keyword 'MAX_DT'!", "[VelSolverCVODESettings::read]"}));
}

TEST(VelSolverCVODESettings, unknownKeyword_warnsAndIsSkipped) {
  const MessageCapture messages;
  EXPECT_EQ(readCvode("ABS_TOL = 3\nMAX_ORDER = 2").maxOrder, 2);
  EXPECT_TRUE(messages.has("Invalid or deprecated keyword 'ABS_TOL' in this section!", TKL::MSG_WARNING,
                           "[VelSolverCVODESettings::read]", 3));
}

TEST(VelSolverCVODESettings, absTol_hasNoKeyword) {
  const MessageCapture messages;
  EXPECT_DOUBLE_EQ(readCvode("ABS_TOL = 3").absTol, 1e-6);
}

TEST(VelSolverCVODESettings, lineWithoutKeyword_throws) {
  EXPECT_EQ(thrownBy([] { readCvode("MAX_DT"); }),
            (Thrown{"Expected keyword, got 'MAX_DT'!", "[VelSolverCVODESettings::read]"}));
  EXPECT_EQ(thrownBy([] { readCvode("MAX_DT = "); }),
            (Thrown{"Missing value for keyword 'MAX_DT'!", "[VelSolverCVODESettings::read]"}));
}

TEST(VelSolverSettings, linesBeforeAnyHeader_areIntegratorSettings) {
  EXPECT_DOUBLE_EQ(readSolver("REL_TOL = 1e-3").relTol, 1e-3);
}

TEST(VelSolverSettings, linesBelowTheIntegratorHeader_count) {
  EXPECT_DOUBLE_EQ(readSolver("[CVODE_SOLVER_SETTINGS]\nREL_TOL = 1e-3").relTol, 1e-3);
}

TEST(VelSolverSettings, otherSubsections_areDroppedUnread) {
  const MessageCapture messages;
  const VelSolverCVODESettings settings = readSolver(
      "[GENERAL_SOLVER_OPTIONS]\nnonsense\nMAX_ORDER = 1\n[COEFFICIENT_AVERAGING]\n= = =\nMAX_STEPS = 3\n");
  EXPECT_EQ(settings.maxOrder, 5);
  EXPECT_EQ(settings.maxSteps, 1000000);
  EXPECT_TRUE(messages.messages.empty());
}

TEST(VelSolverSettings, returnToTheIntegrator_addsLines) {
  const VelSolverCVODESettings settings =
      readSolver("MAX_ORDER = 1\n[GENERAL_SOLVER_OPTIONS]\nx\n[CVODE_SOLVER_SETTINGS]\nMAX_STEPS = 3\n");
  EXPECT_EQ(settings.maxOrder, 1);
  EXPECT_EQ(settings.maxSteps, 3);
}

TEST(VelSolverSettings, headerInsideALine_counts) {
  EXPECT_EQ(readSolver("REL_TOL = see GENERAL_SOLVER_OPTIONS\nMAX_ORDER = 1").maxOrder, 5);
}

TEST(VelSolverSettings, lineWithTwoHeaders_isTheIntegrators) {
  EXPECT_EQ(readSolver("GENERAL_SOLVER_OPTIONS of CVODE_SOLVER_SETTINGS\nMAX_ORDER = 1").maxOrder, 1);
}

TEST(VelSaltSettings, defaults) {
  const VelSaltSettings settings;
  EXPECT_FALSE(settings.saltDatabase.isValid());
  EXPECT_EQ(settings.saltSpeciesIds, "");
  EXPECT_FALSE(settings.useExtraSaltOutput);
  EXPECT_TRUE(settings.useDensity);
  EXPECT_DOUBLE_EQ(settings.flowResistanceFactor, 0.0);
  EXPECT_FALSE(settings.useOversaturation);
}

TEST(VelSaltSettings, everyKeyword_setsItsField) {
  const VelSaltSettings settings = readSalt(
      "SALT_DATABASE = $(SALT_DIR)/s.txt\nSALT_SPECIES_IDS = 1 2\nUSE_EXTRA_SALT_OUTPUT = yes\n"
      "USE_DENSITY = no\nFLOW_RESISTANCE_FACTOR = 0.5\nUSE_OVERSATURATION = yes");
  EXPECT_EQ(settings.saltDatabase.str(), "$(SALT_DIR)/s.txt");
  EXPECT_EQ(settings.saltSpeciesIds, "1 2");
  EXPECT_TRUE(settings.useExtraSaltOutput);
  EXPECT_FALSE(settings.useDensity);
  EXPECT_DOUBLE_EQ(settings.flowResistanceFactor, 0.5);
  EXPECT_TRUE(settings.useOversaturation);
}

TEST(VelSaltSettings, resistanceFactor_noNumber_throws) {
  EXPECT_EQ(thrownBy([] { readSalt("FLOW_RESISTANCE_FACTOR = high"); }),
            (Thrown{"Invalid parameter value 'high' for keyword 'FLOW_RESISTANCE_FACTOR'!",
                    "[VelSaltSettings::read]"}));
}

TEST(VelSaltSettings, unknownKeyword_warnsAndIsSkipped) {
  const MessageCapture messages;
  EXPECT_FALSE(readSalt("SALT = 1\nUSE_DENSITY = no").useDensity);
  EXPECT_TRUE(messages.has("Invalid or deprecated keyword 'SALT' in this section!", TKL::MSG_WARNING,
                           "[VelSaltSettings::read]", 3));
}

TEST(VelSaltSettings, lineWithoutKeyword_throws) {
  EXPECT_EQ(thrownBy([] { readSalt("salt"); }),
            (Thrown{"Expected keyword, got 'salt'!", "[VelSaltSettings::read]"}));
  EXPECT_EQ(thrownBy([] { readSalt("USE_DENSITY ="); }),
            (Thrown{"Missing value for keyword 'USE_DENSITY'!", "[VelSaltSettings::read]"}));
}

}  // namespace
}  // namespace VELMORA

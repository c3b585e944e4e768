#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "project/VelBoundaryCond.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

Thrown check(const std::string& type, const std::string& kind, const std::string& parameters) {
  return thrownByChecking<VelBoundaryCond>("TYPE = " + type + "\nKIND = " + kind + "\n" + parameters);
}

}  // namespace

TEST(VelBoundaryCondCheck, passing_returnsTrue) {
  EXPECT_TRUE(readRecord<VelBoundaryCond>("TYPE = HEATCOND\nKIND = SURFVAL").checkParameters());
}

TEST(VelBoundaryCondCheck, heatExchange_needsItsCoefficient) {
  EXPECT_EQ(check("HEATCOND", "EXCHANGE", "NAME = n"),
            (Thrown{"EXCOEFF is required", "[Parameter::checkIfValueIsUpperBound]"}));
}

TEST(VelBoundaryCondCheck, heatExchangeCoefficient_mayBeZeroButNotNegative) {
  EXPECT_EQ(check("HEATCOND", "EXCHANGE", "EXCOEFF = 0 W/m2K"), nothingThrown());
  EXPECT_EQ(check("HEATCOND", "EXCHANGE", "EXCOEFF = -0.1 W/m2K"), outOfRange("EXCOEFF", ">= 0 W/m2K"));
}

TEST(VelBoundaryCondCheck, heatExchangeCoefficientInAnotherUnit_fails) {
  EXPECT_EQ(check("HEATCOND", "EXCHANGE", "EXCOEFF = 8 s/m"),
            (Thrown{"Invalid or unrecognized unit in parameter 'EXCOEFF' (must be convertible into W/m2K)",
                    "[Parameter::checkIfValueIsUpperBound]"}));
}

TEST(VelBoundaryCondCheck, heatExchangeByVelocity_testsTheSlopeFirst) {
  EXPECT_EQ(check("HEATCOND", "EXCHANGE_VEL", "NAME = n"), required("EXCH_SLOPE", LOWER_LIMIT));
  EXPECT_EQ(check("HEATCOND", "EXCHANGE_VEL", "EXCH_SLOPE = 0 J/m3K"), required("EXCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("HEATCOND", "EXCHANGE_VEL", "EXCH_SLOPE = 0 J/m3K\nEXCOEFF = 0 W/m2K"), nothingThrown());
}

TEST(VelBoundaryCondCheck, heatExchangeSlope_mustNotBeNegative) {
  EXPECT_EQ(check("HEATCOND", "EXCHANGE_VEL", "EXCH_SLOPE = -1 J/m3K\nEXCOEFF = 8 W/m2K"),
            outOfRange("EXCH_SLOPE", ">= 0 J/m3K"));
}

TEST(VelBoundaryCondCheck, heatPipe_needsFourPositiveParameters) {
  const std::vector<std::pair<std::string, std::string>> needed = {
      {"HP_RADIUS", "m"}, {"HP_LENGTH", "m"}, {"HP_CAPACITY", "J/kgK"}, {"HP_TRANSFER", "W/m2K"}};
  std::string text = "NAME = pipe\n";
  for (const auto& [keyword, unit] : needed) {
    EXPECT_EQ(check("HEATCOND", "HEATPIPE", text), required(keyword, LOWER_LIMIT));
    EXPECT_EQ(check("HEATCOND", "HEATPIPE", text + keyword + " = 0 " + unit),
              outOfRange(keyword, "> 0 " + unit));
    text += keyword + " = 0.001 " + unit + "\n";
  }
  EXPECT_EQ(check("HEATCOND", "HEATPIPE", text), nothingThrown());
}

TEST(VelBoundaryCondCheck, vapourExchange_needsANonNegativeCoefficient) {
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE", "NAME = n"), required("EXCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE", "EXCOEFF = 0 s/m"), nothingThrown());
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE", "EXCOEFF = -1e-9 s/m"), outOfRange("EXCOEFF", ">= 0 s/m"));
}

TEST(VelBoundaryCondCheck, coating_isTestedOnlyIfSet) {
  const std::string exchange = "EXCOEFF = 1e-8 s/m\n";
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE", exchange + "SD_VALUE = 0 m"), nothingThrown());
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE", exchange + "SD_VALUE = -0.1 m"), outOfRange("SD_VALUE", ">= 0 m"));
}

TEST(VelBoundaryCondCheck, vapourExchangeByVelocity_testsTheSlopeFirst) {
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE_VEL", "EXCOEFF = 1e-8 s/m"), required("EXCH_SLOPE", LOWER_LIMIT));
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE_VEL", "EXCH_SLOPE = -1 s2/m2"),
            outOfRange("EXCH_SLOPE", ">= 0 s2/m2"));
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE_VEL", "EXCH_SLOPE = 0 s2/m2"), required("EXCOEFF", LOWER_LIMIT));
  const std::string exchange = "EXCH_SLOPE = 0 s2/m2\nEXCOEFF = 0 s/m\n";
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE_VEL", exchange), nothingThrown());
  EXPECT_EQ(check("VAPDIFF", "EXCHANGE_VEL", exchange + "SD_VALUE = -0.1 m"),
            outOfRange("SD_VALUE", ">= 0 m"));
}

TEST(VelBoundaryCondCheck, rain_needsThreeParameters) {
  for (const char* kind : {"IMPFLUX", "STDRAIN"}) {
    EXPECT_EQ(check("RAIN", kind, "NAME = n"), required("EXPCOEFF", LOWER_LIMIT));
    EXPECT_EQ(check("RAIN", kind, "EXPCOEFF = 0 -"), required("MINRTEMP", UPPER_LIMIT));
    EXPECT_EQ(check("RAIN", kind, "EXPCOEFF = 0 -\nMINRTEMP = 270 K"), required("MINRFLUX", LOWER_LIMIT));
    EXPECT_EQ(check("RAIN", kind, "EXPCOEFF = 0 -\nMINRTEMP = 270 K\nMINRFLUX = 0 l/m2s"), nothingThrown());
  }
}

TEST(VelBoundaryCondCheck, rainLimits_areTested) {
  EXPECT_EQ(check("RAIN", "STDRAIN", "EXPCOEFF = -0.1 -"), outOfRange("EXPCOEFF", ">= 0 -"));
  EXPECT_EQ(check("RAIN", "STDRAIN", "EXPCOEFF = 1 -\nMINRTEMP = -2 C\nMINRFLUX = -1 l/m2h"),
            outOfRange("MINRFLUX", ">= 0 l/m2s"));
}

TEST(VelBoundaryCondCheck, minimumRainTemperature_endsAtFreezing) {
  const std::string rest = "EXPCOEFF = 1 -\nMINRFLUX = 0 l/m2s\n";
  EXPECT_EQ(check("RAIN", "STDRAIN", rest + "MINRTEMP = 273.16 K"), outOfRange("MINRTEMP", "<= 273.15 K"));
  EXPECT_EQ(check("RAIN", "STDRAIN", rest + "MINRTEMP = 273.15 K"), nothingThrown());
}

TEST(VelBoundaryCondCheck, absorption_liesBetweenZeroAndOne) {
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "NAME = n"), required("SURABSOR", LOWER_LIMIT));
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = 0 -"), nothingThrown());
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = 1 -"), nothingThrown());
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = -0.01 -"), outOfRange("SURABSOR", ">= 0 -"));
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = 1.01 -"), outOfRange("SURABSOR", "<= 1 -"));
}

TEST(VelBoundaryCondCheck, plainNumber_mayAlsoBeGivenInPercent) {
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = 60 %"), nothingThrown());
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = 0.6 ---"), nothingThrown());
  EXPECT_EQ(check("SHWRAD", "IMPFLUX", "SURABSOR = 101 %"), outOfRange("SURABSOR", "<= 1 ---"));
}

TEST(VelBoundaryCondCheck, sunModel_needsGroundReflectionFirst) {
  EXPECT_EQ(check("SHWRAD", "SUNRADM", "SURABSOR = 0.5 -"), required("GRDREFLE", LOWER_LIMIT));
  EXPECT_EQ(check("SHWRAD", "SUNRADM", "GRDREFLE = 0.2 -"), required("SURABSOR", LOWER_LIMIT));
  EXPECT_EQ(check("SHWRAD", "SUNRADM", "GRDREFLE = -0.1 -\nSURABSOR = 0 -"),
            outOfRange("GRDREFLE", ">= 0 -"));
  EXPECT_EQ(check("SHWRAD", "SUNRADM", "GRDREFLE = 1.1 -\nSURABSOR = 0 -"), outOfRange("GRDREFLE", "<= 1 -"));
  EXPECT_EQ(check("SHWRAD", "SUNRADM", "GRDREFLE = 1 -\nSURABSOR = 1.1 -"), outOfRange("SURABSOR", "<= 1 -"));
  EXPECT_EQ(check("SHWRAD", "SUNRADM", "GRDREFLE = 0 -\nSURABSOR = 1 -"), nothingThrown());
}

TEST(VelBoundaryCondCheck, collector_needsThreeCoefficientsAndNoReflection) {
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", "NAME = n"), required("SOLAR_ETA0", LOWER_LIMIT));
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", "SOLAR_ETA0 = -0.1 -"), outOfRange("SOLAR_ETA0", ">= 0 -"));
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", "SOLAR_ETA0 = 1.1 -"), outOfRange("SOLAR_ETA0", "<= 1 -"));
  const std::string eta = "SOLAR_ETA0 = 0.8 -\n";
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", eta), required("SOLAR_K0", LOWER_LIMIT));
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", eta + "SOLAR_K0 = -1 W/m2K"), outOfRange("SOLAR_K0", ">= 0 W/m2K"));
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", eta + "SOLAR_K0 = 0 W/m2K"), required("SOLAR_K1", LOWER_LIMIT));
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", eta + "SOLAR_K0 = 0 W/m2K\nSOLAR_K1 = -1 W/m2K2"),
            outOfRange("SOLAR_K1", ">= 0 W/m2K2"));
  EXPECT_EQ(check("SHWRAD", "SOLARCOLL", eta + "SOLAR_K0 = 0 W/m2K\nSOLAR_K1 = 0 W/m2K2"), nothingThrown());
}

TEST(VelBoundaryCondCheck, emission_liesBetweenZeroAndOne) {
  for (const char* kind : {"IMPFLUX", "LRADCOMP", "BOLTZMAN"}) {
    EXPECT_EQ(check("LOWRAD", kind, "NAME = n"), required("SUREMISS", LOWER_LIMIT));
    EXPECT_EQ(check("LOWRAD", kind, "SUREMISS = 0 -"), nothingThrown());
    EXPECT_EQ(check("LOWRAD", kind, "SUREMISS = -0.1 -"), outOfRange("SUREMISS", ">= 0 -"));
    EXPECT_EQ(check("LOWRAD", kind, "SUREMISS = 1.1 -"), outOfRange("SUREMISS", "<= 1 -"));
  }
}

TEST(VelBoundaryCondCheck, groundEmission_isNeededOnlyWithTheFlag) {
  const std::string flag = "FLAGS = INCLUDE_GROUND\nSUREMISS = 0.9 -\n";
  for (const char* kind : {"LRADCOMP", "BOLTZMAN"}) {
    EXPECT_EQ(check("LOWRAD", kind, "SUREMISS = 0.9 -\nGRDEMISS = 5 -"), nothingThrown());
    EXPECT_EQ(check("LOWRAD", kind, flag), required("GRDEMISS", LOWER_LIMIT));
    EXPECT_EQ(check("LOWRAD", kind, flag + "GRDEMISS = -0.1 -"), outOfRange("GRDEMISS", ">= 0 -"));
    EXPECT_EQ(check("LOWRAD", kind, flag + "GRDEMISS = 1.1 -"), outOfRange("GRDEMISS", "<= 1 -"));
    EXPECT_EQ(check("LOWRAD", kind, flag + "GRDEMISS = 1 -"), nothingThrown());
  }
  EXPECT_EQ(check("LOWRAD", "IMPFLUX", flag), nothingThrown());
}

TEST(VelBoundaryCondCheck, airPressureExchange_needsItsCoefficient) {
  EXPECT_EQ(check("AIRPRESS", "EXCHANGE", "NAME = n"), required("EXCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("AIRPRESS", "EXCHANGE", "EXCOEFF = -1 s/m"), outOfRange("EXCOEFF", ">= 0 s/m"));
  EXPECT_EQ(check("AIRPRESS", "EXCHANGE", "EXCOEFF = 0 s/m"), nothingThrown());
}

TEST(VelBoundaryCondCheck, flowCoefficient_liesBetweenZeroAndOne) {
  EXPECT_EQ(check("AIRPRESS", "FLOWCOEFF", "NAME = n"), required("AP_FLOWCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("AIRPRESS", "FLOWCOEFF", "AP_FLOWCOEFF = -0.1 -"), outOfRange("AP_FLOWCOEFF", ">= 0 -"));
  EXPECT_EQ(check("AIRPRESS", "FLOWCOEFF", "AP_FLOWCOEFF = 1.1 -"), outOfRange("AP_FLOWCOEFF", "<= 1 -"));
  EXPECT_EQ(check("AIRPRESS", "FLOWCOEFF", "AP_FLOWCOEFF = 1 -"), nothingThrown());
}

TEST(VelBoundaryCondCheck, pollutantExchange_needsItsCoefficient) {
  EXPECT_EQ(check("VOCDIFF", "EXCHANGE", "NAME = n"), required("EXCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("VOCDIFF", "EXCHANGE", "EXCOEFF = -1 m/s"), outOfRange("EXCOEFF", ">= 0 m/s"));
  EXPECT_EQ(check("VOCDIFF", "EXCHANGE", "EXCOEFF = 0 m/s"), nothingThrown());
}

TEST(VelBoundaryCondCheck, combinationWithoutRule_passes) {
  EXPECT_EQ(check("WATCONTC", "SURFVAL", "EXCOEFF = -1 m"), nothingThrown());
  EXPECT_EQ(check("VAPDIFF", "SURFVAL", "NAME = n"), nothingThrown());
  EXPECT_EQ(check("LOWRAD", "DEFAULT", "SUREMISS = 9 -"), nothingThrown());
  EXPECT_EQ(check("RAIN", "EXCHANGE", "NAME = n"), nothingThrown());
  EXPECT_EQ(check("SHWRAD", "HYDROSTATIC", "NAME = n"), nothingThrown());
  EXPECT_EQ(check("AIRPRESS", "SURFVAL", "NAME = n"), nothingThrown());
  EXPECT_EQ(check("VOCDIFF", "SURFVAL", "NAME = n"), nothingThrown());
  EXPECT_EQ(check("HEATCOND", "SURFVAL", "NAME = n"), nothingThrown());
  EXPECT_EQ(check("ROOM", "DEFAULT", "NAME = n"), nothingThrown());
}

TEST(VelBoundaryCondCheck, unsetTypeOrKind_passes) {
  EXPECT_EQ(thrownByChecking<VelBoundaryCond>("NAME = n"), nothingThrown());
  EXPECT_EQ(thrownByChecking<VelBoundaryCond>("TYPE = HEATCOND"), nothingThrown());
  EXPECT_EQ(thrownByChecking<VelBoundaryCond>("KIND = EXCHANGE"), nothingThrown());
}

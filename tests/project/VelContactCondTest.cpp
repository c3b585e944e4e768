#include "project/VelContactCond.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "ConditionTexts.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

using KC = VelContactCond;
const char* const CONTACTCOND_READ = "[VelContactCond::read]";

KC readContactCond(const std::string& text) {
  return readRecord<KC>(text);
}

/// Text of the standard error that checking throws. A `TKL::Exception` is not one.
std::string failureOf(const std::string& text) {
  const KC condition = readContactCond(text);
  try {
    condition.checkParameters();
  } catch (const TKL::Exception& exception) {
    return std::string("TKL::Exception: ") + exception.what();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

KC prepared(const std::string& text) {
  KC condition = readContactCond(text);
  condition.prepareParameters();
  return condition;
}

const std::vector<std::string> CONTACTCOND_PARAMETERS = {
    "HEATCONDRES",       "VAPDIFFRES",        "WATCONDRES",    "AIRCONVRES",
    "SALDIFFRES",        "EXCOEFF",           "EXCH_SLOPE",    "EXCH_EXP",
    "WEIGHT_FACTOR_POS", "WEIGHT_FACTOR_NEG", "SCALING_A_POS", "SCALING_B_POS",
    "SCALING_C_POS",     "SCALING_A_NEG",     "SCALING_B_NEG", "SCALING_C_NEG"};

const std::string FOIL = "TYPE = FOIL\nFOIL_NAME = f\n";
const std::string ADAPTIVE = "TYPE = FOIL_ADAPTIVE\nFOIL_NAME = f\n";
const std::string BOTH_WAYS = "KIND = DIRECTION_INDEPENDENT\n";
const std::string TWO_WAYS = "KIND = DIRECTION_DEPENDENT\n";
const std::string SD_POS = "sd+(rh) = 0 1 ; 10 0.5\n";

}  // namespace

TEST(VelContactCondRead, everyParameter_isRead) {
  EXPECT_TRUE(areNumbered(readContactCond(numberedParameters(CONTACTCOND_PARAMETERS, "m")).para,
                          CONTACTCOND_PARAMETERS, "m"));
}

TEST(VelContactCondRead, everyOtherKeyword_isRead) {
  const KC kc = readContactCond(
      "NAME = retarder\nTYPE = FOIL_ADAPTIVE\nKIND = DIRECTION_DEPENDENT\nFOIL_NAME = smart foil\n"
      "SD_POSITIVE_DIRECTION = no\nsd+(rh) = 0 1 ; 10 0.5\nsd-(rh) = 0 0.5 1 ; 8 4 2");
  EXPECT_EQ(kc.name, "retarder");
  EXPECT_EQ(kc.condition, KC::C_FOIL_ADAPTIVE);
  EXPECT_EQ(kc.kind, KC::K_DIRECTION_DEPENDENT);
  EXPECT_EQ(kc.foilName, "smart foil");
  EXPECT_FALSE(kc.sdPositiveDirection);
  EXPECT_EQ(kc.functions[KC::FUN_SD_POS].x, (std::vector<double>{0.0, 1.0}));
  EXPECT_EQ(kc.functions[KC::FUN_SD_POS].y, (std::vector<double>{10.0, 0.5}));
  EXPECT_EQ(kc.functions[KC::FUN_SD_NEG].x, (std::vector<double>{0.0, 0.5, 1.0}));
  EXPECT_EQ(kc.functions[KC::FUN_SD_NEG].y, (std::vector<double>{8.0, 4.0, 2.0}));
}

TEST(VelContactCondRead, allKeywordsTogether_areRead) {
  const KC kc =
      readContactCond(numberedParameters(CONTACTCOND_PARAMETERS, "m") +
                      "sd-(rh) = 0 2 1 3\nsd+(rh) = 0 4 1 5\nSD_POSITIVE_DIRECTION = no\nFOIL_NAME = "
                      "f\nKIND = DIRECTION_INDEPENDENT\nNAME = all\nTYPE = FOIL");
  EXPECT_TRUE(areNumbered(kc.para, CONTACTCOND_PARAMETERS, "m"));
  EXPECT_EQ(kc.condition, KC::C_FOIL);
  EXPECT_EQ(kc.kind, KC::K_DIRECTION_INDEPENDENT);
  EXPECT_EQ(kc.name + kc.foilName, "allf");
  EXPECT_FALSE(kc.sdPositiveDirection);
  EXPECT_EQ(kc.functions[KC::FUN_SD_NEG].y, (std::vector<double>{2.0, 3.0}));
  EXPECT_EQ(kc.functions[KC::FUN_SD_POS].y, (std::vector<double>{4.0, 5.0}));
}

TEST(VelContactCondRead, everyType_hasItsIndex) {
  const std::vector<std::string> types = {"AIR_MAT_HEATCOND", "AIR_MAT_VAPDIFF", "FOIL", "FOIL_ADAPTIVE",
                                          "ADDITIONAL_RESISTANCE"};
  ASSERT_EQ(types.size(), static_cast<std::size_t>(KC::NUM_C));
  for (std::size_t k = 0; k < types.size(); ++k) {
    EXPECT_EQ(readContactCond("TYPE = " + types[k]).condition, static_cast<int>(k)) << types[k];
  }
}

TEST(VelContactCondRead, everyKind_hasItsIndex) {
  const std::vector<std::string> kinds = {"EXCHANGE", "EXCHANGE_VEL", "DIRECTION_DEPENDENT",
                                          "DIRECTION_INDEPENDENT"};
  ASSERT_EQ(kinds.size(), static_cast<std::size_t>(KC::NUM_K));
  for (std::size_t k = 0; k < kinds.size(); ++k) {
    EXPECT_EQ(readContactCond("KIND = " + kinds[k]).kind, static_cast<int>(k)) << kinds[k];
  }
}

TEST(VelContactCondRead, isUnsetByDefaultInPositiveDirection) {
  const KC kc;
  EXPECT_EQ(kc.condition, 5);
  EXPECT_EQ(kc.kind, 4);
  EXPECT_TRUE(kc.sdPositiveDirection);
  EXPECT_TRUE(kc.functions[0].empty());
  EXPECT_FALSE(kc.used);
}

TEST(VelContactCondRead, positiveDirection_isTrueOnlyForYes) {
  EXPECT_TRUE(readContactCond("SD_POSITIVE_DIRECTION = Yes").sdPositiveDirection);
  EXPECT_FALSE(readContactCond("SD_POSITIVE_DIRECTION = 1").sdPositiveDirection);
  EXPECT_FALSE(readContactCond("SD_POSITIVE_DIRECTION = true").sdPositiveDirection);
}

TEST(VelContactCondRead, unreadableParameter_fails) {
  EXPECT_EQ(thrownByReading<KC>("EXCOEFF = lots"),
            (Thrown{"Invalid parameter value 'lots' for keyword 'EXCOEFF'!", CONTACTCOND_READ}));
}

TEST(VelContactCondRead, unknownTypeOrKind_fails) {
  EXPECT_EQ(
      thrownByReading<KC>("TYPE = MAGIC"),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelContactCond::condition_t' and "
              "keyword 'MAGIC'.",
              "[KeywordList::Enumeration]"}));
  EXPECT_EQ(
      thrownByReading<KC>("KIND = MAGIC"),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelContactCond::kind_t' and keyword "
              "'MAGIC'.",
              "[KeywordList::Enumeration]"}));
}

TEST(VelContactCondFunction, lists_mayBeSeparatedByFourMarks) {
  for (const char* mark : {";", ",", "|", ":"}) {
    const KC kc = readContactCond(std::string("sd+(rh) = 0 0.5 1 ") + mark + " 9 5 3");
    EXPECT_EQ(kc.functions[0].x, (std::vector<double>{0.0, 0.5, 1.0})) << mark;
    EXPECT_EQ(kc.functions[0].y, (std::vector<double>{9.0, 5.0, 3.0})) << mark;
  }
}

TEST(VelContactCondFunction, listsWithoutMark_areToldByTheirRangeZeroToOne) {
  const KC kc = readContactCond("sd+(rh) = 0 0.5 1 9 5 3");
  EXPECT_EQ(kc.functions[0].x, (std::vector<double>{0.0, 0.5, 1.0}));
  EXPECT_EQ(kc.functions[0].y, (std::vector<double>{9.0, 5.0, 3.0}));
}

TEST(VelContactCondFunction, otherNumbers_arePairs) {
  const KC kc = readContactCond("sd+(rh) = 0 9 0.5 5 1 3");
  EXPECT_EQ(kc.functions[0].x, (std::vector<double>{0.0, 0.5, 1.0}));
  EXPECT_EQ(kc.functions[0].y, (std::vector<double>{9.0, 5.0, 3.0}));
}

TEST(VelContactCondFunction, isReadyForUse) {
  EXPECT_DOUBLE_EQ(readContactCond("sd+(rh) = 0 9 0.5 5 1 3").functions[0].value(0.25), 7.0);
}

TEST(VelContactCondFunction, badPoints_fail) {
  EXPECT_EQ(thrownByReading<KC>("sd+(rh) = 0 1 ; 5"),
            (Thrown{"Invalid parameter value '0 1 ; 5' for keyword 'sd+(rh)'!", CONTACTCOND_READ}));
  EXPECT_EQ(thrownByReading<KC>("sd-(rh) = 0 9 1"),
            (Thrown{"Invalid parameter value '0 9 1' for keyword 'sd-(rh)'!", CONTACTCOND_READ}));
  EXPECT_EQ(thrownByReading<KC>("sd-(rh) = none"),
            (Thrown{"Invalid parameter value 'none' for keyword 'sd-(rh)'!", CONTACTCOND_READ}));
  EXPECT_EQ(thrownByReading<KC>("sd-(rh) = 1 9 0.5 8"),
            (Thrown{"Invalid parameter value '1 9 0.5 8' for keyword 'sd-(rh)'!", CONTACTCOND_READ}));
  EXPECT_EQ(thrownByReading<KC>("sd-(rh) = ;"),
            (Thrown{"Invalid parameter value ';' for keyword 'sd-(rh)'!", CONTACTCOND_READ}));
}

TEST(VelContactCondFunction, badPoints_haveTheirCauseInTheChain) {
  try {
    readContactCond("sd+(rh) = 0 1 ; 5");
    FAIL() << "nothing thrown";
  } catch (const TKL::Exception& exception) {
    ASSERT_EQ(exception.records().size(), 2u);
    EXPECT_EQ(exception.records()[0].what, "Number of x [2] and y [1] values differs!");
    EXPECT_EQ(exception.records()[0].location, "[LinearSpline::read]");
  }
}

TEST(VelContactCondCheck, heatExchange_needsItsCoefficients) {
  const std::string still = "TYPE = AIR_MAT_HEATCOND\nKIND = EXCHANGE\n";
  const std::string moving = "TYPE = AIR_MAT_HEATCOND\nKIND = EXCHANGE_VEL\n";
  EXPECT_EQ(failureOf(still), "EXCOEFF is required");
  EXPECT_EQ(failureOf(still + "EXCOEFF = 0 W/m2K"), "");
  EXPECT_EQ(failureOf(still + "EXCOEFF = -1 W/m2K"),
            "Parameter 'EXCOEFF' out of range (must be >= 0 W/m2K).");
  EXPECT_EQ(failureOf(moving), "EXCOEFF is required");
  EXPECT_EQ(failureOf(moving + "EXCOEFF = 0 W/m2K"), "EXCH_SLOPE is required");
  EXPECT_EQ(failureOf(moving + "EXCOEFF = 0 W/m2K\nEXCH_SLOPE = -1 J/m3K"),
            "Parameter 'EXCH_SLOPE' out of range (must be >= 0 J/m3K).");
  EXPECT_EQ(failureOf(moving + "EXCOEFF = 0 W/m2K\nEXCH_SLOPE = 0 J/m3K"), "");
}

TEST(VelContactCondCheck, vapourExchange_needsItsCoefficients) {
  const std::string still = "TYPE = AIR_MAT_VAPDIFF\nKIND = EXCHANGE\n";
  const std::string moving = "TYPE = AIR_MAT_VAPDIFF\nKIND = EXCHANGE_VEL\n";
  EXPECT_EQ(failureOf(still + "EXCOEFF = 0 s/m"), "");
  EXPECT_EQ(failureOf(still + "EXCOEFF = -1 s/m"), "Parameter 'EXCOEFF' out of range (must be >= 0 s/m).");
  EXPECT_EQ(failureOf(moving + "EXCOEFF = 0 s/m"), "EXCH_SLOPE is required");
  EXPECT_EQ(failureOf(moving + "EXCOEFF = 0 s/m\nEXCH_SLOPE = -1 s2/m2"),
            "Parameter 'EXCH_SLOPE' out of range (must be >= 0 s2/m2).");
  EXPECT_EQ(failureOf(moving + "EXCOEFF = 0 s/m\nEXCH_SLOPE = 0 s2/m2"), "");
}

TEST(VelContactCondCheck, coefficientInAnotherUnit_fails) {
  EXPECT_EQ(failureOf("TYPE = AIR_MAT_VAPDIFF\nKIND = EXCHANGE\nEXCOEFF = 8 W/m2K"),
            "Invalid or unrecognized unit in parameter 'EXCOEFF' (must be convertible into s/m)");
}

TEST(VelContactCondCheck, resistances_mustBePositiveIfSet) {
  const std::string type = "TYPE = ADDITIONAL_RESISTANCE\n";
  EXPECT_EQ(failureOf(type), "");
  const std::vector<std::pair<std::string, std::string>> resistances = {
      {"HEATCONDRES", "m2K/W"}, {"VAPDIFFRES", "m/s"}, {"VAPDIFFRES", "m"},
      {"WATCONDRES", "m/s"},    {"AIRCONVRES", "m/s"}, {"SALDIFFRES", "m2s/kg"}};
  for (const auto& [keyword, unit] : resistances) {
    EXPECT_EQ(failureOf(type + keyword + " = 1e-9 " + unit), "");
    EXPECT_EQ(failureOf(type + keyword + " = 0 " + unit),
              "Parameter '" + keyword + "' out of range (must be > 0 " + unit + ").");
  }
}

TEST(VelContactCondCheck, foil_needsNameThenResistanceInMetres) {
  EXPECT_EQ(failureOf("TYPE = FOIL\nVAPDIFFRES = 0.5 m"), "Missing FOIL_NAME parameter.");
  EXPECT_EQ(failureOf(FOIL), "Parameter VAPDIFFRES is required.");
  EXPECT_EQ(failureOf(FOIL + "VAPDIFFRES = 0.5 m/s"), "Parameter VAPDIFFRES must be an sd-value in m.");
  EXPECT_EQ(failureOf(FOIL + "VAPDIFFRES = 500 mm"), "Parameter VAPDIFFRES must be an sd-value in m.");
  EXPECT_EQ(failureOf(FOIL + "VAPDIFFRES = 0.5 m"), "");
}

TEST(VelContactCondCheck, adaptiveFoil_isTestedInOrder) {
  EXPECT_EQ(failureOf("TYPE = FOIL_ADAPTIVE"), "Missing FOIL_NAME parameter.");
  EXPECT_EQ(failureOf(ADAPTIVE), "Missing FUNCTION 'sd+(rh)'.");
  EXPECT_EQ(failureOf(ADAPTIVE + "sd+(rh) = 0 9 0.5 3"), "Missing or invalid KIND parameter.");
  EXPECT_EQ(failureOf(ADAPTIVE + SD_POS + "KIND = EXCHANGE"), "Missing or invalid KIND parameter.");
  EXPECT_EQ(failureOf(ADAPTIVE + SD_POS + BOTH_WAYS), "");
}

TEST(VelContactCondCheck, adaptiveFoil_coversAllHumidities) {
  const std::string range = "Invalid foil data for rh-value range in FUNCTION 'sd+(rh)'.";
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + "sd+(rh) = 0 0.95 ; 9 3"), range);
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + "sd+(rh) = 1e-12 1 ; 9 3"), range);
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + "sd+(rh) = 0 1.001 ; 9 3"), range);
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + "sd+(rh) = 0 0.95 ; -9 3"), range);
}

TEST(VelContactCondCheck, sdValues_mustBePositive) {
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + "sd+(rh) = 0 1 ; 9 0"),
            "Invalid foil data for sd-value '0' in FUNCTION 'sd+(rh)'.");
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + "sd+(rh) = 0 1 ; -2.5 3"),
            "Invalid foil data for sd-value '-2.5' in FUNCTION 'sd+(rh)'.");
}

TEST(VelContactCondCheck, foilThatDependsOnDirection_needsTwoFunctions) {
  const std::string text = ADAPTIVE + TWO_WAYS + SD_POS;
  EXPECT_EQ(failureOf(text), "Missing FUNCTION 'sd-(rh)'.");
  EXPECT_EQ(failureOf(text + "sd-(rh) = 0.1 1 ; 9 3"),
            "Invalid foil data for rh-value range in FUNCTION 'sd-(rh)'.");
  EXPECT_EQ(failureOf(text + "sd-(rh) = 0 1 ; 9 -3"),
            "Invalid foil data for sd-value '-3' in FUNCTION 'sd-(rh)'.");
  EXPECT_EQ(failureOf(text + "sd-(rh) = 0 1 ; 9 3"), "");
}

TEST(VelContactCondCheck, foilThatDoesNotDependOnDirection_ignoresTheSecondFunction) {
  EXPECT_EQ(failureOf(ADAPTIVE + BOTH_WAYS + SD_POS + "sd-(rh) = 0.1 0.2 ; -9 -3"), "");
}

TEST(VelContactCondCheck, conditionWithoutRule_passes) {
  EXPECT_EQ(failureOf("NAME = n"), "");
  EXPECT_EQ(failureOf("TYPE = AIR_MAT_HEATCOND"), "");
}

TEST(VelContactCondPrepare, foil_blocksAllButVapour) {
  const KC kc = prepared(FOIL + "VAPDIFFRES = 0.5 m");
  EXPECT_EQ(kc.para[KC::P_WATCONDRES].value, 1e50);
  EXPECT_EQ(kc.para[KC::P_WATCONDRES].IO_unit.name(), "m/s");
  EXPECT_EQ(kc.para[KC::P_AIRCONVRES].value, 1e50);
  EXPECT_EQ(kc.para[KC::P_AIRCONVRES].IO_unit.name(), "m/s");
  EXPECT_EQ(kc.para[KC::P_SALDIFFRES].value, 1e50);
  EXPECT_EQ(kc.para[KC::P_SALDIFFRES].IO_unit.name(), "m2/s");
  EXPECT_FALSE(kc.para[KC::P_HEATCONDRES].isSet());
}

TEST(VelContactCondPrepare, sdValueOfAFoil_becomesAResistance) {
  const KC kc = prepared(FOIL + "VAPDIFFRES = 0.5 m");
  const TKL::Parameter& resistance = kc.para[KC::P_VAPDIFFRES];
  EXPECT_DOUBLE_EQ(resistance.value, 0.5 * 461.89 * 293.15 / 2.662e-05);
  EXPECT_EQ(resistance.name, "Vapour diffusion resistance value");
  EXPECT_EQ(resistance.IO_unit.name(), "m/s");
}

TEST(VelContactCondPrepare, adaptiveFoil_blocksAllButVapour) {
  const KC kc = prepared(ADAPTIVE + "VAPDIFFRES = 2 m");
  EXPECT_EQ(kc.para[KC::P_WATCONDRES].value, 1e50);
  EXPECT_EQ(kc.para[KC::P_AIRCONVRES].value, 1e50);
  EXPECT_DOUBLE_EQ(kc.para[KC::P_VAPDIFFRES].value, 2.0 * 461.89 * 293.15 / 2.662e-05);
}

TEST(VelContactCondPrepare, adaptiveFoil_getsScalingOfZero) {
  const KC kc = prepared(ADAPTIVE);
  const std::vector<std::string> names = {"SCALING_A_POS", "KP_SCALING_B_POS", "KP_SCALING_C_POS",
                                          "SCALING_A_NEG", "KP_SCALING_B_NEG", "KP_SCALING_C_NEG"};
  for (std::size_t k = 0; k < names.size(); ++k) {
    const TKL::Parameter& scaling = kc.para[KC::P_SCALING_A_POS + k];
    EXPECT_EQ(scaling.name, names[k]);
    EXPECT_EQ(scaling.value, 0.0);
    EXPECT_EQ(scaling.IO_unit.name(), "-");
  }
  EXPECT_FALSE(kc.para[KC::P_WEIGHT_FACTOR_POS].isSet());
  EXPECT_FALSE(kc.para[KC::P_WEIGHT_FACTOR_NEG].isSet());
}

TEST(VelContactCondPrepare, scalingThatIsSet_stays) {
  const KC kc = prepared(ADAPTIVE + "SCALING_B_POS = 0.7 -");
  EXPECT_EQ(kc.para[KC::P_SCALING_B_POS].value, 0.7);
  EXPECT_EQ(kc.para[KC::P_SCALING_B_POS].name, "SCALING_B_POS");
}

TEST(VelContactCondPrepare, simpleFoil_getsNoScaling) {
  EXPECT_FALSE(prepared(FOIL + "VAPDIFFRES = 0.5 m").para[KC::P_SCALING_A_POS].isSet());
}

TEST(VelContactCondPrepare, additionalSdValue_becomesAResistance) {
  const KC kc = prepared("TYPE = ADDITIONAL_RESISTANCE\nVAPDIFFRES = 500 mm");
  EXPECT_DOUBLE_EQ(kc.para[KC::P_VAPDIFFRES].value, 0.5 * 461.89 * 293.15 / 2.662e-05);
  EXPECT_EQ(kc.para[KC::P_VAPDIFFRES].IO_unit.name(), "m/s");
  EXPECT_FALSE(kc.para[KC::P_WATCONDRES].isSet());
}

TEST(VelContactCondPrepare, additionalResistance_stays) {
  const KC kc = prepared("TYPE = ADDITIONAL_RESISTANCE\nVAPDIFFRES = 1e9 m/s");
  EXPECT_EQ(kc.para[KC::P_VAPDIFFRES].value, 1e9);
  EXPECT_EQ(kc.para[KC::P_VAPDIFFRES].name, "VAPDIFFRES");
}

TEST(VelContactCondPrepare, otherConditions_areLeftAlone) {
  const KC kc = prepared("TYPE = AIR_MAT_HEATCOND\nVAPDIFFRES = 1 m");
  EXPECT_EQ(kc.para[KC::P_VAPDIFFRES].value, 1.0);
  EXPECT_FALSE(prepared("TYPE = ADDITIONAL_RESISTANCE").para[KC::P_VAPDIFFRES].isSet());
}

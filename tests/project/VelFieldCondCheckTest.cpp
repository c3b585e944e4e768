#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "project/VelFieldCond.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

Thrown check(const std::string& type, const std::string& parameters = "NAME = n") {
  return thrownByChecking<VelFieldCond>("TYPE = " + type + "\n" + parameters);
}

}  // namespace

TEST(VelFieldCondCheck, waterSourceLimits_areTestedOnlyIfSet) {
  EXPECT_EQ(check("WATSOURCE"), nothingThrown());
  EXPECT_EQ(check("WATSOURCE", "MAX_WATCONT = 0 m3/m3\nMIN_WATCONT = 0 m3/m3"), nothingThrown());
  EXPECT_EQ(check("WATSOURCE", "MAX_WATCONT = -0.1 m3/m3"), outOfRange("MAX_WATCONT", ">= 0 m3/m3"));
  EXPECT_EQ(check("WATSOURCE", "MIN_WATCONT = -0.1 m3/m3"), outOfRange("MIN_WATCONT", ">= 0 m3/m3"));
}

TEST(VelFieldCondCheck, radiationWithoutDirection_needsNoCoefficient) {
  EXPECT_EQ(check("LW_RADIATION"), nothingThrown());
}

TEST(VelFieldCondCheck, radiationAlongX_needsLeftAndRight) {
  const std::string flag = "FLAGS = LW_RADIATION_X\n";
  EXPECT_EQ(check("LW_RADIATION", flag), required("LEFT_EMISS_COEFF", LOWER_LIMIT));
  EXPECT_EQ(check("LW_RADIATION", flag + "LEFT_EMISS_COEFF = 1 -"),
            required("RIGHT_EMISS_COEFF", LOWER_LIMIT));
  EXPECT_EQ(check("LW_RADIATION", flag + "LEFT_EMISS_COEFF = 1 -\nRIGHT_EMISS_COEFF = 0 -"), nothingThrown());
}

TEST(VelFieldCondCheck, radiationAlongY_needsTopAndBottom) {
  const std::string flag = "FLAGS = LW_RADIATION_Y\n";
  EXPECT_EQ(check("LW_RADIATION", flag), required("TOP_EMISS_COEFF", LOWER_LIMIT));
  EXPECT_EQ(check("LW_RADIATION", flag + "TOP_EMISS_COEFF = 1 -"),
            required("BOTTOM_EMISS_COEFF", LOWER_LIMIT));
  EXPECT_EQ(check("LW_RADIATION", flag + "TOP_EMISS_COEFF = 1 -\nBOTTOM_EMISS_COEFF = 0 -"), nothingThrown());
}

TEST(VelFieldCondCheck, gapEmission_liesBetweenZeroAndOne) {
  const std::string x = "FLAGS = LW_RADIATION_X\n", y = "FLAGS = LW_RADIATION_Y\n";
  EXPECT_EQ(check("LW_RADIATION", x + "LEFT_EMISS_COEFF = -0.1 -"), outOfRange("LEFT_EMISS_COEFF", ">= 0 -"));
  EXPECT_EQ(check("LW_RADIATION", x + "LEFT_EMISS_COEFF = 1.1 -"), outOfRange("LEFT_EMISS_COEFF", "<= 1 -"));
  EXPECT_EQ(check("LW_RADIATION", x + "LEFT_EMISS_COEFF = 1 -\nRIGHT_EMISS_COEFF = 1.1 -"),
            outOfRange("RIGHT_EMISS_COEFF", "<= 1 -"));
  EXPECT_EQ(check("LW_RADIATION", y + "TOP_EMISS_COEFF = 1.1 -"), outOfRange("TOP_EMISS_COEFF", "<= 1 -"));
  EXPECT_EQ(check("LW_RADIATION", y + "TOP_EMISS_COEFF = 1 -\nBOTTOM_EMISS_COEFF = -0.1 -"),
            outOfRange("BOTTOM_EMISS_COEFF", ">= 0 -"));
}

TEST(VelFieldCondCheck, ambientRadiation_testsEachCoefficientOnlyIfSet) {
  EXPECT_EQ(check("AMBIENTRADIATION"), nothingThrown());
  for (const std::string keyword :
       {"LEFT_EMISS_COEFF", "RIGHT_EMISS_COEFF", "TOP_EMISS_COEFF", "BOTTOM_EMISS_COEFF"}) {
    EXPECT_EQ(check("AMBIENTRADIATION", keyword + " = 1 -"), nothingThrown());
    EXPECT_EQ(check("AMBIENTRADIATION", keyword + " = 0 -"), nothingThrown());
    EXPECT_EQ(check("AMBIENTRADIATION", keyword + " = 1.1 -"), outOfRange(keyword, "<= 1 -"));
    EXPECT_EQ(check("AMBIENTRADIATION", keyword + " = -0.1 -"), outOfRange(keyword, ">= 0 -"));
  }
}

TEST(VelFieldCondCheck, remoteWaterSource_needsThreeParameters) {
  EXPECT_EQ(check("REMWATSOUR"), required("WATTRANSFCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("REMWATSOUR", "WATTRANSFCOEFF = -1 kg/s"), outOfRange("WATTRANSFCOEFF", ">= 0 kg/s"));
  EXPECT_EQ(check("REMWATSOUR", "WATTRANSFCOEFF = 0 kg/s"), required("LIM_SATDEGREE", LOWER_LIMIT));
  EXPECT_EQ(check("REMWATSOUR", "WATTRANSFCOEFF = 0 kg/s\nLIM_SATDEGREE = 0 -"),
            required("WATTRANS_EXPONENT", LOWER_LIMIT));
  EXPECT_EQ(check("REMWATSOUR", "WATTRANSFCOEFF = 0 kg/s\nLIM_SATDEGREE = 1 -\nWATTRANS_EXPONENT = 0.1 -"),
            nothingThrown());
}

TEST(VelFieldCondCheck, remoteWaterSink_needsNoTransferCoefficient) {
  EXPECT_EQ(check("REMWATSINK"), required("LIM_SATDEGREE", LOWER_LIMIT));
  EXPECT_EQ(check("REMWATSINK", "LIM_SATDEGREE = 0 -\nWATTRANS_EXPONENT = 2 -"), nothingThrown());
}

TEST(VelFieldCondCheck, remoteWaterLimits_areTested) {
  EXPECT_EQ(check("REMWATSINK", "LIM_SATDEGREE = -0.1 -"), outOfRange("LIM_SATDEGREE", ">= 0 -"));
  EXPECT_EQ(check("REMWATSINK", "LIM_SATDEGREE = 101 %"), outOfRange("LIM_SATDEGREE", "<= 1 ---"));
  EXPECT_EQ(check("REMWATSINK", "LIM_SATDEGREE = 1 -\nWATTRANS_EXPONENT = 0 -"),
            outOfRange("WATTRANS_EXPONENT", "> 0 -"));
}

TEST(VelFieldCondCheck, remoteEnergySource_needsTheFluid) {
  EXPECT_EQ(check("REMENESOUR"), required("FLUID_CAPACITY", LOWER_LIMIT));
  EXPECT_EQ(check("REMENESOUR", "FLUID_CAPACITY = 0 J/m3K"), nothingThrown());
  EXPECT_EQ(check("REMENESOUR", "FLUID_CAPACITY = -1 J/m3K"), outOfRange("FLUID_CAPACITY", ">= 0 J/m3K"));
}

TEST(VelFieldCondCheck, remoteEnergySink_needsALimitNotBelowAbsoluteZero) {
  EXPECT_EQ(check("REMENESINK"), required("LIM_SNK_TEMPERATURE", LOWER_LIMIT));
  EXPECT_EQ(check("REMENESINK", "LIM_SNK_TEMPERATURE = -273.15 C"), nothingThrown());
  EXPECT_EQ(check("REMENESINK", "LIM_SNK_TEMPERATURE = -274 C"),
            outOfRange("LIM_SNK_TEMPERATURE", ">= -273.15 C"));
}

TEST(VelFieldCondCheck, phaseChangeSource_needsThreeParameters) {
  EXPECT_EQ(check("PCMENESOUR"), required("ENETRANSFCOEFF", LOWER_LIMIT));
  EXPECT_EQ(check("PCMENESOUR", "ENETRANSFCOEFF = -1 J/s"), outOfRange("ENETRANSFCOEFF", ">= 0 J/s"));
  const std::string transfer = "ENETRANSFCOEFF = 0 W\n";
  EXPECT_EQ(check("PCMENESOUR", transfer), required("PCM_MELT_TEMP", LOWER_LIMIT));
  EXPECT_EQ(check("PCMENESOUR", transfer + "PCM_MELT_TEMP = 0 K"),
            outOfRange("PCM_MELT_TEMP", "> -273.15 C"));
  const std::string melt = transfer + "PCM_MELT_TEMP = 25 C\n";
  EXPECT_EQ(check("PCMENESOUR", melt), required("PCM_DEL_TEMP", LOWER_LIMIT));
  EXPECT_EQ(check("PCMENESOUR", melt + "PCM_DEL_TEMP = 0 K"), outOfRange("PCM_DEL_TEMP", "> 0 K"));
  EXPECT_EQ(check("PCMENESOUR", melt + "PCM_DEL_TEMP = 0.1 K"), nothingThrown());
}

TEST(VelFieldCondCheck, gasType_isBelowFour) {
  const std::string rest = "GC_GASPROPORTION = 90 %\nGC_INCLINATION = 90 Deg\n";
  EXPECT_EQ(check("GAS_CONVECTION", rest), required("GC_GASTYPE", LOWER_LIMIT));
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASTYPE = 4 -"), outOfRange("GC_GASTYPE", "< 4 -"));
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASTYPE = 3 -"), nothingThrown());
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASTYPE = 0 -"), nothingThrown());
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASTYPE = -1 -"), outOfRange("GC_GASTYPE", ">= 0 -"));
}

TEST(VelFieldCondCheck, gasProportion_isAPercentage) {
  const std::string rest = "GC_GASTYPE = 1 -\nGC_INCLINATION = 0 Deg\n";
  EXPECT_EQ(check("GAS_CONVECTION", rest), required("GC_GASPROPORTION", LOWER_LIMIT));
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASPROPORTION = 0 %"), nothingThrown());
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASPROPORTION = 100 %"), nothingThrown());
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASPROPORTION = 101 %"),
            outOfRange("GC_GASPROPORTION", "<= 100 %"));
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_GASPROPORTION = -1 %"),
            outOfRange("GC_GASPROPORTION", ">= 0 %"));
}

TEST(VelFieldCondCheck, gapInclination_liesBetweenZeroAndNinetyDegrees) {
  const std::string rest = "GC_GASTYPE = 1 -\nGC_GASPROPORTION = 90 %\n";
  EXPECT_EQ(check("GAS_CONVECTION", rest), required("GC_INCLINATION", LOWER_LIMIT));
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_INCLINATION = 90 Deg"), nothingThrown());
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_INCLINATION = 91 Deg"),
            outOfRange("GC_INCLINATION", "<= 90 Deg"));
  EXPECT_EQ(check("GAS_CONVECTION", rest + "GC_INCLINATION = -1 Deg"),
            outOfRange("GC_INCLINATION", ">= 0 Deg"));
}

TEST(VelFieldCondCheck, leak_needsItsThreeParametersInRange) {
  const std::string flow = "CMP_Q50 = 0 m3/m2s\n", height = "CMP_HEIGHT = 1 m\n";
  const std::string fans = "CMP_DIFFPRESSURE_MECH = 0 Pa\n";
  EXPECT_EQ(check("CONVECTIVE_SOURCE", flow + height + fans), nothingThrown());
  EXPECT_EQ(check("CONVECTIVE_SOURCE", height + fans), required("CMP_Q50", LOWER_LIMIT));
  EXPECT_EQ(check("CONVECTIVE_SOURCE", flow + fans), required("CMP_HEIGHT", LOWER_LIMIT));
  EXPECT_EQ(check("CONVECTIVE_SOURCE", flow + height), required("CMP_DIFFPRESSURE_MECH", LOWER_LIMIT));
  EXPECT_EQ(check("CONVECTIVE_SOURCE", "CMP_Q50 = -1 m3/m2s\n" + height + fans),
            outOfRange("CMP_Q50", ">= 0 m3/m2s"));
  EXPECT_EQ(check("CONVECTIVE_SOURCE", flow + "CMP_HEIGHT = 0 m\n" + fans),
            outOfRange("CMP_HEIGHT", "> 0 m"));
  EXPECT_EQ(check("CONVECTIVE_SOURCE", flow + height + "CMP_DIFFPRESSURE_MECH = -1 Pa\n"),
            outOfRange("CMP_DIFFPRESSURE_MECH", ">= 0 Pa"));
}

TEST(VelFieldCondCheck, conditionWithoutRule_passes) {
  for (const char* type : {"VOCSOURCE", "ENESOURCE", "PCMENESINK", "AIRCHANGE", "WATERFLOW", "VOCADSORPTION",
                           "VOCCHEMISORPTION", "AIRFLOW", "MEDIAFLOW"}) {
    EXPECT_EQ(check(type, "LIM_SATDEGREE = -5 m"), nothingThrown()) << type;
  }
}

#include <gtest/gtest.h>

#include <numbers>
#include <stdexcept>

#include "climate/ClimateTestSupport.h"
#include "climate/VelClimateCond.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

using namespace VELMORA;
using Climate = VelClimateCond;
using TKL::Thrown;

namespace {

/// The tags end in two blanks.
const std::string PREPARE_ID = "[VelClimateCond::prepareCalculation]  ";
const std::string DATA_ID = "[VelClimateCond::readClimateData]  ";

Climate condition(const std::string& text) {
  Climate climate;
  climate.read(SectionText("NAME = air\n" + text));
  return climate;
}

Thrown thrownByPreparing(Climate climate) {
  return TKL::thrownBy([&] { climate.prepareCalculation({}); });
}

Climate dataCondition(const std::string& type, const std::string& content) {
  return condition("KIND = DATLINEAR\nTYPE = " + type +
                   "\nFILENAME = " + testFile("series.ccd", content).str());
}

const std::string SINE =
    "TYPE = TEMPER\nKIND = SINUS\nMEANVALUE = 20 C\nAMPLITUDE1 = 5 K\n"
    "OSCPERIOD1 = 1 d\nPHASESHIFT1 = 0 h\n";
const std::string TWO_SINES =
    "TYPE = TEMPER\nKIND = 2SINUS\nMEANVALUE = 20 C\nAMPLITUDE1 = 5 K\n"
    "OSCPERIOD1 = 1 d\nPHASESHIFT1 = 0 h\nAMPLITUDE2 = 5 K\nOSCPERIOD2 = 1 h\n"
    "PHASESHIFT2 = 0 h\n";

std::string notPositive(const std::string& shownName) {
  return "Parameter " + shownName + " in climate condition climate condition must not be negative or zero!";
}

}  // namespace

TEST(VelClimateCondPrepare, withoutKind_fails) {
  EXPECT_EQ(thrownByPreparing(condition("TYPE = TEMPER\n")),
            (Thrown{"Missing kind type in 'climate condition' with name 'air'!", PREPARE_ID}));
}

TEST(VelClimateCondPrepare, constantWithoutValue_fails) {
  EXPECT_EQ(thrownByPreparing(condition("TYPE = TEMPER\nKIND = CONSTANT\n")),
            (Thrown{"Missing parameter in 'climate condition' with name 'air'!", PREPARE_ID}));
}

TEST(VelClimateCondPrepare, constant_becomesTheCurrentValue) {
  Climate climate = condition("TYPE = TEMPER\nKIND = CONSTANT\nCONSTVALUE = 20 C\n");
  climate.prepareCalculation({});
  EXPECT_DOUBLE_EQ(climate.currentValue, 293.15);
}

TEST(VelClimateCondPrepare, sineWithoutOneOfItsParameters_fails) {
  for (const auto index :
       {Climate::P_MEANVALUE, Climate::P_AMPLITUDE1, Climate::P_OSCPERIOD1, Climate::P_PHASESHIFT1}) {
    Climate climate = condition(SINE);
    climate.para[index].clear();
    EXPECT_EQ(thrownByPreparing(climate),
              (Thrown{"Missing parameter in 'climate condition' with name 'air'!", PREPARE_ID}))
        << index;
  }
}

TEST(VelClimateCondPrepare, twoSinesWithoutOneOfTheirParameters_fail) {
  for (const auto index :
       {Climate::P_MEANVALUE, Climate::P_AMPLITUDE1, Climate::P_OSCPERIOD1, Climate::P_PHASESHIFT1,
        Climate::P_AMPLITUDE2, Climate::P_OSCPERIOD2, Climate::P_PHASESHIFT2}) {
    Climate climate = condition(TWO_SINES);
    climate.para[index].clear();
    EXPECT_EQ(thrownByPreparing(climate),
              (Thrown{"Missing parameter in 'climate condition' with name 'air'!", PREPARE_ID}))
        << index;
  }
}

TEST(VelClimateCondPrepare, sine_needsNoParameterOfTheSecondSineAndNoConstant) {
  Climate climate = condition(SINE);
  climate.prepareCalculation({});
  EXPECT_DOUBLE_EQ(climate.omega1, 2.0 * std::numbers::pi / 86400.0);
  EXPECT_EQ(climate.omega2, 0.0);
}

TEST(VelClimateCondPrepare, twoSines_haveTwoFrequencies) {
  Climate climate = condition(TWO_SINES);
  climate.prepareCalculation({});
  EXPECT_DOUBLE_EQ(climate.omega1, 2.0 * std::numbers::pi / 86400.0);
  EXPECT_DOUBLE_EQ(climate.omega2, 2.0 * std::numbers::pi / 3600.0);
}

TEST(VelClimateCondPrepare, amplitudeOfZero_fails) {
  Climate climate = condition(SINE);
  climate.para[Climate::P_AMPLITUDE1].value = 0.0;
  EXPECT_EQ(thrownByPreparing(climate), (Thrown{notPositive("CP_AMPLITUDE1"), PREPARE_ID}));
}

TEST(VelClimateCondPrepare, periodIsCheckedBeforeTheAmplitude) {
  Climate climate = condition(SINE);
  climate.para[Climate::P_AMPLITUDE1].value = -1.0;
  climate.para[Climate::P_OSCPERIOD1].value = -1.0;
  EXPECT_EQ(thrownByPreparing(climate), (Thrown{notPositive("OSCPERIOD1"), PREPARE_ID}));
}

TEST(VelClimateCondPrepare, twoSines_checkPeriodsThenAmplitudesInOrder) {
  Climate climate = condition(TWO_SINES);
  const std::vector<std::pair<Climate::para_t, std::string>> order{{Climate::P_OSCPERIOD1, "OSCPERIOD1"},
                                                                   {Climate::P_OSCPERIOD2, "OSCPERIOD2"},
                                                                   {Climate::P_AMPLITUDE1, "CP_AMPLITUDE1"},
                                                                   {Climate::P_AMPLITUDE2, "CP_AMPLITUDE2"}};
  for (const auto& check : order) climate.para[check.first].value = 0.0;
  for (const auto& [index, shownName] : order) {
    EXPECT_EQ(thrownByPreparing(climate), (Thrown{notPositive(shownName), PREPARE_ID}));
    climate.para[index].value = 1.0;
  }
  EXPECT_EQ(thrownByPreparing(climate).text, "nothing thrown");
}

TEST(VelClimateCondPrepare, sine_ignoresBadValuesOfTheSecondSine) {
  Climate climate = condition(SINE + "OSCPERIOD2 = 0 s\nAMPLITUDE2 = 0 K\n");
  EXPECT_NO_THROW(climate.prepareCalculation({}));
}

TEST(VelClimateCondData, valuesAreConvertedToTheBaseUnit) {
  Climate climate = dataCondition("TEMPER", "TEMPER C\n0 00:00:00 0\n1 00:00:00 20\n");
  climate.prepareCalculation({});
  EXPECT_EQ(climate.data.x, (std::vector<double>{0, 86400}));
  EXPECT_DOUBLE_EQ(climate.data.y[0], 273.15);
  EXPECT_DOUBLE_EQ(climate.data.y[1], 293.15);
  EXPECT_EQ(climate.ioUnit.name(), "C");
  EXPECT_TRUE(climate.data.valid);
}

TEST(VelClimateCondData, readClimateData_handsBackWordAndUnit) {
  Climate climate;
  std::string word;
  TKL::Unit unit;
  climate.readClimateData(testFile("a.ccd", "CLOUDCOV 1/10\n0 00:00:00 5\n"), word, unit);
  EXPECT_EQ(word, "CLOUDCOV");
  EXPECT_EQ(unit.name(), "1/10");
  EXPECT_DOUBLE_EQ(climate.data.y[0], 0.5);
}

TEST(VelClimateCondData, placeholderInTheFileName_isReplaced) {
  const TKL::Path file = testFile("a.ccd", "TEMPER K\n0 00:00:00 300\n");
  Climate climate =
      condition("TYPE = TEMPER\nKIND = DATLINEAR\nFILENAME = $(CLIMATE_DIR)/" + file.filename());
  climate.prepareCalculation({{"CLIMATE_DIR", file.parentPath()}});
  EXPECT_EQ(climate.data.y, std::vector<double>{300});
  EXPECT_EQ(climate.fileName.str(), "$(CLIMATE_DIR)/" + file.filename());
}

TEST(VelClimateCondData, relativeFileName_beginsAtTheProject) {
  const TKL::Path file = testFile("a.ccd", "TEMPER K\n0 00:00:00 300\n");
  Climate climate = condition("TYPE = TEMPER\nKIND = DATLINEAR\nFILENAME = " + file.filename());
  climate.prepareCalculation({{"PROJECT_DIR", file.parentPath()}});
  EXPECT_EQ(climate.data.size(), 1u);
}

TEST(VelClimateCondData, missingFile_failsWithTheTextOfTheReader) {
  EXPECT_EQ(thrownByPreparing(condition("TYPE = TEMPER\nKIND = DATLINEAR\nFILENAME = /no/such/x.ccd\n")),
            (Thrown{"Could not open CCD file '/no/such/x.ccd'!", DATA_ID}));
}

TEST(VelClimateCondData, noFileName_failsForWantOfAnExtension) {
  EXPECT_EQ(thrownByPreparing(condition("TYPE = TEMPER\nKIND = DATLINEAR\n")),
            (Thrown{"[read_climate_file]  File extension required to determine type of climate data file!",
                    DATA_ID}));
}

TEST(VelClimateCondData, badFile_isNamedByTheDeepestRecord) {
  Climate climate = dataCondition("TEMPER", "TEMPER C\nx\n");
  try {
    climate.prepareCalculation({});
    FAIL();
  } catch (const TKL::Exception& error) {
    ASSERT_EQ(error.records().size(), 2u);
    EXPECT_EQ(error.records()[0].what, "Cannot read climate data file '" + climate.fileName.str() + "'.");
    EXPECT_STREQ(error.what(), "Error reading data entry in line #2, line data was 'x'!");
  }
}

TEST(VelClimateCondData, unknownUnit_fails) {
  EXPECT_EQ(thrownByPreparing(dataCondition("TEMPER", "TEMPER Q\n0 00:00:00 1\n")).text,
            "Unit 'Q' not found.");
}

TEST(VelClimateCondData, seriesWithoutValues_fails) {
  EXPECT_EQ(thrownByPreparing(dataCondition("TEMPER", "TEMPER C\n")),
            (Thrown{"Input vectors are empty.", "[LinearSpline::setValues]"}));
}

TEST(VelClimateCondData, repeatedTimes_areDroppedWithAWarning) {
  TKL::MessageCapture messages;
  Climate climate = dataCondition("TEMPER", "TEMPER K\n0 0:0:0 1\n1 0:0:0 2\n1 0:0:0 3\n2 0:0:0 4\n");
  climate.prepareCalculation({});
  EXPECT_EQ(climate.data.y, (std::vector<double>{1, 2, 4}));
  EXPECT_EQ(messages.count("Duplicate x-value 86400 found (and skipped)."), 1);
}

TEST(VelClimateCondData, decreasingTimesOfACliFile_areAStandardError) {
  TKL::MessageCapture messages;
  Climate climate = condition(
      "TYPE = TEMPER\nKIND = DATLINEAR\nFILENAME = " +
      testFile("a.cli", "ClimaCond=TEMPER\nIO_Unit=K\nTimeFormat=SEC\nUsage\nData=\n0 1\n2 1\n1 1\n").str());
  try {
    climate.prepareCalculation({});
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "X values are not strictly monotonic increasing (at position/index 1).");
  }
}

TEST(VelClimateCondData, otherQuantityInTheFile_fails) {
  const Climate climate = dataCondition("TEMPER", "RELHUM %\n0 00:00:00 1\n");
  EXPECT_EQ(thrownByPreparing(climate),
            (Thrown{"Mismatch of condition type 'RELHUM' in CC file '" + climate.fileName.str() +
                        " and condition type set in CC 'air'!",
                    PREPARE_ID}));
}

TEST(VelClimateCondData, unknownQuantityInTheFile_failsInTheKeywordList) {
  EXPECT_EQ(thrownByPreparing(dataCondition("TEMPER", "Heat K\n0 00:00:00 1\n")).location,
            "[KeywordList::Enumeration]");
}

TEST(VelClimateCondData, temperatures_standForEachOther) {
  for (const char* const own : {"TEMPER", "SKYTEMP", "GRNDTEMP"})
    for (const char* const inFile : {"TEMPER", "SKYTEMP", "GRNDTEMP", "Temper"})
      EXPECT_EQ(thrownByPreparing(dataCondition(own, std::string(inFile) + " C\n0 00:00:00 1\n")).text,
                "nothing thrown")
          << own << " " << inFile;
}

TEST(VelClimateCondData, rains_standForEachOther) {
  for (const char* const own : {"NORRAIN", "HORRAIN"})
    for (const char* const inFile : {"NORRAIN", "HORRAIN", "VertRain"})
      EXPECT_EQ(thrownByPreparing(dataCondition(own, std::string(inFile) + " l/m2h\n0 00:00:00 1\n")).text,
                "nothing thrown")
          << own << " " << inFile;
}

TEST(VelClimateCondData, rainAndTemperature_doNotMix) {
  EXPECT_NE(thrownByPreparing(dataCondition("TEMPER", "NORRAIN l/m2h\n0 00:00:00 1\n")).text,
            "nothing thrown");
  EXPECT_NE(thrownByPreparing(dataCondition("NORRAIN", "TEMPER C\n0 00:00:00 1\n")).text, "nothing thrown");
}

TEST(VelClimateCondData, quantityIsCheckedBeforeTheRange) {
  EXPECT_EQ(thrownByPreparing(dataCondition("RELHUM", "TEMPER C\n0 00:00:00 1\n")).text.substr(0, 8),
            "Mismatch");
}

TEST(VelClimateCondData, shiftValue_isAddedToTheSeries) {
  Climate climate = dataCondition("TEMPER", "TEMPER K\n0 00:00:00 1\n1 00:00:00 3\n");
  climate.read(SectionText("SHIFTVALUE = 2 K"));
  climate.prepareCalculation({});
  EXPECT_EQ(climate.data.y, (std::vector<double>{3, 5}));
  EXPECT_TRUE(climate.data.valid);
}

TEST(VelClimateCondData, shiftOfATemperature_needsNoRange) {
  Climate climate = dataCondition("TEMPER", "TEMPER K\n0 00:00:00 1\n");
  climate.read(SectionText("SHIFTVALUE = -9000000 K"));
  EXPECT_NO_THROW(climate.prepareCalculation({}));
}

TEST(VelClimateCondData, humidityShiftedAboveSaturation_fails) {
  Climate climate = dataCondition("RELHUM", "RELHUM ---\n0 00:00:00 0.9\n");
  climate.read(SectionText("SHIFTVALUE = 0.2 ---"));
  EXPECT_EQ(thrownByPreparing(climate),
            (Thrown{"Climate data for condition 'air' exceeds 100% relative humidity, likely due to a value "
                    "shift. Please check the shifting value you have entered! ",
                    PREPARE_ID}));
}

TEST(VelClimateCondData, humidityLimitHoldsWithoutAShift) {
  EXPECT_EQ(thrownByPreparing(dataCondition("RELHUM", "RELHUM ---\n0 00:00:00 1.0000001\n")).text,
            "nothing thrown");
  EXPECT_EQ(thrownByPreparing(dataCondition("RELHUM", "RELHUM ---\n0 00:00:00 1.0000002\n")).location,
            PREPARE_ID);
}

TEST(VelClimateCondData, farNegativeValues_failForNonNegativeQuantities) {
  const std::vector<std::pair<std::string, std::string>> quantities{
      {"RELHUM", "---"},  {"VAPPRESS", "Pa"},  {"NORRAIN", "l/m2s"}, {"HORRAIN", "l/m2s"},
      {"WINDVEL", "m/s"}, {"CLOUDCOV", "---"}, {"GASPRESS", "Pa"},   {"VOCDENSG", "kg/m3"}};
  for (const auto& [type, unit] : quantities) {
    const std::string header = type + " " + unit + "\n0 00:00:00 ";
    EXPECT_EQ(thrownByPreparing(dataCondition(type, header + "-1000000.5\n")),
              (Thrown{"Climate data for condition 'air' has negative values, most likely due to a value "
                      "shift. Please check the shifting value you have entered! ",
                      PREPARE_ID}))
        << type;
    EXPECT_EQ(thrownByPreparing(dataCondition(type, header + "-1000000\n")).text, "nothing thrown") << type;
  }
}

TEST(VelClimateCondData, farNegativeValues_passForOtherQuantities) {
  EXPECT_EQ(thrownByPreparing(dataCondition("HEATFLUXDENS", "HEATFLUXDENS W/m2\n0 0:0:0 -2000000\n")).text,
            "nothing thrown");
}

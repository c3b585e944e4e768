#include <gtest/gtest.h>

#include "climate/VelClimateCond.h"
#include "keywords/KeywordList.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

using namespace VELMORA;
using TKL::Thrown;

namespace {

const std::string READ_ID = "[VelClimateCond::read]";

VelClimateCond readCondition(const std::string& text) {
  VelClimateCond climate;
  climate.read(SectionText(text));
  return climate;
}

Thrown thrownByReading(const std::string& text) {
  return TKL::thrownBy([&] { readCondition(text); });
}

}  // namespace

TEST(VelClimateCondEnumerations, matchTheKeywordList) {
  const auto index = [](const char* category, const char* keyword) {
    return KeywordList::Enumeration(category, keyword);
  };
  EXPECT_EQ(index("VelClimateCond::condition_t", "TEMPER"), VelClimateCond::C_TEMPER);
  EXPECT_EQ(index("VelClimateCond::condition_t", "HORRAIN"), VelClimateCond::C_HORRAIN);
  EXPECT_EQ(index("VelClimateCond::condition_t", "LOWRAD"), VelClimateCond::C_LOWRAD);
  EXPECT_EQ(index("VelClimateCond::condition_t", "SKYTEMP"), VelClimateCond::C_SKYTEMP);
  EXPECT_EQ(index("VelClimateCond::condition_t", "GRNDTEMP"), VelClimateCond::C_GRNDTEMP);
  EXPECT_EQ(index("VelClimateCond::condition_t", "GASPRESS"), VelClimateCond::C_GASPRESS);
  EXPECT_EQ(index("VelClimateCond::condition_t", "VOCDENSG"), VelClimateCond::C_VOCDENSG);
  EXPECT_EQ(index("VelClimateCond::condition_t", "PERCENTAGE"), VelClimateCond::C_PERCENTAGE);
  EXPECT_EQ(KeywordList::MaxIndex("VelClimateCond::condition_t") + 1, VelClimateCond::NUM_C);
  EXPECT_EQ(index("VelClimateCond::kind_t", "2SINUS"), VelClimateCond::K_2SINUS);
  EXPECT_EQ(KeywordList::MaxIndex("VelClimateCond::kind_t") + 1, VelClimateCond::NUM_K);
  EXPECT_EQ(index("VelClimateCond::para_t", "PHASESHIFT2"), VelClimateCond::P_PHASESHIFT2);
  EXPECT_EQ(index("VelClimateCond::para_t", "SHIFTVALUE"), VelClimateCond::P_SHIFTVALUE);
  EXPECT_EQ(KeywordList::MaxIndex("VelClimateCond::para_t") + 1, VelClimateCond::NUM_P);
}

TEST(VelClimateCondRead, freshCondition_hasItsDefaults) {
  const VelClimateCond climate;
  EXPECT_EQ(climate.condition, 31);
  EXPECT_EQ(climate.kind, 4);
  EXPECT_FALSE(climate.fileName.isValid());
  EXPECT_EQ(climate.ioUnit.name(), "undefined");
  EXPECT_TRUE(climate.useInterpolation && climate.extendData && climate.cyclicData);
  EXPECT_TRUE(climate.data.empty());
  EXPECT_EQ(climate.currentValue, 0.0);
  EXPECT_FALSE(climate.used);
  EXPECT_EQ(climate.omega1, 0.0);
  EXPECT_EQ(climate.omega2, 0.0);
  for (const TKL::Parameter& parameter : climate.para) EXPECT_FALSE(parameter.isSet());
}

TEST(VelClimateCondRead, everyKeyword_setsItsField) {
  const VelClimateCond climate = readCondition(
      "TYPE = RELHUM\nNAME = out = side\nKIND = DATLINEAR\nFILENAME = $(CLIMATE_DIR)/a.ccd\n"
      "SPECIES = toluene\nUSE_INTERPOLATION = no\nEXTEND_DATA = No\nCYCLIC_DATA = 0\n"
      "CONSTVALUE = 80 %\nSHIFTVALUE = 5 %\n");
  EXPECT_EQ(climate.condition, VelClimateCond::C_RELHUM);
  EXPECT_EQ(climate.name, "out = side");
  EXPECT_EQ(climate.kind, VelClimateCond::K_DATLINEAR);
  EXPECT_EQ(climate.fileName.str(), "$(CLIMATE_DIR)/a.ccd");
  EXPECT_EQ(climate.species, "toluene");
  EXPECT_FALSE(climate.useInterpolation);
  EXPECT_FALSE(climate.extendData);
  EXPECT_FALSE(climate.cyclicData);
  EXPECT_DOUBLE_EQ(climate.para[VelClimateCond::P_CONSTVALUE].value, 0.8);
  EXPECT_DOUBLE_EQ(climate.para[VelClimateCond::P_SHIFTVALUE].value, 0.05);
}

TEST(VelClimateCondRead, everyParameter_keepsValueInBaseUnit) {
  const VelClimateCond climate = readCondition(
      "CONSTVALUE = 1 K\nMEANVALUE = 0 C\nAMPLITUDE1 = 3 K\nOSCPERIOD1 = 1 d\nPHASESHIFT1 = 2 h\n"
      "AMPLITUDE2 = 4 K\nOSCPERIOD2 = 1 h\nPHASESHIFT2 = 1 min\nSHIFTVALUE = 5 K\n");
  const std::vector<double> expected{1, 273.15, 3, 86400, 7200, 4, 3600, 60, 5};
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_DOUBLE_EQ(climate.para[i].value, expected[i]) << climate.para[i].name;
}

TEST(VelClimateCondRead, oldWordsOfAQuantity_areUnderstood) {
  EXPECT_EQ(readCondition("TYPE = VertRain\n").condition, VelClimateCond::C_HORRAIN);
}

TEST(VelClimateCondRead, switches_takeYesInAnyCaseAnd1) {
  for (const char* const value : {"yes", "YES", "1"}) {
    VelClimateCond climate;
    climate.useInterpolation = climate.extendData = climate.cyclicData = false;
    const std::string v = value;
    climate.read(SectionText("USE_INTERPOLATION = " + v + "\nEXTEND_DATA = " + v + "\nCYCLIC_DATA = " + v));
    EXPECT_TRUE(climate.useInterpolation && climate.extendData && climate.cyclicData) << value;
  }
}

TEST(VelClimateCondRead, switches_refuseOtherWords) {
  for (const char* const keyword : {"USE_INTERPOLATION", "EXTEND_DATA", "CYCLIC_DATA"})
    EXPECT_EQ(
        thrownByReading(std::string(keyword) + " = true\n"),
        (Thrown{std::string("Invalid parameter value 'true' for keyword '") + keyword + "'!", READ_ID}));
}

TEST(VelClimateCondRead, endlessWordOfASwitch_isQuotedShort) {
  EXPECT_EQ(thrownByReading("CYCLIC_DATA = " + std::string(100000, 'a')).text,
            "Invalid parameter value '" + std::string(200, 'a') + "...' for keyword 'CYCLIC_DATA'!");
}

TEST(VelClimateCondRead, parameterWithoutUnit_isRefused) {
  EXPECT_EQ(thrownByReading("CONSTVALUE = 5\n"),
            (Thrown{"Invalid parameter value '5' for keyword 'CONSTVALUE'!", READ_ID}));
}

TEST(VelClimateCondRead, parameterWithUnknownUnit_isRefused) {
  EXPECT_EQ(thrownByReading("CONSTVALUE = 5 Q\n"),
            (Thrown{"Invalid parameter value '5 Q' for keyword 'CONSTVALUE'!", READ_ID}));
}

TEST(VelClimateCondRead, lineWithoutEqualsSign_isRefused) {
  EXPECT_EQ(thrownByReading("NAME\n"), (Thrown{"Expected keyword, got 'NAME'!", READ_ID}));
}

TEST(VelClimateCondRead, keywordWithoutValue_isRefused) {
  EXPECT_EQ(thrownByReading("NAME =\n"), (Thrown{"Missing value for keyword 'NAME'!", READ_ID}));
}

TEST(VelClimateCondRead, unknownType_isRefusedByTheKeywordList) {
  EXPECT_EQ(thrownByReading("TYPE = HUMIDITY\n").location, "[KeywordList::Enumeration]");
}

TEST(VelClimateCondRead, unknownKind_isRefusedByTheKeywordList) {
  EXPECT_EQ(thrownByReading("KIND = COSINUS\n"),
            (Thrown{"Cannot determine enumeration value for enumeration type 'VelClimateCond::kind_t' and "
                    "keyword 'COSINUS'.",
                    "[KeywordList::Enumeration]"}));
}

TEST(VelClimateCondRead, failure_carriesTheLineOfTheProjectFile) {
  VelClimateCond climate;
  try {
    climate.read(SectionText("NAME = a\nCONSTVALUE = x\n", 41));
    FAIL();
  } catch (const TKL::Exception& error) {
    EXPECT_EQ(error.inputLine(), 42);
  }
}

TEST(VelClimateCondRead, unknownKeyword_isWarnedAboutAndSkipped) {
  TKL::MessageCapture messages;
  const VelClimateCond climate = readCondition("COLOUR = red\nNAME = a\n");
  EXPECT_EQ(climate.name, "a");
  EXPECT_TRUE(
      messages.has("Invalid or deprecated keyword 'COLOUR' in this section!", TKL::MSG_WARNING, READ_ID, 3));
}

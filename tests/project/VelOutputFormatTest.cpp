#include "project/VelOutputFormat.h"

#include <gtest/gtest.h>

#include "keywords/KeywordList.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

using TKL::Thrown;
using TKL::thrownBy;
using VELMORA::KeywordList;
using VELMORA::SectionText;
using VELMORA::VelOutputFormat;

namespace {

VelOutputFormat formatFrom(const std::string& text) {
  VelOutputFormat format;
  format.read(SectionText(text));
  return format;
}

struct Quantity {
  std::string keyword;
  int index;
};

#define FIELD_QUANTITY(KEYWORD) \
  { #KEYWORD, VelOutputFormat::Q_##KEYWORD }
#define FLUX_QUANTITY(KEYWORD) \
  { #KEYWORD, VelOutputFormat::X_##KEYWORD }

// In the order of their numbers.
const std::vector<Quantity> FIELD_QUANTITIES = {FIELD_QUANTITY(TEMPER),
                                                FIELD_QUANTITY(ENERGY),
                                                FIELD_QUANTITY(MOISTURE),
                                                FIELD_QUANTITY(WATERMASS),
                                                FIELD_QUANTITY(VAPORMASS),
                                                FIELD_QUANTITY(THETAL),
                                                FIELD_QUANTITY(ULIQU),
                                                FIELD_QUANTITY(OVHWATCONT),
                                                FIELD_QUANTITY(OVHWATMASS),
                                                FIELD_QUANTITY(RELHUM),
                                                FIELD_QUANTITY(GASPRESS),
                                                FIELD_QUANTITY(GASPRESS_DIFF),
                                                FIELD_QUANTITY(LIQUIDPRESS),
                                                FIELD_QUANTITY(CAPILLARYPRESS),
                                                FIELD_QUANTITY(VAPPRESS),
                                                FIELD_QUANTITY(SALT),
                                                FIELD_QUANTITY(SALTMOLAL),
                                                FIELD_QUANTITY(SALTMOLNUM),
                                                FIELD_QUANTITY(SOLUTION),
                                                FIELD_QUANTITY(VOCG),
                                                FIELD_QUANTITY(VOCS),
                                                FIELD_QUANTITY(VOCPRESS),
                                                FIELD_QUANTITY(VOCDENSG),
                                                FIELD_QUANTITY(THERMAL_EXPANSION),
                                                FIELD_QUANTITY(HYGRIC_EXPANSION),
                                                FIELD_QUANTITY(TOTAL_EXPANSION),
                                                FIELD_QUANTITY(HEATSOURCE),
                                                FIELD_QUANTITY(MOISTSOURCE),
                                                FIELD_QUANTITY(VOCSOURCE),
                                                FIELD_QUANTITY(LOCALERROR_U),
                                                FIELD_QUANTITY(LOCALERROR_MWV),
                                                FIELD_QUANTITY(FREEZE_THAW),
                                                FIELD_QUANTITY(RHO_ICE),
                                                FIELD_QUANTITY(ICE_VOLUME_RATIO),
                                                FIELD_QUANTITY(HP_FLOW_TEMPERATURE),
                                                FIELD_QUANTITY(HP_RETURN_FLOW_TEMPERATURE),
                                                FIELD_QUANTITY(SATDEGREE),
                                                FIELD_QUANTITY(CONVECTIVE_MOISTURE_SOURCE),
                                                FIELD_QUANTITY(CONVECTIVE_AIR_FLOW),
                                                FIELD_QUANTITY(HEATFLUXMEAN),
                                                FIELD_QUANTITY(AIRFLUXMEAN),
                                                FIELD_QUANTITY(AIRFLUXMAX_X),
                                                FIELD_QUANTITY(AIRFLUXMAX_Y),
                                                FIELD_QUANTITY(AIRENTHALPYFLUX),
                                                FIELD_QUANTITY(AIRFLOWENTHALPY_IN),
                                                FIELD_QUANTITY(AIRFLOWENTHALPY_OUT),
                                                FIELD_QUANTITY(HP_HEAT_FLUX),
                                                FIELD_QUANTITY(DEW_POINT)};
const std::vector<Quantity> FLUX_QUANTITIES = {
    FLUX_QUANTITY(HEATFLUX), FLUX_QUANTITY(MOISTFLUX),  FLUX_QUANTITY(WATFLUX),
    FLUX_QUANTITY(VAPDIFF),  FLUX_QUANTITY(VAPCONV),    FLUX_QUANTITY(AIRFLUX),
    FLUX_QUANTITY(VOCFLUX),  FLUX_QUANTITY(VOCDIFF),    FLUX_QUANTITY(VOCCONV),
    FLUX_QUANTITY(NORMRAIN), FLUX_QUANTITY(SHWRAD),     FLUX_QUANTITY(LWRAD),
    FLUX_QUANTITY(AIRENTH),  FLUX_QUANTITY(RAINRUNOFF), FLUX_QUANTITY(RAINRUNOFFENTH),
    FLUX_QUANTITY(WATENTH)};

#undef FIELD_QUANTITY
#undef FLUX_QUANTITY

}  // namespace

TEST(VelOutputFormat, defaults) {
  const VelOutputFormat format = formatFrom("");
  EXPECT_EQ(format.name, "");
  EXPECT_EQ(format.type, 2);
  EXPECT_EQ(format.quantity, -1);
  EXPECT_EQ(format.spaceType, 3);
  EXPECT_EQ(format.timeType, 3);
  EXPECT_EQ(format.timeUnit.name(), "undefined");
  EXPECT_EQ(format.valueUnit.name(), "undefined");
  EXPECT_EQ(format.precision, 9);
  EXPECT_EQ(format.width, 12);
  EXPECT_EQ(format.numberFormat, 0x3000);
  EXPECT_FALSE(format.binary);
}

TEST(VelOutputFormat, fieldFormat_isReadWhole) {
  const VelOutputFormat format = formatFrom(
      "NAME = T\nTYPE = FIELD\nFIELD_TYPE = RELHUM\nSPACE_TYPE = MEAN\nTIME_TYPE = INTEGRAL\n"
      "TIME_UNIT = h\nVALUE_UNIT = %\nPRECISION = 4\nWIDTH = 15\nBINARY = YES");
  EXPECT_EQ(format.name, "T");
  EXPECT_EQ(format.type, VelOutputFormat::T_FIELD);
  EXPECT_EQ(format.quantity, VelOutputFormat::Q_RELHUM);
  EXPECT_EQ(format.spaceType, VelOutputFormat::S_MEAN);
  EXPECT_EQ(format.timeType, VelOutputFormat::M_INTEGRAL);
  EXPECT_EQ(format.timeUnit.name(), "h");
  EXPECT_EQ(format.valueUnit.name(), "%");
  EXPECT_EQ(format.precision, 4);
  EXPECT_EQ(format.width, 15);
  EXPECT_TRUE(format.binary);
}

TEST(VelOutputFormat, allKeywordsTogether_areRead) {
  const VelOutputFormat format = formatFrom(
      "BINARY = yes\nFORMAT = FIXED\nWIDTH = 3\nPRECISION = 2\nVALUE_UNIT = W/m2\nTIME_UNIT = d\nTIME_TYPE = "
      "MEAN\nSPACE_TYPE = SINGLE\nFLUX_TYPE = WATENTH\nTYPE = FLUX\nNAME = q");
  EXPECT_EQ(format.name, "q");
  EXPECT_EQ(format.type, VelOutputFormat::T_FLUX);
  EXPECT_EQ(format.quantity, VelOutputFormat::X_WATENTH);
  EXPECT_EQ(format.spaceType, VelOutputFormat::S_SINGLE);
  EXPECT_EQ(format.timeType, VelOutputFormat::M_MEAN);
  EXPECT_EQ(format.timeUnit.name(), "d");
  EXPECT_EQ(format.valueUnit.name(), "W/m2");
  EXPECT_EQ(format.precision, 2);
  EXPECT_EQ(format.width, 3);
  EXPECT_EQ(format.numberFormat, 0x2000);
  EXPECT_TRUE(format.binary);
}

TEST(VelOutputFormat, everyFieldType_hasItsNumber) {
  ASSERT_EQ(FIELD_QUANTITIES.size(), 48u);
  for (std::size_t k = 0; k < FIELD_QUANTITIES.size(); ++k) {
    const auto& [keyword, index] = FIELD_QUANTITIES[k];
    EXPECT_EQ(index, static_cast<int>(k)) << keyword;
    EXPECT_EQ(formatFrom("FIELD_TYPE = " + keyword).quantity, index) << keyword;
  }
}

TEST(VelOutputFormat, everyFluxType_hasItsNumber) {
  ASSERT_EQ(FLUX_QUANTITIES.size(), 16u);
  for (std::size_t k = 0; k < FLUX_QUANTITIES.size(); ++k) {
    const auto& [keyword, index] = FLUX_QUANTITIES[k];
    EXPECT_EQ(index, static_cast<int>(k)) << keyword;
    EXPECT_EQ(formatFrom("FLUX_TYPE = " + keyword).quantity, index) << keyword;
  }
}

TEST(VelOutputFormat, everySpaceAndTimeType_hasItsNumber) {
  const std::vector<std::string> space = {"SINGLE", "MEAN", "INTEGRAL"}, time = {"NONE", "MEAN", "INTEGRAL"};
  for (std::size_t k = 0; k < 3; ++k) {
    EXPECT_EQ(formatFrom("SPACE_TYPE = " + space[k]).spaceType, static_cast<int>(k));
    EXPECT_EQ(formatFrom("TIME_TYPE = " + time[k]).timeType, static_cast<int>(k));
  }
}

TEST(VelOutputFormat, fluxType_isReadByItsOwnList) {
  const VelOutputFormat format = formatFrom("TYPE = FLUX\nFLUX_TYPE = SHWRAD");
  EXPECT_EQ(format.type, VelOutputFormat::T_FLUX);
  EXPECT_EQ(format.quantity, VelOutputFormat::X_SHWRAD);
}

TEST(VelOutputFormat, enumerators_followTheKeywordLists) {
  EXPECT_EQ(KeywordList::MaxIndex("VelOutputFormat::field_t"), VelOutputFormat::NUM_Q - 1);
  EXPECT_EQ(KeywordList::MaxIndex("VelOutputFormat::flux_t"), VelOutputFormat::NUM_X - 1);
  EXPECT_EQ(KeywordList::MaxIndex("VelOutputFormat::space_type_t"), VelOutputFormat::NUM_S - 1);
  EXPECT_EQ(KeywordList::MaxIndex("VelOutputFormat::time_type_t"), VelOutputFormat::NUM_M - 1);
  EXPECT_EQ(KeywordList::Enumeration("VelOutputFormat::field_t", "SATDEGREE"), VelOutputFormat::Q_SATDEGREE);
  EXPECT_EQ(KeywordList::Enumeration("VelOutputFormat::field_t", "FREEZE_THAW"),
            VelOutputFormat::Q_FREEZE_THAW);
  EXPECT_EQ(KeywordList::Enumeration("VelOutputFormat::flux_t", "RAINRUNOFF"), VelOutputFormat::X_RAINRUNOFF);
}

TEST(VelOutputFormat, anyFieldTypeWithIceprob_isTheOldQuantity) {
  TKL::MessageCapture capture;
  EXPECT_EQ(formatFrom("FIELD_TYPE = MY_ICEPROB_2").quantity, 48);
  EXPECT_TRUE(
      capture.has("Deprecated keyword 'MY_ICEPROB_2' found", TKL::MSG_WARNING, "[VelOutputFormat::read]", 2));
}

TEST(VelOutputFormat, unknownFieldType_fails) {
  EXPECT_EQ(thrownBy([] { formatFrom("FIELD_TYPE = COLOUR"); }),
            (Thrown{"Cannot determine enumeration value for enumeration type 'VelOutputFormat::field_t' and "
                    "keyword 'COLOUR'.",
                    "[KeywordList::Enumeration]"}));
}

TEST(VelOutputFormat, unknownUnit_fails) {
  EXPECT_EQ(thrownBy([] { formatFrom("VALUE_UNIT = furlong"); }).text, "Unit 'furlong' not found.");
}

TEST(VelOutputFormat, numberFormats_haveTheirOwnValues) {
  EXPECT_EQ(formatFrom("FORMAT = fixed").numberFormat, 0x2000);
  EXPECT_EQ(formatFrom("FORMAT = Scientific").numberFormat, 0x1000);
  EXPECT_EQ(formatFrom("FORMAT = FIXED\nFORMAT = default").numberFormat, 0x3000);
}

TEST(VelOutputFormat, knownNumberFormat_isNotWarnedAbout) {
  TKL::MessageCapture capture;
  formatFrom("FORMAT = fixed\nFORMAT = DEFAULT\nFORMAT = scientific");
  EXPECT_TRUE(capture.messages.empty());
}

TEST(VelOutputFormat, unknownNumberFormat_isWarnedAboutAndTakesTheDefault) {
  TKL::MessageCapture capture;
  EXPECT_EQ(formatFrom("FORMAT = fixed\nFORMAT = exp").numberFormat, 0x3000);
  EXPECT_TRUE(capture.has("Invalid number format 'exp', using default format!\n", TKL::MSG_WARNING,
                          "[VelOutputFormat::read]", 2));
}

TEST(VelOutputFormat, binary_isTrueForYesOnly) {
  EXPECT_TRUE(formatFrom("BINARY = yes").binary);
  EXPECT_FALSE(formatFrom("BINARY = 1").binary);
}

TEST(VelOutputFormat, precisionThatIsNoNumber_fails) {
  EXPECT_EQ(thrownBy([] { formatFrom("PRECISION = high"); }),
            (Thrown{"Could not convert 'high' into value.", "[string2val]"}));
}

TEST(VelOutputFormat, precisionThatNoNumberNeeds_fails) {
  EXPECT_EQ(
      thrownBy([] { formatFrom("PRECISION = 2000000000"); }),
      (Thrown{"Invalid parameter value '2000000000' for keyword 'PRECISION'!", "[VelOutputFormat::read]"}));
}

TEST(VelOutputFormat, unknownKeyword_isWarnedAboutAndSkipped) {
  TKL::MessageCapture capture;
  formatFrom("COLUMNS = 4");
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'COLUMNS' in this section!", TKL::MSG_WARNING,
                          "[VelOutputFormat::read]", 3));
}

#include "foundation/Parameter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "support/Thrown.h"

namespace TKL {
namespace {

std::string written(const Parameter& parameter, int indent, int nameWidth, bool writeName = true) {
  std::ostringstream stream;
  parameter.write(stream, indent, nameWidth, writeName);
  return stream.str();
}

TEST(Parameter, defaultIsNotSet) {
  EXPECT_FALSE(Parameter().isSet());
}

TEST(Parameter, nameAlone_makesItSet) {
  Parameter parameter;
  parameter.name = "T";
  EXPECT_TRUE(parameter.isSet());
}

TEST(Parameter, valueWithoutName_isNotSet) {
  EXPECT_FALSE(Parameter("", 3.0, "m").isSet());
}

TEST(Parameter, set_storesTheBaseValueAndTheUnit) {
  Parameter parameter;
  parameter.set("T", 20.0, Unit("C"));
  EXPECT_EQ(parameter.name, "T");
  EXPECT_DOUBLE_EQ(parameter.value, 293.15);
  EXPECT_EQ(parameter.IO_unit, Unit("C"));
}

TEST(Parameter, setByUnitName_isTheSame) {
  Parameter parameter;
  parameter.set("L", 5.0, "mm");
  EXPECT_DOUBLE_EQ(parameter.value, 0.005);
}

TEST(Parameter, constructors_convert) {
  EXPECT_DOUBLE_EQ(Parameter("L", 5.0, "cm").value, 0.05);
  EXPECT_DOUBLE_EQ(Parameter("L", 5.0, Unit("dm")).value, 0.5);
}

TEST(Parameter, setBaseValue_keepsTheValue) {
  Parameter parameter;
  parameter.setBaseValue("T", 293.15, Unit("C"));
  EXPECT_EQ(parameter.value, 293.15);
  EXPECT_NEAR(parameter.get_value(), 20.0, 1e-12);
}

TEST(Parameter, clear_undoesAll) {
  Parameter parameter("T", 20.0, "C");
  parameter.clear();
  EXPECT_FALSE(parameter.isSet());
  EXPECT_EQ(parameter.value, 0.0);
  EXPECT_EQ(parameter.IO_unit.id(), 0U);
}

TEST(Parameter, unknownUnitName_throwsAndKeepsTheParameter) {
  Parameter parameter("T", 20.0, "C");
  EXPECT_EQ(thrownBy([&] { parameter.set("X", 1.0, "Q"); }), (Thrown{"Unit 'Q' not found.", "[Unit::Unit]"}));
  EXPECT_EQ(parameter.name, "T");
}

TEST(Parameter, getValueByUnit) {
  EXPECT_DOUBLE_EQ(Parameter("d", 2.0, "d").get_value(Unit("h")), 48.0);
  EXPECT_DOUBLE_EQ(Parameter("d", 2.0, "d").get_value("min"), 2880.0);
}

TEST(Parameter, getValueInUnitOfAnotherGroup_namesTheParameterAndTheCause) {
  const Parameter parameter("Temp", 20.0, "C");
  EXPECT_EQ(thrownBy([&] { (void)parameter.get_value("m"); }),
            (Thrown{"Error converting unit in parameter 'Temp'.", "[Parameter::get_value]"}));
  try {
    (void)parameter.get_value("m");
  } catch (const Exception& exception) {
    ASSERT_EQ(exception.records().size(), 2U);
    EXPECT_EQ(exception.records()[0].what, "Can't relate unit [K] to [m]!");
  }
}

struct Accepted {
  const char* text;
  double base;
};

class ParameterText : public ::testing::TestWithParam<Accepted> {};

TEST_P(ParameterText, isRead) {
  Parameter parameter;
  std::string error = "untouched";
  EXPECT_TRUE(parameter.set("P", std::string(GetParam().text), &error));
  EXPECT_NEAR(parameter.value, GetParam().base, 1e-12 * std::abs(GetParam().base));
  EXPECT_EQ(error, "untouched");
}

INSTANTIATE_TEST_SUITE_P(Accepted, ParameterText,
                         ::testing::Values(Accepted{"20 C", 293.15}, Accepted{"1e3 mm", 1.0},
                                           Accepted{"50 %", 0.5}, Accepted{"50 1", 50.0},
                                           Accepted{"20C", 293.15}, Accepted{"20 C x", 293.15},
                                           Accepted{" \t-.5\n m", -0.5}, Accepted{"+2 m", 2.0},
                                           Accepted{"5. ---", 5.0}, Accepted{"-3 -", -3.0}));

class BadParameterText : public ::testing::TestWithParam<const char*> {};

TEST_P(BadParameterText, isRejectedAndChangesNothing) {
  Parameter parameter("T", 20.0, "C");
  std::string error;
  const std::string text = GetParam();
  EXPECT_FALSE(parameter.set("P", text, &error));
  EXPECT_EQ(error, "Error reading parameter from string '" + text + "'.");
  EXPECT_EQ(parameter.name, "T");
  EXPECT_DOUBLE_EQ(parameter.value, 293.15);
  EXPECT_EQ(parameter.IO_unit, Unit("C"));
}

INSTANTIATE_TEST_SUITE_P(Rejected, BadParameterText,
                         ::testing::Values("20", "20 ", "", " ", "C", "C 20", "- 20 C", "+-2 m", "nan m",
                                           "inf m", "-inf m", ". m", "1e999 m", "#$%"));

TEST(Parameter, rejectedTextWithoutErrorString_isFalseOnly) {
  Parameter parameter;
  EXPECT_FALSE(parameter.set("P", std::string("20")));
}

TEST(Parameter, textWithUnknownUnit_throwsAndChangesNothing) {
  Parameter parameter("T", 20.0, "C");
  EXPECT_EQ(thrownBy([&] { parameter.set("P", std::string("20 Q")); }),
            (Thrown{"Unit 'Q' not found.", "[Unit::Unit]"}));
  EXPECT_EQ(parameter.name, "T");
}

TEST(Parameter, longGarbage_isReadInLinearTime) {
  Parameter parameter;
  EXPECT_THROW(parameter.set("P", "1 " + std::string(10000000, '\xff')), Exception);
}

TEST(ParameterTest, lessNeedsASmallerValue) {
  const Parameter limit("p", 2.0, "cm");
  EXPECT_EQ(thrownBy([&] { Parameter("p", 20.0, "mm").test(limit, Parameter::OP_LESS); }),
            (Thrown{"Parameter 'p' out of range (must be < 2 cm).", "[Parameter::test]"}));
  EXPECT_NO_THROW(Parameter("p", 19.9, "mm").test(limit, Parameter::OP_LESS));
}

TEST(ParameterTest, lessEqualTakesTheLimit) {
  const Parameter limit("p", 2.0, "cm");
  EXPECT_NO_THROW(Parameter("p", 2.0, "cm").test(limit, Parameter::OP_LESS_EQUAL));
  EXPECT_EQ(thrownBy([&] { Parameter("p", 20.1, "mm").test(limit, Parameter::OP_LESS_EQUAL); }),
            (Thrown{"Parameter 'p' out of range (must be <= 2 cm).", "[Parameter::test]"}));
}

TEST(ParameterTest, greaterEqualTakesTheLimit) {
  const Parameter limit("p", 2.0, "cm");
  EXPECT_NO_THROW(Parameter("p", 2.0, "cm").test(limit, Parameter::OP_GREATER_EQUAL));
  EXPECT_EQ(thrownBy([&] { Parameter("p", 19.9, "mm").test(limit, Parameter::OP_GREATER_EQUAL); }),
            (Thrown{"Parameter 'p' out of range (must be >= 2 cm).", "[Parameter::test]"}));
}

TEST(ParameterTest, greaterNeedsALargerValue) {
  const Parameter limit("p", 2.0, "cm");
  EXPECT_EQ(thrownBy([&] { Parameter("p", 2.0, "cm").test(limit, Parameter::OP_GREATER); }),
            (Thrown{"Parameter 'p' out of range (must be > 2 cm).", "[Parameter::test]"}));
  EXPECT_NO_THROW(Parameter("p", 20.1, "mm").test(limit, Parameter::OP_GREATER));
}

TEST(ParameterTest, operatorsAreNumbered) {
  EXPECT_EQ(Parameter::OP_LESS, 0);
  EXPECT_EQ(Parameter::OP_LESS_EQUAL, 1);
  EXPECT_EQ(Parameter::OP_GREATER_EQUAL, 2);
  EXPECT_EQ(Parameter::OP_GREATER, 3);
}

TEST(ParameterTest, notANumber_isOutOfEveryRange) {
  Parameter parameter("p", 1.0, "m");
  parameter.value = std::numeric_limits<double>::quiet_NaN();
  for (const auto op :
       {Parameter::OP_LESS, Parameter::OP_LESS_EQUAL, Parameter::OP_GREATER_EQUAL, Parameter::OP_GREATER}) {
    EXPECT_THROW(parameter.test(Parameter("p", 1.0, "m"), op), Exception);
  }
}

TEST(ParameterBound, upperLimitIsCheckedAsLowerBound) {
  const Parameter limit("RH", 100.0, "%");
  EXPECT_NO_THROW(Parameter("RH", 1.0, "---").checkIfValueIsLowerBound(limit, true));
  EXPECT_EQ(thrownBy([&] { Parameter("RH", 1.0, "---").checkIfValueIsLowerBound(limit, false); }),
            (Thrown{"Parameter 'RH' out of range (must be < 100 %).", "[Parameter::test]"}));
  EXPECT_EQ(thrownBy([&] { Parameter("RH", 1.1, "---").checkIfValueIsLowerBound(limit, true); }),
            (Thrown{"Parameter 'RH' out of range (must be <= 100 %).", "[Parameter::test]"}));
}

TEST(ParameterBound, lowerLimitIsCheckedAsUpperBound) {
  const Parameter limit("T", 0.0, "K");
  EXPECT_NO_THROW(Parameter("T", 0.0, "K").checkIfValueIsUpperBound(limit, true));
  EXPECT_EQ(thrownBy([&] { Parameter("T", 0.0, "K").checkIfValueIsUpperBound(limit, false); }),
            (Thrown{"Parameter 'T' out of range (must be > 0 K).", "[Parameter::test]"}));
  EXPECT_EQ(thrownBy([&] { Parameter("T", -1.0, "K").checkIfValueIsUpperBound(limit, true); }),
            (Thrown{"Parameter 'T' out of range (must be >= 0 K).", "[Parameter::test]"}));
}

TEST(ParameterBound, parameterThatIsNotSet_isRequired) {
  const Parameter limit("T", 0.0, "K");
  EXPECT_EQ(thrownBy([&] { Parameter().checkIfValueIsLowerBound(limit, true); }),
            (Thrown{"T is required", "[Parameter::checkIfValueIsLowerBound]"}));
  EXPECT_EQ(thrownBy([&] { Parameter().checkIfValueIsUpperBound(limit, true); }),
            (Thrown{"T is required", "[Parameter::checkIfValueIsUpperBound]"}));
}

TEST(ParameterBound, parameterOfAnotherName_isRequiredToo) {
  EXPECT_EQ(
      thrownBy([] { Parameter("t", 5.0, "K").checkIfValueIsUpperBound(Parameter("T", 0.0, "K"), true); }),
      (Thrown{"T is required", "[Parameter::checkIfValueIsUpperBound]"}));
}

TEST(ParameterBound, unitOfAnotherGroup_isRefused) {
  const Parameter limit("L", 5.0, "cm");
  const char* const text = "Invalid or unrecognized unit in parameter 'L' (must be convertible into m)";
  EXPECT_EQ(thrownBy([&] { Parameter("L", 1.0, "s").checkIfValueIsUpperBound(limit, true); }),
            (Thrown{text, "[Parameter::checkIfValueIsUpperBound]"}));
  EXPECT_EQ(thrownBy([&] { Parameter("L", 1.0, "s").checkIfValueIsLowerBound(limit, true); }),
            (Thrown{text, "[Parameter::checkIfValueIsLowerBound]"}));
}

TEST(ParameterBound, dashAndTripleDash_areDifferentGroups) {
  EXPECT_THROW(Parameter("e", 0.6, "---").checkIfValueIsLowerBound(Parameter("e", 1.0, "-"), true),
               Exception);
}

TEST(ParameterWrite, nameIsPaddedToTheWidth) {
  EXPECT_EQ(written(Parameter("RHO", 1800.0, "kg/m3"), 4, 8), "    RHO      = 1800 kg/m3\n");
}

TEST(ParameterWrite, nameAsLongAsTheWidth_isNotPadded) {
  EXPECT_EQ(written(Parameter("RHO", 1800.0, "kg/m3"), 0, 3), "RHO = 1800 kg/m3\n");
  EXPECT_EQ(written(Parameter("RHO", 1800.0, "kg/m3"), 0, 2), "RHO = 1800 kg/m3\n");
}

TEST(ParameterWrite, valueStandsInItsOwnUnit) {
  EXPECT_EQ(written(Parameter("L", 12.5, "mm"), 0, 0), "L = 12.5 mm\n");
}

TEST(ParameterWrite, unwantedName_isLeftOut) {
  EXPECT_EQ(written(Parameter("L", 12.5, "mm"), 2, 9, false), "  12.5 mm\n");
}

TEST(ParameterWrite, missingName_isLeftOut) {
  EXPECT_EQ(written(Parameter("", 12.5, "mm"), 2, 9), "  12.5 mm\n");
}

TEST(ParameterWrite, writtenText_isReadBack) {
  const Parameter parameter("p", 0.25, "kPa");
  const std::string line = written(parameter, 0, 0, false);
  Parameter back;
  ASSERT_TRUE(back.set("p", line));
  EXPECT_EQ(back.value, parameter.value);
  EXPECT_EQ(back.IO_unit, parameter.IO_unit);
}

}  // namespace
}  // namespace TKL

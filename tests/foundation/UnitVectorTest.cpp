#include "foundation/UnitVector.h"

#include <gtest/gtest.h>

#include "support/Thrown.h"

namespace TKL {
namespace {

using Values = std::vector<double>;

UnitVector vectorOf(const Values& values, const char* unit) {
  UnitVector vector;
  vector.data = values;
  vector.IO_unit = Unit(unit);
  return vector;
}

TEST(UnitVector, read_convertsIntoTheBaseUnit) {
  UnitVector vector;
  vector.read("1 2.5\t4e1\n mm", true);
  EXPECT_EQ(vector.data, (Values{0.001, 0.0025, 0.04}));
  EXPECT_EQ(vector.IO_unit, Unit("m"));
}

TEST(UnitVector, readWithoutConversion_dropsTheUnit) {
  UnitVector vector = vectorOf({9.0}, "s");
  vector.read("1 2 mm", false);
  EXPECT_EQ(vector.data, (Values{1.0, 2.0}));
  EXPECT_EQ(vector.IO_unit, Unit());
}

TEST(UnitVector, readWithoutConversion_doesNotLookTheUnitUp) {
  UnitVector vector;
  EXPECT_NO_THROW(vector.read("1 2 nonsense", false));
}

TEST(UnitVector, readWithoutUnit_keepsTheUnit) {
  UnitVector vector = vectorOf({9.0}, "mm");
  vector.read("1 2", true);
  EXPECT_EQ(vector.data, (Values{1.0, 2.0}));
  EXPECT_EQ(vector.IO_unit, Unit("mm"));
}

TEST(UnitVector, numbersOnly_haveNoUnit) {
  UnitVector vector;
  vector.read("0.5 1", true);
  EXPECT_EQ(vector.data, (Values{0.5, 1.0}));
  EXPECT_EQ(vector.IO_unit, Unit());
}

TEST(UnitVector, unitsThatBeginLikeNumbers_areUnits) {
  for (const char* unit : {"---", "-", "1/K", "1/m", "1/10"}) {
    UnitVector vector;
    vector.read(std::string("8 ") + unit, true);
    EXPECT_EQ(vector.data.size(), 1U) << unit;
    EXPECT_EQ(vector.IO_unit, Unit(unit).base()) << unit;
  }
}

TEST(UnitVector, wordsBehindTheUnit_areIgnored) {
  UnitVector vector;
  vector.read("1 m 2 3", true);
  EXPECT_EQ(vector.data, (Values{1.0}));
}

TEST(UnitVector, noNumber_throwsAndKeepsTheData) {
  const Thrown expected{
      "Error reading vector data. String was empty or did not contain any values (started with string or "
      "similar)!",
      "[UnitVector::read]"};
  for (const char* text : {"", "  ", "mm 1", "nan m", "-"}) {
    UnitVector vector = vectorOf({9.0}, "s");
    EXPECT_EQ(thrownBy([&] { vector.read(text, true); }), expected) << text;
    EXPECT_EQ(vector.data, (Values{9.0}));
  }
}

TEST(UnitVector, unknownUnit_throwsAndKeepsTheData) {
  UnitVector vector = vectorOf({9.0}, "s");
  EXPECT_EQ(thrownBy([&] { vector.read("1 Q", true); }), (Thrown{"Unit 'Q' not found.", "[Unit::set]"}));
  EXPECT_EQ(vector.data, (Values{9.0}));
  EXPECT_EQ(vector.IO_unit, Unit("s"));
}

TEST(UnitVector, read_keepsTheName) {
  UnitVector vector;
  vector.name = "x";
  vector.read("1 m", true);
  EXPECT_EQ(vector.name, "x");
}

TEST(UnitVector, convertByOffset) {
  UnitVector vector = vectorOf({0.0, 20.0}, "C");
  vector.convert(Unit("K"));
  EXPECT_EQ(vector.data[0], 273.15);
  EXPECT_DOUBLE_EQ(vector.data[1], 293.15);
  EXPECT_EQ(vector.IO_unit, Unit("K"));
}

TEST(UnitVector, convertByFactor) {
  UnitVector vector = vectorOf({1.0, 2.0}, "h");
  vector.convert(Unit("min"));
  EXPECT_EQ(vector.data, (Values{60.0, 120.0}));
  EXPECT_EQ(vector.IO_unit, Unit("min"));
}

TEST(UnitVector, convertBySpecialRule) {
  UnitVector vector = vectorOf({0.0, 1.0}, "log(kg/m3)");
  vector.convert(Unit("g/m3"));
  EXPECT_DOUBLE_EQ(vector.data[0], 1000.0);
  EXPECT_DOUBLE_EQ(vector.data[1], 10000.0);
}

TEST(UnitVector, convertToTheSameUnit_doesNothing) {
  UnitVector vector = vectorOf({-2.0}, "sqrt(s)");
  vector.convert(Unit("sqrt(s)"));
  EXPECT_EQ(vector.data, (Values{-2.0}));
}

TEST(UnitVector, convertBetweenGroups_throwsAndKeepsTheData) {
  UnitVector vector = vectorOf({1.0}, "h");
  EXPECT_EQ(thrownBy([&] { vector.convert(Unit("m")); }),
            (Thrown{"Can't relate unit [h] to [m]!", "[UnitList::relate_units]"}));
  EXPECT_EQ(vector.data, (Values{1.0}));
  EXPECT_EQ(vector.IO_unit, Unit("h"));
}

TEST(UnitVector, rootOfNegative_hasItsOwnMessageAndKeepsTheData) {
  UnitVector vector = vectorOf({4.0, -4.0}, "s");
  EXPECT_EQ(thrownBy([&] { vector.convert(Unit("sqrt(s)")); }),
            (Thrown{"Conversion error (square-root of negative number)!", "[UnitVector::convert_special]"}));
  EXPECT_EQ(vector.data, (Values{4.0, -4.0}));
  EXPECT_EQ(vector.IO_unit, Unit("s"));
}

TEST(UnitVector, logarithmOfZero_throws) {
  UnitVector vector = vectorOf({0.0}, "kg/m3");
  EXPECT_EQ(
      thrownBy([&] { vector.convert(Unit("log(g/m3)")); }),
      (Thrown{"Trying to take logarithm of zero or negative number!", "[UnitVector::convert_special]"}));
}

}  // namespace
}  // namespace TKL

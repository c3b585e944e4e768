#include "project/VelWallData.h"

#include <gtest/gtest.h>

#include "ConditionTexts.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

const std::string FACING_SOUTH = "ORIENTATION = 180 Deg\nINCLINATION = 90 Deg\nLATITUDE = 51 Deg\n";

Thrown thrownByWall(const std::string& text) {
  return thrownByChecking<VelWallData>(text);
}

}  // namespace

TEST(VelWallData, everyKeyword_isRead) {
  const std::vector<std::string> keywords = {"ORIENTATION", "INCLINATION", "LATITUDE",
                                             "WALLAREA",    "LONGITUDE",   "TIMEZONE"};
  const VelWallData wall =
      readRecord<VelWallData>("NAME = south wall\n" + numberedParameters(keywords, "m2"));
  EXPECT_EQ(wall.name, "south wall");
  EXPECT_TRUE(areNumbered(wall.para, keywords, "m2"));
}

TEST(VelWallData, isUnusedAndUnset_byDefault) {
  const VelWallData wall;
  EXPECT_FALSE(wall.used);
  EXPECT_TRUE(wall.name.empty());
  for (const TKL::Parameter& parameter : wall.para) EXPECT_FALSE(parameter.isSet());
}

TEST(VelWallData, unreadableParameter_fails) {
  EXPECT_EQ(thrownByReading<VelWallData>("LATITUDE = north"),
            (Thrown{"Invalid parameter value 'north' for keyword 'LATITUDE'!", "[VelWallData::read]"}));
}

TEST(VelWallData, parameterWithoutUnit_fails) {
  EXPECT_EQ(thrownByReading<VelWallData>("LATITUDE = 51"),
            (Thrown{"Invalid parameter value '51' for keyword 'LATITUDE'!", "[VelWallData::read]"}));
}

TEST(VelWallData, wallWithoutPosition_passes) {
  EXPECT_EQ(thrownByWall(FACING_SOUTH), nothingThrown());
}

TEST(VelWallData, orientationInclinationLatitude_areRequired) {
  EXPECT_EQ(thrownByWall("INCLINATION = 90 Deg\nLATITUDE = 51 Deg"), required("ORIENTATION", LOWER_LIMIT));
  EXPECT_EQ(thrownByWall("ORIENTATION = 9 Deg\nLATITUDE = 51 Deg"), required("INCLINATION", LOWER_LIMIT));
  EXPECT_EQ(thrownByWall("ORIENTATION = 9 Deg\nINCLINATION = 9 Deg"), required("LATITUDE", LOWER_LIMIT));
}

TEST(VelWallData, orientation_endsAtTwoPi) {
  const std::string rest = "\nINCLINATION = 0 Rad\nLATITUDE = 0 Rad";
  EXPECT_EQ(thrownByWall("ORIENTATION = 0 Rad" + rest), nothingThrown());
  EXPECT_EQ(thrownByWall("ORIENTATION = 6.283185307179586 Rad" + rest), nothingThrown());
  EXPECT_EQ(thrownByWall("ORIENTATION = 6.284 Rad" + rest), outOfRange("ORIENTATION", "<= 6.28319 Rad"));
  EXPECT_EQ(thrownByWall("ORIENTATION = -0.001 Rad" + rest), outOfRange("ORIENTATION", ">= 0 Rad"));
}

TEST(VelWallData, inclination_endsAtTheVertical) {
  const std::string rest = "\nORIENTATION = 0 Rad\nLATITUDE = 0 Rad";
  EXPECT_EQ(thrownByWall("INCLINATION = 90 Deg" + rest), nothingThrown());
  EXPECT_EQ(thrownByWall("INCLINATION = 1.5707963267948966 Rad" + rest), nothingThrown());
  EXPECT_EQ(thrownByWall("INCLINATION = 1.571 Rad" + rest), outOfRange("INCLINATION", "<= 1.5708 Rad"));
  EXPECT_EQ(thrownByWall("INCLINATION = -0.001 Rad" + rest), outOfRange("INCLINATION", ">= 0 Rad"));
}

TEST(VelWallData, latitude_runsFromPoleToPole) {
  const std::string rest = "\nORIENTATION = 0 Rad\nINCLINATION = 0 Rad";
  EXPECT_EQ(thrownByWall("LATITUDE = 1.5707963267948966 Rad" + rest), nothingThrown());
  EXPECT_EQ(thrownByWall("LATITUDE = -1.5707963267948966 Rad" + rest), nothingThrown());
  EXPECT_EQ(thrownByWall("LATITUDE = 1.571 Rad" + rest), outOfRange("LATITUDE", "<= 1.5708 Rad"));
  EXPECT_EQ(thrownByWall("LATITUDE = -1.571 Rad" + rest), outOfRange("LATITUDE", ">= -1.5708 Rad"));
}

TEST(VelWallData, longitude_isLimitedIfSet) {
  const std::string rest = FACING_SOUTH + "TIMEZONE = 1 h\n";
  EXPECT_EQ(thrownByWall(rest + "LONGITUDE = 3.141592653589793 Rad"), nothingThrown());
  EXPECT_EQ(thrownByWall(rest + "LONGITUDE = -3.141592653589793 Rad"), nothingThrown());
  EXPECT_EQ(thrownByWall(rest + "LONGITUDE = 3.142 Rad"), outOfRange("LONGITUDE", "<= 3.14159 Rad"));
  EXPECT_EQ(thrownByWall(rest + "LONGITUDE = -3.142 Rad"), outOfRange("LONGITUDE", ">= -3.14159 Rad"));
}

TEST(VelWallData, timeZone_isRequiredOnlyWithLongitude) {
  EXPECT_EQ(thrownByWall(FACING_SOUTH + "LONGITUDE = 13 Deg"), required("TIMEZONE", LOWER_LIMIT));
  EXPECT_EQ(thrownByWall(FACING_SOUTH + "TIMEZONE = 99 h"), nothingThrown());
}

TEST(VelWallData, timeZoneAsTime_isWithinTwelveHours) {
  const std::string rest = FACING_SOUTH + "LONGITUDE = 13 Deg\n";
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = 12 h"), nothingThrown());
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = -43200 s"), nothingThrown());
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = 12.1 h"), outOfRange("TIMEZONE", "<= 12 h"));
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = -43201 s"), outOfRange("TIMEZONE", ">= -12 h"));
}

TEST(VelWallData, timeZoneAsNumber_isWithinTwelve) {
  const std::string rest = FACING_SOUTH + "LONGITUDE = 13 Deg\n";
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = 12 -"), nothingThrown());
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = -12 ---"), nothingThrown());
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = 12.1 -"), outOfRange("TIMEZONE", "<= 12 -"));
  EXPECT_EQ(thrownByWall(rest + "TIMEZONE = -12.1 ---"), outOfRange("TIMEZONE", ">= -12 ---"));
}

TEST(VelWallData, timeZoneInAnotherUnit_fails) {
  EXPECT_EQ(thrownByWall(FACING_SOUTH + "LONGITUDE = 13 Deg\nTIMEZONE = 1 m"),
            (Thrown{"Invalid or unrecognized unit in parameter 'TIMEZONE' (must be convertible into -)",
                    "[Parameter::checkIfValueIsUpperBound]"}));
}

TEST(VelWallData, angleInAnotherUnit_fails) {
  EXPECT_EQ(thrownByWall("ORIENTATION = 1 m"),
            (Thrown{"Invalid or unrecognized unit in parameter 'ORIENTATION' (must be convertible into Rad)",
                    "[Parameter::checkIfValueIsUpperBound]"}));
}

TEST(VelWallData, wallArea_hasNoLimit) {
  EXPECT_EQ(thrownByWall(FACING_SOUTH + "WALLAREA = -5 m2"), nothingThrown());
}

TEST(VelWallData, timeZoneInSeconds_isTheSameForTimeAndNumber) {
  EXPECT_DOUBLE_EQ(readRecord<VelWallData>("TIMEZONE = 1.5 h").timeZone(), 5400.0);
  EXPECT_DOUBLE_EQ(readRecord<VelWallData>("TIMEZONE = 1.5 -").timeZone(), 5400.0);
  EXPECT_DOUBLE_EQ(readRecord<VelWallData>("TIMEZONE = 1.5 ---").timeZone(), 5400.0);
}

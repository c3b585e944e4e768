#include "solver/SolarGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/ReferenceSun.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA_TEST::ReferenceSun;

constexpr double SUN_PI = 3.141592653589793;
constexpr double SUN_DEGREE = SUN_PI / 180.0;
constexpr double SUN_YEAR = 31536000.0;  // [s]
constexpr double SUN_NORTH = 0.0, SUN_EAST = 90.0, SUN_SOUTH = 180.0, SUN_WEST = 270.0;
constexpr double WALL_INCLINATION = 90.0;
constexpr int SAMPLES_PER_DAY = 96;

double ratioOf(double inclination, double orientation, double latitude, double day) {
  return directRadiationRatio(inclination * SUN_DEGREE, orientation * SUN_DEGREE, latitude * SUN_DEGREE, day);
}

/// Largest deviation over a year from the reference, as a multiple of what a declination that is wrong by
/// `DECLINATION_ERROR` can do to the radiation normal to the sun: by the incidence and by the altitude.
double yearlyDeviation(double inclination, double orientation, double latitude) {
  constexpr double DECLINATION_ERROR = 1.2 * SUN_DEGREE;  // of a sine, in October
  double largest = 0.0;
  for (int i = 0; i < 365 * SAMPLES_PER_DAY; ++i) {
    const double day = (i + 0.5) / SAMPLES_PER_DAY;
    const ReferenceSun sun(latitude, day);
    if (sun.up < 0.1) continue;
    const double expected = sun.ratio(inclination, orientation);
    const double deviation = std::fabs(ratioOf(inclination, orientation, latitude, day) - expected) * sun.up;
    largest = std::fmax(largest, deviation / (DECLINATION_ERROR * (1.0 + expected)));
  }
  return largest;
}

/// Time of day at which a wall gets most from a sun of constant strength.
double dayTimeOfMaximum(double orientation, double latitude, double day) {
  double best = -1.0, time = 0.0;
  for (int i = 1; i < 1440; ++i) {
    const double now = day + i / 1440.0;
    const ReferenceSun sun(latitude, now);
    const double radiation =
        sun.up > 0.0 ? ratioOf(WALL_INCLINATION, orientation, latitude, now) * sun.up : 0.0;
    if (radiation <= best) continue;
    best = radiation;
    time = i / 1440.0;
  }
  return time;
}

/// Minutes by which the sun is ahead of the clock, beyond the equation of time.
double meridianMinutes(double day, double longitude, double zoneHours) {
  const double t = day * 86400.0;
  const double shifted = trueSolarTime(t, longitude * SUN_DEGREE, zoneHours * 3600.0);
  return (shifted - t) / 60.0 - ReferenceSun::equationOfTime(day);
}

constexpr double EQUATION_ERROR = 1.5;  // [min] between the series of Spencer and that of Woolf

}  // namespace

TEST(SolarGeometry, wallsToTheEastAndWest_agreeWithSpencerInBothHemispheres) {
  for (const double latitude : {65.0, 51.0, 40.0, 20.0, 0.0, -20.0, -33.0, -51.0})
    for (const double orientation : {SUN_EAST, SUN_WEST})
      for (const double inclination : {30.0, 60.0, 90.0})
        EXPECT_LT(yearlyDeviation(inclination, orientation, latitude), 1.0)
            << latitude << ' ' << orientation << ' ' << inclination;
}

TEST(SolarGeometry, wallsToTheNorthAndSouth_agreeWithSpencerInBothHemispheres) {
  for (const double latitude : {65.0, 51.0, 40.0, 20.0, 0.0, -20.0, -33.0, -51.0})
    for (const double orientation : {SUN_NORTH, SUN_SOUTH})
      for (const double inclination : {30.0, 60.0, 90.0})
        EXPECT_LT(yearlyDeviation(inclination, orientation, latitude), 1.0)
            << latitude << ' ' << orientation << ' ' << inclination;
}

TEST(SolarGeometry, deviation_seesAWallThatIsTurnedByFiveDegrees) {
  double largest = 0.0;
  for (int i = 0; i < SAMPLES_PER_DAY; ++i) {
    const double day = 80.0 + (i + 0.5) / SAMPLES_PER_DAY;
    const ReferenceSun sun(51.0, day);
    if (sun.up < 0.1) continue;
    const double turned = sun.ratio(WALL_INCLINATION, SUN_EAST + 5.0);
    const double expected = sun.ratio(WALL_INCLINATION, SUN_EAST);
    largest = std::fmax(largest, std::fabs(turned - expected) * sun.up / (SUN_DEGREE * (1.0 + expected)));
  }
  EXPECT_GT(largest, 1.0);
}

TEST(SolarGeometry, southWall_isTheTangentOfTheZenithDistanceAtNoon) {
  const double day = 172.5;  // three quarters of a turn behind the offset of the season: the solstice
  EXPECT_NEAR(ratioOf(WALL_INCLINATION, SUN_SOUTH, 51.0, day), std::tan((51.0 - 23.5) * SUN_DEGREE), 1e-6);
}

TEST(SolarGeometry, eastWall_hasItsMaximumBeforeNoonAndWestWallAfterIt) {
  for (const double latitude : {51.0, -33.0})
    for (const double day : {20.0, 80.0, 172.0, 300.0}) {
      EXPECT_LT(dayTimeOfMaximum(SUN_EAST, latitude, day), 0.45) << latitude << ' ' << day;
      EXPECT_GT(dayTimeOfMaximum(SUN_WEST, latitude, day), 0.55) << latitude << ' ' << day;
    }
}

TEST(SolarGeometry, southWall_hasItsMaximumAtNoon) {
  for (const double day : {20.0, 80.0, 172.0, 300.0})
    EXPECT_NEAR(dayTimeOfMaximum(SUN_SOUTH, 51.0, day), 0.5, 2.0 / 1440.0) << day;
}

TEST(SolarGeometry, eastAndWestWall_mirrorEachOtherAboutNoon) {
  for (const double hours : {1.0, 2.0, 3.0, 4.0}) {
    const double morning = ratioOf(WALL_INCLINATION, SUN_EAST, 51.0, 172.5 - hours / 24.0);
    const double afternoon = ratioOf(WALL_INCLINATION, SUN_WEST, 51.0, 172.5 + hours / 24.0);
    EXPECT_NEAR(morning, afternoon, 1e-3) << hours;
  }
}

TEST(SolarGeometry, sunBelowTheHorizon_givesNothing) {
  int nights = 0;
  for (const double latitude : {65.0, 51.0, 0.0, -33.0, -80.0})
    for (int i = 0; i < 365 * 8; ++i) {
      const double day = (i + 0.5) / 8.0;
      if (ReferenceSun(latitude, day).up > -0.02) continue;
      ++nights;
      for (const double inclination : {0.0, 45.0, 90.0})
        EXPECT_EQ(ratioOf(inclination, SUN_EAST, latitude, day), 0.0) << latitude << ' ' << day;
    }
  EXPECT_GT(nights, 5 * 365);
}

TEST(SolarGeometry, ratio_staysBetweenZeroAndFive) {
  for (double latitude = -90.0; latitude <= 90.0; latitude += 15.0)
    for (double orientation = 0.0; orientation <= 360.0; orientation += 45.0)
      for (const double inclination : {1e-6, 30.0, 60.0, 90.0})
        for (double day = 0.0; day < 365.0; day += 1.0 / 3.0 + 0.015625) {
          const double ratio = ratioOf(inclination, orientation, latitude, day);
          ASSERT_TRUE(ratio >= 0.0 && ratio <= 5.0) << ratio << ' ' << latitude << ' ' << day;
        }
}

TEST(SolarGeometry, wallThatFacesTheRisingSun_reachesFive) {
  bool reached = false;
  for (int i = 0; i < 1440; ++i)
    reached = reached || ratioOf(WALL_INCLINATION, SUN_EAST, 51.0, 80.0 + i / 1440.0) == 5.0;
  EXPECT_TRUE(reached);
}

TEST(SolarGeometry, sunInTheZenith_meetsASurfaceByItsInclination) {
  for (int d = 0; d < 365; ++d) {
    const double day = d + 0.5;
    const double overhead = -23.5 * std::sin((day + 101.25) * 2.0 * SUN_PI / 365.0);
    for (const double offset : {-1e-9, -1e-15, 0.0, 1e-15, 1e-9})
      EXPECT_NEAR(ratioOf(60.0, SUN_EAST, overhead + offset, day), 0.5, 1e-6) << day;
  }
}

TEST(SolarGeometry, horizontalSurface_hasTheRatioOneByDay) {
  EXPECT_EQ(ratioOf(0.0, SUN_SOUTH, 51.0, 172.5), 1.0);
  EXPECT_EQ(ratioOf(1e-8, SUN_SOUTH, 51.0, 172.5), 1.0) << "a cosine of one is horizontal too";
}

TEST(SolarGeometry, sunBehindTheWall_givesNothing) {
  EXPECT_EQ(ratioOf(WALL_INCLINATION, SUN_NORTH, 51.0, 80.5), 0.0);
  EXPECT_EQ(ratioOf(WALL_INCLINATION, SUN_WEST, 51.0, 80.35), 0.0);
}

TEST(DayOfYear, carriesTheTimeOfDayAndStartsAgainEachYear) {
  EXPECT_EQ(dayOfYear(0.0), 0.0);
  EXPECT_DOUBLE_EQ(dayOfYear(1.5 * 86400.0), 1.5);
  EXPECT_NEAR(dayOfYear(SUN_YEAR + 35.25 * 86400.0), 35.25, 1e-9);
  EXPECT_NEAR(dayOfYear(3.0 * SUN_YEAR + 35.25 * 86400.0), 35.25, 1e-9);
}

TEST(TrueSolarTime, onTheMeridianOfTheZone_differsByTheEquationOfTime) {
  for (double day = 2.5; day < 363.0; day += 1.0)
    EXPECT_NEAR(meridianMinutes(day, 15.0, 1.0), 0.0, EQUATION_ERROR) << day;
}

TEST(TrueSolarTime, sunIsFourMinutesLateForEachDegreeToTheWest) {
  for (const double longitude : {13.7, 7.5, -10.0, 22.5})
    EXPECT_NEAR(meridianMinutes(100.5, longitude, 1.0), 4.0 * (longitude - 15.0), EQUATION_ERROR);
}

TEST(TrueSolarTime, zoneToTheWest_isNegative) {
  EXPECT_NEAR(meridianMinutes(100.5, -80.0, -5.0), -20.0, EQUATION_ERROR);
}

TEST(TrueSolarTime, zone_countsInWholeHours) {
  const double t = 100.5 * 86400.0;
  EXPECT_EQ(trueSolarTime(t, 1.4, 5.5 * 3600.0), trueSolarTime(t, 1.4, 5.0 * 3600.0));
  EXPECT_EQ(trueSolarTime(t, -1.0, -3.5 * 3600.0), trueSolarTime(t, -1.0, -3.0 * 3600.0));
}

TEST(TrueSolarTime, placesJustAcrossTheDateLine_keepTheirDay) {
  EXPECT_NEAR(meridianMinutes(100.5, -175.0, 12.0), 20.0, EQUATION_ERROR);
  EXPECT_NEAR(meridianMinutes(100.5, 175.0, -12.0), -20.0, EQUATION_ERROR);
}

TEST(TrueSolarTime, placesFarAcrossTheDateLine_areADayAway) {
  EXPECT_NEAR(meridianMinutes(100.5, -164.0, 12.0), -4.0 * (180.0 + 164.0), EQUATION_ERROR);
  EXPECT_NEAR(meridianMinutes(100.5, 164.0, -12.0), 4.0 * (180.0 + 164.0), EQUATION_ERROR);
}

TEST(TrueSolarTime, startOfTheYear_reachesBackIntoItsEnd) {
  const double shifted = trueSolarTime(0.0, 0.0, 3600.0);
  EXPECT_NEAR((shifted - SUN_YEAR) / 60.0, -60.0 + ReferenceSun::equationOfTime(0.0), EQUATION_ERROR);
}

TEST(TrueSolarTime, endOfTheYear_reachesIntoItsStart) {
  const double shifted = trueSolarTime(SUN_YEAR - 60.0, 30.0 * SUN_DEGREE, 3600.0);
  EXPECT_NEAR(shifted / 60.0, 59.0 + ReferenceSun::equationOfTime(0.0), EQUATION_ERROR);
}

TEST(TrueSolarTime, equationOfTime_reachesBackIntoTheLastYearToo) {
  const double shifted = trueSolarTime(60.0, 0.0, 0.0);
  EXPECT_NEAR((shifted - SUN_YEAR) / 60.0, 1.0 + ReferenceSun::equationOfTime(0.0), EQUATION_ERROR);
}

}  // namespace VELMORA_SOLVER

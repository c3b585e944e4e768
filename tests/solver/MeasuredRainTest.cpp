// Rain and wind of a measured year on walls of four orientations.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>

#include "solver/MoistSurface.h"
#include "support/ClimateCourse.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;
using VELMORA::VelWallData;
using VELMORA_TEST::ClimateCourse;

constexpr double QUARTER_TURN = 3.141592653589793 / 2.0;  // [Rad] from one wall to the next
const std::string TOKYO_WEATHER = VELMORA_SOURCE_DIR "/../shared/climate/tokyo/";
enum facing_t : std::size_t { TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST, NUM_FACINGS };
/// Orientation of a wall [Rad].
double azimuth(facing_t facing) {
  return static_cast<double>(facing) * QUARTER_TURN;
}
using FourWalls = std::array<double, NUM_FACINGS>;

/// One hour with rain.
struct RainyHour {
  double rain;       ///< [mm/h] on the horizontal plane
  double wind;       ///< [m/s]
  double direction;  ///< [Rad] that the wind comes from
};

class MeasuredRain : public MoistSurface {
 protected:
  MeasuredRain() {
    condition.condition = VelBoundaryCond::C_RAIN;
    condition.kind = VelBoundaryCond::K_STDRAIN;
    condition.wallData = &wall_;
    set(VelBoundaryCond::P_MINRTEMP, 200.0);
    set(VelBoundaryCond::P_MINRFLUX, 0.0);
    set(VelBoundaryCond::P_EXPCOEFF, 1.0);
    attach(VelClimateCond::C_TEMPER, CLIMATE_T);
    attach(VelClimateCond::C_RELHUM, 0.9);
    setWall(VelWallData::P_INCLINATION, QUARTER_TURN);
  }
  void SetUp() override {
    if (!std::filesystem::is_directory(TOKYO_WEATHER))
      GTEST_SKIP() << "no measured weather in " << TOKYO_WEATHER;
    const ClimateCourse rain(TOKYO_WEATHER + "HORRAIN.ccd"), wind(TOKYO_WEATHER + "WINDVEL.ccd"),
        direction(TOKYO_WEATHER + "WINDDIR.ccd");
    for (int hour = 0; hour < 8760; ++hour) {
      const double middle = 3600.0 * hour + 1800.0, end = middle + 1800.0;
      if (rain.at(middle) <= 0.0) continue;
      hours.push_back({rain.at(middle), wind.at(middle), direction.at(end) * QUARTER_TURN / 90.0});
    }
    ASSERT_GT(hours.size(), 500u);
  }
  void setWall(VelWallData::para_t index, double value) {
    wall_.para[index].setBaseValue("X", value, TKL::Unit());
  }
  /// Rain [mm] of an hour on a wall.
  double onWall(const RainyHour& hour, facing_t facing) {
    setWall(VelWallData::P_ORIENTATION, azimuth(facing));
    attach(VelClimateCond::C_HORRAIN, hour.rain / 3600.0);
    attach(VelClimateCond::C_WINDVEL, hour.wind);
    attach(VelClimateCond::C_WINDDIR, hour.direction);
    calculate();
    return arrays.records.additionalFlux[LEFT][VELMORA::AF_RAIN] / SURFACE_AREA * 3600.0;
  }
  FourWalls ofTheYear() {
    FourWalls sum{};
    for (const RainyHour& hour : hours)
      for (const auto facing : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST}) sum[facing] += onWall(hour, facing);
    return sum;
  }

  std::vector<RainyHour> hours;

 private:
  VelWallData wall_;
};

}  // namespace

TEST_F(MeasuredRain, wallsWithTheirBackToTheWind_stayDry) {
  int dry = 0;
  for (const RainyHour& hour : hours)
    for (const auto facing : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST}) {
      if (std::cos(hour.direction - azimuth(facing)) > 1e-6) continue;
      EXPECT_EQ(onWall(hour, facing), 0.0);
      ++dry;
    }
  EXPECT_GT(dry, 1000);
}

TEST_F(MeasuredRain, windFromTheWestAlone_wetsTheWestWallOnly) {
  for (RainyHour& hour : hours) hour.direction = azimuth(TO_WEST);
  const FourWalls sum = ofTheYear();
  EXPECT_GT(sum[TO_WEST], 50.0);
  for (const auto facing : {TO_NORTH, TO_EAST, TO_SOUTH}) EXPECT_EQ(sum[facing], 0.0) << facing;
}

TEST_F(MeasuredRain, sums_haveTheOrderOfTheStandardIndex) {
  // The airfield index of ISO 15927-3 [mm]: 2/9 v r^(8/9) cos(angle).
  FourWalls index{};
  for (const RainyHour& hour : hours)
    for (const auto facing : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST})
      index[facing] += std::fmax(0.0, 2.0 / 9.0 * hour.wind * std::pow(hour.rain, 8.0 / 9.0) *
                                          std::cos(hour.direction - azimuth(facing)));
  const FourWalls sum = ofTheYear();
  for (const auto a : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST})
    for (const auto b : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST})
      EXPECT_EQ(sum[a] < sum[b], index[a] < index[b]) << a << b;
  // It rains with wind from the north-west: the wall away from it gets the least.
  EXPECT_LT(sum[TO_EAST], sum[TO_NORTH] / 3.0);
  for (const auto facing : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST})
    EXPECT_LT(sum[facing], index[facing]) << facing;
}

TEST_F(MeasuredRain, halfTheExposure_halvesTheSum) {
  const FourWalls all = ofTheYear();
  set(VelBoundaryCond::P_EXPCOEFF, 0.5);
  const FourWalls half = ofTheYear();
  for (const auto facing : {TO_NORTH, TO_EAST, TO_SOUTH, TO_WEST}) {
    EXPECT_GT(all[facing], 1.0);
    EXPECT_NEAR(half[facing], 0.5 * all[facing], 1e-9 * all[facing]);
  }
}

}  // namespace VELMORA_SOLVER

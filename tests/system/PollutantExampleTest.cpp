// The example of a floor covering that emits through a screed.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "system/ExampleRun.h"

namespace VELMORA_TEST {

namespace {

using CoveringRecord = std::vector<double>;

const ExampleRun::Changes COVERING_THREE_DAYS{{"DURATION = 60 d", "DURATION = 3 d"}};
const ExampleRun::Changes COVERING_COLD{{"CONSTVALUE = 4715.69 W/m3", "CONSTVALUE = 0 W/m3"}};

/// What a layer takes and passes on: capacity [-] and conductance [m2/s] at 20 C. Density and diffusion of
/// toluene in air, porosities, resistances and pairs as the shipped files have them.
struct ShippedLayer {
  double porosity, mew, factor, partition;

  double capacity() const {
    const double saturation20 = 0.11001, saturation30 = 0.17865;
    const double saturation23 = saturation20 + 0.3 * (saturation30 - saturation20);
    return porosity + partition * saturation23 / saturation20;
  }
  double effusivity() const { return std::sqrt(capacity() * 7.8086e-6 / (factor * mew)); }
};

const ShippedLayer COVERING{0.02, 10000.0, 0.6, 3000.0};
const ShippedLayer SCREED{0.25, 35.0, 1.0, 40.0};

double coveringAt(const ExampleRun& run, const std::string& file, double days) {
  for (const CoveringRecord& record : run.records(file))
    if (std::abs(record[0] - days) < 1e-3) return record[1];
  ADD_FAILURE() << "no record of day " << days << " in " << file;
  return 0.0;
}

}  // namespace

TEST(FloorCoveringExample, earlyEmission_isThatOfTwoBodiesWithoutEnd) {
  const ExampleRun run("floor_covering", COVERING_THREE_DAYS);
  const double e1 = COVERING.effusivity(), e2 = SCREED.effusivity();
  const double density = 0.02 / COVERING.capacity();  // [kg/m3] in the pores
  for (const double days : {0.5, 1.0}) {
    const double flow = density * e1 * e2 / (e1 + e2) / std::sqrt(std::numbers::pi * 86400.0 * days);
    EXPECT_NEAR(coveringAt(run, "emission_to_screed.out", days), 3.6e12 * flow, 0.015 * 3.6e12 * flow)
        << days;
  }
}

TEST(FloorCoveringExample, allThatLeavesTheFloor_wentToTheRooms) {
  const ExampleRun run("floor_covering");
  const double held = run.lastValue("gas_all.out") + run.lastValue("solid_all.out");
  const double gone = run.lastValue("emitted_to_room.out") - run.lastValue("emitted_to_room_below.out");
  const double start = 0.02 * 2.5e-3 * 1e6;  // [mg]
  EXPECT_NEAR(coveringAt(run, "gas_all.out", 0.0), start, 1e-4);
  EXPECT_NEAR(held + gone, start, 2e-3 * start);  // flows are summed up by steps
}

TEST(FloorCoveringExample, screed_delaysTheEmissionByTwoDays) {
  const ExampleRun run("floor_covering", {{"DURATION = 60 d", "DURATION = 10 d"}});
  const auto toRoom = run.records("emission_to_room.out"), toScreed = run.records("emission_to_screed.out");
  const auto less = [](const CoveringRecord& a, const CoveringRecord& b) { return a[1] < b[1]; };
  EXPECT_EQ(std::max_element(toScreed.begin(), toScreed.end(), less), toScreed.begin());
  const CoveringRecord most = *std::max_element(toRoom.begin(), toRoom.end(), less);
  EXPECT_NEAR(most[0], 2.0, 0.3);
  EXPECT_NEAR(most[1], 43.0, 1.0);
}

TEST(FloorCoveringExample, floorHeating_raisesTheEmissionByAQuarter) {
  const ExampleRun run("floor_covering", {{"DURATION = 60 d", "DURATION = 32 d"}});
  EXPECT_NEAR(coveringAt(run, "emission_to_room.out", 31.0) / coveringAt(run, "emission_to_room.out", 30.0),
              1.27, 0.03);
  EXPECT_NEAR(coveringAt(run, "surface_temperature.out", 31.0), 24.1, 0.2);
}

TEST(FloorCoveringExample, withoutHeating_theEmissionKeepsFalling) {
  ExampleRun::Changes cold = COVERING_COLD;
  cold.push_back({"DURATION = 60 d", "DURATION = 32 d"});
  const ExampleRun run("floor_covering", cold);
  EXPECT_LT(coveringAt(run, "emission_to_room.out", 31.0), coveringAt(run, "emission_to_room.out", 30.0));
}

}  // namespace VELMORA_TEST

#include "material/MrcGAUSS.h"

#include <gtest/gtest.h>

#include <cmath>

namespace MM {

TEST(MrcGAUSS, density_peaksAtTheCapillaryPressureOfThePoreRadius) {
  MrcGAUSS_dpC density;
  density.modes = {{1.0, 1e-5, 0.01}};
  EXPECT_DOUBLE_EQ(density(std::log10(0.152 / 1e-5)), 1.0 / (2.506628 * 0.01));
}

TEST(MrcGAUSS, curve_isNotNegative) {
  // the rounded root of 2 pi makes the whole distribution 1e-7 more than 1
  MrcGAUSS curve;
  curve.density.modes = {{1.0, 1e-5, 0.5}};
  EXPECT_EQ(curve(10.0), 0.0);
}

TEST(MrcGAUSS, narrowMode_isNotSteppedOver) {
  MrcGAUSS curve;
  curve.density.modes = {{1.0, 0.152 / std::pow(10.0, 3.55), 0.005}};
  EXPECT_NEAR(curve(3.5), 1.0, 1e-6);
  EXPECT_NEAR(curve(6.0), 0.0, 1e-6);
}

TEST(MrcGAUSS, integral_hasTheToldAccuracy) {
  MrcGAUSS curve;
  curve.density.modes = {{1.0, 0.152 / 1e4, 0.5}};
  for (const double x : {3.0, 3.7, 4.0, 4.4, 5.5}) {
    const double share =
        0.5 * std::erfc(-(x - 4.0) / 0.5 / std::sqrt(2.0)) * std::sqrt(2.0 * M_PI) / 2.506628;
    EXPECT_NEAR(curve(x), 1.0 - share, 2e-6) << x;
  }
}

TEST(MrcGAUSS, density_endsWithTheShortestList) {
  MrcGAUSS_dpC density;
  density.setData("0.4 0.6", "0.5 0.5 0.5", "1e-6 1e-7 1e-8");
  EXPECT_EQ(density.modes.size(), 2U);
}

TEST(MrcGAUSS, vanishingDensity_isWorkedOutInTime) {
  MrcGAUSS curve;
  curve.density.modes = {{1.0, 1.52e3, 0.01}};  // all below pC = 1 Pa: nothing to integrate
  EXPECT_DOUBLE_EQ(curve(9.0), 1.0);
}

}  // namespace MM

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "climate/VelClimateCond.h"
#include "support/Thrown.h"

using namespace VELMORA;
using Climate = VelClimateCond;
using TKL::Thrown;

namespace {

constexpr double YEAR = 365.0 * 86400.0;
const std::string CALC_ID = "[VelClimateCond::calcCurrentValue]";

Climate series(const std::vector<double>& times, const std::vector<double>& values) {
  Climate climate;
  climate.name = "air";
  climate.condition = Climate::C_TEMPER;
  climate.kind = Climate::K_DATLINEAR;
  climate.data.setValues(times, values);
  return climate;
}

double valueAt(Climate& climate, double t) {
  climate.calcCurrentValue(t);
  return climate.currentValue;
}

Climate sine(double period) {
  Climate climate;
  climate.read(
      SectionText("TYPE = TEMPER\nKIND = SINUS\nNAME = air\nMEANVALUE = 300 K\nAMPLITUDE1 = 5 K\n"
                  "OSCPERIOD1 = " +
                  std::to_string(period) + " s\nPHASESHIFT1 = 0 s\n"));
  climate.prepareCalculation({});
  return climate;
}

}  // namespace

TEST(VelClimateCondValue, constant_staysWhatItWasPreparedTo) {
  Climate climate;
  climate.read(SectionText("KIND = CONSTANT\nTYPE = TEMPER\nCONSTVALUE = 20 C\n"));
  climate.prepareCalculation({});
  climate.para[Climate::P_CONSTVALUE].value = 0.0;
  EXPECT_DOUBLE_EQ(valueAt(climate, 1000.0), 293.15);
}

TEST(VelClimateCondValue, sine_isMeanAtZeroAndPeakAfterAQuarterPeriod) {
  Climate climate = sine(400.0);
  EXPECT_DOUBLE_EQ(valueAt(climate, 0.0), 300.0);
  EXPECT_DOUBLE_EQ(valueAt(climate, 100.0), 305.0);
  EXPECT_DOUBLE_EQ(valueAt(climate, 300.0), 295.0);
}

TEST(VelClimateCondValue, phaseShift_isAddedToTheTime) {
  Climate climate = sine(400.0);
  climate.para[Climate::P_PHASESHIFT1].value = 100.0;
  EXPECT_DOUBLE_EQ(valueAt(climate, 0.0), 305.0);
}

TEST(VelClimateCondValue, twoSines_addUp) {
  Climate climate;
  climate.read(
      SectionText("TYPE = TEMPER\nKIND = 2SINUS\nMEANVALUE = 300 K\nAMPLITUDE1 = 5 K\n"
                  "OSCPERIOD1 = 400 s\nPHASESHIFT1 = 0 s\nAMPLITUDE2 = 2 K\nOSCPERIOD2 = 40 s\n"
                  "PHASESHIFT2 = 10 s\n"));
  climate.prepareCalculation({});
  // first sine at its peak; 100 s + 10 s are 2.75 short periods, where the second has its trough
  EXPECT_DOUBLE_EQ(valueAt(climate, 100.0), 300.0 + 5.0 - 2.0);
}

TEST(VelClimateCondValue, sineIsCyclicToo_andJumpsIfItsPeriodDoesNotDivideTheYear) {
  const double period = 0.8 * YEAR;
  Climate climate = sine(period);
  EXPECT_DOUBLE_EQ(valueAt(climate, YEAR), 300.0 + 5.0 * std::sin(2.0 * std::numbers::pi / 0.8));
  EXPECT_NEAR(valueAt(climate, YEAR + 1.0), 300.0, 1e-5);
  climate.cyclicData = false;
  EXPECT_DOUBLE_EQ(valueAt(climate, 1.25 * period), 305.0);
}

TEST(VelClimateCondValue, series_isLinearBetweenItsPoints) {
  Climate climate = series({0, 10, 30}, {1, 2, 6});
  EXPECT_DOUBLE_EQ(valueAt(climate, 5.0), 1.5);
  EXPECT_DOUBLE_EQ(valueAt(climate, 20.0), 4.0);
}

TEST(VelClimateCondValue, withoutInterpolation_theLastPointHolds) {
  Climate climate = series({0, 10, 30}, {1, 2, 6});
  climate.useInterpolation = false;
  EXPECT_EQ(valueAt(climate, 9.999), 1.0);
  EXPECT_EQ(valueAt(climate, 10.0), 2.0);
  EXPECT_EQ(valueAt(climate, 29.0), 2.0);
  EXPECT_EQ(valueAt(climate, 30.0), 6.0);
}

TEST(VelClimateCondValue, extendedData_keepTheEndValues) {
  Climate climate = series({0, 10}, {1, 2});
  EXPECT_EQ(valueAt(climate, -5.0), 1.0);
  EXPECT_EQ(valueAt(climate, 11.0), 2.0);
}

TEST(VelClimateCondValue, singlePoint_isConstant) {
  Climate climate = series({10}, {3});
  for (const double t : {0.0, 10.0, 20.0}) EXPECT_EQ(valueAt(climate, t), 3.0);
  climate.useInterpolation = false;
  for (const double t : {0.0, 10.0, 20.0}) EXPECT_EQ(valueAt(climate, t), 3.0);
}

TEST(VelClimateCondValue, endOfTheYear_staysAndHalfASecondLaterIsTheStart) {
  Climate climate = series({0, 1, YEAR}, {10, 20, 30});
  EXPECT_EQ(valueAt(climate, YEAR), 30.0);
  EXPECT_DOUBLE_EQ(valueAt(climate, YEAR + 0.5), 15.0);
}

TEST(VelClimateCondValue, laterYears_repeatTheFirst) {
  Climate climate = series({0, 1, YEAR}, {10, 20, 30});
  EXPECT_DOUBLE_EQ(valueAt(climate, 7 * YEAR + 0.5), 15.0);
  EXPECT_EQ(valueAt(climate, 7 * YEAR), 30.0);
}

TEST(VelClimateCondValue, longRun_equalsRepeatedSubtraction) {
  Climate climate = series({0, YEAR}, {0, YEAR});
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> times(0.0, 500.0 * YEAR);
  for (int i = 0; i < 1000; ++i) {
    const double t = times(random);
    double rest = t;
    while (rest > YEAR) rest -= YEAR;
    ASSERT_EQ(valueAt(climate, t), climate.data.value(rest));
  }
}

TEST(VelClimateCondValue, astronomicTime_returns) {
  Climate climate = series({0, YEAR}, {0, 1});
  EXPECT_TRUE(std::isfinite(valueAt(climate, 1e300)));
}

TEST(VelClimateCondValue, notCyclicData_doNotRepeat) {
  Climate climate = series({0, YEAR, 2 * YEAR}, {10, 20, 30});
  climate.cyclicData = false;
  EXPECT_DOUBLE_EQ(valueAt(climate, 1.5 * YEAR), 25.0);
}

TEST(VelClimateCondValue, emptySeries_fails) {
  Climate climate;
  climate.name = "air";
  climate.kind = Climate::K_DATLINEAR;
  EXPECT_EQ(TKL::thrownBy([&] { climate.calcCurrentValue(0.0); }),
            (Thrown{"Missing climatic data in linear spline for climatic condition 'air'.", CALC_ID}));
}

TEST(VelClimateCondValue, beyondTheDataWithoutExtension_fails) {
  Climate climate = series({10, 20}, {1, 2});
  climate.cyclicData = climate.extendData = false;
  EXPECT_EQ(TKL::thrownBy([&] { climate.calcCurrentValue(20.5); }),
            (Thrown{"Time point 20.5 out of range 10..20 of climatic data for climate condition condition "
                    "'air': ",
                    CALC_ID}));
  EXPECT_EQ(TKL::thrownBy([&] { climate.calcCurrentValue(9.5); }).text,
            "Time point 9.5 out of range 10..20 of climatic data for climate condition condition 'air': ");
}

TEST(VelClimateCondValue, endsOfTheDataHaveATolerance) {
  Climate climate = series({10, 20}, {1, 2});
  climate.cyclicData = climate.extendData = false;
  EXPECT_EQ(valueAt(climate, 20.0 + 0.9e-5), 2.0);
  EXPECT_EQ(valueAt(climate, 10.0 - 0.9e-5), 1.0);
  EXPECT_THROW(climate.calcCurrentValue(20.0 + 1.1e-5), TKL::Exception);
  EXPECT_THROW(climate.calcCurrentValue(10.0 - 1.1e-5), TKL::Exception);
}

TEST(VelClimateCondValue, shiftedHumidity_isKeptInRange) {
  Climate climate = series({0, 10}, {0.0, 1.00000005});
  climate.condition = Climate::C_RELHUM;
  EXPECT_EQ(valueAt(climate, 0.0), 0.0);
  climate.para[Climate::P_SHIFTVALUE].set("SHIFTVALUE", 0.0, "---");
  EXPECT_EQ(valueAt(climate, 0.0), 0.01);
  EXPECT_EQ(valueAt(climate, 10.0), 1.0);
  EXPECT_DOUBLE_EQ(valueAt(climate, 5.0), 0.500000025);
}

TEST(VelClimateCondValue, shiftedConstantHumidity_isKeptInRangeToo) {
  Climate climate;
  climate.read(SectionText("TYPE = RELHUM\nKIND = CONSTANT\nCONSTVALUE = 120 %\nSHIFTVALUE = 0 %\n"));
  climate.prepareCalculation({});
  EXPECT_DOUBLE_EQ(climate.currentValue, 1.2);
  EXPECT_EQ(valueAt(climate, 0.0), 1.0);
}

TEST(VelClimateCondValue, shiftedTemperature_isNotLimited) {
  Climate climate = series({0, 10}, {250.0, 260.0});
  climate.para[Climate::P_SHIFTVALUE].set("SHIFTVALUE", 1.0, "K");
  EXPECT_EQ(valueAt(climate, 0.0), 250.0);
}

TEST(VelClimateCondValue, rememberedInterval_givesTheBitsOfASearch) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> step(0.1, 100.0);
  std::vector<double> times{0.0};
  std::vector<double> values{1.0};
  for (int i = 0; i < 500; ++i) {
    times.push_back(times.back() + step(random));
    values.push_back(step(random));
  }
  Climate linear = series(times, values);
  Climate steps = linear;
  steps.useInterpolation = false;
  std::uniform_real_distribution<double> anywhere(-10.0, times.back() + 10.0);
  std::vector<double> probes = times;  // forwards over the nodes, forwards in small steps, then anywhere
  for (double t = -5.0; t < times.back() + 5.0; t += 3.7) probes.push_back(t);
  for (int i = 0; i < 5000; ++i) probes.push_back(anywhere(random));
  for (const double t : times) {
    probes.push_back(std::nextafter(t, -1e9));
    probes.push_back(std::nextafter(t, 1e9));
  }
  for (const double t : probes) {
    ASSERT_EQ(valueAt(linear, t), linear.data.value(t)) << t;
    ASSERT_EQ(valueAt(steps, t), steps.data.nonInterpolatedValue(t)) << t;
  }
}

TEST(VelClimateCondValue, exchangedSeries_isSearchedAnew) {
  Climate climate = series({0, 1, 2, 3, 4}, {0, 1, 2, 3, 4});
  EXPECT_DOUBLE_EQ(valueAt(climate, 3.5), 3.5);
  climate.data.setValues({0, 10}, {0, 1});
  EXPECT_DOUBLE_EQ(valueAt(climate, 3.0), 0.3);
}

TEST(VelClimateCondValue, copies_areIndependent) {
  Climate a = series({0, 10}, {0, 1});
  Climate b = a;
  EXPECT_EQ(valueAt(a, 10.0), 1.0);
  EXPECT_EQ(valueAt(b, 0.0), 0.0);
  EXPECT_EQ(a.currentValue, 1.0);
}

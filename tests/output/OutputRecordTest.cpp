#include "output/OutputRecord.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>

#include "output/OutputBench.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using Format = VelOutputFormat;

class OutputRecord : public ::testing::Test {
 protected:
  std::string fieldRecord(const Format& format, const std::vector<std::size_t>& numbers, double t,
                          const std::vector<double>& values) {
    std::ostringstream stream;
    writeSingleValueField(t, bench.field(format, numbers), stream, values);
    return stream.str();
  }
  std::string fluxRecord(const Format& format, const std::vector<std::size_t>& numbers, double t,
                         const std::vector<double>& values) {
    std::ostringstream stream;
    writeSingleValueFlux(t, bench.flux(format, numbers), stream, values);
    return stream.str();
  }

  OutputBench bench;
  const std::vector<double> temperatures{273.15, 283.15, 293.15, 303.15};
};

TEST_F(OutputRecord, singleField_isOneLineOfPaddedValues) {
  EXPECT_EQ("1            \t10              30              \n",
            fieldRecord(OutputBench::temperature(), {1, 3}, 3600.0, temperatures));
}

TEST_F(OutputRecord, aDayInDays_showsAsOne) {
  Format format = OutputBench::temperature();
  format.timeUnit.set("d");
  EXPECT_EQ("1            \t0               \n", fieldRecord(format, {0}, 86400.0, temperatures));
}

TEST_F(OutputRecord, time_hasSixDigitsWhateverTheStreamIsSetTo) {
  Format format = OutputBench::temperature();
  format.timeUnit.set("s");
  std::ostringstream stream;
  stream << std::fixed << std::setprecision(2);
  writeSingleValueField(1234567.0, bench.field(format, {1}), stream, temperatures);
  EXPECT_EQ("1.23457e+06  \t10.00           \n", stream.str());
}

TEST_F(OutputRecord, units_areNotConvertedWhereTheyAreNotSet) {
  Format format = OutputBench::temperature();
  format.timeUnit = {};
  format.valueUnit = {};
  EXPECT_EQ("3600         \t273.15          \n", fieldRecord(format, {0}, 3600.0, temperatures));
}

TEST_F(OutputRecord, valueWiderThanItsColumn_keepsABlankBehindIt) {
  std::ostringstream stream;
  stream << std::scientific << std::setprecision(12);
  writeSingleValueField(0.0, bench.field(OutputBench::temperature(), {1}), stream, temperatures);
  EXPECT_EQ("0            \t1.000000000000e+01 \n", stream.str());
}

TEST_F(OutputRecord, meanField_isWeightedByVolume) {
  // (10*0.12 + 20*0.08) / 0.20
  EXPECT_EQ("1            \t14\n",
            fieldRecord(OutputBench::temperature(Format::S_MEAN), {1, 2}, 3600.0, temperatures));
}

TEST_F(OutputRecord, integralField_isTheSumOverTheVolumes) {
  // 10*0.12 + 20*0.08
  EXPECT_EQ("1            \t2.8\n",
            fieldRecord(OutputBench::temperature(Format::S_INTEGRAL), {1, 2}, 3600.0, temperatures));
}

TEST_F(OutputRecord, meanOfNoElements_isZero) {
  EXPECT_EQ("1            \t0\n",
            fieldRecord(OutputBench::temperature(Format::S_MEAN), {}, 3600.0, temperatures));
}

TEST_F(OutputRecord, singleFlux_isAFluxDensity) {
  std::vector<double> flows(OutputBench::N_SIDES, 0.0);
  flows[6] = 8.0;   // 0.4 m2
  flows[9] = -4.0;  // 0.8 m2
  EXPECT_EQ("1            \t20              -5              \n",
            fluxRecord(OutputBench::heatFlux(), {6, 9}, 3600.0, flows));
}

TEST_F(OutputRecord, fluxThroughHorizontalSide_isPositiveUpwards) {
  std::vector<double> flows(OutputBench::N_SIDES, 0.0);
  flows[0] = 2.0;  // downwards, 0.2 m2
  EXPECT_EQ("1            \t-10             \n", fluxRecord(OutputBench::heatFlux(), {0}, 3600.0, flows));
}

TEST_F(OutputRecord, meanFlux_isTheSumOverTheSumOfAreas) {
  std::vector<double> flows(OutputBench::N_SIDES, 0.0);
  flows[0] = 3.0;  // horizontal
  flows[6] = 9.0;
  // (-3 + 9) / (0.2 + 0.4)
  EXPECT_EQ("1            \t10\n", fluxRecord(OutputBench::heatFlux(Format::S_MEAN), {0, 6}, 3600.0, flows));
}

TEST_F(OutputRecord, integralFlux_isTheSumOfTheFlows) {
  std::vector<double> flows(OutputBench::N_SIDES, 0.0);
  flows[0] = 3.0;  // horizontal
  flows[6] = 9.0;
  EXPECT_EQ("1            \t6\n",
            fluxRecord(OutputBench::heatFlux(Format::S_INTEGRAL), {0, 6}, 3600.0, flows));
}

TEST_F(OutputRecord, meanOfNoSides_isZero) {
  EXPECT_EQ("1            \t0\n",
            fluxRecord(OutputBench::heatFlux(Format::S_MEAN), {}, 3600.0, std::vector<double>(12, 1.0)));
}

TEST_F(OutputRecord, sideOnTheAxisOfRotation_hasNoFluxDensity) {
  bench.sides[6].area = 0.0;
  EXPECT_EQ("1            \t0               \n",
            fluxRecord(OutputBench::heatFlux(), {6}, 3600.0, std::vector<double>(12, 1.0)));
}

TEST_F(OutputRecord, fluxUnit_isConverted) {
  Format format = OutputBench::heatFlux(Format::S_INTEGRAL);
  format.valueUnit.set("kW/m2");
  EXPECT_EQ("1            \t0.5\n", fluxRecord(format, {6}, 3600.0, std::vector<double>(12, 500.0)));
}

TEST_F(OutputRecord, slotThatDoesNotExist_throws) {
  const std::vector<double> values(24, 1.0);
  const Format format = OutputBench::heatFlux();
  const VelOutputFile file = bench.flux(format, {6});
  std::ostringstream stream;
  const TKL::Thrown expected{"Invalid input (empty data vector or index out of range)!",
                             "[VelmoraCvodeSolver::writeSingleValueFlux]"};
  EXPECT_EQ(expected, TKL::thrownBy([&] {
              writeSingleValueFlux(1.0, file, stream, RecordView{values, 2}, 2);
            }));
  EXPECT_EQ(expected, TKL::thrownBy([&] { writeSingleValueFlux(1.0, file, stream, RecordView{{}, 2}, 0); }));
  EXPECT_EQ("", stream.str());
}

TEST_F(OutputRecord, slot_isTakenFromTheRecordOfTheSide) {
  std::vector<double> values(24, 0.0);
  values[2 * 6 + 1] = 8.0;
  const Format format = OutputBench::heatFlux();
  std::ostringstream stream;
  writeSingleValueFlux(3600.0, bench.flux(format, {6}), stream, RecordView{values, 2}, 1);
  EXPECT_EQ("1            \t20              \n", stream.str());
}

TEST_F(OutputRecord, binaryRecord_isTimeAndValuesAsLittleEndianDoubles) {
  Format format = OutputBench::temperature();
  format.binary = true;
  const std::string record = fieldRecord(format, {1, 3}, 3600.0, temperatures);
  ASSERT_EQ(24u, record.size());
  const double expected[] = {1.0, 283.15 - 273.15, 303.15 - 273.15};
  for (std::size_t i = 0; i < 3; ++i) {
    std::uint64_t bits = 0;
    for (std::size_t b = 8; b-- > 0;) bits = bits << 8 | static_cast<unsigned char>(record[8 * i + b]);
    EXPECT_NEAR(expected[i], std::bit_cast<double>(bits), 1e-12) << i;
  }
}

TEST_F(OutputRecord, binaryFormatWithOneEntry_isWrittenAsText) {
  Format format = OutputBench::temperature();
  format.binary = true;
  EXPECT_EQ("1            \t10              \n", fieldRecord(format, {1}, 3600.0, temperatures));
}

TEST_F(OutputRecord, binaryFormatOfAMean_isWrittenAsText) {
  Format format = OutputBench::temperature(Format::S_MEAN);
  format.binary = true;
  EXPECT_EQ("1            \t14\n", fieldRecord(format, {1, 2}, 3600.0, temperatures));
}

TEST(FormatNumber, agreesWithTheStreamItself) {
  for (const double value : {0.0, -1.5, 3.14159265358979, 1e-7, 123456789.0, 1e300}) {
    for (const int precision : {0, 1, 6, 9, 17}) {
      for (const auto field : {std::ios::fmtflags{}, std::ios::fixed, std::ios::scientific}) {
        std::ostringstream stream;
        stream.setf(field, std::ios::floatfield);
        stream.precision(precision);
        const std::string text = formatNumber(value, stream);
        stream << value;
        EXPECT_EQ(stream.str(), text) << precision;
      }
    }
  }
}

TEST(FormatNumber, hugePrecision_isLimited) {
  std::ostringstream stream;
  stream << std::fixed;
  stream.precision(2000000000);
  EXPECT_EQ(std::string("0.") + std::string(100, '0'), formatNumber(0.0, stream));
  EXPECT_EQ(309u + 1u + 100u, formatNumber(std::numeric_limits<double>::max(), stream).size());
}

TEST(FormatNumber, valueThatIsNotANumber_isShown) {
  const std::ostringstream stream;
  EXPECT_EQ("nan", formatNumber(std::abs(std::nan("")), stream));
}

}  // namespace
}  // namespace VELMORA

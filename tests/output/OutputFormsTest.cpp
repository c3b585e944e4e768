// Text and binary files of the same values, read by a reader of their own.

#include <gtest/gtest.h>

#include <stdexcept>

#include "output/OutputBench.h"
#include "output/OutputWriter.h"
#include "support/MessageCapture.h"
#include "support/OutputFileReader.h"

namespace VELMORA {
namespace {

using Format = VelOutputFormat;
using TKL::ReadOutputFile;
using TKL::readOutputFile;

class OutputForms : public ::testing::Test {
 protected:
  OutputForms() {
    bench.grids.front().durations = {TKL::Parameter("DURATION", 0.0, "h")};
    bench.grids.front().steps = {TKL::Parameter("STEP", 0.1, "h")};
    source.T = temperatures;
    source.heatFlux = {heatFlux, NUM_HF};
    for (std::size_t side = 0; side < OutputBench::N_SIDES; ++side)
      heatFlux[side * NUM_HF + HF_CONDUCTION] = 1.0 / 3.0 + static_cast<double>(side);
  }

  /// Bytes of a file with records at 0 and 0.1 h.
  std::string written(const VelOutputFile& file) {
    const std::vector<VelOutputFile> files{file};
    OutputWriter writer(bench.construction, files, bench.grids, ReferenceState{});
    writer.initOutputFiles(false);
    writer.schedule().start(3600.0, 0.0);
    for (const double t : {0.0, 360.0}) {
      source.time = t;
      writer.writeOutput(source);
      writer.schedule().advance(t, 3600.0);
    }
    writer.close();
    return bench.folder.read("result.out");
  }

  ReadOutputFile readField(bool binary) {
    Format format = OutputBench::temperature();
    format.binary = binary;
    format.precision = 17;
    return readOutputFile(written(bench.field(format, {2, 0, 3})));
  }
  ReadOutputFile readFlux(bool binary) {
    Format format = OutputBench::heatFlux();
    format.binary = binary;
    format.precision = 17;
    return readOutputFile(written(bench.flux(format, {6, 0})));
  }

  TKL::MessageCapture capture;
  OutputBench bench;
  std::vector<double> temperatures{273.15, 283.15, 293.15, 1.0 / 3.0};
  std::vector<double> heatFlux = std::vector<double>(OutputBench::N_SIDES * NUM_HF, 0.0);
  OutputSource source;
};

void expectSamePlaces(const std::vector<ReadOutputFile::Place>& one,
                      const std::vector<ReadOutputFile::Place>& other) {
  ASSERT_EQ(one.size(), other.size());
  for (std::size_t i = 0; i < one.size(); ++i) {
    EXPECT_EQ(one[i].number, other[i].number);
    EXPECT_NEAR(one[i].x, other[i].x, 1e-12);
    EXPECT_NEAR(one[i].y, other[i].y, 1e-12);
    EXPECT_EQ(one[i].column, other[i].column);
    EXPECT_EQ(one[i].row, other[i].row);
    EXPECT_EQ(one[i].tag, other[i].tag);
  }
}

TEST_F(OutputForms, bothForms_haveTheSameHeader) {
  const ReadOutputFile text = readField(false);
  const ReadOutputFile binary = readField(true);
  EXPECT_FALSE(text.binary);
  EXPECT_TRUE(binary.binary);
  for (const ReadOutputFile& file : {text, binary}) {
    EXPECT_EQ(file.type, "FIELD");
    EXPECT_EQ(file.quantity, "Temperature");
    EXPECT_EQ(file.spaceType, "SINGLE");
    EXPECT_EQ(file.timeType, "NONE");
    EXPECT_EQ(file.valueUnit, "C");
    EXPECT_EQ(file.timeUnit, "h");
    EXPECT_EQ(file.numbers, (std::vector<long>{2, 0, 3}));
  }
  EXPECT_EQ(text.projectFile, "somewhere/wall.vel");
  EXPECT_EQ(binary.projectFile, TKL::Path("somewhere/wall.vel").absolutePath().str());
}

TEST_F(OutputForms, bothForms_haveTheSameGeometry) {
  const ReadOutputFile text = readField(false);
  const ReadOutputFile binary = readField(true);
  for (const ReadOutputFile& file : {text, binary}) {
    ASSERT_EQ(file.materials.size(), 2U);
    EXPECT_EQ(file.materials[0].number, 1);
    EXPECT_EQ(file.materials[1].name, "Wool");
    EXPECT_EQ(file.columns, (std::vector<double>{0.1, 0.3}));
    EXPECT_EQ(file.rows, (std::vector<double>{0.2, 0.4}));
    EXPECT_EQ(file.thickness, 2.0);
    EXPECT_EQ(file.elements.size(), 4U);
    EXPECT_EQ(file.sides.size(), OutputBench::N_SIDES);
  }
  EXPECT_EQ(text.materials[0].colour, 1 + 256 * 2 + 65536 * 3);
  expectSamePlaces(text.elements, binary.elements);
  expectSamePlaces(text.sides, binary.sides);
}

TEST_F(OutputForms, elementsAndSides_standWhereTheyAre) {
  const ReadOutputFile file = readField(true);
  // element 2: left column, lower row, brick
  EXPECT_EQ(file.elements[2].number, 2);
  EXPECT_EQ(file.elements[2].x, 0.05);
  EXPECT_EQ(file.elements[2].y, 0.2);
  EXPECT_EQ(file.elements[2].column, 0);
  EXPECT_EQ(file.elements[2].row, 1);
  EXPECT_EQ(file.elements[2].tag, 1);
  EXPECT_EQ(file.sides[0].tag, 0);   // the first one is horizontal
  EXPECT_EQ(file.sides[11].tag, 1);  // the last one vertical
}

TEST_F(OutputForms, paddingOfABinaryFile_isZero) {
  EXPECT_EQ(readField(true).paddingBits, 0U);
  EXPECT_EQ(readFlux(true).paddingBits, 0U);
}

TEST_F(OutputForms, bothForms_haveTheSameValues) {
  for (const bool flux : {false, true}) {
    const ReadOutputFile text = flux ? readFlux(false) : readField(false);
    const ReadOutputFile binary = flux ? readFlux(true) : readField(true);
    ASSERT_EQ(text.records.size(), flux ? 1U : 2U);
    ASSERT_EQ(binary.records.size(), text.records.size());
    for (std::size_t i = 0; i < text.records.size(); ++i) {
      EXPECT_NEAR(text.records[i].time, binary.records[i].time, 1e-15);
      EXPECT_EQ(text.records[i].values, binary.records[i].values);
    }
    EXPECT_EQ(text.rest, 0U);
    EXPECT_EQ(binary.rest, 0U);
  }
}

TEST_F(OutputForms, binaryValues_areThoseOfTheSolver) {
  const ReadOutputFile field = readField(true);
  EXPECT_EQ(field.records[1].values, (std::vector<double>{293.15 - 273.15, 0.0, 1.0 / 3.0 - 273.15}));
  const ReadOutputFile flux = readFlux(true);
  // V6 has 0.4 m2; H0 is horizontal with 0.2 m2 and counts upwards
  EXPECT_EQ(flux.records[0].values, (std::vector<double>{(1.0 / 3.0 + 6.0) / 0.4, -(1.0 / 3.0) / 0.2}));
}

TEST_F(OutputForms, binaryFile_hasExactlyTheDescribedLength) {
  Format format = OutputBench::temperature();
  format.binary = true;
  const std::string bytes = written(bench.field(format, {2, 0, 3}));
  const std::size_t project = TKL::Path("somewhere/wall.vel").absolutePath().str().size() + 5;
  const std::size_t strings = project + (4 + 12) + (4 + 2) + (4 + 2);  // Temperature, C, h with their NUL
  const std::size_t geometry =
      4 + (12 + 6 + 12 + 5) + (4 + 16) + (4 + 16) + (4 + 8) + (4 + 4 * 40) + (4 + 12 * 40);
  const std::size_t numbers = 4 + 3 * 4;
  EXPECT_EQ(bytes.size(), 40 + 4 + 4 + 8 + strings + 4 + geometry + numbers + 12 + 2 * 4 * 8);
}

TEST_F(OutputForms, meansAndIntegrals_haveNoGeometryAndOneValue) {
  for (const auto space : {Format::S_MEAN, Format::S_INTEGRAL}) {
    Format format = OutputBench::temperature(space);
    format.binary = true;
    const ReadOutputFile file = readOutputFile(written(bench.field(format, {0, 1})));
    EXPECT_FALSE(file.binary);
    EXPECT_FALSE(file.withGeometry);
    EXPECT_EQ(file.spaceType, space == Format::S_MEAN ? "MEAN" : "INTEGRAL");
    ASSERT_EQ(file.records.size(), 2U);
    EXPECT_EQ(file.records[1].values.size(), 1U);
  }
}

TEST_F(OutputForms, reader_refusesWhatIsNotAsDescribed) {
  Format format = OutputBench::temperature();
  for (const bool binary : {false, true}) {
    format.binary = binary;
    const std::string bytes = written(bench.field(format, {2, 0, 3}));
    EXPECT_NO_THROW(readOutputFile(bytes));
    EXPECT_THROW(readOutputFile(bytes.substr(0, 300)), std::runtime_error);
    EXPECT_THROW(readOutputFile("x" + bytes), std::runtime_error);
    EXPECT_GT(readOutputFile(bytes.substr(0, bytes.size() - 1)).rest, 0U);
  }
}

TEST_F(OutputForms, reader_seesPaddingThatIsNotZero) {
  Format format = OutputBench::temperature();
  format.binary = true;
  std::string bytes = written(bench.field(format, {2, 0, 3}));
  const std::size_t numbersAndRecords = 4 + 3 * 4 + 12 + 2 * 4 * 8;
  bytes[bytes.size() - numbersAndRecords - 1] = '\1';  // last byte of the last side record
  EXPECT_EQ(readOutputFile(bytes).paddingBits, 1U);
}

}  // namespace
}  // namespace VELMORA

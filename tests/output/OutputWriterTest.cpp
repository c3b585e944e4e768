#include "output/OutputWriter.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>

#include "output/OutputBench.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using Format = VelOutputFormat;

const char* const WRITE_ID = "[VelmoraCvodeSolver::writeOutput]";

/// While it lives no file can grow beyond a size, as on a disk that is full.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(std::uintmax_t bytes) : previousHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &previous_);
    rlimit limit = previous_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &previous_);
    std::signal(SIGXFSZ, previousHandler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit previous_{};
  void (*previousHandler_)(int);
};

class OutputWriterTest : public ::testing::Test {
 protected:
  OutputWriterTest() {
    bench.grids.front().durations = {TKL::Parameter("DURATION", 0.0, "h")};
    bench.grids.front().steps = {TKL::Parameter("STEP", 1.0, "h")};
    source.T = temperatures;
    source.heatFlux = {heatFlux, NUM_HF};
    source.heatFluxSum = {heatFluxSum, NUM_HF};
  }

  void open(bool restart = false) {
    writer = std::make_unique<OutputWriter>(bench.construction, files, bench.grids, ReferenceState{});
    writer->initOutputFiles(restart);
    writer->schedule().start(10 * HOUR, 0.0);
  }
  void writeAt(double t) {
    source.time = t;
    writer->writeOutput(source);
    writer->schedule().advance(t, 10 * HOUR);
  }
  void setConductionSum(std::size_t side, double value) {
    heatFluxSum[side * NUM_HF + HF_CONDUCTION] = value;
  }

  /// The file behind its header.
  std::string records() {
    const std::string text = bench.folder.read("result.out");
    const std::size_t end = text.rfind("\n\n");
    return end == std::string::npos ? text : text.substr(end + 2);
  }

  static constexpr double HOUR = 3600.0;
  OutputBench bench;
  std::vector<double> temperatures{273.15, 283.15, 293.15, 303.15};
  std::vector<double> heatFlux = std::vector<double>(OutputBench::N_SIDES * NUM_HF, 0.0);
  std::vector<double> heatFluxSum = std::vector<double>(OutputBench::N_SIDES * NUM_HF, 0.0);
  OutputSource source;
  std::vector<VelOutputFile> files;
  TKL::MessageCapture capture;
  std::unique_ptr<OutputWriter> writer;
};

TEST_F(OutputWriterTest, fieldFile_hasARecordAtTheStart) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1, 3})};
  open();
  writeAt(0.0);
  temperatures[1] = 284.15;
  writeAt(HOUR);
  EXPECT_EQ(
      "0            \t10              30              \n"
      "1            \t11              30              \n",
      records());
}

TEST_F(OutputWriterTest, fluxFile_hasNoRecordAtTheStart) {
  const Format format = OutputBench::heatFlux();
  files = {bench.flux(format, {6})};
  open();
  heatFlux[6 * NUM_HF + HF_CONDUCTION] = 8.0;
  writeAt(0.0);
  EXPECT_EQ("", records());
  writeAt(HOUR);
  EXPECT_EQ("1            \t20              \n", records());
}

TEST_F(OutputWriterTest, record_isInTheFileAtOnce) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  EXPECT_NE("", records());
}

TEST_F(OutputWriterTest, onlyFilesWhoseGridIsDue_getARecord) {
  const Format format = OutputBench::temperature();
  bench.grids.resize(2, bench.grids.front());
  bench.grids[1].steps = {TKL::Parameter("STEP", 2.0, "h")};
  files = {bench.field(format, {1}), bench.field(format, {1})};
  files[1].path = bench.folder.file("second.out");
  files[0].grid = &bench.grids[0];
  files[1].grid = &bench.grids[1];
  open();
  for (const double t : {0.0, HOUR, 2 * HOUR}) writeAt(t);
  EXPECT_NE(std::string::npos, records().find("\n1            \t10"));
  const std::string second = bench.folder.read("second.out");
  EXPECT_EQ(std::string::npos, second.find("\n1            \t10"));
  EXPECT_NE(std::string::npos, second.find("\n2            \t10"));
}

TEST_F(OutputWriterTest, skippedFile_getsNoRecords) {
  Format format = OutputBench::temperature();
  format.quantity = Format::Q_RELHUM;
  files = {bench.field(format, {1})};
  open();
  EXPECT_NO_THROW(writeAt(0.0));
  EXPECT_FALSE(std::filesystem::exists(bench.folder.file("result.out")));
}

TEST_F(OutputWriterTest, fieldWithoutStream_isGuarded) {
  Format format = OutputBench::temperature();
  format.quantity = Format::Q_LOCALERROR_U;
  files = {bench.field(format, {1})};
  open();
  EXPECT_NO_THROW(writeAt(0.0));
}

TEST_F(OutputWriterTest, numberFormat_isThatOfTheFormat) {
  Format format = OutputBench::temperature();
  format.numberFormat = Format::N_FIXED;
  format.precision = 3;
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  format.numberFormat = Format::N_SCIENTIFIC;
  EXPECT_EQ("0            \t10.000          \n", records());
  open();
  writeAt(0.0);
  EXPECT_EQ("0            \t1.000e+01       \n", records());
}

TEST_F(OutputWriterTest, binaryFormatWithOneEntry_hasTheDefaultPrecision) {
  Format format = OutputBench::temperature();
  format.binary = true;
  format.precision = 3;
  temperatures[1] = 273.15 + 12.345678;
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  EXPECT_EQ("0            \t12.3457         \n", records());
}

TEST_F(OutputWriterTest, binaryFile_growsByWholeRecords) {
  Format format = OutputBench::temperature();
  format.binary = true;
  files = {bench.field(format, {1, 3})};
  open();
  const std::size_t header = bench.folder.read("result.out").size();
  writeAt(0.0);
  writeAt(HOUR);
  EXPECT_EQ(header + 2 * 3 * 8, bench.folder.read("result.out").size());
}

TEST_F(OutputWriterTest, timeMean_startsWithThePlainIntegral) {
  const Format format = OutputBench::heatFlux(Format::S_SINGLE, Format::M_MEAN);
  files = {bench.flux(format, {9})};  // 0.8 m2
  open();
  writeAt(0.0);
  setConductionSum(9, 7200.0);
  writeAt(HOUR);
  setConductionSum(9, 7200.0 + 3600.0 * 40.0);
  writeAt(2 * HOUR);
  setConductionSum(9, 7200.0 + 3600.0 * 40.0 - 3600.0 * 8.0);
  writeAt(3 * HOUR);
  EXPECT_EQ(
      "1            \t9000            \n"
      "2            \t50              \n"
      "3            \t-10             \n",
      records());
}

TEST_F(OutputWriterTest, timeMeanOfAMean_isWeightedByArea) {
  const Format format = OutputBench::heatFlux(Format::S_MEAN, Format::M_MEAN);
  files = {bench.flux(format, {0, 6})};  // horizontal 0.2 m2, vertical 0.4 m2
  open();
  writeAt(0.0);
  writeAt(HOUR);
  setConductionSum(0, 3600.0 * 3.0);
  setConductionSum(6, 3600.0 * 9.0);
  writeAt(2 * HOUR);
  EXPECT_EQ("1            \t0\n2            \t10\n", records());
}

TEST_F(OutputWriterTest, timeMeanWithoutTimeStep_warns) {
  const Format format = OutputBench::heatFlux(Format::S_SINGLE, Format::M_MEAN);
  files = {bench.flux(format, {9})};
  open();
  writer->schedule().advance(0.0, 10 * HOUR);
  source.time = HOUR;
  writer->writeOutput(source);
  writer->writeOutput(source);
  EXPECT_TRUE(capture.has("Negative or zero time step encountered when calculating average outputs.\n",
                          TKL::MSG_WARNING, WRITE_ID, -1));
  EXPECT_EQ("1            \t0               \n", records());
}

TEST_F(OutputWriterTest, timeIntegral_isTheSumSinceTheStart) {
  const Format format = OutputBench::heatFlux(Format::S_INTEGRAL, Format::M_INTEGRAL);
  files = {bench.flux(format, {0, 6})};
  open();
  writeAt(0.0);
  setConductionSum(0, 100.0);  // horizontal: counts upwards
  setConductionSum(6, 300.0);
  writeAt(HOUR);
  writeAt(2 * HOUR);
  EXPECT_EQ("0            \t0\n1            \t200\n2            \t200\n", records());
  EXPECT_NE(std::string::npos, bench.folder.read("result.out").find("# VALUE_UNIT    = J\n"));
}

TEST_F(OutputWriterTest, timeMeanOfAField_warnsAtEveryOutputTime) {
  Format format = OutputBench::temperature();
  format.timeType = Format::M_MEAN;
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  writeAt(HOUR);
  const std::string text =
      "Time averaged field outputs temporarily disabled. Use post-processing to obtain time averaged field "
      "variables!\n";
  EXPECT_EQ(2, capture.count(text));
  EXPECT_TRUE(capture.has(text, TKL::MSG_WARNING, WRITE_ID, -1));
  EXPECT_EQ("", records());
}

TEST_F(OutputWriterTest, timeIntegralOfAField_warns) {
  Format format = OutputBench::temperature();
  format.timeType = Format::M_INTEGRAL;
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  EXPECT_TRUE(
      capture.has("Time integrated field outputs not yet implemented.\n", TKL::MSG_WARNING, WRITE_ID, -1));
  EXPECT_EQ("", records());
}

TEST_F(OutputWriterTest, saltFields_warn) {
  bench.construction.balanceEquations.set(VelInit::B_SALT);
  const std::pair<Format::field_t, std::string> CASES[] = {
      {Format::Q_SALT, "Salt mass density"},
      {Format::Q_SALTMOLAL, "Molality"},
      {Format::Q_SALTMOLNUM, "Mol number (with respect to REV)"},
      {Format::Q_SOLUTION, "Solution mass density (with respect to REV)"}};
  for (const auto& [quantity, name] : CASES) {
    Format format = OutputBench::temperature();
    format.quantity = quantity;
    files = {bench.field(format, {1})};
    open();
    writeAt(0.0);
    EXPECT_TRUE(capture.has("Field output format '" + name + "' not yet implemented.\n", TKL::MSG_WARNING,
                            WRITE_ID, -1))
        << name;
    EXPECT_EQ("", records()) << name;
  }
}

TEST_F(OutputWriterTest, fluxWithoutIntegrals_warns) {
  bench.construction.balanceEquations.set();
  for (const bool mean : {true, false}) {
    Format format = OutputBench::heatFlux(Format::S_SINGLE, mean ? Format::M_MEAN : Format::M_INTEGRAL);
    format.quantity = Format::X_AIRFLUX;
    files = {bench.flux(format, {1})};
    open();
    writeAt(0.0);
    writeAt(HOUR);
    EXPECT_TRUE(
        capture.has(std::string("Flux output format 'Total dry air mass flux' not yet implemented for ") +
                        (mean ? "averaged" : "integrated") + " flux outputs.\n",
                    TKL::MSG_WARNING, WRITE_ID, -1));
    EXPECT_EQ("", records());
  }
}

TEST_F(OutputWriterTest, enthalpyOfAirWithoutEnergy_isNotWritten) {
  Format format = OutputBench::heatFlux();
  format.quantity = Format::X_AIRENTH;
  files = {bench.flux(format, {6})};
  bench.construction.balanceEquations.reset();
  bench.construction.balanceEquations.set(VelInit::B_AIR);
  open();
  writeAt(0.0);
  writeAt(HOUR);
  EXPECT_EQ("", records());
  bench.construction.balanceEquations.set(VelInit::B_ENERGY);
  open();
  writeAt(0.0);
  writeAt(HOUR);
  EXPECT_EQ("1            \t0               \n", records());
}

TEST_F(OutputWriterTest, quantityThatTheSolverDoesNotOffer_throwsAtTheFirstOutput) {
  bench.construction.balanceEquations.set();
  Format field = OutputBench::temperature();
  field.quantity = Format::Q_RELHUM;
  Format flux = OutputBench::heatFlux();
  flux.quantity = Format::X_VAPDIFF;
  Format integral = OutputBench::heatFlux(Format::S_SINGLE, Format::M_INTEGRAL);
  integral.quantity = Format::X_MOISTFLUX;
  const std::pair<VelOutputFile, std::string> CASES[] = {
      {bench.field(field, {1}), "Relative humidity"},
      {bench.flux(flux, {1}), "Vapour flux (vapour diffusion)"},
      {bench.flux(integral, {1}), "Total moisture flux"}};
  for (const auto& [file, name] : CASES) {
    files = {file};
    open();
    EXPECT_EQ((TKL::Thrown{"Quantity '" + name + "' of output file '" + file.path.absolutePath().str() +
                               "' is not calculated by this version of the solver!",
                           WRITE_ID}),
              TKL::thrownBy([&] { writeAt(0.0); }));
  }
}

TEST_F(OutputWriterTest, listsOfDifferentLength_throw) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  files.push_back(files.front());
  EXPECT_EQ((TKL::Thrown{"Size mismatch between output file vector and output stream list!", WRITE_ID}),
            TKL::thrownBy([&] { writeAt(0.0); }));
}

TEST_F(OutputWriterTest, restart_continuesTheFile) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  writer->close();
  open(true);
  writer->schedule().advance(0.0, 10 * HOUR);
  writeAt(HOUR);
  EXPECT_EQ("0            \t10              \n1            \t10              \n", records());
}

TEST_F(OutputWriterTest, restart_startsTimeMeansAfresh) {
  const Format format = OutputBench::heatFlux(Format::S_SINGLE, Format::M_MEAN);
  files = {bench.flux(format, {9})};
  open();
  writeAt(0.0);
  writeAt(HOUR);
  writer->close();
  open(true);
  setConductionSum(9, 80.0);
  writer->schedule().advance(HOUR, 10 * HOUR);
  writeAt(2 * HOUR);
  EXPECT_NE(std::string::npos, records().find("2            \t100             \n"));
}

TEST_F(OutputWriterTest, formatWithoutSpaceType_hasNoRecords) {
  Format format = OutputBench::temperature();
  format.spaceType = Format::NUM_S;
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  EXPECT_EQ("", records());
  EXPECT_NE(std::string::npos, bench.folder.read("result.out").find("# SPACE_TYPE    = UNKNOWN\n"));
}

TEST_F(OutputWriterTest, timeTypes_askForEveryStep) {
  Format format = OutputBench::heatFlux();
  files = {bench.flux(format, {6})};
  open();
  EXPECT_FALSE(writer->needsEveryStep());
  for (const auto type : {Format::M_MEAN, Format::M_INTEGRAL, Format::NUM_M}) {
    format.timeType = type;
    EXPECT_TRUE(writer->needsEveryStep()) << type;
  }
}

TEST_F(OutputWriterTest, timeIntegralOfAField_isRefusedBeforeTheRun) {
  Format format = OutputBench::temperature();
  format.timeType = Format::M_INTEGRAL;
  files = {bench.field(format, {1})};
  open();
  EXPECT_EQ(
      (TKL::Thrown{"You can only integrate flux outputs in time. Output format 'temperature' was defined "
                   "with time integration!",
                   "[VelmoraCvodeSolver::init]"}),
      TKL::thrownBy([&] { writer->needsEveryStep(); }));
}

TEST_F(OutputWriterTest, fullDisk_throwsWithTheNameOfTheFile) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  const FileSizeLimit limit(bench.folder.read("result.out").size() + 5);
  const std::string text = TKL::thrownBy([&] { writeAt(0.0); }).text;
  EXPECT_EQ("Error writing output file '" + files.front().path.absolutePath().str() + "'! File too large",
            text);
}

TEST_F(OutputWriterTest, diskThatIsNotFull_isNoError) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  const FileSizeLimit limit(bench.folder.read("result.out").size() + 100);
  EXPECT_NO_THROW(writeAt(0.0));
}

TEST_F(OutputWriterTest, lostFolder_throwsWithTheNameOfTheFile) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  const std::string path = files.front().path.absolutePath().str();
  std::filesystem::remove_all(bench.folder.path());
  EXPECT_EQ("Output file '" + path + "' has been removed during the run!",
            TKL::thrownBy([&] { writeAt(0.0); }).text);
  EXPECT_EQ("Output file '" + path + "' has been removed during the run!",
            TKL::thrownBy([&] { writer->close(); }).text);
}

TEST_F(OutputWriterTest, close_endsWithoutErrorAndOnlyOnce) {
  const Format format = OutputBench::temperature();
  files = {bench.field(format, {1})};
  open();
  writeAt(0.0);
  EXPECT_NO_THROW(writer->close());
  EXPECT_NO_THROW(writer->close());
  EXPECT_EQ("0            \t10              \n", records());
}

}  // namespace
}  // namespace VELMORA

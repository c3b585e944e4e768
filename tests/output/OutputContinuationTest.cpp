#include "output/OutputContinuation.h"

#include <gtest/gtest.h>

#include "output/OutputBench.h"
#include "output/OutputWriter.h"
#include "support/MessageCapture.h"
#include "support/OutputFileReader.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using Format = VelOutputFormat;

class OutputContinuation : public ::testing::Test {
 protected:
  void setGrid(double duration, double step) {
    bench.grids.front() = VelOutputGrid();
    bench.grids.front().durations = {TKL::Parameter("DURATION", duration, "s")};
    bench.grids.front().steps = {TKL::Parameter("STEP", step, "s")};
  }

  /// Writes all outputs up to and including `t`.
  void runUntil(double t) {
    source.T = temperatures;
    OutputWriter writer(bench.construction, files, bench.grids, ReferenceState{});
    writer.initOutputFiles(false);
    writer.schedule().start(END, 0.0);
    for (double time = 0.0; time <= t; time = writer.schedule().advance(time, 2.0 * END)) {
      source.time = time;
      writer.writeOutput(source);
    }
    writer.close();
  }

  /// Goes on from a restart state at `t` up to `end` and writes all outputs behind `t`.
  void continueUntil(double t, double end) {
    OutputWriter writer(bench.construction, files, bench.grids, ReferenceState{});
    writer.initOutputFiles(true);
    writer.continueFrom(END, t);
    for (double time = writer.schedule().reach(t, 2.0 * END); time <= end;
         time = writer.schedule().advance(time, 2.0 * END)) {
      source.time = time;
      writer.writeOutput(source);
    }
    writer.close();
  }

  std::string bytes() { return bench.folder.read("result.out"); }
  void append(const std::string& text) { bench.folder.write("result.out", bytes() + text); }

  static constexpr double END = 4e7;
  TKL::MessageCapture capture;
  OutputBench bench;
  Format format = OutputBench::temperature();
  std::vector<double> temperatures{280.0, 281.0, 282.0, 283.0};
  OutputSource source;
  std::vector<VelOutputFile> files;
};

TEST_F(OutputContinuation, recordsBehindTheRestart_areWrittenOnlyOnce) {
  setGrid(0.0, 3600.0);
  for (const bool binary : {false, true}) {
    format.binary = binary;
    files = {bench.field(format, {0, 1, 2})};
    runUntil(10 * 3600.0);
    const std::string whole = bytes();
    continueUntil(6.5 * 3600.0, 10 * 3600.0);
    EXPECT_EQ(bytes(), whole) << binary;
  }
}

TEST_F(OutputContinuation, recordAtTheRestartTime_stays) {
  setGrid(0.0, 3600.0);
  files = {bench.field(format, {0, 1, 2})};
  runUntil(6 * 3600.0);
  const std::string whole = bytes();
  continueUntil(6 * 3600.0, 6 * 3600.0);
  EXPECT_EQ(bytes(), whole);
}

TEST_F(OutputContinuation, halfARecord_isCut) {
  setGrid(0.0, 3600.0);
  for (const bool binary : {false, true}) {
    format.binary = binary;
    files = {bench.field(format, {0, 1, 2})};
    runUntil(3 * 3600.0);
    const std::string whole = bytes();
    for (const std::size_t missing : {1U, 5U, 13U}) {
      bench.folder.write("result.out", whole.substr(0, whole.size() - missing));
      continueUntil(2.5 * 3600.0, 3 * 3600.0);
      EXPECT_EQ(bytes(), whole) << binary << missing;
    }
  }
}

TEST_F(OutputContinuation, zerosThatAPowerCutLeaves_areCut) {
  setGrid(0.0, 3600.0);
  files = {bench.field(format, {0, 1, 2})};
  runUntil(3 * 3600.0);
  const std::string whole = bytes();
  append(std::string(100, '\0') + "\n");
  continueUntil(3.5 * 3600.0, 3.5 * 3600.0);
  EXPECT_EQ(bytes(), whole);
}

TEST_F(OutputContinuation, timesThatLookAlike_areToldApartByTheirNumber) {
  // At 3.2e7 s six digits show steps of 100 s: several outputs have the same text.
  setGrid(0.0, 32.5);
  format.timeUnit.set("s");
  files = {bench.field(format, {0, 1, 2})};
  bench.grids.front().durations.insert(bench.grids.front().durations.begin(),
                                       TKL::Parameter("DURATION", 3.2e7, "s"));
  bench.grids.front().steps.insert(bench.grids.front().steps.begin(), TKL::Parameter("STEP", 1.6e7, "s"));
  runUntil(3.2e7 + 1000.0);
  const std::string whole = bytes();
  for (const double t : {3.2e7 + 1.0, 3.2e7 + 333.0, 3.2e7 + 999.0}) {
    bench.folder.write("result.out", whole);
    continueUntil(t, 3.2e7 + 1000.0);
    EXPECT_EQ(bytes(), whole) << t;
  }
}

TEST_F(OutputContinuation, outputNearBehindTheRestart_isNotLost) {
  // The grids take times for equal that are nearer than 1e-6 of themselves: 36 s here.
  setGrid(0.0, 3600.0);
  files = {bench.field(format, {0, 1, 2})};
  runUntil(10002 * 3600.0);
  const std::string whole = bytes();
  continueUntil(10001 * 3600.0 - 1.0, 10002 * 3600.0);
  EXPECT_EQ(bytes(), whole);
}

TEST_F(OutputContinuation, recordsOfAnOlderFinerGrid_stay) {
  setGrid(0.0, 3600.0);
  files = {bench.field(format, {0, 1, 2})};
  runUntil(10 * 3600.0);
  setGrid(0.0, 4 * 3600.0);
  continueUntil(7.5 * 3600.0, 12 * 3600.0);
  std::vector<double> times;
  for (const auto& record : TKL::readOutputFile(bytes()).records) times.push_back(record.time);
  EXPECT_EQ(times, (std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 8, 12}));
}

TEST_F(OutputContinuation, fileOfAMean_isContinuedToo) {
  setGrid(0.0, 3600.0);
  Format mean = OutputBench::temperature(Format::S_MEAN);
  files = {bench.field(mean, {0, 1, 2})};
  runUntil(5 * 3600.0);
  const std::string whole = bytes();
  append("6 ");
  continueUntil(2.5 * 3600.0, 5 * 3600.0);
  EXPECT_EQ(bytes(), whole);
}

TEST_F(OutputContinuation, fileWithoutHeader_isContinuedFromItsFirstRecord) {
  setGrid(0.0, 3600.0);
  files = {bench.field(format, {0, 1, 2})};
  bench.folder.write("result.out", "1 \t1 2 3\n2 \t1 2 3\n3 \t1 2 3\n");
  continueUntil(2.5 * 3600.0, 2.5 * 3600.0);
  EXPECT_EQ(bytes(), "1 \t1 2 3\n2 \t1 2 3\n");
}

TEST_F(OutputContinuation, cut_isToldWithItsSize) {
  setGrid(0.0, 3600.0);
  files = {bench.field(format, {0, 1, 2})};
  runUntil(3600.0);
  append("2 \t7");
  continueUntil(1.5 * 3600.0, 1.5 * 3600.0);
  EXPECT_TRUE(capture.has(
      "Removed 4 bytes behind the restart time from output file '" + bench.folder.file("result.out") + "'.\n",
      TKL::MSG_STANDARD, "[OutputWriter::continueFrom]", 1));
}

TEST_F(OutputContinuation, missingRecords_areWarnedOf) {
  // as behind a new run that was killed early, with the restart file of the run before
  setGrid(0.0, 3600.0);
  for (const bool binary : {false, true}) {
    format.binary = binary;
    files = {bench.field(format, {0, 1, 2})};
    runUntil(2.0 * 3600.0);
    capture.messages.clear();
    continueUntil(6.5 * 3600.0, 7.0 * 3600.0);
    EXPECT_TRUE(capture.has("Output file '" + bench.folder.file("result.out") +
                                "' has 3 records up to the restart time instead of 7.\n",
                            TKL::MSG_WARNING, "[OutputWriter::continueFrom]", -1))
        << binary;
  }
}

TEST_F(OutputContinuation, completeFiles_areContinuedWithoutAWarning) {
  setGrid(0.0, 3600.0);
  std::vector<double> flows(OutputBench::N_SIDES * NUM_HF, 1.0);
  source.heatFlux = source.heatFluxSum = {flows, NUM_HF};
  for (const auto time : {Format::M_NONE, Format::M_MEAN, Format::M_INTEGRAL}) {
    const Format flux = OutputBench::heatFlux(Format::S_SINGLE, time);
    files = {bench.flux(flux, {0, 6})};
    runUntil(3.0 * 3600.0);
    continueUntil(3.0 * 3600.0, 4.0 * 3600.0);
  }
  format.spaceType = Format::NUM_S;  // never has records
  files = {bench.field(format, {0, 1})};
  runUntil(3.0 * 3600.0);
  continueUntil(3.0 * 3600.0, 4.0 * 3600.0);
  EXPECT_FALSE(capture.contains("up to the restart time instead of"));
}

TEST_F(OutputContinuation, halfAHeader_isRefused) {
  setGrid(0.0, 3600.0);
  for (const bool binary : {false, true}) {
    format.binary = binary;
    files = {bench.field(format, {0, 1, 2})};
    runUntil(0.0);
    bench.folder.write("result.out", bytes().substr(0, 200));
    EXPECT_EQ(TKL::thrownBy([&] { continueUntil(1.0, 1.0); }),
              (TKL::Thrown{"Cannot continue output file '" + bench.folder.file("result.out") +
                               "': its header is not complete!",
                           "[VelOutputs::cutRecordsAfter]"}));
  }
}

TEST_F(OutputContinuation, fileOfOtherElements_isRefusedAndStays) {
  setGrid(0.0, 3600.0);
  for (const bool binary : {false, true}) {
    for (const std::vector<std::size_t>& others :
         {std::vector<std::size_t>{0, 1, 2, 3}, {0, 1}, {0, 1, 3}, {2, 1, 0}}) {
      format.binary = binary;
      files = {bench.field(format, {0, 1, 2})};
      runUntil(3600.0);
      const std::string whole = bytes();
      files = {bench.field(format, others)};
      EXPECT_EQ(TKL::thrownBy([&] { continueUntil(1.0, 1.0); }),
                (TKL::Thrown{"Cannot continue output file '" + bench.folder.file("result.out") +
                                 "': it was written for other elements or sides!",
                             "[VelOutputs::cutRecordsAfter]"}));
      EXPECT_EQ(bytes(), whole);
    }
  }
}

TEST_F(OutputContinuation, singleValuesInsteadOfAMean_areRefused) {
  setGrid(0.0, 3600.0);
  Format mean = OutputBench::temperature(Format::S_MEAN);
  files = {bench.field(mean, {0, 1, 2})};
  runUntil(3600.0);
  files = {bench.field(format, {0, 1, 2})};
  EXPECT_NE(TKL::thrownBy([&] { continueUntil(1.0, 1.0); }).text.find("for other elements or sides!"),
            std::string::npos);
}

}  // namespace
}  // namespace VELMORA

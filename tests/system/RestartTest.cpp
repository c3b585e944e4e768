#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

std::vector<std::string> hoursUntil(int last) {
  std::vector<std::string> hours;
  for (int hour = 0; hour <= last; ++hour) hours.push_back(std::to_string(hour));
  return hours;
}

/// The numbers of the last record of an output file.
std::vector<double> lastRecord(const std::string& text) {
  std::istringstream lines(text);
  std::string line, last;
  while (std::getline(lines, line))
    if (!line.empty()) last = line;
  std::istringstream numbers(last);
  std::vector<double> values;
  for (double value = 0; numbers >> value;) values.push_back(value);
  return values;
}

/// Two days, then the third day by a second run.
void runInTwoParts(SmallProject& project) {
  project.replace("INIT", "DURATION = 1 d", "DURATION = 2 d");
  ASSERT_EQ(project.run().exitCode, 0);
  project.replace("INIT", "DURATION = 2 d", "DURATION = 3 d");
  const ProcessResult result = project.run({"--restart"});
  ASSERT_EQ(result.exitCode, 0) << result.err;
}

}  // namespace

TEST(Restart, longerDuration_continuesTheOutputWithoutGapOrDuplicate) {
  SmallProject project;
  runInTwoParts(project);
  EXPECT_EQ(project.outputTimes("profile.out"), hoursUntil(72));
}

TEST(Restart, continuedRun_endsLikeOneRunOfTheWholeTime) {
  // A slow warm-up by 20 K: half the wall's heat is still missing after three days.
  SmallProject project;
  project.replace("CONDITIONS", "EXCOEFF = 25 W/m2K", "EXCOEFF = 0.5 W/m2K");
  runInTwoParts(project);
  const std::vector<double> parts = lastRecord(project.output("profile.out"));
  ASSERT_EQ(project.run().exitCode, 0);
  const std::vector<double> whole = lastRecord(project.output("profile.out"));
  ASSERT_EQ(parts.size(), 6U);
  ASSERT_EQ(whole.size(), parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i) EXPECT_NEAR(parts[i], whole[i], 0.01);
  EXPECT_GT(whole[1], 5.0);
}

TEST(Restart, withoutRestart_theOutputBeginsAnew) {
  SmallProject project;
  ASSERT_EQ(project.run().exitCode, 0);
  ASSERT_EQ(project.run().exitCode, 0);
  EXPECT_EQ(project.outputTimes("profile.out"), hoursUntil(24));
}

TEST(Restart, finishedRun_addsNothing) {
  SmallProject project;
  ASSERT_EQ(project.run().exitCode, 0);
  EXPECT_EQ(project.run({"--restart"}).exitCode, 0);
  EXPECT_EQ(project.outputTimes("profile.out"), hoursUntil(24));
}

TEST(Restart, withoutRestartFile_isRefused) {
  const SmallProject project;
  const ProcessResult result = project.run({"--restart"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.ends_with("Cannot initialize solver. Program aborted.\n")) << result.err;
}

TEST(Restart, damagedRestartFile_isRefused) {
  const SmallProject project;
  ASSERT_EQ(project.run().exitCode, 0);
  for (const char* const name : {"restart.txt", "restart.txt.backup"})
    project.folder().write(std::string("wall.results/") + name, "no state at all\n");
  const ProcessResult result = project.run({"--restart"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.ends_with("Cannot initialize solver. Program aborted.\n")) << result.err;
}

}  // namespace VELMORA_TEST

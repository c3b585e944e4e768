// Runs of the program that are stopped from outside or cannot write.

#include <gtest/gtest.h>

#include <filesystem>

#include "support/OutputFileReader.h"
#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

/// Shell text that waits up to 10 s for the first restart file of the project "$1".
const std::string WAIT_FOR_STATE =
    "n=0; until test -s \"${1%.vel}.results/restart.txt\" || test $((n+=1)) -gt 1000; do sleep 0.01; done; ";

/// Runs a shell command on the project file "$1" with the program as "$0".
ProcessResult shell(const SmallProject& project, const std::string& command) {
  project.folder().write("wall.vel", project.text());
  return runProcess({"/bin/sh", "-c", command, VELMORA_PROGRAM, project.projectFile()});
}

std::vector<std::string> hoursFromZeroTo(int last) {
  std::vector<std::string> hours;
  for (int hour = 0; hour <= last; ++hour) hours.push_back(std::to_string(hour));
  return hours;
}

/// A project that runs for some seconds, with an output each hour.
struct LongProject : SmallProject {
  LongProject() { replace("INIT", "DURATION = 1 d", "DURATION = 20000 d"); }
};

}  // namespace

TEST(StopOfARun, sigtermAndSigint_leaveARestartFileAndExitCode1) {
  for (const char* signal : {"TERM", "INT"}) {
    const LongProject project;
    // a shell lets its background jobs ignore SIGINT: the signal goes to the foreground job
    const ProcessResult result =
        shell(project, "(" + WAIT_FOR_STATE + "kill -s " + signal + " $$) & exec \"$0\" -x \"$1\"");
    EXPECT_EQ(result.exitCode, 1) << signal << result.err;
    EXPECT_TRUE(result.errHasInOrder(
        {"Aborting solver...", "Simulation aborted before reaching next output time : ", "Solver aborted!",
         "Simulation stopped!"}))
        << result.err;
    const double reached = std::stod(project.output("restart.txt"));
    const auto file = TKL::readOutputFile(project.output("profile.out"));
    EXPECT_EQ(file.rest, 0U);
    EXPECT_LE(file.records.back().time * 3600.0, reached);
    EXPECT_GT((file.records.back().time + 1.0) * 3600.0, reached);
  }
}

TEST(StopOfARun, recordsBehindTheRestartFile_areWrittenOnce) {
  SmallProject project;
  ASSERT_EQ(project.run().exitCode, 0);
  const std::string early = project.output("restart.txt");
  const std::string whole = project.output("profile.out");
  project.replace("INIT", "DURATION = 1 d", "DURATION = 2 d");
  ASSERT_EQ(project.run({"--restart"}).exitCode, 0);
  // as if the restart file of the second day had never been written, and the last record only half
  project.folder().write("wall.results/restart.txt", early);
  const std::string later = project.output("profile.out");
  project.folder().write("wall.results/profile.out", later.substr(0, later.size() - 9));
  ASSERT_EQ(project.run({"--restart"}).exitCode, 0);
  EXPECT_EQ(project.outputTimes("profile.out"), hoursFromZeroTo(48));
  EXPECT_EQ(project.output("profile.out").substr(0, whole.size()), whole);
}

TEST(FullDisk, endsTheRunWithThePathAndTheReason) {
  SmallProject project;
  project.replace("INIT", "DURATION = 1 d", "DURATION = 100 d");
  const ProcessResult result = shell(project, "ulimit -f 20; trap '' XFSZ; exec \"$0\" -x -v0 \"$1\"");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(
      result.errHasInOrder({"Error writing output file '" +
                                project.folder().file("wall.results/profile.out") + "'! File too large",
                            "Solver aborted!", "Simulation stopped!"}))
      << result.err;
  // the state before can be continued once there is room
  EXPECT_EQ(project.run({"--restart", "-v0"}).exitCode, 0);
  EXPECT_EQ(project.outputTimes("profile.out"), hoursFromZeroTo(2400));
}

TEST(FullDisk, enoughRoom_isNoError) {
  SmallProject project;
  EXPECT_EQ(shell(project, "ulimit -f 20000; trap '' XFSZ; exec \"$0\" -x -v0 \"$1\"").exitCode, 0);
}

TEST(LostFolder, endsTheRunWithThePath) {
  const LongProject project;
  const ProcessResult result = shell(project, "(" + WAIT_FOR_STATE +
                                                  "mv \"${1%.vel}.results\" \"$1.gone\") & "
                                                  "exec \"$0\" -x -v0 \"$1\"");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find(project.folder().file("wall.results")), std::string::npos) << result.err;
}

}  // namespace VELMORA_TEST

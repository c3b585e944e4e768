#include <gtest/gtest.h>

#include <filesystem>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

const char* const BANNER =
    "Velmora CVODE based solver\n"
    "--------------------------\n"
    "\n"
    "Velmora model and solver version : 5.9.6\n"
    "TKL library version              : 4.2.4\n"
    "\n"
    "Compiled with: ";

const char* const FINISHED = "\nSimulation finished after : ";
const char* const CONTINUED = "\n----------- continued -------------\n\n";

/// Steps of at least six hours cannot meet this tolerance: the run fails in its first step.
void makeRunFail(SmallProject& project) {
  project.append(
      "INIT", "[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\nMIN_DT = 6 h\nMAX_DT = 12 h\nREL_TOL = 1e-12\n");
}

const std::vector<std::string> FAILURE_CHAIN = {
    "Giving up after relative tolerance reached 1.0e-2! Maybe the tolerances are set too low or the minimum "
    "time step limit is too large?\n",
    "Simulation aborted before reaching next output time : 3600 s\n", "Solver aborted!\n",
    "Simulation stopped!\n"};

/// An output file without the line that tells when it was made.
std::string withoutDate(const std::string& text) {
  const std::size_t begin = text.find("# CREATED");
  return begin == std::string::npos ? text : text.substr(0, begin) + text.substr(text.find('\n', begin));
}

/// The console text as the log has it: the one warning of a small project stands there without indentation.
std::string asLogged(std::string text) {
  const std::string warning = "No KG in base parameter section given. Material is set to air tight.\n";
  const std::size_t begin = text.find(warning);
  if (begin == std::string::npos) return text;
  const std::size_t lineBegin = text.rfind('\n', begin) + 1;
  return text.erase(lineBegin, begin - lineBegin);
}

}  // namespace

TEST(RunSequence, pieces_haveToStandInOrder) {
  EXPECT_TRUE(hasInOrder("a b c", {"a", "c"}));
  EXPECT_FALSE(hasInOrder("a b c", {"c", "a"}));
  EXPECT_FALSE(hasInOrder("a", {"a", "a"}));
}

TEST(RunSequence, verbosity1_tellsTheStepsInOrder) {
  const SmallProject project;
  const ProcessResult result = project.run({"-v1"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(result.out.starts_with(BANNER)) << result.out;
  EXPECT_TRUE(hasInOrder(
      result.out, {BANNER, "\n\nReading project '" + project.projectFile() + "'\n",
                   "Begin reading project '" + project.projectFile() + "'\n", "Project read successfully!\n",
                   "Initializating solver\n", "Initialization complete!\n", "Starting solver\n\n", FINISHED}))
      << result.out;
}

TEST(RunSequence, verbosity0_leavesOutBannerAndSteps) {
  const ProcessResult result = SmallProject().run({"-v0"});
  EXPECT_EQ(result.exitCode, 0);
  for (const char* const text :
       {"Velmora", "Reading project", "Project read", "Initializ", "Starting solver"})
    EXPECT_EQ(result.out.find(text), std::string::npos) << text;
  EXPECT_NE(result.out.find(FINISHED), std::string::npos);
}

TEST(RunSequence, dryRunWithoutIce_hasNoIterationCounts) {
  EXPECT_EQ(SmallProject().run({"-v4"}).out.find("Global count of"), std::string::npos);
}

TEST(RunSequence, testInit_makesNoStep) {
  const SmallProject project;
  const ProcessResult result = project.run({"--testinit"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(
      result.out.ends_with("Initialization complete!\n\nSolver halted after successful initialization!\n"));
  EXPECT_EQ(result.out.find("Starting solver"), std::string::npos);
  EXPECT_EQ(result.out.find(FINISHED), std::string::npos);
  EXPECT_TRUE(project.outputTimes("profile.out").empty());
}

TEST(RunSequence, fullRun_writesEveryOutputTimeOnce) {
  const SmallProject project;
  ASSERT_EQ(project.run().exitCode, 0);
  std::vector<std::string> hours;
  for (int hour = 0; hour <= 24; ++hour) hours.push_back(std::to_string(hour));
  EXPECT_EQ(project.outputTimes("profile.out"), hours);
}

TEST(RunSequence, log_equalsTheConsoleButForTheIndentationOfWarnings) {
  const SmallProject project;
  for (const char* const option : {"-v0", "-v1"}) {
    const ProcessResult result = project.run({option});
    EXPECT_EQ(project.log(), asLogged(result.out)) << option;
  }
}

TEST(RunSequence, log_takesWarningsWithoutIndentation) {
  SmallProject project;
  project.append("INIT", "[GENERAL]\nDURATOIN = 1 d\n");
  const ProcessResult result = project.run({"-t"});
  EXPECT_NE(result.out.find("\n  1 unknown or deprecated keyword(s)"), std::string::npos);
  EXPECT_NE(project.log().find("\n1 unknown or deprecated keyword(s)"), std::string::npos);
}

TEST(RunSequence, log_takesErrorsWithTheirOrigin) {
  const SmallProject project;
  project.runText("[INIT]\n");
  EXPECT_NE(
      project.log().find("\n                        [main]: Cannot initialize solver. Program aborted.\n"),
      std::string::npos)
      << project.log();
}

TEST(RunSequence, newRun_replacesTheLog) {
  const SmallProject project;
  project.folder().write("wall.vel.output", "old text\n");
  project.run({"-t"});
  EXPECT_EQ(project.log().find("old text"), std::string::npos);
}

TEST(RunSequence, restart_appendsToTheLog) {
  const SmallProject project;
  project.run({"-v1"});
  const std::string before = project.log();
  const ProcessResult result = project.run({"-v1", "-r"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(project.log(), before + CONTINUED + asLogged(result.out));
}

TEST(RunSequence, unwritableLog_doesNotStopTheRun) {
  const SmallProject project;
  std::filesystem::create_directory(project.projectFile() + ".output");
  EXPECT_EQ(project.run().exitCode, 0);
}

TEST(RunSequence, failedRun_tellsTheChainFromCauseToStop) {
  SmallProject project;
  makeRunFail(project);
  const ProcessResult result = project.run({"-v1"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.errHasInOrder(FAILURE_CHAIN)) << result.err.substr(result.err.size() / 2);
  EXPECT_TRUE(result.err.ends_with("Solver aborted!\nSimulation stopped!\n"));
  EXPECT_TRUE(result.out.ends_with("Simulation of project '" + project.projectFile() + "' aborted.\n"));
  EXPECT_EQ(result.out.find(FINISHED), std::string::npos);
}

TEST(RunSequence, failedRun_logEndsWithTheAbortedLine) {
  SmallProject project;
  makeRunFail(project);
  project.run({"-v1"});
  std::vector<std::string> chain = FAILURE_CHAIN;
  chain.push_back("Simulation of project '" + project.projectFile() + "' aborted.\n");
  EXPECT_TRUE(hasInOrder(project.log(), chain));
  EXPECT_TRUE(project.log().ends_with(chain.back()));
}

TEST(RunSequence, failedRun_namesElementAndMaterialOfTheLargestError) {
  SmallProject project;
  makeRunFail(project);
  EXPECT_NE(project.run({"-v1"}).out.find("element 0 at x = 0.01 m, y = 0.5 m, material 'Brick'"),
            std::string::npos);
}

TEST(RunSequence, failedRunAtVerbosity0_tellsTheChainToo) {
  SmallProject project;
  makeRunFail(project);
  const ProcessResult result = project.run({"-v0"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.errHasInOrder(FAILURE_CHAIN));
  EXPECT_EQ(result.out.find("aborted."), std::string::npos);
}

TEST(RunSequence, locale_changesNothing) {
  const SmallProject project;
  const std::string file = project.folder().write("wall.vel", project.text());
  std::vector<std::string> profiles;
  for (const char* const variable : {"LC_ALL=C", "LC_ALL=de_DE.UTF-8", "LC_ALL=no_such_locale"}) {
    const ProcessResult result = runSolver({"-v4", file}, {variable, "LANG=de_DE.UTF-8"});
    EXPECT_EQ(result.exitCode, 0) << variable << result.err;
    profiles.push_back(withoutDate(project.output("profile.out")));
  }
  EXPECT_EQ(profiles[0], profiles[1]);
  EXPECT_EQ(profiles[0], profiles[2]);
}

TEST(RunSequence, secondRun_givesTheSameBytes) {
  const SmallProject project;
  project.run();
  const std::string first = withoutDate(project.output("profile.out"));
  project.run();
  EXPECT_EQ(withoutDate(project.output("profile.out")), first);
  EXPECT_NE(first.find("ELEMENTS"), std::string::npos);
}

}  // namespace VELMORA_TEST

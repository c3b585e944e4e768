#include <gtest/gtest.h>

#include <filesystem>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

const char* const HELP =
    "\nCommand line options generally supported by Velmora solvers\n"
    "-----------------------------------------------------------\n"
    "\n"
    "Syntax: solver [options] <projectfile>\n"
    "\n"
    "Options:\n"
    "  -x, --closeonexit    Close console window after finishing simulation\n"
    "  -r, --restart        Continue stopped calculation from last output\n"
    "  -t, --testinit       Run the initialization and stop then\n"
    "  -v0 .. -v4           Set verbose level for solver output:\n"
    "                       from 0 (very little) to 4 (very verbose)\n"
    "  -d, --disableheaders Do not print the headers in the output log\n"
    "  -h, --help           Show additional help\n"
    "\n"
    "You can combine the options. The implementation of these options\n"
    "depends on the specific solver.\n";

const char* const WRONG_LINE = "\nWrong or missing command line options!\n";
const char* const FIRST_LINE = "Velmora CVODE based solver\n";
const char* const HALTED = "\nSolver halted after successful initialization!\n";

/// A project that is written, but not run yet.
class CommandLine : public ::testing::Test {
 protected:
  CommandLine() { project.folder().write("wall.vel", project.text()); }

  /// Runs `options` and the project; true if the line was accepted.
  bool accepts(const std::vector<std::string>& options) {
    result = project.run(options);
    return result.exitCode == 0 && result.err.empty();
  }
  bool rejects(const std::vector<std::string>& arguments, const std::string& complaint = "") {
    result = runSolver(arguments);
    return result.exitCode == 1 && result.out == HELP && result.err == complaint + WRONG_LINE;
  }
  bool hasLog() const { return std::filesystem::exists(project.projectFile() + ".output"); }

  SmallProject project;
  ProcessResult result;
};

std::string cannotOpen(const std::string& name) {
  return "Cannot open project file '" + name + "' !\n";
}

}  // namespace

TEST_F(CommandLine, noArgument_showsHelpAndFails) {
  EXPECT_TRUE(rejects({})) << result.out << result.err;
}

TEST_F(CommandLine, helpWithoutProject_showsHelpAndFails) {
  EXPECT_TRUE(rejects({"--help"}));
  EXPECT_TRUE(rejects({"-h"}));
}

TEST_F(CommandLine, helpWithProject_runsIt) {
  EXPECT_TRUE(accepts({"--help", "-t"}));
  EXPECT_EQ(result.out.find("Syntax:"), std::string::npos);
  EXPECT_TRUE(accepts({"-help", "-t"}));
}

TEST_F(CommandLine, wrongLine_createsNoLog) {
  EXPECT_TRUE(rejects({"--q", project.projectFile()}));
  EXPECT_FALSE(hasLog());
}

TEST_F(CommandLine, wrongLine_leavesAnOldLogAlone) {
  project.folder().write("wall.vel.output", "old text");
  EXPECT_TRUE(rejects({"--q", project.projectFile()}));
  EXPECT_EQ(project.log(), "old text");
}

TEST_F(CommandLine, closeOnExit_isAccepted) {
  EXPECT_TRUE(accepts({"--closeonexit", "-t"}));
  EXPECT_TRUE(accepts({"-x", "-t"}));
  EXPECT_TRUE(rejects({"--closeonexit"}));
}

TEST_F(CommandLine, testInit_bothForms) {
  EXPECT_TRUE(accepts({"--testinit"}));
  EXPECT_NE(result.out.find(HALTED), std::string::npos);
  EXPECT_TRUE(accepts({"-t"}));
  EXPECT_NE(result.out.find(HALTED), std::string::npos);
}

TEST_F(CommandLine, disableHeaders_bothFormsLeaveOutTheTableHead) {
  ASSERT_TRUE(accepts({}));
  EXPECT_NE(result.out.find("Simtime "), std::string::npos);
  for (const char* const option : {"--disableheaders", "-d"}) {
    EXPECT_TRUE(accepts({option}));
    EXPECT_EQ(result.out.find("Simtime "), std::string::npos) << option;
  }
}

TEST_F(CommandLine, restart_bothFormsAndTrailingLettersContinue) {
  ASSERT_TRUE(accepts({"-v1"}));
  for (const char* const option : {"--restart", "-r", "-restart"}) {
    const std::size_t before = project.log().size();
    EXPECT_TRUE(accepts({option, "-t"})) << option;
    EXPECT_GT(project.log().size(), before) << option;
  }
}

TEST_F(CommandLine, longOptionsAreCaseSensitiveAndWhole) {
  for (const char* const option : {"--q", "--", "--Restart", "--testinit=1", "--test"})
    EXPECT_TRUE(rejects({option, project.projectFile()})) << option;
}

TEST_F(CommandLine, unknownShortOptions_areIgnored) {
  for (const char* const option : {"-", "-q", "-A", "-y", "-{", "-1", "-\x01"})
    EXPECT_TRUE(accepts({option, "-t"})) << option;
}

TEST_F(CommandLine, dashAlone_isNoProjectFile) {
  EXPECT_TRUE(rejects({"-"}));
}

TEST_F(CommandLine, verbosityWithoutOrWithWrongDigit_isAnError) {
  for (const char* const option : {"-v", "-v5", "-v9", "-vx", "-v/"})
    EXPECT_TRUE(rejects({option, project.projectFile()})) << option;
}

TEST_F(CommandLine, verbosity0To4_areAccepted) {
  for (const char* const option : {"-v0", "-v1", "-v2", "-v3", "-v4"}) EXPECT_TRUE(accepts({option, "-t"}));
}

TEST_F(CommandLine, moreVerbosity_tellsMore) {
  std::size_t before = 0;
  for (const char* const option : {"-v0", "-v1", "-v2", "-v3"}) {
    ASSERT_TRUE(accepts({option}));
    EXPECT_GT(result.out.size(), before) << option;
    before = result.out.size();
  }
}

TEST_F(CommandLine, verbosity_readsOneDigitOnly) {
  ASSERT_TRUE(accepts({"-v25", "-t"}));
  const std::string out = result.out;
  ASSERT_TRUE(accepts({"-v2", "-t"}));
  EXPECT_NE(out.find("Installation directory = '"), std::string::npos);
  EXPECT_NE(result.out.find("Installation directory = '"), std::string::npos);
}

TEST_F(CommandLine, defaultVerbosity_is1) {
  ASSERT_TRUE(accepts({"-t"}));
  EXPECT_TRUE(result.out.starts_with(FIRST_LINE));
  EXPECT_EQ(result.out.find("Installation directory = '"), std::string::npos);
}

TEST_F(CommandLine, optionsAfterTheProject_count) {
  result = runSolver({project.projectFile(), "-t", "-v0"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out.find(FIRST_LINE), std::string::npos);
  EXPECT_EQ(result.out.find("Simulation finished"), std::string::npos);
}

TEST_F(CommandLine, secondProject_isAnErrorEvenIfMissing) {
  EXPECT_TRUE(rejects({project.projectFile(), project.projectFile()}));
  EXPECT_TRUE(rejects({project.projectFile(), project.folder().file("missing.vel")}));
}

TEST_F(CommandLine, missingProject_isNamed) {
  const std::string missing = project.folder().file("missing.vel");
  EXPECT_TRUE(rejects({missing}, cannotOpen(missing))) << result.err;
  EXPECT_FALSE(std::filesystem::exists(missing + ".output"));
}

TEST_F(CommandLine, missingProjectBeforeAReadableOne_staysAnError) {
  const std::string missing = project.folder().file("missing.vel");
  EXPECT_TRUE(rejects({missing, project.projectFile()}, cannotOpen(missing))) << result.err;
  EXPECT_FALSE(hasLog());
}

TEST_F(CommandLine, directoryAsProject_isNamed) {
  const std::string folder = project.folder().path().string();
  EXPECT_TRUE(rejects({folder}, cannotOpen(folder))) << result.err;
}

TEST_F(CommandLine, logName_isTheArgumentAsGiven) {
  result = runSolver({"-t", "./wall.vel"}, {}, project.folder().path().string());
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_NE(result.out.find("Reading project './wall.vel'\n"), std::string::npos);
  EXPECT_TRUE(hasLog());
}

}  // namespace VELMORA_TEST

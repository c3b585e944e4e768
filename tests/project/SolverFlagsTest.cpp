#include "project/SolverFlags.h"

#include <gtest/gtest.h>

#include <iostream>
#include <vector>

#include "support/StreamCapture.h"
#include "support/TempFolder.h"

namespace VELMORA {
namespace {

class SolverFlagsTest : public ::testing::Test {
 protected:
  /// Flags of a call of "solver" with these arguments; what goes to standard error is kept.
  SolverFlags parse(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv = {"bin/solver"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    const TKL::StreamCapture capture(std::cerr);
    SolverFlags flags;
    flags.readParams(static_cast<int>(argv.size()), argv.data());
    errorOutput = capture.text();
    return flags;
  }

  TKL::TempFolder folder;
  std::string project = folder.write("wall.vel", "[INIT]\n");
  std::string errorOutput;
};

TEST_F(SolverFlagsTest, defaults) {
  const SolverFlags flags;
  EXPECT_FALSE(flags.closeOnExit);
  EXPECT_FALSE(flags.restart);
  EXPECT_FALSE(flags.testInit);
  EXPECT_FALSE(flags.help);
  EXPECT_FALSE(flags.disableHeaders);
  EXPECT_EQ(flags.verbosity, 1);
  EXPECT_FALSE(flags.error);
  EXPECT_EQ(flags.solverPath, "");
  EXPECT_EQ(flags.projectFile, "");
}

TEST_F(SolverFlagsTest, projectAlone_isAValidLine) {
  const SolverFlags flags = parse({project});
  EXPECT_FALSE(flags.error);
  EXPECT_EQ(flags.projectFile, project);
  EXPECT_EQ(flags.solverPath, "bin/solver");
  EXPECT_EQ(errorOutput, "");
}

TEST_F(SolverFlagsTest, noArgument_isAnErrorWithoutWords) {
  EXPECT_TRUE(parse({}).error);
  EXPECT_EQ(errorOutput, "");
}

TEST_F(SolverFlagsTest, noArgumentVector_isAnError) {
  SolverFlags flags;
  flags.readParams(0, nullptr);
  EXPECT_TRUE(flags.error);
}

TEST_F(SolverFlagsTest, longOptions_setTheirFlags) {
  const SolverFlags flags =
      parse({"--closeonexit", "--restart", "--testinit", "--help", "--disableheaders", project});
  EXPECT_TRUE(flags.closeOnExit);
  EXPECT_TRUE(flags.restart);
  EXPECT_TRUE(flags.testInit);
  EXPECT_TRUE(flags.help);
  EXPECT_TRUE(flags.disableHeaders);
  EXPECT_FALSE(flags.error);
}

TEST_F(SolverFlagsTest, shortOptions_setTheirFlags) {
  const SolverFlags flags = parse({"-x", "-r", "-t", "-h", "-d", project});
  EXPECT_TRUE(flags.closeOnExit);
  EXPECT_TRUE(flags.restart);
  EXPECT_TRUE(flags.testInit);
  EXPECT_TRUE(flags.help);
  EXPECT_TRUE(flags.disableHeaders);
  EXPECT_FALSE(flags.error);
}

TEST_F(SolverFlagsTest, optionsBehindTheProject_count) {
  EXPECT_TRUE(parse({project, "-r"}).restart);
}

TEST_F(SolverFlagsTest, unknownLongOption_isAnError) {
  EXPECT_TRUE(parse({"--q", project}).error);
  EXPECT_TRUE(parse({"--", project}).error);
}

TEST_F(SolverFlagsTest, longOption_isComparedExactly) {
  EXPECT_TRUE(parse({"--Restart", project}).error);
  EXPECT_TRUE(parse({"--restarted", project}).error);
}

TEST_F(SolverFlagsTest, unknownShortOption_isIgnored) {
  for (const char* option : {"-q", "-A", "-X", "-1"}) EXPECT_FALSE(parse({option, project}).error) << option;
}

TEST_F(SolverFlagsTest, signsOutsideTheOptionLetters_areSkipped) {
  for (const char* option : {"-y", "-z", "-{", "-+", "- x", "-\xC3\xA4"})
    EXPECT_FALSE(parse({option, project}).error) << option;
}

TEST_F(SolverFlagsTest, shortOption_isItsSecondCharacterAlone) {
  EXPECT_TRUE(parse({"-restart", project}).restart);
  EXPECT_TRUE(parse({"-help", project}).help);
  const SolverFlags flags = parse({"-xyrt", project});
  EXPECT_TRUE(flags.closeOnExit);
  EXPECT_FALSE(flags.restart);
  EXPECT_FALSE(flags.testInit);
}

TEST_F(SolverFlagsTest, dashAlone_isSkippedAndNoProject) {
  EXPECT_FALSE(parse({"-", project}).error);
  EXPECT_EQ(parse({"-"}).projectFile, "");
}

TEST_F(SolverFlagsTest, verbosity_fromZeroToFour) {
  for (int level = 0; level <= 4; ++level) {
    const SolverFlags flags = parse({"-v" + std::to_string(level), project});
    EXPECT_EQ(flags.verbosity, level);
    EXPECT_FALSE(flags.error);
  }
}

TEST_F(SolverFlagsTest, verbosity_readsOneDigit) {
  const SolverFlags flags = parse({"-v25", project});
  EXPECT_EQ(flags.verbosity, 2);
  EXPECT_FALSE(flags.error);
}

TEST_F(SolverFlagsTest, verbosityWithoutDigit_isAnErrorAndKeepsTheValue) {
  const SolverFlags flags = parse({"-v3", "-v", project});
  EXPECT_EQ(flags.verbosity, 3);
  EXPECT_TRUE(flags.error);
}

TEST_F(SolverFlagsTest, verbosityOutOfRange_isAnErrorAndStays) {
  const SolverFlags five = parse({"-v5", project});
  EXPECT_EQ(five.verbosity, 5);
  EXPECT_TRUE(five.error);
  const SolverFlags letter = parse({"-vx", project});
  EXPECT_EQ(letter.verbosity, 'x' - '0');
  EXPECT_TRUE(letter.error);
  const SolverFlags sign = parse({"-v/", project});
  EXPECT_EQ(sign.verbosity, -1);
  EXPECT_TRUE(sign.error);
}

TEST_F(SolverFlagsTest, helpWithoutProject_isAnError) {
  const SolverFlags flags = parse({"--help"});
  EXPECT_TRUE(flags.help);
  EXPECT_TRUE(flags.error);
}

TEST_F(SolverFlagsTest, helpWithProject_isNoError) {
  EXPECT_FALSE(parse({"--help", project}).error);
}

TEST_F(SolverFlagsTest, secondProject_isAnErrorAndTheFirstStays) {
  const std::string second = folder.write("second.vel", "");
  const SolverFlags flags = parse({project, second});
  EXPECT_TRUE(flags.error);
  EXPECT_EQ(flags.projectFile, project);
}

TEST_F(SolverFlagsTest, secondProject_isNotOpened) {
  parse({project, folder.file("missing.vel")});
  EXPECT_EQ(errorOutput, "");
}

TEST_F(SolverFlagsTest, unreadableProject_isNamed) {
  const SolverFlags flags = parse({"no such file"});
  EXPECT_TRUE(flags.error);
  EXPECT_EQ(flags.projectFile, "");
  EXPECT_EQ(errorOutput, "Cannot open project file 'no such file' !\n");
}

TEST_F(SolverFlagsTest, directoryAsProject_isUnreadable) {
  EXPECT_TRUE(parse({folder.path().string()}).error);
}

TEST_F(SolverFlagsTest, emptyArgument_isAnUnreadableProject) {
  EXPECT_TRUE(parse({""}).error);
  EXPECT_EQ(errorOutput, "Cannot open project file '' !\n");
}

TEST_F(SolverFlagsTest, readableProjectAfterUnreadableOne_isKeptAndErrorStays) {
  const SolverFlags flags = parse({folder.file("missing.vel"), project});
  EXPECT_TRUE(flags.error);
  EXPECT_EQ(flags.projectFile, project);
}

TEST_F(SolverFlagsTest, help_goesToStandardOutputWithOneLineEnd) {
  const TKL::StreamCapture capture(std::cout);
  SolverFlags::printHelp();
  EXPECT_EQ(
      capture.text(),
      "\nCommand line options generally supported by Velmora "
      "solvers\n-----------------------------------------------------------\n\nSyntax: solver [options] "
      "<projectfile>\n\nOptions:\n  -x, --closeonexit    Close console window after finishing "
      "simulation\n  -r, --restart        Continue stopped calculation from last output\n  -t, "
      "--testinit       Run the initialization and stop then\n  -v0 .. -v4           Set verbose level "
      "for solver output:\n                       from 0 (very little) to 4 (very verbose)\n  -d, "
      "--disableheaders Do not print the headers in the output log\n  -h, --help           Show "
      "additional help\n\nYou can combine the options. The implementation of these options\ndepends on "
      "the specific solver.\n");
}

}  // namespace
}  // namespace VELMORA

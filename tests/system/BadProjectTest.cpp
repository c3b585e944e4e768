#include <gtest/gtest.h>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

/// A run that must end while the project file is read.
class BadProject : public ::testing::Test {
 protected:
  void readFails(const ProcessResult& result, const std::string& cause) {
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.signal, 0);
    EXPECT_TRUE(result.err.ends_with("Error reading project file '" + project.projectFile() + "'!\n" + cause +
                                     "\nCannot read project file. Program aborted.\n"))
        << result.err;
    EXPECT_EQ(result.out.find("Project read successfully!"), std::string::npos);
    EXPECT_TRUE(hasInOrder(project.log(), {cause, "Cannot read project file. Program aborted.\n"}));
  }

  /// Runs the project and looks for the cause with file, line number and line.
  void readFailsInLine(const std::string& line, const std::string& cause) {
    const ProcessResult result = project.run();
    readFails(result, cause);
    EXPECT_NE(
        result.err.find("  " + cause + "\n  The error is in line " + std::to_string(project.lineOf(line)) +
                        " of the file '" + project.projectFile() + "': " + line + "\n"),
        std::string::npos)
        << result.err;
  }

  SmallProject project;
};

std::string noKeywordOf(const std::string& list, const std::string& keyword) {
  return "Cannot determine enumeration value for enumeration type '" + list + "' and keyword '" + keyword +
         "'.";
}

}  // namespace

TEST_F(BadProject, dataBeforeTheFirstHeader) {
  const ProcessResult result = project.runText("\n[stray]\n" + project.text());
  readFails(result, "Expected keyword, got 'stray'!");
  EXPECT_NE(result.err.find("The error is in line 2 of the file '" + project.projectFile() + "': [stray]\n"),
            std::string::npos);
}

TEST_F(BadProject, lowerCaseHeader) {
  readFails(project.runText("[init]\n"), "Expected keyword, got 'init'!");
}

TEST_F(BadProject, blankBeforeTheEqualSign_isNoHeader) {
  readFails(project.runText("INIT =\n"), "Expected keyword, got 'INIT '!");
}

TEST_F(BadProject, unknownBalanceEquation) {
  project.replace("INIT", "= ENERGY", "= ENTHALPY");
  readFailsInLine("BALANCE_EQUATIONS = ENTHALPY", noKeywordOf("VelInit::balance_equations_t", "ENTHALPY"));
}

TEST_F(BadProject, unknownUnit) {
  project.replace("CONDITIONS", "25 W/m2K", "25 W/m2Q");
  readFailsInLine("EXCOEFF = 25 W/m2Q", "Invalid parameter value '25 W/m2Q' for keyword 'EXCOEFF'!");
}

TEST_F(BadProject, unknownTimeUnit) {
  project.replace("INIT", "1 d", "1 fortnight");
  readFailsInLine("DURATION = 1 fortnight", "Invalid parameter value '1 fortnight' for keyword 'DURATION'!");
}

TEST_F(BadProject, missingValue) {
  project.replace("INIT", "DURATION = 1 d", "DURATION =");
  readFailsInLine("DURATION =", "Missing value for keyword 'DURATION'!");
}

TEST_F(BadProject, lineWithoutEqualSign) {
  project.replace("INIT", "DURATION = 1 d", "DURATION 1 d");
  const ProcessResult result = project.run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.err.find("The error is in line " + std::to_string(project.lineOf("DURATION 1 d"))),
            std::string::npos)
      << result.err;
}

TEST_F(BadProject, unknownOutputFormatType) {
  project.replace("OUTPUTS", "TYPE = FIELD\n", "TYPE = TABLE\n");
  readFailsInLine("TYPE = TABLE", noKeywordOf("VelOutputFormat::type_t", "TABLE"));
}

TEST_F(BadProject, unknownOutputQuantity) {
  project.replace("OUTPUTS", "FIELD_TYPE = TEMPER", "FIELD_TYPE = WARMTH");
  readFailsInLine("FIELD_TYPE = WARMTH", noKeywordOf("VelOutputFormat::field_t", "WARMTH"));
}

TEST_F(BadProject, unreadableRange) {
  project.replace("ASSIGNMENTS", "RANGE = 0 0 4 0", "RANGE = 0 0 four 0");
  readFailsInLine("RANGE = 0 0 four 0", "Error reading selection range from string '0 0 four 0'!");
}

TEST_F(BadProject, lineNumbersCountBlankLinesAndCarriageReturns) {
  const ProcessResult result = project.runText("\r\n\r\n[INIT]\r\n\r\n[GENERAL]\r\nDURATION = x d\r\n");
  readFails(result, "Invalid parameter value 'x d' for keyword 'DURATION'!");
  EXPECT_NE(result.err.find("The error is in line 6 of the file '"), std::string::npos) << result.err;
}

TEST_F(BadProject, errorWhileReading_leavesEarlierResultsAlone) {
  ASSERT_EQ(project.run().exitCode, 0);
  const std::string before = project.output("profile.out");
  project.replace("ASSIGNMENTS", "LOCATION = ELEMENT", "LOCATION = NOWHERE");
  EXPECT_EQ(project.run().exitCode, 1);
  EXPECT_EQ(project.output("profile.out"), before);
}

TEST_F(BadProject, unknownKeyword_closesTheReadingWithItsLine) {
  project.replace("INIT", "DURATION = 1 d", "DURATION = 1 d\nDURATOIN = 2 d");
  project.replace("OUTPUTS", "PRECISION = 6", "PRECISION = 6\nDIGITS = 6");
  const ProcessResult result = project.run({"-v0", "-t"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(
      result.out.find("2 unknown or deprecated keyword(s) in the project file. The first one is 'DURATOIN' "
                      "in line " +
                      std::to_string(project.lineOf("DURATOIN = 2 d")) +
                      ", section INIT. Verbosity -v3 lists them all.\n"),
      std::string::npos)
      << result.out;
  const std::string all = project.run({"-v3", "-t"}).out;
  EXPECT_NE(all.find("Invalid or deprecated keyword 'DURATOIN' in this section!"), std::string::npos);
  EXPECT_NE(all.find("Invalid or deprecated keyword 'DIGITS' in this section!"), std::string::npos);
}

TEST_F(BadProject, misspeltFileKeywordOfAMaterial_isToldWithItsLine) {
  project.replace("MATERIALS", "FILENAME =", "FILENAM =");
  const ProcessResult result = project.run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.out.find("The first one is 'FILENAM' in line " +
                            std::to_string(project.lineOf("FILENAM = $(PROJECT_DIR)/brick.m6")) +
                            ", section MATERIALS."),
            std::string::npos)
      << result.out;
  EXPECT_NE(result.err.find("Parameter RHO missing for Brick."), std::string::npos) << result.err;
}

TEST_F(BadProject, misspeltFileKeywordOfAClimateCondition_isToldWithItsLine) {
  project.replace("CONDITIONS", "KIND = CONSTANT\nCONSTVALUE = 0 C", "KIND = DATLINEAR\nFILENAM = a.ccd");
  const ProcessResult result = project.run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_NE(result.out.find("The first one is 'FILENAM' in line " +
                            std::to_string(project.lineOf("FILENAM = a.ccd")) + ", section CONDITIONS."),
            std::string::npos)
      << result.out;
}

}  // namespace VELMORA_TEST

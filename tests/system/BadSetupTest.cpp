#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace fs = std::filesystem;

namespace VELMORA_TEST {

namespace {

const char* const REFUSED = "Cannot initialize solver. Program aborted.\n";

/// A project that can be read, but not be set up for the calculation.
class BadSetup : public ::testing::Test {
 protected:
  void refused(const ProcessResult& result, const std::string& cause) {
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.signal, 0);
    EXPECT_NE(result.out.find("Project read successfully!\nInitializating solver\n"), std::string::npos);
    EXPECT_TRUE(result.errHasInOrder({cause + "\n", "Error during initialization of solver!\n", REFUSED}))
        << result.err;
    EXPECT_TRUE(result.err.ends_with(REFUSED));
    EXPECT_TRUE(hasInOrder(project.log(), {cause, "Error during initialization of solver!", REFUSED}));
    EXPECT_EQ(result.out.find("aborted.\n"), std::string::npos);
  }
  void refused(const std::string& cause) { refused(project.run(), cause); }

  /// The same for a cause that stands in one line of the project file, which is named.
  void refusedAtLine(const std::string& cause, const std::string& line) {
    const ProcessResult result = project.run();
    refused(result, cause);
    const std::string place = "The cause is in line " + std::to_string(project.lineOf(line)) +
                              " of project file '" + project.projectFile() + "'.\n";
    EXPECT_TRUE(result.errHasInOrder({cause + "\n", place})) << result.err;
  }

  SmallProject project;
};

const char* const NO_GRID = "Invalid or missing discretization (dx and dy vectors)!";

}  // namespace

TEST_F(BadSetup, emptyFile) {
  refused(project.runText(""), NO_GRID);
}

TEST_F(BadSetup, blankLinesOnly) {
  refused(project.runText("\n \t\n\r\n"), NO_GRID);
}

TEST_F(BadSetup, headerOnly) {
  refused(project.runText("[INIT]\n"), NO_GRID);
}

TEST_F(BadSetup, missingDiscretisation) {
  project.remove("DISCRETISATION");
  refused(NO_GRID);
}

TEST_F(BadSetup, unsupportedBalanceEquations) {
  for (const char* const equations : {"SALT", "ENERGY SALT", "MOISTURE ICE"}) {
    SmallProject other;
    other.replace("INIT", "= ENERGY", std::string("= ") + equations);
    const ProcessResult result = other.run();
    EXPECT_EQ(result.exitCode, 1) << equations;
    EXPECT_TRUE(result.errHasInOrder(
        {"This combination of balance equations is invalid or not supported in this solver!", REFUSED}))
        << equations << result.err;
  }
}

TEST_F(BadSetup, missingClimateFile) {
  project.replace("CONDITIONS", "KIND = CONSTANT\nCONSTVALUE = 0 C",
                  "KIND = DATLINEAR\nFILENAME = $(PROJECT_DIR)/nowhere.ccd");
  const std::string file = project.folder().file("nowhere.ccd");
  refusedAtLine("Could not open CCD file '" + file + "'!", "NAME = Frost");
  EXPECT_NE(project.log().find("Cannot read climate data file '" + file + "'."), std::string::npos);
}

TEST_F(BadSetup, missingMaterialFile) {
  project.replace("MATERIALS", "brick.m6", "nowhere.m6");
  refused("Material 'Brick' has no data, its file '$(PROJECT_DIR)/nowhere.m6' could not be read.");
  EXPECT_NE(project.log().find("Cannot find material file '" + project.folder().file("nowhere.m6") +
                               "' and cannot find name substition."),
            std::string::npos)
      << project.log();
}

TEST_F(BadSetup, materialWithoutConductivity_isWarnedOfAndConductsNothing) {
  project.folder().write("brick.m6", materialFile("RHO = 1800 kg/m3\nCE = 1000 J/kgK\n", ""));
  EXPECT_EQ(project.run().exitCode, 0);
  EXPECT_NE(project.log().find("Material 'Brick' has no LAMBDA and conducts no heat."), std::string::npos)
      << project.log();
}

TEST_F(BadSetup, materialWithoutDensity) {
  project.folder().write("brick.m6", materialFile("CE = 1000 J/kgK\n", "LAMBDA = 0.8 W/mK\n"));
  refused("Parameter RHO missing for Brick.");
}

TEST_F(BadSetup, materialWithoutHeatCapacity) {
  project.folder().write("brick.m6", materialFile("RHO = 1800 kg/m3\n", "LAMBDA = 0.8 W/mK\n"));
  refused("Parameter CE missing for Brick.");
}

TEST_F(BadSetup, rangeOutsideTheGrid) {
  project.replace("ASSIGNMENTS", "RANGE = 0 0 4 0", "RANGE = 0 0 5 0");
  refusedAtLine("Invalid range in assignment, range was: 0 0 5 0!", "RANGE = 0 0 5 0");
}

TEST_F(BadSetup, twoMaterialsOfOneName) {
  project.append("MATERIALS", "[MATERIAL]\nNAME = Brick\nFILENAME = $(PROJECT_DIR)/brick.m6\n");
  refused(
      "Ambiguous assignment 'Brick' with type 'MATERIAL'. Check whether there are multiple definitions "
      "(materials, conditions, etc.) of the same identification name!");
}

TEST_F(BadSetup, outputOnAMissingGrid) {
  project.replace("OUTPUTS", "OUTPUT_GRID = Hourly", "OUTPUT_GRID = Weekly");
  refusedAtLine("Output grid 'Weekly' used by output file 'profile.out' is not defined!",
                "OUTPUT_GRID = Weekly");
}

TEST_F(BadSetup, outputInAMissingFormat) {
  project.replace("OUTPUTS", "OUTPUT_FORMAT = Temperature", "OUTPUT_FORMAT = Warmth");
  refusedAtLine("Output format 'Warmth' used by output file 'profile.out' is not defined!",
                "OUTPUT_FORMAT = Warmth");
}

TEST_F(BadSetup, assignmentOfAnUnknownName) {
  project.replace("ASSIGNMENTS", "NAME = Brick", "NAME = Brik");
  refusedAtLine("Invalid assignment 'Brik' with type 'MATERIAL'. Check the ID names of your assignments!",
                "NAME = Brik");
}

TEST_F(BadSetup, plainFileInPlaceOfTheOutputFolder) {
  const std::string file = project.folder().write("wall.results", "kept");
  refused("Couldn't create output directory '" + file + "'. A file with this path exists already.");
  EXPECT_EQ(project.folder().read("wall.results"), "kept");
}

TEST_F(BadSetup, outputFolderWithoutWritePermission) {
  const std::string folder = project.folder().file("wall.results");
  fs::create_directory(folder);
  fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
  const bool permissionsCount = ::access(folder.c_str(), W_OK) != 0;
  const ProcessResult result = project.run();
  fs::permissions(folder, fs::perms::owner_all);
  if (!permissionsCount) GTEST_SKIP() << "this user may write everywhere";
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.errHasInOrder({"Error creating output file '" + folder + "/profile.out'!\n",
                                    "Error creating output files!\n", REFUSED}))
      << result.err;
}

TEST_F(BadSetup, directoryInPlaceOfAnOutputFile) {
  fs::create_directories(project.folder().file("wall.results/profile.out"));
  const ProcessResult result = project.run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(
      result.errHasInOrder({"Error creating output file '", "Error creating output files!\n", REFUSED}))
      << result.err;
}

TEST_F(BadSetup, failureBeforeTheOutputs_leavesEarlierResultsAlone) {
  ASSERT_EQ(project.run().exitCode, 0);
  const std::string before = project.output("profile.out");
  project.replace("ASSIGNMENTS", "RANGE = 0 0 4 0", "RANGE = 0 0 5 0");
  EXPECT_EQ(project.run().exitCode, 1);
  EXPECT_EQ(project.output("profile.out"), before);
}

}  // namespace VELMORA_TEST

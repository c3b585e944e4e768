#include "solver/MonitorFile.h"

#include <gtest/gtest.h>

#include <string>

#include "support/TempFolder.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

// each title left in its field, a blank between two fields
const std::string TITLES = std::string("Steps   ") + "             Time         " + "RhsEvals " +
                           "JacEvals " + "NNiters  " + "NNfails  " + "NErrfails " + "Order " +
                           "StepSize     " + "RelTol    ";

IntegratorStatistics someStatistics() {
  IntegratorStatistics s;
  s.steps = 12;
  s.rhsEvaluations = 34;
  s.jacobianEvaluations = 5;
  s.nonlinearIterations = 30;
  s.nonlinearFailures = 1;
  s.errorTestFailures = 2;
  s.order = 3;
  s.time = 3600.5;
  s.stepSize = 0.25;
  return s;
}

/// The file behind its first line, which holds the date.
std::string withoutDate(const TKL::TempFolder& folder) {
  const std::string text = folder.read("wall.vel.cvode_monitors");
  return text.substr(text.find('\n') + 1);
}

}  // namespace

TEST(MonitorFile, header_namesDateProjectAndColumns) {
  const TKL::TempFolder folder;
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), false, false);
  const std::string start = "CVODE monitor variables, starting solver at: ";
  const std::string text = folder.read("wall.vel.cvode_monitors");
  EXPECT_EQ(text.substr(0, start.size()), start);
  EXPECT_EQ(text.find('\n'), start.size() + 24);  // the local time has 24 characters
  EXPECT_EQ(withoutDate(folder), "Project: wall.vel\n\n" + TITLES + "\n");
}

TEST(MonitorFile, airBalance_hasAColumnOfItsOwn) {
  const TKL::TempFolder folder;
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), false, true);
  EXPECT_EQ(withoutDate(folder), "Project: wall.vel\n\n" + TITLES + " PressFieldUpdates\n");
}

TEST(MonitorFile, line_standsBelowItsTitles) {
  const TKL::TempFolder folder;
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), true, false);
  file.write(someStatistics(), 1e-5);
  EXPECT_EQ(
      folder.read("wall.vel.cvode_monitors"),
      "\n12      3600.5000000000           34       5        30       1        2         3     0.250000 "
      "    1.000000e-05\n");
}

TEST(MonitorFile, lineOfARunWithAir_endsInItsPressureUpdates) {
  const TKL::TempFolder folder;
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), true, true);
  file.write(someStatistics(), 1e-5, 42);
  const std::string text = folder.read("wall.vel.cvode_monitors");
  EXPECT_NE(text.find(" 1.000000e-05 42     \n"), std::string::npos) << text;
}

TEST(MonitorFile, smallStep_isScientific) {
  const TKL::TempFolder folder;
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), false, false);
  IntegratorStatistics s = someStatistics();
  s.stepSize = 1e-5;
  file.write(s, 1e-5);
  s.stepSize = 9.5e-6;
  file.write(s, 1e-5);
  const std::string text = withoutDate(folder);
  EXPECT_NE(text.find(" 0.000010     1.000000e-05\n"), std::string::npos) << text;
  EXPECT_NE(text.find(" 9.50000000e-06 1.000000e-05\n"), std::string::npos) << text;
}

TEST(MonitorFile, beforeTheFirstStep_writesNothing) {
  const TKL::TempFolder folder;
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), true, false);
  IntegratorStatistics s = someStatistics();
  s.steps = 0;
  file.write(s, 1e-5);
  EXPECT_EQ(folder.read("wall.vel.cvode_monitors"), "\n");
}

TEST(MonitorFile, restart_appendsBehindAnEmptyLine) {
  const TKL::TempFolder folder;
  folder.write("wall.vel.cvode_monitors", "old\n");
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), true, false);
  EXPECT_EQ(folder.read("wall.vel.cvode_monitors"), "old\n\n");
}

TEST(MonitorFile, start_truncatesAnOldFile) {
  const TKL::TempFolder folder;
  folder.write("wall.vel.cvode_monitors", "old\n");
  MonitorFile file;
  file.open(TKL::Path(folder.file("wall.vel")), false, false);
  EXPECT_EQ(folder.read("wall.vel.cvode_monitors").find("old"), std::string::npos);
}

TEST(MonitorFile, closedFile_takesNoLine) {
  MonitorFile file;
  EXPECT_FALSE(file.isOpen());
  EXPECT_NO_THROW(file.write(someStatistics(), 1e-5));
}

TEST(MonitorFile, missingFolder_isNamed) {
  const TKL::TempFolder folder;
  const std::string project = folder.file("nowhere/wall.vel");
  MonitorFile file;
  EXPECT_EQ(
      TKL::thrownBy([&] { file.open(TKL::Path(project), false, false); }),
      (TKL::Thrown{"Cannot create monitor file '" + project + ".cvode_monitors'. No such file or directory",
                   "[MonitorFile::open]"}));
}

}  // namespace VELMORA_SOLVER

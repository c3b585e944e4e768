#include "solver/RestartFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/TempFolder.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

/// What reading a file of this content as two elements gives.
TKL::Thrown readTwoElements(const TKL::TempFolder& folder, const std::string& content) {
  folder.write("restart.txt", content);
  return TKL::thrownBy([&] { RestartFile(TKL::Path(folder.path().string())).read(2); });
}

TKL::Thrown refusal(const std::string& text) {
  const std::string tag = "[VelmoraCvodeSolver::setRestartFields]";
  return {tag + "  " + text, tag};
}

RestartFile fileIn(const TKL::TempFolder& folder) {
  return RestartFile(TKL::Path(folder.path().string()));
}

}  // namespace

TEST(RestartFile, content_hasFixedDecimalsAndABlankBehindEachNumber) {
  const TKL::TempFolder folder;
  fileIn(folder).write({3600.12345, {293150000.128, -3.5}, {0.0, 1.123456789}});
  EXPECT_EQ(folder.read("restart.txt"), "3600.123\n293150000.13 -3.50 \n0.00000000 1.12345679 \n");
}

TEST(RestartFile, largeNumbers_areWrittenInFull) {
  const TKL::TempFolder folder;
  fileIn(folder).write({1e15, {1e20}, {1e12}});
  EXPECT_EQ(folder.read("restart.txt"),
            "1000000000000000.000\n100000000000000000000.00 \n1000000000000.00000000 \n");
}

TEST(RestartFile, firstState_hasNoBackup) {
  const TKL::TempFolder folder;
  fileIn(folder).write({1.0, {1.0}, {0.0}});
  EXPECT_TRUE(std::filesystem::exists(folder.file("restart.txt")));
  EXPECT_FALSE(std::filesystem::exists(folder.file("restart.txt.backup")));
}

TEST(RestartFile, lastStateButOne_isTheBackup) {
  const TKL::TempFolder folder;
  RestartFile file = fileIn(folder);
  for (const double t : {1.0, 2.0, 3.0}) file.write({t, {t}, {0.0}});
  EXPECT_EQ(folder.read("restart.txt"), "3.000\n3.00 \n0.00000000 \n");
  EXPECT_EQ(folder.read("restart.txt.backup"), "2.000\n2.00 \n0.00000000 \n");
}

TEST(RestartFile, writing_leavesNoUnfinishedFile) {
  const TKL::TempFolder folder;
  RestartFile file = fileIn(folder);
  for (const double t : {1.0, 2.0}) file.write({t, {t}, {0.0}});
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(RestartFile, failedWriting_keepsTheLastState) {
  const TKL::TempFolder folder;
  RestartFile file = fileIn(folder);
  file.write({1.0, {1.0}, {0.0}});
  std::filesystem::create_directory(folder.file("restart.txt.new"));
  EXPECT_THROW(file.write({2.0, {2.0}, {0.0}}), TKL::Exception);
  EXPECT_EQ(folder.read("restart.txt"), "1.000\n1.00 \n0.00000000 \n");
}

TEST(RestartFile, missingFolder_isNamedWithTheReason) {
  const TKL::TempFolder folder;
  const std::string missing = folder.file("nowhere");
  const TKL::Thrown thrown = TKL::thrownBy([&] {
    RestartFile(TKL::Path(missing)).write({1.0, {1.0}, {0.0}});
  });
  EXPECT_EQ(thrown.text,
            "Cannot create restart file '" + missing + "/restart.txt.new': No such file or directory");
  EXPECT_EQ(thrown.location, "[VelmoraCvodeSolver::writeRestartFile]");
}

TEST(RestartFile, reading_givesBackTheRoundedState) {
  const TKL::TempFolder folder;
  fileIn(folder).write({7.0004, {1.239, 2.0}, {0.5, 1e-9}});
  const RestartState state = fileIn(folder).read(2);
  EXPECT_EQ(state.t, 7.0);
  EXPECT_EQ(state.U, (std::vector<double>{1.24, 2.0}));
  EXPECT_EQ(state.mw, (std::vector<double>{0.5, 0.0}));
}

TEST(RestartFile, noFile_isMissing) {
  const TKL::TempFolder folder;
  EXPECT_EQ(TKL::thrownBy([&] { fileIn(folder).read(2); }), refusal("Restart file missing!"));
}

TEST(RestartFile, emptyFile_isMissing) {
  const TKL::TempFolder folder;
  EXPECT_EQ(readTwoElements(folder, ""), refusal("Restart file missing!"));
}

TEST(RestartFile, badTime_isRefused) {
  const TKL::TempFolder folder;
  const TKL::Thrown expected = refusal("Error reading time point from restart file!");
  for (const char* first : {"", "later", "nan", "inf"})
    EXPECT_EQ(readTwoElements(folder, std::string(first) + "\n1 2 \n0 0 \n"), expected) << first;
}

TEST(RestartFile, badStates_areRefused) {
  const TKL::TempFolder folder;
  const TKL::Thrown expected = refusal("Error reading restart file!");
  for (const char* states :
       {"", "1 2 \n", "1 \n0 0 \n", "1 2 \n0 \n", "1 x \n0 0 \n", "1 2 \n0 nan \n", "1 1e999 \n0 0 \n"})
    EXPECT_EQ(readTwoElements(folder, std::string("5\n") + states), expected) << states;
}

TEST(RestartFile, goodFile_isAccepted) {
  const TKL::TempFolder folder;
  EXPECT_EQ(readTwoElements(folder, "5\n1 2\n0 0"), (TKL::Thrown{"nothing thrown", ""}));
}

}  // namespace VELMORA_SOLVER

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
  EXPECT_EQ(readTwoElements(folder, "5\n1 2\n0 0\n"), (TKL::Thrown{"nothing thrown", ""}));
  EXPECT_EQ(readTwoElements(folder, "5\n1 2\n0 0 "), (TKL::Thrown{"nothing thrown", ""}));
}

TEST(RestartFile, fileThatIsCutAnywhere_isRefusedOrLosesNothing) {
  // a power cut can leave any part of a file that had not reached the disk
  const TKL::TempFolder folder;
  fileIn(folder).write({3600.5, {123456.78, 234567.89}, {1.5, 2.12345678}, {}, {}, {40, 12}, {1, 0}});
  const std::string whole = folder.read("restart.txt");
  const RestartState state = fileIn(folder).read(2);
  ASSERT_EQ(state.freezeThawCycles, (std::vector<std::uint32_t>{40, 12}));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    folder.write("restart.txt", whole.substr(0, size));
    try {
      const RestartState cut = fileIn(folder).read(2);
      EXPECT_EQ(cut.t, state.t) << size;
      EXPECT_EQ(cut.U, state.U) << size;
      EXPECT_EQ(cut.mw, state.mw) << size;
      // lost counts are empty, and the run tells that it counts anew
      EXPECT_TRUE(cut.freezeThawCycles.empty() || cut.freezeThawCycles == state.freezeThawCycles) << size;
      EXPECT_TRUE(cut.frozen.empty() || cut.frozen == state.frozen) << size;
    } catch (const TKL::Exception& refused) {
      EXPECT_NE(std::string(refused.what()).find("estart file"), std::string::npos) << size;
    }
  }
}

TEST(RestartFile, fileOfZeroBytes_isRefused) {
  // what some file systems show after a power cut
  const TKL::TempFolder folder;
  EXPECT_EQ(readTwoElements(folder, std::string(40, '\0')),
            refusal("Error reading time point from restart file!"));
}

}  // namespace VELMORA_SOLVER

#include "solver/TwoGenerationFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/TempFolder.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {
namespace {

const char* const WRITE_STATE_ID = "[VelmoraCvodeSolver::writeRestartFile]";

TEST(TwoGenerationFile, keepsTheLastTextAndTheOneBefore) {
  const TKL::TempFolder folder;
  TwoGenerationFile file(folder.path().string(), "state");
  for (const char* text : {"one", "two", "three"}) file.write(text);
  EXPECT_EQ(folder.read("state"), "three");
  EXPECT_EQ(folder.read("state.backup"), "two");
  EXPECT_FALSE(std::filesystem::exists(folder.file("state.new")));
}

TEST(TwoGenerationFile, shorterText_leavesNothingOfALongerOne) {
  const TKL::TempFolder folder;
  TwoGenerationFile file(folder.path().string(), "state");
  for (const char* const text : {"a long text", "another text", "short"}) file.write(text);
  EXPECT_EQ(folder.read("state"), "short");
  EXPECT_EQ(folder.read("state.backup"), "another text");
}

TEST(TwoGenerationFile, textLeftByAKilledRun_isWrittenOver) {
  const TKL::TempFolder folder;
  folder.write("state.new", "half of some long text");
  TwoGenerationFile file(folder.path().string(), "state");
  file.write("one");
  EXPECT_EQ(folder.read("state"), "one");
  EXPECT_FALSE(std::filesystem::exists(folder.file("state.new")));
}

// the old backup is written over, the last text is not
TEST(TwoGenerationFile, fullDisk_isNamedAndLeavesTheLastText) {
  const TKL::TempFolder folder;
  TwoGenerationFile file(folder.path().string(), "state");
  file.write("one");
  file.write("two");
  std::filesystem::remove(folder.file("state.backup"));
  std::filesystem::create_symlink("/dev/full", folder.file("state.backup"));
  EXPECT_EQ(
      TKL::thrownBy([&] { file.write("three"); }),
      (TKL::Thrown{"Cannot write restart file '" + folder.file("state.new") + "': No space left on device",
                   WRITE_STATE_ID}));
  EXPECT_EQ(folder.read("state"), "two");
}

TEST(TwoGenerationFile, nameTakenByAFolder_isReported) {
  const TKL::TempFolder folder;
  TwoGenerationFile file(folder.path().string(), "state");
  file.write("one");
  std::filesystem::create_directories(folder.file("state.backup/inside"));
  EXPECT_EQ(TKL::thrownBy([&] { file.write("two"); }).text,
            "Cannot create restart file '" + folder.file("state.new") + "': Is a directory");
  EXPECT_EQ(folder.read("state"), "one");
}

TEST(TwoGenerationFile, lostFolder_isReported) {
  const TKL::TempFolder folder;
  const std::filesystem::path inner = folder.path() / "inner";
  std::filesystem::create_directories(inner);
  TwoGenerationFile file(inner.string(), "state");
  file.write("one");
  std::filesystem::remove_all(inner);
  EXPECT_EQ(TKL::thrownBy([&] { file.write("two"); }).text,
            "Cannot create restart file '" + (inner / "state.new").string() + "': No such file or directory");
  EXPECT_EQ(TKL::thrownBy([&] { file.flush(); }).text,
            "Cannot flush restart file '" + (inner / "state").string() + "': No such file or directory");
}

TEST(TwoGenerationFile, flush_needsSomethingWritten) {
  const TKL::TempFolder folder;
  TwoGenerationFile file((folder.path() / "nowhere").string(), "state");
  EXPECT_NO_THROW(file.flush());
}

TEST(TwoGenerationFile, backup_canBeTakenBack) {
  const TKL::TempFolder folder;
  TwoGenerationFile file(folder.path().string(), "state");
  file.write("one");
  file.write("two");
  file.takeBackup();
  EXPECT_EQ(folder.read("state"), "one");
  EXPECT_FALSE(std::filesystem::exists(folder.file("state.backup")));
}

}  // namespace
}  // namespace VELMORA_SOLVER

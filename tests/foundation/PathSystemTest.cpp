#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "foundation/Path.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

namespace fs = std::filesystem;

/// Gives each test an empty directory, and takes the current directory back afterwards.
class PathSystemTest : public testing::Test {
 protected:
  void SetUp() override {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    directory = fs::canonical(testing::TempDir()).string() + "/PathSystemTest_" + name + "_" +
                std::to_string(getpid());
    fs::remove_all(directory);
    fs::create_directory(directory);
  }
  void TearDown() override {
    fs::current_path(before_);
    fs::remove_all(directory);
  }
  Path in(const std::string& name) const { return Path(directory) / name; }
  static void touch(const Path& path) { std::ofstream(path.str()) << "x"; }

  std::string directory;

 private:
  fs::path before_ = fs::current_path();
};

TEST_F(PathSystemTest, exists_forFilesAndDirectories) {
  touch(in("file"));
  EXPECT_TRUE(in("file").exists());
  EXPECT_TRUE(Path(directory).exists());
  EXPECT_FALSE(in("other").exists());
  EXPECT_FALSE(Path().exists());
}

TEST_F(PathSystemTest, isDirectory_tellsFilesApart) {
  touch(in("file"));
  EXPECT_TRUE(Path(directory).isDirectory());
  EXPECT_FALSE(in("file").isDirectory());
}

TEST_F(PathSystemTest, nameTooLong_doesNotExist) {
  EXPECT_FALSE(Path(std::string(100000, 'a')).exists());
}

TEST_F(PathSystemTest, setCurrent_changesTheDirectory) {
  Path::setCurrent(directory);
  EXPECT_EQ(Path::current().str(), directory);
}

TEST_F(PathSystemTest, setCurrent_emptyPathIsInvalid) {
  EXPECT_EQ(thrownBy([] { Path::setCurrent(Path()); }), (Thrown{"Invalid path", "[setCurrent()]"}));
}

TEST_F(PathSystemTest, setCurrent_missingPathIsNotFound) {
  EXPECT_EQ(thrownBy([&] { Path::setCurrent(in("no")); }), (Thrown{"Path not found", "[setCurrent()]"}));
}

TEST_F(PathSystemTest, setCurrent_otherFailureIsUnknown) {
  // A link to itself can be followed without end.
  ASSERT_EQ(symlink("loop", in("loop").str().c_str()), 0);
  EXPECT_EQ(thrownBy([&] { Path::setCurrent(in("loop")); }), (Thrown{"Unknown error", "[setCurrent()]"}));
}

TEST_F(PathSystemTest, current_removedDirectoryFails) {
  fs::create_directory(directory + "/gone");
  Path::setCurrent(in("gone"));
  fs::remove(directory + "/gone");
  EXPECT_EQ(thrownBy([] { Path::current(); }), (Thrown{"Couldn't deduce user directory.", "[current()]"}));
}

TEST_F(PathSystemTest, current_deepDirectoryFails) {
  // 25 levels of 200 characters are more than the 4096 that a path may have.
  Path::setCurrent(directory);
  const std::string level(200, 'd');
  for (int i = 0; i < 25; ++i) {
    ASSERT_EQ(mkdir(level.c_str(), 0777), 0);
    ASSERT_EQ(chdir(level.c_str()), 0);
  }
  EXPECT_EQ(thrownBy([] { Path::current(); }), (Thrown{"Path longer than 4096 characters", "[current()]"}));
}

TEST_F(PathSystemTest, current_withoutMemoryFails) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP() << "the sanitizer has its own operators";
  const MemoryLimit limit(4096);
  EXPECT_EQ(thrownBy([] { Path::current(); }),
            (Thrown{"Out of memory! Can not reserve 4096 bytes", "[current()]"}));
}

TEST_F(PathSystemTest, absolutePath_completesWithTheCurrentDirectory) {
  Path::setCurrent(directory);
  EXPECT_EQ(Path("a/b").absolutePath().str(), directory + "/a/b");
  EXPECT_EQ(Path(".").absolutePath().str(), directory);
  EXPECT_EQ(Path("./a/../b").absolutePath().str(), directory + "/b");
}

TEST_F(PathSystemTest, absolutePath_resolvesDots) {
  EXPECT_EQ(Path("/a/./b/../c").absolutePath().str(), "/a/c");
  EXPECT_EQ(Path("/a/b/").absolutePath().str(), "/a/b");
  EXPECT_EQ(Path("/..").absolutePath().str(), "/");
  EXPECT_EQ(Path("C:\\x\\..\\y").absolutePath().str(), "C:/y");
}

TEST_F(PathSystemTest, makePath_createsAllLevels) {
  Path::makePath(in("a/b/c"));
  EXPECT_TRUE(in("a/b/c").isDirectory());
}

TEST_F(PathSystemTest, makePath_existingPathIsFine) {
  Path::makePath(in("a/b"));
  Path::makePath(in("a/b/"));
  EXPECT_TRUE(in("a/b").isDirectory());
}

TEST_F(PathSystemTest, makePath_relativePath) {
  Path::setCurrent(directory);
  Path::makePath("x/y");
  EXPECT_TRUE(in("x/y").isDirectory());
}

TEST_F(PathSystemTest, makePath_fileInTheWayFails) {
  touch(in("file"));
  EXPECT_EQ(thrownBy([&] { Path::makePath(in("file/a")); }),
            (Thrown{"File exists\nError in CreateDirectoryW().", "[TKL_Path::makePath]"}));
}

TEST_F(PathSystemTest, remove_fileAndTree) {
  Path::makePath(in("a/b"));
  touch(in("a/b/file"));
  touch(in("file"));
  Path::remove(in("a"));
  Path::remove(in("file"));
  EXPECT_FALSE(in("a").exists());
  EXPECT_FALSE(in("file").exists());
}

TEST_F(PathSystemTest, remove_linkLeavesItsTarget) {
  touch(in("file"));
  ASSERT_EQ(symlink("file", in("link").str().c_str()), 0);
  Path::remove(in("link"));
  EXPECT_TRUE(in("file").exists());
  EXPECT_FALSE(in("link").exists());
}

TEST_F(PathSystemTest, remove_missingFileFails) {
  const Path path = in("no");
  EXPECT_EQ(thrownBy([&] { Path::remove(path); }),
            (Thrown{"Cannot remove '" + path.str() + "'.\n'File doesn't exist' !", "[Path::remove]"}));
  EXPECT_EQ(thrownBy([] { Path::remove(Path()); }),
            (Thrown{"Cannot remove ''.\n'File doesn't exist' !", "[Path::remove]"}));
}

TEST_F(PathSystemTest, remove_refusedBySystemFails) {
  if (!Path("/proc/version").exists()) {
    GTEST_SKIP() << "no file here that cannot be removed";
  }
  const Thrown thrown = thrownBy([] { Path::remove("/proc/version"); });
  EXPECT_TRUE(thrown.text.starts_with("Error while removing '/proc/version'.\n'"));
  EXPECT_TRUE(thrown.text.ends_with("' !"));
  EXPECT_EQ(thrown.location, "[Path::remove]");
}

TEST_F(PathSystemTest, systemErrorText_knownAndUnknownNumber) {
  EXPECT_EQ(systemErrorText(ENOENT), "No such file or directory");
  EXPECT_EQ(systemErrorText(99999), "Cannot retrieve error message with id 99999");
}

}  // namespace
}  // namespace TKL

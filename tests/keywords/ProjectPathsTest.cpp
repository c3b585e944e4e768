#include "keywords/ProjectPaths.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "support/Thrown.h"

namespace VELMORA {
namespace {

/// A project directory and another one that is current while the test runs.
class ProjectPathsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    root_ = std::filesystem::path(::testing::TempDir()) /
            ("project_paths_" + std::to_string(::getpid()) + info->name());
    std::filesystem::create_directories(root_ / "project");
    std::filesystem::create_directories(root_ / "current");
    previous_ = std::filesystem::current_path();
    std::filesystem::current_path(root_ / "current");
    placeholders["PROJECT_DIR"] = TKL::Path((root_ / "project").string());
    placeholders["CLIMATE_DIR"] = TKL::Path("/data/climate");
  }
  void TearDown() override {
    std::filesystem::current_path(previous_);
    std::filesystem::remove_all(root_);
  }
  static void touch(const std::filesystem::path& file) { std::ofstream(file) << "x"; }
  TKL::Path inProject(const std::string& name) const {
    return TKL::Path((root_ / "project" / name).string());
  }

  PlaceholderMap placeholders;
  std::filesystem::path root_;
  std::filesystem::path previous_;
};

TEST_F(ProjectPathsTest, relativePath_beginsAtTheProject) {
  EXPECT_EQ(resolvedPath("climate/t.ccd", placeholders), inProject("climate/t.ccd"));
}

TEST_F(ProjectPathsTest, projectDirPlaceholder_meansTheSame) {
  EXPECT_EQ(resolvedPath("$(PROJECT_DIR)/climate/t.ccd", placeholders), inProject("climate/t.ccd"));
}

TEST_F(ProjectPathsTest, absolutePath_stays) {
  EXPECT_EQ(resolvedPath("/x/t.ccd", placeholders), TKL::Path("/x/t.ccd"));
}

TEST_F(ProjectPathsTest, placeholder_isReplaced) {
  EXPECT_EQ(resolvedPath("$(CLIMATE_DIR)/t.ccd", placeholders), TKL::Path("/data/climate/t.ccd"));
}

TEST_F(ProjectPathsTest, placeholderWithRelativeDirectory_beginsAtTheProject) {
  placeholders["CLIMATE_DIR"] = TKL::Path("weather");
  EXPECT_EQ(resolvedPath("$(CLIMATE_DIR)/t.ccd", placeholders), inProject("weather/t.ccd"));
}

TEST_F(ProjectPathsTest, emptyPath_staysEmpty) {
  EXPECT_FALSE(resolvedPath("", placeholders).isValid());
  EXPECT_FALSE(resolvedInputPath("", placeholders).isValid());
}

TEST_F(ProjectPathsTest, withoutProjectDirectory_relativePathStays) {
  EXPECT_EQ(resolvedPath("t.ccd", {}), TKL::Path("t.ccd"));
}

TEST_F(ProjectPathsTest, unknownPlaceholder_throws) {
  EXPECT_EQ(TKL::thrownBy([&] { resolvedPath("$(NOWHERE)/t.ccd", {}); }).location,
            "[Project::replacePlaceHolders]");
}

TEST_F(ProjectPathsTest, inputFileBesideTheProject_goesFirst) {
  touch(root_ / "project" / "t.ccd");
  touch(root_ / "current" / "t.ccd");
  EXPECT_EQ(resolvedInputPath("t.ccd", placeholders), inProject("t.ccd"));
}

TEST_F(ProjectPathsTest, inputFileInCurrentDirectory_isFoundNext) {
  touch(root_ / "current" / "t.ccd");
  EXPECT_EQ(resolvedInputPath("t.ccd", placeholders), TKL::Path("t.ccd"));
}

TEST_F(ProjectPathsTest, missingInputFile_isNamedBesideTheProject) {
  EXPECT_EQ(resolvedInputPath("t.ccd", placeholders), inProject("t.ccd"));
}

TEST_F(ProjectPathsTest, outputPath_doesNotLookIntoTheCurrentDirectory) {
  touch(root_ / "current" / "t.ccd");
  EXPECT_EQ(resolvedPath("t.ccd", placeholders), inProject("t.ccd"));
}

}  // namespace
}  // namespace VELMORA

#include "project/PathPlaceholders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/MessageCapture.h"
#include "support/TempFolder.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using TKL::MessageCapture;
using TKL::Path;
using TKL::Thrown;
using TKL::thrownBy;

constexpr char FUNC_ID[] = "[PathPlaceholders::readFromString()]";

/// Sets HOME while it lives; a null pointer unsets it.
class HomeGuard {
 public:
  explicit HomeGuard(const char* home) {
    if (const char* previous = std::getenv("HOME")) previous_ = previous;
    home == nullptr ? unsetenv("HOME") : setenv("HOME", home, 1);
  }
  ~HomeGuard() { previous_.empty() ? unsetenv("HOME") : setenv("HOME", previous_.c_str(), 1); }
  HomeGuard(const HomeGuard&) = delete;
  HomeGuard& operator=(const HomeGuard&) = delete;

 private:
  std::string previous_;
};

PathPlaceholders readDirectories(const std::string& lines, const Path& install = "/opt/velmora",
                                 const Path& project = "/home/me/wall") {
  PathPlaceholders placeholders;
  placeholders.readFromString(SectionText(lines), install, project);
  return placeholders;
}

TEST(PathPlaceholders, names_endInDirExceptTheProjectFile) {
  const char* const names[] = {"MATERIALS_DIR", "USER_MATERIALS_DIR", "CLIMATE_DIR", "SALT_DIR",
                               "VOC_DIR",       "USER_CLIMATE_DIR",   "PROJECT_DIR", "INSTALL_DIR",
                               "PROJECT_FILE",  "EXAMPLES_DIR"};
  for (int i = 0; i < PathPlaceholders::NUM_D; ++i)
    EXPECT_STREQ(PathPlaceholders::placeholderName(static_cast<PathPlaceholders::data_directories_t>(i)),
                 names[i]);
}

TEST(PathPlaceholders, setPath_isReadBackAndInTheMap) {
  PathPlaceholders placeholders;
  placeholders.set(PathPlaceholders::D_CLIMATE, "/data");
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_CLIMATE), Path("/data"));
  EXPECT_EQ(placeholders.placeholderMap(), (PlaceholderMap{{"CLIMATE_DIR", "/data"}}));
}

TEST(PathPlaceholders, unsetPath_isInvalid) {
  EXPECT_FALSE(PathPlaceholders().get(PathPlaceholders::D_VOC).isValid());
}

TEST(PathPlaceholders, emptySection_givesInstallationAndProject) {
  const MessageCapture messages;
  const PathPlaceholders placeholders = readDirectories("");
  EXPECT_EQ(placeholders.installDir(), Path("/opt/velmora"));
  EXPECT_EQ(placeholders.projectDir(), Path("/home/me/wall"));
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_EXAMPLES), Path("/opt/velmora/examples"));
}

TEST(PathPlaceholders, emptySection_givesDefaultsWithMessages) {
  const MessageCapture messages;
  const HomeGuard home("/home/me");
  const PathPlaceholders placeholders = readDirectories("");
  const std::pair<PathPlaceholders::data_directories_t, std::pair<std::string, std::string>> defaults[] = {
      {PathPlaceholders::D_MATERIALS, {"MATERIALS", "/opt/velmora/DB_material_data"}},
      {PathPlaceholders::D_USER_MATERIALS, {"USER_MATERIALS", "/home/me/.config/TKL/material_data"}},
      {PathPlaceholders::D_CLIMATE, {"CLIMATE", "/opt/velmora/DB_climate_data"}},
      {PathPlaceholders::D_USER_CLIMATE, {"USER_CLIMATE", "/home/me/.config/TKL/climate_data"}},
      {PathPlaceholders::D_SALT, {"SALT", "/opt/velmora/DB_salt_data"}},
      {PathPlaceholders::D_VOC, {"VOC", "/opt/velmora/DB_VOC_data"}}};
  for (const auto& [index, words] : defaults) {
    EXPECT_EQ(placeholders.get(index), Path(words.second));
    EXPECT_TRUE(messages.has("Setting path placeholder " + words.first + " = " + words.second + "\n",
                             TKL::MSG_STANDARD, FUNC_ID, 2));
  }
  EXPECT_EQ(messages.messages.size(), 6U);
}

TEST(PathPlaceholders, givenDirectory_hasNoDefaultMessage) {
  const MessageCapture messages;
  const PathPlaceholders placeholders = readDirectories("MATERIALS = /x/y");
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_MATERIALS), Path("/x/y"));
  EXPECT_FALSE(messages.contains("Setting path placeholder MATERIALS"));
  EXPECT_TRUE(messages.contains("Setting path placeholder CLIMATE"));
}

TEST(PathPlaceholders, emptyInstallation_givesNoDefaults) {
  const MessageCapture messages;
  const PathPlaceholders placeholders = readDirectories("", Path());
  EXPECT_TRUE(messages.messages.empty());
  for (const auto index :
       {PathPlaceholders::D_MATERIALS, PathPlaceholders::D_USER_MATERIALS, PathPlaceholders::D_CLIMATE,
        PathPlaceholders::D_USER_CLIMATE, PathPlaceholders::D_SALT, PathPlaceholders::D_VOC})
    EXPECT_FALSE(placeholders.get(index).isValid());
}

TEST(PathPlaceholders, emptyInstallation_stillNamesTheExamples) {
  EXPECT_EQ(readDirectories("", Path()).get(PathPlaceholders::D_EXAMPLES), Path("examples"));
}

TEST(PathPlaceholders, withoutHome_userDirectoriesAreEmpty) {
  const MessageCapture messages;
  const HomeGuard home(nullptr);
  EXPECT_FALSE(PathPlaceholders::userDataDirectory().isValid());
  EXPECT_FALSE(readDirectories("").get(PathPlaceholders::D_USER_CLIMATE).isValid());
}

TEST(PathPlaceholders, userDataDirectory_liesBelowHome) {
  const HomeGuard home("/home/me");
  EXPECT_EQ(PathPlaceholders::userDataDirectory(), Path("/home/me/.config"));
}

TEST(PathPlaceholders, projectFile_hasNoDefault) {
  const MessageCapture messages;
  EXPECT_FALSE(readDirectories("").get(PathPlaceholders::D_PROJECT_FILE).isValid());
}

TEST(PathPlaceholders, commentsAndBlankLines_areSkipped) {
  const MessageCapture messages;
  EXPECT_EQ(readDirectories("; comment\n\n \t\r\n;\nVOC = /v").get(PathPlaceholders::D_VOC), Path("/v"));
}

TEST(PathPlaceholders, hashSign_isNoComment) {
  EXPECT_EQ(thrownBy([] { readDirectories("# comment"); }),
            (Thrown{"Unexpected data in this section: '# comment'!", FUNC_ID}));
}

TEST(PathPlaceholders, lineWithoutEqualSign_throws) {
  EXPECT_EQ(thrownBy([] { readDirectories("MATERIALS /x"); }),
            (Thrown{"Unexpected data in this section: 'MATERIALS /x'!", FUNC_ID}));
}

TEST(PathPlaceholders, unknownKeyword_warnsAndIsIgnored) {
  const MessageCapture messages;
  const PathPlaceholders placeholders = readDirectories("FOO = /x\nVOC = /v");
  EXPECT_TRUE(messages.has("Invalid keyword 'FOO' in this section!", TKL::MSG_WARNING, FUNC_ID, 3));
  EXPECT_EQ(placeholders.placeholderMap().count("FOO"), 0U);
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_VOC), Path("/v"));
}

TEST(PathPlaceholders, bracketsOfAKeyword_areStripped) {
  const MessageCapture messages;
  EXPECT_EQ(readDirectories("[VOC] = /v").get(PathPlaceholders::D_VOC), Path("/v"));
}

TEST(PathPlaceholders, section_mayOverrideProjectAndInstallation) {
  const MessageCapture messages;
  const PathPlaceholders placeholders = readDirectories("PROJECT = /p\nINSTALL = /i");
  EXPECT_EQ(placeholders.projectDir(), Path("/p"));
  EXPECT_EQ(placeholders.installDir(), Path("/i"));
}

TEST(PathPlaceholders, oldPlaceholder_atTheBeginning_isTheDirectory) {
  const MessageCapture messages;
  const PathPlaceholders placeholders = readDirectories(
      "CLIMATE = $(INSTALL_DIR)/weather\nVOC = $(PROJECT_DIR)/voc\nSALT = $(EXAMPLES_DIR)/salt\n"
      "USER_CLIMATE = $(PROJECT_DIR)");
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_CLIMATE), Path("/opt/velmora/weather"));
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_VOC), Path("/home/me/wall/voc"));
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_SALT), Path("/opt/velmora/examples/salt"));
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_USER_CLIMATE), Path("/home/me/wall"));
}

TEST(PathPlaceholders, oldPlaceholder_behindARelativePart_goesInFrontOfIt) {
  const MessageCapture messages;
  EXPECT_EQ(readDirectories("CLIMATE = data/$(INSTALL_DIR)/weather").get(PathPlaceholders::D_CLIMATE),
            Path("/opt/velmora/data/weather"));
}

TEST(PathPlaceholders, oldPlaceholder_behindAnAbsolutePart_replacesIt) {
  const MessageCapture messages;
  EXPECT_EQ(readDirectories("CLIMATE = /data/$(INSTALL_DIR)/weather").get(PathPlaceholders::D_CLIMATE),
            Path("/opt/velmora/weather"));
}

TEST(PathPlaceholders, oldPlaceholder_withoutInstallation_staysToFailLater) {
  const PathPlaceholders placeholders = readDirectories("CLIMATE = $(INSTALL_DIR)/weather", Path());
  EXPECT_EQ(placeholders.get(PathPlaceholders::D_CLIMATE), Path("$(INSTALL_DIR)/weather"));
}

TEST(PathPlaceholders, installation_emptyExecutable_isNone) {
  EXPECT_FALSE(PathPlaceholders::installationDirectory("").isValid());
}

TEST(PathPlaceholders, installation_isTheDirectoryOfTheProgram) {
  EXPECT_EQ(PathPlaceholders::installationDirectory("/opt/velmora/solver"), Path("/opt/velmora"));
}

TEST(PathPlaceholders, installation_relativeProgram_isMadeAbsolute) {
  const Path current = Path::current();
  EXPECT_EQ(PathPlaceholders::installationDirectory("bin/solver"), current / "bin");
}

TEST(PathPlaceholders, installation_bareName_isWhereTheProgramReallyRuns) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(PathPlaceholders::installationDirectory("no_such_solver_here"),
            Path(program.parent_path().string()));
}

TEST(PathPlaceholders, installation_desktopProgram_besideItsDatabase) {
  const TKL::TempFolder folder;
  std::filesystem::create_directories(folder.path() / "bin" / "DB_climate_data");
  EXPECT_EQ(PathPlaceholders::installationDirectory(folder.file("bin/Velmora.exe")),
            Path(folder.file("bin")));
}

TEST(PathPlaceholders, installation_desktopProgram_oneLevelBelowItsDatabase) {
  const TKL::TempFolder folder;
  std::filesystem::create_directories(folder.path() / "DB_climate_data");
  EXPECT_EQ(PathPlaceholders::installationDirectory(folder.file("bin/Velmora.exe")),
            Path(folder.path().string()));
}

TEST(PathPlaceholders, installation_desktopProgramWithoutDatabase_isWhereTheProgramReallyRuns) {
  const TKL::TempFolder folder;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(PathPlaceholders::installationDirectory(folder.file("a/b/Velmora.exe")),
            Path(program.parent_path().string()));
}

TEST(PathPlaceholders, installation_otherProgram_doesNotClimb) {
  const TKL::TempFolder folder;
  std::filesystem::create_directories(folder.path() / "DB_climate_data");
  EXPECT_EQ(PathPlaceholders::installationDirectory(folder.file("bin/solver")), Path(folder.file("bin")));
}

}  // namespace
}  // namespace VELMORA

#include "project/VelProject.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <random>
#include <stdexcept>

#include "foundation/Exception.h"
#include "support/MessageCapture.h"
#include "support/TempFolder.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using TKL::MessageCapture;
using TKL::Thrown;
using TKL::thrownBy;

constexpr char READ_ID[] = "[VelProject::read]";
constexpr char INFO_ID[] = "[VelProject::readProjectInfo]";

/// Reads texts as project files; all messages are kept.
class VelProjectTest : public ::testing::Test {
 protected:
  std::int32_t read(const std::string& text) { return readFile(folder.write("wall.vel", text)); }
  std::int32_t readFile(const TKL::Path& file) { return project.read(file, errorMessage); }
  std::string fileName() const { return folder.file("wall.vel"); }

  TKL::TempFolder folder;
  MessageCapture messages;
  VelProject project;
  std::string errorMessage;
};

TEST_F(VelProjectTest, emptyFile_isReadWithoutComplaint) {
  EXPECT_EQ(read(""), 0);
  EXPECT_EQ(errorMessage, "");
}

TEST_F(VelProjectTest, onlyBlankLines_areReadWithoutComplaint) {
  EXPECT_EQ(read("\n \t\r\n\r\n\n"), 0);
}

TEST_F(VelProjectTest, absentSections_leaveTheDefaults) {
  EXPECT_EQ(read("[PROJECT_INFO]\n"), 0);
  EXPECT_DOUBLE_EQ(project.m_init.duration.value, 10 * 86400.0);
  EXPECT_TRUE(project.m_assignments.selections.empty());
}

TEST_F(VelProjectTest, headers_withAndWithoutBracketsAreAlike) {
  for (const char* header : {"[INIT]", "INIT", "[INIT", "INIT]", "INIT=", "[INIT=]", "  \t[INIT]\r"}) {
    VelProject other;
    const std::string file =
        folder.write("wall.vel", std::string(header) + "\n[GENERAL]\nSTART_YEAR = 1999\n");
    EXPECT_EQ(other.read(file, errorMessage), 0) << header << errorMessage;
    EXPECT_EQ(other.m_init.startYear, 1999U) << header;
  }
}

TEST_F(VelProjectTest, headerWithBlankBeforeEqualSign_isNone) {
  EXPECT_EQ(read("INIT =\n"), 1);
  EXPECT_EQ(errorMessage, "Error reading project file '" + fileName() + "'!\nExpected keyword, got 'INIT '!");
}

TEST_F(VelProjectTest, lowerCaseHeader_isDataBeforeTheFirstSection) {
  EXPECT_EQ(read("\n[init]\n"), 1);
  EXPECT_TRUE(messages.has("Expected keyword, got 'init'!", TKL::MSG_ERROR, READ_ID, 1));
}

TEST_F(VelProjectTest, lowerCaseHeader_insideASection_goesToItsReader) {
  EXPECT_EQ(read("[INIT]\n[init]\n"), 1);
  EXPECT_TRUE(messages.has("Expected subsection header, got: 'init'!", TKL::MSG_ERROR, "[VelInit::read]", 1));
}

TEST_F(VelProjectTest, commentSign_isData) {
  EXPECT_EQ(read("# my wall\n[INIT]\n"), 1);
  EXPECT_TRUE(messages.has("Expected keyword, got '# my wall'!", TKL::MSG_ERROR, READ_ID, 1));
}

TEST_F(VelProjectTest, carriageReturnsAndIndentation_doNotMatter) {
  EXPECT_EQ(read("[INIT]\r\n\t[GENERAL]\r\n\t\tSTART_YEAR = 1999 \t\r\n"), 0);
  EXPECT_EQ(project.m_init.startYear, 1999U);
}

TEST_F(VelProjectTest, sectionTwice_linesAddUpInFileOrder) {
  EXPECT_EQ(
      read("[INIT]\n[GENERAL]\nSTART_YEAR = 1\nSTART_TIME = 1\n[PROJECT_INFO]\n[INIT]\nSTART_YEAR = 2\n"), 0);
  EXPECT_EQ(project.m_init.startYear, 2U);
  EXPECT_EQ(project.m_init.startTime, 1U);
}

TEST_F(VelProjectTest, blankLines_vanishOutsideOfProjectInfo) {
  EXPECT_EQ(read("[INIT]\n\n[GENERAL]\n\nSTART_YEAR = 1\n \nSTART_TIME = 1\n"), 0) << errorMessage;
}

TEST_F(VelProjectTest, sections_areProcessedInTheirOwnOrder) {
  const std::string wrong = "[ASSIGNMENTS]\na\n[OUTPUTS]\no\n[DISCRETISATION]\nd\n[CONDITIONS]\nc\n";
  const std::string init = "[INIT]\ni\n";
  const std::string info = "[PROJECT_INFO]\np\n";
  EXPECT_EQ(read(wrong + init + info + "[DIRECTORIES]\nx\n"), 1);
  EXPECT_TRUE(errorMessage.ends_with("Unexpected data in this section: 'x'!")) << errorMessage;
  EXPECT_EQ(read(wrong + init + info), 1);
  EXPECT_TRUE(errorMessage.ends_with("Unexpected data in this section: 'p'!")) << errorMessage;
  EXPECT_EQ(read(wrong + init), 1);
  EXPECT_TRUE(errorMessage.ends_with("Expected subsection header, got: 'i'!")) << errorMessage;
  EXPECT_EQ(read(wrong), 1);
  EXPECT_TRUE(errorMessage.ends_with("got 'c'!")) << errorMessage;
  EXPECT_EQ(read("[ASSIGNMENTS]\na\n[OUTPUTS]\no\n[DISCRETISATION]\nd\n"), 1);
  EXPECT_TRUE(errorMessage.ends_with("got 'd'!")) << errorMessage;
  EXPECT_EQ(read("[ASSIGNMENTS]\na\n[OUTPUTS]\no\n"), 1);
  EXPECT_TRUE(errorMessage.ends_with("got 'o'!")) << errorMessage;
  EXPECT_EQ(read("[ASSIGNMENTS]\na\n"), 1);
  EXPECT_TRUE(errorMessage.ends_with("got 'a'!")) << errorMessage;
}

TEST_F(VelProjectTest, begin_isToldUnindentedAndTheRestIndented) {
  read("");
  const auto& first = messages.messages.front();
  EXPECT_EQ(first.text, "Begin reading project '" + fileName() + "'\n");
  EXPECT_EQ(first.level, 1);
  EXPECT_EQ(first.functionId, READ_ID);
  EXPECT_EQ(first.indentation, 0);
  EXPECT_EQ(messages.messages.at(1).indentation, 1);
}

TEST_F(VelProjectTest, indentation_isLoweredOnEveryWayOut) {
  read("");
  EXPECT_EQ(messages.indentation, 0);
  read("junk");
  EXPECT_EQ(messages.indentation, 0);
  readFile("");
  EXPECT_EQ(messages.indentation, 0);
}

TEST_F(VelProjectTest, directories_areTold) {
  project.m_executable = "/opt/velmora/solver";
  read("");
  const auto told = [&](const std::string& text) {
    return messages.has(text, TKL::MSG_STANDARD, READ_ID, 2);
  };
  EXPECT_TRUE(told("Installation directory = '/opt/velmora'\n"));
  EXPECT_TRUE(told("Project directory      = '" + folder.path().string() + "'\n"));
  EXPECT_TRUE(told("Full project filename  = '" + fileName() + "'\n"));
}

TEST_F(VelProjectTest, directories_arePlaceholders) {
  project.m_executable = "/opt/velmora/solver";
  read("");
  EXPECT_EQ(project.m_placeholders.installDir(), TKL::Path("/opt/velmora"));
  EXPECT_EQ(project.m_placeholders.projectDir(), TKL::Path(folder.path().string()));
  EXPECT_EQ(project.m_placeholders.get(PathPlaceholders::D_CLIMATE),
            TKL::Path("/opt/velmora/DB_climate_data"));
}

TEST_F(VelProjectTest, projectFile_isMadeAbsolute) {
  readFile("some/../wall.vel");
  EXPECT_EQ(project.m_projectFile, TKL::Path::current() / "wall.vel");
}

TEST_F(VelProjectTest, projectFile_mayBeginWithThePlaceholderOfTheInstallation) {
  project.m_executable = folder.file("solver");
  folder.write("wall.vel", "[INIT]\n[GENERAL]\nSTART_YEAR = 3\n");
  EXPECT_EQ(readFile("$(INSTALL_DIR)/wall.vel"), 0);
  EXPECT_EQ(project.m_init.startYear, 3U);
}

TEST_F(VelProjectTest, projectFile_withUnknownPlaceholder_fails) {
  EXPECT_EQ(readFile("$(NOWHERE)/wall.vel"), 1);
  EXPECT_TRUE(errorMessage.starts_with("Error reading project file '$(NOWHERE)/wall.vel'!\n"))
      << errorMessage;
}

TEST_F(VelProjectTest, emptyPath_isStatusTwo) {
  EXPECT_EQ(readFile(""), 2);
  EXPECT_EQ(errorMessage, "Error reading project file ''! [VelProject::read]");
}

TEST_F(VelProjectTest, missingFile_isAWarningAndReadsLikeAnEmptyOne) {
  EXPECT_EQ(readFile(folder.file("missing.vel")), 0);
  EXPECT_TRUE(messages.has("Cannot open project: '" + folder.file("missing.vel") + "'\n", TKL::MSG_WARNING,
                           READ_ID, 2));
}

TEST_F(VelProjectTest, fileThatTheDiskDoesNotGiveBack_isRefusedWithTheReason) {
  // the memory of this process, which has nothing at its first address
  EXPECT_EQ(readFile("/proc/self/mem"), 1);
  EXPECT_TRUE(messages.contains("Cannot read project file '/proc/self/mem': Input/output error"));
}

TEST_F(VelProjectTest, directoryAsFile_isAWarning) {
  EXPECT_EQ(readFile(folder.path().string()), 0);
  EXPECT_TRUE(messages.contains("Cannot open project: '"));
}

TEST_F(VelProjectTest, failure_composesPathAndOutermostText) {
  EXPECT_EQ(read("[INIT]\n[GENERAL]\nMAX\n"), 1);
  EXPECT_EQ(errorMessage, "Error reading project file '" + fileName() + "'!\nExpected keyword, got 'MAX'!");
}

TEST_F(VelProjectTest, failure_logsTheWholeChain) {
  EXPECT_EQ(read("[INIT]\n[GENERAL]\nDURATION = 3 moons\n"), 1);
  EXPECT_TRUE(messages.has("Invalid parameter value '3 moons' for keyword 'DURATION'!", TKL::MSG_ERROR,
                           "[VelInit::readGeneralParameters]", 1));
  EXPECT_TRUE(messages.contains("Unit 'moons' not found."));
}

TEST_F(VelProjectTest, failure_namesFileLineAndText) {
  EXPECT_EQ(read("[INIT]\n\n[GENERAL]\n\tDURATION = 3 moons  \n"), 1);
  const auto& last = messages.messages.back();
  EXPECT_EQ(last.text, "The error is in line 4 of the file '" + fileName() + "': DURATION = 3 moons");
  EXPECT_EQ(last.type, TKL::MSG_ERROR);
  EXPECT_EQ(last.level, -1);
}

TEST_F(VelProjectTest, failureBeforeTheFirstSection_namesItsLine) {
  EXPECT_EQ(read("\n[wall]\n"), 1);
  EXPECT_EQ(messages.messages.back().text, "The error is in line 2 of the file '" + fileName() + "': [wall]");
}

/// Fails like a library at the message that names the installation.
class FailingHandler : public MessageCapture {
 public:
  void msg(const std::string& text, int type, const char* functionId, int verbosityLevel) override {
    MessageCapture::msg(text, type, functionId, verbosityLevel);
    if (text.starts_with("Installation directory")) throw std::runtime_error("no more memory");
  }
};

TEST_F(VelProjectTest, libraryFailure_isLoggedAndComposedLikeAnyOther) {
  const FailingHandler handler;
  EXPECT_EQ(read("[INIT]\n"), 1);
  EXPECT_TRUE(handler.has("no more memory", TKL::MSG_ERROR, READ_ID, -1));
  EXPECT_EQ(errorMessage, "Error reading project file '" + fileName() + "'!\nno more memory");
  EXPECT_EQ(handler.indentation, 0);
}

TEST_F(VelProjectTest, assignmentsOfMaterials_takeTheNamesOfTheSuccessors) {
  folder.write("Zinc_280.m6",
               "V6MARLZ! 006.000\n[IDENTIFICATION]\nNAME = en:Zinc sheet\n"
               "[STORAGE_BASE_PARAMETERS]\nRHO = 7200 kg/m3\nCE = 380 J/kgK\n"
               "[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 110 W/mK\n");
  std::string assignments = "[ASSIGNMENTS]\n";
  for (const char* const selection : {"MATERIAL\nNAME = Zinc", "MATERIAL\nNAME = Zinc.mat",
                                      "MATERIAL\nNAME = zinc", "INITIALCOND\nNAME = Zinc"})
    assignments += std::string("[SELECTION]\nRANGE = 0 0 0 0\nTYPE = ") + selection + "\n";
  EXPECT_EQ(read(assignments + "[MATERIALS]\n[MATERIAL]\nFILE = Zinc.mat\n[DIRECTORIES]\nMATERIALS = " +
                 folder.path().string() + "\n"),
            0)
      << errorMessage;
  std::vector<std::string> names;
  for (const VelSelection& selection : project.m_assignments.selections) names.push_back(selection.name);
  EXPECT_EQ(names, (std::vector<std::string>{"Zinc sheet", "Zinc sheet", "zinc", "Zinc"}));
}

TEST_F(VelProjectTest, valueWithEqualSign_isKept) {
  EXPECT_EQ(read("[INIT]\n[GENERAL]\nVOC_IDS = a=b\n"), 0);
  EXPECT_EQ(project.m_init.vocIds, "a=b");
}

TEST_F(VelProjectTest, unknownKeywords_closeWithOneWarning) {
  EXPECT_EQ(read("[DISCRETISATION]\nX_STEP = 1 m\n[INIT]\n[GENERAL]\nSTART_YAER = 1\n[DIRECTORIES]\n"), 0);
  EXPECT_TRUE(
      messages.has("2 unknown or deprecated keyword(s) in the project file. The first one is "
                   "'START_YAER' in line 5, section INIT. Verbosity -v3 lists them all.",
                   TKL::MSG_WARNING, READ_ID, -1));
}

TEST_F(VelProjectTest, unknownDirectory_countsAsUnknownKeyword) {
  EXPECT_EQ(read("[DIRECTORIES]\nCLIMAT = /x\n"), 0);
  EXPECT_TRUE(
      messages.contains("1 unknown or deprecated keyword(s) in the project file. The first one is "
                        "'CLIMAT' in line 2, section DIRECTORIES."));
}

TEST_F(VelProjectTest, unknownProjectInfo_countsAsUnknownKeyword) {
  EXPECT_EQ(read("[PROJECT_INFO]\nCREATED = today\nFILE_VERSOIN = 6\n"), 0);
  EXPECT_TRUE(
      messages.contains("1 unknown or deprecated keyword(s) in the project file. The first one is "
                        "'FILE_VERSOIN' in line 3, section PROJECT_INFO."));
}

TEST_F(VelProjectTest, knownKeywords_giveNoClosingWarning) {
  EXPECT_EQ(read("[INIT]\n[GENERAL]\nSTART_YEAR = 1\n"), 0);
  EXPECT_FALSE(messages.contains("unknown or deprecated"));
}

TEST_F(VelProjectTest, unknownKeywords_areCountedForEachProjectAnew) {
  read("[INIT]\n[GENERAL]\nSTART_YAER = 1\n");
  messages.messages.clear();
  VelProject other;
  EXPECT_EQ(other.read(folder.write("other.vel", ""), errorMessage), 0);
  EXPECT_FALSE(messages.contains("unknown or deprecated"));
}

TEST_F(VelProjectTest, outputFolder_liesBesideTheProject) {
  EXPECT_EQ(read(""), 0);
  EXPECT_EQ(project.m_outputs.outputFolder, TKL::Path("$(PROJECT_DIR)/wall.results"));
}

TEST_F(VelProjectTest, resolvedPath_beginsAtTheProject) {
  read("");
  EXPECT_EQ(project.resolvedPath("climate/t.ccd"), TKL::Path(folder.file("climate/t.ccd")));
  EXPECT_EQ(project.resolvedInputPath("$(PROJECT_DIR)/t.ccd"), TKL::Path(folder.file("t.ccd")));
}

TEST_F(VelProjectTest, projectInfo_isStored) {
  EXPECT_EQ(read("[PROJECT_INFO]\nCREATED = today\nLAST_EDIT = now\nFILE_VERSION = 6\n"), 0);
  EXPECT_EQ(project.m_created, "today");
  EXPECT_EQ(project.m_lastEdit, "now");
  EXPECT_EQ(project.m_fileVersion, "6");
}

TEST_F(VelProjectTest, projectInfo_createdAndLastEditMatchAsPartOfTheKeyword) {
  project.readProjectInfo(SectionText("DATE_CREATED = a\n[LAST_EDITED_BY] = b\nLAST_EDIT_CREATED = c"));
  EXPECT_EQ(project.m_created, "c");
  EXPECT_EQ(project.m_lastEdit, "b");
}

TEST_F(VelProjectTest, projectInfo_fileVersionMatchesWhole) {
  project.readProjectInfo(SectionText("MY_FILE_VERSION = 7"));
  EXPECT_EQ(project.m_fileVersion, "");
  EXPECT_TRUE(
      messages.has("Invalid keyword 'MY_FILE_VERSION' in this section!", TKL::MSG_STANDARD, INFO_ID, 2));
}

TEST_F(VelProjectTest, projectInfo_anyFileVersionPasses) {
  EXPECT_EQ(read("[PROJECT_INFO]\nFILE_VERSION = 99.0 beta\n"), 0);
  EXPECT_EQ(project.m_fileVersion, "99.0 beta");
}

TEST_F(VelProjectTest, projectInfo_emptyValueIsAllowed) {
  project.m_created = "before";
  project.readProjectInfo(SectionText("CREATED ="));
  EXPECT_EQ(project.m_created, "");
}

TEST_F(VelProjectTest, comment_keepsInnerBlankLinesAndLosesTrailingOnes) {
  EXPECT_EQ(read("[PROJECT_INFO]\nThese are COMMENTS: here\nfirst = 1\n\n  second\n\n\n[INIT]\n"), 0);
  EXPECT_EQ(project.m_comment, "first = 1\n\nsecond");
}

TEST_F(VelProjectTest, comment_lineEqualToASectionNameEndsIt) {
  EXPECT_EQ(read("[PROJECT_INFO]\nCOMMENTS:\nabout the\nINIT\n[GENERAL]\nSTART_YEAR = 4\n"), 0);
  EXPECT_EQ(project.m_comment, "about the");
  EXPECT_EQ(project.m_init.startYear, 4U);
}

TEST_F(VelProjectTest, comment_lineWithEqualSignIsAKeywordLine) {
  project.readProjectInfo(SectionText("COMMENTS: a=b\n\n"));
  EXPECT_EQ(project.m_comment, "");
  EXPECT_TRUE(messages.has("Invalid keyword 'COMMENTS: a' in this section!", TKL::MSG_STANDARD, INFO_ID, 2));
}

TEST_F(VelProjectTest, projectInfo_textBeforeTheComment_throws) {
  EXPECT_EQ(thrownBy([&] { project.readProjectInfo(SectionText("\nmy wall\nCOMMENTS:\n")); }),
            (Thrown{"Unexpected data in this section: 'my wall'!", INFO_ID}));
}

/// Seconds that a call takes.
double seconds(const std::function<void()>& call) {
  const auto start = std::chrono::steady_clock::now();
  call();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Reading must be linear in the size of the file; the bounds leave room for unoptimised, checked builds.
constexpr double MAX_SECONDS = 20.0;

TEST_F(VelProjectTest, megabyteLine_isAnErrorThatIsQuotedShort) {
  EXPECT_LT(seconds([&] { EXPECT_EQ(read(std::string(1 << 20, 'x')), 1); }), MAX_SECONDS);
  EXPECT_TRUE(errorMessage.ends_with("Expected keyword, got '" + std::string(200, 'x') + "...'!"));
  EXPECT_LT(messages.messages.back().text.size(), 1000U);
}

TEST_F(VelProjectTest, randomBytes_areAnError) {
  std::minstd_rand random(4711);
  std::string bytes(10000000, ' ');
  for (char& byte : bytes) byte = static_cast<char>(random() >> 8U);
  for (const std::string begin : {"", "[INIT]\n[GENERAL]\n", "[MATERIALS]\n", "[CONDITIONS]\n",
                                  "[DISCRETISATION]\n", "[OUTPUTS]\n", "[ASSIGNMENTS]\n"})
    EXPECT_LT(seconds([&] { EXPECT_EQ(read(begin + bytes), 1) << begin; }), MAX_SECONDS) << begin;
}

TEST_F(VelProjectTest, aMillionLines_areReadInLinearTime) {
  std::string text = "[PROJECT_INFO]\nCOMMENTS:\n";
  for (int i = 0; i < 1000000; ++i) text += "a\n";
  EXPECT_LT(seconds([&] { EXPECT_EQ(read(text), 0); }), MAX_SECONDS);
  EXPECT_EQ(project.m_comment.size(), 2U * 1000000U - 1U);
}

}  // namespace
}  // namespace VELMORA

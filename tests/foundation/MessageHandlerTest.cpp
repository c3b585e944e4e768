#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "foundation/Message.h"
#include "support/Terminal.h"

namespace TKL {
namespace {

/// A handler without time stamps whose console and log can be looked at.
class MessageHandlerTest : public testing::Test {
 protected:
  void SetUp() override {
    handler.timeStampFormat.clear();
    handler.consoleVerbosity = 2;
    handler.logfileVerbosity = 2;
    std::string error;
    ASSERT_TRUE(handler.openLogFile(logPath(), false, error));
  }
  void TearDown() override { std::remove(logPath().str().c_str()); }

  static Path logPath() {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    return Path(testing::TempDir()) /
           ("MessageHandlerTest_" + name + "_" + std::to_string(getpid()) + ".log");
  }
  static std::string log() {
    std::ifstream stream(logPath().str());
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  /// What a message writes to standard output.
  std::string consoleOf(const std::string& text, int type, int level, const char* functionId = "[f]") {
    std::ostringstream stream;
    std::streambuf* const before = std::cout.rdbuf(stream.rdbuf());
    handler.msg(text, type, functionId, level);
    std::cout.rdbuf(before);
    return stream.str();
  }
  /// A function id in the column of 40 characters.
  static std::string column(const std::string& id) { return id + std::string(40 - id.size(), ' ') + "\t"; }

  MessageHandler handler;
};

TEST_F(MessageHandlerTest, defaults) {
  const MessageHandler fresh;
  EXPECT_EQ(fresh.functionIdWidth, 40);
  EXPECT_EQ(fresh.consoleVerbosity, 4);
  EXPECT_EQ(fresh.logfileVerbosity, 2);
  EXPECT_EQ(fresh.timeStampFormat, "%Y-%m-%d %H:%M:%S");
  EXPECT_EQ(fresh.indentation, 0);
  EXPECT_EQ(fresh.contextText, "");
  EXPECT_FALSE(fresh.logFile);
}

TEST_F(MessageHandlerTest, standard_consoleHasPadAndTextOnly) {
  handler.indentation = 2;
  EXPECT_EQ(consoleOf("a\nb", MSG_STANDARD, 1), "    a\nb");
}

TEST_F(MessageHandlerTest, standard_logCarriesProgressMark) {
  handler.indentation = 1;
  consoleOf("text", MSG_STANDARD, 1);
  EXPECT_EQ(log(), "[Progress]\t" + column("[f]") + "  text");
}

TEST_F(MessageHandlerTest, progress_isNeverPaddedNorPrefixed) {
  handler.indentation = 2;
  EXPECT_EQ(consoleOf("5 %", MSG_PROGRESS, 1), "5 %");
  EXPECT_EQ(log(), "5 %");
}

TEST_F(MessageHandlerTest, warning_getsALineEnd) {
  handler.indentation = 1;
  EXPECT_EQ(consoleOf("text", MSG_WARNING, 2), "  text\n");
  EXPECT_EQ(log(), "[Warning ]\t" + column("[f]") + "  text\n");
}

TEST_F(MessageHandlerTest, error_endsUpOnStandardOutput) {
  EXPECT_EQ(consoleOf("text", MSG_ERROR, 2), "text\n");
  EXPECT_EQ(log(), "[Error   ]\t" + column("[f]") + "text\n");
}

TEST_F(MessageHandlerTest, errorAboveOneVerbosity_goesToBoth) {
  handler.logfileVerbosity = 0;
  EXPECT_EQ(consoleOf("text", MSG_ERROR, 2), "text\n");
  EXPECT_EQ(log(), "[Error   ]\t" + column("[f]") + "text\n");
}

TEST_F(MessageHandlerTest, aboveBothVerbosities_isDropped) {
  for (const int type : {MSG_STANDARD, MSG_PROGRESS, MSG_WARNING, MSG_ERROR}) {
    EXPECT_EQ(consoleOf("text", type, 3), "") << type;
  }
  EXPECT_EQ(log(), "");
}

TEST_F(MessageHandlerTest, debug_hasNoLevelTest) {
  EXPECT_EQ(consoleOf("text", MSG_DEBUG, 99), "text\n");
  EXPECT_EQ(log(), "[Debug   ]\t" + column("[f]") + "text\n");
}

TEST(MessageHandlerColours, warningYellow_errorRed_debugMagenta_onStandardOutput) {
  Terminal terminal(STDOUT_FILENO);
  if (!terminal.works()) {
    GTEST_SKIP() << "no pseudo terminal here";
  }
  MessageHandler handler;
  handler.msg("abc", MSG_WARNING, "[f]", 1);
  EXPECT_EQ(terminal.text(), "\033[93mabc\n\033[0m");
  handler.msg("abc", MSG_ERROR, "[f]", 1);
  EXPECT_EQ(terminal.text(), "\033[91mabc\n\033[0m");
  handler.msg("abc", MSG_DEBUG, "[f]", 1);
  EXPECT_EQ(terminal.text(), "\033[95mabc\n\033[0m");
}

TEST_F(MessageHandlerTest, unknownType_writesNothing) {
  EXPECT_EQ(consoleOf("text", 5, 1), "");
  EXPECT_EQ(log(), "");
}

TEST_F(MessageHandlerTest, levelZero_isNeverLogged) {
  for (const int type : {MSG_STANDARD, MSG_PROGRESS, MSG_WARNING}) {
    EXPECT_NE(consoleOf("text", type, 0), "") << type;
  }
  EXPECT_EQ(log(), "");
}

TEST_F(MessageHandlerTest, levelMinusOne_isAlwaysLogged) {
  handler.consoleVerbosity = 0;
  handler.logfileVerbosity = 0;
  EXPECT_EQ(consoleOf("text", MSG_PROGRESS, -1), "text");
  EXPECT_EQ(log(), "text");
}

TEST_F(MessageHandlerTest, consoleAndLogHaveTheirOwnLimits) {
  handler.consoleVerbosity = 1;
  handler.logfileVerbosity = 3;
  EXPECT_EQ(consoleOf("text", MSG_PROGRESS, 2), "");
  EXPECT_EQ(log(), "text");
}

TEST_F(MessageHandlerTest, innerLineFeeds_areFollowedByThePrefix) {
  consoleOf("a\nb\n", MSG_STANDARD, 1);
  const std::string prefix = "[Progress]\t" + column("[f]");
  EXPECT_EQ(log(), prefix + "a\n" + prefix + "b\n");
}

TEST_F(MessageHandlerTest, missingFunctionId_leavesAnEmptyColumn) {
  consoleOf("text", MSG_STANDARD, 1, nullptr);
  EXPECT_EQ(log(), "[Progress]\t" + column("") + "text");
}

TEST_F(MessageHandlerTest, timeStamp_isFollowedByATab) {
  handler.timeStampFormat = "stamp %%";
  consoleOf("text", MSG_STANDARD, 1);
  EXPECT_EQ(log(), "stamp %\t[Progress]\t" + column("[f]") + "text");
}

TEST_F(MessageHandlerTest, defaultTimeStamp_has19Characters) {
  handler.timeStampFormat = "%Y-%m-%d %H:%M:%S";
  consoleOf("", MSG_STANDARD, 1);
  EXPECT_EQ(log().find("\t[Progress]"), 19U);
}

TEST_F(MessageHandlerTest, append_keepsTheOldTextAndSaysContinued) {
  consoleOf("old", MSG_PROGRESS, 1);
  std::string error;
  ASSERT_TRUE(handler.openLogFile(logPath(), true, error));
  consoleOf("new", MSG_PROGRESS, 1);
  EXPECT_EQ(log(), "old\n----------- continued -------------\n\nnew");
}

TEST_F(MessageHandlerTest, truncate_dropsTheOldText) {
  consoleOf("old", MSG_PROGRESS, 1);
  std::string error;
  ASSERT_TRUE(handler.openLogFile(logPath(), false, error));
  EXPECT_EQ(log(), "");
}

TEST_F(MessageHandlerTest, emptyPath_opensNothing) {
  std::string error;
  EXPECT_TRUE(handler.openLogFile(Path(), false, error));
  EXPECT_FALSE(handler.logFile);
  EXPECT_EQ(error, "");
}

TEST_F(MessageHandlerTest, impossiblePath_givesAReason) {
  std::string error;
  EXPECT_FALSE(handler.openLogFile("/no/such/place/x.log", false, error));
  EXPECT_EQ(error, "Cannot open/create logfile '/no/such/place/x.log'.");
  EXPECT_FALSE(handler.logFile);
}

}  // namespace
}  // namespace TKL

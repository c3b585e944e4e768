#include "app/ConsoleSolverMsgHandler.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>

#include "foundation/Message.h"
#include "support/StreamCapture.h"
#include "support/TempFolder.h"
#include "support/Terminal.h"

namespace VELMORA_SOLVER {
namespace {

/// A handler of verbosity 1 with an open log, all console streams being collected.
class ConsoleHandler : public ::testing::Test {
 protected:
  void SetUp() override { handler.openSolverLog(folder.file("wall.vel"), false); }

  void send(const std::string& text, int type, const char* functionId = "[Some::function]", int level = 1) {
    handler.msg(text, type, functionId, level);
  }
  std::string log() {
    handler.closeSolverLog();
    return folder.read("wall.vel.output");
  }

  TKL::TempFolder folder;
  TKL::StreamCapture out{std::cout};
  TKL::StreamCapture err{std::cerr};
  TKL::StreamCapture debug{std::clog};
  ConsoleSolverMsgHandler handler{1, true};
};

TEST_F(ConsoleHandler, standard_getsNoLineEnd) {
  send("abc", TKL::MSG_STANDARD);
  EXPECT_EQ(out.text(), "abc");
  EXPECT_EQ(err.text(), "");
  EXPECT_EQ(log(), "abc");
}

TEST_F(ConsoleHandler, standard_isPaddedOnceByTwoBlanksAStep) {
  handler.indentation = 2;
  send("abc\ndef\n", TKL::MSG_STANDARD);
  EXPECT_EQ(out.text(), "    abc\ndef\n");
  EXPECT_EQ(log(), "    abc\ndef\n");
}

TEST_F(ConsoleHandler, negativeIndentation_isNone) {
  handler.indentation = -3;
  send("abc", TKL::MSG_STANDARD);
  EXPECT_EQ(out.text(), "abc");
}

TEST_F(ConsoleHandler, standard_aboveVerbosity_isDropped) {
  send("abc", TKL::MSG_STANDARD, nullptr, 2);
  EXPECT_EQ(out.text(), "");
  EXPECT_EQ(log(), "");
}

TEST_F(ConsoleHandler, standard_levelMinusOne_isAlwaysWritten) {
  handler.verbosity = 0;
  send("abc", TKL::MSG_STANDARD, nullptr, -1);
  EXPECT_EQ(out.text(), "abc");
}

TEST_F(ConsoleHandler, progress_isNeverPadded) {
  handler.indentation = 2;
  send("12 %", TKL::MSG_PROGRESS);
  EXPECT_EQ(out.text(), "12 %");
}

TEST_F(ConsoleHandler, progress_standsTwiceInTheLog) {
  send("12 %", TKL::MSG_PROGRESS);
  EXPECT_EQ(log(), "12 %12 %\n");
}

TEST_F(ConsoleHandler, progress_aboveVerbosity_isDropped) {
  send("12 %", TKL::MSG_PROGRESS, nullptr, 2);
  EXPECT_EQ(out.text(), "");
  EXPECT_EQ(log(), "");
}

TEST_F(ConsoleHandler, warning_goesToStandardOutputWithALineEnd) {
  handler.indentation = 1;
  send("abc", TKL::MSG_WARNING);
  EXPECT_EQ(out.text(), "  abc\n");
  EXPECT_EQ(err.text(), "");
  EXPECT_EQ(log(), "abc\n");
}

TEST_F(ConsoleHandler, warningWithLineEnd_losesItOnTheConsoleAndDoublesItInTheLog) {
  send("abc\n", TKL::MSG_WARNING);
  EXPECT_EQ(out.text(), "abc\n");
  EXPECT_EQ(log(), "abc\n\n");
}

TEST_F(ConsoleHandler, emptyWarning_isAnEmptyLine) {
  send("", TKL::MSG_WARNING);
  EXPECT_EQ(out.text(), "\n");
  EXPECT_EQ(log(), "\n");
}

TEST_F(ConsoleHandler, warning_aboveVerbosity_isDropped) {
  send("abc", TKL::MSG_WARNING, nullptr, 2);
  EXPECT_EQ(out.text(), "");
  EXPECT_EQ(log(), "");
}

TEST_F(ConsoleHandler, error_goesToStandardErrorWithoutLevelTest) {
  handler.verbosity = 0;
  handler.indentation = 1;
  send("abc", TKL::MSG_ERROR, nullptr, 5);
  EXPECT_EQ(out.text(), "");
  EXPECT_EQ(err.text(), "  abc\n");
}

TEST_F(ConsoleHandler, errorWithFunctionId_hasItInTheLogOnly) {
  handler.indentation = 1;
  send("abc", TKL::MSG_ERROR, "[Some::function]");
  EXPECT_EQ(err.text(), "  abc\n");
  EXPECT_EQ(log(), std::string(30 - 16, ' ') + "[Some::function]:   abc\n");
}

TEST_F(ConsoleHandler, errorWithLongFunctionId_isNotCut) {
  const std::string functionId = "[ALongClassName::aLongFunctionName]";
  send("abc", TKL::MSG_ERROR, functionId.c_str());
  EXPECT_EQ(log(), functionId + ": abc\n");
}

TEST_F(ConsoleHandler, errorWithoutFunctionId_isNotPaddedInTheLog) {
  handler.indentation = 1;
  send("abc", TKL::MSG_ERROR, nullptr);
  EXPECT_EQ(log(), "abc\n");
}

TEST_F(ConsoleHandler, debug_goesToTheLogStreamWithItsFunctionId) {
  handler.indentation = 1;
  send("abc", TKL::MSG_DEBUG, "[Some::function]");
  EXPECT_EQ(debug.text(), "abc  [Some::function]\n");
  EXPECT_EQ(out.text(), "");
  EXPECT_EQ(err.text(), "");
  EXPECT_EQ(log(), "abc\n");
}

TEST_F(ConsoleHandler, debugWithoutFunctionId_isTheTextAlone) {
  send("abc", TKL::MSG_DEBUG, nullptr);
  EXPECT_EQ(debug.text(), "abc\n");
}

TEST_F(ConsoleHandler, debug_aboveVerbosity_isDropped) {
  send("abc", TKL::MSG_DEBUG, nullptr, 2);
  EXPECT_EQ(debug.text(), "");
  EXPECT_EQ(log(), "");
}

TEST_F(ConsoleHandler, otherType_isInTheLogOnlyAtEveryLevel) {
  send("abc", 17, nullptr, 9);
  EXPECT_EQ(out.text() + err.text() + debug.text(), "");
  EXPECT_EQ(log(), "abc\n");
}

TEST_F(ConsoleHandler, log_isOnDiskAfterEachMessage) {
  send("abc", TKL::MSG_STANDARD);
  EXPECT_EQ(folder.read("wall.vel.output"), "abc");
}

TEST_F(ConsoleHandler, withoutLog_onlyTheConsoleIsWritten) {
  handler.closeSolverLog();
  send("abc", TKL::MSG_STANDARD);
  EXPECT_EQ(out.text(), "abc");
  EXPECT_EQ(log(), "");
}

/// What a message writes to a terminal that stands for a stream.
std::string onTerminal(int descriptor, const std::string& text, int type) {
  TKL::Terminal terminal(descriptor);
  if (!terminal.works()) return "no pseudo terminal here";
  ConsoleSolverMsgHandler(1, false).msg(text, type, "[f]", 1);
  return terminal.text();
}

TEST(ConsoleColours, warningWithoutLineEnd_isYellow) {
  EXPECT_EQ(onTerminal(STDOUT_FILENO, "abc", TKL::MSG_WARNING), "\033[93mabc\n\033[0m");
}

TEST(ConsoleColours, warningWithLineEnd_isLightCyan) {
  EXPECT_EQ(onTerminal(STDOUT_FILENO, "abc\n", TKL::MSG_WARNING), "\033[93m\033[96mabc\n\033[0m");
}

TEST(ConsoleColours, error_isLightRed) {
  EXPECT_EQ(onTerminal(STDERR_FILENO, "abc", TKL::MSG_ERROR), "\033[91mabc\n\033[0m");
}

TEST(ConsoleColours, debug_isLightMagenta) {
  EXPECT_EQ(onTerminal(STDERR_FILENO, "abc", TKL::MSG_DEBUG), "\033[95mabc  [f]\n\033[0m");
}

TEST(ConsoleColours, standardText_hasNone) {
  EXPECT_EQ(onTerminal(STDOUT_FILENO, "abc", TKL::MSG_STANDARD), "abc");
}

TEST(SolverLog, isNotOpenedUnlessWanted) {
  const TKL::TempFolder folder;
  ConsoleSolverMsgHandler handler(1, false);
  handler.openSolverLog(folder.file("wall.vel"), false);
  EXPECT_EQ(solverLogFile, nullptr);
  EXPECT_FALSE(std::filesystem::exists(folder.file("wall.vel.output")));
}

TEST(SolverLog, replacesTheOldText) {
  const TKL::TempFolder folder;
  folder.write("wall.vel.output", "old\n");
  ConsoleSolverMsgHandler handler(1, true);
  handler.openSolverLog(folder.file("wall.vel"), false);
  handler.closeSolverLog();
  EXPECT_EQ(folder.read("wall.vel.output"), "");
}

TEST(SolverLog, append_keepsTheOldTextAndMarksTheNewOne) {
  const TKL::TempFolder folder;
  folder.write("wall.vel.output", "old\n");
  ConsoleSolverMsgHandler handler(1, true);
  handler.openSolverLog(folder.file("wall.vel"), true);
  handler.closeSolverLog();
  EXPECT_EQ(folder.read("wall.vel.output"), "old\n\n----------- continued -------------\n\n");
}

TEST(SolverLog, thatCannotBeOpened_stopsNothing) {
  const TKL::TempFolder folder;
  const TKL::StreamCapture out(std::cout);
  ConsoleSolverMsgHandler handler(1, true);
  handler.openSolverLog(folder.file("no/such/folder/wall.vel"), false);
  handler.msg("abc", TKL::MSG_STANDARD, nullptr, 1);
  EXPECT_EQ(out.text(), "abc");
}

TEST(SolverLog, construction_closesALogLeftOpen) {
  const TKL::TempFolder folder;
  ConsoleSolverMsgHandler first(1, true);
  first.openSolverLog(folder.file("wall.vel"), false);
  const ConsoleSolverMsgHandler second(1, true);
  EXPECT_EQ(solverLogFile, nullptr);
}

TEST(SolverLog, destructionOfTheCurrentHandler_resetsTheRegistry) {
  auto& registry = TKL::MessageHandlerRegistry::instance();
  {
    ConsoleSolverMsgHandler handler(1, true);
    registry.setMessageHandler(&handler);
  }
  EXPECT_EQ(registry.current, &registry.defaultHandler);
}

}  // namespace
TEST(SolverLog, thatCannotBeWritten_isReportedOnce) {
  const TKL::TempFolder folder;
  std::filesystem::create_symlink("/dev/full", folder.file("wall.vel.output"));
  const TKL::StreamCapture out(std::cout);
  const TKL::StreamCapture err(std::cerr);
  ConsoleSolverMsgHandler handler(1, true);
  handler.openSolverLog(folder.file("wall.vel"), false);
  EXPECT_FALSE(handler.logFailed);
  handler.msg("one\n", TKL::MSG_STANDARD, nullptr, 1);
  handler.msg("two\n", TKL::MSG_STANDARD, nullptr, 1);
  handler.closeSolverLog();
  EXPECT_TRUE(handler.logFailed);
  EXPECT_EQ(out.text(), "one\ntwo\n");
  EXPECT_NE(err.text().find("Cannot write log file '" + folder.file("wall.vel.output") +
                            "': No space left on device\n"),
            std::string::npos);
  EXPECT_EQ(err.text().find("Cannot write"), err.text().rfind("Cannot write"));
}

TEST(SolverLog, thatIsWritten_hasNotFailed) {
  const TKL::TempFolder folder;
  const TKL::StreamCapture out(std::cout);
  ConsoleSolverMsgHandler handler(1, true);
  handler.openSolverLog(folder.file("wall.vel"), false);
  handler.msg("one\n", TKL::MSG_STANDARD, nullptr, 1);
  handler.closeSolverLog();
  EXPECT_FALSE(handler.logFailed);
}

}  // namespace VELMORA_SOLVER

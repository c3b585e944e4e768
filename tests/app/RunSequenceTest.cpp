#include "app/RunSequence.h"

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <stdexcept>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/StopWatch.h"
#include "project/VelProject.h"
#include "support/MessageCapture.h"
#include "support/StreamCapture.h"
#include "support/TempFolder.h"
#include "support/Terminal.h"

namespace VELMORA_SOLVER {
namespace {

using TKL::MessageCapture;

/// What the stand-ins of project and solver shall do, and what they have done.
struct Script {
  std::int32_t readResult = 0;
  bool initResult = true;
  std::function<void()> onRun;
  std::vector<std::string> events;
  VELMORA::SolverFlags flagsSeen;
  std::string executableSeen;
  std::string pathSeen;
  bool wasCurrent = false;
};

Script* script = nullptr;

struct FakeProject : VELMORA::VelProject {
  FakeProject() { script->events.push_back("project made"); }
  ~FakeProject() { script->events.push_back("project gone"); }
  std::int32_t read(const TKL::Path& path, std::string& errorText) {
    script->events.push_back("read");
    script->flagsSeen = m_solverFlags;
    script->executableSeen = m_executable;
    script->pathSeen = path.str();
    script->wasCurrent = VELMORA::currentProject == this;
    if (script->readResult != 0) errorText = "it is wet";
    return script->readResult;
  }
};

struct FakeSolver {
  FakeSolver() { script->events.push_back("solver made"); }
  ~FakeSolver() { script->events.push_back("solver gone"); }
  bool init(VELMORA::VelProject&) {
    script->events.push_back("init");
    return script->initResult;
  }
  void run() {
    script->events.push_back("run");
    if (script->onRun) script->onRun();
  }
  TKL::StopWatch stopwatch;
};

class RunSequence : public ::testing::Test {
 protected:
  void SetUp() override {
    script = &plan;
    TKL::iceIterationCount = 0;
    TKL::mrcIterationCount = 0;
    flags.projectFile = folder.write("wall.vel", "");
    flags.solverPath = "bin/solver";
    flags.closeOnExit = true;
  }
  void TearDown() override {
    TKL::iceIterationCount = 0;
    TKL::mrcIterationCount = 0;
  }
  int runProject() { return VELMORA_SOLVER::runProject<FakeProject, FakeSolver>(flags); }
  int runProgram() {
    const TKL::StreamCapture out(std::cout);
    const TKL::StreamCapture err(std::cerr);
    const int exitCode = VELMORA_SOLVER::runProgram<FakeProject, FakeSolver>(flags);
    output = out.text();
    errorOutput = err.text();
    return exitCode;
  }
  std::string log() const { return folder.read("wall.vel.output"); }

  TKL::TempFolder folder;
  VELMORA::SolverFlags flags;
  Script plan;
  std::string output;
  std::string errorOutput;
};

/// Texts of all messages, those with a time cut behind the colon.
std::vector<std::string> texts(const MessageCapture& capture) {
  std::vector<std::string> result;
  for (const auto& message : capture.messages) {
    const bool timed = message.text.starts_with("\nSimulation finished after : ");
    result.push_back(timed ? "\nSimulation finished after : " : message.text);
  }
  return result;
}

TEST_F(RunSequence, project_getsAllFlagsBeforeItIsRead) {
  const MessageCapture messages;
  flags.restart = flags.testInit = flags.help = flags.disableHeaders = flags.error = true;
  flags.verbosity = 3;
  runProject();
  EXPECT_TRUE(plan.flagsSeen.closeOnExit);
  EXPECT_TRUE(plan.flagsSeen.restart);
  EXPECT_TRUE(plan.flagsSeen.testInit);
  EXPECT_TRUE(plan.flagsSeen.help);
  EXPECT_TRUE(plan.flagsSeen.disableHeaders);
  EXPECT_TRUE(plan.flagsSeen.error);
  EXPECT_EQ(plan.flagsSeen.verbosity, 3);
  EXPECT_EQ(plan.flagsSeen.solverPath, "bin/solver");
  EXPECT_EQ(plan.flagsSeen.projectFile, flags.projectFile);
}

TEST_F(RunSequence, project_knowsTheProgramAndIsCurrent) {
  const MessageCapture messages;
  runProject();
  EXPECT_EQ(plan.executableSeen, "bin/solver");
  EXPECT_EQ(plan.pathSeen, flags.projectFile);
  EXPECT_TRUE(plan.wasCurrent);
  EXPECT_EQ(VELMORA::currentProject, nullptr);
}

TEST_F(RunSequence, completeRun_hasItsMessagesInOrder) {
  const MessageCapture messages;
  EXPECT_EQ(runProject(), 0);
  EXPECT_EQ(texts(messages),
            (std::vector<std::string>{"Reading project '" + flags.projectFile + "'\n",
                                      "Project read successfully!\n", "Initializating solver\n",
                                      "Initialization complete!\n", "Starting solver\n\n",
                                      "\nSimulation finished after : "}));
}

TEST_F(RunSequence, completeRun_messagesAreStandardAtLevelOne) {
  const MessageCapture messages;
  runProject();
  ASSERT_EQ(messages.messages.size(), 6U);
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(messages.messages[i].type, TKL::MSG_STANDARD);
    EXPECT_EQ(messages.messages[i].level, 1);
    EXPECT_EQ(messages.messages[i].functionId, "[main]");
  }
}

TEST_F(RunSequence, finishedText_isAlwaysShown) {
  const MessageCapture messages;
  runProject();
  EXPECT_EQ(messages.messages.back().level, -1);
  EXPECT_EQ(messages.messages.back().type, TKL::MSG_STANDARD);
  EXPECT_TRUE(messages.messages.back().text.ends_with("ms\n")) << messages.messages.back().text;
}

TEST_F(RunSequence, solverGoesBeforeTheProject) {
  const MessageCapture messages;
  runProject();
  EXPECT_EQ(plan.events, (std::vector<std::string>{"project made", "read", "solver made", "init", "run",
                                                   "solver gone", "project gone"}));
}

TEST_F(RunSequence, counters_areWrittenIceFirst) {
  const MessageCapture messages;
  plan.onRun = [] {
    TKL::iceIterationCount = 12;
    TKL::mrcIterationCount = 345;
  };
  runProject();
  const std::vector<std::string> all = texts(messages);
  ASSERT_EQ(all.size(), 8U);
  EXPECT_EQ(all[5], "\nGlobal count of Ice decomposition iterations : 12\n");
  EXPECT_EQ(all[6], "\nGlobal count of MRC iterations : 345\n");
  EXPECT_EQ(messages.messages[5].level, 1);
  EXPECT_EQ(messages.messages[6].level, 1);
}

TEST_F(RunSequence, counterOfZero_hasNoLine) {
  const MessageCapture messages;
  plan.onRun = [] { TKL::mrcIterationCount = 1; };
  runProject();
  EXPECT_FALSE(messages.contains("Ice decomposition"));
  EXPECT_TRUE(messages.contains("MRC iterations"));
}

TEST_F(RunSequence, testInit_neverRuns) {
  const MessageCapture messages;
  flags.testInit = true;
  TKL::iceIterationCount = 1;
  EXPECT_EQ(runProject(), 0);
  EXPECT_EQ(plan.events, (std::vector<std::string>{"project made", "read", "solver made", "init",
                                                   "solver gone", "project gone"}));
  EXPECT_TRUE(
      messages.has("\nSolver halted after successful initialization!\n", TKL::MSG_STANDARD, "[main]", 1));
  EXPECT_FALSE(messages.contains("Starting solver"));
  EXPECT_FALSE(messages.contains("Global count"));
  EXPECT_FALSE(messages.contains("Simulation finished"));
}

TEST_F(RunSequence, failedRead_reportsAndReturnsOne) {
  const MessageCapture messages;
  plan.readResult = 2;
  EXPECT_EQ(runProject(), 1);
  EXPECT_TRUE(messages.has("it is wet", TKL::MSG_ERROR, "[main]", -1));
  EXPECT_TRUE(messages.has("Cannot read project file. Program aborted.", TKL::MSG_ERROR, "[main]", -1));
  EXPECT_EQ(messages.messages.size(), 3U);
  EXPECT_EQ(plan.events, (std::vector<std::string>{"project made", "read", "project gone"}));
}

TEST_F(RunSequence, failedInit_reportsAndReturnsOne) {
  const MessageCapture messages;
  plan.initResult = false;
  EXPECT_EQ(runProject(), 1);
  EXPECT_TRUE(messages.has("Cannot initialize solver. Program aborted.", TKL::MSG_ERROR, "[main]", -1));
  EXPECT_FALSE(messages.contains("aborted.\n"));
}

TEST_F(RunSequence, stopwatch_isRestartedBeforeTheRun) {
  const MessageCapture messages;
  struct Recorder {
    struct Watch {
      int starts = 0;
      void start() { ++starts; }
      static std::string diff_str() { return "0 ms"; }
    } stopwatch;
    int startsAtRun = -1;
    void run() { startsAtRun = stopwatch.starts; }
  } solver;
  runSolver(solver);
  EXPECT_EQ(solver.startsAtRun, 1);
}

TEST_F(RunSequence, banner_hasEightMessages) {
  const MessageCapture messages;
  writeBanner();
  const std::vector<std::string> all = texts(messages);
  ASSERT_EQ(all.size(), 8U);
  EXPECT_EQ(all[0], "Velmora CVODE based solver\n");
  EXPECT_EQ(all[1], "--------------------------\n");
  EXPECT_EQ(all[2], "\n");
  EXPECT_EQ(all[3], "Velmora model and solver version : 5.9.6\n");
  EXPECT_EQ(all[4], "TKL library version              : 4.2.4\n");
  EXPECT_EQ(all[5], "\n");
  EXPECT_TRUE(all[6].starts_with("Compiled with: ") && all[6].find(__VERSION__) != std::string::npos)
      << all[6];
  EXPECT_EQ(all[7], "\n");
  for (const auto& message : messages.messages) {
    EXPECT_EQ(message.level, 1);
    EXPECT_EQ(message.type, TKL::MSG_STANDARD);
    EXPECT_EQ(message.functionId, "[main]");
  }
}

TEST_F(RunSequence, newProject_hasTheModelVersion) {
  EXPECT_EQ(VELMORA::VelProject().m_version, "5.9.6");
}

TEST_F(RunSequence, program_logsBannerAndRun) {
  EXPECT_EQ(runProgram(), 0);
  EXPECT_EQ(log(), output);
  EXPECT_TRUE(log().starts_with("Velmora CVODE based solver\n"));
  EXPECT_NE(log().find("Simulation finished after"), std::string::npos);
}

TEST_F(RunSequence, program_quietestLevel_showsTheEndOnly) {
  flags.verbosity = 0;
  EXPECT_EQ(runProgram(), 0);
  EXPECT_TRUE(output.starts_with("\nSimulation finished after : ")) << output;
}

TEST_F(RunSequence, program_restart_continuesTheLog) {
  folder.write("wall.vel.output", "old\n");
  flags.restart = true;
  runProgram();
  EXPECT_TRUE(log().starts_with("old\n\n----------- continued -------------\n\nVelmora")) << log();
}

TEST_F(RunSequence, program_newRun_replacesTheLog) {
  folder.write("wall.vel.output", "old\n");
  runProgram();
  EXPECT_TRUE(log().starts_with("Velmora"));
}

TEST_F(RunSequence, program_exception_isReportedAndReturnsOne) {
  plan.onRun = [] { throw std::runtime_error("too cold"); };
  EXPECT_EQ(runProgram(), 1);
  EXPECT_EQ(errorOutput, "too cold\n");
  const std::string id = std::string(30 - 6, ' ') + "[main]: ";
  const std::string end = id + "too cold\nSimulation of project '" + flags.projectFile + "' aborted.\n";
  EXPECT_TRUE(log().ends_with(end)) << log();
  EXPECT_EQ(plan.events.back(), "project gone");
}

TEST_F(RunSequence, program_exception_abortedLineIsAStandardTextAtLevelOne) {
  flags.verbosity = 0;
  plan.onRun = [] { throw std::runtime_error("too cold"); };
  runProgram();
  EXPECT_EQ(output, "");
  EXPECT_EQ(errorOutput, "too cold\n");
}

TEST_F(RunSequence, program_chainedException_showsItsLastRecord) {
  plan.onRun = [] { throw TKL::Exception(TKL::Exception("inner", "[a]"), "outer", "[b]"); };
  runProgram();
  EXPECT_EQ(errorOutput, "outer\n");
}

TEST_F(RunSequence, program_nameInWrongEncoding_isAnError) {
  flags.projectFile = folder.file("\xFF.vel");
  EXPECT_EQ(runProgram(), 1);
  EXPECT_EQ(errorOutput, "Cannot create wide string from Ansi (local encoding) string.\n");
}

TEST_F(RunSequence, program_failedRead_hasNoAbortedLine) {
  plan.readResult = 1;
  EXPECT_EQ(runProgram(), 1);
  EXPECT_EQ(errorOutput, "it is wet\nCannot read project file. Program aborted.\n");
  EXPECT_EQ(output.find("' aborted."), std::string::npos);
}

TEST_F(RunSequence, program_leavesRegistryAndLogAsTheyWere) {
  runProgram();
  auto& registry = TKL::MessageHandlerRegistry::instance();
  EXPECT_EQ(registry.current, &registry.defaultHandler);
  EXPECT_EQ(solverLogFile, nullptr);
}

TEST_F(RunSequence, wrongCommandLine_showsHelpThenTheComplaint) {
  const TKL::StreamCapture out(std::cout);
  const TKL::StreamCapture err(std::cerr);
  EXPECT_EQ(rejectCommandLine(flags), 1);
  EXPECT_TRUE(out.text().starts_with("\nCommand line options generally supported by Velmora solvers\n"));
  EXPECT_EQ(err.text(), "\nWrong or missing command line options!\n");
}

TEST_F(RunSequence, wrongCommandLine_complaintIsRed) {
  const TKL::StreamCapture out(std::cout);
  TKL::Terminal terminal(STDERR_FILENO);
  rejectCommandLine(flags);
  EXPECT_EQ(terminal.text(), "\033[91m\nWrong or missing command line options!\n\033[0m");
}

constexpr char PROMPT[] = "Press Enter to continue . . . ";

TEST_F(RunSequence, wrongCommandLine_waitsAtATerminalOnly) {
  const TKL::StreamCapture err(std::cerr);
  for (const bool closeOnExit : {false, true}) {
    flags.closeOnExit = closeOnExit;
    const TKL::StreamCapture out(std::cout);
    TKL::Terminal keyboard(STDIN_FILENO);
    ASSERT_TRUE(keyboard.type("\n"));
    EXPECT_EQ(rejectCommandLine(flags), 1);
    EXPECT_EQ(out.text().ends_with(PROMPT), !closeOnExit);
  }
}

TEST_F(RunSequence, program_waitsAtItsEndUnlessItShallClose) {
  for (const int readResult : {0, 1}) {
    for (const bool closeOnExit : {false, true}) {
      plan.readResult = readResult;
      flags.closeOnExit = closeOnExit;
      TKL::Terminal keyboard(STDIN_FILENO);
      ASSERT_TRUE(keyboard.type("any words\n"));
      EXPECT_EQ(runProgram(), readResult);
      EXPECT_EQ(output.ends_with(PROMPT), !closeOnExit);
    }
  }
}

TEST_F(RunSequence, program_waitsAfterAnException) {
  plan.onRun = [] { throw std::runtime_error("too cold"); };
  for (const bool closeOnExit : {false, true}) {
    flags.closeOnExit = closeOnExit;
    TKL::Terminal keyboard(STDIN_FILENO);
    ASSERT_TRUE(keyboard.type("\n"));
    runProgram();
    EXPECT_EQ(output.ends_with(std::string("' aborted.\n") + PROMPT), !closeOnExit);
  }
}

TEST_F(RunSequence, inputThatIsNoTerminal_isNotWaitedFor) {
  flags.closeOnExit = false;
  const int nothing = open("/dev/null", O_RDONLY);
  const int before = dup(STDIN_FILENO);
  dup2(nothing, STDIN_FILENO);
  runProgram();
  dup2(before, STDIN_FILENO);
  close(before);
  close(nothing);
  EXPECT_FALSE(output.ends_with(PROMPT));
}

TEST_F(RunSequence, wrongCommandLine_makesNoLog) {
  const TKL::StreamCapture out(std::cout);
  const TKL::StreamCapture err(std::cerr);
  rejectCommandLine(flags);
  EXPECT_FALSE(std::filesystem::exists(flags.projectFile + ".output"));
}

}  // namespace
}  // namespace VELMORA_SOLVER

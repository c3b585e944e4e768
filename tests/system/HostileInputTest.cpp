#include <gtest/gtest.h>

#include <random>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

constexpr std::size_t MEGABYTE = 1000000;

const char* const SECTIONS[] = {"PROJECT_INFO", "DIRECTORIES",    "INIT",    "MATERIALS",
                                "CONDITIONS",   "DISCRETISATION", "OUTPUTS", "ASSIGNMENTS"};

std::string randomBytes(std::size_t count) {
  std::mt19937 generator(4711);
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(generator() & 0xFFU);
  return bytes;
}

/// Refused without a crash and with messages that a person can read. An effort that grows with the square of
/// the input would run into the time limit of the test.
void expectRefused(const ProcessResult& result, const std::string& what) {
  constexpr std::size_t READABLE = 20000;
  EXPECT_EQ(result.exitCode, 1) << what;
  EXPECT_EQ(result.signal, 0) << what;
  EXPECT_TRUE(result.err.ends_with(" Program aborted.\n")) << what;
  EXPECT_LT(result.err.size() + result.out.size(), READABLE) << what;
}

}  // namespace

TEST(HostileInput, tenMegabytesOfRandomBytes) {
  const SmallProject project;
  expectRefused(project.runText(randomBytes(10 * MEGABYTE)), "bare");
}

TEST(HostileInput, tenMegabytesOfRandomBytesInEverySection) {
  const SmallProject project;
  const std::string bytes = "]\n" + randomBytes(10 * MEGABYTE);
  for (const char* const section : SECTIONS)
    expectRefused(project.runText(std::string("[") + section + bytes), section);
}

TEST(HostileInput, tenMegabytesOfRandomBytesAsMaterial) {
  const SmallProject project;
  expectRefused(project.runText("[MATERIALS]\n[MATERIAL]\n" + randomBytes(10 * MEGABYTE)), "embedded");
}

TEST(HostileInput, lineOfOneMegabyte) {
  const SmallProject project;
  expectRefused(project.runText(std::string(MEGABYTE, 'A')), "bare");
  for (const char* const section : SECTIONS)
    expectRefused(project.runText(std::string("[") + section + "]\n" + std::string(MEGABYTE, 'A')), section);
}

TEST(HostileInput, valueOfOneMegabyte) {
  SmallProject project;
  project.replace("INIT", "DURATION = 1 d", "DURATION = " + std::string(MEGABYTE, '9') + " d");
  expectRefused(project.run(), "digits");
}

TEST(HostileInput, wordOfOneMegabyte) {
  const SmallProject project;
  const std::string word(MEGABYTE, 'A');
  for (const char* const begin :
       {"[INIT]\n[GENERAL]\nDURATION = 1 ",
        "[INIT]\n[GENERAL]\nSTART_YEAR = ", "[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = ",
        "[INIT]\n[SOLVER_SETTINGS]\nREL_TOL = ", "[MATERIALS]\n[MATERIAL]\nFILE = $(",
        "[MATERIALS]\n[MATERIAL]\nFILE = ", "[MATERIALS]\n[MATERIAL]\nRHO = 1 ",
        "[MATERIALS]\n[MATERIAL]\nRHO = ", "[CONDITIONS]\n[CLIMATE_CONDITIONS]\n[CLIMATE_COND]\nTYPE = ",
        "[CONDITIONS]\n[CLIMATE_CONDITIONS]\n[CLIMATE_COND]\nCYCLIC_DATA = ",
        "[CONDITIONS]\n[BOUNDARY_CONDITIONS]\n[BOUND_COND]\nKIND = ", "[ASSIGNMENTS]\n[SELECTION]\nTYPE = "})
    expectRefused(project.runText(begin + word + "\n"), begin);
}

TEST(HostileInput, manyBrackets) {
  const SmallProject project;
  expectRefused(project.runText("[INIT]\n" + std::string(MEGABYTE, '[')), "opening");
  expectRefused(project.runText("[INIT]\n" + std::string(MEGABYTE, ']')), "closing");
}

TEST(HostileInput, manyShortLines) {
  SmallProject project;
  std::string lines;
  for (std::size_t i = 0; i < MEGABYTE / 4; ++i) lines += "A=1\n";
  project.append("INIT", lines);
  project.remove("DISCRETISATION");
  expectRefused(project.run(), "unknown keywords");
}

TEST(HostileInput, nulByteInALine_isRefusedWithTheWholeMessage) {
  SmallProject project;
  project.replace("INIT", "DURATION = 1 d", std::string("DURATION = 1\0 d", 15));
  const ProcessResult result = project.run();
  expectRefused(result, "NUL");
  EXPECT_TRUE(result.err.ends_with("' for keyword 'DURATION'!\nCannot read project file. Program aborted.\n"))
      << result.err;
}

TEST(HostileInput, nulBytesBeforeAndAfterTheProject) {
  const SmallProject project;
  expectRefused(project.runText(std::string("\0\0", 2) + project.text()), "before");
  expectRefused(project.runText(project.text() + std::string("\0\0", 2)), "after");
}

TEST(HostileInput, controlBytesDoNotReachTheTerminal) {
  const SmallProject project;
  const ProcessResult result = project.runText("\x1b[2Jgone\n");
  expectRefused(result, "escape");
  EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
  const ProcessResult word = project.runText("[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = \x1b[31mred\n");
  expectRefused(word, "escape in a word");
  EXPECT_EQ(word.err.find('\x1b'), std::string::npos);
}

TEST(HostileInput, carriageReturnLineEnds_areAccepted) {
  const SmallProject project;
  std::string text;
  for (const char character : project.text()) text += character == '\n' ? "\r\n" : std::string(1, character);
  EXPECT_EQ(project.runText(text).exitCode, 0);
  EXPECT_EQ(project.outputTimes("profile.out").size(), 25U);
}

TEST(HostileInput, missingLastLineEnd_isAccepted) {
  const SmallProject project;
  std::string text = project.text();
  text.pop_back();
  EXPECT_EQ(project.runText(text, {"-t"}).exitCode, 0);
}

TEST(HostileInput, repeatedSectionsInAnyOrder_areAccepted) {
  const SmallProject project;
  EXPECT_EQ(
      project.runText("ASSIGNMENTS\nOUTPUTS=\n[MATERIALS\n" + project.text() + "INIT]\n", {"-t"}).exitCode,
      0);
}

}  // namespace VELMORA_TEST

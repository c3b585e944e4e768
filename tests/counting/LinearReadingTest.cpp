#include <gtest/gtest.h>

#include <unistd.h>

#include <cctype>
#include <string>
#include <string_view>

#include "system/SmallProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

constexpr char COUNTER[] = "/usr/bin/valgrind";
constexpr int FEW = 100;
constexpr int MANY = 10 * FEW;
/// Ten times the work, with some room for what grows with the logarithm, such as sorting and look-ups.
constexpr double LIMIT = 12.0;

/// The number behind "I refs:" in the summary, 0 if there is none.
double instructionsIn(const std::string& summary) {
  constexpr std::string_view MARK = "refs:";
  const std::size_t begin = summary.find(MARK);
  if (begin == std::string::npos) return 0.0;
  std::string digits = summary.substr(begin + MARK.size(), summary.find('\n', begin) - begin - MARK.size());
  std::erase_if(digits, [](unsigned char character) { return std::isdigit(character) == 0; });
  return digits.empty() ? 0.0 : std::stod(digits);
}

/// How much the effort grows from the small to the large input, beyond that of every run.
double growth(double always, double small, double large) {
  return (large - always) / (small - always);
}

/// Instructions of reading and setting up the project.
double instructions(const SmallProject& project) {
  project.folder().write("wall.vel", project.text());
  const ProcessResult result =
      runProcess({COUNTER, "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null",
                  VELMORA_PROGRAM, "--testinit", "--closeonexit", "-v0", project.projectFile()});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  return instructionsIn(result.err);
}

/// Holds the effort for `MANY` entries against that for `FEW`; `fill(project, count)` makes the entries.
template <class Fill>
void expectLinear(Fill fill) {
  const auto effort = [&](int count) {
    SmallProject project;
    fill(project, count);
    return instructions(project);
  };
  const double always = effort(1), small = effort(FEW), large = effort(MANY);
  ::testing::Test::RecordProperty("growth", std::to_string(growth(always, small, large)));
  ASSERT_GT(always, 0.0);
  ASSERT_GT(small, 1.1 * always) << "too few entries to be seen";
  EXPECT_LT(growth(always, small, large), LIMIT);
}

/// Counts instructions, which say the same on every machine, however busy it is.
class LinearReading : public ::testing::Test {
 protected:
  void SetUp() override {
    if (access(COUNTER, X_OK) != 0) GTEST_SKIP() << "needs the package valgrind";
  }
};

}  // namespace

TEST_F(LinearReading, assignments) {
  expectLinear([](SmallProject& project, int count) {
    std::string lines;
    for (int k = 0; k < count; ++k) {
      const std::string column = std::to_string(k % 5);
      lines += "[SELECTION]\nTYPE = MATERIAL\nRANGE = " + column + " 0 " + column +
               " 0\nNAME = Brick\nLOCATION = ELEMENT\n";
    }
    project.append("ASSIGNMENTS", lines);
  });
}

TEST_F(LinearReading, outputFiles) {
  expectLinear([](SmallProject& project, int count) {
    std::string files, selections;
    for (int k = 0; k < count; ++k) {
      const std::string name = "NAME = file" + std::to_string(k) + ".out\n";
      files += "[OUTPUT_FILE]\n" + name + "OUTPUT_GRID = Hourly\nOUTPUT_FORMAT = Temperature\n";
      selections += "[SELECTION]\nTYPE = FIELDOUTPUT\nRANGE = 0 0 1 0\n" + name + "LOCATION = ELEMENT\n";
    }
    project.append("OUTPUTS", files);
    project.append("ASSIGNMENTS", selections);
  });
}

TEST_F(LinearReading, climatePoints) {
  expectLinear([](SmallProject& project, int count) {
    constexpr int POINTS_PER_ENTRY = 60, HOURS_PER_DAY = 24;
    std::string data = "TEMPER C\n";
    for (int hour = 0; hour < POINTS_PER_ENTRY * count; ++hour) {
      data += std::to_string(hour / HOURS_PER_DAY) + " " + std::to_string(hour % HOURS_PER_DAY) + ":00:00 " +
              std::to_string(hour % 30) + ".5\n";
    }
    project.folder().write("frost.ccd", data);
    project.replace("CONDITIONS", "KIND = CONSTANT\nCONSTVALUE = 0 C\n",
                    "KIND = DATLINEAR\nFILENAME = $(PROJECT_DIR)/frost.ccd\n");
  });
}

TEST(LinearReadingControl, growth_showsAnEffortThatRisesWithTheSquare) {
  const auto effort = [](double count) { return 1e6 + count * count; };
  EXPECT_GT(growth(effort(0), effort(FEW), effort(MANY)), 5.0 * LIMIT);
  EXPECT_NEAR(growth(1e6, 1e6 + FEW, 1e6 + MANY), 10.0, 1e-9);
}

TEST(LinearReadingControl, instructionsIn_findsTheCount) {
  EXPECT_EQ(instructionsIn("==7== \n==7== I   refs:      51,135,969\n"), 51135969.0);
  EXPECT_EQ(instructionsIn("no count"), 0.0);
}

}  // namespace VELMORA_TEST

#include "solver/Feedback.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/Message.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

namespace {

const std::string TABLE_HEADER = "Simtime     Simdate           Realtime    MeanSp       CurrentSp    ETC\n";
const std::string PROJECT_HEADER = "wall.vel\n";

class FeedbackTest : public ::testing::Test {
 protected:
  FeedbackTest() {
    feedback.clear();
    feedback.projectFileName = "wall.vel";
    feedback.tEndTotal = 10800.0;
    feedback.start();
  }

  /// The text of one feedback.
  std::string write(double t, double realTime, const std::string& suffix = "") {
    capture.messages.clear();
    feedback.write(t, suffix, realTime);
    return capture.messages.empty() ? "nothing" : capture.messages.back().text;
  }

  TKL::MessageCapture capture;
  Feedback feedback;
};

bool startsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

std::vector<FeedbackRecord> recorded;
void record(const FeedbackRecord& feedback) {
  recorded.push_back(feedback);
}

}  // namespace

TEST_F(FeedbackTest, firstLine_hasTheTableHeaderAndAllColumns) {
  // 1.5 h simulated in 2 s: 2700 s/s, and the other 1.5 h take 2 s more
  EXPECT_EQ(write(5400.0, 2000.0),
            TABLE_HEADER + "1.5 h       01.01.00 01:30:00  2 s        45 min/s     45 min/s     2 s\n");
}

TEST_F(FeedbackTest, message_isStandardAlwaysShownAndWithoutFunctionId) {
  write(5400.0, 2000.0);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_EQ(capture.messages[0].type, TKL::MSG_STANDARD);
  EXPECT_EQ(capture.messages[0].functionId, "");
  EXPECT_EQ(capture.messages[0].level, -1);
}

TEST_F(FeedbackTest, suffix_standsBehindTheLastColumn) {
  write(60.0, 1000.0);
  EXPECT_EQ(write(5400.0, 2000.0, " *"),
            "1.5 h       01.01.00 01:30:00  2 s        45 min/s     45 min/s     2 s *\n");
}

TEST_F(FeedbackTest, date_countsFromTheStartTimeOfTheSimulation) {
  feedback.startTimeOffset = 31.0 * 86400.0;
  EXPECT_EQ(write(5400.0, 2000.0).substr(TABLE_HEADER.size() + 12, 17), "01.02.00 01:30:00");
}

TEST_F(FeedbackTest, headers_takeTurnsEveryTwentyLines) {
  for (int line = 1; line <= 101; ++line) {
    const std::string text = write(line, line * 1000.0);
    const bool table = line % 40 == 1;
    const bool project = line % 40 == 21;
    EXPECT_EQ(startsWith(text, TABLE_HEADER), table) << line;
    EXPECT_EQ(startsWith(text, PROJECT_HEADER), project) << line;
  }
}

TEST_F(FeedbackTest, disableHeaders_removesBothKinds) {
  feedback.disableHeaders = true;
  for (int line = 1; line <= 61; ++line) {
    const std::string text = write(line, line * 1000.0);
    EXPECT_EQ(text.find('\n'), text.size() - 1) << line;
  }
}

TEST_F(FeedbackTest, disableHeaders_letsTheCounterRunOn) {
  feedback.disableHeaders = true;
  for (int line = 1; line <= 20; ++line) write(line, line * 1000.0);
  feedback.disableHeaders = false;
  EXPECT_TRUE(startsWith(write(21.0, 21000.0), PROJECT_HEADER));
}

TEST_F(FeedbackTest, speedBelowLimit_leavesTheRemainingTimeUnknown) {
  const std::string text = write(0.0099, 1e6);
  EXPECT_EQ(feedback.estimatedRemaining, -1.0);
  EXPECT_EQ(text.substr(text.size() - 4), "---\n");
}

TEST_F(FeedbackTest, speedAtLimit_givesTheRemainingTime) {
  write(0.01, 1e6);
  EXPECT_EQ(feedback.currentSpeed, 1e-5);
  EXPECT_DOUBLE_EQ(feedback.estimatedRemaining, (10800.0 - 0.01) / 1e-5);
}

TEST_F(FeedbackTest, noRealTime_hasSpeedZero) {
  write(100.0, 0.0);
  EXPECT_EQ(feedback.meanSpeed, 0.0);
  EXPECT_EQ(feedback.currentSpeed, 0.0);
}

TEST_F(FeedbackTest, meanSpeed_countsFromTheStartOfTheRun) {
  feedback.feedbackStart = 1000.0;
  write(3000.0, 4000.0);
  EXPECT_DOUBLE_EQ(feedback.meanSpeed, 500.0);
}

TEST_F(FeedbackTest, historyStart_holdsTheStartOfTheRun) {
  Feedback restarted;
  restarted.clear();
  restarted.feedbackStart = 1000.0;
  restarted.start();
  restarted.write(3000.0, "", 4000.0);
  EXPECT_DOUBLE_EQ(restarted.currentSpeed, 500.0);
}

TEST_F(FeedbackTest, speedWindow_reachesBackToTheFirstEntryOldEnough) {
  write(100.0, 1000.0);
  write(300.0, 1001000.0);
  write(1000.0, 1729000.0);  // 1728000 ms after the entry at 100 s
  EXPECT_DOUBLE_EQ(feedback.currentSpeed, 900.0 * 1000.0 / 1728000.0);
}

TEST_F(FeedbackTest, speedWindow_skipsAnEntryThatIsTooYoung) {
  write(100.0, 1000.0);
  write(300.0, 1001000.0);
  write(1000.0, 1728999.0);
  EXPECT_DOUBLE_EQ(feedback.currentSpeed, 1000.0 * 1000.0 / 1728999.0);
}

TEST_F(FeedbackTest, verbosityZero_showsAStar) {
  feedback.verbosity = 0;
  EXPECT_EQ(write(100.0, 1000.0), "*");
  EXPECT_TRUE(capture.has("*", TKL::MSG_STANDARD, "", -1));
}

TEST_F(FeedbackTest, quietAtVerbosityZero_showsNothing) {
  feedback.verbosity = 0;
  feedback.quiet = true;
  EXPECT_EQ(write(100.0, 1000.0), "nothing");
}

TEST_F(FeedbackTest, quietAtVerbosityOne_showsTheLine) {
  feedback.quiet = true;
  EXPECT_NE(write(100.0, 1000.0), "nothing");
}

TEST_F(FeedbackTest, callback_tellsOutputsFromTimedFeedbacks) {
  recorded.clear();
  feedback.callback = record;
  write(5400.0, 2000.0);
  write(5400.0, 2000.0, " *");
  ASSERT_EQ(recorded.size(), 2U);
  EXPECT_EQ(recorded[0].isOutput, 1);
  EXPECT_EQ(recorded[1].isOutput, 0);
  EXPECT_EQ(recorded[0].t, 5400.0);
  EXPECT_DOUBLE_EQ(recorded[0].currentSpeed, 2700.0);
  EXPECT_DOUBLE_EQ(recorded[0].estimatedRemaining, 2.0);
}

TEST_F(FeedbackTest, nextTimedFeedback_isFifteenSecondsLater) {
  write(100.0, 4000.0);
  EXPECT_DOUBLE_EQ(feedback.nextRealTime, 19.0);
}

TEST(TimeSpanText, choosesTheUnitByTheSize) {
  EXPECT_EQ(timeSpanText(0.0), "0 s");
  EXPECT_EQ(timeSpanText(59.5), "59.5 s");
  EXPECT_EQ(timeSpanText(60.0), "1 min");
  EXPECT_EQ(timeSpanText(3599.4), "59.99 min");
  EXPECT_EQ(timeSpanText(3600.0), "1 h");
  EXPECT_EQ(timeSpanText(86400.0), "1 d");
  EXPECT_EQ(timeSpanText(31536000.0), "1 a");
  EXPECT_EQ(timeSpanText(-7200.0), "-2 h");
}

TEST(TimeSpanText, hasSixDigits) {
  EXPECT_EQ(timeSpanText(100.0), "1.66667 min");
}

TEST(DateText, countsDaysAndMonthsFromOneAndYearsFromZero) {
  EXPECT_EQ(dateText(0.0), "01.01.00 00:00:00");
  EXPECT_EQ(dateText(31535999.0), "31.12.00 23:59:59");
  EXPECT_EQ(dateText(31536000.0), "01.01.01 00:00:00");
}

TEST(DateText, februaryAlwaysHasTwentyEightDays) {
  EXPECT_EQ(dateText(58 * 86400.0), "28.02.00 00:00:00");
  EXPECT_EQ(dateText(59 * 86400.0), "01.03.00 00:00:00");
  EXPECT_EQ(dateText(4 * 31536000.0 + 59 * 86400.0), "01.03.04 00:00:00");
}

TEST(DateText, dropsPartsOfASecond) {
  EXPECT_EQ(dateText(3661.999), "01.01.00 01:01:01");
}

}  // namespace VELMORA_SOLVER

#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "project/VelConditions.h"
#include "project/VelContactCond.h"
#include "project/VelOutputFormat.h"
#include "project/VelOutputGrid.h"
#include "project/VelOutputs.h"
#include "project/VelSelection.h"

using namespace VELMORA;

namespace {

constexpr std::size_t READABLE_LENGTH = 600;

/// A word that nobody would read to its end.
const std::string LONG_WORD(50000, '7');

template <class Record>
std::size_t lengthOfFailure(const std::string& text) {
  return thrownByReading<Record>(text).text.size();
}

}  // namespace

TEST(LongInput, isQuotedInPartByAllReaders) {
  EXPECT_LT(lengthOfFailure<VelConditions>("[WALLS]\n" + LONG_WORD), READABLE_LENGTH);
  EXPECT_LT(lengthOfFailure<VelSelection>("RANGE = " + LONG_WORD), READABLE_LENGTH);
  EXPECT_LT(lengthOfFailure<VelContactCond>(LONG_WORD + " = 1"), READABLE_LENGTH);
  EXPECT_LT(lengthOfFailure<VelContactCond>("sd+(rh) = " + LONG_WORD + " ;"), READABLE_LENGTH);
  EXPECT_LT(lengthOfFailure<VelOutputGrid>("INTERVAL = " + LONG_WORD), READABLE_LENGTH);
  EXPECT_LT(lengthOfFailure<VelOutputFormat>("PRECISION = 9999 " + LONG_WORD), READABLE_LENGTH);
  EXPECT_LT(lengthOfFailure<VelOutputs>("GENERAL\nTHAW_BEGIN = 7 " + LONG_WORD), READABLE_LENGTH);
}

TEST(LongInput, isQuotedInPartByWarnings) {
  const TKL::MessageCapture capture;
  readRecord<VelOutputFormat>("FORMAT = " + LONG_WORD + "\nFIELD_TYPE = ICEPROB" + LONG_WORD);
  ASSERT_EQ(capture.messages.size(), 2u);
  for (const auto& message : capture.messages) EXPECT_LT(message.text.size(), READABLE_LENGTH);
}

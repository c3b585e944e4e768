#include "foundation/Exception.h"

#include <gtest/gtest.h>

#include "foundation/FormatString.h"
#include "support/MessageCapture.h"

namespace TKL {
namespace {

Exception twiceRethrown() {
  const Exception inner("cause", "[inner]");
  const Exception middle(inner, FormatString("Error reading '%1'.").arg("x"), "[middle]");
  return {middle, "context", "[outer]"};
}

TEST(Exception, formatString_isRenderedAtOnce) {
  const Exception exception(FormatString("%1 of %2").arg(3).arg("four"), "[here]");
  EXPECT_STREQ(exception.what(), "3 of four");
  EXPECT_EQ(exception.location(), "[here]");
}

TEST(Exception, rethrownTwice_whatAndLocationAreTheOutermost) {
  EXPECT_STREQ(twiceRethrown().what(), "context");
  EXPECT_EQ(twiceRethrown().location(), "[outer]");
}

TEST(Exception, records_oldestFirst) {
  const Exception exception = twiceRethrown();
  ASSERT_EQ(exception.records().size(), 3U);
  EXPECT_EQ(exception.records()[0].what, "cause");
  EXPECT_EQ(exception.records()[1].what, "Error reading 'x'.");
  EXPECT_EQ(exception.records()[2].what, "context");
}

TEST(Exception, writeMsgStackToError_sendsInnermostFirstAsErrorsOfLevelOne) {
  const MessageCapture capture;
  twiceRethrown().writeMsgStackToError();
  const std::vector<MessageCapture::Message> expected = {{"cause", MSG_ERROR, "[inner]", 1, 0},
                                                         {"Error reading 'x'.", MSG_ERROR, "[middle]", 1, 0},
                                                         {"context", MSG_ERROR, "[outer]", 1, 0}};
  EXPECT_EQ(capture.messages, expected);
}

TEST(Exception, wrappedWithText_sourceChainIsUnchanged) {
  const Exception inner("cause", "[inner]");
  const Exception outer(inner, "context", "[outer]");
  EXPECT_EQ(inner.records().size(), 1U);
  EXPECT_EQ(outer.records().size(), 2U);
}

TEST(Exception, inputLine_isZeroWhereNotKnown) {
  EXPECT_EQ(Exception("a", "[b]").inputLine(), 0);
}

TEST(Exception, inputLine_isTakenAlongWhenWrapped) {
  Exception inner("cause", "[inner]");
  inner.setInputLine(17);
  EXPECT_EQ(Exception(inner, "context", "[outer]").inputLine(), 17);
}

TEST(Exception, isCaughtAsStandardException) {
  try {
    throw Exception("text", "[place]");
  } catch (const std::exception& exception) {
    EXPECT_STREQ(exception.what(), "text");
  }
}

}  // namespace
}  // namespace TKL

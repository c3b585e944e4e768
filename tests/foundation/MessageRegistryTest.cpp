#include <gtest/gtest.h>

#include <memory>

#include "foundation/Message.h"
#include "support/MessageCapture.h"

namespace TKL {
namespace {

MessageHandlerRegistry& registry() {
  return MessageHandlerRegistry::instance();
}

TEST(MessageRegistry, currentHandler_startsAsTheDefaultOne) {
  EXPECT_EQ(registry().current, &registry().defaultHandler);
}

TEST(MessageRegistry, message_reachesTheCurrentHandlerUnchanged) {
  const MessageCapture capture;
  message("text %1", MSG_WARNING, "[id]", 2);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has("text %1", MSG_WARNING, "[id]", 2));
}

TEST(MessageRegistry, formatString_isRendered) {
  const MessageCapture capture;
  message(FormatString("n = %1\n").arg(3), MSG_STANDARD, nullptr, -1);
  EXPECT_TRUE(capture.has("n = 3\n", MSG_STANDARD, "", -1));
}

TEST(MessageRegistry, handlerThatDies_leavesTheDefaultOne) {
  auto handler = std::make_unique<MessageHandler>();
  registry().setMessageHandler(handler.get());
  handler.reset();
  EXPECT_EQ(registry().current, &registry().defaultHandler);
}

TEST(MessageRegistry, otherHandlerThatDies_changesNothing) {
  const MessageCapture capture;
  { const MessageHandler other; }
  EXPECT_EQ(registry().current, &capture);
}

TEST(MessageRegistry, setDefault_goesBack) {
  MessageHandler handler;
  registry().setMessageHandler(&handler);
  registry().setDefaultMessageHandler();
  EXPECT_EQ(registry().current, &registry().defaultHandler);
}

TEST(MessageIndentor, indentsForItsLifetime) {
  const MessageCapture capture;
  {
    const MessageIndentor outer;
    const MessageIndentor inner;
    message("in", MSG_STANDARD, nullptr, 1);
  }
  message("out", MSG_STANDARD, nullptr, 1);
  EXPECT_EQ(capture.messages[0].indentation, 2);
  EXPECT_EQ(capture.messages[1].indentation, 0);
}

TEST(MessageIndentor, exception_takesTheIndentationBack) {
  const MessageCapture capture;
  try {
    const MessageIndentor indentor;
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(capture.indentation, 0);
}

TEST(MessageIndentor, handlerThatDiedMeanwhile_isNotTouched) {
  const int before = registry().defaultHandler.indentation;
  {
    auto handler = std::make_unique<MessageHandler>();
    registry().setMessageHandler(handler.get());
    const MessageIndentor indentor;
    handler.reset();
  }
  EXPECT_EQ(registry().defaultHandler.indentation, before);
}

TEST(MessageCapture, restoresTheHandlerBeforeIt) {
  const MessageCapture outer;
  { const MessageCapture inner; }
  EXPECT_EQ(registry().current, &outer);
}

TEST(MessageCapture, has_tellsWhatDidNotCome) {
  const MessageCapture capture;
  message("text", MSG_WARNING, "[id]", 2);
  EXPECT_FALSE(capture.has("texts", MSG_WARNING, "[id]", 2));
  EXPECT_FALSE(capture.has("text", MSG_ERROR, "[id]", 2));
  EXPECT_FALSE(capture.has("text", MSG_WARNING, "[other]", 2));
  EXPECT_FALSE(capture.has("text", MSG_WARNING, "[id]", 3));
  EXPECT_FALSE(capture.contains("texts"));
  EXPECT_EQ(capture.count("tex"), 0);
}

}  // namespace
}  // namespace TKL

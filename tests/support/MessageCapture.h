#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "foundation/Message.h"

namespace TKL {

/// Takes all messages while it lives and keeps them. The handler that was current before comes back after.
class MessageCapture : public MessageHandler {
 public:
  struct Message {
    std::string text;
    int type = 0;
    std::string functionId;  ///< empty for a null id
    int level = 0;
    int indentation = 0;

    bool operator==(const Message&) const = default;
  };

  MessageCapture() : previous_(MessageHandlerRegistry::instance().current) {
    MessageHandlerRegistry::instance().setMessageHandler(this);
  }
  ~MessageCapture() override { MessageHandlerRegistry::instance().setMessageHandler(previous_); }

  void msg(const std::string& text, int type, const char* functionId, int verbosityLevel) override {
    messages.push_back({text, type, functionId ? functionId : "", verbosityLevel, indentation});
  }

  /// How many of the messages have exactly this text.
  long count(const std::string& text) const {
    return std::count_if(messages.begin(), messages.end(),
                         [&](const Message& message) { return message.text == text; });
  }

  /// Whether a message with this text, type, function id and level has come.
  bool has(const std::string& text, int type, const std::string& functionId, int level) const {
    return std::any_of(messages.begin(), messages.end(), [&](const Message& message) {
      return message.text == text && message.type == type && message.functionId == functionId &&
             message.level == level;
    });
  }

  /// Whether any message contains this piece of text.
  bool contains(const std::string& piece) const {
    return std::any_of(messages.begin(), messages.end(),
                       [&](const Message& message) { return message.text.find(piece) != std::string::npos; });
  }

  std::vector<Message> messages;

 private:
  MessageHandler* previous_;
};

}  // namespace TKL

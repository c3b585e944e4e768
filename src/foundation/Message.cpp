#include "foundation/Message.h"

#include <ctime>
#include <iostream>

#include "foundation/ConsoleColor.h"
#include "foundation/QuotedText.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

const char* typeMark(int type) {
  switch (type) {
    case MSG_STANDARD:
    case MSG_PROGRESS:
      return "[Progress]\t";
    case MSG_WARNING:
      return "[Warning ]\t";
    case MSG_ERROR:
      return "[Error   ]\t";
    case MSG_DEBUG:
      return "[Debug   ]\t";
    default:
      return "[Invalid ]\t";
  }
}

/// The present local time, followed by a tab; empty for an empty format.
std::string timeStamp(const std::string& format) {
  if (format.empty()) {
    return {};
  }
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::string stamp(format.size() + 500, '\0');
  stamp.resize(std::strftime(stamp.data(), stamp.size(), format.c_str(), &local));
  return stamp + '\t';
}

/// Puts the prefix behind each line feed that is not the last character.
std::string prefixInnerLines(const std::string& text, const std::string& prefix) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    result += text[i];
    if (text[i] == '\n' && i + 1 < text.size()) {
      result += prefix;
    }
  }
  return result;
}

void writeOut(const std::string& text) {
  std::cout << text << std::flush;
}

/// The text goes to standard output although it is standard error that is flushed.
void writeError(const std::string& text) {
  std::cout << text;
  std::cerr << std::flush;
}

}  // namespace

MessageHandler::~MessageHandler() {
  closeLogFile();
  MessageHandlerRegistry& registry = MessageHandlerRegistry::instance();
  if (registry.current == this) {
    registry.setDefaultMessageHandler();
  }
}

std::string MessageHandler::indentText() const {
  return indentation > 0 ? std::string(2 * static_cast<std::size_t>(indentation), ' ') : std::string();
}

std::string MessageHandler::logPrefix(int type, const char* functionId) const {
  return timeStamp(timeStampFormat) + typeMark(type) +
         pad_text(functionId != nullptr ? functionId : "", -functionIdWidth) + '\t' + indentText();
}

void MessageHandler::msg(const std::string& text, int type, const char* functionId, int verbosityLevel) {
  if (type != MSG_DEBUG && verbosityLevel > logfileVerbosity && verbosityLevel > consoleVerbosity) {
    return;
  }
  if (logFile) {
    writeToLog(text, type, functionId, verbosityLevel);
    logFile->flush();
  }
  writeToConsole(text, type, verbosityLevel);
}

void MessageHandler::writeToLog(const std::string& text, int type, const char* functionId,
                                int verbosityLevel) {
  const bool wanted = verbosityLevel != 0 && verbosityLevel <= logfileVerbosity;
  if (type == MSG_PROGRESS) {
    if (wanted) {
      *logFile << text;
    }
    return;
  }
  const bool always = type == MSG_ERROR || type == MSG_DEBUG;
  if (!always && !(wanted && (type == MSG_STANDARD || type == MSG_WARNING))) {
    return;
  }
  const std::string prefix = logPrefix(type, functionId);
  *logFile << prefix << prefixInnerLines(text, prefix);
  if (type != MSG_STANDARD) {
    *logFile << '\n';
  }
}

void MessageHandler::writeToConsole(const std::string& text, int type, int verbosityLevel) {
  const bool wanted = verbosityLevel <= consoleVerbosity;
  const std::string line = indentText() + text + '\n';
  switch (type) {
    case MSG_STANDARD:
      if (wanted) {
        writeOut(indentText() + text);
      }
      break;
    case MSG_PROGRESS:
      if (wanted) {
        writeOut(text);
      }
      break;
    case MSG_WARNING:
      if (wanted) {
        setConsoleColor(std::cout, CC_YELLOW);
        writeOut(line);
        setConsoleColor(std::cout, CC_WHITE);
      }
      break;
    case MSG_ERROR:
      setConsoleColor(std::cout, CC_LIGHT_RED);
      writeError(line);
      setConsoleColor(std::cout, CC_WHITE);
      break;
    case MSG_DEBUG:
      setConsoleColor(std::cout, CC_LIGHT_MAGENTA);
      writeOut(line);
      setConsoleColor(std::cout, CC_WHITE);
      break;
    default:
      break;
  }
}

bool MessageHandler::openLogFile(const Path& path, bool append, std::string& errorText) {
  closeLogFile();
  if (!path.isValid()) {
    return true;
  }
  logFile = std::make_unique<std::ofstream>(path.str(), append ? std::ios::app : std::ios::trunc);
  if (!*logFile) {
    closeLogFile();
    errorText = "Cannot open/create logfile '" + path.str() + "'.";
    return false;
  }
  if (append) {
    *logFile << "\n----------- continued -------------\n" << std::endl;
  }
  return true;
}

void MessageHandler::closeLogFile() {
  if (logFile && *logFile) {
    logFile->close();
  }
  logFile.reset();
}

MessageHandlerRegistry& MessageHandlerRegistry::instance() {
  // Never destroyed: messages may still come while static objects die.
  static auto* const registry = new MessageHandlerRegistry;
  return *registry;
}

void message(const std::string& text, int type, const char* functionId, int verbosityLevel) {
  MessageHandlerRegistry::instance().current->msg(printableMessage(text), type, functionId, verbosityLevel);
}

void message(const FormatString& text, int type, const char* functionId, int verbosityLevel) {
  message(text.str(), type, functionId, verbosityLevel);
}

MessageIndentor::MessageIndentor() : handler_(MessageHandlerRegistry::instance().current) {
  ++handler_->indentation;
}

MessageIndentor::~MessageIndentor() {
  // Another handler means that the indented one may be gone.
  if (MessageHandlerRegistry::instance().current == handler_) {
    --handler_->indentation;
  }
}

}  // namespace TKL

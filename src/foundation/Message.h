#pragma once

#include <fstream>
#include <memory>
#include <string>

#include "foundation/FormatString.h"
#include "foundation/Path.h"

namespace TKL {

/// Kind of a message.
enum messageType_t {
  MSG_STANDARD = 0,  ///< ordinary text; the caller writes its own line ends
  MSG_PROGRESS = 1,  ///< a feedback line
  MSG_WARNING = 2,
  MSG_ERROR = 3,
  MSG_DEBUG = 4
};

/// The default receiver of all messages: writes to the console and, with time stamps, to a log file.
/// Handlers of another kind derive from it.
class MessageHandler {
 public:
  MessageHandler() = default;
  MessageHandler(const MessageHandler&) = delete;
  MessageHandler& operator=(const MessageHandler&) = delete;
  /// Closes the log; if this handler is the current one, the registry goes back to its default.
  virtual ~MessageHandler();

  /// Writes a message. `functionId` may be null. A message is meant for a reader whose verbosity is at least
  /// `verbosityLevel`; -1 is always. What exceeds both verbosities is dropped, debug messages excepted; below
  /// that, errors go everywhere, and level 0 goes to the console only.
  virtual void msg(const std::string& text, int type, const char* functionId, int verbosityLevel);

  /// Opens the log file; an open one is closed first. An empty path opens nothing and is no failure.
  /// @return false, with the reason in `errorText`, if the file cannot be opened
  virtual bool openLogFile(const Path& path, bool append, std::string& errorText);

  std::string contextText;
  int functionIdWidth = 40;                          ///< width of the function id column of the log
  int consoleVerbosity = 4;                          ///< highest level shown on the console
  int logfileVerbosity = 2;                          ///< highest level written to the log file
  std::unique_ptr<std::ofstream> logFile;            ///< the open log file, or null
  std::string timeStampFormat{"%Y-%m-%d %H:%M:%S"};  ///< for `strftime`; empty: no time stamps
  int indentation = 0;                               ///< steps of two blanks

 protected:
  /// Two blanks for each step of indentation.
  std::string indentText() const;
  void closeLogFile();

 private:
  std::string logPrefix(int type, const char* functionId) const;
  void writeToLog(const std::string& text, int type, const char* functionId, int verbosityLevel);
  void writeToConsole(const std::string& text, int type, int verbosityLevel);
};

/// Holds the handler in use. One object, made on first use and alive until the process ends.
class MessageHandlerRegistry {
 public:
  static MessageHandlerRegistry& instance();

  /// The registry does not own the handler.
  void setMessageHandler(MessageHandler* handler) { current = handler; }
  void setDefaultMessageHandler() { current = &defaultHandler; }

  MessageHandler defaultHandler;
  MessageHandler* current = &defaultHandler;

 private:
  MessageHandlerRegistry() = default;
};

/// Sends a text to the current message handler; an overlong text is shortened, see `printableMessage`.
void message(const std::string& text, int type, const char* functionId, int verbosityLevel);
/// Renders the format string and sends it to the current message handler.
void message(const FormatString& text, int type, const char* functionId, int verbosityLevel);

/// Indents the messages of the current handler by one step for its lifetime.
class MessageIndentor {
 public:
  MessageIndentor();
  ~MessageIndentor();
  MessageIndentor(const MessageIndentor&) = delete;
  MessageIndentor& operator=(const MessageIndentor&) = delete;

 private:
  MessageHandler* handler_;
};

}  // namespace TKL

#include "foundation/Exception.h"

#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace TKL {

Exception::Exception(const std::string& message, const std::string& location)
    : records_{{message, location}} {}

Exception::Exception(const FormatString& message, const std::string& location)
    : Exception(message.str(), location) {}

Exception::Exception(const Exception& cause, const std::string& message, const std::string& location)
    : Exception(cause) {
  records_.push_back({message, location});
}

Exception::Exception(const Exception& cause, const FormatString& message, const std::string& location)
    : Exception(cause, message.str(), location) {}

Exception::~Exception() = default;

const char* Exception::what() const noexcept {
  return records_.empty() ? "" : records_.back().what.c_str();
}

std::string Exception::location() const {
  return records_.empty() ? std::string() : records_.back().location;
}

void Exception::writeMsgStackToError() const {
  for (const Record& record : records_) {
    message(record.what, MSG_ERROR, record.location.c_str(), 1);
  }
}

Exception Exception::withInputLine(int line) const {
  Exception copy(*this);
  copy.setInputLine(line);
  return copy;
}

}  // namespace TKL

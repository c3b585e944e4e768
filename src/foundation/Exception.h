#pragma once

#include <exception>
#include <string>
#include <vector>

namespace TKL {

class FormatString;

/// The only error type of the program: an ordered chain of records, oldest (deepest cause) first. Thrown by
/// value; a function with something to say catches it and throws a new one that is built from the caught one.
class Exception : public std::exception {
 public:
  /// One message and the tag of the place that added it, "[Class::method]" or "[function]".
  struct Record {
    std::string what;
    std::string location;
  };

  Exception(const std::string& message, const std::string& location);
  Exception(const FormatString& message, const std::string& location);
  /// Copies the chain and the input line of `cause`, then appends one record.
  Exception(const Exception& cause, const std::string& message, const std::string& location);
  Exception(const Exception& cause, const FormatString& message, const std::string& location);

  ~Exception() override;
  /// Message of the last record appended, empty for an empty chain.
  const char* what() const noexcept override;

  /// Location of the last record appended, empty for an empty chain.
  std::string location() const;

  /// All records, oldest first.
  const std::vector<Record>& records() const { return records_; }

  /// Line of the input text that caused the error, counted from 1; 0 where it is not known.
  int inputLine() const { return inputLine_; }
  void setInputLine(int line) { inputLine_ = line; }
  /// A copy that names the line of the input it comes from.
  Exception withInputLine(int line) const;

  /// Sends each record, oldest first, to the current message handler as an error with verbosity level 1 and
  /// the record's location as function id.
  void writeMsgStackToError() const;

 private:
  std::vector<Record> records_;
  int inputLine_ = 0;
};

}  // namespace TKL

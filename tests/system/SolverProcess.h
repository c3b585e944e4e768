#pragma once

#include <string>
#include <vector>

namespace VELMORA_TEST {

/// What one run of the program left behind.
struct ProcessResult {
  int exitCode = -1;  ///< -1 if the program was ended by a signal
  int signal = 0;     ///< the signal that ended it, else 0
  std::string out;
  std::string err;

  /// Whether the pieces of text stand in `err` in this order.
  bool errHasInOrder(const std::vector<std::string>& pieces) const;
};

/// Whether the pieces stand in the text in this order, without overlap.
bool hasInOrder(const std::string& text, const std::vector<std::string>& pieces);

/// Starts a program with standard input from /dev/null and waits for its end.
/// @param arguments  the program itself and its arguments
/// @param variables  "NAME=value" entries that replace those of this process
/// @param folder     working directory of the program, empty for that of this process
ProcessResult runProcess(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& variables = {}, const std::string& folder = "");

/// Starts the solver with these arguments, see `runProcess`.
ProcessResult runSolver(std::vector<std::string> arguments, const std::vector<std::string>& variables = {},
                        const std::string& folder = "");

}  // namespace VELMORA_TEST

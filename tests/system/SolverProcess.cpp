#include "system/SolverProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace VELMORA_TEST {

namespace {

/// Takes one output stream of the program. A file, not a pipe: it cannot fill up and block the program.
class CapturedStream {
 public:
  CapturedStream() : file_(std::tmpfile()) {}
  ~CapturedStream() { std::fclose(file_); }
  CapturedStream(const CapturedStream&) = delete;
  CapturedStream& operator=(const CapturedStream&) = delete;

  int descriptor() const { return fileno(file_); }

  std::string text() const {
    std::string content;
    char buffer[65536];
    std::rewind(file_);
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file_))
      content.append(buffer, count);
    return content;
  }

 private:
  std::FILE* file_;
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

std::string variableName(const std::string& entry) {
  return entry.substr(0, entry.find('=') + 1);
}

std::vector<std::string> environmentWith(const std::vector<std::string>& variables) {
  std::vector<std::string> result = variables;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    bool replaced = false;
    for (const std::string& variable : variables) replaced |= variableName(*entry) == variableName(variable);
    if (!replaced) result.emplace_back(*entry);
  }
  return result;
}

pid_t spawn(std::vector<std::string> arguments, std::vector<std::string> environment,
            const std::string& folder, int out, int err) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, err, STDERR_FILENO);
  if (!folder.empty()) posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  pid_t pid = -1;
  const int failure = posix_spawn(&pid, arguments[0].c_str(), &actions, nullptr, pointers(arguments).data(),
                                  pointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  return failure == 0 ? pid : -1;
}

}  // namespace

bool hasInOrder(const std::string& text, const std::vector<std::string>& pieces) {
  std::size_t position = 0;
  for (const std::string& piece : pieces) {
    position = text.find(piece, position);
    if (position == std::string::npos) return false;
    position += piece.size();
  }
  return true;
}

bool ProcessResult::errHasInOrder(const std::vector<std::string>& pieces) const {
  return hasInOrder(err, pieces);
}

ProcessResult runProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& variables,
                         const std::string& folder) {
  const CapturedStream out;
  const CapturedStream err;
  const pid_t pid = spawn(arguments, environmentWith(variables), folder, out.descriptor(), err.descriptor());
  ProcessResult result;
  if (pid < 0) {
    ADD_FAILURE() << "cannot start " << arguments[0];
    return result;
  }
  int status = 0;
  if (waitpid(pid, &status, 0) != pid) ADD_FAILURE() << "lost " << arguments[0];
  if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  result.out = out.text();
  result.err = err.text();
  return result;
}

ProcessResult runSolver(std::vector<std::string> arguments, const std::vector<std::string>& variables,
                        const std::string& folder) {
  arguments.insert(arguments.begin(), VELMORA_PROGRAM);
  return runProcess(arguments, variables, folder);
}

}  // namespace VELMORA_TEST

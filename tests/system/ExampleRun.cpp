#include "system/ExampleRun.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

std::vector<double> numbersOf(const std::string& text) {
  std::istringstream words(text);
  std::vector<double> result;
  for (double value; words >> value;) result.push_back(value);
  return result;
}

}  // namespace

ExampleRun::ExampleRun(const std::string& name, const Changes& changes) : name_(name) {
  std::ostringstream content;
  content << std::ifstream(std::string(VELMORA_SOURCE_DIR "/examples/") + name + "/" + name + ".vel").rdbuf();
  text_ = content.str();
  for (const auto& [from, to] : changes) {
    const std::size_t position = text_.find(from);
    EXPECT_NE(position, std::string::npos) << from;
    if (position != std::string::npos) text_.replace(position, from.size(), to);
  }
  const ProcessResult result = runSolver({"-x", "-v0", folder_.write(name + ".vel", text_)});
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
  EXPECT_EQ(result.err, "");
}

std::vector<double> ExampleRun::steps(const std::string& keyword) const {
  std::vector<double> result = numbersOf(text_.substr(text_.find(keyword + " = ") + keyword.size() + 3));
  for (double& step : result) step *= 1e-3;
  return result;
}

std::vector<std::vector<double>> ExampleRun::records(const std::string& file) const {
  std::istringstream content(folder_.read(name_ + ".results/" + file));
  std::vector<std::vector<double>> result;
  for (std::string line; std::getline(content, line);) {
    if (line.empty()) result.clear();  // the records stand behind the last empty line
    const std::vector<double> record = numbersOf(line);
    if (record.size() > 1) result.push_back(record);
  }
  return result;
}

std::vector<double> ExampleRun::lastRecord(const std::string& file) const {
  const auto all = records(file);
  if (!all.empty()) return all.back();
  ADD_FAILURE() << "no record in " << file;
  return {0.0, 0.0};
}

}  // namespace VELMORA_TEST

#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace TKL {

/// A directory of its own for one test, removed with all its files at the end.
class TempFolder {
 public:
  TempFolder() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string name =
        std::string(info->test_suite_name()) + "_" + info->name() + "_" + std::to_string(::getpid());
    path_ = std::filesystem::path(::testing::TempDir()) / name;
    std::filesystem::create_directories(path_);
  }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

  /// Writes a file and returns its full name.
  std::string write(const std::string& name, const std::string& content) const {
    std::ofstream(file(name), std::ios::binary) << content;
    return file(name);
  }

  std::string read(const std::string& name) const {
    std::ostringstream content;
    content << std::ifstream(file(name), std::ios::binary).rdbuf();
    return content.str();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace TKL

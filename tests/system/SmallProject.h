#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

/// A wall of five cells of 2 cm, 20 C inside it, 0 C on the left and adiabatic on the right. Its text is kept
/// by section, so that a test changes just what it is about. Materials and outputs lie in a folder of its
/// own.
class SmallProject {
 public:
  SmallProject();

  /// Replaces a piece of the section, which must be there.
  void replace(const std::string& section, const std::string& from, const std::string& to);
  void append(const std::string& section, const std::string& lines) { sections_.at(section) += lines; }
  void remove(const std::string& section) { sections_.erase(section); }

  std::string text() const;

  /// Writes the project as "wall.vel" and runs it.
  ProcessResult run(std::vector<std::string> options = {"-v1"}) const;
  /// Runs another text under the same name.
  ProcessResult runText(const std::string& text, std::vector<std::string> options = {"-v1"}) const;
  /// Number of the first line of the project file with exactly this text, counted from 1.
  int lineOf(const std::string& line) const;

  const TKL::TempFolder& folder() const { return folder_; }
  std::string projectFile() const { return folder_.file("wall.vel"); }
  std::string log() const { return folder_.read("wall.vel.output"); }
  std::string output(const std::string& name) const { return folder_.read("wall.results/" + name); }
  /// The times in an output file, as they stand in the first column of its records.
  std::vector<std::string> outputTimes(const std::string& name) const;

 private:
  TKL::TempFolder folder_;
  std::map<std::string, std::string> sections_;
};

/// A material file with all that heat conduction needs; `lines` stand in for the base parameters.
std::string materialFile(const std::string& storage, const std::string& transport);

}  // namespace VELMORA_TEST

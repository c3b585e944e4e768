#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/TempFolder.h"

namespace VELMORA_TEST {

/// An example, copied into a folder of its own and run there.
class ExampleRun {
 public:
  /// Pieces of the project text and what stands in their place.
  using Changes = std::vector<std::pair<std::string, std::string>>;

  explicit ExampleRun(const std::string& name, const Changes& changes = {});

  /// Widths [m] from the line of the project file, which has them in mm.
  std::vector<double> steps(const std::string& keyword) const;
  /// Time and values of each record of an output file.
  std::vector<std::vector<double>> records(const std::string& file) const;
  /// Time and values of the last record of an output file.
  std::vector<double> lastRecord(const std::string& file) const;
  double lastValue(const std::string& file) const { return lastRecord(file)[1]; }

 private:
  std::string name_;
  TKL::TempFolder folder_;
  std::string text_;
};

}  // namespace VELMORA_TEST

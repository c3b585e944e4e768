#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace TKL {

/// Content of an output file, read as docs/formats.md describes it and by nothing else: it shares no code
/// with the program.
struct ReadOutputFile {
  struct Material {
    int number = 0;
    long colour = 0;
    std::string name;
  };
  struct Place {
    long number = 0;
    double x = 0.0;
    double y = 0.0;
    int column = 0;
    int row = 0;
    long tag = 0;  ///< number of the material of an element; 1 for a vertical side
  };
  struct Record {
    double time = 0.0;
    std::vector<double> values;
  };

  bool binary = false;
  bool withGeometry = false;
  std::string type, projectFile, created, quantity, spaceType, timeType, valueUnit, timeUnit;
  std::vector<Material> materials;
  std::vector<double> columns, rows;
  double thickness = 0.0;
  std::vector<Place> elements, sides;
  std::vector<long> numbers;
  std::vector<Record> records;
  std::size_t rest = 0;         ///< bytes of an incomplete record at the end
  std::size_t paddingBits = 0;  ///< bits that are set where a binary file has zeros
};

/// Reads a file of either form.
/// @throws std::runtime_error for anything that is not as described
ReadOutputFile readOutputFile(const std::string& bytes);

}  // namespace TKL

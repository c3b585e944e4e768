#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "foundation/Color.h"
#include "foundation/Path.h"

namespace VELMORA {

/// The header of an output file: which quantity it holds, in which units, and, where the file holds single
/// elements or sides, the geometry of the whole construction. Tools that draw results read it; so its form
/// is a contract, down to the widths of the columns.
class Velmora5OutputData {
 public:
  enum output_type_t { OT_FIELD, OT_FLUX, OT_UNKNOWN };

  /// One material of the construction.
  struct MaterialRecord {
    std::int32_t id = 0;  ///< 1 for the first material
    TKL::Color color;
    std::string name;
  };

  /// Place of one element in the grid.
  struct ElementGeometryRecord {
    std::uint32_t number = 0;
    double x = 0.0;  ///< [m] centre
    double y = 0.0;  ///< [m] centre, from the bottom
    std::int32_t i = 0;
    std::int32_t j = 0;
    std::uint32_t materialId = 0;
  };

  /// Place of one side in its matrix of sides.
  struct SideGeometryRecord {
    std::uint32_t number = 0;
    double x = 0.0;  ///< [m] centre
    double y = 0.0;  ///< [m] centre, from the bottom
    std::int32_t i = 0;
    std::int32_t j = 0;
    bool vertical = false;  ///< flux runs along x; written as 1
  };

  std::int32_t outputType = OT_UNKNOWN;
  TKL::Path projectFile;
  std::string quantity;
  std::int32_t spaceType = 3;  ///< a `VelOutputFormat::space_type_t`
  std::int32_t timeType = 3;   ///< a `VelOutputFormat::time_type_t`
  std::string valueUnit;
  std::string timeUnit;
  bool binary = false;
  std::vector<MaterialRecord> materials;
  std::vector<double> gridX;  ///< [m] column widths
  std::vector<double> gridY;  ///< [m] row heights, from the top
  std::vector<double> gridZ;  ///< [m] thickness, 0 for a rotationally symmetric construction
  std::vector<ElementGeometryRecord> elementGeometry;
  std::vector<SideGeometryRecord> sideGeometry;
  std::vector<std::int32_t> numbers;  ///< of the elements or sides in this file

  /// Resets all fields to the defaults above.
  void clear() { *this = Velmora5OutputData(); }

  /// Writes the header in the form that `binary` asks for. False, with the reason in `errorText` and nothing
  /// written, for an output type that is not known.
  /// @throws std::runtime_error for geometry that is not complete
  bool writeHeader(std::ostream& stream, bool withGeometry, std::string& errorText) const;

  /// The tables of materials, grid, elements and sides as text.
  /// @throws std::runtime_error at the first table that has no data
  void writeGeometryData(std::ostream& stream) const;

  /// The same in binary form.
  /// @throws std::runtime_error at the first table that has no data
  void writeBinaryGeometryData(std::ostream& stream) const;

 private:
  void writeAsciiHeader(std::ostream& stream, bool withGeometry) const;
  void writeBinaryHeader(std::ostream& stream, bool withGeometry) const;
  void checkMaterials(const char* functionId) const;
  void checkGrid(const char* functionId) const;
  void checkElements(const char* functionId) const;
  void checkSides(const char* functionId) const;
};

}  // namespace VELMORA

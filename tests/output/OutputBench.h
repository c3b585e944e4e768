#pragma once

#include <array>
#include <string>
#include <vector>

#include "foundation/Unit.h"
#include "material/Material.h"
#include "output/OutputConstruction.h"
#include "output/OutputFiles.h"
#include "support/TempFolder.h"

namespace VELMORA {

/// A construction of two columns (0.1 m brick, 0.3 m wool) and two rows (0.2 m above 0.4 m), 2 m thick, with
/// all its sides:
///
///        H0    H1                volumes [m3]          areas [m2]
///     V6 e0 V7 e1 V8   0.2 m     e0 0.04  e1 0.12      V6-V8   0.4
///        H2    H3                e2 0.08  e3 0.24      V9-V11  0.8
///     V9 e2 V10 e3 V11 0.4 m                           H0 H2 H4  0.2
///        H4    H5                                      H1 H3 H5  0.6
class OutputBench {
 public:
  OutputBench() {
    brick.identification.name.setEncodedString("de:Ziegel|en:Brick");
    brick.identification.colour = {.red = 1, .green = 2, .blue = 3};
    wool.identification.name.setEncodedString("Wool");
    wool.identification.colour = {.red = 255, .green = 0, .blue = 0};
    disc.dx.data = {0.1, 0.3};
    disc.dy.data = {0.2, 0.4};
    disc.dz.data = {2.0};
    makeElements();
    makeSides();
    construction.projectFile = "somewhere/wall.vel";
    construction.outputDir = folder.path().string();
    construction.balanceEquations.set(VelInit::B_ENERGY);
    construction.disc = &disc;
    construction.materials = materials;
    construction.elements = elements;
    construction.sides = sides;
  }
  OutputBench(const OutputBench&) = delete;
  OutputBench& operator=(const OutputBench&) = delete;

  static constexpr std::size_t N_SIDES = 12;

  /// A file with hourly times in h on all elements (field) or the given sides (flux).
  VelOutputFile field(const VelOutputFormat& format, const std::vector<std::size_t>& numbers) {
    VelOutputFile file = newFile(format);
    for (const std::size_t number : numbers) file.elements.push_back(&elements[number]);
    return file;
  }
  VelOutputFile flux(const VelOutputFormat& format, const std::vector<std::size_t>& numbers) {
    VelOutputFile file = newFile(format);
    for (const std::size_t number : numbers) file.sides.push_back(&sides[number]);
    return file;
  }

  static VelOutputFormat temperature(VelOutputFormat::space_type_t space = VelOutputFormat::S_SINGLE) {
    VelOutputFormat format;
    format.name = "temperature";
    format.type = VelOutputFormat::T_FIELD;
    format.quantity = VelOutputFormat::Q_TEMPER;
    format.spaceType = space;
    format.timeType = VelOutputFormat::M_NONE;
    format.timeUnit.set("h");
    format.valueUnit.set("C");
    return format;
  }
  static VelOutputFormat heatFlux(VelOutputFormat::space_type_t space = VelOutputFormat::S_SINGLE,
                                  VelOutputFormat::time_type_t time = VelOutputFormat::M_NONE) {
    VelOutputFormat format = temperature(space);
    format.name = "heat flux";
    format.type = VelOutputFormat::T_FLUX;
    format.quantity = VelOutputFormat::X_HEATFLUX;
    format.timeType = time;
    format.valueUnit.set("W/m2");
    return format;
  }

  TKL::TempFolder folder;
  MM::Material brick;
  MM::Material wool;
  std::array<const MM::Material*, 2> materials{&brick, &wool};
  VelDisc disc;
  std::vector<Element> elements;
  std::vector<Side> sides;
  OutputConstruction construction;
  std::vector<VelOutputGrid> grids{VelOutputGrid()};

 private:
  VelOutputFile newFile(const VelOutputFormat& format) {
    VelOutputFile file;
    file.name = "result.out";
    file.path = folder.file("result.out");
    file.format = &format;
    file.grid = &grids.front();
    return file;
  }

  void makeElements() {
    const std::array<double, 2> x{0.05, 0.25};
    const std::array<double, 2> y{0.5, 0.2};
    for (int j = 0; j < 2; ++j) {
      for (int i = 0; i < 2; ++i) {
        const auto column = static_cast<std::size_t>(i);
        const auto row = static_cast<std::size_t>(j);
        Element element;
        element.i = i;
        element.j = j;
        element.number = i + 2 * j;
        element.material = materials[column];
        element.x = x[column];
        element.y = y[row];
        element.volume = disc.dx.data[column] * disc.dy.data[row] * 2.0;
        elements.push_back(element);
      }
    }
  }

  Element* elementAt(int i, int j) {
    if (i < 0 || i > 1 || j < 0 || j > 1) return nullptr;
    return &elements[static_cast<std::size_t>(i + 2 * j)];
  }

  void addSide(int i, int j, bool horizontal, double x, double y, double area) {
    Side side;
    side.i = i;
    side.j = j;
    side.number = static_cast<int>(sides.size());
    side.horizontal = horizontal;
    side.x = x;
    side.y = y;
    side.area = area;
    side.elementLeft = horizontal ? elementAt(i, j - 1) : elementAt(i - 1, j);
    side.elementRight = elementAt(i, j);
    sides.push_back(side);
  }

  void makeSides() {
    const std::array<double, 3> yEdges{0.6, 0.4, 0.0};
    for (int j = 0; j < 3; ++j) {
      addSide(0, j, true, 0.05, yEdges[static_cast<std::size_t>(j)], 0.2);
      addSide(1, j, true, 0.25, yEdges[static_cast<std::size_t>(j)], 0.6);
    }
    const std::array<double, 3> xEdges{0.0, 0.1, 0.4};
    for (int j = 0; j < 2; ++j) {
      for (int i = 0; i < 3; ++i) {
        addSide(i, j, false, xEdges[static_cast<std::size_t>(i)], j == 0 ? 0.5 : 0.2, j == 0 ? 0.4 : 0.8);
      }
    }
    for (Side& side : sides) {
      if (side.elementLeft)
        (side.horizontal ? side.elementLeft->sideBottom : side.elementLeft->sideRight) = &side;
      if (side.elementRight)
        (side.horizontal ? side.elementRight->sideTop : side.elementRight->sideLeft) = &side;
    }
  }
};

/// The text with the time of creation, which no test can know, cut out. A line without the form of such a
/// time stays as it is.
inline std::string withoutCreationTime(std::string text) {
  const std::string key = "# CREATED       = ";
  const std::size_t start = text.find(key);
  if (start == std::string::npos) return text;
  const std::size_t value = start + key.size();
  const std::size_t end = text.find('\n', value);
  // "Mon Jan  5 12:30:00 2015"
  if (end == std::string::npos || end - value != 24 || text[value + 13] != ':' || text[value + 16] != ':') {
    return text;
  }
  return text.erase(value, end - value);
}

}  // namespace VELMORA

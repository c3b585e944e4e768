#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "material/Material.h"
#include "project/VelFieldCond.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {

/// A grid drawn with one letter for each cell: "B" brick, "a" air, "." void. Column i is (i + 1) cm wide, row
/// j is (j + 1) dm high; y counts from the bottom.
class ModelBench : public ::testing::Test {
 protected:
  ModelBench() { air.identification.flags = MM::MaterialIdentification::F_AIR; }

  void draw(const std::vector<std::string>& rows) {
    indexMatrix = IndexMatrix(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()));
    elements.clear();
    double y = 0.0;
    for (std::size_t j = 0; j < rows.size(); ++j) y += height(j);
    for (std::size_t j = 0; j < rows.size(); ++j) {
      double x = 0.0;
      y -= height(j) / 2;
      for (std::size_t i = 0; i < rows[j].size(); ++i) {
        x += width(i) / 2;
        if (rows[j][i] != '.') add(static_cast<int>(i), static_cast<int>(j), x, y, rows[j][i] == 'a');
        x += width(i) / 2;
      }
      y -= height(j) / 2;
    }
    T.assign(elements.size(), 293.15);
  }

  static double width(std::size_t i) { return 0.01 * static_cast<double>(i + 1); }
  static double height(std::size_t j) { return 0.1 * static_cast<double>(j + 1); }
  int number(int i, int j) const { return indexMatrix.at(i, j); }
  double& temperature(int i, int j) { return T[static_cast<std::size_t>(number(i, j))]; }
  VelSelection::Range all() const { return {0, 0, indexMatrix.columns() - 1, indexMatrix.rows() - 1}; }

  void set(VelFieldCond::para_t index, double value, const std::string& unit) {
    condition.para[index].set("X", value, unit);
  }

  MM::Material brick, air;
  IndexMatrix indexMatrix;
  std::vector<Element> elements;
  std::vector<double> T;
  VelFieldCond condition;
  TKL::MessageCapture capture;

 private:
  void add(int i, int j, double x, double y, bool isAir) {
    Element& element = elements.emplace_back();
    element.i = i;
    element.j = j;
    element.number = static_cast<int>(elements.size()) - 1;
    element.x = x;
    element.y = y;
    element.dx = width(static_cast<std::size_t>(i));
    element.dy = height(static_cast<std::size_t>(j));
    element.material = isAir ? &air : &brick;
    indexMatrix.set(i, j, element.number);
  }
};

}  // namespace VELMORA

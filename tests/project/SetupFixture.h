#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "foundation/Path.h"
#include "project/CalculationData.h"
#include "project/GridBuilder.h"
#include "project/VelProject.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {

/// A project in memory, filled with one material "Brick", and what its set-up gives. Its output directory
/// goes with it.
class SetupFixture {
 public:
  SetupFixture(std::vector<double> dx, std::vector<double> dy,
               VelDisc::geometry_t geometry = VelDisc::G_PLANE2D) {
    const int right = static_cast<int>(dx.size()) - 1;
    const int bottom = static_cast<int>(dy.size()) - 1;
    project.m_disc = makeDisc(std::move(dx), std::move(dy), geometry);
    project.m_materials.materials.push_back(makeMaterial("Brick"));
    assign(VelSelection::A_MATERIAL, "Brick", {0, 0, right, bottom});
    static int counter = 0;
    folder = TKL::Path(::testing::TempDir()) /
             ("setup_" + std::to_string(getpid()) + "_" + std::to_string(++counter));
    project.m_outputs.outputFolder = folder;
  }
  ~SetupFixture() {
    if (folder.exists()) TKL::Path::remove(folder);
  }
  SetupFixture(const SetupFixture&) = delete;
  SetupFixture& operator=(const SetupFixture&) = delete;

  void assign(VelSelection::assignment_t kind, const std::string& name, VelSelection::Range range,
              std::vector<VelSelection::location_t> locations = {}) {
    project.m_assignments.selections.push_back(makeSelection(kind, name, range, std::move(locations)));
  }

  void run() { project.setup_calculation(data); }

  /// What the set-up throws, a standard error without a tag.
  TKL::Thrown thrown() {
    try {
      return TKL::thrownBy([&] { run(); });
    } catch (const std::exception& error) {
      return {error.what(), "standard error"};
    }
  }

  /// The element of a cell, null for a void.
  const Element* elementAt(int i, int j) const {
    for (const Element& element : data.elements) {
      if (element.i == i && element.j == j) return &element;
    }
    return nullptr;
  }

  TKL::MessageCapture capture;
  VelProject project;
  CalculationData data;
  TKL::Path folder;
};

inline const char* const SETUP_TAG = "[VelProject::setup_calculation]";

}  // namespace VELMORA

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <numeric>
#include <random>

#include "project/SetupFixture.h"

using namespace VELMORA;

namespace {

constexpr int GRIDS = 400;
constexpr double PI_AREA = 3.14159265359;

/// A random grid with random voids and random boundary conditions, and what must be true of it.
class RandomGrid {
 public:
  explicit RandomGrid(unsigned int seed) : random_(seed) {
    const int nx = pick(1, 9), ny = pick(nx == 1 ? 2 : 1, 9);
    for (int i = 0; i < nx; ++i) dx.push_back(0.001 * pick(1, 500));
    for (int j = 0; j < ny; ++j) dy.push_back(0.001 * pick(1, 500));
    geometry = pick(0, 1) == 0 ? VelDisc::G_PLANE2D : VelDisc::G_RSYM;
    dz = 0.1 * pick(1, 30);
    used.assign(static_cast<std::size_t>(nx * ny), true);
  }

  int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  int nx() const { return static_cast<int>(dx.size()); }
  int ny() const { return static_cast<int>(dy.size()); }
  bool isUsed(int i, int j) const {
    return i >= 0 && i < nx() && j >= 0 && j < ny() && used[static_cast<std::size_t>(j * nx() + i)];
  }

  VelSelection::Range pickRange() {
    const int left = pick(0, nx() - 1), top = pick(0, ny() - 1);
    return {left, top, pick(left, nx() - 1), pick(top, ny() - 1)};
  }

  /// Cuts holes and fills some of them again, in the project and in `used` alike.
  void cutHoles(SetupFixture& setup) {
    for (int count = pick(0, 5); count > 0; --count) {
      const bool hole = pick(0, 3) > 0;
      const VelSelection::Range range = pickRange();
      setup.assign(VelSelection::A_MATERIAL, hole ? "VOID" : "Brick", range);
      for (int j = range.top; j <= range.bottom; ++j) {
        for (int i = range.left; i <= range.right; ++i) used[static_cast<std::size_t>(j * nx() + i)] = !hole;
      }
    }
  }

  void hangConditions(SetupFixture& setup) {
    setup.project.m_conditions.boundaryConds.push_back(named<VelBoundaryCond>("b"));
    for (int count = pick(0, 6); count > 0; --count) {
      const auto location =
          static_cast<VelSelection::location_t>(pick(VelSelection::L_LEFT, VelSelection::L_BOTTOM));
      hung.push_back({pickRange(), location});
      setup.assign(VelSelection::A_BOUNDARYCOND, "b", hung.back().range, {location});
    }
  }

  /// Whether some assignment hangs a condition at this side of the cell.
  bool hasCondition(int i, int j, VelSelection::location_t location) const {
    return std::any_of(hung.begin(), hung.end(), [&](const Hung& h) {
      if (h.location != location) return false;
      const bool inRows = j >= h.range.top && j <= h.range.bottom;
      const bool inColumns = i >= h.range.left && i <= h.range.right;
      switch (location) {
        case VelSelection::L_LEFT:
          return inRows && i == h.range.left;
        case VelSelection::L_RIGHT:
          return inRows && i == h.range.right;
        case VelSelection::L_TOP:
          return inColumns && j == h.range.top;
        default:
          return inColumns && j == h.range.bottom;
      }
    });
  }

  long usedCells() const { return std::count(used.begin(), used.end(), true); }

  struct Hung {
    VelSelection::Range range;
    VelSelection::location_t location;
  };

  std::vector<double> dx, dy;
  double dz = 1.0;
  std::vector<Hung> hung;
  VelDisc::geometry_t geometry = VelDisc::G_PLANE2D;
  std::vector<bool> used;

 private:
  std::mt19937 random_;
};

/// Runs `check(grid, setup)` for all random grids that have at least two elements.
template <class Check>
void forEachGrid(Check check) {
  int checked = 0;
  for (unsigned int seed = 1; seed <= GRIDS; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomGrid grid(seed);
    SetupFixture setup(grid.dx, grid.dy, grid.geometry);
    setup.project.m_disc.dz.data = {grid.dz};
    grid.cutHoles(setup);
    grid.hangConditions(setup);
    if (grid.usedCells() < 2) continue;
    setup.run();
    check(grid, setup);
    ++checked;
    if (::testing::Test::HasFailure()) return;
  }
  EXPECT_GT(checked, GRIDS / 2);
}

int neighbourPairs(const RandomGrid& grid) {
  int pairs = 0;
  for (int j = 0; j < grid.ny(); ++j) {
    for (int i = 0; i < grid.nx(); ++i) {
      if (!grid.isUsed(i, j)) continue;
      pairs += grid.isUsed(i + 1, j) ? 1 : 0;
      pairs += grid.isUsed(i, j + 1) ? 1 : 0;
    }
  }
  return pairs;
}

double sum(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0);
}

}  // namespace

TEST(RandomGrids, elements_areTheUsedCells) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    EXPECT_EQ(static_cast<long>(setup.data.elements.size()), grid.usedCells());
    for (std::size_t k = 0; k < setup.data.elements.size(); ++k) {
      const Element& element = setup.data.elements[k];
      EXPECT_EQ(element.number, static_cast<int>(k));
      EXPECT_TRUE(grid.isUsed(element.i, element.j));
      EXPECT_EQ(element.material, setup.data.materials.at(0));
    }
  });
}

TEST(RandomGrids, everyPairOfNeighbours_sharesOneSide) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    int inner = 0;
    for (const Side& side : setup.data.sides) {
      if (side.elementLeft == nullptr || side.elementRight == nullptr) continue;
      ++inner;
      EXPECT_EQ(side.elementRight->i - side.elementLeft->i, side.horizontal ? 0 : 1);
      EXPECT_EQ(side.elementRight->j - side.elementLeft->j, side.horizontal ? 1 : 0);
    }
    EXPECT_EQ(inner, neighbourPairs(grid));
  });
}

TEST(RandomGrids, outerSides_haveOneElementAndACondition) {
  forEachGrid([](const RandomGrid&, const SetupFixture& setup) {
    for (const Side& side : setup.data.sides) {
      EXPECT_TRUE(side.elementLeft != nullptr || side.elementRight != nullptr);
      if (side.elementLeft != nullptr && side.elementRight != nullptr) continue;
      EXPECT_FALSE(side.boundaryConds.empty());
    }
  });
}

TEST(RandomGrids, linksOfElementsAndSides_agree) {
  forEachGrid([](const RandomGrid&, const SetupFixture& setup) {
    std::size_t links = 0;
    const auto expectLink = [&](const Side* side, const Element* neighbour, const Element& element,
                                bool horizontal) {
      if (side == nullptr) return;
      ++links;
      EXPECT_EQ(neighbour, &element);
      EXPECT_EQ(side->horizontal, horizontal);
      EXPECT_EQ(side, &setup.data.sides[static_cast<std::size_t>(side->number)]);
    };
    for (const Element& e : setup.data.elements) {
      expectLink(e.sideLeft, e.sideLeft ? e.sideLeft->elementRight : nullptr, e, false);
      expectLink(e.sideRight, e.sideRight ? e.sideRight->elementLeft : nullptr, e, false);
      expectLink(e.sideTop, e.sideTop ? e.sideTop->elementRight : nullptr, e, true);
      expectLink(e.sideBottom, e.sideBottom ? e.sideBottom->elementLeft : nullptr, e, true);
    }
    std::size_t ends = 0;
    for (const Side& side : setup.data.sides) {
      ends += side.elementLeft != nullptr ? 1 : 0;
      ends += side.elementRight != nullptr ? 1 : 0;
    }
    EXPECT_EQ(links, ends);
  });
}

TEST(RandomGrids, bandWidth_boundsTheDistanceOfNeighbours) {
  forEachGrid([](const RandomGrid&, const SetupFixture& setup) {
    for (const Side& side : setup.data.sides) {
      if (side.elementLeft == nullptr || side.elementRight == nullptr) continue;
      EXPECT_LE(std::abs(side.elementLeft->number - side.elementRight->number), setup.data.bandWidth);
    }
  });
}

TEST(RandomGrids, bandWidth_isTheCellCountOfTheShortSide) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    EXPECT_LE(setup.data.bandWidth, std::min(grid.nx(), grid.ny()));
  });
}

TEST(RandomGrids, sidesOfAFullRow_haveTheirTrueAreas) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    const double radius = sum(grid.dx);
    const bool rsym = grid.geometry == VelDisc::G_RSYM;
    std::vector<double> areas(static_cast<std::size_t>(grid.ny() + 1), 0.0);
    std::vector<int> counts(areas.size(), 0);
    for (const Side& side : setup.data.sides) {
      if (!side.horizontal) continue;
      areas[static_cast<std::size_t>(side.j)] += side.area;
      ++counts[static_cast<std::size_t>(side.j)];
    }
    for (std::size_t j = 0; j < areas.size(); ++j) {
      if (counts[j] == grid.nx()) {
        EXPECT_NEAR(areas[j], rsym ? radius * radius * PI_AREA : radius * grid.dz,
                    1e-12 * (1.0 + radius * radius));
      }
    }
  });
}

TEST(RandomGrids, sidesOfAFullColumn_haveTheirTrueAreas) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    const double height = sum(grid.dy);
    std::vector<double> areas(static_cast<std::size_t>(grid.nx() + 1), 0.0);
    std::vector<int> counts(areas.size(), 0);
    for (const Side& side : setup.data.sides) {
      if (side.horizontal) continue;
      areas[static_cast<std::size_t>(side.i)] += side.area;
      ++counts[static_cast<std::size_t>(side.i)];
    }
    double radius = 0.0;
    for (std::size_t i = 0; i < areas.size(); ++i) {
      const double expected =
          grid.geometry == VelDisc::G_RSYM ? 2.0 * PI_AREA * radius * height : grid.dz * height;
      if (counts[i] == grid.ny()) {
        EXPECT_NEAR(areas[i], expected, 1e-12 * (1.0 + expected));
      }
      if (i < grid.dx.size()) radius += grid.dx[i];
    }
  });
}

TEST(RandomGrids, oppositeSidesOfAPlaneElement_haveTheSameAreaAndSpanItsVolume) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    if (grid.geometry == VelDisc::G_RSYM) return;
    for (const Element& e : setup.data.elements) {
      if (e.sideLeft && e.sideRight) {
        EXPECT_DOUBLE_EQ(e.sideLeft->area, e.sideRight->area);
      }
      if (e.sideTop && e.sideBottom) {
        EXPECT_DOUBLE_EQ(e.sideTop->area, e.sideBottom->area);
      }
      if (e.sideLeft) {
        EXPECT_NEAR(e.sideLeft->area * e.dx, e.volume, 1e-14 * (1.0 + e.volume));
      }
      if (e.sideTop) {
        EXPECT_NEAR(e.sideTop->area * e.dy, e.volume, 1e-14 * (1.0 + e.volume));
      }
    }
  });
}

TEST(RandomGrids, outerSidesWithACondition_areKeptAndOthersAreNot) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    for (const Element& e : setup.data.elements) {
      // a side also gets the conditions that its neighbouring cell, used or not, has at it
      const bool left = grid.isUsed(e.i - 1, e.j) || grid.hasCondition(e.i, e.j, VelSelection::L_LEFT) ||
                        grid.hasCondition(e.i - 1, e.j, VelSelection::L_RIGHT);
      const bool right = grid.isUsed(e.i + 1, e.j) || grid.hasCondition(e.i, e.j, VelSelection::L_RIGHT) ||
                         grid.hasCondition(e.i + 1, e.j, VelSelection::L_LEFT);
      const bool top = grid.isUsed(e.i, e.j - 1) || grid.hasCondition(e.i, e.j, VelSelection::L_TOP) ||
                       grid.hasCondition(e.i, e.j - 1, VelSelection::L_BOTTOM);
      const bool bottom = grid.isUsed(e.i, e.j + 1) || grid.hasCondition(e.i, e.j, VelSelection::L_BOTTOM) ||
                          grid.hasCondition(e.i, e.j + 1, VelSelection::L_TOP);
      EXPECT_EQ(e.sideLeft != nullptr, left);
      EXPECT_EQ(e.sideRight != nullptr, right);
      EXPECT_EQ(e.sideTop != nullptr, top);
      EXPECT_EQ(e.sideBottom != nullptr, bottom);
    }
  });
}

TEST(RandomGrids, links_areNullOrLeadBack) {
  forEachGrid([](const RandomGrid&, const SetupFixture& setup) {
    const auto other = [](const Side* side, const Element& element) {
      return side->elementLeft == &element ? side->elementRight : side->elementLeft;
    };
    for (const Element& e : setup.data.elements) {
      if (e.sideRight && other(e.sideRight, e)) {
        EXPECT_EQ(other(e.sideRight, e)->sideLeft, e.sideRight);
      }
      if (e.sideBottom && other(e.sideBottom, e)) {
        EXPECT_EQ(other(e.sideBottom, e)->sideTop, e.sideBottom);
      }
    }
  });
}

TEST(RandomGrids, volumes_addUp) {
  forEachGrid([](const RandomGrid& grid, const SetupFixture& setup) {
    double volume = 0.0, expected = 0.0;
    for (const Element& element : setup.data.elements) volume += element.volume;
    for (int j = 0; j < grid.ny(); ++j) {
      // the used cells of a row stand side by side from the axis on, whatever gaps lie between
      double width = 0.0;
      for (int i = 0; i < grid.nx(); ++i)
        width += grid.isUsed(i, j) ? grid.dx[static_cast<std::size_t>(i)] : 0.0;
      const double section =
          grid.geometry == VelDisc::G_RSYM ? width * width * std::numbers::pi : width * grid.dz;
      expected += section * grid.dy[static_cast<std::size_t>(j)];
    }
    EXPECT_NEAR(volume, expected, 1e-12 * (1.0 + expected));
  });
}

TEST(RandomGrids, weightsOfInnerSides_addUpToOne) {
  forEachGrid([](const RandomGrid&, const SetupFixture& setup) {
    for (const Side& side : setup.data.sides) {
      if (side.elementLeft == nullptr || side.elementRight == nullptr) continue;
      EXPECT_NEAR(side.weightLeft + side.weightRight, 1.0, 1e-15);
      const double left = side.horizontal ? side.elementLeft->dy : side.elementLeft->dx;
      EXPECT_NEAR(side.weightLeft, 0.5 * left * side.invDistance, 1e-15);
    }
  });
}

TEST(RandomGrids, y_isTheSameForElementsAndTheirSides) {
  forEachGrid([](const RandomGrid&, const SetupFixture& setup) {
    for (const Side& side : setup.data.sides) {
      const Element& element = side.elementLeft != nullptr ? *side.elementLeft : *side.elementRight;
      const double half = !side.horizontal ? 0.0 : element.dy / 2.0;
      EXPECT_NEAR(side.y, side.elementLeft != nullptr ? element.y - half : element.y + half, 1e-12);
    }
  });
}

TEST(RandomGrids, generator_makesVoidsBothGeometriesAndOuterSides) {
  int withVoids = 0, rotational = 0, withOuterSides = 0;
  forEachGrid([&](const RandomGrid& grid, const SetupFixture& setup) {
    withOuterSides += static_cast<int>(setup.data.sides.size()) > neighbourPairs(grid) ? 1 : 0;
    withVoids += grid.usedCells() < grid.nx() * grid.ny() ? 1 : 0;
    rotational += grid.geometry == VelDisc::G_RSYM ? 1 : 0;
  });
  EXPECT_GT(withVoids, GRIDS / 10);
  EXPECT_GT(rotational, GRIDS / 10);
  EXPECT_GT(withOuterSides, GRIDS / 10);
}

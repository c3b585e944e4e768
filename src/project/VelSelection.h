#pragma once

#include <bitset>
#include <string>

#include "keywords/SectionText.h"

namespace VELMORA {

/// One assignment: a name that is hung on a rectangle of cells, on its edges, or on the sides of its cells.
class VelSelection {
 public:
  /// Indices of the keywords of "VelSelection::assignment_t"; `NUM_A` means not set.
  enum assignment_t {
    A_MATERIAL,
    A_BOUNDARYCOND,
    A_INITIALCOND,
    A_FIELDCOND,
    A_CONTACTCOND,
    A_FIELDOUTPUT,
    A_FLUXOUTPUT,
    A_INTERFACE,
    NUM_A
  };

  /// Indices of the keywords of "VelSelection::location_t".
  enum location_t { L_ELEMENT, L_LEFT, L_RIGHT, L_TOP, L_BOTTOM, NUM_L };

  /// Inclusive limits in columns and rows, row 0 being the top row. A selection without a range keeps the
  /// empty one, which no grid accepts.
  struct Range {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;
  };

  assignment_t kind = NUM_A;
  std::bitset<NUM_L> location;  ///< the edges of the rectangle, or the sides of its cells, that are meant
  Range range;
  int nameLine = 0;           ///< line of the name in the project file, 0 where it is not known
  int rangeLine = 0;          ///< line of the range
  std::string name;           ///< id name of what is assigned, or "VOID" for a material
  std::string conditionType;  ///< kept as read

  /// Reads the lines of one `SELECTION` block.
  /// @throws TKL::Exception "Error reading selection range from string '%1'!", an unknown keyword of a
  /// list, or a line that is no keyword line
  void read(const SectionText& text);

  bool isOutput() const { return kind == A_FIELDOUTPUT || kind == A_FLUXOUTPUT; }

  /// True for a material assignment that cuts its rectangle out of the construction.
  bool isVoid() const { return kind == A_MATERIAL && name == "VOID"; }
};

}  // namespace VELMORA

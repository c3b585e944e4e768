#pragma once

#include <string>
#include <vector>

#include "foundation/Path.h"
#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "grid/Side.h"
#include "keywords/SectionText.h"
#include "project/VelAssignments.h"
#include "project/VelOutputFormat.h"
#include "project/VelOutputGrid.h"

namespace VELMORA {

/// One output file: a format and a grid of times under a file name. The assignments that bear its name
/// give the cells or sides that it holds.
class VelOutputFile {
 public:
  std::string name;  ///< the file name, and the name that assignments refer to
  std::string formatName;
  std::string gridName;
  int formatLine = 0;  ///< line of the format's name in the project file, 0 where it is not known
  int gridLine = 0;    ///< line of the grid's name
  TKL::Path path;      ///< full path of the file
  std::string species;
  std::vector<Element*> elements;           ///< by number, no doubles; not owned
  std::vector<Side*> sides;                 ///< by number, no doubles; not owned
  const VelOutputFormat* format = nullptr;  ///< not owned
  VelOutputGrid* grid = nullptr;            ///< not owned

  /// Reads the lines of one `OUTPUT_FILE` block.
  /// @throws TKL::Exception for a line that is no keyword line
  void read(const SectionText& text);

  /// Collects the elements (format of type `FIELD`), or the sides of the chosen locations, of all
  /// rectangles that are assigned under the name of this file. Needs `format`.
  /// @throws TKL::Exception "Error while assigning outputs!"
  void assignRanges(std::vector<Element>& allElements, const IndexMatrix& indexMatrix,
                    const VelAssignments& assignments);
  /// The same with the output assignments of this file's name picked out already.
  void assignRanges(std::vector<Element>& allElements, const IndexMatrix& indexMatrix,
                    const std::vector<const VelSelection*>& selections);
};

}  // namespace VELMORA

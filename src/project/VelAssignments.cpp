#include "project/VelAssignments.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "project/TextBlocks.h"

namespace VELMORA {

void VelAssignments::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelAssignments::read]";
  for (const SectionText& block : splitBlocks(text, "SELECTION", FUNC_ID)) {
    VelSelection selection;
    selection.read(block);
    selections.push_back(std::move(selection));
  }
}

void check_ranges(int nx, int ny, const VelAssignments& assignments) {
  const char* const FUNC_ID = "[check_ranges]";
  for (const VelSelection& selection : assignments.selections) {
    const VelSelection::Range& r = selection.range;
    if (r.right >= r.left && r.right < nx && r.bottom >= r.top && r.bottom < ny) continue;
    throw TKL::Exception(TKL::FormatString("Invalid range in assignment, range was: %1 %2 %3 %4!")
                             .arg(r.left)
                             .arg(r.top)
                             .arg(r.right)
                             .arg(r.bottom),
                         FUNC_ID)
        .withInputLine(selection.rangeLine);
  }
}

}  // namespace VELMORA

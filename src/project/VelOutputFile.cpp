#include "project/VelOutputFile.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/Message.h"

namespace VELMORA {

namespace {

template <class T>
void sortByNumber(std::vector<T*>& objects) {
  std::sort(objects.begin(), objects.end(), [](const T* a, const T* b) { return a->number < b->number; });
  objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
}

void addSides(const VelSelection& selection, const Element& element, std::vector<Side*>& sides) {
  const auto add = [&](VelSelection::location_t location, Side* side) {
    if (selection.location.test(location) && side != nullptr) sides.push_back(side);
  };
  add(VelSelection::L_LEFT, element.sideLeft);
  add(VelSelection::L_RIGHT, element.sideRight);
  add(VelSelection::L_TOP, element.sideTop);
  add(VelSelection::L_BOTTOM, element.sideBottom);
}

}  // namespace

void VelOutputFile::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputFile::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "NAME") {
      name = line.value;
    } else if (line.keyword == "OUTPUT_FORMAT") {
      formatName = line.value;
      formatLine = line.line->number;
    } else if (line.keyword == "OUTPUT_GRID") {
      gridName = line.value;
      gridLine = line.line->number;
    } else if (line.keyword == "SPECIES") {
      species = line.value;
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

void VelOutputFile::assignRanges(std::vector<Element>& allElements, const IndexMatrix& indexMatrix,
                                 const VelAssignments& assignments) {
  std::vector<const VelSelection*> selections;
  for (const VelSelection& selection : assignments.selections) {
    if (selection.isOutput() && selection.name == name) selections.push_back(&selection);
  }
  assignRanges(allElements, indexMatrix, selections);
}

void VelOutputFile::assignRanges(std::vector<Element>& allElements, const IndexMatrix& indexMatrix,
                                 const std::vector<const VelSelection*>& selections) {
  const char* const FUNC_ID = "[VelOutputFile::assignRanges]";
  const TKL::Exception failure("Error while assigning outputs!", FUNC_ID);
  try {
    if (format == nullptr) throw TKL::Exception("Output file '" + name + "' has no format!", FUNC_ID);
    elements.clear();
    sides.clear();
    for (const VelSelection* selection : selections) {
      const VelSelection::Range& r = selection->range;
      indexMatrix.forEachUsedCell(r.left, r.top, r.right, r.bottom, [&](int, int, int number) {
        Element& element = allElements.at(static_cast<std::size_t>(number));
        if (format->type == VelOutputFormat::T_FIELD) {
          elements.push_back(&element);
        } else {
          addSides(*selection, element, sides);
        }
      });
    }
    sortByNumber(elements);
    sortByNumber(sides);
  } catch (const std::exception& cause) {
    TKL::message(std::string(cause.what()), TKL::MSG_ERROR, FUNC_ID, -1);
    throw failure;
  }
}

}  // namespace VELMORA

#include "project/AssignElements.h"

#include <stdexcept>
#include <string>

#include "project/LongWaveGap.h"
#include "project/MaterialIndex.h"
#include "project/NameIndex.h"

namespace VELMORA {

namespace {

/// Calls `visit(selection, position)` for each assignment of a kind, with the position of its object.
/// `what` names the kind in the failure text.
template <class Index, class Visit>
void forEachAssignment(const VelAssignments& assignments, VelSelection::assignment_t kind, const Index& index,
                       const std::string& what, Visit visit) {
  for (const VelSelection& selection : assignments.selections) {
    if (selection.kind != kind) continue;
    const std::size_t position = selection.isVoid() ? NameIndex::NONE : index.find(selection.name);
    if (position == NameIndex::NONE && !selection.isVoid()) {
      throw std::runtime_error(what + " '" + selection.name + "' is not defined!");
    }
    visit(selection, position);
  }
}

template <class Visit>
void forEachElement(const VelSelection& selection, const IndexMatrix& indexMatrix,
                    std::vector<Element>& elements, Visit visit) {
  const VelSelection::Range& r = selection.range;
  indexMatrix.forEachUsedCell(r.left, r.top, r.right, r.bottom, [&](int, int, int number) {
    visit(elements.at(static_cast<std::size_t>(number)));
  });
}

void prepareByType(VelFieldCond& fieldCond, const VelSelection& selection, const IndexMatrix& indexMatrix,
                   std::vector<Element>& elements) {
  if (fieldCond.condition == VelFieldCond::C_LW_RADIATION)
    prepareLongWaveGap(fieldCond, selection, indexMatrix, elements);
  else if (fieldCond.hasModel())
    fieldCond.modelRanges.push_back(selection.range);
}

}  // namespace

void assignMaterials(const VelAssignments& assignments, const std::vector<MaterialDescription>& materials,
                     const IndexMatrix& indexMatrix, std::vector<Element>& elements) {
  forEachAssignment(assignments, VelSelection::A_MATERIAL, MaterialIndex(materials), "Material",
                    [&](const VelSelection& selection, std::size_t position) {
                      const MM::Material* const material =
                          position == NameIndex::NONE ? nullptr : &materials[position].material;
                      forEachElement(selection, indexMatrix, elements,
                                     [&](Element& element) { element.material = material; });
                    });
}

void assignInitialConds(const VelAssignments& assignments, std::vector<VelInitialCond>& initialConds,
                        const IndexMatrix& indexMatrix, std::vector<Element>& elements) {
  forEachAssignment(assignments, VelSelection::A_INITIALCOND, NameIndex(initialConds), "Initial condition",
                    [&](const VelSelection& selection, std::size_t position) {
                      forEachElement(selection, indexMatrix, elements, [&](Element& element) {
                        element.initialConds.push_back(&initialConds[position]);
                      });
                    });
}

void assignFieldConds(const VelAssignments& assignments, std::vector<VelFieldCond>& fieldConds,
                      const IndexMatrix& indexMatrix, std::vector<Element>& elements) {
  forEachAssignment(assignments, VelSelection::A_FIELDCOND, NameIndex(fieldConds), "Field condition",
                    [&](const VelSelection& selection, std::size_t position) {
                      VelFieldCond& fieldCond = fieldConds[position];
                      forEachElement(selection, indexMatrix, elements, [&](Element& element) {
                        element.fieldConds.push_back(&fieldCond);
                        fieldCond.elements.push_back(element.number);
                        fieldCond.volume += element.volume;
                      });
                      prepareByType(fieldCond, selection, indexMatrix, elements);
                    });
}

}  // namespace VELMORA

#include "models/FieldModelAmbientRadiation.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "material/Material.h"

namespace VELMORA {

namespace {

[[noreturn]] void refuse(const TKL::FormatString& text) {
  throw TKL::Exception(text, "[FieldModelAmbientRadiation::prepare]");
}

/// One surface cell and what lies before it.
class SurfaceCheck {
 public:
  SurfaceCheck(const std::string& name, const IndexMatrix& indexMatrix, const std::vector<Element>& elements)
      : name_(name), indexMatrix_(indexMatrix), elements_(elements) {}

  void checkRectangle(const VelSelection::Range& range) const {
    for (int j = range.top; j <= range.bottom; ++j)
      for (int i = range.left; i <= range.right; ++i)
        if (!hasElement(i, j))
          refuse(TKL::FormatString("Element without material found in assignment x=%1, y=%2 for '%3'")
                     .arg(i)
                     .arg(j)
                     .arg(name_));
  }

  void checkAboveOrBelow(const VelSelection::Range& range, bool top) const {
    const int y = range.top;
    const int before = top ? y - 1 : y + 1;
    for (int x = range.left; x <= range.right; ++x) {
      if (!hasElement(x, before))
        refuse(TKL::FormatString(
                   top ? "Element without material found in on top boundary of assignment y=%1 for '%2'"
                       : "Element without material found in on bottom boundary of assignment y=%1 for '%2'")
                   .arg(y)
                   .arg(name_));
      if (!isAir(x, before))
        refuse(TKL::FormatString(top ? "Material of top boundary must be air for '%1' for element %2:%3"
                                     : "Material of bottom boundary must be air for '%1' for element %2:%3")
                   .arg(name_)
                   .arg(x)
                   .arg(before));
    }
  }

  void checkBeside(const VelSelection::Range& range, bool left) const {
    const int x = range.left;
    const int before = left ? x - 1 : x + 1;
    for (int y = range.top; y <= range.bottom; ++y) {
      if (!hasElement(before, y))
        refuse(TKL::FormatString(
                   left ? "Element without material found in on left boundary of assignment y=%1 for '%2'"
                        : "Element without material found on right boundary of assignment y=%1 for '%2'")
                   .arg(y)
                   .arg(name_));
      if (!isAir(before, y))
        refuse(TKL::FormatString(left ? "Material of left boundary must be air for '%1' for element %2:%3"
                                      : "Material of right boundary must be air for '%1' for element %2:%3")
                   .arg(name_)
                   .arg(before)
                   .arg(y));
    }
  }

 private:
  bool hasElement(int i, int j) const {
    const int number = indexMatrix_.at(i, j);
    return number >= 0 && elements_[static_cast<std::size_t>(number)].material != nullptr;
  }
  bool isAir(int i, int j) const {
    return elements_[static_cast<std::size_t>(indexMatrix_.at(i, j))].material->isAir();
  }

  const std::string& name_;
  const IndexMatrix& indexMatrix_;
  const std::vector<Element>& elements_;
};

}  // namespace

void FieldModelAmbientRadiation::findDirection(const VelFieldCond& fieldCond) {
  if (fieldCond.para[VelFieldCond::P_LEFT_EMISS_COEFF].isSet()) radiationDirection = D_LEFT;
  if (fieldCond.para[VelFieldCond::P_RIGHT_EMISS_COEFF].isSet()) radiationDirection = D_RIGHT;
  if (fieldCond.para[VelFieldCond::P_TOP_EMISS_COEFF].isSet()) radiationDirection = D_TOP;
  if (fieldCond.para[VelFieldCond::P_BOTTOM_EMISS_COEFF].isSet()) radiationDirection = D_BOTTOM;
}

bool FieldModelAmbientRadiation::prepare(VelFieldCond& fieldCond, const VelSelection::Range& selection,
                                         const IndexMatrix& elementIndexMatrix,
                                         const std::vector<Element>& elements) {
  findDirection(fieldCond);
  const SurfaceCheck check(fieldCond.name, elementIndexMatrix, elements);
  check.checkRectangle(selection);
  const bool severalColumns = selection.right > selection.left;
  const bool severalRows = selection.bottom > selection.top;
  if (severalColumns && severalRows)
    refuse(
        TKL::FormatString("Assignment must consist in only one row or one column '%1'").arg(fieldCond.name));
  // "row" and "column" stand the other way round in the two texts
  if (severalRows) {
    if (radiationDirection != D_TOP && radiationDirection != D_BOTTOM)
      refuse(TKL::FormatString("Emision coefficient for top or bottom must be set for row selection '%1'")
                 .arg(fieldCond.name));
    check.checkAboveOrBelow(selection, radiationDirection == D_TOP);
  } else {
    if (radiationDirection != D_LEFT && radiationDirection != D_RIGHT)
      refuse(TKL::FormatString("Emision coefficient for left or right must be set for column selection '%1'")
                 .arg(fieldCond.name));
    check.checkBeside(selection, radiationDirection == D_LEFT);
  }
  return true;
}

}  // namespace VELMORA

#include "project/LongWaveGap.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "material/Material.h"

namespace VELMORA {

namespace {

[[noreturn]] void fail(const std::string& reason) {
  throw std::runtime_error("Invalid field condition assignment of type LW_RADIATION" + reason);
}

/// One direction of the exchange. A "line" is a row for the exchange along x and a column along y.
struct Direction {
  bool alongX;
  const char* name;              ///< in the failure texts
  int Element::*partnerOfFirst;  ///< partner number of the left or top element
  int Element::*partnerOfLast;   ///< partner number of the right or bottom element
};

class GapWalk {
 public:
  GapWalk(const Direction& direction, const VelSelection::Range& range, const IndexMatrix& indexMatrix,
          std::vector<Element>& elements)
      : direction_(direction), indexMatrix_(indexMatrix), elements_(elements) {
    begin_ = direction.alongX ? range.left : range.top;
    end_ = direction.alongX ? range.right : range.bottom;
    firstLine_ = direction.alongX ? range.top : range.left;
    lastLine_ = direction.alongX ? range.bottom : range.right;
  }

  void link(VelFieldCond& fieldCond) {
    if (static_cast<std::int64_t>(end_) - begin_ + 1 < 3) {
      fail(std::string(": Range must have at least 3 elements in ") + direction_.name + ".");
    }
    for (int line = firstLine_; line <= lastLine_; ++line) linkLine(line, fieldCond);
  }

 private:
  Element* at(int position, int line) const {
    const int number = direction_.alongX ? indexMatrix_.at(position, line) : indexMatrix_.at(line, position);
    return number < 0 ? nullptr : &elements_.at(static_cast<std::size_t>(number));
  }

  static bool isAir(const Element* element) {
    return element != nullptr && element->material != nullptr && element->material->isAir();
  }

  void linkLine(int line, VelFieldCond& fieldCond) const {
    Element* const first = at(begin_, line);
    Element* const last = at(end_, line);
    if (first == nullptr || last == nullptr) {
      fail(std::string(", ") + direction_.name + ": Selection encloses voids.");
    }
    if (!isAir(at(begin_ + 1, line)) || !isAir(at(end_ - 1, line))) {
      if (line == firstLine_ || line == lastLine_) return;
      fail(std::string(", ") + direction_.name +
           ": Selection must enclose edges of materials with radiation exchange.");
    }
    for (int position = begin_ + 2; position < end_; ++position) {
      const Element* const inner = at(position, line);
      if (inner != nullptr && !isAir(inner)) {
        fail(", different internal materials used.");
      }
    }
    first->*direction_.partnerOfFirst = last->number;
    last->*direction_.partnerOfLast = first->number;
    append(fieldCond, *first);
    append(fieldCond, *last);
  }

  /// The elements of the rectangle have the condition already; twice would count the radiation twice.
  static void append(VelFieldCond& fieldCond, Element& element) {
    std::vector<VelFieldCond*>& list = element.fieldConds;
    if (std::find(list.begin(), list.end(), &fieldCond) == list.end()) list.push_back(&fieldCond);
  }

  const Direction& direction_;
  const IndexMatrix& indexMatrix_;
  std::vector<Element>& elements_;
  int begin_ = 0;
  int end_ = 0;
  int firstLine_ = 0;
  int lastLine_ = 0;
};

}  // namespace

void prepareLongWaveGap(VelFieldCond& fieldCond, const VelSelection& selection,
                        const IndexMatrix& indexMatrix, std::vector<Element>& elements) {
  static const Direction alongX{true, "X-direction", &Element::lwPartnerRight, &Element::lwPartnerLeft};
  static const Direction alongY{false, "Y-direction", &Element::lwPartnerBottom, &Element::lwPartnerTop};
  if (fieldCond.flags.test(VelFieldCond::F_LW_RADIATION_X)) {
    GapWalk(alongX, selection.range, indexMatrix, elements).link(fieldCond);
  }
  if (fieldCond.flags.test(VelFieldCond::F_LW_RADIATION_Y)) {
    GapWalk(alongY, selection.range, indexMatrix, elements).link(fieldCond);
  }
}

}  // namespace VELMORA

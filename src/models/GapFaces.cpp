#include "models/GapFaces.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/Material.h"

namespace VELMORA {

namespace {

const char* const GAP_ID = "[GasConvectionModel::prepare]";

/// Whether the elements differ in `index`, their column or row.
bool several(const std::vector<Element>& elements, int Element::*index) {
  return std::any_of(elements.begin(), elements.end(),
                     [&](const Element& element) { return element.*index != elements.front().*index; });
}

}  // namespace

void failIfUsed(bool used, const VelFieldCond& fieldCond) {
  if (!used) return;
  throw TKL::Exception(TKL::FormatString("Field condition '%1' is already used. This field condition can "
                                         "only be assigned once. Please create a new field condition.")
                           .arg(fieldCond.name),
                       GAP_ID);
}

void correctFlowDirection(VelFieldCond& fieldCond, const std::vector<Element>& elements) {
  const bool alongX = fieldCond.flags[VelFieldCond::F_CONVECTION_X];
  if (alongX && !several(elements, &Element::i)) {
    TKL::message(
        "Gas convection flow is set to x-diection but construction is 1D and y-direction!Flow direction will "
        "be corrected",
        TKL::MSG_ERROR, GAP_ID, -1);
    fieldCond.flags.reset(VelFieldCond::F_CONVECTION_X);
  } else if (!alongX && !several(elements, &Element::j)) {
    TKL::message(
        "Gas convection flow is set to y-diection but construction is 1D and x-direction!Flow direction will "
        "be corrected",
        TKL::MSG_ERROR, GAP_ID, -1);
    fieldCond.flags.set(VelFieldCond::F_CONVECTION_X);
  }
}

GapFaces::GapFaces(const VelFieldCond& fieldCond, const VelSelection::Range& selection,
                   const IndexMatrix& indexMatrix, const std::vector<Element>& elements)
    : fieldCond_(fieldCond),
      indexMatrix_(indexMatrix),
      elements_(elements),
      alongX_(fieldCond.flags[VelFieldCond::F_CONVECTION_X]) {
  begin_ = alongX_ ? selection.left : selection.top;
  end_ = alongX_ ? selection.right : selection.bottom;
  firstLine_ = alongX_ ? selection.top : selection.left;
  lastLine_ = alongX_ ? selection.bottom : selection.right;
}

void GapFaces::find() {
  checkCells();
  growOverAir();
  bool anyAir = false;
  for (int line = firstLine_; line <= lastLine_; ++line) anyAir = anyAir || hasAir(line);
  if (!anyAir) refuse("No air in selected area for '%1'");
  if (end_ - begin_ < 2)
    refuse(alongX_ ? "Assignment needs at least 3 elements in x-direction for '%1'"
                   : "Assignment needs at least 3 elements in y-direction for '%1'");
  dropLinesWithoutAir();
  for (int line = firstLine_; line <= lastLine_; ++line) takeLine(line);
}

GapFaces::Cell GapFaces::cell(int position, int line) const {
  return alongX_ ? Cell{position, line} : Cell{line, position};
}

const Element& GapFaces::element(int position, int line) const {
  const Cell at = cell(position, line);
  const int number = indexMatrix_.at(at.i, at.j);
  if (number < 0 || elements_[static_cast<std::size_t>(number)].material == nullptr)
    throw TKL::Exception(TKL::FormatString("Element without material found in assignment x=%1, y=%2 for '%3'")
                             .arg(at.i)
                             .arg(at.j)
                             .arg(fieldCond_.name),
                         GAP_ID);
  return elements_[static_cast<std::size_t>(number)];
}

bool GapFaces::isAir(int position, int line) const {
  return element(position, line).material->isAir();
}

bool GapFaces::hasAir(int line) const {
  for (int position = begin_; position <= end_; ++position)
    if (isAir(position, line)) return true;
  return false;
}

void GapFaces::checkCells() const {
  for (int line = firstLine_; line <= lastLine_; ++line)
    for (int position = begin_; position <= end_; ++position) element(position, line);
}

/// Where the rectangle ends in the gas, its face lies one cell further.
void GapFaces::growOverAir() {
  const char* const AT_EDGE = "Air as boundary is not valid for '%1' for element %2:%3";
  const int last = (alongX_ ? indexMatrix_.columns() : indexMatrix_.rows()) - 1;
  const auto lineWithAir = [this](int position) {
    int line = firstLine_;
    while (line <= lastLine_ && !isAir(position, line)) ++line;
    return line;
  };
  const int atBegin = lineWithAir(begin_);
  const int atEnd = lineWithAir(end_);
  if (atBegin <= lastLine_) {
    if (begin_ == 0) refuse(AT_EDGE, begin_, atBegin);
    --begin_;
  }
  if (atEnd <= lastLine_) {
    if (end_ == last) refuse(AT_EDGE, end_, atEnd);
    ++end_;
  }
}

void GapFaces::dropLinesWithoutAir() {
  while (!hasAir(firstLine_)) ++firstLine_;
  while (!hasAir(lastLine_)) --lastLine_;
}

void GapFaces::takeLine(int line) {
  if (isAir(begin_, line))
    refuse(alongX_ ? "Material of left boundary area must not be air for '%1' for element %2:%3"
                   : "Material of top boundary area must not be air for '%1' for element %2:%3",
           begin_, line);
  if (isAir(end_, line))
    refuse(alongX_ ? "Material of right boundary area must not be air for '%1' for element %2:%3"
                   : "Material of bottom boundary area must not be air for '%1' for element %2:%3",
           end_, line);
  for (int position = begin_ + 1; position < end_; ++position) {
    if (!isAir(position, line))
      refuse("Material of inner area must be air for '%1' for element %2:%3", position, line);
    inner.push_back(element(position, line).number);
  }
  pairs.emplace_back(element(begin_, line).number, element(end_, line).number);
}

double GapFaces::width() const {
  const Element& first = elements_[static_cast<std::size_t>(pairs.front().first)];
  const Element& second = elements_[static_cast<std::size_t>(pairs.front().second)];
  return alongX_ ? second.x - first.x - (first.dx + second.dx) * 0.5
                 : first.y - second.y - (first.dy + second.dy) * 0.5;
}

void GapFaces::refuse(const char* text) const {
  throw TKL::Exception(TKL::FormatString(text).arg(fieldCond_.name), GAP_ID);
}

void GapFaces::refuse(const char* text, int position, int line) const {
  const Cell at = cell(position, line);
  throw TKL::Exception(TKL::FormatString(text).arg(fieldCond_.name).arg(at.i).arg(at.j), GAP_ID);
}

}  // namespace VELMORA

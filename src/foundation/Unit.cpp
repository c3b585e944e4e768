#include "foundation/Unit.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/QuotedText.h"
#include "foundation/UnitList.h"

namespace TKL {

namespace {

std::uint32_t indexOf(const std::string& name, const char* functionId) {
  const UnitData* const entry = UnitList::instance().retrieve(name);
  if (entry == nullptr) {
    throw Exception(FormatString("Unit '%1' not found.").arg(quotedText(name)), functionId);
  }
  return entry->id;
}

std::uint32_t checkedIndex(std::uint32_t index, const char* functionId) {
  const std::uint32_t highest = UnitList::instance().highestIndex();
  if (index > highest) {
    throw Exception(FormatString("Unit index %1 out of range 0..%2.").arg(index).arg(highest), functionId);
  }
  return index;
}

}  // namespace

Unit::Unit(const std::string& name) {
  const char* const FUNC_ID = "[Unit::Unit]";
  id_ = indexOf(name, FUNC_ID);
}

Unit::Unit(std::uint32_t index) {
  const char* const FUNC_ID = "[Unit::Unit]";
  id_ = checkedIndex(index, FUNC_ID);
}

void Unit::set(const std::string& name) {
  const char* const FUNC_ID = "[Unit::set]";
  id_ = indexOf(name, FUNC_ID);
}

void Unit::set(std::uint32_t index) {
  const char* const FUNC_ID = "[Unit::set]";
  id_ = checkedIndex(index, FUNC_ID);
}

const std::string& Unit::name() const {
  return UnitList::instance().retrieve(id_).name;
}

std::uint32_t Unit::base_id() const {
  return UnitList::instance().retrieve(id_).base_id;
}

}  // namespace TKL

#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/Exception.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/Material.h"
#include "support/MessageCapture.h"

namespace MM {

using Records = std::vector<TKL::Exception::Record>;

/// The message chain that a call throws, empty if it throws none.
template <typename Call>
Records thrown(const Call& call) {
  try {
    call();
  } catch (const TKL::Exception& ex) {
    return ex.records();
  }
  return {};
}

inline bool has(const Records& records, const std::string& what, const std::string& location) {
  return std::any_of(records.begin(), records.end(), [&](const TKL::Exception::Record& record) {
    return record.what == what && record.location == location;
  });
}

/// A material read from the text of a current file behind its header.
inline Material materialOf(const std::string& text, bool preV6 = false) {
  Material material;
  material.readASCII(text, preV6);
  return material;
}

/// The lines of a text.
inline std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

/// A spline on given points.
inline TKL::LinearSpline splineOf(const std::vector<double>& x, const std::vector<double>& y) {
  TKL::LinearSpline spline;
  spline.setValues(x, y);
  return spline;
}

}  // namespace MM

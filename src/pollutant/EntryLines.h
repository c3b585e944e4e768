#pragma once

#include <string>
#include <string_view>

#include "foundation/LinearSpline.h"

namespace POLLUTANT_LIB {

/// Opens an entry of a table.
inline constexpr std::string_view ENTITY = "ENTITY";

/// Takes an entry of a table apart, line by line. Behind its end all lines are empty. The entry must live
/// longer.
class EntryLines {
 public:
  explicit EntryLines(std::string_view entry) : rest_(entry) {}

  /// The next line without the blanks around it.
  std::string_view next();

  /// Takes a line that holds ENTITY and, behind that, a word.
  /// @return false if there is none
  bool readEntity(std::string& word);
  /// Takes a line whose first word is a finite number.
  bool readNumber(double& number);
  /// Takes the line of the x values and the line of the y values.
  bool readCurve(TKL::LinearSpline& curve);

 private:
  std::string_view rest_;
};

}  // namespace POLLUTANT_LIB

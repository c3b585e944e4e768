#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "foundation/LinearSpline.h"
#include "foundation/Parameter.h"

namespace MM {

/// Parametrisation of an analytic model, in the keyed form of a "[MODEL]" block.
class ModelDataContainer {
 public:
  std::string type;                                    ///< name of the model, empty until read
  std::map<std::string, TKL::Parameter> parameters;    ///< by keyword
  std::map<std::string, TKL::LinearSpline> functions;  ///< by function name
  std::map<std::string, std::string> texts;            ///< by keyword, as written: some values are lists

  /// Reads the lines of a block behind its title. A name that comes twice is warned about, the later one
  /// counts.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", "Error reading
  /// data for function '%1'."
  void read(const std::vector<std::string>& lines);

  /// Writes the block, title included, in the form that `read` takes.
  void write(std::ostream& out, int indent) const;

 private:
  void readFunction(const std::string& name, const std::string& xText, const std::string& yText);
  void readParameter(const std::string& keyword, const std::string& value);
};

}  // namespace MM

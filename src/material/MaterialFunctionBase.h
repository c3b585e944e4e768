#pragma once

#include <iosfwd>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "foundation/LinearSpline.h"
#include "material/ModelDataContainer.h"

namespace MM {

/// Base of the groups of material functions. It knows the text form that the groups share: tabulated
/// functions, each on three lines ("FUNCTION = name", the abscissae, the ordinates), and parametrised models.
/// Reading and writing are virtual; the evaluation is not, it belongs to the final classes.
class MaterialFunctionBase {
 public:
  virtual ~MaterialFunctionBase() = default;

  /// Reads the lines of the group's section.
  virtual void read(const std::vector<std::string>& lines) = 0;
  /// Reads the section as one text, the form of the older file generation.
  virtual void read(const std::string& text) = 0;
  /// Writes the tables in binary form.
  virtual void writeBinary(std::ostream& out) const = 0;
  /// Writes the section with its title, nothing if the group is empty.
  virtual void write(std::ostream& out, int indent) const = 0;
  /// Reads what `writeBinary` has written.
  virtual void readBinary(std::istream& in) = 0;
  /// Returns to the empty state.
  virtual void clear() = 0;

  std::map<std::string, ModelDataContainer> models;  ///< parametrised models by their type
  std::vector<std::string> unknownKeywords;          ///< keywords and function names that were skipped

 protected:
  MaterialFunctionBase() = default;
  MaterialFunctionBase(const MaterialFunctionBase&) = default;
  MaterialFunctionBase(MaterialFunctionBase&&) = default;
  MaterialFunctionBase& operator=(const MaterialFunctionBase&) = default;
  MaterialFunctionBase& operator=(MaterialFunctionBase&&) = default;

  /// What the groups differ in when they read.
  struct Grammar {
    const char* category;                    ///< keyword category of the function names
    std::span<TKL::LinearSpline> functions;  ///< one slot for each name
    const char* functionId;                  ///< tag of the messages
    const char* tooFewLines = "Error reading data for function '%1'.";
    const char* badTable = "Error reading data for function '%1'.";
  };

  /// Reads models and functions, and hands each other "KEYWORD = value" line to `readKeyword`.
  /// @throws TKL::Exception
  void readFunctions(const std::vector<std::string>& lines, const Grammar& grammar);

  /// A keyword that is neither FUNCTION nor MODEL. Here: the warning that it is unknown.
  virtual void readKeyword(const std::string& keyword, const std::string& value, const char* functionId);

  /// Cuts all "[MODEL]" blocks out of `lines` and stores them under their type.
  /// @throws TKL::Exception "Missing TYPE keyword in model data block:\n%1"
  void extractModelData(std::vector<std::string>& lines);

  /// Brings the older form of a model, a line of numbers in fixed order, into the keyed form.
  /// @throws TKL::Exception "Error reading model parameter #%1."
  void readModelsASCII(const std::string& identifier, const std::string& numbers);

  /// Writes models and functions that have data, without the title.
  void writeFunctions(std::ostream& out, int indent, const char* category,
                      std::span<const TKL::LinearSpline> functions) const;

  /// Writes "[TITLE]\n", with "_V" or "_W" behind it for the directions 1 and 2.
  /// @throws TKL::Exception "Invalid material transport direction type!"
  static void writeDirectionTitle(std::ostream& out, int indent, const char* title, int direction,
                                  const char* functionId);

  static void writeBinaryFunctions(std::ostream& out, std::span<const TKL::LinearSpline> functions);
  static void readBinaryFunctions(std::istream& in, std::span<TKL::LinearSpline> functions);

  static bool anyFunction(std::span<const TKL::LinearSpline> functions);
  /// The lines of a text that are not blank.
  static std::vector<std::string> splitLines(const std::string& text);

 private:
  void readFunction(const std::string& name, const std::string& xText, const std::string& yText,
                    const Grammar& grammar);
  void storeModelData(const std::vector<std::string>& block);
};

}  // namespace MM

#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "foundation/LinearSpline.h"
#include "foundation/Parameter.h"
#include "foundation/Path.h"
#include "foundation/Unit.h"
#include "keywords/ProjectPaths.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// One named quantity of the surroundings that changes with time: a constant, a sine, a sum of two sines, or
/// a data series from a file. All values are in the base unit of the quantity.
///
/// Life: `read`, then once `prepareCalculation`, then `calcCurrentValue` for each evaluation of the balance
/// equations; the conditions that refer to it take `currentValue`.
class VelClimateCond {
 public:
  /// The physical quantity; the values are the indices of the keyword list.
  enum condition_t {
    C_TEMPER,
    C_RELHUM,
    C_VAPPRESS,
    C_NORRAIN,
    C_HORRAIN,
    C_WINDDIR,
    C_WINDVEL,
    C_SHWRAD,
    C_DIRRAD,
    C_DIFRAD,
    C_LOWRAD,
    C_SKYEMISS,
    C_SKYTEMP,
    C_CLOUDCOV,
    C_GRNDEMISS,
    C_GRNDTEMP,
    C_PREHEAD,
    C_WATFLUXDENS,
    C_HEATFLUXDENS,
    C_MASSFLUXDENS,
    C_HEATFLOW,
    C_GASPRESS,
    C_VOCDENSG,
    C_WATSOURCE,
    C_ENESOURCE,
    C_VOCSOURCE,
    C_AIRFLOWRATE,
    C_AIRCHANGERATE,
    C_VOLFLUIDFLUX,
    C_FLUIDVELOCITY,
    C_PERCENTAGE,
    NUM_C  ///< not set
  };

  /// How the value depends on time.
  enum kind_t {
    K_CONSTANT,
    K_SINUS,
    K_2SINUS,
    K_DATLINEAR,
    NUM_K  ///< not set
  };

  /// Parameters, the indices of `para`.
  enum para_t {
    P_CONSTVALUE,
    P_MEANVALUE,
    P_AMPLITUDE1,
    P_OSCPERIOD1,
    P_PHASESHIFT1,
    P_AMPLITUDE2,
    P_OSCPERIOD2,
    P_PHASESHIFT2,
    P_SHIFTVALUE,
    NUM_P
  };

  /// Reads one block of lines `KEYWORD = value`. An unknown keyword is warned about and skipped.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", "Invalid
  /// parameter value '%1' for keyword '%2'!", and from the keyword list for an unknown `TYPE` or `KIND`
  void read(const SectionText& text);

  /// Reads a climate data file and fills `data`, converted to the base unit of the file's unit.
  /// @param path the file, without placeholders
  /// @param typeName receives the word for the quantity in the file
  /// @param unit receives the unit of the file
  /// @throws TKL::Exception with the reader's text, and for a series without any value or an unknown unit;
  /// std::runtime_error for times that are not increasing
  void readClimateData(const TKL::Path& path, std::string& typeName, TKL::Unit& unit);

  /// Checks the definition and gets it ready for `calcCurrentValue`: a data series is read and shifted, a
  /// constant becomes the current value. The file name is resolved with `resolvedInputPath`.
  /// @throws TKL::Exception for a missing or bad parameter, or a data series that does not fit; what
  /// `readClimateData` throws
  void prepareCalculation(const PlaceholderMap& placeholders);

  /// Sets `currentValue`.
  /// @param t time since the start of the climate data [s]. With `cyclicData` it goes back to the start after
  /// a year of 365 days, for the sines as well.
  /// @throws TKL::Exception for a data series that is empty or, unless `extendData`, does not reach to `t`
  void calcCurrentValue(double t);

  condition_t condition = NUM_C;
  std::string name;
  kind_t kind = NUM_K;
  std::array<TKL::Parameter, NUM_P> para;
  TKL::Path fileName;            ///< of the data series, as in the project file
  int inputLine = 0;             ///< first line of the definition in the project file, 0 if not known
  TKL::Unit ioUnit;              ///< unit of the data file
  std::string species;           ///< the pollutant of a pollutant condition
  bool useInterpolation = true;  ///< linear between the data points, else steps
  bool extendData = true;        ///< the end values hold on beyond the data
  bool cyclicData = true;        ///< the climate repeats every 365 days
  TKL::LinearSpline data;        ///< time [s], value [base unit]
  double currentValue = 0.0;     ///< [base unit]
  bool used = false;             ///< some boundary or field condition refers to it
  double omega1 = 0.0;           ///< angular frequency of the first sine [1/s]
  double omega2 = 0.0;           ///< angular frequency of the second sine [1/s]

 private:
  bool isSet(para_t index) const { return !para[index].name.empty(); }
  void readKeyword(const KeywordLine& line);
  void requireParameters(std::size_t first, std::size_t last) const;
  void requirePositive(para_t index, const char* shownName) const;
  void prepareSines(bool two);
  void prepareData(const PlaceholderMap& placeholders);
  void checkFileCondition(const std::string& typeName) const;
  void shiftData();
  void checkDataRange() const;
  void checkTimeInData(double t) const;
  double sine1(double t) const;
  double sine2(double t) const;
  double dataValue(double t);
  std::size_t intervalEnd(double t);

  std::size_t lastInterval_ = 1;  ///< end node of the data interval of the last look-up
};

}  // namespace VELMORA

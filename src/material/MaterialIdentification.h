#pragma once

#include <string>
#include <vector>

#include "foundation/Color.h"
#include "foundation/MultiLanguageString.h"
#include "material/MaterialCategory.h"

namespace MM {

/// Who a material is: names, origin, flags.
class MaterialIdentification {
 public:
  enum Ident {
    I_NAME,
    I_PRODUCER,
    I_PRODUCT_ID,
    I_INVESTIGATOR,
    I_LABORATORY,
    I_DATE,
    I_SAMPLING_DATE,
    I_PRODUCTION_DATE,
    I_SAMPLE_ID,
    I_SAMPLING_METHOD,
    I_COUNTRY,
    I_COLOUR,
    I_FLAGS,
    I_USE_INSTEAD,
    I_COPYRIGHT,
    I_CATEGORY,
    I_COMMENTS,
    I_U_DIRECTION,
    I_V_DIRECTION,
    I_W_DIRECTION,
    I_DBTYPE,
    I_SIGNATURE_SOURCE,
    I_QUALITY_FLAGS,
    I_DATA_SHEET_SOURCE,
    I_HATCHING,
    I_AQUISITION_ID,
    NUM_I
  };

  /// Bits of the flag word.
  enum Flags {
    F_AIR = 1,  ///< the material is moist air
    F_AIR_TIGHT = 2,
    F_VAPOR_TIGHT = 4,
    F_WATER_TIGHT = 8,
    F_WOOD = 16,
    F_WOOD_BASED = 32,
    F_FOILS = 64
  };

  enum SamplingMethods {
    SM_S_CAST_CUT_PRODUCER,
    SM_S_CAST_PRODUCER,
    SM_S_CAST_CUT_TKL,
    SM_S_CAST_TKL,
    NUM_SM  ///< not set
  };

  enum HatchingType {
    HT_Ground,
    HT_Gravel,
    HT_Sand,
    HT_ConcreteNotReinforced,
    HT_ConcreteReinforced,
    HT_Masonry,
    HT_WoodTransverseToFibre,
    HT_WoodLongitudinal,
    HT_Metal,
    HT_MortarPlaster,
    HT_Insulation,
    HT_SealingFoil,
    HT_Sealant,
    HT_None,
    NUM_HT
  };

  TKL::MultiLanguageString name;
  TKL::MultiLanguageString producer;
  TKL::MultiLanguageString productId;
  TKL::MultiLanguageString investigator;
  TKL::MultiLanguageString laboratory;
  std::string date;
  std::string samplingDate;
  std::string productionDate;
  std::string sampleId;
  SamplingMethods samplingMethod = NUM_SM;
  std::string country;
  TKL::Color colour;
  unsigned int flags = 0;  ///< bits of `Flags`
  int useInstead = 0;      ///< ID of the material that replaces this one, 0 for none
  std::string copyright;
  MaterialCategory category;
  TKL::MultiLanguageString comments;
  std::string uDirection;
  std::string vDirection;
  std::string wDirection;
  std::string dbType;
  std::string signatureSource;
  std::string qualityFlags;
  std::string dataSheetSource;
  HatchingType hatching = HT_None;
  std::string aquisitionId;
  std::vector<std::string> unknownKeywords;  ///< keywords that were warned about and skipped

  bool hasFlag(Flags flag) const { return (flags & static_cast<unsigned int>(flag)) != 0; }

  /// Name in English, else that without a language, else empty.
  std::string englishName() const;

  /// Reads the lines of the section.
  /// @throws TKL::Exception with the context "Error reading material identification section!"
  void read(const std::vector<std::string>& lines);

  /// The same for the older file generation.
  void readPreV6(const std::vector<std::string>& lines);

  /// Adds the flags of the older generation, blank separated. Flags that are unknown or no longer supported
  /// are warned about and skipped.
  void setFlagsPreV6(const std::string& text);

  void clear() { *this = MaterialIdentification(); }

 private:
  void readLine(const std::string& line);
  void setValue(Ident index, const std::string& keyword, const std::string& value);
  void setColour(const std::string& keyword, const std::string& value);
  std::string& plainText(Ident index);
  void readLinePreV6(const std::string& line);
  void setValuePreV6(const std::string& keyword, const std::string& value);
};

}  // namespace MM

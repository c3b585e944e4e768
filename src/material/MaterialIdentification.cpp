#include "material/MaterialIdentification.h"

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "material/KeywordList.h"
#include "material/Words.h"

namespace MM {

std::string MaterialIdentification::englishName() const {
  return name.string("en");
}

void MaterialIdentification::read(const std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[MaterialIdentification::read]";
  try {
    for (const std::string& line : lines) readLine(line);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex, "Error reading material identification section!", FUNC_ID);
  }
}

void MaterialIdentification::readLine(const std::string& line) {
  const char* const FUNC_ID = "[MaterialIdentification::readLine]";
  std::string keyword, value;
  if (!TKL::extract_keyword(line, keyword, value))
    throw TKL::Exception(TKL::FormatString("Expected keyword, got '%1'!").arg(line), FUNC_ID);
  if (value.empty())
    throw TKL::Exception(TKL::FormatString("Missing value for keyword '%1'!").arg(keyword), FUNC_ID);
  if (!KeywordList::KeywordExists("MaterialIdentification::Ident", keyword)) {
    TKL::message(TKL::FormatString("Invalid keyword found in identification section '%1'.").arg(keyword),
                 TKL::MSG_WARNING, FUNC_ID, 3);
    unknownKeywords.push_back(keyword);
    return;
  }
  setValue(static_cast<Ident>(KeywordList::Enumeration("MaterialIdentification::Ident", keyword)), keyword,
           value);
}

void MaterialIdentification::setValue(Ident index, const std::string& keyword, const std::string& value) {
  switch (index) {
    case I_NAME:
      return name.setEncodedString(value);
    case I_PRODUCER:
      return producer.setEncodedString(value);
    case I_PRODUCT_ID:
      return productId.setEncodedString(value);
    case I_INVESTIGATOR:
      return investigator.setEncodedString(value);
    case I_LABORATORY:
      return laboratory.setEncodedString(value);
    case I_COMMENTS:
      return comments.setEncodedString(value);
    case I_SAMPLING_METHOD:
      samplingMethod = static_cast<SamplingMethods>(
          KeywordList::Enumeration("MaterialIdentification::SamplingMethods", value));
      return;
    case I_COLOUR:
      return setColour(keyword, value);
    case I_FLAGS:
      for (const std::string& word : splitWords(value))
        flags |= static_cast<unsigned int>(KeywordList::Enumeration("MaterialIdentification::Flags", word));
      return;
    case I_USE_INSTEAD:
      useInstead = TKL::string2val<int>(value);
      return;
    case I_CATEGORY:
      return category.read(value);
    case I_HATCHING:
      hatching =
          static_cast<HatchingType>(KeywordList::Enumeration("MaterialIdentification::HatchingType", value));
      return;
    default:
      plainText(index) = value;
  }
}

void MaterialIdentification::setColour(const std::string& keyword, const std::string& value) {
  const char* const FUNC_ID = "[MaterialIdentification::readLine]";
  try {
    colour.read(value);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(
        ex, TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!").arg(value).arg(keyword),
        FUNC_ID);
  }
}

std::string& MaterialIdentification::plainText(Ident index) {
  switch (index) {
    case I_DATE:
      return date;
    case I_SAMPLING_DATE:
      return samplingDate;
    case I_PRODUCTION_DATE:
      return productionDate;
    case I_SAMPLE_ID:
      return sampleId;
    case I_COUNTRY:
      return country;
    case I_COPYRIGHT:
      return copyright;
    case I_U_DIRECTION:
      return uDirection;
    case I_V_DIRECTION:
      return vDirection;
    case I_W_DIRECTION:
      return wDirection;
    case I_DBTYPE:
      return dbType;
    case I_SIGNATURE_SOURCE:
      return signatureSource;
    case I_QUALITY_FLAGS:
      return qualityFlags;
    case I_DATA_SHEET_SOURCE:
      return dataSheetSource;
    default:
      return aquisitionId;
  }
}

}  // namespace MM

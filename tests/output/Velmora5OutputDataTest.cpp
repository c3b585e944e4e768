#include "output/Velmora5OutputData.h"

#include <gtest/gtest.h>

#include <bit>
#include <ctime>
#include <sstream>
#include <stdexcept>

#include "output/OutputBench.h"

namespace VELMORA {
namespace {

Velmora5OutputData smallHeader() {
  Velmora5OutputData header;
  header.outputType = Velmora5OutputData::OT_FIELD;
  header.projectFile = "dir/wall.vel";
  header.quantity = "Temperature";
  header.spaceType = 0;
  header.timeType = 0;
  header.valueUnit = "C";
  header.timeUnit = "h";
  header.materials = {{1, {.red = 1, .green = 2, .blue = 3}, "Brick"},
                      {2, {.red = 255, .green = 255, .blue = 255}, "Wool, loose"}};
  header.gridX = {0.1, 0.30000004};
  header.gridY = {0.2};
  header.gridZ = {1.5};
  header.elementGeometry = {{0, 0.05, 0.1, 0, 0, 1}, {1, 0.123456789012345, 0.1, 1, 0, 2}};
  header.sideGeometry = {{0, 0.05, 0.2, 0, 0, false}, {1, 0.1, 0.1, 1, 0, true}};
  header.numbers = {0, 1};
  return header;
}

std::string written(const Velmora5OutputData& header, bool withGeometry) {
  std::ostringstream stream;
  std::string errorText;
  EXPECT_TRUE(header.writeHeader(stream, withGeometry, errorText));
  return stream.str();
}

std::string ascii(const Velmora5OutputData& header, bool withGeometry) {
  return withoutCreationTime(written(header, withGeometry));
}

/// Reads the binary form from its start.
class Reader {
 public:
  explicit Reader(std::string bytes) : bytes_(std::move(bytes)) {}
  std::string raw(std::size_t size) {
    position_ += size;
    return bytes_.substr(position_ - size, size);
  }
  std::uint32_t u32() {
    const std::string field = raw(4);
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(field[i]);
    return value;
  }
  double f64() {
    const std::uint64_t low = u32();
    return std::bit_cast<double>(low | std::uint64_t{u32()} << 32);
  }
  std::string string() {
    const std::string field = raw(u32());
    EXPECT_EQ('\0', field.back());
    return field.substr(0, field.size() - 1);
  }
  std::size_t rest() const { return bytes_.size() - position_; }

 private:
  std::string bytes_;
  std::size_t position_ = 0;
};

Reader binaryReader(Velmora5OutputData header, bool withGeometry) {
  header.binary = true;
  return Reader(written(header, withGeometry));
}

/// Leaves the reader in front of the geometry size.
void skipToGeometry(Reader& reader) {
  reader.raw(40 + 4);
  reader.string();  // project file
  reader.raw(4);    // time of creation
  reader.string();  // quantity
  reader.raw(8);
  reader.string();  // value unit
  reader.string();  // time unit
}

std::string runtimeError(const Velmora5OutputData& header,
                         void (Velmora5OutputData::*write)(std::ostream&) const) {
  std::ostringstream stream;
  try {
    (header.*write)(stream);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing thrown";
}

TEST(Velmora5OutputData, asciiHeaderWithGeometry_isExact) {
  EXPECT_EQ(
      "# Velmora 5 Output file\n"
      "# TYPE          = FIELD\n"
      "# PROJECT_FILE  = dir/wall.vel\n"
      "# CREATED       = \n"
      "# QUANTITY      = Temperature\n"
      "# SPACE_TYPE    = SINGLE\n"
      "# TIME_TYPE     = NONE\n"
      "# VALUE_UNIT    = C\n"
      "# TIME_UNIT     = h\n"
      "\n"
      "TABLE  MATERIALS\n"
      "1          197121     Brick\n"  // 1 + 256*2 + 65536*3
      "2          16777215   Wool, loose\n"
      "\n"
      "TABLE  GRID\n"
      "0.1 0.3 \n"
      "0.2 \n"
      "1.5\n"
      "\n"
      "TABLE  ELEMENT_GEOMETRY\n"
      "0        0.05      0.1       \t 0     0     1\n"
      "1        0.123456789012 0.1  \t 1     0     2\n"
      "\n"
      "TABLE  SIDES_GEOMETRY\n"
      "0        0.05      0.2       \t 0      0      0    \n"
      "1        0.1       0.1       \t 1      0      1    \n"
      "\n"
      "ELEMENTS = 0 1 \n"
      "\n",
      ascii(smallHeader(), true));
}

TEST(Velmora5OutputData, asciiHeaderWithoutGeometry_endsInTwoEmptyLines) {
  EXPECT_EQ(
      "# Velmora 5 Output file\n"
      "# TYPE          = FIELD\n"
      "# PROJECT_FILE  = dir/wall.vel\n"
      "# CREATED       = \n"
      "# QUANTITY      = Temperature\n"
      "# SPACE_TYPE    = SINGLE\n"
      "# TIME_TYPE     = NONE\n"
      "# VALUE_UNIT    = C\n"
      "# TIME_UNIT     = h\n"
      "\n"
      "ELEMENTS = 0\n"
      "\n"
      "\n",
      ascii(smallHeader(), false));
}

TEST(Velmora5OutputData, fluxFile_listsSides) {
  Velmora5OutputData header = smallHeader();
  header.outputType = Velmora5OutputData::OT_FLUX;
  const std::string text = ascii(header, true);
  EXPECT_NE(std::string::npos, text.find("# TYPE          = FLUX\n"));
  EXPECT_NE(std::string::npos, text.find("\n\nSIDES = 0 1 \n\n"));
}

TEST(Velmora5OutputData, spaceAndTimeTypes_areNamed) {
  const char* const SPACE[] = {"SINGLE", "MEAN", "INTEGRAL", "UNKNOWN"};
  const char* const TIME[] = {"NONE", "MEAN", "INTEGRAL", "UNKNOWN"};
  for (int type = 0; type < 4; ++type) {
    Velmora5OutputData header = smallHeader();
    header.spaceType = type;
    header.timeType = type;
    const std::string text = ascii(header, false);
    EXPECT_NE(std::string::npos, text.find(std::string("# SPACE_TYPE    = ") + SPACE[type] + "\n"));
    EXPECT_NE(std::string::npos, text.find(std::string("# TIME_TYPE     = ") + TIME[type] + "\n"));
  }
}

TEST(Velmora5OutputData, created_takesItsLineEndFromCtime) {
  const std::time_t before = std::time(nullptr);
  const std::string text = written(smallHeader(), false);
  const std::time_t after = std::time(nullptr);
  bool found = false;
  for (std::time_t time = before; time <= after; ++time) {
    const std::string line = std::string("\n# CREATED       = ") + std::ctime(&time) + "# QUANTITY";
    found = found || text.find(line) != std::string::npos;
  }
  EXPECT_TRUE(found) << text;
}

TEST(Velmora5OutputData, unknownOutputType_isRefused) {
  Velmora5OutputData header = smallHeader();
  header.outputType = Velmora5OutputData::OT_UNKNOWN;
  std::ostringstream stream;
  std::string errorText;
  EXPECT_FALSE(header.writeHeader(stream, false, errorText));
  EXPECT_EQ("Output type (field or flux output) not specified.", errorText);
  EXPECT_EQ("", stream.str());
}

TEST(Velmora5OutputData, defaults_areUnknown) {
  const Velmora5OutputData header;
  EXPECT_EQ(2, header.outputType);
  EXPECT_EQ(3, header.spaceType);
  EXPECT_EQ(3, header.timeType);
  EXPECT_FALSE(header.binary);
}

TEST(Velmora5OutputData, clear_resetsToDefaults) {
  Velmora5OutputData header = smallHeader();
  header.binary = true;
  header.clear();
  EXPECT_EQ(2, header.outputType);
  EXPECT_EQ(3, header.spaceType);
  EXPECT_EQ("", header.quantity);
  EXPECT_FALSE(header.binary);
  EXPECT_TRUE(header.materials.empty());
  EXPECT_TRUE(header.numbers.empty());
}

TEST(Velmora5OutputData, missingTables_areToldInWritingOrder) {
  for (const bool binary : {false, true}) {
    const auto write =
        binary ? &Velmora5OutputData::writeBinaryGeometryData : &Velmora5OutputData::writeGeometryData;
    const std::string id = binary ? "[Velmora5OutputData::writeBinaryGeometryData]  "
                                  : "[Velmora5OutputData::writeGeometryData]  ";
    Velmora5OutputData header;
    EXPECT_EQ(id + "Missing data in materials table!", runtimeError(header, write));
    header.materials = smallHeader().materials;
    EXPECT_EQ(id + "Missing or invalid grid data!", runtimeError(header, write));
    header.gridX = {1.0};
    header.gridY = {1.0};
    EXPECT_EQ(id + "Missing or invalid grid data!", runtimeError(header, write)) << "without gridZ";
    header.gridZ = {1.0};
    EXPECT_EQ(id + "Missing element geometry data!", runtimeError(header, write));
    header.elementGeometry = smallHeader().elementGeometry;
    EXPECT_EQ(id + "Missing side geometry data!", runtimeError(header, write));
    header.sideGeometry = smallHeader().sideGeometry;
    EXPECT_EQ("nothing thrown", runtimeError(header, write));
  }
}

TEST(Velmora5OutputData, missingTable_stopsTheHeaderAsWell) {
  Velmora5OutputData header = smallHeader();
  header.sideGeometry.clear();
  std::ostringstream stream;
  std::string errorText;
  EXPECT_THROW(header.writeHeader(stream, true, errorText), std::runtime_error);
  header.binary = true;
  EXPECT_THROW(header.writeHeader(stream, true, errorText), std::runtime_error);
}

TEST(Velmora5OutputData, binaryMagic_hasFortyBytes) {
  Reader reader = binaryReader(smallHeader(), false);
  EXPECT_EQ(std::string("# Velmora 5 Output file - binary 5.0") + std::string(4, '\0'), reader.raw(40));
}

TEST(Velmora5OutputData, binaryHeader_holdsAllFieldsInOrder) {
  const auto before = static_cast<std::uint32_t>(std::time(nullptr));
  Reader reader = binaryReader(smallHeader(), false);
  reader.raw(40);
  EXPECT_EQ(0u, reader.u32()) << "field";
  EXPECT_EQ(TKL::Path("dir/wall.vel").absolutePath().str(), reader.string());
  EXPECT_LE(before, reader.u32()) << "time of creation";
  EXPECT_EQ("Temperature", reader.string());
  EXPECT_EQ(0u, reader.u32()) << "space type";
  EXPECT_EQ(0u, reader.u32()) << "time type";
  EXPECT_EQ("C", reader.string());
  EXPECT_EQ("h", reader.string());
  EXPECT_EQ(0u, reader.u32()) << "size of the geometry";
  EXPECT_EQ(2u, reader.u32()) << "count of numbers";
  EXPECT_EQ(0u, reader.u32());
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(8u, reader.u32()) << "length of the end mark with its NUL";
  EXPECT_EQ(std::string("HDR_END") + '\0', reader.raw(8));
  EXPECT_EQ(0u, reader.rest());
}

TEST(Velmora5OutputData, emptyBinaryString_hasLengthOne) {
  Velmora5OutputData header = smallHeader();
  header.projectFile = {};
  Reader reader = binaryReader(header, false);
  reader.raw(44);
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(std::string(1, '\0'), reader.raw(1));
}

TEST(Velmora5OutputData, binaryGeometry_startsWithItsSize) {
  Reader reader = binaryReader(smallHeader(), true);
  skipToGeometry(reader);
  // materials 4 + (4+4+4+6) + (4+4+4+12); widths 3*4 + 4*8; elements 4 + 2*40; sides 4 + 2*40
  const std::uint32_t size = 4 + 18 + 24 + 12 + 32 + 84 + 84;
  EXPECT_EQ(size, reader.u32());
  reader.raw(size);
  EXPECT_EQ(2u, reader.u32()) << "the count of numbers follows without a gap";
}

TEST(Velmora5OutputData, binaryMaterials_haveNoColour) {
  Reader reader = binaryReader(smallHeader(), true);
  skipToGeometry(reader);
  reader.u32();
  EXPECT_EQ(2u, reader.u32());
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(0u, reader.u32());
  EXPECT_EQ("Brick", reader.string());
  EXPECT_EQ(2u, reader.u32());
  EXPECT_EQ(0u, reader.u32());
  EXPECT_EQ("Wool, loose", reader.string());
}

TEST(Velmora5OutputData, binaryGeometryRecords_haveFortyBytesWithZeroPadding) {
  Reader reader = binaryReader(smallHeader(), true);
  skipToGeometry(reader);
  reader.raw(4 + 4 + 18 + 24);
  EXPECT_EQ(2u, reader.u32());
  EXPECT_EQ(0.1, reader.f64());
  EXPECT_EQ(0.30000004, reader.f64());
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(0.2, reader.f64());
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(1.5, reader.f64());
  EXPECT_EQ(2u, reader.u32());
  reader.raw(40);
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(0u, reader.u32()) << "padding";
  EXPECT_EQ(0.123456789012345, reader.f64());
  EXPECT_EQ(0.1, reader.f64());
  EXPECT_EQ(1u, reader.u32());
  EXPECT_EQ(0u, reader.u32());
  EXPECT_EQ(2u, reader.u32()) << "material";
  EXPECT_EQ(0u, reader.u32()) << "padding";
  EXPECT_EQ(2u, reader.u32());
  reader.raw(32);
  EXPECT_EQ(std::string(8, '\0'), reader.raw(8)) << "horizontal side";
  reader.raw(32);
  EXPECT_EQ(std::string(1, '\1') + std::string(7, '\0'), reader.raw(8)) << "vertical side";
}

TEST(Velmora5OutputData, fileOfTheReader_isReallyCompared) {
  Reader reader(std::string("\x01\x00\x00\x00\x02\x00\x00\x00", 8));
  EXPECT_NE(2u, reader.u32());
  EXPECT_EQ(2u, reader.u32());
}

}  // namespace
}  // namespace VELMORA

#include <sstream>

#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

Records storageFailure(const std::string& text) {
  const TKL::MessageCapture capture;
  return thrown([&] { MoistureStorage().read(linesOf(text)); });
}

const char* const STORAGE_TAG = "[MoistureStorage::read]";

}  // namespace

TEST(FunctionSection, function_isReadIntoItsSlot) {
  ThermalTransport group;
  group.read(linesOf("FUNCTION = lambda(T)\n273 300\n1 2\n"));
  EXPECT_DOUBLE_EQ(group.functions[ThermalTransport::F_lambda_T].value(286.5), 1.5);
  EXPECT_TRUE(group.functions[ThermalTransport::F_lambda_Theta].empty());
}

TEST(FunctionSection, aliasOfAFunction_isRead) {
  MoistureTransport group;
  group.read(linesOf("FUNCTION = My(Phi)\n0 1\n5 6\n"));
  EXPECT_EQ(group.functions[MoistureTransport::F_mew].size(), 2U);
}

TEST(FunctionSection, oneText_isReadLikeItsLines) {
  AirTransport group;
  group.read(std::string("\nFUNCTION = Kg(Theta_l)\n0 1\n\n1 2\n"));
  EXPECT_EQ(group.functions[AirTransport::F_Kg].size(), 2U);
}

TEST(FunctionSection, lineWithoutEqualSign_isRefused) {
  const Records records = storageFailure("some words\n");
  EXPECT_TRUE(has(records, "Expected keyword, got 'some words'!", STORAGE_TAG));
}

TEST(FunctionSection, keywordWithoutValue_isRefused) {
  EXPECT_TRUE(
      has(storageFailure("FUNCTION =\n0 1\n0 1\n"), "Missing value for keyword 'FUNCTION'!", STORAGE_TAG));
}

TEST(FunctionSection, functionWithOneDataLine_isRefused) {
  EXPECT_TRUE(has(storageFailure("FUNCTION = mwu(T)\n0 1\n"), "Error reading data for function 'mwu(T)'.",
                  STORAGE_TAG));
}

TEST(FunctionSection, moistureTransportWithOneDataLine_hasItsOwnWords) {
  const Records records = thrown([] { MoistureTransport().read(linesOf("FUNCTION = mew(RH)\n0 1\n")); });
  EXPECT_TRUE(has(records, "Error reading data for function 'mew(RH)' because too less lines left.",
                  "[MoistureTransport::read]"));
  EXPECT_TRUE(has(records, "Error reading moisture transport material data!", "[MoistureTransport::read]"));
}

TEST(FunctionSection, badTable_namesTheFunction) {
  const Records records = storageFailure("FUNCTION = mwu(T)\n0 1\n0 1 2\n");
  EXPECT_TRUE(has(records, "Error reading data for function 'mwu(T)'.", STORAGE_TAG));
  EXPECT_EQ(records.front().location, "[LinearSpline::read]");
  EXPECT_TRUE(has(thrown([] { MoistureTransport().read(linesOf("FUNCTION = mew(RH)\n1 0\n1 1\n")); }),
                  "Error reading data for function 'mew(RH)' while reading its values.",
                  "[MoistureTransport::read]"));
}

TEST(FunctionSection, unknownFunction_isSkippedWithItsData) {
  const TKL::MessageCapture capture;
  ThermalTransport group;
  group.read(linesOf("FUNCTION = foo(T)\n0 1\n0 1\nFUNCTION = lambda(T)\n273 300\n1 2\n"));
  EXPECT_TRUE(
      capture.has("Unknown function type 'foo(T)'.", TKL::MSG_WARNING, "[ThermalTransport::read]", 3));
  EXPECT_EQ(group.functions[ThermalTransport::F_lambda_T].size(), 2U);
}

TEST(FunctionSection, unknownKeyword_isOnlyWarnedAbout) {
  const TKL::MessageCapture capture;
  ThermalStorage().read(linesOf("FOO = 1\n"));
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'FOO' in this section!", TKL::MSG_WARNING,
                          "[ThermalStorage::read]", 3));
}

TEST(FunctionSection, failure_hasTheContextOfItsGroup) {
  EXPECT_TRUE(has(thrown([] { ThermalTransport().read(linesOf("foo\n")); }),
                  "Error reading thermal transport data!", "[ThermalTransport::read]"));
  EXPECT_TRUE(has(thrown([] { ThermalStorage().read(linesOf("foo\n")); }),
                  "Error reading thermal transport data!", "[ThermalStorage::read]"));
  EXPECT_TRUE(has(thrown([] { AirTransport().read(linesOf("foo\n")); }), "Error reading air transport data!",
                  "[AirTransport::read]"));
  EXPECT_TRUE(has(thrown([] { VaporContactResistanceModel().read(linesOf("foo\n")); }),
                  "Error reading vapor transport resistance section!",
                  "[VaporContactResistanceModel::read]"));
}

TEST(ModelBlock, block_isCutOutBeforeTheLinesAreRead) {
  MoistureTransport group;
  group.read(
      linesOf("FUNCTION = mew(RH)\n0 1\n5 6\n[MODEL]\nTYPE = SERIAL_PARALLEL\nSP_Kl = 1e-9 s\n"
              "FUNCTION = f\n1 2\n3 4\n"));
  const ModelDataContainer& model = group.models.at("SERIAL_PARALLEL");
  EXPECT_DOUBLE_EQ(model.parameters.at("SP_Kl").value, 1e-9);
  EXPECT_EQ(model.texts.at("SP_Kl"), "1e-9 s");
  EXPECT_EQ(model.functions.at("f").size(), 2U);
  EXPECT_EQ(group.functions[MoistureTransport::F_mew].size(), 2U);
}

TEST(ModelBlock, list_isKeptAsText) {
  MoistureStorage group;
  group.read(linesOf("[MODEL]\nTYPE = GAUSS\nGAUSS_Wi = 0.5 0.5\n"));
  EXPECT_EQ(group.models.at("GAUSS").texts.at("GAUSS_Wi"), "0.5 0.5");
  EXPECT_EQ(group.models.at("GAUSS").parameters.count("GAUSS_Wi"), 0U);
}

TEST(ModelBlock, withoutType_isRefused) {
  EXPECT_TRUE(has(storageFailure("[MODEL]\nA = 1 m\nB = 2 m\n"),
                  "Missing TYPE keyword in model data block:\nA = 1 m\nB = 2 m\n",
                  "[MaterialFunctionBase::extractModelData]"));
}

TEST(ModelBlock, ofAKnownType_overwritesTheFirst) {
  const TKL::MessageCapture capture;
  MoistureStorage group;
  group.read(linesOf("[MODEL]\nTYPE = GAUSS\nA = 1 m\n[MODEL]\nTYPE = GAUSS\nA = 2 m\n"));
  EXPECT_DOUBLE_EQ(group.models.at("GAUSS").parameters.at("A").value, 2.0);
  EXPECT_TRUE(
      capture.has("Duplicate model parametrization block with type 'GAUSS' found. Overwriting first "
                  "parameter block.\n",
                  TKL::MSG_STANDARD, "[MaterialFunctionBase::extractModelData]", 2));
}

TEST(ModelBlock, badLines_areRefused) {
  const char* const TAG = "[ModelDataContainer::read]";
  EXPECT_TRUE(has(storageFailure("[MODEL]\nfoo\n"), "Expected keyword, got 'foo'!", TAG));
  EXPECT_TRUE(has(storageFailure("[MODEL]\nTYPE =\n"), "Missing value for keyword 'TYPE'!", TAG));
  EXPECT_TRUE(
      has(storageFailure("[MODEL]\nFUNCTION = f\n0 1\n"), "Error reading data for function 'f'.", TAG));
  EXPECT_TRUE(
      has(storageFailure("[MODEL]\nFUNCTION = f\n0 1\n1\n"), "Error reading data for function 'f'.", TAG));
}

TEST(ModelBlock, repeatedNames_overwriteWithAWarning) {
  const TKL::MessageCapture capture;
  ModelDataContainer model;
  model.read(linesOf("A = 1 m\nA = 2 m\nFUNCTION = f\n0 1\n0 1\nFUNCTION = f\n0 1\n0 2\n"));
  EXPECT_DOUBLE_EQ(model.parameters.at("A").value, 2.0);
  EXPECT_DOUBLE_EQ(model.functions.at("f").value(1.0), 2.0);
  const char* const TAG = "[ModelDataContainer::read]";
  EXPECT_TRUE(
      capture.has("Duplicate definition of parameter 'A' within model data block. Overwriting previous "
                  "definition.\n",
                  TKL::MSG_WARNING, TAG, 2));
  EXPECT_TRUE(
      capture.has("Duplicate definition of function 'f' within model data block. Overwriting previous "
                  "definition.\n",
                  TKL::MSG_WARNING, TAG, 2));
}

TEST(OlderModelLine, gauss_isModalityThenDeviationsWeightsRadii) {
  MoistureStorage group;
  group.read(linesOf("MODEL = GAUSS\n2 0.3 0.4 0.6 0.4 1e-6 1e-7\n"));
  const auto& texts = group.models.at("GAUSS").texts;
  EXPECT_EQ(texts.at("GAUSS_MODALITY"), "2");
  EXPECT_EQ(texts.at("GAUSS_Si"), "0.3 0.4");
  EXPECT_EQ(texts.at("GAUSS_Wi"), "0.6 0.4");
  EXPECT_EQ(texts.at("GAUSS_Ri"), "1e-6 1e-7");
}

TEST(OlderModelLine, serialParallel_isSevenValues) {
  MoistureTransport group;
  group.read(linesOf("MODEL = MY_SP_MODEL\n1 2 3 4 5 6 7\n"));
  const auto& texts = group.models.at("SERIAL_PARALLEL").texts;
  EXPECT_EQ(texts.at("SP_KScale"), "1");
  EXPECT_EQ(texts.at("SP_SP"), "2");
  EXPECT_EQ(texts.at("SP_UNSAT"), "3");
  EXPECT_EQ(texts.at("SP_UseAdsorption"), "4");
  EXPECT_EQ(texts.at("SP_pCmax"), "5");
  EXPECT_EQ(texts.at("SP_ThetaLAdditional"), "6");
  EXPECT_EQ(texts.at("SP_Kl"), "7");
}

TEST(OlderModelLine, badNumber_isCountedFrom1) {
  const char* const TAG = "[MaterialFunctionBase::readModelsASCII]";
  EXPECT_TRUE(has(storageFailure("MODEL = GAUSS\n1 x 1 1\n"), "Error reading model parameter #2.", TAG));
  EXPECT_TRUE(has(storageFailure("MODEL = GAUSS\n1 0.3 1\n"), "Error reading model parameter #4.", TAG));
  EXPECT_TRUE(has(storageFailure("MODEL = GAUSS\n1e9 0.3 1 1\n"), "Error reading model parameter #1.", TAG));
  EXPECT_TRUE(has(storageFailure("MODEL = GAUSS\n0.5 0.3 1 1\n"), "Error reading model parameter #1.", TAG));
  EXPECT_TRUE(has(storageFailure("MODEL = GAUSS\n1.5 0.3 1 1\n"), "Error reading model parameter #1.", TAG));
  EXPECT_TRUE(has(storageFailure("MODEL = GAUSS\n"), "Error reading model parameter #1.", TAG));
}

TEST(OlderModelLine, secondOfAnIdentifier_isWarnedAbout) {
  const TKL::MessageCapture capture;
  MoistureStorage group;
  group.read(linesOf("MODEL = GAUSS\n1 0.3 1 1e-6\nMODEL = GAUSS\n1 0.4 1 1e-6\n"));
  EXPECT_EQ(group.models.at("GAUSS").texts.at("GAUSS_Si"), "0.4");
  EXPECT_TRUE(capture.has("Multiple definitions of model identifier 'GAUSS'!", TKL::MSG_WARNING,
                          "[MaterialFunctionBase::readModelsASCII]", 2));
}

TEST(FunctionSectionWrite, written_isReadBack) {
  MoistureTransport group;
  group.read(
      linesOf("FUNCTION = mew(RH)\n0 1\n5 6\n[MODEL]\nTYPE = SERIAL_PARALLEL\nSP_Kl = 1e-9 s\nFUNCTION = "
              "f\n1 2\n3 4\n"));
  std::ostringstream out;
  group.write(out, 2);
  std::vector<std::string> lines = linesOf(out.str());
  EXPECT_EQ(lines.at(0), "  [MOISTURE_TRANSPORT]");
  lines.erase(lines.begin());
  MoistureTransport again;
  again.read(lines);
  EXPECT_EQ(again.functions[MoistureTransport::F_mew].y, group.functions[MoistureTransport::F_mew].y);
  EXPECT_EQ(again.models.at("SERIAL_PARALLEL").texts, group.models.at("SERIAL_PARALLEL").texts);
  EXPECT_EQ(again.models.at("SERIAL_PARALLEL").functions.at("f").x, (std::vector<double>{1, 2}));
}

TEST(FunctionSectionWrite, emptyGroup_writesNothing) {
  std::ostringstream out;
  ThermalStorage().write(out, 0);
  ThermalTransport().write(out, 0);
  MoistureStorage().write(out, 0);
  MoistureTransport().write(out, 0);
  AirTransport().write(out, 0);
  EXPECT_EQ(out.str(), "");
}

template <typename Group>
std::string titleOf(Group group, int direction) {
  group.functions[0] = splineOf({0, 1}, {1, 2});
  group.direction = direction;
  std::ostringstream out;
  group.write(out, 0);
  return linesOf(out.str()).at(0);
}

TEST(FunctionSectionWrite, titles_tellTheDirection) {
  EXPECT_EQ(titleOf(ThermalTransport(), 0), "[HEAT_TRANSPORT]");
  EXPECT_EQ(titleOf(ThermalTransport(), 1), "[HEAT_TRANSPORT_V]");
  EXPECT_EQ(titleOf(MoistureTransport(), 2), "[MOISTURE_TRANSPORT_W]");
  EXPECT_EQ(titleOf(AirTransport(), 1), "[AIR_TRANSPORT_V]");
}

TEST(FunctionSectionWrite, unknownDirection_isRefused) {
  const char* const TEXT = "Invalid material transport direction type!";
  EXPECT_TRUE(has(thrown([] { titleOf(ThermalTransport(), 3); }), TEXT, "[ThermalTransport::write]"));
  EXPECT_TRUE(has(thrown([] { titleOf(MoistureTransport(), -1); }), TEXT, "[MoistureTransport::write]"));
  EXPECT_TRUE(has(thrown([] { titleOf(AirTransport(), 3); }), TEXT, "[AirTransport::write]"));
}

template <typename Group>
void expectBinaryRoundTrip() {
  Group group;
  group.functions[0] = splineOf({0, 1}, {1, 2});
  std::stringstream stream;
  group.writeBinary(stream);
  Group again;
  again.readBinary(stream);
  EXPECT_EQ(again.functions[0].x, group.functions[0].x);
  EXPECT_EQ(again.functions[0].y, group.functions[0].y);
  EXPECT_TRUE(again.functions[0].valid);
}

TEST(FunctionSectionBinary, written_isReadBack) {
  expectBinaryRoundTrip<ThermalStorage>();
  expectBinaryRoundTrip<ThermalTransport>();
  expectBinaryRoundTrip<MoistureStorage>();
  expectBinaryRoundTrip<MoistureTransport>();
  expectBinaryRoundTrip<AirTransport>();
  expectBinaryRoundTrip<VaporContactResistanceModel>();
}

TEST(FunctionSectionBinary, endOfStream_isRefused) {
  std::istringstream empty;
  EXPECT_THROW(ThermalTransport().readBinary(empty), TKL::Exception);
  std::stringstream stream;
  VaporContactResistanceModel().writeBinary(stream);
  std::string bytes = stream.str();
  std::istringstream cut(bytes.substr(0, bytes.size() - 1));
  EXPECT_TRUE(has(thrown([&] { VaporContactResistanceModel().readBinary(cut); }),
                  "Error reading from input stream!", "[VaporContactResistanceModel::readBinary]"));
}

TEST(FunctionSectionBinary, fallingAbscissae_areRefused) {
  ThermalTransport group;
  group.functions[0].x = {1, 0};
  group.functions[0].y = {1, 1};
  std::stringstream stream;
  group.writeBinary(stream);
  EXPECT_THROW(ThermalTransport().readBinary(stream), TKL::Exception);
}

}  // namespace MM

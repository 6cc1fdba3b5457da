#include <zqcore/core/Types.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Velmora::Tessara::ZQ::Core::Types;

// The vocabularies are ASCII, so widening byte by byte is an exact conversion.
std::wstring Widen(char const *text) { return std::wstring(text, text + std::char_traits<char>::length(text)); }

// Every value of a vocabulary has a text, and both parsers give the value back from it.
template <typename Enum, typename ToText, typename Parse>
void ExpectRoundTrips(int first, int last, int step, ToText toText, Parse parse) {
  for (int value = first; value <= last; value += step) {
    char const *text = toText(static_cast<Enum>(value));
    ASSERT_NE(text, nullptr) << "value " << value;
    EXPECT_EQ(static_cast<long long>(parse(text)), value) << text;
    EXPECT_EQ(static_cast<long long>(parse(Widen(text).c_str())), value) << text;
  }
}

TEST(TypesToText, GivesCanonicalTextsAtTheirValues) {
  EXPECT_STREQ(Types::StatusCodeToString(Types::StatusCode_t(-1)), "Undefined");
  EXPECT_STREQ(Types::StatusCodeToString(Types::StatusCode_t(0)), "Success");
  EXPECT_STREQ(Types::StatusCodeToString(Types::StatusCode_t(25)), "StringTranscodingError");
  EXPECT_STREQ(Types::StatusCodeToString(Types::StatusCode_t(43)), "ColorChannelValueOutOfRange");
  EXPECT_STREQ(Types::StatusCodeToString(Types::StatusCode_t(57)), "TransformNotInitializedError");
  EXPECT_STREQ(Types::StatusCodeToString(Types::StatusCode_t(89)), "HDF5ArrayShapeFromAttributesError");
  EXPECT_STREQ(Types::LogLevelToString(Types::LogLevel_t(40)), "ERROR");
  EXPECT_STREQ(Types::VariantTypeToString(Types::VariantType_t(6)), "FloatingPointArray");
  EXPECT_STREQ(Types::TransformTypeToString(Types::TransformType_t(6)), "RotationAroundAxis");
  EXPECT_STREQ(Types::BufferModeToString(Types::BufferMode_t(2)), "PerProcess");
}

TEST(TypesToText, GivesNullOutsideTheVocabulary) {
  EXPECT_EQ(Types::StatusCodeToString(Types::StatusCode_t(-2)), nullptr);
  EXPECT_EQ(Types::StatusCodeToString(Types::StatusCode_t(90)), nullptr);
  EXPECT_EQ(Types::LogLevelToString(Types::LogLevel_t(15)), nullptr);
  EXPECT_EQ(Types::VariantTypeToString(Types::VariantType_t(9)), nullptr);
  EXPECT_EQ(Types::TransformTypeToString(Types::TransformType_t(9)), nullptr);
  EXPECT_EQ(Types::BufferModeToString(Types::BufferMode_t(3)), nullptr);
  EXPECT_EQ(Types::BufferModeToString(Types::BufferMode_t(-1)), nullptr);
}

TEST(TypesParse, EveryValueRoundTripsThroughNarrowAndWideText) {
  auto status = [](auto text) { return Types::ParseStatusCode(text); };
  auto level = [](auto text) { return Types::ParseLogLevel(text); };
  auto variant = [](auto text) { return Types::ParseVariantType(text); };
  auto transform = [](auto text) { return Types::ParseTransformType(text); };
  auto buffer = [](auto text) { return Types::ParseBufferMode(text); };
  ExpectRoundTrips<Types::StatusCode_t>(-1, 89, 1, Types::StatusCodeToString, status);
  ExpectRoundTrips<Types::LogLevel_t>(0, 50, 10, Types::LogLevelToString, level);
  ExpectRoundTrips<Types::VariantType_t>(0, 8, 1, Types::VariantTypeToString, variant);
  ExpectRoundTrips<Types::TransformType_t>(0, 8, 1, Types::TransformTypeToString, transform);
  ExpectRoundTrips<Types::BufferMode_t>(0, 2, 1, Types::BufferModeToString, buffer);
}

TEST(TypesParse, MatchesWholeTextsExactlyOrFails) {
  EXPECT_EQ(Types::ParseStatusCode(static_cast<char const *>(nullptr)), -1);
  EXPECT_EQ(Types::ParseStatusCode(static_cast<wchar_t const *>(nullptr)), -1);
  EXPECT_EQ(Types::ParseStatusCode(""), -1);
  EXPECT_EQ(Types::ParseStatusCode("success"), -1);
  EXPECT_EQ(Types::ParseStatusCode("Success "), -1);
  EXPECT_EQ(Types::ParseStatusCode("Succes"), -1);
  EXPECT_EQ(Types::ParseStatusCode(L"Succ\u00e9ss"), -1);
  EXPECT_EQ(Types::ParseBufferMode("perprocess"), Types::BufferMode_t::Undefined);
  EXPECT_EQ(Types::ParseVariantType("Strings"), Types::VariantType_t::Undefined);
  EXPECT_EQ(Types::ParseTransformType(L"rotation"), Types::TransformType_t::Undefined);
}

TEST(TypesParse, LogLevelAcceptsNamesAndTheirExactDecimals) {
  EXPECT_EQ(Types::ParseLogLevel("40"), Types::LogLevel_t::ERROR);
  EXPECT_EQ(Types::ParseLogLevel(L"50"), Types::LogLevel_t::CRITICAL);
  for (char const *text : {"error", "45", "15", "010", " 40", "DEBUG\n"}) {
    EXPECT_EQ(Types::ParseLogLevel(text), Types::LogLevel_t::NOTSET) << text;
  }
}

} // namespace

#include <zqcore/core/Types.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>

namespace Velmora::Tessara::ZQ::Core {

namespace {

struct Entry {
  int value;
  char const *text;
};

/// A closed vocabulary: entries in ascending order of value, and the value a failed
/// parse gives. A value may carry several texts; the first one is its canonical text.
struct Vocabulary {
  Entry const *first;
  Entry const *last;
  int failedValue;
};

// Enumerators are spelled as their texts, so each entry is generated from its name.
#define ZQ_ENTRY(Enum, name)                                                                                           \
  Entry { static_cast<int>(Types::Enum::name), #name }
#define ZQ_STATUS(name) ZQ_ENTRY(StatusCode_t, name)

constexpr Entry statusEntries[] = {
    ZQ_STATUS(Undefined),
    ZQ_STATUS(Success),
    ZQ_STATUS(GenericError),
    ZQ_STATUS(InterruptError),
    ZQ_STATUS(NullPointerError),
    ZQ_STATUS(NotImplementedYetError),
    ZQ_STATUS(APILockedError),
    ZQ_STATUS(OutOfMemoryError),
    ZQ_STATUS(OutOfRangeError),
    ZQ_STATUS(GetNCPUsError),
    ZQ_STATUS(SizeExceedsInt32Error),
    ZQ_STATUS(RegExSyntaxError),
    ZQ_STATUS(NotConfiguredWithHDF5Error),
    ZQ_STATUS(NotConfiguredWithMPIError),
    ZQ_STATUS(NotConfiguredWithRelayportError),
    ZQ_STATUS(NotConfiguredWithDRXUnitsError),
    ZQ_STATUS(InvalidProgressStateError),
    ZQ_STATUS(InvalidLogLevelError),
    ZQ_STATUS(InvalidVariantTypeError),
    ZQ_STATUS(InvalidTransformTypeError),
    ZQ_STATUS(InvalidBufferModeError),
    ZQ_STATUS(BadArrayShapeError),
    ZQ_STATUS(IndexOutOfRangeError),
    ZQ_STATUS(ArrayDimsOutOfRangeError),
    ZQ_STATUS(ArrayTooSmallError),
    ZQ_STATUS(ArrayMemoryNonContiguousError),
    ZQ_STATUS(StringTranscodingError),
    ZQ_STATUS(StringTruncationError),
    ZQ_STATUS(StringAsInt16Error),
    ZQ_STATUS(StringAsInt32Error),
    ZQ_STATUS(StringAsInt64Error),
    ZQ_STATUS(StringAsSSizeError),
    ZQ_STATUS(StringAsFloat32Error),
    ZQ_STATUS(StringAsFloat64Error),
    ZQ_STATUS(CreateDirectoryError),
    ZQ_STATUS(SystemMonitorCollectDataError),
    ZQ_STATUS(SystemMonitorReadProcStatusError),
    ZQ_STATUS(UnitsConverterInitializationError),
    ZQ_STATUS(UnitsConverterSetPreferredUnitSystemError),
    ZQ_STATUS(UnitsConverterGetPreferredUnitSystemError),
    ZQ_STATUS(UnitsConverterGetConversionDataError),
    ZQ_STATUS(UnitsConverterInvalidLengthUnitError),
    ZQ_STATUS(ColorNotInitializedError),
    ZQ_STATUS(ColorInitializationError),
    ZQ_STATUS(ColorChannelValueOutOfRange),
    ZQ_STATUS(InvalidDataForColorError),
    ZQ_STATUS(VariantNotInitializedError),
    ZQ_STATUS(VariantBadUnitsError),
    ZQ_STATUS(VariantImplicitTypeConversionError),
    ZQ_STATUS(VariantIntegerTypeConversionError),
    ZQ_STATUS(VariantFloatingPointTypeConversionError),
    ZQ_STATUS(VariantStringTypeConversionError),
    ZQ_STATUS(VariantColorTypeConversionError),
    ZQ_STATUS(VariantIntegerArrayTypeConversionError),
    ZQ_STATUS(VariantFloatingPointArrayTypeConversionError),
    ZQ_STATUS(VariantStringArrayTypeConversionError),
    ZQ_STATUS(VariantCustomTypeConversionError),
    ZQ_STATUS(VariantUnitsConversionError),
    ZQ_STATUS(TransformNotInitializedError),
    ZQ_STATUS(TransformBadLengthUnitError),
    ZQ_STATUS(TransformTypeMismatchError),
    ZQ_STATUS(InvalidDataForVector1Error),
    ZQ_STATUS(InvalidDataForVector2Error),
    ZQ_STATUS(InvalidDataForVector3Error),
    ZQ_STATUS(InvalidDataForVector4Error),
    ZQ_STATUS(InvalidDataForMatrix1x1Error),
    ZQ_STATUS(InvalidDataForMatrix2x2Error),
    ZQ_STATUS(InvalidDataForMatrix3x3Error),
    ZQ_STATUS(InvalidDataForMatrix4x4Error),
    ZQ_STATUS(HDF5CreateFileError),
    ZQ_STATUS(HDF5OpenOrCreateFileError),
    ZQ_STATUS(HDF5OpenFileError),
    ZQ_STATUS(HDF5CloseFileError),
    ZQ_STATUS(HDF5HasGroupError),
    ZQ_STATUS(HDF5OpenOrCreateGroupError),
    ZQ_STATUS(HDF5OpenGroupError),
    ZQ_STATUS(HDF5CloseGroupError),
    ZQ_STATUS(HDF5RemoveGroupError),
    ZQ_STATUS(HDF5HasAttributeError),
    ZQ_STATUS(HDF5GetAttributeError),
    ZQ_STATUS(HDF5SetAttributeError),
    ZQ_STATUS(HDF5CreateDataspaceError),
    ZQ_STATUS(HDF5HasDatasetError),
    ZQ_STATUS(HDF5CreateDatasetError),
    ZQ_STATUS(HDF5OpenDatasetError),
    ZQ_STATUS(HDF5ReadError),
    ZQ_STATUS(HDF5WriteError),
    ZQ_STATUS(HDF5ReadHyperslabError),
    ZQ_STATUS(HDF5WriteHyperslabError),
    ZQ_STATUS(HDF5ArrayShapeToAttributesError),
    ZQ_STATUS(HDF5ArrayShapeFromAttributesError),
};

// A level is also accepted by its decimal value, tested right after its name.
constexpr Entry logLevelEntries[] = {
    ZQ_ENTRY(LogLevel_t, NOTSET), {0, "0"},   ZQ_ENTRY(LogLevel_t, DEBUG),    {10, "10"},
    ZQ_ENTRY(LogLevel_t, INFO),   {20, "20"}, ZQ_ENTRY(LogLevel_t, WARNING),  {30, "30"},
    ZQ_ENTRY(LogLevel_t, ERROR),  {40, "40"}, ZQ_ENTRY(LogLevel_t, CRITICAL), {50, "50"},
};

constexpr Entry variantTypeEntries[] = {
    ZQ_ENTRY(VariantType_t, Undefined),
    ZQ_ENTRY(VariantType_t, Integer),
    ZQ_ENTRY(VariantType_t, FloatingPoint),
    ZQ_ENTRY(VariantType_t, String),
    ZQ_ENTRY(VariantType_t, Color),
    ZQ_ENTRY(VariantType_t, IntegerArray),
    ZQ_ENTRY(VariantType_t, FloatingPointArray),
    ZQ_ENTRY(VariantType_t, StringArray),
    ZQ_ENTRY(VariantType_t, Custom),
};

constexpr Entry transformTypeEntries[] = {
    ZQ_ENTRY(TransformType_t, Undefined),
    ZQ_ENTRY(TransformType_t, Matrix4x4),
    ZQ_ENTRY(TransformType_t, Matrix3x3),
    ZQ_ENTRY(TransformType_t, Vector3),
    ZQ_ENTRY(TransformType_t, Scaling),
    ZQ_ENTRY(TransformType_t, UniformScaling),
    ZQ_ENTRY(TransformType_t, RotationAroundAxis),
    ZQ_ENTRY(TransformType_t, Rotation),
    ZQ_ENTRY(TransformType_t, Translation),
};

constexpr Entry bufferModeEntries[] = {
    ZQ_ENTRY(BufferMode_t, Undefined),
    ZQ_ENTRY(BufferMode_t, Single),
    ZQ_ENTRY(BufferMode_t, PerProcess),
};

#undef ZQ_STATUS
#undef ZQ_ENTRY

/// True when the entries carry the values first, first + 1, ... without a gap.
template <std::size_t N> constexpr bool IsConsecutive(Entry const (&entries)[N], int first) {
  for (std::size_t i = 0; i < N; ++i) {
    if (entries[i].value != first + static_cast<int>(i)) {
      return false;
    }
  }
  return true;
}

// Status values are part of the interface: -1 to 89, each once, none skipped.
static_assert(static_cast<int>(Types::StatusCode_t::HDF5ArrayShapeFromAttributesError) == 89);
static_assert(std::size(statusEntries) == 91 && IsConsecutive(statusEntries, -1));
static_assert(IsConsecutive(variantTypeEntries, 0) && IsConsecutive(transformTypeEntries, 0) &&
              IsConsecutive(bufferModeEntries, 0));

constexpr Vocabulary statusCodes{std::begin(statusEntries), std::end(statusEntries), -1};
constexpr Vocabulary logLevels{std::begin(logLevelEntries), std::end(logLevelEntries), 0};
constexpr Vocabulary variantTypes{std::begin(variantTypeEntries), std::end(variantTypeEntries), 0};
constexpr Vocabulary transformTypes{std::begin(transformTypeEntries), std::end(transformTypeEntries), 0};
constexpr Vocabulary bufferModes{std::begin(bufferModeEntries), std::end(bufferModeEntries), 0};

/// The canonical text of `value`, or null when the vocabulary has no such value.
char const *TextOf(Vocabulary const &vocabulary, int value) {
  for (Entry const *entry = vocabulary.first; entry != vocabulary.last; ++entry) {
    if (entry->value == value) {
      return entry->text;
    }
  }
  return nullptr;
}

/// The first value whose text equals `text` byte for byte; null counts as "", which
/// no vocabulary holds. Anything else gives the failed-parse value.
int ValueOf(Vocabulary const &vocabulary, char const *text) {
  if (text != nullptr) {
    for (Entry const *entry = vocabulary.first; entry != vocabulary.last; ++entry) {
      if (std::strcmp(entry->text, text) == 0) {
        return entry->value;
      }
    }
  }
  return vocabulary.failedValue;
}

int ValueOf(Vocabulary const &vocabulary, wchar_t const *text) {
  std::string narrow;
  if (!ZQStringEncoding::WideToUTF8(nullptr, text, narrow)) {
    return vocabulary.failedValue;
  }
  return ValueOf(vocabulary, narrow.c_str());
}

} // namespace

char const *Types::StatusCodeToString(StatusCode_t code) { return TextOf(statusCodes, static_cast<int>(code)); }
long long Types::ParseStatusCode(char const *text) { return ValueOf(statusCodes, text); }
long long Types::ParseStatusCode(wchar_t const *text) { return ValueOf(statusCodes, text); }

char const *Types::LogLevelToString(LogLevel_t level) { return TextOf(logLevels, static_cast<int>(level)); }
Types::LogLevel_t Types::ParseLogLevel(char const *text) { return LogLevel_t(ValueOf(logLevels, text)); }
Types::LogLevel_t Types::ParseLogLevel(wchar_t const *text) { return LogLevel_t(ValueOf(logLevels, text)); }

char const *Types::VariantTypeToString(VariantType_t type) { return TextOf(variantTypes, static_cast<int>(type)); }
Types::VariantType_t Types::ParseVariantType(char const *text) { return VariantType_t(ValueOf(variantTypes, text)); }
Types::VariantType_t Types::ParseVariantType(wchar_t const *text) { return VariantType_t(ValueOf(variantTypes, text)); }

char const *Types::TransformTypeToString(TransformType_t type) {
  return TextOf(transformTypes, static_cast<int>(type));
}
Types::TransformType_t Types::ParseTransformType(char const *text) {
  return TransformType_t(ValueOf(transformTypes, text));
}
Types::TransformType_t Types::ParseTransformType(wchar_t const *text) {
  return TransformType_t(ValueOf(transformTypes, text));
}

char const *Types::BufferModeToString(BufferMode_t mode) { return TextOf(bufferModes, static_cast<int>(mode)); }
Types::BufferMode_t Types::ParseBufferMode(char const *text) { return BufferMode_t(ValueOf(bufferModes, text)); }
Types::BufferMode_t Types::ParseBufferMode(wchar_t const *text) { return BufferMode_t(ValueOf(bufferModes, text)); }

} // namespace Velmora::Tessara::ZQ::Core

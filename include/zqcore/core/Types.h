// Types: the library's closed vocabularies, their texts and their parsers.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static tables only: no state, usable before initialisation and after finalisation.
/// The ...ToString functions give null for a value outside the vocabulary; the parsers
/// compare whole texts byte for byte and give the vocabulary's default for anything else.
class ZQCORE_EXPORT Types {
public:
  enum class StatusCode_t : int {
    Undefined = -1,
    Success = 0,
    GenericError,
    InterruptError,
    NullPointerError,
    NotImplementedYetError,
    APILockedError,
    OutOfMemoryError,
    OutOfRangeError,
    GetNCPUsError,
    SizeExceedsInt32Error,
    RegExSyntaxError,
    NotConfiguredWithHDF5Error,
    NotConfiguredWithMPIError,
    NotConfiguredWithRelayportError,
    NotConfiguredWithDRXUnitsError,
    InvalidProgressStateError,
    InvalidLogLevelError,
    InvalidVariantTypeError,
    InvalidTransformTypeError,
    InvalidBufferModeError,
    BadArrayShapeError,
    IndexOutOfRangeError,
    ArrayDimsOutOfRangeError,
    ArrayTooSmallError,
    ArrayMemoryNonContiguousError,
    StringTranscodingError,
    StringTruncationError,
    StringAsInt16Error,
    StringAsInt32Error,
    StringAsInt64Error,
    StringAsSSizeError,
    StringAsFloat32Error,
    StringAsFloat64Error,
    CreateDirectoryError,
    SystemMonitorCollectDataError,
    SystemMonitorReadProcStatusError,
    UnitsConverterInitializationError,
    UnitsConverterSetPreferredUnitSystemError,
    UnitsConverterGetPreferredUnitSystemError,
    UnitsConverterGetConversionDataError,
    UnitsConverterInvalidLengthUnitError,
    ColorNotInitializedError,
    ColorInitializationError,
    ColorChannelValueOutOfRange,
    InvalidDataForColorError,
    VariantNotInitializedError,
    VariantBadUnitsError,
    VariantImplicitTypeConversionError,
    VariantIntegerTypeConversionError,
    VariantFloatingPointTypeConversionError,
    VariantStringTypeConversionError,
    VariantColorTypeConversionError,
    VariantIntegerArrayTypeConversionError,
    VariantFloatingPointArrayTypeConversionError,
    VariantStringArrayTypeConversionError,
    VariantCustomTypeConversionError,
    VariantUnitsConversionError,
    TransformNotInitializedError,
    TransformBadLengthUnitError,
    TransformTypeMismatchError,
    InvalidDataForVector1Error,
    InvalidDataForVector2Error,
    InvalidDataForVector3Error,
    InvalidDataForVector4Error,
    InvalidDataForMatrix1x1Error,
    InvalidDataForMatrix2x2Error,
    InvalidDataForMatrix3x3Error,
    InvalidDataForMatrix4x4Error,
    HDF5CreateFileError,
    HDF5OpenOrCreateFileError,
    HDF5OpenFileError,
    HDF5CloseFileError,
    HDF5HasGroupError,
    HDF5OpenOrCreateGroupError,
    HDF5OpenGroupError,
    HDF5CloseGroupError,
    HDF5RemoveGroupError,
    HDF5HasAttributeError,
    HDF5GetAttributeError,
    HDF5SetAttributeError,
    HDF5CreateDataspaceError,
    HDF5HasDatasetError,
    HDF5CreateDatasetError,
    HDF5OpenDatasetError,
    HDF5ReadError,
    HDF5WriteError,
    HDF5ReadHyperslabError,
    HDF5WriteHyperslabError,
    HDF5ArrayShapeToAttributesError,
    HDF5ArrayShapeFromAttributesError
  };

  enum class LogLevel_t : int { NOTSET = 0, DEBUG = 10, INFO = 20, WARNING = 30, ERROR = 40, CRITICAL = 50 };

  enum class VariantType_t : int {
    Undefined = 0,
    Integer,
    FloatingPoint,
    String,
    Color,
    IntegerArray,
    FloatingPointArray,
    StringArray,
    Custom
  };

  enum class TransformType_t : int {
    Undefined = 0,
    Matrix4x4,
    Matrix3x3,
    Vector3,
    Scaling,
    UniformScaling,
    RotationAroundAxis,
    Rotation,
    Translation
  };

  enum class BufferMode_t : int { Undefined = 0, Single, PerProcess };

  static char const *StatusCodeToString(StatusCode_t code);
  /// -1 (Undefined) for any text that is not a status name.
  static long long ParseStatusCode(char const *text);
  static long long ParseStatusCode(wchar_t const *text);

  static char const *LogLevelToString(LogLevel_t level);
  /// Accepts a level's name or its decimal value; NOTSET otherwise.
  static LogLevel_t ParseLogLevel(char const *text);
  static LogLevel_t ParseLogLevel(wchar_t const *text);

  static char const *VariantTypeToString(VariantType_t type);
  static VariantType_t ParseVariantType(char const *text);
  static VariantType_t ParseVariantType(wchar_t const *text);

  static char const *TransformTypeToString(TransformType_t type);
  static TransformType_t ParseTransformType(char const *text);
  static TransformType_t ParseTransformType(wchar_t const *text);

  static char const *BufferModeToString(BufferMode_t mode);
  static BufferMode_t ParseBufferMode(char const *text);
  static BufferMode_t ParseBufferMode(wchar_t const *text);
};

} // namespace Velmora::Tessara::ZQ::Core

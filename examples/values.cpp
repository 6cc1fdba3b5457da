// Values with units: a length, a color and a translation read from the program's
// arguments (or defaults), converted and printed through variants.
#include "HostExample.h"

#include <cstdio>
#include <cstring>

namespace HostExample {

namespace {

/// The value of "--name=value" among the arguments, or `fallback`.
zq::ZQString Option(int argc, char **argv, char const *name, char const *fallback) {
  zq::ZQString const prefix = zq::ZQString("--") += zq::ZQString(name) += "=";
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], prefix.c_str(), static_cast<std::size_t>(prefix.Size())) == 0) {
      return zq::ZQString(argv[i] + prefix.Size());
    }
  }
  return zq::ZQString(fallback);
}

/// Prints a failed step with the status name and what the context's error stack says.
void Report(int rank, char const *what, zq::ZQResult const &status, zq::ZQContext &context) {
  char const *name = zq::Types::StatusCodeToString(static_cast<zq::Types::StatusCode_t>(status.GetStatusCode()));
  zq::ZQString const reason = context.GetErrorStack().Pop();
  std::printf("[rank %d]   %s failed: %s%s%s\n", rank, what, name != nullptr ? name : "unknown status",
              reason.IsEmpty() ? "" : ", ", reason.c_str());
}

/// "x, y, z unit": the numbers as a string array, the unit (a last word that is not a
/// number, if any) left in `units`.
zq::ZQVariant::StringArray SplitCoordinates(zq::ZQString const &text, zq::ZQString &units) {
  zq::ZQString numbers(text);
  numbers.Strip();
  long long const lastBlank = numbers.ReverseFind(' ');
  bool notANumber = false;
  units = numbers.Substring(lastBlank + 1, numbers.Size());
  units.AsFloat64(notANumber, false);
  if (lastBlank < 0 || !notANumber) {
    units.Clear();
  } else {
    numbers = numbers.Substring(0, lastBlank);
  }
  zq::ZQVariant::StringArray coordinates;
  coordinates.Resize(numbers.Count(',') + 1);
  long long start = 0;
  long long n = 0;
  for (long long i = 0; i <= numbers.Size(); ++i) {
    if (i == numbers.Size() || numbers[i] == ',') {
      coordinates(n++) = numbers.Substring(start, i);
      start = i + 1;
    }
  }
  return coordinates;
}

void ShowLength(zq::ZQString const &text, zq::ZQContext &context, int rank) {
  zq::ZQVariant length(text);
  std::printf("[rank %d] length '%s' reads as %s\n", rank, text.c_str(), length.ToString(nullptr).c_str());
  zq::ZQResult const status = length.ConvertToUnits(zq::ZQString("m"), &context);
  if (!status.OK()) {
    Report(rank, "conversion to metres", status, context);
    return;
  }
  std::printf("[rank %d]   in metres: %s\n", rank, length.ToString(nullptr).c_str());
}

void ShowColor(zq::ZQString const &text, zq::ZQContext &context, int rank) {
  zq::ZQColor color;
  zq::ZQResult const status = color.InitializeRGBA8(text, &context);
  if (!status.OK()) {
    Report(rank, "color", status, context);
    return;
  }
  unsigned int packed = 0;
  color.GetRGBA8(packed);
  std::printf("[rank %d] color '%s' is %s, packed 0x%08X\n", rank, text.c_str(),
              zq::ZQVariant(color).ToString(nullptr).c_str(), packed);
}

void ShowTranslation(zq::ZQString const &text, zq::ZQContext &context, int rank) {
  zq::ZQString units;
  zq::ZQVariant::StringArray const coordinates = SplitCoordinates(text, units);
  zq::ZQVariant parsed;
  zq::ZQResult status = parsed.SetFloatingPointArray(coordinates, units);
  zq::ZQVector<double, 3> translation;
  if (status.OK()) {
    status = parsed.GetFloatingPointArray(translation);
  }
  if (!status.OK()) {
    Report(rank, "translation", status, context);
    return;
  }
  zq::ZQVariant vector(translation, units);
  std::printf("[rank %d] translation '%s' is the vector %s\n", rank, text.c_str(), vector.ToString(nullptr).c_str());
  zq::ZQVariant inMetres(translation, units);
  status = inMetres.ConvertToUnits(zq::ZQString("m"), &context);
  if (!status.OK()) {
    Report(rank, "conversion to metres", status, context);
    return;
  }
  // A converted double array keeps its old unit text, so the new one is set explicitly.
  inMetres.SetUnits(zq::ZQString("m"), &context);
  std::printf("[rank %d]   in metres: %s\n", rank, inMetres.ToString(nullptr).c_str());
}

} // namespace

void ShowValuesWithUnits(int argc, char **argv, zq::ZQContext &context, int rank) {
  ShowLength(Option(argc, argv, "length", "12.5 mm"), context, rank);
  ShowColor(Option(argc, argv, "color", "(255, 128, 0)"), context, rank);
  ShowTranslation(Option(argc, argv, "translation", "10, 20, 30.5 mm"), context, rank);
}

} // namespace HostExample

// HDF5: each rank stores what it computed in a file of its own and reads it back.
#include "HostExample.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>

namespace HostExample {

namespace {

using Values = zq::ZQArrayNativeType<double, long long>;
using Settings = zq::ZQMapObjectTypes<zq::ZQString, zq::ZQString>;

// A partial sum series of this rank, in an array with room to grow.
Values ComputeSeries(int rank) {
  Values series;
  series.Reserve(16);
  series.Resize(10);
  double sum = 0.0;
  for (long long i = 0; i < series.Size(); ++i) {
    sum += 1.0 / std::pow(static_cast<double>(i + 1), 2.0 + rank);
    series(i) = sum;
  }
  return series;
}

// Writes the series with its capacity, the settings and three attributes; false on failure.
bool StoreResults(zq::ZQContext *context, std::string const &path, Values const &series, Settings const &settings,
                  int rank, int nProcs) {
  using Util = zq::ZQHDF5Util;
  long long file = -1;
  if (!Util::CreateHDF5File(context, path.c_str(), file).OK()) {
    return false;
  }
  bool const ok = Util::Write(context, file, series, "series", 0, nullptr, true).OK() &&
                  Util::Write(context, file, settings, "settings").OK() &&
                  Util::SetAttribute(context, file, "rank", rank).OK() &&
                  Util::SetAttribute(context, file, "nProcs", nProcs).OK() &&
                  Util::SetAttribute(context, file, L"title", L"partial sums \u2211 1/n\u00b2").OK();
  return Util::CloseHDF5File(context, file).OK() && ok;
}

// Reads everything back and compares it with what was written.
bool CheckResults(zq::ZQContext *context, std::string const &path, Values const &series, Settings const &settings,
                  int rank, std::string &title) {
  using Util = zq::ZQHDF5Util;
  long long file = -1;
  if (!Util::OpenHDF5File(context, path.c_str(), file).OK()) {
    return false;
  }
  Values back;
  Settings settingsBack;
  int rankBack = -1;
  // The file holds the whole capacity; the used part is what the series had.
  bool ok = Util::Read(context, file, back, "series", true, false).OK() && back.Size() == series.Capacity() &&
            Util::Read(context, file, settingsBack, "settings", true).OK() && settingsBack == settings &&
            Util::GetAttribute(context, file, "rank", rankBack).OK() && rankBack == rank &&
            Util::GetAttribute(context, file, "title", title).OK();
  for (long long i = 0; ok && i < series.Size(); ++i) {
    ok = back(i) == series(i);
  }
  return Util::CloseHDF5File(context, file).OK() && ok;
}

} // namespace

std::string StoreAndReadBackHDF5(zq::ZQContext &context, int rank, int nProcs) {
  std::string const path =
      (std::filesystem::temp_directory_path() / ("zq_host_example_rank" + std::to_string(rank) + ".h5")).string();
  Values const series = ComputeSeries(rank);
  Settings settings;
  settings["method"] = "partial sums";
  settings["exponent"] = std::to_string(2 + rank).c_str();
  settings["unit"] = "\xE2\x80\x94";

  context.GetErrorStack().Clear();
  std::string title;
  bool const ok = StoreResults(&context, path, series, settings, rank, nProcs) &&
                  CheckResults(&context, path, series, settings, rank, title);
  std::printf("[rank %d] HDF5 %s: %lld of %lld values (last %.12f), %zu settings, title '%s': check %s\n", rank,
              path.c_str(), series.Size(), series.Capacity(), series(series.Size() - 1), settings.size(), title.c_str(),
              ok ? "passed" : "FAILED");
  while (!context.GetErrorStack().IsEmpty()) {
    std::printf("[rank %d]   %s\n", rank, context.GetErrorStack().Pop().c_str());
  }
  return path;
}

} // namespace HostExample

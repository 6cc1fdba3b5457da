// Writes a small file of every persisted form, for reading by other programs.
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQString.h>

using namespace Velmora::Tessara::ZQ::Core;

int main(int argc, char **argv) {
  long long file = -1;
  if (argc != 2 || !ZQHDF5Util::CreateHDF5File(nullptr, argv[1], file).OK()) {
    return 1;
  }
  ZQArrayNativeType<long long, long long> values;
  values.Reserve(6);
  values.Resize(3);
  for (long long i = 0; i < 6; ++i) {
    values(i) = 100 + i;
  }
  ZQArrayObjectType<ZQString, long long> names;
  names.Resize(2);
  names(0) = "first";
  names(1) = "\xC3\xA9t\xC3\xA9";
  ZQMapObjectTypes<ZQString, ZQString> settings;
  settings["unit"] = "mm";
  bool const ok = ZQHDF5Util::Write(nullptr, file, values, "values", 0, nullptr, true).OK() &&
                  ZQHDF5Util::Write(nullptr, file, names, "names", false).OK() &&
                  ZQHDF5Util::Write(nullptr, file, settings, "settings").OK() &&
                  ZQHDF5Util::SetAttribute(nullptr, file, "title", "dump sample").OK() &&
                  ZQHDF5Util::SetAttribute(nullptr, file, "scale", 2.5).OK();
  return ZQHDF5Util::CloseHDF5File(nullptr, file).OK() && ok ? 0 : 1;
}

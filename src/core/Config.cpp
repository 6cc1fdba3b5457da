#include <zqcore/core/Config.h>
#include <zqcore/core/VersionInfo.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <iterator>
#include <string>

namespace Velmora::Tessara::ZQ::Core {

namespace {

struct Feature {
  char const *name;
  bool builtIn;
};

constexpr Feature features[] = {
    {"HDF5", true}, {"MPI", true}, {"RELAYPORT", false}, {"DRXUNITS", false}, {"XERCES", false}};

} // namespace

bool Config::IsWithHDF5() { return true; }

bool Config::IsWithMPI() { return true; }

bool Config::IsWithRelayport() { return false; }

bool Config::IsWithDRXUnits() { return false; }

bool Config::IsWithXerces() { return false; }

bool Config::IsWith(char const *feature) {
  ZQString name(feature);
  name.Strip().Upper();
  for (Feature const &known : features) {
    if (name == known.name) {
      return known.builtIn;
    }
  }
  return false;
}

bool Config::IsWith(wchar_t const *feature) {
  std::string narrow;
  return ZQStringEncoding::WideToUTF8(nullptr, feature, narrow) && IsWith(narrow.c_str());
}

char const *Config::VELMORA_RELEASE() { return VersionInfo::__VELMORA_RELEASE_22_2__; }

} // namespace Velmora::Tessara::ZQ::Core

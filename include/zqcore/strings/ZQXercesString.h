// ZQXercesString: the text type of the XML layer, an empty shell in builds without it.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Holds nothing: this build has no XML layer (Config::IsWithXerces() is false).
class ZQCORE_EXPORT ZQXercesString {
public:
  /// Keeps nothing of `text`.
  explicit ZQXercesString(char const *text);

  /// Empties `out`; the flag is ignored.
  void AsZQString(ZQString &out, bool flag) const;
  /// Always null: there is no native text.
  void const *AsNative() const;
};

} // namespace Velmora::Tessara::ZQ::Core

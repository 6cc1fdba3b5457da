// StringUtil: the public face of the indent and title lines of ZQStringUtil.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static members only.
class ZQCORE_EXPORT StringUtil {
public:
  /// Four blanks.
  static String GetIndent();
  /// "======== title 'name' ========", each part left out when empty; both empty give "".
  static String ToTitleString(String const &title);
  static String ToTitleString(String const &title, String const &name);
};

} // namespace Velmora::Tessara::ZQ::Core

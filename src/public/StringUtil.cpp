#include <zqcore/public/String.h>
#include <zqcore/public/StringUtil.h>
#include <zqcore/strings/ZQStringUtil.h>

#include "public/detail/FacadeAccess.h"
#include "public/detail/InnerOf.h"

namespace Velmora::Tessara::ZQ::Core {

String StringUtil::GetIndent() { return detail::ToPublic(ZQStringUtil::GetIndent()); }

String StringUtil::ToTitleString(String const &title) {
  return detail::ToPublic(ZQStringUtil::ToTitleString(detail::InnerOf(title)));
}

String StringUtil::ToTitleString(String const &title, String const &name) {
  return detail::ToPublic(ZQStringUtil::ToTitleString(detail::InnerOf(title), detail::InnerOf(name)));
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/public/Math.h>
#include <zqcore/public/String.h>

#include "system/detail/FloatingPointControls.h"

namespace Velmora::Tessara::ZQ::Core {

void Math::GetFloatingPointControls(String &text) { detail::FloatingPointControlsText(*text.GetString()); }

} // namespace Velmora::Tessara::ZQ::Core

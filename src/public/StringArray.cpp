#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/public/StringArray.h>
#include <zqcore/strings/ZQString.h>

#include "public/detail/ArrayForwarders.h"
#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

ZQ_DEFINE_PUBLIC_ARRAY_MEMBERS(StringArray, ZQArrayObjectType<ZQString, long long>)

void StringArray::Set(long long i, String const &value) { array->GetData()[i] = *value.GetString(); }
String StringArray::Get(long long i) const { return detail::ToPublic(ZQString(array->GetData()[i])); }

} // namespace Velmora::Tessara::ZQ::Core

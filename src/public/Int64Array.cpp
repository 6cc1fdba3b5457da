#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/public/Int64Array.h>

#include "public/detail/ArrayForwarders.h"

namespace Velmora::Tessara::ZQ::Core {

ZQ_DEFINE_PUBLIC_ARRAY_MEMBERS(Int64Array, ZQArrayNativeType<long long, long long>)

void Int64Array::Set(long long i, long long value) { array->GetData()[i] = value; }
long long Int64Array::Get(long long i) const { return array->GetData()[i]; }

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/public/Float64Array.h>

#include "public/detail/ArrayForwarders.h"

namespace Velmora::Tessara::ZQ::Core {

ZQ_DEFINE_PUBLIC_ARRAY_MEMBERS(Float64Array, ZQArrayNativeType<double, long long>)

void Float64Array::Set(long long i, double value) { array->GetData()[i] = value; }
double Float64Array::Get(long long i) const { return array->GetData()[i]; }

} // namespace Velmora::Tessara::ZQ::Core

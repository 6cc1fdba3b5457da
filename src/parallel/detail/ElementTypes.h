// Widths of the element types that ZQMPT moves, and the lists of those types.
#pragma once

#include <zqcore/wmpi.h>

#include "core/detail/Fatal.h"


namespace Velmora::Tessara::ZQ::Core::detail {

/// Width in bytes of an element of `datatype`. Raw bytes (code 19) have no width, since
/// buffer traffic never asks for one; they and unknown codes end the job.
inline long long ElementWidth(int datatype) {
  switch (datatype) {
  case WMPI_CHAR:
  case WMPI_UNSIGNED_CHAR:
    return 1;
  case WMPI_SHORT:
    return 2;
  case WMPI_INT:
  case WMPI_FLOAT:
    return 4;
  case WMPI_DOUBLE:
  case WMPI_LONG_LONG:
    return 8;
  case WMPI_WCHAR:
    // The platform's wide character; the layer underneath maps code 24 to the same width.
    return static_cast<long long>(sizeof(wchar_t));
  default:
    FatalError();
  }
}

} // namespace Velmora::Tessara::ZQ::Core::detail

/// Applies X to each element type of the typed messages, and to the numeric ones.
#define ZQ_MPT_ELEMENT_TYPES(X) X(char) X(wchar_t) X(unsigned char) ZQ_MPT_NUMBER_TYPES(X)
#define ZQ_MPT_NUMBER_TYPES(X) X(short) X(int) X(long long) X(float) X(double)

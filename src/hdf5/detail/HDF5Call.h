// Shared machinery of the HDF5 operations: the bookkeeping of one call, the conversion of
// wide names, and the HDF5 types of each element type.
#pragma once

#include <zqcore/containers/ZQArrayBase.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <hdf5.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core::detail {

using Status = Types::StatusCode_t;

/// The result of one operation under construction: it starts as success, and every
/// failure sets the operation's one failure status and pushes its reason.
class HDF5Call {
public:
  HDF5Call(ZQContext *reportTo, Status failureStatus)
      : context(reportTo), failure(static_cast<long long>(failureStatus)), result(0) {}

  /// A negative HDF5 return value reports HDF5's error and fails the call.
  bool Check(long long value) {
    if (value >= 0) {
      return true;
    }
    ZQHDF5Util::HandleHDF5Error(context);
    Fail();
    return false;
  }
  /// Fails with the status alone.
  void Fail() { result.SetStatusCode(failure); }
  /// Fails with a message of its own.
  void Fail(char const *message) {
    if (context != nullptr) {
      context->GetErrorStack().Push(message);
    }
    Fail();
  }
  /// Takes over the result of an inner operation, whose status passes up unchanged.
  bool Adopt(ZQResult const &inner) {
    if (!inner.OK()) {
      result = inner;
    }
    return inner.OK();
  }
  /// Closes an id that was opened; a failing close counts as a failure.
  void Close(hid_t id, herr_t (*close)(hid_t)) {
    if (id >= 0) {
      Check(close(id));
    }
  }

  bool OK() const { return result.OK(); }
  ZQResult const &Result() const { return result; }
  ZQContext *Context() const { return context; }

private:
  ZQContext *context;
  long long failure;
  ZQResult result;
};

/// Converts a wide name to UTF-8 and calls `forward` with it. A name that cannot be
/// converted gives `failure` and no message, as every name conversion of this layer.
template <typename Forward> ZQResult WithUTF8Name(wchar_t const *name, Status failure, Forward &&forward) {
  std::string narrow;
  if (!ZQStringEncoding::WideToUTF8(nullptr, name, narrow)) {
    return ZQResult(static_cast<long long>(failure));
  }
  return forward(narrow.c_str());
}

/// The file and memory datatypes of each element type.
template <typename T> struct ElementTypes;
template <> struct ElementTypes<unsigned char> {
  static hid_t File() { return H5T_STD_U8LE; }
  static hid_t Memory() { return H5T_NATIVE_UCHAR; }
};
template <> struct ElementTypes<int> {
  static hid_t File() { return H5T_STD_I32LE; }
  static hid_t Memory() { return H5T_NATIVE_INT; }
};
template <> struct ElementTypes<long long> {
  static hid_t File() { return H5T_STD_I64LE; }
  static hid_t Memory() { return H5T_NATIVE_LLONG; }
};
template <> struct ElementTypes<float> {
  static hid_t File() { return H5T_IEEE_F32LE; }
  static hid_t Memory() { return H5T_NATIVE_FLOAT; }
};
template <> struct ElementTypes<double> {
  static hid_t File() { return H5T_IEEE_F64LE; }
  static hid_t Memory() { return H5T_NATIVE_DOUBLE; }
};

/// The sizes (or capacities) of `shape` over its rank, as HDF5 extents.
inline void ShapeExtents(ZQArrayBase<long long> const &shape, bool useCapacity, hsize_t (&extents)[3]) {
  for (long long d = 0; d < 3; ++d) {
    long long const extent = useCapacity ? shape.GetCapacity(d) : shape.GetSize(d);
    extents[d] = extent > 0 ? static_cast<hsize_t>(extent) : 0;
  }
}

/// Gives `shape` the rank and extents read from a dataspace: Reset at rank 0.
inline void ResizeToExtents(ZQArrayBase<long long> &shape, int rank, hsize_t const (&extents)[3]) {
  auto const extent = [&](int d) { return static_cast<long long>(extents[d]); };
  switch (rank) {
  case 1:
    shape.Resize(extent(0));
    break;
  case 2:
    shape.Resize(extent(0), extent(1));
    break;
  case 3:
    shape.Resize(extent(0), extent(1), extent(2));
    break;
  default:
    shape.Reset();
    break;
  }
}

/// Reads the rank and extents of `space` into `shape`; a rank above the maximum fails
/// the call with its own message.
inline void ShapeFromDataspace(HDF5Call &call, hid_t space, ZQArrayBase<long long> &shape) {
  int const rank = H5Sget_simple_extent_ndims(space);
  if (!call.Check(rank)) {
    return;
  }
  if (rank > ZQHDF5Util::MaxDimensions) {
    call.Fail("array rank > max. number of dimensions");
    return;
  }
  hsize_t extents[3] = {0, 0, 0};
  if (call.Check(H5Sget_simple_extent_dims(space, extents, nullptr))) {
    ResizeToExtents(shape, rank, extents);
  }
}

} // namespace Velmora::Tessara::ZQ::Core::detail

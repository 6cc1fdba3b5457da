// Attributes of HDF5 objects: numbers as rank-1 arrays, texts as scalar fixed-length
// strings of their UTF-8 bytes.
#include <zqcore/hdf5/ZQHDF5Util.h>

#include <zqcore/core/ZQContext.h>
#include <zqcore/strings/ZQString.h>

#include "hdf5/detail/HDF5Call.h"

#include <cstring>
#include <vector>

namespace Velmora::Tessara::ZQ::Core {

using detail::ElementTypes;
using detail::HDF5Call;
using detail::Status;
using detail::WithUTF8Name;

namespace {

/// Number of elements of an attribute's dataspace: 0 for a scalar one. A rank above the
/// maximum fails the call.
long long AttributeElementCount(HDF5Call &call, hid_t space) {
  int const rank = H5Sget_simple_extent_ndims(space);
  if (!call.Check(rank)) {
    return 0;
  }
  if (rank > ZQHDF5Util::MaxDimensions) {
    call.Fail("array rank > max. number of dimensions");
    return 0;
  }
  hsize_t extents[3] = {0, 0, 0};
  if (!call.Check(H5Sget_simple_extent_dims(space, extents, nullptr))) {
    return 0;
  }
  long long count = rank > 0 ? 1 : 0;
  for (int d = 0; d < rank; ++d) {
    count *= static_cast<long long>(extents[d]);
  }
  return count;
}

/// Replaces the attribute `name` of `object` by one of `fileType` over `space`, written
/// from `values` in `memoryType`.
void ReplaceAttribute(HDF5Call &call, hid_t object, char const *name, hid_t fileType, hid_t memoryType, hid_t space,
                      void const *values) {
  if (H5Aexists(object, name) > 0) {
    // A failed delete is told, and the create below reports what follows from it.
    call.Check(H5Adelete(object, name));
  }
  hid_t const attribute = H5Acreate2(object, name, fileType, space, H5P_DEFAULT, H5P_DEFAULT);
  if (call.Check(attribute)) {
    call.Check(H5Awrite(attribute, memoryType, values));
  }
  call.Close(attribute, H5Aclose);
}

template <typename T>
ZQResult GetNumbers(ZQContext *context, long long object, char const *name, T *values, long long count) {
  HDF5Call call(context, Status::HDF5GetAttributeError);
  hid_t const memoryType = H5Tcopy(ElementTypes<T>::Memory());
  hid_t attribute = -1;
  hid_t space = -1;
  if (call.Check(memoryType)) {
    attribute = H5Aopen(object, name, H5P_DEFAULT);
  }
  if (call.OK() && call.Check(attribute)) {
    space = H5Aget_space(attribute);
  }
  if (call.OK() && call.Check(space)) {
    long long const stored = AttributeElementCount(call, space);
    if (call.OK() && stored != count) {
      call.Fail("size of attribute dataspace does not match expected size");
    } else if (call.OK() && stored != 0) {
      if (values == nullptr) {
        call.Fail("zero pointer given");
      } else {
        call.Check(H5Aread(attribute, memoryType, values));
      }
    }
  }
  call.Close(space, H5Sclose);
  call.Close(attribute, H5Aclose);
  call.Close(memoryType, H5Tclose);
  return call.Result();
}

template <typename T>
ZQResult SetNumbers(ZQContext *context, long long object, char const *name, T const *values, long long count) {
  HDF5Call call(context, Status::HDF5SetAttributeError);
  if (count < 0) {
    call.Fail("negative number of attribute values given");
    return call.Result();
  }
  hid_t const fileType = H5Tcopy(ElementTypes<T>::File());
  hid_t const memoryType = call.Check(fileType) ? H5Tcopy(ElementTypes<T>::Memory()) : -1;
  hsize_t const extent = static_cast<hsize_t>(count);
  hid_t const space = call.OK() && call.Check(memoryType) ? H5Screate_simple(1, &extent, nullptr) : -1;
  if (call.OK() && call.Check(space)) {
    // HDF5 wants a buffer even for no elements.
    T const none{};
    ReplaceAttribute(call, object, name, fileType, memoryType, space, count == 0 ? &none : values);
  }
  call.Close(space, H5Sclose);
  call.Close(memoryType, H5Tclose);
  call.Close(fileType, H5Tclose);
  return call.Result();
}

ZQResult GetText(ZQContext *context, long long object, char const *name, std::string &value) {
  HDF5Call call(context, Status::HDF5GetAttributeError);
  hid_t const attribute = H5Aopen(object, name, H5P_DEFAULT);
  hid_t space = -1;
  hid_t type = -1;
  if (call.Check(attribute)) {
    space = H5Aget_space(attribute);
  }
  if (call.OK() && call.Check(space)) {
    int const rank = H5Sget_simple_extent_ndims(space);
    if (call.Check(rank) && rank > 0) {
      call.Fail("rank != 0 for string attribute");
    }
  }
  if (call.OK()) {
    hsize_t const bytes = H5Aget_storage_size(attribute);
    type = H5Tcopy(H5T_C_S1);
    if (call.Check(type) && call.Check(H5Tset_size(type, static_cast<size_t>(bytes)))) {
      std::vector<char> text(static_cast<size_t>(bytes) + 1, '\0');
      call.Check(H5Aread(attribute, type, text.data()));
      value = text.data();
    }
  }
  call.Close(type, H5Tclose);
  call.Close(space, H5Sclose);
  call.Close(attribute, H5Aclose);
  return call.Result();
}

ZQResult SetText(ZQContext *context, long long object, char const *name, char const *value) {
  HDF5Call call(context, Status::HDF5SetAttributeError);
  hid_t const space = H5Screate(H5S_SCALAR);
  hid_t const type = call.Check(space) ? H5Tcopy(H5T_C_S1) : -1;
  if (call.OK() && call.Check(type)) {
    // HDF5 refuses a size of 0: an empty text cannot be stored, and an old one stays.
    size_t const bytes = value != nullptr ? std::strlen(value) : 0;
    if (call.Check(H5Tset_size(type, bytes))) {
      ReplaceAttribute(call, object, name, type, type, space, value);
    }
  }
  call.Close(type, H5Tclose);
  call.Close(space, H5Sclose);
  return call.Result();
}

} // namespace

ZQResult ZQHDF5Util::HasAttribute(ZQContext *, long long object, char const *name, bool &exists) {
  exists = H5Aexists(object, name) > 0;
  return ZQResult(0);
}

ZQResult ZQHDF5Util::HasAttribute(ZQContext *context, long long object, wchar_t const *name, bool &exists) {
  exists = false;
  return WithUTF8Name(name, Status::HDF5HasAttributeError,
                      [&](char const *narrow) { return HasAttribute(context, object, narrow, exists); });
}

// The numeric forms of one element type: single values are arrays of one, and the wide
// name forms convert the name and forward.
#define ZQ_HDF5_NUMERIC_ATTRIBUTES(T)                                                                                  \
  ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, char const *name, T *values,                 \
                                    long long count) {                                                                 \
    return GetNumbers<T>(context, object, name, values, count);                                                        \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, wchar_t const *name, T *values,              \
                                    long long count) {                                                                 \
    return WithUTF8Name(name, Status::HDF5GetAttributeError,                                                           \
                        [&](char const *narrow) { return GetNumbers<T>(context, object, narrow, values, count); });    \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, char const *name, T &value) {                \
    return GetAttribute(context, object, name, &value, 1);                                                             \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, wchar_t const *name, T &value) {             \
    return GetAttribute(context, object, name, &value, 1);                                                             \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, T const *values,           \
                                    long long count) {                                                                 \
    return SetNumbers<T>(context, object, name, values, count);                                                        \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name, T const *values,        \
                                    long long count) {                                                                 \
    return WithUTF8Name(name, Status::HDF5SetAttributeError,                                                           \
                        [&](char const *narrow) { return SetNumbers<T>(context, object, narrow, values, count); });    \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, T value) {                 \
    return SetAttribute(context, object, name, &value, 1);                                                             \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name, T value) {              \
    return SetAttribute(context, object, name, &value, 1);                                                             \
  }

ZQ_HDF5_NUMERIC_ATTRIBUTES(int)
ZQ_HDF5_NUMERIC_ATTRIBUTES(long long)
ZQ_HDF5_NUMERIC_ATTRIBUTES(float)
ZQ_HDF5_NUMERIC_ATTRIBUTES(double)

#undef ZQ_HDF5_NUMERIC_ATTRIBUTES

ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, char const *name, std::string &value) {
  return GetText(context, object, name, value);
}

ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, wchar_t const *name, std::string &value) {
  return WithUTF8Name(name, Status::HDF5GetAttributeError,
                      [&](char const *narrow) { return GetText(context, object, narrow, value); });
}

ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, char const *name, ZQString &value) {
  std::string text;
  ZQResult const result = GetText(context, object, name, text);
  value = ZQString(text.data(), static_cast<long long>(text.size()));
  return result;
}

ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, wchar_t const *name, ZQString &value) {
  return WithUTF8Name(name, Status::HDF5GetAttributeError,
                      [&](char const *narrow) { return GetAttribute(context, object, narrow, value); });
}

ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, char const *name, std::wstring &value) {
  std::string text;
  ZQResult result = GetText(context, object, name, text);
  if (result.OK() && !ZQStringEncoding::UTF8ToWide(nullptr, text.c_str(), value)) {
    if (context != nullptr) {
      ZQString message("could not convert '");
      message += text.c_str();
      message += "' to a wide string, getting of HDF5 attribute failed.";
      context->GetErrorStack()(message);
    }
    result.SetStatusCode(static_cast<long long>(Status::HDF5GetAttributeError));
  }
  return result;
}

ZQResult ZQHDF5Util::GetAttribute(ZQContext *context, long long object, wchar_t const *name, std::wstring &value) {
  return WithUTF8Name(name, Status::HDF5GetAttributeError,
                      [&](char const *narrow) { return GetAttribute(context, object, narrow, value); });
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, char const *value) {
  return SetText(context, object, name, value);
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name, char const *value) {
  return WithUTF8Name(name, Status::HDF5SetAttributeError,
                      [&](char const *narrow) { return SetText(context, object, narrow, value); });
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, wchar_t const *value) {
  std::string text;
  if (!ZQStringEncoding::WideToUTF8(nullptr, value, text)) {
    // The message names the attribute, not the value that failed.
    if (context != nullptr) {
      ZQString message("could not convert '");
      message += name;
      message += "' to a UTF-8 encoded string, setting of HDF5 attribute failed.";
      context->GetErrorStack()(message);
    }
    return ZQResult(static_cast<long long>(Status::HDF5SetAttributeError));
  }
  return SetText(context, object, name, text.c_str());
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name, wchar_t const *value) {
  return WithUTF8Name(name, Status::HDF5SetAttributeError,
                      [&](char const *narrow) { return SetAttribute(context, object, narrow, value); });
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, std::string const &value) {
  return SetText(context, object, name, value.c_str());
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name, std::string const &value) {
  return SetAttribute(context, object, name, value.c_str());
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, std::wstring const &value) {
  return SetAttribute(context, object, name, value.c_str());
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name,
                                  std::wstring const &value) {
  return SetAttribute(context, object, name, value.c_str());
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, char const *name, ZQString const &value) {
  return SetText(context, object, name, value.c_str());
}

ZQResult ZQHDF5Util::SetAttribute(ZQContext *context, long long object, wchar_t const *name, ZQString const &value) {
  return SetAttribute(context, object, name, value.c_str());
}

} // namespace Velmora::Tessara::ZQ::Core

// Helpers of the HDF5 tests: scratch files, open-id counting, raw inspection of what the
// library wrote, and checks of the messages it pushed.
#pragma once

#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/hdf5/ZQHDF5Util.h>

#include <gtest/gtest.h>
#include <hdf5.h>

#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace zqtest {

using Status = Velmora::Tessara::ZQ::Core::Types::StatusCode_t;
using Velmora::Tessara::ZQ::Core::ZQResult;

inline long long Code(Status status) { return static_cast<long long>(status); }

/// A file path of its own for this process and `name`, removed before use.
inline std::string ScratchPath(std::string const &name) {
  std::string const path = ::testing::TempDir() + "zq_hdf5_" + std::to_string(getpid()) + "_" + name + ".h5";
  std::remove(path.c_str());
  return path;
}

inline std::vector<char> FileBytes(std::string const &path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<char>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteBytes(std::string const &path, char const *bytes, size_t count) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes, static_cast<std::streamsize>(count));
}

/// Counts HDF5 ids opened since a snapshot and still open. Objects in files (files,
/// groups, datasets, attributes, named types) are counted by HDF5; dataspaces, datatypes
/// and property lists are found by walking the ids HDF5 handed out since the snapshot,
/// which it numbers in sequence per kind.
class OpenIds {
public:
  OpenIds() : before(Take()) {}

  long long StillOpen() const {
    Snapshot const now = Take();
    return now.objects - before.objects + ValidBetween(before.space, now.space) + ValidBetween(before.type, now.type) +
           ValidBetween(before.list, now.list);
  }

private:
  struct Snapshot {
    hid_t space;
    hid_t type;
    hid_t list;
    long long objects;
  };

  static Snapshot Take() {
    Snapshot snapshot{H5Screate(H5S_SCALAR), H5Tcopy(H5T_NATIVE_INT), H5Pcreate(H5P_DATASET_XFER),
                      static_cast<long long>(H5Fget_obj_count(H5F_OBJ_ALL, H5F_OBJ_ALL))};
    H5Sclose(snapshot.space);
    H5Tclose(snapshot.type);
    H5Pclose(snapshot.list);
    return snapshot;
  }

  static long long ValidBetween(hid_t first, hid_t last) {
    long long open = 0;
    for (hid_t id = first + 1; id < last; ++id) {
      open += H5Iis_valid(id) > 0 ? 1 : 0;
    }
    return open;
  }

  Snapshot before;
};

/// The single message a failing HDF5 call leaves: the fixed prefix, then HDF5's text.
inline ::testing::AssertionResult IsOneHDF5Message(Velmora::Tessara::ZQ::Core::ZQContext &context,
                                                   long long messagesBefore) {
  auto &stack = context.GetErrorStack();
  if (stack.GetNMsg() != messagesBefore + 1) {
    return ::testing::AssertionFailure() << (stack.GetNMsg() - messagesBefore) << " messages pushed, last '"
                                         << stack.GetLastMsg().c_str() << "'";
  }
  std::string const message = stack.GetLastMsg().c_str();
  std::string const prefix = "HDF5 error encountered: ";
  if (message.rfind(prefix, 0) != 0 || message.size() == prefix.size() || message.find('\n') != std::string::npos) {
    return ::testing::AssertionFailure() << "message '" << message << "'";
  }
  return ::testing::AssertionSuccess();
}

/// Raw view of a dataset: its dimensions, type class and size, and layout.
struct RawDataset {
  std::vector<hsize_t> dims;
  H5S_class_t spaceClass = H5S_NO_CLASS;
  H5T_class_t typeClass = H5T_NO_CLASS;
  size_t typeSize = 0;
  bool variableString = false;
  H5T_cset_t charset = H5T_CSET_ERROR;
  H5T_order_t order = H5T_ORDER_ERROR;
  H5T_sign_t sign = H5T_SGN_ERROR;
  H5D_layout_t layout = H5D_LAYOUT_ERROR;
  std::vector<hsize_t> chunk;
  int deflateLevel = -1;
};

inline RawDataset InspectDataset(hid_t loc, char const *name) {
  RawDataset raw;
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  if (dataset < 0) {
    return raw;
  }
  hid_t const space = H5Dget_space(dataset);
  raw.spaceClass = H5Sget_simple_extent_type(space);
  raw.dims.resize(static_cast<size_t>(H5Sget_simple_extent_ndims(space)));
  H5Sget_simple_extent_dims(space, raw.dims.data(), nullptr);
  hid_t const type = H5Dget_type(dataset);
  raw.typeClass = H5Tget_class(type);
  raw.typeSize = H5Tget_size(type);
  if (raw.typeClass == H5T_STRING) {
    raw.variableString = H5Tis_variable_str(type) > 0;
    raw.charset = H5Tget_cset(type);
  } else {
    raw.order = H5Tget_order(type);
  }
  if (raw.typeClass == H5T_INTEGER) {
    raw.sign = H5Tget_sign(type);
  }
  hid_t const creation = H5Dget_create_plist(dataset);
  raw.layout = H5Pget_layout(creation);
  if (raw.layout == H5D_CHUNKED) {
    raw.chunk.resize(raw.dims.size());
    H5Pget_chunk(creation, static_cast<int>(raw.chunk.size()), raw.chunk.data());
    for (int f = 0; f < H5Pget_nfilters(creation); ++f) {
      unsigned flags = 0;
      size_t count = 1;
      unsigned level = 0;
      if (H5Pget_filter2(creation, static_cast<unsigned>(f), &flags, &count, &level, 0, nullptr, nullptr) ==
          H5Z_FILTER_DEFLATE) {
        raw.deflateLevel = static_cast<int>(level);
      }
    }
  }
  H5Pclose(creation);
  H5Tclose(type);
  H5Sclose(space);
  H5Dclose(dataset);
  return raw;
}

/// Reads a whole numeric dataset with the raw API.
template <typename T> std::vector<T> RawValues(hid_t loc, char const *name, hid_t memoryType) {
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  hid_t const space = H5Dget_space(dataset);
  std::vector<T> values(static_cast<size_t>(H5Sget_simple_extent_npoints(space)));
  if (!values.empty()) {
    H5Dread(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
  }
  H5Sclose(space);
  H5Dclose(dataset);
  return values;
}

/// Reads a whole variable-length string dataset with the raw API.
inline std::vector<std::string> RawStrings(hid_t loc, char const *name) {
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  hid_t const space = H5Dget_space(dataset);
  hid_t const type = H5Tcopy(H5T_C_S1);
  H5Tset_size(type, H5T_VARIABLE);
  std::vector<char *> pointers(static_cast<size_t>(H5Sget_simple_extent_npoints(space)), nullptr);
  std::vector<std::string> texts;
  if (!pointers.empty() && H5Dread(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, pointers.data()) >= 0) {
    for (char *text : pointers) {
      texts.emplace_back(text != nullptr ? text : "<null>");
    }
    H5Dvlen_reclaim(type, space, H5P_DEFAULT, pointers.data());
  }
  H5Tclose(type);
  H5Sclose(space);
  H5Dclose(dataset);
  return texts;
}

/// A single long long attribute read with the raw API; -999 when it is missing.
inline long long RawInt64Attribute(hid_t object, char const *name) {
  long long value = -999;
  if (H5Aexists(object, name) > 0) {
    hid_t const attribute = H5Aopen(object, name, H5P_DEFAULT);
    H5Aread(attribute, H5T_NATIVE_LLONG, &value);
    H5Aclose(attribute);
  }
  return value;
}

} // namespace zqtest

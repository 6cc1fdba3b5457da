// Helpers of the HDF5 tests: scratch files, open-id counting, message checks, raw reads.
#pragma once

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>
#include <hdf5.h>

#include <string>
#include <unistd.h>
#include <vector>

namespace zqtest {

using Status = Velmora::Tessara::ZQ::Core::Types::StatusCode_t;
using Util = Velmora::Tessara::ZQ::Core::ZQHDF5Util;
using Strings = Velmora::Tessara::ZQ::Core::ZQArrayObjectType<Velmora::Tessara::ZQ::Core::ZQString, long long>;
using StringMap = Velmora::Tessara::ZQ::Core::ZQMapObjectTypes<Velmora::Tessara::ZQ::Core::ZQString,
                                                               Velmora::Tessara::ZQ::Core::ZQString>;
inline long long Code(Status status) { return static_cast<long long>(status); }

/// A fresh file named after the running test, and a context to report to.
class HDF5Test : public ::testing::Test {
public:
  void SetUp() override {
    path = ::testing::TempDir() + "zq_hdf5_" + std::to_string(getpid()) + "_" +
           ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".h5";
    ASSERT_TRUE(Velmora::Tessara::ZQ::Core::ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  }
  void TearDown() override {
    if (file >= 0) {
      Velmora::Tessara::ZQ::Core::ZQHDF5Util::CloseHDF5File(&context, file);
    }
  }
  long long Messages() { return context.GetErrorStack().GetNMsg(); }
  std::string Last() { return context.GetErrorStack().GetLastMsg().c_str(); }

  Velmora::Tessara::ZQ::Core::ZQContext context;
  std::string path;
  long long file = -1;
};

/// HDF5 ids opened since construction and still open. Objects in files are counted by
/// HDF5; dataspaces, datatypes and property lists by probing the ids handed out since,
/// which HDF5 numbers in sequence per kind.
class OpenIds {
public:
  OpenIds() : before(Take()) {}
  long long StillOpen() const {
    Snapshot const now = Take();
    long long open = now.objects - before.objects;
    for (int kind = 0; kind < 3; ++kind) {
      for (hid_t id = before.last[kind] + 1; id < now.last[kind]; ++id) {
        open += H5Iis_valid(id) > 0 ? 1 : 0;
      }
    }
    return open;
  }

private:
  struct Snapshot {
    hid_t last[3];
    long long objects;
  };
  static Snapshot Take() {
    Snapshot s{{H5Screate(H5S_SCALAR), H5Tcopy(H5T_NATIVE_INT), H5Pcreate(H5P_DATASET_XFER)},
               static_cast<long long>(H5Fget_obj_count(H5F_OBJ_ALL, H5F_OBJ_ALL))};
    H5Sclose(s.last[0]);
    H5Tclose(s.last[1]);
    H5Pclose(s.last[2]);
    return s;
  }
  Snapshot before;
};

/// Exactly one message since `before`: the fixed prefix, then HDF5's own text, one line.
inline ::testing::AssertionResult OneHDF5Message(Velmora::Tessara::ZQ::Core::ZQContext &context, long long before) {
  auto &stack = context.GetErrorStack();
  std::string const message = stack.GetLastMsg().c_str();
  std::string const prefix = "HDF5 error encountered: ";
  if (stack.GetNMsg() != before + 1 || message.rfind(prefix, 0) != 0 || message.size() == prefix.size() ||
      message.find('\n') != std::string::npos) {
    return ::testing::AssertionFailure() << stack.GetNMsg() - before << " messages, last '" << message << "'";
  }
  return ::testing::AssertionSuccess();
}

/// Dimensions (empty for a null dataspace), whether the type is `expectedType` (or, for
/// strings, variable-length ASCII-set), layout, chunk and deflate level of a dataset.
struct RawDataset {
  std::vector<hsize_t> dims;
  bool typeMatches = false;
  H5D_layout_t layout = H5D_LAYOUT_ERROR;
  std::vector<hsize_t> chunk;
  unsigned deflate = 99;
};

inline RawDataset Inspect(hid_t loc, char const *name, hid_t expectedType = H5T_C_S1) {
  RawDataset raw;
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  hid_t const space = H5Dget_space(dataset);
  raw.dims.resize(static_cast<size_t>(H5Sget_simple_extent_ndims(space)));
  H5Sget_simple_extent_dims(space, raw.dims.data(), nullptr);
  hid_t const type = H5Dget_type(dataset);
  raw.typeMatches = expectedType == H5T_C_S1 ? H5Tis_variable_str(type) > 0 && H5Tget_cset(type) == H5T_CSET_ASCII
                                             : H5Tequal(type, expectedType) > 0;
  H5Tclose(type);
  hid_t const creation = H5Dget_create_plist(dataset);
  raw.layout = H5Pget_layout(creation);
  if (raw.layout == H5D_CHUNKED) {
    raw.chunk.resize(raw.dims.size());
    H5Pget_chunk(creation, static_cast<int>(raw.chunk.size()), raw.chunk.data());
    size_t count = 1;
    H5Pget_filter_by_id2(creation, H5Z_FILTER_DEFLATE, nullptr, &count, &raw.deflate, 0, nullptr, nullptr);
  }
  H5Pclose(creation);
  H5Sclose(space);
  H5Dclose(dataset);
  return raw;
}

/// All elements of a dataset in the given memory type (strings: variable-length).
template <typename T> std::vector<T> RawRead(hid_t loc, char const *name, hid_t memoryType) {
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  hid_t const space = H5Dget_space(dataset);
  std::vector<T> values(static_cast<size_t>(H5Sget_simple_extent_npoints(space)));
  H5Dread(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
  H5Sclose(space);
  H5Dclose(dataset);
  return values;
}

inline std::vector<std::string> RawStrings(hid_t loc, char const *name) {
  hid_t const type = H5Tcopy(H5T_C_S1);
  H5Tset_size(type, H5T_VARIABLE);
  std::vector<std::string> texts;
  for (char *text : RawRead<char *>(loc, name, type)) {
    texts.emplace_back(text);
    H5free_memory(text);
  }
  H5Tclose(type);
  return texts;
}

/// A one-element 64-bit attribute read raw; -999 when missing or of another form.
inline long long RawInt64(hid_t object, char const *name) {
  long long value = -999;
  hid_t const attribute = H5Aexists(object, name) > 0 ? H5Aopen(object, name, H5P_DEFAULT) : -1;
  if (attribute >= 0) {
    hid_t const type = H5Aget_type(attribute);
    hid_t const space = H5Aget_space(attribute);
    if (H5Tequal(type, H5T_STD_I64LE) > 0 && H5Sget_simple_extent_npoints(space) == 1) {
      H5Aread(attribute, H5T_NATIVE_LLONG, &value);
    }
    H5Sclose(space);
    H5Tclose(type);
    H5Aclose(attribute);
  }
  return value;
}

} // namespace zqtest

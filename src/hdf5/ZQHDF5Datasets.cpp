// HDF5 datasets: arrays of numbers (whole or by hyperslab), arrays of strings and string
// maps, and the shape attributes that record an array's capacities.
#include <zqcore/hdf5/ZQHDF5Util.h>

#include <zqcore/containers/ZQArray.h>
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/strings/ZQString.h>

#include "hdf5/detail/HDF5Call.h"

#include <algorithm>
#include <string>

namespace Velmora::Tessara::ZQ::Core {

using detail::ElementTypes;
using detail::HDF5Call;
using detail::ShapeExtents;
using detail::ShapeFromDataspace;
using detail::Status;
using detail::WithUTF8Name;

namespace {

/// Chunks along the first dimension when the caller gives none.
constexpr long long DefaultChunkLength = 8192;
constexpr long long MaxDeflateLevel = 9;

using StringPointers = ZQArray<char const *, long long>;
using TextArray = ZQArrayObjectType<ZQString, long long>;

/// Calls `visit(position, element)` for every used element in row-major order, where
/// `position` is the element's place in storage by the capacities.
template <typename Visit> void ForEachPosition(ZQArrayBase<long long> const &shape, Visit &&visit) {
  long long const rank = shape.GetRank();
  long long const n0 = rank > 0 ? shape.GetSize(0) : 0;
  long long const n1 = rank > 1 ? shape.GetSize(1) : 1;
  long long const n2 = rank > 2 ? shape.GetSize(2) : 1;
  long long const c1 = rank > 1 ? shape.GetCapacity(1) : 1;
  long long const c2 = rank > 2 ? shape.GetCapacity(2) : 1;
  long long element = 0;
  for (long long i = 0; i < n0; ++i) {
    for (long long j = 0; j < n1; ++j) {
      for (long long k = 0; k < n2; ++k) {
        visit((i * c1 + j) * c2 + k, element++);
      }
    }
  }
}

/// The chunk extents of a new dataset, each within its dimension.
void ChunkExtents(ZQArrayBase<long long> const &shape, long long const *chunkDims, bool useCapacity,
                  hsize_t (&chunk)[3]) {
  hsize_t dims[3];
  ShapeExtents(shape, useCapacity, dims);
  for (long long d = 0; d < shape.GetRank(); ++d) {
    long long wanted = 0;
    if (chunkDims != nullptr) {
      wanted = chunkDims[d] == 0 ? static_cast<long long>(dims[d]) : std::max(chunkDims[d], 0LL);
    } else if (d == 0) {
      wanted = DefaultChunkLength;
    }
    chunk[d] = wanted == 0 || static_cast<hsize_t>(wanted) > dims[d] ? dims[d] : static_cast<hsize_t>(wanted);
  }
}

/// Opens a dataset to read it. A missing one is a failure only when it must exist;
/// otherwise `whenMissing` runs and the read succeeds with nothing.
template <typename WhenMissing>
hid_t OpenForReading(HDF5Call &call, long long loc, char const *name, bool mustExist, WhenMissing &&whenMissing) {
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  if (dataset < 0) {
    if (mustExist) {
      call.Check(dataset);
    } else {
      whenMissing();
    }
  }
  return dataset;
}

template <typename T>
ZQResult ReadNumbers(ZQContext *context, long long loc, ZQArrayNativeType<T, long long> &array, char const *name,
                     bool mustExist, bool useShapeAttributes) {
  HDF5Call call(context, Status::HDF5ReadError);
  hid_t const memoryType = H5Tcopy(ElementTypes<T>::Memory());
  hid_t dataset = -1;
  if (call.Check(memoryType)) {
    dataset = OpenForReading(call, loc, name, mustExist, [&] { array.Reset(); });
  }
  if (dataset >= 0) {
    hid_t const space = H5Dget_space(dataset);
    if (call.Check(space)) {
      ShapeFromDataspace(call, space, array);
    }
    if (call.OK() && !array.IsEmpty()) {
      call.Check(H5Dread(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, array.GetData()));
    }
    call.Close(space, H5Sclose);
    // Shape attributes are consulted only when the data came in whole.
    if (call.OK() && useShapeAttributes) {
      call.Adopt(ZQHDF5Util::ArrayShapeFromAttributes(context, array, dataset));
    }
  }
  call.Close(dataset, H5Dclose);
  call.Close(memoryType, H5Tclose);
  return call.Result();
}

template <typename T>
ZQResult WriteNumbers(ZQContext *context, long long loc, ZQArrayNativeType<T, long long> const &array, char const *name,
                      long long compressionLevel, long long const *chunkDims, bool writeCapacity) {
  HDF5Call call(context, Status::HDF5WriteError);
  hid_t const fileType = H5Tcopy(ElementTypes<T>::File());
  hid_t const memoryType = call.Check(fileType) ? H5Tcopy(ElementTypes<T>::Memory()) : -1;
  long long dataset = -1;
  if (call.OK() && call.Check(memoryType) &&
      call.Adopt(ZQHDF5Util::CreateDataset(context, loc, fileType, memoryType, array, name, compressionLevel, chunkDims,
                                           writeCapacity, dataset))) {
    call.Check(H5Dwrite(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, array.GetData()));
  }
  call.Close(dataset, H5Dclose);
  call.Close(memoryType, H5Tclose);
  call.Close(fileType, H5Tclose);
  return call.Result();
}

/// Selects the block of `counts` at `offsets` (null: at 0) in `space`.
bool SelectSlab(HDF5Call &call, hid_t space, long long rank, long long const *offsets, hsize_t const *counts) {
  hsize_t start[3] = {0, 0, 0};
  for (long long d = 0; offsets != nullptr && d < rank; ++d) {
    start[d] = static_cast<hsize_t>(offsets[d]);
  }
  return call.Check(H5Sselect_hyperslab(space, H5S_SELECT_SET, start, nullptr, counts, nullptr));
}

/// Moves the slab between the array and the dataset: `transfer` is H5Dread or a
/// wrapper of H5Dwrite.
template <typename T, typename Array, typename Transfer>
ZQResult TransferSlab(ZQContext *context, Status failure, long long dataset, Array &array, long long const *offsets,
                      Transfer &&transfer) {
  HDF5Call call(context, failure);
  if (array.Size() <= 0) {
    return call.Result();
  }
  hid_t const memoryType = H5Tcopy(ElementTypes<T>::Memory());
  long long memorySpace = -1;
  hid_t fileSpace = -1;
  if (call.Check(memoryType) && call.Adopt(ZQHDF5Util::CreateDataspace(context, array, false, memorySpace))) {
    hsize_t counts[3];
    ShapeExtents(array, false, counts);
    long long const rank = array.GetRank();
    if (SelectSlab(call, memorySpace, rank, nullptr, counts)) {
      fileSpace = H5Dget_space(dataset);
    }
    if (call.OK() && call.Check(fileSpace) && SelectSlab(call, fileSpace, rank, offsets, counts)) {
      call.Check(transfer(dataset, memoryType, memorySpace, fileSpace, H5P_DEFAULT, array.GetData()));
    }
  }
  call.Close(fileSpace, H5Sclose);
  call.Close(memorySpace, H5Sclose);
  call.Close(memoryType, H5Tclose);
  return call.Result();
}

template <typename T>
ZQResult ReadSlab(ZQContext *context, long long dataset, ZQArrayNativeType<T, long long> &array,
                  long long const *offsets) {
  return TransferSlab<T>(context, Status::HDF5ReadHyperslabError, dataset, array, offsets, H5Dread);
}

template <typename T>
ZQResult WriteSlab(ZQContext *context, long long dataset, ZQArrayNativeType<T, long long> const &array,
                   long long const *offsets) {
  return TransferSlab<T>(context, Status::HDF5WriteHyperslabError, dataset, array, offsets, H5Dwrite);
}

/// The HDF5 type of the persisted strings: variable-length C strings of UTF-8 bytes.
hid_t CreateStringType(HDF5Call &call) {
  hid_t const type = H5Tcopy(H5T_C_S1);
  if (call.Check(type)) {
    call.Check(H5Tset_size(type, H5T_VARIABLE));
  }
  return type;
}

ZQResult WriteStrings(ZQContext *context, long long loc, TextArray const &array, char const *name, bool writeCapacity) {
  HDF5Call call(context, Status::HDF5WriteError);
  // One pointer per element of the file's dataset; slots that hold no string stay "".
  StringPointers pointers;
  pointers.ResizeLike(array, writeCapacity);
  long long const slots = writeCapacity ? pointers.Capacity() : pointers.Size();
  std::fill(pointers.GetData(), pointers.GetData() + slots, "");
  ForEachPosition(array, [&](long long position, long long element) {
    pointers.GetData()[writeCapacity ? position : element] = array.GetData()[position].c_str();
  });

  long long space = -1;
  hid_t type = -1;
  hid_t creation = -1;
  hid_t dataset = -1;
  if (call.Adopt(ZQHDF5Util::CreateDataspace(context, array, writeCapacity, space))) {
    type = CreateStringType(call);
  }
  if (call.OK()) {
    creation = H5Pcreate(H5P_DATASET_CREATE);
  }
  if (call.OK() && call.Check(creation)) {
    dataset = H5Dcreate2(loc, name, type, space, H5P_DEFAULT, creation, H5P_DEFAULT);
  }
  if (call.OK() && call.Check(dataset) && slots > 0) {
    call.Check(H5Dwrite(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, pointers.GetData()));
  }
  if (call.OK() && writeCapacity) {
    call.Adopt(ZQHDF5Util::ArrayShapeToAttributes(context, array, dataset));
  }
  call.Close(dataset, H5Dclose);
  call.Close(creation, H5Pclose);
  call.Close(type, H5Tclose);
  call.Close(space, H5Sclose);
  return call.Result();
}

ZQResult ReadStrings(ZQContext *context, long long loc, TextArray &array, char const *name, bool mustExist) {
  HDF5Call call(context, Status::HDF5ReadError);
  hid_t const dataset = OpenForReading(call, loc, name, mustExist, [&] { array.Reset(); });
  if (dataset < 0) {
    return call.Result();
  }
  hid_t space = -1;
  hid_t type = -1;
  StringPointers pointers;
  hid_t const fileType = H5Dget_type(dataset);
  if (call.Check(fileType) && H5Tget_class(fileType) != H5T_STRING) {
    call.Fail("wrong class of datatype given for string array");
  }
  if (call.OK()) {
    space = H5Dget_space(dataset);
  }
  if (call.OK() && call.Check(space)) {
    ShapeFromDataspace(call, space, pointers);
  }
  if (call.OK()) {
    type = CreateStringType(call);
  }
  long long const count = pointers.Size();
  if (call.OK() && count > 0) {
    std::fill(pointers.GetData(), pointers.GetData() + count, nullptr);
    if (call.Check(H5Dread(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, pointers.GetData()))) {
      array.ResizeLike(pointers, false);
      ForEachPosition(array, [&](long long position, long long element) {
        char const *text = pointers.GetData()[element];
        array.GetData()[position] = text != nullptr ? text : "";
      });
    }
    call.Check(H5Dvlen_reclaim(type, space, H5P_DEFAULT, pointers.GetData()));
  } else if (call.OK()) {
    array.ResizeLike(pointers, false);
  }
  call.Close(type, H5Tclose);
  call.Close(space, H5Sclose);
  call.Close(fileType, H5Tclose);
  call.Close(dataset, H5Dclose);
  return call.Result();
}

ZQResult WriteMap(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> const &map,
                  char const *name) {
  TextArray rows;
  rows.Resize(static_cast<long long>(map.size()), 2);
  long long row = 0;
  for (auto const &[key, value] : map) {
    rows(row, 0) = key;
    rows(row, 1) = value;
    ++row;
  }
  return WriteStrings(context, loc, rows, name, false);
}

ZQResult ReadMap(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> &map, char const *name,
                 bool mustExist) {
  HDF5Call call(context, Status::HDF5ReadError);
  map.Reset();
  TextArray rows;
  if (!call.Adopt(ReadStrings(context, loc, rows, name, mustExist)) || rows.GetRank() == 0) {
    return call.Result();
  }
  if (rows.GetRank() != 2 || rows.GetSize(1) != 2) {
    call.Fail("error in shape of array");
    return call.Result();
  }
  for (long long row = 0; row < rows.GetSize(0); ++row) {
    if (!map.emplace(rows(row, 0), rows(row, 1)).second) {
      call.Fail("error in data, key given more than once.");
      break;
    }
  }
  return call.Result();
}

/// The attribute name of one dimension's extent: the prefix followed by the index.
std::string ExtentName(char const *prefix, long long dimension) { return prefix + std::to_string(dimension); }

} // namespace

ZQResult ZQHDF5Util::HasDataset(ZQContext *context, long long loc, char const *name, bool &exists) {
  HDF5Call call(context, Status::HDF5HasDatasetError);
  hid_t const dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  exists = dataset >= 0;
  call.Close(dataset, H5Dclose);
  return call.Result();
}

ZQResult ZQHDF5Util::HasDataset(ZQContext *context, long long loc, wchar_t const *name, bool &exists) {
  exists = false;
  return WithUTF8Name(name, Status::HDF5HasDatasetError,
                      [&](char const *narrow) { return HasDataset(context, loc, narrow, exists); });
}

ZQResult ZQHDF5Util::OpenDataset(ZQContext *context, long long loc, char const *name, bool reportFailure,
                                 long long &dataset) {
  HDF5Call call(context, Status::HDF5OpenDatasetError);
  dataset = H5Dopen2(loc, name, H5P_DEFAULT);
  if (reportFailure) {
    call.Check(dataset);
  }
  return call.Result();
}

ZQResult ZQHDF5Util::CreateDataspace(ZQContext *context, ZQArrayBase<long long> const &shape, bool useCapacity,
                                     long long &space) {
  HDF5Call call(context, Status::HDF5CreateDataspaceError);
  hsize_t extents[3];
  ShapeExtents(shape, useCapacity, extents);
  int const rank = static_cast<int>(shape.GetRank());
  bool const empty = rank == 0 || std::find(extents, extents + rank, hsize_t{0}) != extents + rank;
  space = empty ? H5Screate(H5S_NULL) : H5Screate_simple(rank, extents, nullptr);
  call.Check(space);
  return call.Result();
}

ZQResult ZQHDF5Util::CreateDataset(ZQContext *context, long long loc, long long fileType, long long,
                                   ZQArrayBase<long long> const &shape, char const *name, long long compressionLevel,
                                   long long const *chunkDims, bool useCapacity, long long &dataset) {
  HDF5Call call(context, Status::HDF5CreateDatasetError);
  dataset = -1;
  long long space = -1;
  if (!call.Adopt(CreateDataspace(context, shape, useCapacity, space))) {
    return call.Result();
  }
  bool const chunked = compressionLevel > 0 || chunkDims != nullptr;
  hid_t const creation = H5Pcreate(H5P_DATASET_CREATE);
  if (call.Check(creation) && chunked) {
    call.Check(H5Pset_layout(creation, H5D_CHUNKED));
  }
  // Chunk and filter are set in every case: a shape HDF5 cannot chunk (rank 0, an empty
  // dimension) is refused here even for a contiguous dataset.
  if (call.OK()) {
    hsize_t chunk[3] = {0, 0, 0};
    ChunkExtents(shape, chunkDims, useCapacity, chunk);
    call.Check(H5Pset_chunk(creation, static_cast<int>(shape.GetRank()), chunk));
  }
  if (call.OK()) {
    long long const level = std::clamp(compressionLevel, 0LL, MaxDeflateLevel);
    call.Check(H5Pset_deflate(creation, static_cast<unsigned>(level)));
  }
  if (call.OK()) {
    dataset = H5Dcreate2(loc, name, fileType, space, H5P_DEFAULT, chunked ? creation : H5P_DEFAULT, H5P_DEFAULT);
    call.Check(dataset);
  }
  if (call.OK() && useCapacity && !call.Adopt(ArrayShapeToAttributes(context, shape, dataset))) {
    // The caller receives no handle on failure, so none may stay open.
    H5Dclose(dataset);
    dataset = -1;
  }
  call.Close(creation, H5Pclose);
  call.Close(space, H5Sclose);
  return call.Result();
}

ZQResult ZQHDF5Util::GetDatasetShape(ZQContext *context, long long dataset, ZQArrayBase<long long> &shape) {
  HDF5Call call(context, Status::HDF5SetAttributeError);
  hid_t const space = H5Dget_space(dataset);
  if (call.Check(space)) {
    ShapeFromDataspace(call, space, shape);
  }
  call.Close(space, H5Sclose);
  return call.Result();
}

ZQResult ZQHDF5Util::ArrayShapeToAttributes(ZQContext *context, ZQArrayBase<long long> const &shape, long long object) {
  ZQResult result = SetAttribute(context, object, "NumberOfDimensions", shape.GetRank());
  for (bool const capacities : {false, true}) {
    char const *prefix = capacities ? "Capacity_" : "Size_";
    for (long long d = 0; result.OK() && d < shape.GetRank(); ++d) {
      long long const extent = capacities ? shape.GetCapacity(d) : shape.GetSize(d);
      result = SetAttribute(context, object, ExtentName(prefix, d).c_str(), extent);
    }
  }
  return result;
}

ZQResult ZQHDF5Util::ArrayShapeFromAttributes(ZQContext *context, ZQArrayBase<long long> &shape, long long object) {
  HDF5Call call(context, Status::HDF5ArrayShapeFromAttributesError);
  long long dims = 0;
  long long found = 0;
  bool exists = false;
  HasAttribute(context, object, "NumberOfDimensions", exists);
  if (exists && !GetAttribute(context, object, "NumberOfDimensions", dims).OK()) {
    call.Fail();
  }
  // Sizes and capacities are counted together, and any recorded rank is refused below:
  // this layer writes capacities for other programs and does not restore them.
  for (char const *prefix : {"Size_", "Capacity_"}) {
    for (long long d = 0; d < MaxDimensions; ++d) {
      std::string const attribute = ExtentName(prefix, d);
      long long extent = 0;
      HasAttribute(context, object, attribute.c_str(), exists);
      if (!exists || !GetAttribute(context, object, attribute.c_str(), extent).OK()) {
        break;
      }
      ++found;
    }
  }
  if (found != dims) {
    call.Fail("number of dimensions differs from number of sizes given!");
  }
  if (dims != 0) {
    call.Fail("number of dimensions differs from number of capacities given!");
  }
  if (call.OK()) {
    shape.Reset();
  }
  return call.Result();
}

// The numeric dataset forms of one element type; the wide name forms convert the name
// and forward.
#define ZQ_HDF5_NUMERIC_DATASETS(T)                                                                                    \
  ZQResult ZQHDF5Util::Read(ZQContext *context, long long loc, ZQArrayNativeType<T, long long> &array,                 \
                            char const *name, bool mustExist, bool useShapeAttributes) {                               \
    return ReadNumbers(context, loc, array, name, mustExist, useShapeAttributes);                                      \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::Read(ZQContext *context, long long loc, ZQArrayNativeType<T, long long> &array,                 \
                            wchar_t const *name, bool mustExist, bool useShapeAttributes) {                            \
    return WithUTF8Name(name, Status::HDF5ReadError, [&](char const *narrow) {                                         \
      return ReadNumbers(context, loc, array, narrow, mustExist, useShapeAttributes);                                  \
    });                                                                                                                \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::Write(ZQContext *context, long long loc, ZQArrayNativeType<T, long long> const &array,          \
                             char const *name, long long compressionLevel, long long const *chunkDims,                 \
                             bool writeCapacity) {                                                                     \
    return WriteNumbers(context, loc, array, name, compressionLevel, chunkDims, writeCapacity);                        \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::Write(ZQContext *context, long long loc, ZQArrayNativeType<T, long long> const &array,          \
                             wchar_t const *name, long long compressionLevel, long long const *chunkDims,              \
                             bool writeCapacity) {                                                                     \
    return WithUTF8Name(name, Status::HDF5WriteError, [&](char const *narrow) {                                        \
      return WriteNumbers(context, loc, array, narrow, compressionLevel, chunkDims, writeCapacity);                    \
    });                                                                                                                \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::ReadHyperslab(ZQContext *context, long long dataset, ZQArrayNativeType<T, long long> &array,    \
                                     long long const *offsets) {                                                       \
    return ReadSlab(context, dataset, array, offsets);                                                                 \
  }                                                                                                                    \
  ZQResult ZQHDF5Util::WriteHyperslab(ZQContext *context, long long dataset,                                           \
                                      ZQArrayNativeType<T, long long> const &array, long long const *offsets) {        \
    return WriteSlab(context, dataset, array, offsets);                                                                \
  }

ZQ_HDF5_NUMERIC_DATASETS(unsigned char)
ZQ_HDF5_NUMERIC_DATASETS(int)
ZQ_HDF5_NUMERIC_DATASETS(long long)
ZQ_HDF5_NUMERIC_DATASETS(float)
ZQ_HDF5_NUMERIC_DATASETS(double)

#undef ZQ_HDF5_NUMERIC_DATASETS

ZQResult ZQHDF5Util::Read(ZQContext *context, long long loc, TextArray &array, char const *name, bool mustExist, bool) {
  return ReadStrings(context, loc, array, name, mustExist);
}

ZQResult ZQHDF5Util::Read(ZQContext *context, long long loc, TextArray &array, wchar_t const *name, bool mustExist,
                          bool) {
  return WithUTF8Name(name, Status::HDF5ReadError,
                      [&](char const *narrow) { return ReadStrings(context, loc, array, narrow, mustExist); });
}

ZQResult ZQHDF5Util::Write(ZQContext *context, long long loc, TextArray const &array, char const *name,
                           bool writeCapacity) {
  return WriteStrings(context, loc, array, name, writeCapacity);
}

ZQResult ZQHDF5Util::Write(ZQContext *context, long long loc, TextArray const &array, wchar_t const *name,
                           bool writeCapacity) {
  return WithUTF8Name(name, Status::HDF5WriteError,
                      [&](char const *narrow) { return WriteStrings(context, loc, array, narrow, writeCapacity); });
}

ZQResult ZQHDF5Util::Read(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> &map,
                          char const *name, bool mustExist) {
  return ReadMap(context, loc, map, name, mustExist);
}

ZQResult ZQHDF5Util::Read(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> &map,
                          wchar_t const *name, bool mustExist) {
  return WithUTF8Name(name, Status::HDF5ReadError,
                      [&](char const *narrow) { return ReadMap(context, loc, map, narrow, mustExist); });
}

ZQResult ZQHDF5Util::Write(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> const &map,
                           char const *name) {
  return WriteMap(context, loc, map, name);
}

ZQResult ZQHDF5Util::Write(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> const &map,
                           wchar_t const *name) {
  return WithUTF8Name(name, Status::HDF5WriteError,
                      [&](char const *narrow) { return WriteMap(context, loc, map, narrow); });
}

} // namespace Velmora::Tessara::ZQ::Core

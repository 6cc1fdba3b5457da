// ZQHDF5Util: files, groups, attributes and datasets of HDF5, and how the library's values
// are laid out in them.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core {

/// The library's one door to HDF5: static operations only, no state, no lock.
///
/// Every HDF5 id crosses this interface as a `long long`: cast it to `hid_t` for raw HDF5
/// calls. A file, group or dataset id handed to the caller belongs to the caller; every
/// other id (dataspaces, datatypes, property lists, attributes) is opened and closed inside
/// one call. A failing HDF5 call pushes one message "HDF5 error encountered: <minor text>"
/// on the context's error stack (none with a null context) and gives the operation's
/// failure status; what was opened is closed again. Names are UTF-8; each wide overload
/// converts the name and forwards, and a name that cannot be converted gives the status
/// alone. HDF5's own printing of errors is left as the HDF5 library sets it.
///
/// Persisted forms, which other programs rely on:
/// - numeric attribute: rank-1 dataspace of `count` elements (one for a single number),
///   file types I32LE, I64LE, F32LE, F64LE;
/// - text attribute: scalar dataspace, fixed-length C string of exactly the UTF-8 bytes;
/// - numeric dataset: the array's sizes (or capacities when asked) as dimensions, file
///   types U8LE, I32LE, I64LE, F32LE, F64LE; contiguous, or chunked with deflate;
/// - string dataset: the same dimensions, variable-length C strings holding UTF-8;
/// - map dataset: N rows by 2 columns of those strings, key then value, in map order;
/// - rank 0 or an empty dimension: a null dataspace;
/// - shape attributes (`long long` each): "NumberOfDimensions", "Size_<i>", "Capacity_<i>".
class ZQCORE_EXPORT ZQHDF5Util {
public:
  /// The largest rank of anything read from or written to a file.
  static constexpr int MaxDimensions = 3;

  /// Pushes "HDF5 error encountered: " and the minor text of HDF5's newest API-level
  /// error entry; HDF5's error stack is left as it is.
  static void HandleHDF5Error(ZQContext *context);

  /// Files. Create replaces an existing file; OpenOrCreate opens an existing file for
  /// writing or else creates it. Both close every object of the file when it is closed.
  /// Open gives a read-only file that stays open while objects of it are.
  static ZQResult CreateHDF5File(ZQContext *context, char const *name, long long &file);
  static ZQResult CreateHDF5File(ZQContext *context, wchar_t const *name, long long &file);
  static ZQResult OpenOrCreateHDF5File(ZQContext *context, char const *name, long long &file);
  static ZQResult OpenOrCreateHDF5File(ZQContext *context, wchar_t const *name, long long &file);
  static ZQResult OpenHDF5File(ZQContext *context, char const *name, long long &file);
  static ZQResult OpenHDF5File(ZQContext *context, wchar_t const *name, long long &file);
  /// A read-only file over the caller's image of `size` bytes; the memory is neither
  /// copied nor freed and must outlive the file.
  static ZQResult CreateHDF5FileFromBuffer(ZQContext *context, void *buffer, long long size, long long &file);
  static ZQResult CloseHDF5File(ZQContext *context, long long file);

  /// Groups. HasGroup never fails: anything that is not a readable group is absent.
  /// RemoveGroup reports its failure by the status alone.
  static ZQResult HasGroup(ZQContext *context, long long loc, char const *name, bool &exists);
  static ZQResult HasGroup(ZQContext *context, long long loc, wchar_t const *name, bool &exists);
  static ZQResult OpenOrCreateGroup(ZQContext *context, long long loc, char const *name, long long &group);
  static ZQResult OpenOrCreateGroup(ZQContext *context, long long loc, wchar_t const *name, long long &group);
  static ZQResult OpenGroup(ZQContext *context, long long loc, char const *name, long long &group);
  static ZQResult OpenGroup(ZQContext *context, long long loc, wchar_t const *name, long long &group);
  static ZQResult CloseGroup(ZQContext *context, long long group);
  static ZQResult RemoveGroup(ZQContext *context, long long loc, char const *name);
  static ZQResult RemoveGroup(ZQContext *context, long long loc, wchar_t const *name);

  /// Attributes of a file, group or dataset. HasAttribute never fails. A numeric get
  /// reads exactly `count` elements (1 for a single number) and fails on any other
  /// stored count; a text get needs a scalar attribute. A set replaces an attribute of the
  /// same name whatever it held; an empty text cannot be set.
  static ZQResult HasAttribute(ZQContext *context, long long object, char const *name, bool &exists);
  static ZQResult HasAttribute(ZQContext *context, long long object, wchar_t const *name, bool &exists);

  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, int &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, int &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, long long &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, long long &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, float &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, float &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, double &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, double &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, int *values, long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, int *values, long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, long long *values,
                               long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, long long *values,
                               long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, float *values, long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, float *values,
                               long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, double *values, long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, double *values,
                               long long count);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, std::string &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, std::string &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, std::wstring &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, std::wstring &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, char const *name, ZQString &value);
  static ZQResult GetAttribute(ZQContext *context, long long object, wchar_t const *name, ZQString &value);

  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, int value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, int value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, long long value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, long long value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, float value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, float value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, double value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, double value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, int const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, int const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, long long const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, long long const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, float const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, float const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, double const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, double const *values,
                               long long count);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, char const *value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, char const *value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, wchar_t const *value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, wchar_t const *value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, std::string const &value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, std::string const &value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, std::wstring const &value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, std::wstring const &value);
  static ZQResult SetAttribute(ZQContext *context, long long object, char const *name, ZQString const &value);
  static ZQResult SetAttribute(ZQContext *context, long long object, wchar_t const *name, ZQString const &value);

  /// Datasets. HasDataset never fails. OpenDataset reports only when asked to, and else
  /// succeeds with a negative id. The ids of OpenDataset, CreateDataset and
  /// CreateDataspace are the caller's to close (H5Dclose, H5Sclose).
  static ZQResult HasDataset(ZQContext *context, long long loc, char const *name, bool &exists);
  static ZQResult HasDataset(ZQContext *context, long long loc, wchar_t const *name, bool &exists);
  static ZQResult OpenDataset(ZQContext *context, long long loc, char const *name, bool reportFailure,
                              long long &dataset);
  /// A simple dataspace of the array's sizes (capacities with `useCapacity`), or a null
  /// dataspace at rank 0 or when one of those extents is 0.
  static ZQResult CreateDataspace(ZQContext *context, ZQArrayBase<long long> const &shape, bool useCapacity,
                                  long long &space);
  /// A new dataset of `fileType` (`memoryType` is not used). A `compressionLevel` above
  /// 0 (at most 9 is used) or given `chunkDims` make it chunked with deflate; chunks are
  /// `chunkDims` (0: the whole dimension, cut to the dimension) or else 8192 along the
  /// first dimension and whole along the others. With `useCapacity` the dimensions are
  /// the capacities and the shape attributes are written.
  static ZQResult CreateDataset(ZQContext *context, long long loc, long long fileType, long long memoryType,
                                ZQArrayBase<long long> const &shape, char const *name, long long compressionLevel,
                                long long const *chunkDims, bool useCapacity, long long &dataset);
  /// Resizes `shape` to the dataset's dimensions (Reset for a null or scalar dataspace).
  static ZQResult GetDatasetShape(ZQContext *context, long long dataset, ZQArrayBase<long long> &shape);
  /// Writes the shape attributes of `shape` on `object`.
  static ZQResult ArrayShapeToAttributes(ZQContext *context, ZQArrayBase<long long> const &shape, long long object);
  /// Without shape attributes on `object`: success and a Reset `shape`. An object that
  /// carries a non-zero "NumberOfDimensions" is refused with
  /// HDF5ArrayShapeFromAttributesError; the shape is then left as it was.
  static ZQResult ArrayShapeFromAttributes(ZQContext *context, ZQArrayBase<long long> &shape, long long object);

  /// Numeric arrays. Read takes the dataset's dimensions as sizes; a missing dataset is a
  /// failure only with `mustExist` (else an empty array). With `useShapeAttributes` the
  /// result is that of ArrayShapeFromAttributes, run after the data is read. Write hands
  /// the storage over as it lies: with `writeCapacity` the capacities, gaps included;
  /// without it the array must be packed. An existing dataset is not replaced.
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<unsigned char, long long> &array,
                       char const *name, bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<unsigned char, long long> &array,
                       wchar_t const *name, bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<int, long long> &array, char const *name,
                       bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<int, long long> &array, wchar_t const *name,
                       bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<long long, long long> &array,
                       char const *name, bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<long long, long long> &array,
                       wchar_t const *name, bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<float, long long> &array, char const *name,
                       bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<float, long long> &array,
                       wchar_t const *name, bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<double, long long> &array, char const *name,
                       bool mustExist, bool useShapeAttributes);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayNativeType<double, long long> &array,
                       wchar_t const *name, bool mustExist, bool useShapeAttributes);

  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<unsigned char, long long> const &array,
                        char const *name, long long compressionLevel, long long const *chunkDims, bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<unsigned char, long long> const &array,
                        wchar_t const *name, long long compressionLevel, long long const *chunkDims,
                        bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<int, long long> const &array,
                        char const *name, long long compressionLevel, long long const *chunkDims, bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<int, long long> const &array,
                        wchar_t const *name, long long compressionLevel, long long const *chunkDims,
                        bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<long long, long long> const &array,
                        char const *name, long long compressionLevel, long long const *chunkDims, bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<long long, long long> const &array,
                        wchar_t const *name, long long compressionLevel, long long const *chunkDims,
                        bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<float, long long> const &array,
                        char const *name, long long compressionLevel, long long const *chunkDims, bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<float, long long> const &array,
                        wchar_t const *name, long long compressionLevel, long long const *chunkDims,
                        bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<double, long long> const &array,
                        char const *name, long long compressionLevel, long long const *chunkDims, bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayNativeType<double, long long> const &array,
                        wchar_t const *name, long long compressionLevel, long long const *chunkDims,
                        bool writeCapacity);

  /// Hyperslabs of an existing dataset: the array's sizes give the slab's extent,
  /// `offsets` (null: all 0) its start. An empty array succeeds without touching the file.
  static ZQResult ReadHyperslab(ZQContext *context, long long dataset,
                                ZQArrayNativeType<unsigned char, long long> &array, long long const *offsets);
  static ZQResult ReadHyperslab(ZQContext *context, long long dataset, ZQArrayNativeType<int, long long> &array,
                                long long const *offsets);
  static ZQResult ReadHyperslab(ZQContext *context, long long dataset, ZQArrayNativeType<long long, long long> &array,
                                long long const *offsets);
  static ZQResult ReadHyperslab(ZQContext *context, long long dataset, ZQArrayNativeType<float, long long> &array,
                                long long const *offsets);
  static ZQResult ReadHyperslab(ZQContext *context, long long dataset, ZQArrayNativeType<double, long long> &array,
                                long long const *offsets);
  static ZQResult WriteHyperslab(ZQContext *context, long long dataset,
                                 ZQArrayNativeType<unsigned char, long long> const &array, long long const *offsets);
  static ZQResult WriteHyperslab(ZQContext *context, long long dataset, ZQArrayNativeType<int, long long> const &array,
                                 long long const *offsets);
  static ZQResult WriteHyperslab(ZQContext *context, long long dataset,
                                 ZQArrayNativeType<long long, long long> const &array, long long const *offsets);
  static ZQResult WriteHyperslab(ZQContext *context, long long dataset,
                                 ZQArrayNativeType<float, long long> const &array, long long const *offsets);
  static ZQResult WriteHyperslab(ZQContext *context, long long dataset,
                                 ZQArrayNativeType<double, long long> const &array, long long const *offsets);

  /// String arrays. Write with `writeCapacity` stores the capacities (unused slots as "")
  /// and the shape attributes. Read gives the dataset's dimensions as sizes; its last
  /// argument is not used.
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayObjectType<ZQString, long long> &array,
                       char const *name, bool mustExist, bool unused);
  static ZQResult Read(ZQContext *context, long long loc, ZQArrayObjectType<ZQString, long long> &array,
                       wchar_t const *name, bool mustExist, bool unused);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayObjectType<ZQString, long long> const &array,
                        char const *name, bool writeCapacity);
  static ZQResult Write(ZQContext *context, long long loc, ZQArrayObjectType<ZQString, long long> const &array,
                        wchar_t const *name, bool writeCapacity);

  /// String maps. Read empties the map first; a repeated key stops it with the rows
  /// before it kept.
  static ZQResult Read(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> &map, char const *name,
                       bool mustExist);
  static ZQResult Read(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> &map,
                       wchar_t const *name, bool mustExist);
  static ZQResult Write(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> const &map,
                        char const *name);
  static ZQResult Write(ZQContext *context, long long loc, ZQMapObjectTypes<ZQString, ZQString> const &map,
                        wchar_t const *name);
};

} // namespace Velmora::Tessara::ZQ::Core

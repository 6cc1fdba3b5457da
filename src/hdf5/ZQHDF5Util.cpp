// HDF5 files and groups, and the report of HDF5's errors.
#include <zqcore/hdf5/ZQHDF5Util.h>

#include <zqcore/core/ZQContext.h>
#include <zqcore/strings/ZQString.h>

#include "hdf5/detail/HDF5Call.h"

#include <hdf5_hl.h>

namespace Velmora::Tessara::ZQ::Core {

using detail::HDF5Call;
using detail::Status;
using detail::WithUTF8Name;

namespace {

/// What the error walk collects: the message, and how many entries it still takes.
struct ErrorWalk {
  ZQString text;
  long long remaining;
};

/// Appends the minor text of each entry the walk still takes (the first one only).
herr_t WalkErrorStackHelperFunction(unsigned int, H5E_error2_t const *entry, void *clientData) {
  auto *walk = static_cast<ErrorWalk *>(clientData);
  if (walk == nullptr || walk->remaining == 0) {
    return 0;
  }
  if (walk->remaining > 0) {
    --walk->remaining;
  }
  char minor[256] = {0};
  if (H5Eget_msg(entry->min_num, nullptr, minor, sizeof minor) > 0) {
    walk->text += minor;
  }
  return 0;
}

/// Files are built against this release; a library of another version shows at the
/// first file operation, in the way HDF5 handles a mismatch.
void CheckLibraryVersion() {
  H5check_version(1, 10, 5);
  H5open();
}

/// Closing a file made by this layer also closes every object still open in it.
hid_t CreateStrongCloseAccessList() {
  hid_t const access = H5Pcreate(H5P_FILE_ACCESS);
  H5Pset_fclose_degree(access, H5F_CLOSE_STRONG);
  return access;
}

} // namespace

void ZQHDF5Util::HandleHDF5Error(ZQContext *context) {
  ErrorWalk walk{ZQString(), 1};
  walk.text.Reserve(4096);
  walk.text += "HDF5 error encountered: ";
  herr_t const walked = H5Ewalk2(H5E_DEFAULT, H5E_WALK_DOWNWARD, WalkErrorStackHelperFunction, &walk);
  if (context == nullptr) {
    return;
  }
  if (walked < 0) {
    context->GetErrorStack().Push("traversing HDF5 current error stack failed!");
  }
  context->GetErrorStack()(walk.text);
}

ZQResult ZQHDF5Util::CreateHDF5File(ZQContext *context, char const *name, long long &file) {
  HDF5Call call(context, Status::HDF5CreateFileError);
  CheckLibraryVersion();
  hid_t const access = CreateStrongCloseAccessList();
  file = H5Fcreate(name, H5F_ACC_TRUNC, H5P_DEFAULT, access);
  call.Check(file);
  H5Pclose(access);
  return call.Result();
}

ZQResult ZQHDF5Util::CreateHDF5File(ZQContext *context, wchar_t const *name, long long &file) {
  file = -1;
  return WithUTF8Name(name, Status::HDF5CreateFileError,
                      [&](char const *narrow) { return CreateHDF5File(context, narrow, file); });
}

ZQResult ZQHDF5Util::OpenOrCreateHDF5File(ZQContext *context, char const *name, long long &file) {
  HDF5Call call(context, Status::HDF5OpenOrCreateFileError);
  CheckLibraryVersion();
  hid_t const access = CreateStrongCloseAccessList();
  file = H5Fopen(name, H5F_ACC_RDWR, access);
  if (file < 0) {
    // Only the create's failure is worth telling: the open was a probe.
    H5Eclear2(H5E_DEFAULT);
    file = H5Fcreate(name, H5F_ACC_EXCL, H5P_DEFAULT, access);
  }
  call.Check(file);
  H5Pclose(access);
  return call.Result();
}

ZQResult ZQHDF5Util::OpenOrCreateHDF5File(ZQContext *context, wchar_t const *name, long long &file) {
  file = -1;
  return WithUTF8Name(name, Status::HDF5OpenOrCreateFileError,
                      [&](char const *narrow) { return OpenOrCreateHDF5File(context, narrow, file); });
}

ZQResult ZQHDF5Util::OpenHDF5File(ZQContext *context, char const *name, long long &file) {
  HDF5Call call(context, Status::HDF5OpenFileError);
  CheckLibraryVersion();
  file = H5Fopen(name, H5F_ACC_RDONLY, H5P_DEFAULT);
  call.Check(file);
  return call.Result();
}

ZQResult ZQHDF5Util::OpenHDF5File(ZQContext *context, wchar_t const *name, long long &file) {
  file = -1;
  return WithUTF8Name(name, Status::HDF5OpenFileError,
                      [&](char const *narrow) { return OpenHDF5File(context, narrow, file); });
}

ZQResult ZQHDF5Util::CreateHDF5FileFromBuffer(ZQContext *context, void *buffer, long long size, long long &file) {
  HDF5Call call(context, Status::HDF5CreateFileError);
  size_t const bytes = size > 0 ? static_cast<size_t>(size) : 0;
  file = H5LTopen_file_image(buffer, bytes, H5LT_FILE_IMAGE_DONT_COPY | H5LT_FILE_IMAGE_DONT_RELEASE);
  if (file < 0 && H5Eget_num(H5E_DEFAULT) <= 0) {
    // The image call clears HDF5's error stack while it cleans up; record the failure
    // there again so that the report (and any caller printing the stack) names it.
    H5Epush2(H5E_DEFAULT, __FILE__, "CreateHDF5FileFromBuffer", __LINE__, H5E_ERR_CLS, H5E_FILE, H5E_CANTOPENFILE,
             "no HDF5 file in the memory image");
  }
  call.Check(file);
  return call.Result();
}

ZQResult ZQHDF5Util::CloseHDF5File(ZQContext *context, long long file) {
  HDF5Call call(context, Status::HDF5CloseFileError);
  call.Check(H5Fclose(file));
  return call.Result();
}

ZQResult ZQHDF5Util::HasGroup(ZQContext *, long long loc, char const *name, bool &exists) {
  H5G_info_t info;
  exists = H5Gget_info_by_name(loc, name, &info, H5P_DEFAULT) >= 0;
  return ZQResult(0);
}

ZQResult ZQHDF5Util::HasGroup(ZQContext *context, long long loc, wchar_t const *name, bool &exists) {
  exists = false;
  return WithUTF8Name(name, Status::HDF5HasGroupError,
                      [&](char const *narrow) { return HasGroup(context, loc, narrow, exists); });
}

ZQResult ZQHDF5Util::OpenOrCreateGroup(ZQContext *context, long long loc, char const *name, long long &group) {
  HDF5Call call(context, Status::HDF5OpenOrCreateGroupError);
  group = H5Gopen2(loc, name, H5P_DEFAULT);
  if (group < 0) {
    H5Eclear2(H5E_DEFAULT);
    group = H5Gcreate2(loc, name, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
  }
  call.Check(group);
  return call.Result();
}

ZQResult ZQHDF5Util::OpenOrCreateGroup(ZQContext *context, long long loc, wchar_t const *name, long long &group) {
  group = -1;
  return WithUTF8Name(name, Status::HDF5OpenOrCreateGroupError,
                      [&](char const *narrow) { return OpenOrCreateGroup(context, loc, narrow, group); });
}

ZQResult ZQHDF5Util::OpenGroup(ZQContext *context, long long loc, char const *name, long long &group) {
  HDF5Call call(context, Status::HDF5OpenGroupError);
  group = H5Gopen2(loc, name, H5P_DEFAULT);
  call.Check(group);
  return call.Result();
}

ZQResult ZQHDF5Util::OpenGroup(ZQContext *context, long long loc, wchar_t const *name, long long &group) {
  group = -1;
  return WithUTF8Name(name, Status::HDF5OpenGroupError,
                      [&](char const *narrow) { return OpenGroup(context, loc, narrow, group); });
}

ZQResult ZQHDF5Util::CloseGroup(ZQContext *context, long long group) {
  HDF5Call call(context, Status::HDF5CloseGroupError);
  call.Check(H5Gclose(group));
  return call.Result();
}

ZQResult ZQHDF5Util::RemoveGroup(ZQContext *context, long long loc, char const *name) {
  HDF5Call call(context, Status::HDF5RemoveGroupError);
  // The status alone tells of a failed removal: no message.
  if (H5Ldelete(loc, name, H5P_DEFAULT) < 0) {
    call.Fail();
  }
  return call.Result();
}

ZQResult ZQHDF5Util::RemoveGroup(ZQContext *context, long long loc, wchar_t const *name) {
  return WithUTF8Name(name, Status::HDF5RemoveGroupError,
                      [&](char const *narrow) { return RemoveGroup(context, loc, narrow); });
}

} // namespace Velmora::Tessara::ZQ::Core

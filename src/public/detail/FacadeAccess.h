// The bridge between the facade and the inner classes for code inside the library: inner
// objects of the handle classes, their borrowing constructors, and inner strings
// brought up as public ones.
#pragma once

#include <zqcore/public/Context.h>
#include <zqcore/public/Logging.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQString.h>

#include <utility>

namespace Velmora::Tessara::ZQ::Core::detail {

struct FacadeAccess {
  /// A wrapper that borrows `inner`, which may be null: ErrorStack, MPT or Context.
  template <typename Wrapper, typename Inner> static Wrapper Borrow(Inner *inner) { return Wrapper(inner); }

  /// The inner object of `mpt`, null for a wrapper of none.
  static ZQMPT *Inner(MPT const &mpt) { return mpt.mpt; }
  /// The inner registry of `logging`, null for a wrapper of none.
  static ZQLogging *Inner(Logging const &logging) { return logging.logging; }
};

/// The inner object of a public pointer argument; a null argument gives null.
template <typename Public> auto InnerOf(Public *object) -> decltype(FacadeAccess::Inner(*object)) {
  return object != nullptr ? FacadeAccess::Inner(*object) : nullptr;
}

/// A new String that takes over the bytes of `text`, embedded zeros included.
inline String ToPublic(ZQString &&text) {
  String result;
  *result.GetString() = std::move(text);
  return result;
}

} // namespace Velmora::Tessara::ZQ::Core::detail

// ZQSet: the ordered set with a virtual destructor and a uniform clearing operation.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <set>

namespace Velmora::Tessara::ZQ::Core {

/// An ordered set of `T` by the element's less-than, with the whole interface of
/// std::set. It may be held and destroyed through a base pointer. Copies copy the elements.
template <typename T> class ZQCORE_EXPORT ZQSet : public std::set<T> {
public:
  using std::set<T>::set;
  /// Empty.
  ZQSet() = default;
  ZQSet(ZQSet const &other) = default;
  ZQSet(ZQSet &&other) = default;
  ZQSet &operator=(ZQSet const &other) = default;
  ZQSet &operator=(ZQSet &&other) = default;
  virtual ~ZQSet();

  /// Destroy every element; the set stays ready for use. The two do the same.
  virtual void Reset();
  virtual void Clear();
};

template <typename T> ZQSet<T>::~ZQSet() = default;
template <typename T> void ZQSet<T>::Reset() { this->clear(); }
template <typename T> void ZQSet<T>::Clear() { this->clear(); }

} // namespace Velmora::Tessara::ZQ::Core

// ZQMap: the ordered map with a virtual destructor and a uniform clearing operation.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <map>

namespace Velmora::Tessara::ZQ::Core {

/// An ordered map from `K` to `V` by the key's less-than (byte order for ZQString), with
/// the whole interface of std::map. It may be held and destroyed through a base pointer.
/// Copies copy the entries, and a set or map held as a value with them.
template <typename K, typename V> class ZQCORE_EXPORT ZQMap : public std::map<K, V> {
public:
  using std::map<K, V>::map;
  /// Empty.
  ZQMap() = default;
  ZQMap(ZQMap const &other) = default;
  ZQMap(ZQMap &&other) = default;
  ZQMap &operator=(ZQMap const &other) = default;
  ZQMap &operator=(ZQMap &&other) = default;
  virtual ~ZQMap();

  /// Destroy every entry; the map stays ready for use. The two do the same.
  virtual void Reset();
  virtual void Clear();
};

template <typename K, typename V> ZQMap<K, V>::~ZQMap() = default;
template <typename K, typename V> void ZQMap<K, V>::Reset() { this->clear(); }
template <typename K, typename V> void ZQMap<K, V>::Clear() { this->clear(); }

} // namespace Velmora::Tessara::ZQ::Core

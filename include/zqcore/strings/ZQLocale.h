// ZQLocale: a scoped guard that saves a category of the C runtime's locale and sets it back.
#pragma once

#include <zqcore/ZQCoreExport.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core {

/// Saves one locale category (or all of them) and restores it when destroyed. The locale
/// is process-wide and unguarded: use a guard only in single-threaded stretches.
class ZQCORE_EXPORT ZQLocale {
public:
  /// Saves the whole locale (LC_ALL) without changing anything.
  ZQLocale();
  /// Saves `category`, then sets it to `locale` (a null locale sets nothing); see Set.
  ZQLocale(int category, char const *locale);
  /// Copies hold the same saved state; each restores it when destroyed.
  ZQLocale(ZQLocale const &other);
  ZQLocale &operator=(ZQLocale const &other);
  /// Restore().
  virtual ~ZQLocale();

  /// Saves the current locale of `category`, replacing what was saved, then sets `locale`
  /// if it is not null (a refusal is silent). An unknown category changes nothing.
  void Set(int category, char const *locale);
  /// Sets the saved locale again and forgets it; does nothing when nothing is saved.
  void Restore();
  /// Forgets what was saved without touching the runtime.
  void Reset();

private:
  void Copy(ZQLocale const &other);

  int category;
  std::string savedName;
};

} // namespace Velmora::Tessara::ZQ::Core

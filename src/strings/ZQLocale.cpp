// Scoped save and restore of the C runtime's locale.
#include <zqcore/strings/ZQLocale.h>

#include <clocale>

namespace Velmora::Tessara::ZQ::Core {

ZQLocale::ZQLocale() : category(LC_ALL) {
  char const *current = std::setlocale(LC_ALL, nullptr);
  if (current != nullptr) {
    savedName = current;
  }
}

ZQLocale::ZQLocale(int initialCategory, char const *locale) : category(initialCategory) {
  Set(initialCategory, locale);
}

ZQLocale::ZQLocale(ZQLocale const &other) : category(other.category), savedName(other.savedName) {}

ZQLocale &ZQLocale::operator=(ZQLocale const &other) {
  Copy(other);
  return *this;
}

ZQLocale::~ZQLocale() { Restore(); }

void ZQLocale::Set(int newCategory, char const *locale) {
  char const *current = std::setlocale(newCategory, nullptr);
  if (current == nullptr) {
    return;
  }
  category = newCategory;
  savedName = current;
  if (locale != nullptr) {
    std::setlocale(newCategory, locale);
  }
}

void ZQLocale::Restore() {
  if (savedName.empty()) {
    return;
  }
  std::setlocale(category, savedName.c_str());
  Reset();
}

void ZQLocale::Reset() {
  category = 0;
  savedName.clear();
}

void ZQLocale::Copy(ZQLocale const &other) {
  if (this != &other) {
    category = other.category;
    savedName = other.savedName;
  }
}

} // namespace Velmora::Tessara::ZQ::Core

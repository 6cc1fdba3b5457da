// The members that Float64Array, Int64Array and StringArray share: each holds one inner
// array on the heap and forwards to it; copies are deep through the inner assignment.
#pragma once

#include <memory>

namespace Velmora::Tessara::ZQ::Core::detail {

/// A new inner array resized to `n`; nothing leaks should the resize throw.
template <typename Inner> Inner *NewArrayOfSize(long long n) {
  std::unique_ptr<Inner> array(new Inner());
  array->Resize(n);
  return array.release();
}

} // namespace Velmora::Tessara::ZQ::Core::detail

// Defines the shared members of public array class `Class` over the inner array type given
// as the remaining arguments (a template name with its commas).
#define ZQ_DEFINE_PUBLIC_ARRAY_MEMBERS(Class, ...)                                                                     \
  Class::Class() : array(new __VA_ARGS__()) {}                                                                         \
  Class::Class(long long n) : array(detail::NewArrayOfSize<__VA_ARGS__>(n)) {}                                         \
  Class::Class(Class const &other) : array(new __VA_ARGS__()) { Copy(other); }                                         \
  Class &Class::operator=(Class const &other) {                                                                        \
    Copy(other);                                                                                                       \
    return *this;                                                                                                      \
  }                                                                                                                    \
  Class::~Class() {                                                                                                    \
    delete array;                                                                                                      \
    array = nullptr;                                                                                                   \
  }                                                                                                                    \
  void Class::Copy(Class const &other) {                                                                               \
    if (array != other.array) {                                                                                        \
      *array = *other.array;                                                                                           \
    }                                                                                                                  \
  }                                                                                                                    \
  void Class::Reset() { array->Reset(); }                                                                              \
  void Class::Reserve(long long n) { array->Reserve(n); }                                                              \
  void Class::Resize(long long n) { array->Resize(n); }                                                                \
  void Class::Clear() { array->Clear(); }                                                                              \
  long long Class::Capacity() const { return array->Capacity(); }                                                      \
  long long Class::Size() const { return array->Size(); }                                                              \
  bool Class::IsEmpty() const { return array->IsEmpty(); }                                                             \
  bool Class::IsInitialized() const { return array->IsInitialized(); }                                                 \
  void *Class::GetArray() { return array; }                                                                            \
  void const *Class::GetArray() const { return array; }

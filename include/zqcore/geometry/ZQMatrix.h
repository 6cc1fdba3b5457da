// ZQMatrix: a Rows x Cols matrix held by columns, as transforms use it.
#pragma once

namespace Velmora::Tessara::ZQ::Core {

/// Size = Rows * Cols values of type T held by columns: element (r, c) is m[Rows * c + r],
/// so a 4x4 matrix keeps its translation in m[12], m[13], m[14]. The default constructor
/// zeroes every element. operator[] indexes the memory order.
template <typename T, int Rows, int Cols, int Size> class ZQMatrix {
  static_assert(Rows * Cols == Size, "ZQMatrix: Size must be Rows * Cols");

public:
  static constexpr int RowCount = Rows;
  static constexpr int ColumnCount = Cols;
  static constexpr int ElementCount = Size;

  ZQMatrix() : values{} {}

  T &operator[](int i) { return values[i]; }
  T const &operator[](int i) const { return values[i]; }

  /// Element of row r and column c.
  T &operator()(int r, int c) { return values[Rows * c + r]; }
  T const &operator()(int r, int c) const { return values[Rows * c + r]; }

  T *GetData() { return values; }
  T const *GetData() const { return values; }

private:
  T values[Size];
};

} // namespace Velmora::Tessara::ZQ::Core

// Reads spline_references.txt, which make_spline_references.py writes: exact values of basis
// functions, curves and surfaces, rounded to double once and printed so that they read back
// exactly. The build hands the file's path in ZQ_SPLINE_REFERENCES. A missing file, a lost
// row (the last line counts them), a word that is not a number or a row of the wrong length
// throws, which fails every test that reads it.
#pragma once

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace splineref {

using Row = std::vector<double>;
using Table = std::map<std::string, std::vector<Row>>;

[[noreturn]] inline void Fail(std::string const &what) {
  throw std::runtime_error(std::string(ZQ_SPLINE_REFERENCES) + ": " + what);
}

// The rows of every "<kind> <name>", in file order; read once.
inline Table const &References() {
  static Table const table = [] {
    std::ifstream in(ZQ_SPLINE_REFERENCES);
    if (!in) {
      Fail("cannot be opened");
    }
    Table rows;
    std::string line, last;
    std::size_t count = 0;
    for (int number = 1; std::getline(in, line); ++number) {
      std::istringstream words(line);
      std::string kind, name, word;
      if (!(words >> kind) || kind[0] == '#') {
        continue;
      }
      words >> name;
      last = kind + " " + name;
      count += kind == "end" ? 0 : 1;
      Row &row = rows[kind + " " + name].emplace_back();
      while (words >> word) {
        char *end = nullptr;
        row.push_back(std::strtod(word.c_str(), &end));
        if (*end != '\0') {
          Fail("line " + std::to_string(number) + ": " + word + " is not a number");
        }
      }
    }
    if (last != "end " + std::to_string(count)) {
      Fail("does not end with \"end " + std::to_string(count) + "\", the number of rows before it");
    }
    return rows;
  }();
  return table;
}

// The rows of one kind and name, each of `width` numbers unless width is 0.
inline std::vector<Row> const &Rows(std::string const &kind, std::string const &name, std::size_t width = 0) {
  auto const found = References().find(kind + " " + name);
  if (found == References().end()) {
    Fail("has no " + kind + " " + name);
  }
  for (Row const &row : found->second) {
    if (width != 0 && row.size() != width) {
      Fail(kind + " " + name + " has a row of " + std::to_string(row.size()) + " numbers, not " +
           std::to_string(width));
    }
  }
  return found->second;
}

inline Row const &One(std::string const &kind, std::string const &name, std::size_t width = 0) {
  std::vector<Row> const &rows = Rows(kind, name, width);
  if (rows.size() != 1) {
    Fail(kind + " " + name + " has " + std::to_string(rows.size()) + " rows, not one");
  }
  return rows[0];
}

// A curve of the file. Rational control points are homogeneous: x w, y w, z w, w. Each value
// row is u, then the point and its first and second derivatives.
struct Curve {
  Row const &knots;
  long long degree;
  bool rational;
  Row const &points;
  std::vector<Row> const &values;
  long long KnotCount() const { return static_cast<long long>(knots.size()); }
};

inline Curve GetCurve(std::string const &name) {
  Row const &header = One("curve", name, 2);
  Row const &knots = One("knots", name);
  auto const degree = static_cast<long long>(header[0]);
  std::size_t const pointCount = knots.size() - static_cast<std::size_t>(degree) - 1;
  Row const &points = One("points", name, pointCount * (header[1] != 0.0 ? 4 : 3));
  return {knots, degree, header[1] != 0.0, points, Rows("value", name, 10)};
}

} // namespace splineref

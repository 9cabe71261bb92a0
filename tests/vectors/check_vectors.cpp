// Replays vector files against the library and compares every output to the bit.
//
//   check_vectors FILE...
//
// A vector is one line: export, input tokens, "=", output tokens; the files say more. Prints each
// difference, then "N passed, M failed"; exits 1 on any difference, malformed line or empty file.
//
// A new export is one adapter and one row of the table below. An adapter may make several calls, to
// set a base and then measure against it: it takes inputs and puts outputs as its vectors have
// them.

#include <kavostdlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Tokens = std::vector<std::string>;

constexpr int kUntouchedByte = 0xA5;
constexpr std::uint64_t kCanonicalNan = 0x7ff8000000000000;  // sign and payload promise nothing

// A record as it looks before the call, so that a byte which must not be written shows when it is.
template <class T>
T Untouched() {
  static_assert(std::is_trivially_copyable_v<T>);
  T value;
  std::memset(&value, kUntouchedByte, sizeof value);
  return value;
}

// Takes the inputs of one vector, token by token. A token that does not fit reads as something
// harmless, and Complete() is false for the rest.
class Reader {
 public:
  explicit Reader(const Tokens& tokens) : tokens_(tokens) {}

  template <class T>
  T Take() {
    auto value = Untouched<T>();
    Read(value);
    return value;
  }

  // As many records as the count says, which was taken before; none for a count below 1.
  template <class T>
  std::vector<T> TakeArray(int count) {
    std::vector<T> items(static_cast<std::size_t>(std::max(count, 0)));
    for (T& item : items) {
      item = Take<T>();
    }
    return items;
  }

  [[nodiscard]] bool Complete() const { return fits_ && next_ == tokens_.size(); }

 private:
  template <class Bits>
  Bits ReadBits() {
    std::string_view token;
    if (next_ < tokens_.size()) {
      token = tokens_[next_++];
    }
    const bool digits = token.find_first_not_of("0123456789abcdef") == std::string_view::npos;
    fits_ = fits_ && digits && token.size() == 2 * sizeof(Bits);
    Bits bits = 0;
    std::from_chars(token.data(), token.data() + token.size(), bits, 16);
    return bits;
  }

  void Read(double& value) { value = std::bit_cast<double>(ReadBits<std::uint64_t>()); }
  void Read(IntAngle& value) { value = std::bit_cast<IntAngle>(ReadBits<std::uint32_t>()); }
  void Read(std::int16_t& value) { value = std::bit_cast<std::int16_t>(ReadBits<std::uint16_t>()); }
  void Read(std::uint16_t& value) { value = ReadBits<std::uint16_t>(); }

  template <class... Fields>
  void ReadAll(Fields&... fields) {
    (Read(fields), ...);
  }

  void Read(CoordPt& r) { ReadAll(r.north, r.east, r.elev, r.flags); }
  void Read(LineDef& r) { ReadAll(r.p1, r.p2, r.direction, r.mode); }
  void Read(AngDistRec& r) { ReadAll(r.azimuth, r.zenith, r.slopeDist, r.horizDist, r.dElev); }

  const Tokens& tokens_;
  std::size_t next_ = 0;
  bool fits_ = true;
};

// Spells the outputs of one vector, reserved fields included.
class Writer {
 public:
  template <class... Values>
  void PutAll(const Values&... values) {
    (Put(values), ...);
  }

  void Put(double value) {
    PutBits(std::isnan(value) ? kCanonicalNan : std::bit_cast<std::uint64_t>(value));
  }
  void Put(IntAngle value) { PutBits(std::bit_cast<std::uint32_t>(value)); }  // and any status
  void Put(std::uint16_t value) { PutBits(value); }

  void Put(const CoordPt& r) {
    PutAll(r.north, r.east, r.elev, r.flags, r.reserved[0], r.reserved[1], r.reserved[2]);
  }
  void Put(const LineDef& r) { PutAll(r.p1, r.p2, r.direction, r.mode, r.reserved); }
  void Put(const AngDistRec& r) { PutAll(r.azimuth, r.zenith, r.slopeDist, r.horizDist, r.dElev); }
  void Put(const SlopeRec& r) { PutAll(r.percent, r.ratio); }

  [[nodiscard]] const Tokens& Written() const { return tokens_; }

 private:
  template <class Bits>
  void PutBits(Bits bits) {
    std::array<char, 2 * sizeof bits> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), bits, 16).ptr;
    const auto count = static_cast<std::size_t>(end - digits.data());
    tokens_.push_back(std::string(digits.size() - count, '0').append(digits.data(), count));
  }

  Tokens tokens_;
};

// --- Adapters: take the inputs, call, put the outputs --------------------------------------------

void CoordToAngDist(Reader& in, Writer& out) {
  const auto station = in.Take<CoordPt>();
  const auto point = in.Take<CoordPt>();
  auto sight = Untouched<AngDistRec>();
  out.Put(KavoCogoCoordToAngDist(&station, &point, &sight));
  out.Put(sight);
}

void AngDistToCoord(Reader& in, Writer& out) {
  const auto station = in.Take<CoordPt>();
  const auto polar = in.Take<AngDistRec>();
  auto point = Untouched<CoordPt>();
  out.Put(KavoCogoAngDistToCoord(&station, &polar, &point));
  out.Put(point);
}

void CalcSlopeByDist(Reader& in, Writer& out) {
  const auto horizDist = in.Take<double>();
  const auto dElev = in.Take<double>();
  auto grade = Untouched<SlopeRec>();
  KavoCogoCalcSlopeByDist(horizDist, dElev, &grade);
  out.Put(grade);
}

void CalcCrossLine(Reader& in, Writer& out) {
  const auto line1 = in.Take<LineDef>();
  const auto line2 = in.Take<LineDef>();
  auto point = Untouched<CoordPt>();
  out.Put(KavoCogoCalcCrossLine(&line1, &line2, &point));
  out.Put(point);
}

void CalcCrossLineCircle(Reader& in, Writer& out) {
  const auto line = in.Take<LineDef>();
  const auto centre = in.Take<CoordPt>();
  const auto radius = in.Take<double>();
  CoordPt points[] = {Untouched<CoordPt>(), Untouched<CoordPt>()};
  out.Put(KavoCogoCalcCrossLineCircle(&line, &centre, radius, points));
  out.PutAll(points[0], points[1]);
}

void CalcCrossCircle(Reader& in, Writer& out) {
  const auto centre1 = in.Take<CoordPt>();
  const auto radius1 = in.Take<double>();
  const auto centre2 = in.Take<CoordPt>();
  const auto radius2 = in.Take<double>();
  CoordPt points[] = {Untouched<CoordPt>(), Untouched<CoordPt>()};
  out.Put(KavoCogoCalcCrossCircle(&centre1, radius1, &centre2, radius2, points));
  out.PutAll(points[0], points[1]);
}

void CalcPtLine(Reader& in, Writer& out) {
  const auto line = in.Take<LineDef>();
  const auto point = in.Take<CoordPt>();
  auto foot = Untouched<CoordPt>();
  out.Put(KavoCogoCalcPtLine(&line, &point, &foot));
  out.Put(foot);
}

void OffsetToCoord(Reader& in, Writer& out) {
  const auto a = in.Take<CoordPt>();
  const auto b = in.Take<CoordPt>();
  const auto along = in.Take<double>();
  const auto offset = in.Take<double>();
  auto point = Untouched<CoordPt>();
  out.Put(KavoCogoOffsetToCoord(&a, &b, along, offset, &point));
  out.Put(point);
}

void CalcTransLine(Reader& in, Writer& out) {
  const auto line = in.Take<LineDef>();
  const auto rotation = in.Take<IntAngle>();
  const auto offset = in.Take<double>();
  auto moved = Untouched<LineDef>();
  out.Put(KavoCogoCalcTransLine(&line, rotation, offset, &moved));
  out.Put(moved);
}

void CalcArea(Reader& in, Writer& out) {
  const auto count = in.Take<std::int16_t>();
  const auto points = in.TakeArray<CoordPt>(count);
  out.Put(KavoCogoCalcArea(points.empty() ? nullptr : points.data(), count));
}

using Adapter = void (*)(Reader&, Writer&);

constexpr std::pair<std::string_view, Adapter> kExports[] = {
    {"KavoCogoCoordToAngDist", CoordToAngDist},
    {"KavoCogoAngDistToCoord", AngDistToCoord},
    {"KavoCogoCalcSlopeByDist", CalcSlopeByDist},
    {"KavoCogoCalcCrossLine", CalcCrossLine},
    {"KavoCogoCalcCrossLineCircle", CalcCrossLineCircle},
    {"KavoCogoCalcCrossCircle", CalcCrossCircle},
    {"KavoCogoCalcPtLine", CalcPtLine},
    {"KavoCogoOffsetToCoord", OffsetToCoord},
    {"KavoCogoCalcTransLine", CalcTransLine},
    {"KavoCogoCalcArea", CalcArea},
};

// --- Vectors and files ---------------------------------------------------------------------------

struct Vector {
  std::string name;
  Tokens inputs;
  Tokens outputs;
};

// Without "=" the outputs stay empty, which no vector has.
Vector Parse(const std::string& line) {
  std::istringstream words(line);
  Vector vector;
  words >> vector.name;
  Tokens* side = &vector.inputs;
  for (std::string word; words >> word;) {
    if (word == "=" && side == &vector.inputs) {
      side = &vector.outputs;
    } else {
      side->push_back(word);
    }
  }
  return vector;
}

class Checker {
 public:
  void CheckFile(const std::string& path) {
    std::ifstream file(path);
    bool empty = true;
    place_ = path + ":1";
    int number = 0;
    for (std::string line; std::getline(file, line);) {
      ++number;
      if (line.empty() || line.front() == '#') {
        continue;
      }
      place_ = path + ":" + std::to_string(number);
      Count(Check(Parse(line)));
      empty = false;
    }
    if (empty) {
      Count(Refuse("no vector to be read"));
    }
  }

  [[nodiscard]] bool Conclude() const {
    std::printf("%d passed, %d failed\n", passed_, failed_);
    return failed_ == 0 && passed_ > 0;
  }

 private:
  bool Check(const Vector& vector) {
    const auto* row = std::find_if(std::begin(kExports), std::end(kExports),
                                   [&](const auto& entry) { return entry.first == vector.name; });
    if (row == std::end(kExports)) {
      return Refuse("no such export: " + vector.name);
    }
    Reader in(vector.inputs);
    Writer out;
    row->second(in, out);
    if (!in.Complete()) {
      return Refuse(vector.name + ": malformed inputs");
    }
    if (vector.outputs.size() != out.Written().size()) {
      return Refuse(vector.name + ": malformed outputs");
    }
    return Compare(vector, out.Written());
  }

  [[nodiscard]] bool Compare(const Vector& vector, const Tokens& got) const {
    const Tokens& expected = vector.outputs;
    for (std::size_t i = 0; i < got.size(); ++i) {
      if (expected[i] == got[i]) {
        continue;
      }
      std::printf("%s: %s: output %zu of %zu: expected %s, got %s\n", place_.c_str(),
                  vector.name.c_str(), i + 1, got.size(), expected[i].c_str(), got[i].c_str());
    }
    return expected == got;
  }

  [[nodiscard]] bool Refuse(const std::string& reason) const {
    std::printf("%s: %s\n", place_.c_str(), reason.c_str());
    return false;
  }

  void Count(bool passed) { ++(passed ? passed_ : failed_); }

  std::string place_;
  int passed_ = 0;
  int failed_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  Checker checker;
  for (int i = 1; i < argc; ++i) {
    checker.CheckFile(argv[i]);
  }
  return checker.Conclude() ? 0 : 1;
}

#include "job/sight_reader.hpp"

#include <fmt/format.h>

#include <array>
#include <map>

#include "base/plain_text.hpp"
#include "job/csv_tables.hpp"
#include "job/field_rules.hpp"
#include "service/faces.hpp"
#include "service/input_rules.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 9> kKeys = {
    "point", "ha", "va", "slopeDist", "horizDist", "heightDiff", "th", "code", "face"};
constexpr std::array<std::string_view, 1> kZeroes = {"th"};  // when absent

std::optional<IntAngle> AngleAt(const InputReader& inputs, const TomlReader& at,
                                std::string_view name) {
  const auto* node = at.Find(name);
  return node != nullptr ? std::optional(inputs.AngleOf(at, *node, name)) : std::nullopt;
}

// The zenith reading tells the face; where it is absent the key `face` does.
bool Face2Of(const TomlReader& at, std::optional<IntAngle> va) {
  const bool face2 = ReadFace2(at);
  if (!va) {
    return face2;
  }
  if (at.Find("face") != nullptr && IsFace2(*va) != face2) {
    at.FailAt("face", "va is a reading of the other face; leave this out, or correct one");
  }
  return IsFace2(*va);
}

// Metres; 0 when absent.
double DistanceAt(const TomlReader& at, std::string_view name) {
  const auto* node = at.Find(name);
  const double dist = at.Number(name, 0.0);
  if (node != nullptr && dist <= 0.0) {
    at.FailAt(name, "must be above 0; leave it out where none was measured");
  }
  return dist;
}

Reading ReadReading(const InputReader& inputs, const TomlReader& at) {
  if (at.Find("slopeDist") != nullptr && at.Find("horizDist") != nullptr) {
    at.FailAt("horizDist", "give either this or slopeDist");
  }
  const auto ha = AngleAt(inputs, at, "ha");
  if (!ha) {
    at.FailMissing("ha", "a sight has a horizontal reading");
  }
  Reading reading;
  reading.ha = *ha;
  reading.va = AngleAt(inputs, at, "va");
  reading.face2 = Face2Of(at, reading.va);
  reading.slopeDist = DistanceAt(at, "slopeDist");
  reading.horizDist = DistanceAt(at, "horizDist");
  if (at.Find("heightDiff") != nullptr) {
    reading.heightDiff = at.Number("heightDiff", 0.0);
  }
  return reading;
}

// Sights as they come, each one reading until its other face is found.
class SightList {
 public:
  explicit SightList(const InputReader& inputs) : inputs_(inputs) {}

  /// Takes a sight; the point may come from an earlier step and is filled in when the step runs.
  void Add(const TomlReader& at) {
    at.Only(kKeys);
    Input input;
    if (at.Find("point") != nullptr) {
      input.parts.push_back(inputs_.Read(at, {"point", Kind::kPoint, "the sighted point"}));
      input.text = input.parts[0].text;
    }
    Sight sight;
    sight.name = input.text;
    sight.code = at.Line("code");
    sight.targetHeight = at.Number("th", 0.0);
    if (const auto trouble = TroubleOfLimit(kTargetHeight, sight.targetHeight); !trouble.empty()) {
      at.FailAt("th", trouble);
    }
    sight.readings = {ReadReading(inputs_, at)};
    if (!Paired(at, sight)) {
      waiting_[sight.name].indices.push_back(sights_.size());
      sights_.push_back(std::move(sight));
      list_.push_back(std::move(input));
    }
  }

  /// The whole list, with every sight reduced.
  Input Finish(const TomlReader& at, const toml::node& node, const Field& field) {
    for (const auto& [name, waiting] : waiting_) {
      if (waiting.hasPair && !waiting.indices.empty()) {
        at.Fail(node, field.name,
                fmt::format("{} is read more often on one face than on the other; give as many "
                            "readings on both",
                            Quoted(name)));
      }
    }
    if (list_.size() > kMostPoints) {
      at.Fail(node, field.name, fmt::format("has more than {} sights", kMostPoints));
    }
    Input all;
    all.value = std::vector<Sight>();
    for (std::size_t i = 0; i < list_.size(); ++i) {
      ReduceReadings(sights_[i]);
      list_[i].value = std::vector<Sight>{std::move(sights_[i])};
      all.text += (all.text.empty() ? "" : " ") + list_[i].text;
    }
    all.parts = std::move(list_);
    return all;
  }

 private:
  // The sights of one point that have one face only, and whether it has another with both.
  struct Waiting {
    std::vector<std::size_t> indices;
    bool hasPair = false;
  };

  // Adds the reading to the first sight of the point that waits for this face, if there is one.
  bool Paired(const TomlReader& at, const Sight& sight) {
    Waiting& waiting = waiting_[sight.name];
    if (waiting.indices.empty()) {
      return false;
    }
    Sight& first = sights_[waiting.indices.front()];
    const Reading& reading = sight.readings.front();
    if (first.readings.front().face2 == reading.face2) {
      return false;
    }
    if (first.targetHeight != sight.targetHeight) {
      at.FailHere("th", "differs from that of the other face: they are not one sight");
    }
    if (const auto trouble = FaceTrouble(first.readings.front(), reading); !trouble.empty()) {
      at.FailHere("point", fmt::format("{}: {}", Quoted(sight.name), trouble));
    }
    first.readings.push_back(reading);
    waiting.indices.erase(waiting.indices.begin());
    waiting.hasPair = true;
    return true;
  }

  const InputReader& inputs_;
  std::vector<Sight> sights_;
  std::vector<Input> list_;
  std::map<std::string, Waiting, std::less<>> waiting_;
};

}  // namespace

Input ReadSights(const InputReader& inputs, const TomlReader& at, const toml::node& node,
                 const Field& field) {
  SightList list(inputs);
  if (node.is_string()) {
    const auto path = inputs.Folder() / at.TextOf(node, field.name);
    for (const auto& [place, table] : ReadCsvTables(path, kKeys, kZeroes)) {
      list.Add(TomlReader(table, place, "", nullptr));
    }
  } else if (!node.is_array()) {
    at.Fail(node, field.name, "write a list of sights, or the name of a CSV file");
  } else {
    std::size_t number = 0;
    for (const auto& element : at.ArrayOf(node, field.name)) {
      const auto label = fmt::format("{}: number {}", field.name, ++number);
      list.Add(at.Inner(at.TableOf(element, label), label));
    }
  }
  return list.Finish(at, node, field);
}

}  // namespace kavo_app

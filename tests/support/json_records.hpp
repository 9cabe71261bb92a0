// Records from and to JSON, by the field names of the header.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "records.hpp"

/// A field that the JSON leaves out stays untouched; one that the record does not have is an error,
/// but for `id`, which is for readers. Reserved fields are in no JSON.
template <kavo_test::Record T>
struct nlohmann::adl_serializer<T> {
  static void from_json(const json& in, T& record) {
    record = kavo_test::Untouched<T>();
    std::size_t known = in.count("id");
    kavo_test::VisitFields(record, [&](std::string_view name, auto value) {
      if (in.contains(name)) {
        ++known;
        in.at(name).get_to(value);
      }
      return value;
    });
    if (known != in.size()) {
      throw std::runtime_error("no such field: " + in.dump());
    }
  }

  static void to_json(json& out, T record) {
    out = json::object();
    kavo_test::VisitFields(record, [&](std::string_view name, auto value) {
      if (name != kavo_test::kReserved) {
        out[std::string(name)] = value;
      }
      return value;
    });
  }
};

// What a run gave, for people and for programs.
#pragma once

#include <string>
#include <vector>

#include "job/job.hpp"
#include "job/run.hpp"

namespace kavo_app {

/// The report that people read: every step with its inputs, results and units, expected values
/// beside computed ones, and every failure as a sentence.
std::string TextReport(const Job& job, const std::vector<Outcome>& outcomes);

/// The same as JSON with all digits: numbers as the shortest text that reads back exactly, angles
/// both as the library's integer and in the job's notation. docs/report.schema.json describes it.
std::string JsonReport(const Job& job, const std::vector<Outcome>& outcomes);

/// The computed points as a list of name, north, east, elevation and description (the
/// feature code, or the service), with all digits: another job can read it as its control points.
/// Feet on a line are not among them: they carry the names of steps that measured other points.
std::string CsvList(const Job& job, const std::vector<Outcome>& outcomes);

/// All points, lines and areas as GeoJSON in grid coordinates, which it says of itself.
std::string GeoJson(const Job& job, const std::vector<Outcome>& outcomes);

}  // namespace kavo_app

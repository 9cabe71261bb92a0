// What kavo can do, told from the table of services and the table of commands.
#pragma once

#include <string>

#include "service/service.hpp"

namespace CLI {  // NOLINT(readability-identifier-naming): its own name
class App;
class Option;
}  // namespace CLI

namespace kavo_app {

/// The services, one on each line.
std::string ServiceList();

/// A service's fields with units, its statuses and an example.
/// @param bold  whether to set headings in bold, for a terminal.
std::string ServiceHelp(const Service& service, bool bold);

/// When an input may or must be given and what it takes, such as " (optional; above 0)";
/// or empty.
std::string ConditionsOf(const Service& service, const Field& field);

/// What to type for an option or argument of a command, such as "--csv FILE".
std::string OptionUsage(const CLI::Option& option);

/// The manual page, for man.
/// @param app  the commands with their options.
std::string ManPage(const CLI::App& app);

/// Whether what is printed may be coloured: on a terminal, unless NO_COLOR is set.
bool MayColour();

}  // namespace kavo_app

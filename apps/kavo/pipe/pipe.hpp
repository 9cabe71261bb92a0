// kavo as a filter: a request on every line of standard input, an answer on every line of output.
#pragma once

#include <cstddef>

namespace kavo_app {

/// Answers every line of standard input on standard output, in order and in memory that does not
/// grow with the number of lines. Tells how far it is on standard error when that is a terminal.
/// @param firstLine  the number of the first line, for the answers that say what is wrong.
/// @return whether every line has a result, and every check is passed.
/// @throws UserError  when the input cannot be read or the output not written.
bool AnswerLines(std::size_t firstLine);

}  // namespace kavo_app

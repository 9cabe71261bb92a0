// Results written so that a reader finds all of them or nothing.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kavo_app {

/// A file that is written aside and takes its name when it is kept. One that is not kept leaves
/// nothing behind, and an older file of the name as it was. One that is kept has the older file's
/// permissions; a link goes on leading to it. What is no regular file, such as a device, is written
/// straight.
class OutputFile {
 public:
  /// Writes the content aside.
  /// @throws UserError  when it cannot be written whole, or the older file may not be written.
  OutputFile(const std::string& path, std::string_view content);
  OutputFile(OutputFile&& other) noexcept;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  OutputFile& operator=(OutputFile&&) = delete;
  ~OutputFile();

  /// Gives all files their names, one after the other.
  /// @throws UserError  when one cannot have it; says which files are new already.
  static void KeepAll(std::span<OutputFile> files);

 private:
  int Keep();  // 0, or what went wrong

  std::string given_;  // its name, as messages have it
  std::string path_;   // where it is to be
  std::string aside_;  // where it is; empty when there is nothing to rename
};

/// Prints to standard output.
/// @throws UserError  when it is closed early or its disk is full.
void PrintOut(std::string_view text);

}  // namespace kavo_app

// Replaces a file's text so that the file always holds either the complete old or the complete new
// text, whatever happens: an error, a signal, a kill, a full disk.
//
// The new text is written to FILE.tavo-draft in the same folder, synced, and renamed over FILE. The
// draft gets the old file's mode, owner, group and extended attributes before its first byte. A
// symbolic link is kept: its target is replaced.
//
// A file with several names, or whose owner or attributes this process cannot give to another file,
// is written in place instead. The synced draft is first renamed to FILE.tavo-new, and stays until
// FILE is synced. If a kill leaves FILE.tavo-new, it holds the complete new text: every verb then
// refuses to read FILE and names FILE.tavo-new. If a kill leaves FILE.tavo-draft, FILE is complete,
// and the next run replaces the draft.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavo::cli {

// what() is the reason, without the name of the file.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// before: the file's status when it was read. Throws FileError, also if the file has changed since
// then or is not a regular file. Not thread-safe: it handles signals.
void replace_file(const std::string& file, const struct stat& before, std::string_view content);

// Writes a file, which need not exist, by the same steps.
void write_file(const std::string& file, std::string_view content);

// The path of the complete new text that an interrupted run left for a file, if there is one.
std::optional<std::string> interrupted_text_of(const std::string& file);

}  // namespace tavo::cli

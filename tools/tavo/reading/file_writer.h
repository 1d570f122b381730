// Puts a new text in the place of a file's old one, so that the old or the new text is there,
// whole, whatever happens: an error, a signal, a kill, a full disk.
//
// The new text is written to FILE.tavo-draft in the same folder, synced, and renamed over FILE. It
// has the mode, owner, group and extended attributes of the old one before its first byte. A
// symbolic link stays one: its target is replaced.
//
// A file with several names, or whose owner or attributes this process cannot give to another file,
// is written in place instead. The synced draft is renamed to FILE.tavo-new first, and stays until
// FILE is synced. Whoever finds FILE.tavo-new after a kill has the whole new text in it: every
// verb refuses to read FILE then, and names FILE.tavo-new. A FILE.tavo-draft that a kill left
// belongs to a FILE that is whole, and the next run replaces it.
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

// before: what the file was when it was read. Throws FileError, also when the file has changed
// since, or is no regular file. Not safe for use by several threads: it handles signals.
void replace_file(const std::string& file, const struct stat& before, std::string_view content);

// Writes a file that may not be there yet, by the same steps.
void write_file(const std::string& file, std::string_view content);

// The whole new text that an interrupted run left for a file, when there is one.
std::optional<std::string> interrupted_text_of(const std::string& file);

}  // namespace tavo::cli

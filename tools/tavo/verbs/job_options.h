// The options of the verbs that read many files: which files, and how they are divided.
#pragma once

#include <CLI/CLI.hpp>

#include "jobs/job_reader.h"
#include "verbs/read_options.h"

namespace tavo::cli {

// Which files of folders; the selection must outlive the verb.
inline void add_selection_options(CLI::App* verb, FileSelection& selection) {
  verb->add_option("--include", selection.include,
                   "Files to read in folders, as a glob; *.tavo and *.masks unless given")
      ->allow_extra_args(false);
  verb->add_option("--exclude", selection.exclude, "Files and folders to leave out, as a glob")
      ->allow_extra_args(false);
  verb->add_flag("--gitignore", selection.git_ignore, "Leave out what git ignores");
  verb->add_option("--changed-since", selection.changed_since,
                   "Only files that differ from this revision of git, new ones included");
}

// The options must outlive the verb. The verb itself adds the option for the files.
inline void add_job_options(CLI::App* verb, JobOptions& options) {
  add_layout_option(*verb, options.layout);
  add_input_options(*verb, options.input, "Files are");
  add_selection_options(verb, options.selection);
}

}  // namespace tavo::cli

// The options of the verbs that read many files: which files, and how they are divided.
#pragma once

#include <CLI/CLI.hpp>

#include "jobs/job_reader.h"
#include "verbs/choices.h"

namespace tavo::cli {

inline const Choices<Layout> kLayoutChoices = {
    {"auto", Layout::kAuto}, {"lines", Layout::kLines}, {"paragraphs", Layout::kParagraphs}};

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

// The options must outlive the verb. The files themselves are the verb's own.
inline void add_job_options(CLI::App* verb, JobOptions& options) {
  add_choice(*verb, "--layout", options.layout, "auto, lines or paragraphs: where a statement ends",
             kLayoutChoices);
  verb->add_option("--code-page", options.input.code_page,
                   "The files are 8-bit text in this code page instead of UTF-8");
  verb->add_option("--stdin-filename", options.input.stdin_name, "What standard input is called")
      ->capture_default_str();
  add_selection_options(verb, options.selection);
}

}  // namespace tavo::cli

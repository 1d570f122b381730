# cmake -DOUTPUT=file.cpp -DINPUTS=en.txt,de.txt -P make_catalogue.cmake
#
# Turns the message catalogues into a C++ source: one table a language, ordered by number. The
# format is told at the head of messages/en.txt. Lines are taken apart with FIND and SUBSTRING
# because lists would trip over the brackets and semicolons of the texts.

function(flush_entry)
  if(number STREQUAL "")
    return()
  endif()
  if(text STREQUAL "")
    message(FATAL_ERROR "${input}: ${number} has no text")
  endif()
  string(REPLACE "\\" "\\\\" text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  string(APPEND rows "    {${number}, L\"${text}\"},\n")
  set(rows "${rows}" PARENT_SCOPE)
endfunction()

set(body "")
set(languages "")
string(REPLACE "," ";" inputs "${INPUTS}")
foreach(input IN LISTS inputs)
  get_filename_component(language "${input}" NAME_WE)
  file(READ "${input}" left)
  string(APPEND left "\n")
  set(rows "")
  set(number "")
  set(text "")
  set(previous 0)
  while(NOT left STREQUAL "")
    string(FIND "${left}" "\n" end)
    string(SUBSTRING "${left}" 0 ${end} line)
    math(EXPR end "${end} + 1")
    string(SUBSTRING "${left}" ${end} -1 left)
    if(line STREQUAL "" OR line MATCHES "^#")
      continue()
    elseif(line MATCHES "^[0-9]+$")
      flush_entry()
      if(NOT line GREATER previous)
        message(FATAL_ERROR "${input}: ${line} does not follow ${previous}; keep them in order")
      endif()
      set(number "${line}")
      set(previous "${line}")
      set(text "")
    elseif(line MATCHES "^  [^ ]" AND NOT number STREQUAL "")
      string(SUBSTRING "${line}" 2 -1 line)
      if(text STREQUAL "")
        set(text "${line}")
      else()
        set(text "${text} ${line}")
      endif()
    else()
      message(FATAL_ERROR "${input}: neither a number nor an indented text: ${line}")
    endif()
  endwhile()
  flush_entry()
  string(APPEND body "constexpr Message k_${language}[] = {\n${rows}};\n\n")
  string(APPEND languages "    {\"${language}\", k_${language}},\n")
endforeach()

file(WRITE "${OUTPUT}" "// Made by make_catalogue.cmake from the message catalogues; edit those.
#include \"catalogue.h\"

namespace tavo::platform {
namespace {

${body}constexpr Language kLanguages[] = {
${languages}};

}  // namespace

std::span<const Language> languages() noexcept {
  return kLanguages;
}

}  // namespace tavo::platform
")

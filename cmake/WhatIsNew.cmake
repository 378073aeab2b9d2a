# SPDX-License-Identifier: GPL-2.0-or-later
# The entries of the current version in CHANGELOG.md, as lines of text and as items of a list in HTML, and its date.
# That is the time of all that is handed out, so that the same sources give the same bytes whenever they are built.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md lines ENCODING UTF-8)
set_property(
  DIRECTORY
  APPEND
  PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set(current FALSE)
set(what_is_new)
set(what_is_new_items)
foreach(line IN LISTS lines)
  if(line MATCHES "^## ([^ ]+) \\((....-..-..)\\)$")
    string(COMPARE EQUAL "${CMAKE_MATCH_1}" "${PROJECT_VERSION}" current)
    if(current)
      set(release_date ${CMAKE_MATCH_2})
    endif()
  elseif(current AND line MATCHES "^- (.*)")
    string(APPEND what_is_new "- ${CMAKE_MATCH_1}\n")
    string(APPEND what_is_new_items "<li>${CMAKE_MATCH_1}</li>\n")
  endif()
endforeach()
if(NOT what_is_new)
  message(FATAL_ERROR "CHANGELOG.md says nothing of ${PROJECT_VERSION}")
endif()
set(release_time $ENV{SOURCE_DATE_EPOCH})
if(NOT release_time)
  execute_process(
    COMMAND date -u -d ${release_date} +%s
    OUTPUT_VARIABLE release_time
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()

# Writes a C++ source that holds every file under WEB_DIR, for the window's pages to be served
# from the program itself. Run with cmake -P, given WEB_DIR and OUTPUT.

file(GLOB_RECURSE files RELATIVE "${WEB_DIR}" "${WEB_DIR}/*")
list(SORT files)
set(arrays "")
set(entries "")
set(index 0)
foreach(name IN LISTS files)
  if(name MATCHES "(^|/)\\." OR name MATCHES "~$")
    continue()
  endif()
  get_filename_component(extension "${name}" LAST_EXT)
  string(TOLOWER "${extension}" extension)
  set(type "application/octet-stream")
  if(extension STREQUAL ".html")
    set(type "text/html; charset=utf-8")
  elseif(extension STREQUAL ".js")
    set(type "text/javascript; charset=utf-8")
  elseif(extension STREQUAL ".css")
    set(type "text/css; charset=utf-8")
  elseif(extension STREQUAL ".svg")
    set(type "image/svg+xml")
  elseif(extension STREQUAL ".png")
    set(type "image/png")
  elseif(extension STREQUAL ".json")
    set(type "application/json")
  endif()
  file(READ "${WEB_DIR}/${name}" bytes HEX)
  string(LENGTH "${bytes}" digits)
  math(EXPR size "${digits} / 2")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char file${index}[] = {${bytes} 0};\n")
  string(APPEND entries "    {\"${name}\", \"${type}\", std::string_view(file${index}, ${size})},\n")
  math(EXPR index "${index} + 1")
endforeach()

if(index EQUAL 0)
  set(table "constexpr std::span<const WebResource> table;\n")
else()
  set(table "constexpr WebResource table[] = {\n${entries}};\n")
endif()

set(source "// Made by cmake/EmbedWebFiles.cmake from CorvaneApp/web; do not edit.

#include \"CorvaneApp/api/WebResources.hpp\"

namespace corvane {

namespace {

${arrays}
${table}
} // namespace

std::span<const WebResource> webResources() { return table; }

} // namespace corvane
")
# Left alone when nothing changed, so that nothing is compiled again.
if(EXISTS "${OUTPUT}")
  file(READ "${OUTPUT}" previous)
  if(previous STREQUAL source)
    return()
  endif()
endif()
file(WRITE "${OUTPUT}" "${source}")

# Writes OUTPUT, a source file that holds the page as the server sends it: page.html with its style
# and its script inside. The script is one module: the files below, one after the other. The policy
# names style and script by their hashes, so the browser takes no others.
set(scripts text readings trends charts choices sensors ordering temperatures fans disks heading
            connection main)

# Base64 of a SHA-256 in hexadecimal: three digits of the one are two of the other. The 64th digit
# is left over, for which Base64 has a digit and a "=".
function(base64_of hash result)
  set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(text "")
  foreach(start RANGE 0 60 3)
    string(SUBSTRING "${hash}" ${start} 3 digits)
    math(EXPR high "0x${digits} >> 6")
    math(EXPR low "0x${digits} & 63")
    string(SUBSTRING "${alphabet}" ${high} 1 first)
    string(SUBSTRING "${alphabet}" ${low} 1 second)
    string(APPEND text "${first}${second}")
  endforeach()
  string(SUBSTRING "${hash}" 63 1 digit)
  math(EXPR last "0x${digit} << 2")
  string(SUBSTRING "${alphabet}" ${last} 1 first)
  set(${result} "${text}${first}=" PARENT_SCOPE)
endfunction()

file(READ "${CMAKE_CURRENT_LIST_DIR}/page.css" style)
set(script "")
foreach(name IN LISTS scripts)
  file(READ "${CMAKE_CURRENT_LIST_DIR}/${name}.js" text)
  string(APPEND script "${text}")
endforeach()
string(SHA256 styleHash "${style}")
string(SHA256 scriptHash "${script}")
base64_of(${styleHash} styleHash)
base64_of(${scriptHash} scriptHash)
file(READ "${CMAKE_CURRENT_LIST_DIR}/page.html" html)
string(CONFIGURE "${html}" page @ONLY)

file(CONFIGURE OUTPUT "${OUTPUT}" @ONLY CONTENT [[
// Written by EmbedPage.cmake from the files beside it.
#include "monitor/page/Page.hpp"

namespace halvermonte {

const std::string_view kPage = R"page(@page@)page";

const std::string_view kPagePolicy =
    "default-src 'none'; connect-src 'self'; img-src data:; style-src 'sha256-@styleHash@'; "
    "script-src 'sha256-@scriptHash@'; base-uri 'none'; form-action 'none'; "
    "frame-ancestors 'none'; require-trusted-types-for 'script'";

}  // namespace halvermonte
]])

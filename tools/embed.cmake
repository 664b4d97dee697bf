# Makes C++ of the page's style sheet and script, and of the hashes that its policy names them by.
#   cmake -D style=FILE -D script=FILE -D output=FILE -P embed.cmake

# The digits of a hash in base 16 become those of base 64: three of them are two.
function(to_base64 hash out)
  set(digits ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  set(text "")
  string(APPEND hash 00)  # 66 digits, so that nothing is left over
  foreach(at RANGE 0 63 3)
    string(SUBSTRING ${hash} ${at} 3 three)
    math(EXPR high "0x${three} >> 6")
    math(EXPR low "0x${three} & 63")
    foreach(digit ${high} ${low})
      string(SUBSTRING ${digits} ${digit} 1 character)
      string(APPEND text ${character})
    endforeach()
  endforeach()
  string(SUBSTRING ${text} 0 43 text)  # the 44th digit stands for no bit at all
  set(${out} "${text}=" PARENT_SCOPE)
endfunction()

set(definitions "")
foreach(name style script)
  file(READ ${${name}} text)
  if(text MATCHES "</|\\)page\"")
    message(FATAL_ERROR "${${name}} would end the element or the literal that it is to stand in")
  endif()
  file(SHA256 ${${name}} hash)
  to_base64(${hash} hash)
  string(APPEND definitions "char const ${name}[] = R\"page(${text})page\";\n"
                            "char const ${name}Hash[] = \"sha256-${hash}\";\n")
endforeach()
file(WRITE ${output} "#include \"report_assets.hpp\"\n\nnamespace Kovra::tool {\n\n${definitions}\n"
                     "}  // namespace Kovra::tool\n")

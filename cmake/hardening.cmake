# What is shipped is linked with kovra_hardening: replies come from the network, so a mistake in
# reading one is to end the process rather than to be of use to somebody. Instrumented builds look
# for the same mistakes in their own way.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

add_library(kovra_hardening INTERFACE)

# Calls are bound when the library is loaded. When they are bound at the first call, the loader saves
# all registers on the stack, and a reply that was just copied went through these; and the table of
# the calls stays writable.
target_link_options(kovra_hardening INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)

if(kovra_instrumented)
  return()
endif()

# A build for the debugger is as it is written, and is not shipped. The processors name their protection
# of returns and indirect calls differently.
set(protections -fstack-protector-strong)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
  list(APPEND protections -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
  list(APPEND protections -mbranch-protection=standard)
endif()
foreach(flag IN LISTS protections)
  string(MAKE_C_IDENTIFIER "KOVRA_HAS${flag}" has_flag)
  check_cxx_compiler_flag(${flag} ${has_flag})
  if(${has_flag})
    target_compile_options(kovra_hardening INTERFACE $<$<NOT:$<CONFIG:Debug>>:${flag}>)
  endif()
endforeach()

# Checked copies need an optimizer, and the C library tells how far they go with this compiler.
set(CMAKE_REQUIRED_FLAGS "-O2 -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
check_cxx_source_compiles(
  "#include <cstring>
   #if __USE_FORTIFY_LEVEL != 3
   #error checks less
   #endif
   int main() {}" KOVRA_HAS_FORTIFY_SOURCE_3)
unset(CMAKE_REQUIRED_FLAGS)
set(fortify_level 2)
if(KOVRA_HAS_FORTIFY_SOURCE_3)
  set(fortify_level 3)
endif()
target_compile_options(
  kovra_hardening
  INTERFACE $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
            $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=${fortify_level}>)

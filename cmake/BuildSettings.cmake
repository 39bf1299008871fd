# Warnings, hardening and instrumentation for the targets of this project. Nothing here reaches a client of the library.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
check_cxx_compiler_flag(-fno-gnu-unique VREL_HAS_NO_GNU_UNIQUE)
check_cxx_compiler_flag(-fcf-protection=full VREL_HAS_CF_PROTECTION)

# vrel_build_settings(target): applies all of them to one target.
function(vrel_build_settings target)
  vrel_warnings(${target})
  # Results are guaranteed bit for bit, so no product and sum may become one operation.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  vrel_hardening(${target})
  if(VREL_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${VREL_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VREL_SANITIZE})
    # With sanitizers g++ 12 warns about std::function in std::regex.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
  endif()
  if(VREL_COVERAGE)
    # Atomic, because gcovr refuses counters that the tests of threads have made negative.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# vrel_warnings(target): the warnings. An empty format is a valid call of the message channels.
function(vrel_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                           -Wnon-virtual-dtor -Wno-format-zero-length)
  if(VREL_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# vrel_hardening(target): stack protector, checked calls of the C library, control-flow protection, and a read-only
# relocation table. Sanitizers bring checks of their own, which these would hide.
#
# The start-up files of Debian 12 are not marked for indirect-branch tracking, so that the linker marks no program for it.
# Shadow stacks do not depend on these files, so that an option marks programs for them.
function(vrel_hardening target)
  if(VREL_SANITIZE)
    return()
  endif()
  target_compile_options(${target} PRIVATE -fstack-protector-strong)
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
  if(VREL_HAS_CF_PROTECTION)
    target_compile_options(${target} PRIVATE -fcf-protection=full)
    target_link_options(${target} PRIVATE -Wl,-z,shstk)
  endif()
endfunction()

# vrel_unloadable(target): lets dlclose unload a library. g++ marks constants that headers define as unique in the whole
# process, and a library with such a mark stays loaded.
function(vrel_unloadable target)
  if(VREL_HAS_NO_GNU_UNIQUE)
    target_compile_options(${target} PRIVATE -fno-gnu-unique)
  endif()
endfunction()

# vrel_run_path(target): a sanitizer calls the loader instead of the library, and the loader then searches the run path of
# the program, but only one of the older kind (RPATH instead of RUNPATH).
function(vrel_run_path target)
  if(VREL_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--disable-new-dtags)
  else()
    target_link_options(${target} PRIVATE -Wl,--enable-new-dtags)
  endif()
endfunction()

# vrel_precompile(target HEADER... | REUSE_FROM other): compiles headers that change seldom once for all sources of a
# target, or takes those of another target. A source includes what it needs all the same: the preset "clang" compiles
# without precompiled headers.
function(vrel_precompile target)
  if(NOT PROJECT_IS_TOP_LEVEL)
    return()
  elseif(ARGV1 STREQUAL "REUSE_FROM")
    target_precompile_headers(${target} ${ARGN})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# The program that caches compilations, if it is installed. It compares precompiled headers by their contents.
find_program(VREL_CCACHE ccache)
if(VREL_CCACHE AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${VREL_CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
  endif()
endif()

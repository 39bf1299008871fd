# Warnings and instrumentation for the targets of this project; nothing here reaches a client of the library.
#
# vrel_build_settings(target): applies them to one target.
function(vrel_build_settings target)
  # Values are promised to the bit: no product and sum may melt into one operation. An empty format is a valid call of
  # the channels.
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wno-format-zero-length
                                           -ffp-contract=off)
  if(VREL_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(VREL_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${VREL_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VREL_SANITIZE})
  endif()
  if(VREL_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# vrel_unloadable(target): lets dlclose unload a library. g++ marks constants that headers define as unique in the whole
# process, and a library that holds such a mark stays loaded for good.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fno-gnu-unique VREL_HAS_NO_GNU_UNIQUE)
function(vrel_unloadable target)
  if(VREL_HAS_NO_GNU_UNIQUE)
    target_compile_options(${target} PRIVATE -fno-gnu-unique)
  endif()
endfunction()

# The program that caches compilations, where it is installed.
find_program(VREL_CCACHE ccache)
if(VREL_CCACHE AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${VREL_CCACHE})
endif()

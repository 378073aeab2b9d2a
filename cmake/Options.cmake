# SPDX-License-Identifier: GPL-2.0-or-later
# What every target of the project is compiled with. Only the check of changes makes errors of warnings: whoever builds the
# program may have another compiler that knows more of them.
add_library(marrowbeck_options INTERFACE)
target_include_directories(marrowbeck_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_features(marrowbeck_options INTERFACE cxx_std_20)
# Where a word has 32 bits: files of more than 2 GiB and times after 2038, and no more than a warning where a number of a
# file, which was held against the file's size, is made an index.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_definitions(marrowbeck_options INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  target_compile_options(marrowbeck_options INTERFACE -Wno-error=conversion)
endif()
target_compile_options(
  marrowbeck_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
            $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>)
# GCC 12 sees overlaps in std::string's own code where there are none, once it optimises (its bug 105651).
target_compile_options(marrowbeck_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

# What is handed out names no folder of whoever built it, and has the same bytes wherever that was. In a debug build the
# debugger finds the folders all the same. The folder that is named last counts first.
foreach(folder IN ITEMS "${PROJECT_SOURCE_DIR}=." "${PROJECT_BINARY_DIR}=./build")
  target_compile_options(marrowbeck_options INTERFACE -f$<IF:$<CONFIG:Debug>,macro,file>-prefix-map=${folder})
endforeach()

option(MARROWBECK_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(MARROWBECK_SANITIZE)
  target_compile_options(marrowbeck_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                      -fno-omit-frame-pointer)
  target_link_options(marrowbeck_options INTERFACE -fsanitize=address,undefined)
endif()

# Hardened as Debian's own packages are, whoever builds it; not where the sanitizers watch, or where nothing is optimised.
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT MARROWBECK_SANITIZE)
  # What not every processor has.
  include(CheckCXXCompilerFlag)
  include(CheckLinkerFlag)
  foreach(flag -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER has${flag} has_flag)
    check_cxx_compiler_flag(${flag} ${has_flag})
    target_compile_options(marrowbeck_options INTERFACE $<$<BOOL:${${has_flag}}>:${flag}>)
  endforeach()
  # The linker marks as protected only what it made of marked objects alone, and on some systems the C library's own
  # first and last instructions (Scrt1.o, crti.o, crtn.o) are not. All of ours are.
  check_linker_flag(CXX -Wl,-z,ibt,-z,shstk has_protection_marks)
  if(has_fcf_protection AND has_protection_marks)
    target_link_options(marrowbeck_options INTERFACE -Wl,-z,ibt,-z,shstk)
  endif()
  # An index out of bounds ends the process before it reads or writes there.
  target_compile_definitions(marrowbeck_options INTERFACE _GLIBCXX_ASSERTIONS)
  target_compile_options(marrowbeck_options INTERFACE -fstack-protector-strong
                                                      "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  target_link_options(marrowbeck_options INTERFACE -Wl,-z,relro,-z,now)
endif()

# How every target of the project is built, in one place.

# The version of the binary interface. Raise it with each release that breaks callers already
# linked: a virtual operation added, moved or removed, a member added to an exported class, an
# exported name removed. Leave it for new classes, new non-virtual operations and repairs.
# 0.1.0 -> 0.2.0 with a new virtual operation: 0 -> 1.  0.1.0 -> 0.1.1 with a repair: stays 0.
set(ORU_SOVERSION 0)

option(ORU_COVERAGE "Count the lines and branches that run, for gcov" OFF)

# Warnings, sanitizers and coverage, the same for libraries, tools, tests, examples and benchmarks.
function(oru_compile_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow)
  if(ORU_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  # What is built names its sources from the top folder, so that it is the same in every folder. A debugger of a
  # Debug build finds them by their whole paths.
  target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
  if(ORU_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${ORU_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    # Sanitizer code makes g++ see uninitialized values where there are none, inside <regex> among others.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
    target_link_options(${target} PRIVATE -fsanitize=${ORU_SANITIZE})
  endif()
  if(ORU_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# oru_unite_sources(<target>)
# Compiles several sources of a target as one in sanitizer builds. Such a build is one from nothing as a rule, and most
# of it is reading the same headers again. It is for targets whose sources give no name twice in unnamed namespaces.
function(oru_unite_sources target)
  if(ORU_SANITIZE)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
  endif()
endfunction()

# oru_add_library(<name> FOLDERS <folder>... [LINK_PUBLIC <target>...] [LINK_PRIVATE <target>...])
# A shared library libOru.<name>.so of the sources of the folders, exported as Oru::<name>.
function(oru_add_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;LINK_PUBLIC;LINK_PRIVATE" ${ARGN})
  set(globs)
  foreach(folder IN LISTS ARG_FOLDERS)
    list(APPEND globs ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${globs})

  if(NOT sources)
    set(sources ${PROJECT_BINARY_DIR}/Empty.cpp)
    file(TOUCH ${sources})
  endif()

  set(target Oru.${name})
  add_library(${target} SHARED ${sources})
  add_library(Oru::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${ORU_SOVERSION}
    # Installed, the libraries find each other wherever their folder is moved.
    INSTALL_RPATH "$ORIGIN"
    BUILD_RPATH_USE_ORIGIN ON
    LINKER_LANGUAGE CXX)
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${ARG_LINK_PUBLIC} PRIVATE ${ARG_LINK_PRIVATE})
  # Every symbol must be found in a library that is named: a missing dependency fails at this link,
  # not at the caller's. (Sanitizer runtimes live in the executable, so not there.)
  if(NOT ORU_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
  # A library calls its own exported functions directly and may inline them: no caller may replace one of them
  # from outside.
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  oru_compile_options(${target})
endfunction()

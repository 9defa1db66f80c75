# How the libraries, tests and benchmarks of this project are put together.
#
# A class is one header, one or more sources, a test and, where speed matters,
# a benchmark, all beside one another. The endings of the file names say which
# target a file belongs to, so a new file needs no line in any CMakeLists.txt.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Everything lands in bin/ and lib/, so that programs and modules find each
# other in the build tree as they do in an installed one.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
if(NOT CMAKE_INSTALL_RPATH)
  set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

find_program(ZT_CCACHE ccache)
if(ZT_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Paths below the checkout are kept relative, so that a second clone finds what
  # the first one compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
    "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${ZT_CCACHE}")
endif()

add_library(zt_warnings INTERFACE)
target_compile_options(zt_warnings INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor)
# GCC 12 sees an overlap in the standard library's own "text" + string.
target_compile_options(zt_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# Instrumented code makes it see uninitialised members in std::function.
if(ZT_SANITIZED)
  target_compile_options(zt_warnings INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
option(ZT_WARNINGS_AS_ERRORS "Stop at a compiler warning" OFF)
if(ZT_WARNINGS_AS_ERRORS)
  target_compile_options(zt_warnings INTERFACE -Werror)
endif()

if(ZT_BUILD_TESTS)
  enable_testing()
  find_package(GTest REQUIRED)
  find_package(rapidcheck REQUIRED)
  # A locale with a decimal comma, for the tests that switch to it: no stored
  # number may follow the process's locale.
  find_program(ZT_LOCALEDEF localedef)
  set(zt_locales "${PROJECT_BINARY_DIR}/locales")
  if(ZT_LOCALEDEF AND NOT EXISTS "${zt_locales}/de_DE.UTF-8")
    file(MAKE_DIRECTORY "${zt_locales}")
    execute_process(
      COMMAND "${ZT_LOCALEDEF}" -i de_DE -f UTF-8 "${zt_locales}/de_DE.UTF-8" ERROR_QUIET)
  endif()
endif()
if(ZT_BUILD_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()

# zt_library(NAME FOLDER...)
# A shared library from the sources of the given folders below the current one.
function(zt_library name)
  set(sources)
  foreach(folder IN LISTS ARGN)
    file(GLOB found CONFIGURE_DEPENDS "${folder}/*.cpp" "${folder}/*.h")
    list(FILTER found EXCLUDE REGEX "_(test|benchmark)\\.cpp$")
    list(APPEND sources ${found})
  endforeach()
  add_library(${name} SHARED ${sources})
  add_library(ZT::${name} ALIAS ${name})
  # The libraries lie side by side in the build tree, too. A path of the build tree would be
  # filled up with empty entries, which stand for the current directory: a module that is
  # loaded by a plain name would be looked for there.
  set_target_properties(${name} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE CXX
    BUILD_WITH_INSTALL_RPATH TRUE)
  target_compile_features(${name} PUBLIC cxx_std_20)
  # The order of the operations in an expression is part of the interface, also
  # where a client inlines it.
  target_compile_options(${name} PUBLIC -ffp-contract=off)
  target_include_directories(${name} PUBLIC
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ztbr64v5>")
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:zt_warnings>)
  target_link_options(${name} PRIVATE $<$<NOT:$<BOOL:${ZT_SANITIZED}>>:-Wl,--no-undefined>)
  set_property(GLOBAL APPEND PROPERTY ZT_LIBRARIES ${name})
endfunction()

# zt_folder_programs(PREFIX LIBRARIES FOLDER...)
# For each folder, one test program from its *_test.cpp and one benchmark
# program from its *_benchmark.cpp, linked to LIBRARIES.
function(zt_folder_programs prefix libraries)
  foreach(folder IN LISTS ARGN)
    string(REPLACE "/" "_" stem "${prefix}_${folder}")
    string(REGEX REPLACE "_\\.$" "" stem "${stem}")
    if(ZT_BUILD_TESTS)
      file(GLOB tests CONFIGURE_DEPENDS "${folder}/*_test.cpp")
      if(tests)
        add_executable(${stem}_tests ${tests})
        target_link_libraries(${stem}_tests PRIVATE
          ${libraries} zt_warnings rapidcheck GTest::gmock GTest::gtest_main)
        # GoogleTest's assertions and offsetof on a class with virtual
        # operations are both deliberate here.
        target_compile_options(${stem}_tests PRIVATE -Wno-invalid-offsetof)
        # Instrumented tests take twice as long to compile with any optimisation.
        if(ZT_SANITIZED)
          target_compile_options(${stem}_tests PRIVATE -O0)
        endif()
        add_test(NAME ${stem} COMMAND ${stem}_tests --gtest_brief=1)
        set_tests_properties(${stem} PROPERTIES ENVIRONMENT
          "LOCPATH=${zt_locales};ASAN_OPTIONS=allocator_may_return_null=1")
      endif()
    endif()
    if(ZT_BUILD_BENCHMARKS)
      file(GLOB benchmarks CONFIGURE_DEPENDS "${folder}/*_benchmark.cpp")
      if(benchmarks)
        add_executable(${stem}_benchmarks ${benchmarks})
        target_link_libraries(${stem}_benchmarks PRIVATE
          ${libraries} zt_warnings zt_peers benchmark::benchmark_main)
      endif()
    endif()
  endforeach()
endfunction()

if(ZT_BUILD_BENCHMARKS)
  include(ZtPeers)
endif()

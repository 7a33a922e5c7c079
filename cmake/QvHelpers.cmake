# Small helpers shared by the layer CMakeLists files.

# Adds a layer folder once it holds a CMakeLists.txt, so that layers can be
# built up one at a time.
function(qv_add_layer dir)
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/CMakeLists.txt)
    add_subdirectory(${dir})
  endif()
endfunction()

# GoogleTest: Debian's package natively; built from Debian's source tree for
# the Windows configuration.
macro(qv_enable_testing)
  enable_testing()
  if(WIN32)
    set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  else()
    find_package(GTest REQUIRED)
    include(GoogleTest)
  endif()
endmacro()

# A native GoogleTest executable, registered with CTest test by test.
function(qv_add_native_test name)
  cmake_parse_arguments(T "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES ENVIRONMENT "QV_TEST_OUTPUT=${CMAKE_BINARY_DIR}/test-output")
endfunction()

# A Windows GoogleTest executable run under Wine by scripts/run-wine-tests.sh;
# every such program is listed in wine-tests.txt beside the build.
function(qv_add_wine_test name)
  cmake_parse_arguments(T "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE ${T_LIBS} gtest gtest_main)
  qv_list_wine_test(${name}.exe)
endfunction()

# Appends one entry to wine-tests.txt: a program of the build, or a shell script by its full path, which the
# Wine suite runs inside its X server and counts as one test by its exit code.
function(qv_list_wine_test entry)
  set_property(GLOBAL APPEND PROPERTY QV_WINE_TESTS ${entry})
  get_property(all GLOBAL PROPERTY QV_WINE_TESTS)
  list(JOIN all "\n" text)
  file(WRITE ${CMAKE_BINARY_DIR}/wine-tests.txt "${text}\n")
endfunction()

# A version resource for a DLL or program, generated from one template.
function(qv_add_version_resource target description)
  set(QV_FILE_DESCRIPTION "${description}")
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    set(QV_FILE_NAME "${target}.dll")
    set(QV_FILE_TYPE "0x2L")
  else()
    set(QV_FILE_NAME "${target}.exe")
    set(QV_FILE_TYPE "0x1L")
  endif()
  set(out ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${out} @ONLY)
  target_sources(${target} PRIVATE ${out})
endfunction()

# A Windows DLL exported by plain names through a .def file, named exactly
# as its target (Qvkrnx.dll with the import library Qvkrnx.dll.a).
function(qv_add_dll name def description)
  add_library(${name} SHARED ${ARGN} ${def})
  set_target_properties(${name} PROPERTIES PREFIX "" IMPORT_PREFIX "")
  qv_add_version_resource(${name} "${description}")
endfunction()

# A libFuzzer target, defined only in the fuzz configuration (clang with QV_FUZZ, every library instrumented
# for coverage and built with the sanitizers). scripts/run-fuzzers.sh runs each one listed in fuzzers.txt
# beside the build, starting from its seed files.
function(qv_add_fuzzer name)
  if(NOT QV_FUZZ)
    return()
  endif()
  cmake_parse_arguments(F "" "SEEDS" "SOURCES;LIBS;DEFINES" ${ARGN})
  add_executable(${name} ${F_SOURCES})
  target_compile_definitions(${name} PRIVATE ${F_DEFINES})
  target_link_libraries(${name} PRIVATE ${F_LIBS})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  add_dependencies(qv_fuzzers ${name})
  set_property(GLOBAL APPEND PROPERTY QV_FUZZERS "${CMAKE_CURRENT_BINARY_DIR}/${name} ${F_SEEDS}")
  get_property(all GLOBAL PROPERTY QV_FUZZERS)
  list(JOIN all "\n" text)
  file(WRITE ${CMAKE_BINARY_DIR}/fuzzers.txt "${text}\n")
endfunction()

# The path of the sample photograph Debian's python3-skimage ships (coffee.png, or another image of its
# data folder by name) in ${var}, or an empty string when the package is not installed.
function(qv_find_sample_photo var name)
  set(photo "")
  execute_process(COMMAND dpkg -L python3-skimage OUTPUT_VARIABLE files ERROR_QUIET RESULT_VARIABLE status)
  if(status EQUAL 0)
    string(REGEX MATCH "[^\n]*/skimage/data/${name}" photo "${files}")
  endif()
  if(NOT photo OR NOT EXISTS "${photo}")
    set(photo "")
  endif()
  set(${var} "${photo}" PARENT_SCOPE)
endfunction()

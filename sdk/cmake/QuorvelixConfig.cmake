# Package configuration of the QUORVELIX SDK: find_package(Quorvelix CONFIG) gives three imported targets,
#   Quorvelix::Kernel         Qvkrnx.dll    bitmaps, files, painting, image operations (qv/qvkrn.h, qv/qvimgops.h)
#   Quorvelix::DialogKernel   Qvdlgkrnx.dll readiness, strings, fonts, colour models (qv/qvdlgkrn.h)
#   Quorvelix::ColorDialogs   Qvdlgclrx.dll the Q_Dlg* dialogs (qv/qvdlgclr.h); links the other two
# each with the include folder, the DLL (IMPORTED_LOCATION, so $<TARGET_RUNTIME_DLLS> and install(IMPORTED_RUNTIME_
# ARTIFACTS) find it) and the import library of the consumer's toolchain: lib/msvc/*.lib for MSVC and clang-cl,
# lib/mingw/*.dll.a for MinGW. The SDK is 64-bit only.
cmake_minimum_required(VERSION 3.16)

if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(Quorvelix_FOUND FALSE)
  set(Quorvelix_NOT_FOUND_MESSAGE "the QUORVELIX SDK is for 64-bit Windows hosts only")
  return()
endif()

get_filename_component(_qv_root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
if(MSVC OR CMAKE_C_SIMULATE_ID STREQUAL "MSVC" OR CMAKE_CXX_SIMULATE_ID STREQUAL "MSVC")
  set(_qv_lib "${_qv_root}/lib/msvc/@NAME@.lib")
else()
  set(_qv_lib "${_qv_root}/lib/mingw/@NAME@.dll.a")
endif()

function(_qv_import target name)
  if(TARGET Quorvelix::${target})
    return()
  endif()
  string(REPLACE "@NAME@" "${name}" implib "${_qv_lib}")
  add_library(Quorvelix::${target} SHARED IMPORTED)
  set_target_properties(Quorvelix::${target} PROPERTIES
    IMPORTED_LOCATION "${_qv_root}/bin/${name}.dll"
    IMPORTED_IMPLIB "${implib}"
    INTERFACE_INCLUDE_DIRECTORIES "${_qv_root}/include")
endfunction()

_qv_import(Kernel Qvkrnx)
_qv_import(DialogKernel Qvdlgkrnx)
_qv_import(ColorDialogs Qvdlgclrx)
set_property(TARGET Quorvelix::ColorDialogs PROPERTY INTERFACE_LINK_LIBRARIES Quorvelix::DialogKernel Quorvelix::Kernel)

unset(_qv_lib)
unset(_qv_root)

# The dialogs' file formats (palette files, curve files and the curve record rules) as one portable static
# library. Both the DLL build and the native tests and fuzzers create it from here under their own name.
function(qv_add_dialog_files target)
  set(dir ${PROJECT_SOURCE_DIR}/src/dlgclr/dialogs)
  add_library(${target} STATIC
    ${dir}/color/PaletteFile.cpp
    ${dir}/curves/CurveFile.cpp
    ${dir}/curves/CurveRecord.cpp)
  target_include_directories(${target} PUBLIC
    ${dir}/common ${dir}/color ${dir}/curves
    ${PROJECT_SOURCE_DIR}/src/ui/utility ${PROJECT_SOURCE_DIR}/src/ui/controls ${PROJECT_SOURCE_DIR}/include)
endfunction()

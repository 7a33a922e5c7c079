# Copies the sample photograph from Debian's python3-skimage next to qvdemo.exe on every build, so a package
# installed after configuring or after the last build is picked up (and a newer photograph replaces the copy).
# Without the package the demo uses its test chart. Run with -DDEST=<folder>.
execute_process(COMMAND dpkg -L python3-skimage OUTPUT_VARIABLE files ERROR_QUIET RESULT_VARIABLE status)
if(status EQUAL 0)
  string(REGEX MATCH "[^\n]*/skimage/data/coffee\\.png" photo "${files}")
endif()
if(photo AND EXISTS "${photo}")
  file(COPY_FILE "${photo}" "${DEST}/coffee.png" ONLY_IF_DIFFERENT)
else()
  message(STATUS "qvdemo: python3-skimage's coffee.png is not installed; the demo will use its test chart")
endif()

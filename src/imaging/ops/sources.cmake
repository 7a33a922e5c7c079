# The image operations compiled into the portable imaging library: one operation a file plus the shared
# lookup-table kernel.
set(QV_OPS_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/ChannelLut.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ChangeBitmapIntensity.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ChangeBitmapContrast.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ChangeBitmapHue.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ChangeBitmapSaturation.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HistoContrastBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PosterizeBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SolarizeBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GammaCorrectBitmapExt.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GammaCorrectBitmapSigned.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IntensityDetectBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/LocalHistoEqualizer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/LocalHistoEqualizeBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GrayScaleBitmapExt.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ConvertToColoredGray.cpp
  ${CMAKE_CURRENT_LIST_DIR}/BalanceColors.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RemapBitmapIntensity.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RemapBitmapHue.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GetCurvePoints.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GetFunctionalLookupTable.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WindowLevelFillLUT.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WindowLevel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WindowLevelBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ColorHistogram.cpp
  ${CMAKE_CURRENT_LIST_DIR}/OptimizedPalette.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InverseColorMap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ColorPalettes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ColorDither.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ColorResBitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HalftoneScreen.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HalfToneBitmap.cpp
)
# The export of the color reduction reads GDI palettes on Windows (ColorResExport_win.cpp, in the DLL);
# elsewhere it takes the table only.
if(NOT WIN32)
  list(APPEND QV_OPS_SOURCES ${CMAKE_CURRENT_LIST_DIR}/ColorResExport_posix.cpp)
endif()

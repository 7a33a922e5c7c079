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
)

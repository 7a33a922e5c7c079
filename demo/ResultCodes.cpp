/*
 * One row per code of qverror.h with its name and a short meaning, worded
 * for the person looking at the demo's status bar.
 */
#include "ResultCodes.h"

#include "qv/qverror.h"

namespace qvdemo {
namespace {

struct ResultText {
  int code;
  const wchar_t* name;
  const wchar_t* meaning;
};

constexpr ResultText kResults[] = {
    {QV_SUCCESS, L"QV_SUCCESS", L"done"},
    {QV_DLG_OK, L"QV_DLG_OK", L"OK pressed, values returned"},
    {QV_DLG_CANCEL, L"QV_DLG_CANCEL", L"cancelled, nothing changed"},
    {QV_DLG_OK_NO_APPLY, L"QV_DLG_OK_NO_APPLY", L"closed without handing a palette back"},
    {QV_ERROR_BITMAP_NOT_ALLOCATED, L"QV_ERROR_BITMAP_NOT_ALLOCATED", L"no bitmap, or it has no pixels"},
    {QV_ERROR_INVALID_PARAMETER, L"QV_ERROR_INVALID_PARAMETER", L"a pointer or value is not acceptable"},
    {QV_ERROR_INVALID_BITS_PER_PIXEL, L"QV_ERROR_INVALID_BITS_PER_PIXEL", L"this call does not take this depth"},
    {QV_ERROR_DLG_FAILED, L"QV_ERROR_DLG_FAILED", L"the dialog could not be shown"},
    {QV_ERROR_DLG_NOT_READY, L"QV_ERROR_DLG_NOT_READY", L"the dialog kernel is not initialised"},
    {QV_ERROR_INVALID_STRUCT_SIZE, L"QV_ERROR_INVALID_STRUCT_SIZE", L"a structure size does not match"},
    {QV_ERROR_UNSUPPORTED_BITMAP, L"QV_ERROR_UNSUPPORTED_BITMAP", L"signed samples are not supported here"},
    {QV_ERROR_NO_MEMORY, L"QV_ERROR_NO_MEMORY", L"out of memory"},
    {QV_ERROR_USER_ABORT, L"QV_ERROR_USER_ABORT", L"stopped by the status callback"},
    {QV_ERROR_IMAGE_TOO_LARGE, L"QV_ERROR_IMAGE_TOO_LARGE", L"the image is too large"},
    {QV_ERROR_INVALID_DIMENSIONS, L"QV_ERROR_INVALID_DIMENSIONS", L"width or height is not positive"},
    {QV_ERROR_UNSUPPORTED_FORMAT, L"QV_ERROR_UNSUPPORTED_FORMAT", L"the operation does not work on this format"},
    {QV_ERROR_INVALID_FLAGS, L"QV_ERROR_INVALID_FLAGS", L"undefined flag bits"},
    {QV_ERROR_INVALID_TABLE, L"QV_ERROR_INVALID_TABLE", L"a lookup table is missing or the wrong length"},
    {QV_ERROR_BAD_REGION, L"QV_ERROR_BAD_REGION", L"the region is empty or outside the image"},
    {QV_ERROR_FILE_NOT_FOUND, L"QV_ERROR_FILE_NOT_FOUND", L"the file cannot be opened"},
    {QV_ERROR_FILE_FORMAT, L"QV_ERROR_FILE_FORMAT", L"not an image of a supported format"},
    {QV_ERROR_FILE_CORRUPT, L"QV_ERROR_FILE_CORRUPT", L"the file is damaged or cut short"},
    {QV_ERROR_FILE_WRITE, L"QV_ERROR_FILE_WRITE", L"the file could not be written"},
    {QV_ERROR_INDEX_OUT_OF_RANGE, L"QV_ERROR_INDEX_OUT_OF_RANGE", L"a list index is past the end"},
    {QV_ERROR_INVALID_HANDLE, L"QV_ERROR_INVALID_HANDLE", L"a handle is null or not one of ours"},
    {QV_ERROR_BUFFER_TOO_SMALL, L"QV_ERROR_BUFFER_TOO_SMALL", L"the buffer is too small"},
    {QV_ERROR_NOT_FOUND, L"QV_ERROR_NOT_FOUND", L"no such item"},
    {QV_ERROR_NOT_INITIALIZED, L"QV_ERROR_NOT_INITIALIZED", L"released without being initialised"},
    {QV_ERROR_PLATFORM, L"QV_ERROR_PLATFORM", L"a Windows call failed"},
};

}  // namespace

std::wstring DescribeResult(int code) {
  for (const ResultText& r : kResults) {
    if (r.code == code) return std::wstring(r.name) + L": " + r.meaning;
  }
  return L"unknown result " + std::to_wstring(code);
}

}  // namespace qvdemo

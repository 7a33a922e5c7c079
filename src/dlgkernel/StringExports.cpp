/*
 * The C exports of the string table: length, fetch, host override and the
 * language switch. A buffer that cannot hold the whole text is refused rather
 * than filled with a truncated text, so a dialog never shows half a message.
 */
#include <cstring>

#include "AddressCheck.h"
#include "ExportGuard.h"
#include "StringProbe.h"
#include "StringStore.h"
#include "qv/qvdlgkrn.h"

namespace {

constexpr std::size_t kMaxOverrideLength = 65535;

}  // namespace

QV_EXTERN_C int Q_DlgGetStringLen(unsigned int uId, unsigned int* puLen) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(puLen, sizeof(*puLen), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    auto text = qv::StringStore::Instance().Text(uId);
    if (!text) return QV_ERROR_NOT_FOUND;
    *puLen = static_cast<unsigned int>(text->size());
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgGetString(unsigned int uId, wchar_t* pBuf, unsigned int uBufLen) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (uBufLen == 0 || !qv::IsValidAddress(pBuf, uBufLen * sizeof(wchar_t), qv::Access::Write))
      return QV_ERROR_INVALID_PARAMETER;
    auto text = qv::StringStore::Instance().Text(uId);
    if (!text) return QV_ERROR_NOT_FOUND;
    if (text->size() + 1 > uBufLen) return QV_ERROR_BUFFER_TOO_SMALL;
    std::memcpy(pBuf, text->c_str(), (text->size() + 1) * sizeof(wchar_t));
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgSetString(unsigned int uId, const wchar_t* pszText) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    auto& store = qv::StringStore::Instance();
    if (!pszText) {
      store.ClearOverride(uId);
      return QV_SUCCESS;
    }
    std::size_t length = 0;
    if (!qv::SafeStringLength(pszText, kMaxOverrideLength, &length)) return QV_ERROR_INVALID_PARAMETER;
    store.SetOverride(uId, std::wstring(pszText, length));
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgSetLanguage(unsigned int uLanguage) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (uLanguage != QV_DLGLANG_ENGLISH && uLanguage != QV_DLGLANG_GERMAN) return QV_ERROR_INVALID_PARAMETER;
    qv::StringStore::Instance().SetLanguage(static_cast<qv::Language>(uLanguage));
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgGetLanguage(unsigned int* puLanguage) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(puLanguage, sizeof(*puLanguage), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    *puLanguage = static_cast<unsigned int>(qv::StringStore::Instance().CurrentLanguage());
    return QV_SUCCESS;
  });
}

/*
 * The C exports of the halftone list conversion. Copies handed out are kept in
 * a registry, so that releasing a pointer this kernel never made (or one
 * already released) is an error instead of a heap corruption.
 */
#include <map>
#include <memory>
#include <mutex>

#include "AddressCheck.h"
#include "ExportGuard.h"
#include "HalftoneListCopy.h"
#include "qv/qvdlgkrn.h"

namespace {

std::mutex& RegistryMutex() {
  static std::mutex mutex;
  return mutex;
}

std::map<QVHALFTONELISTW*, std::unique_ptr<qv::HalftoneListCopy>>& Registry() {
  static std::map<QVHALFTONELISTW*, std::unique_ptr<qv::HalftoneListCopy>> copies;
  return copies;
}

}  // namespace

QV_EXTERN_C int Q_DlgConvertHalftoneListA(const QVHALFTONELISTA* pIn, QVHALFTONELISTW** ppOut) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!qv::IsValidAddress(ppOut, sizeof(*ppOut), qv::Access::Write)) return QV_ERROR_INVALID_PARAMETER;
    std::unique_ptr<qv::HalftoneListCopy> copy;
    const int result = qv::HalftoneListCopy::Create(pIn, copy);
    if (result != QV_SUCCESS) return result;
    QVHALFTONELISTW* list = copy->List();
    {
      std::lock_guard<std::mutex> lock(RegistryMutex());
      Registry().emplace(list, std::move(copy));
    }
    *ppOut = list;
    return QV_SUCCESS;
  });
}

QV_EXTERN_C int Q_DlgFreeHalftoneList(QVHALFTONELISTW* pList) {
  return qv::Guarded(QV_ERROR_PLATFORM, [&] {
    if (!pList) return QV_ERROR_INVALID_PARAMETER;
    std::unique_ptr<qv::HalftoneListCopy> released;
    {
      std::lock_guard<std::mutex> lock(RegistryMutex());
      auto it = Registry().find(pList);
      if (it == Registry().end()) return QV_ERROR_INVALID_HANDLE;
      released = std::move(it->second);
      Registry().erase(it);
    }
    return QV_SUCCESS;
  });
}

#include "plugin_shutdown.h"

#include <QCoreApplication>

#include "auto_plan_helper.h"
#include "end_with_application.h"
#include "host_calls/call_pool.h"
#include "host_calls/question_pool.h"
#include "plan_icon_cache.h"
#include "view_config_manager.h"
#include "view_model_data_manager.h"
#include "view_model_data_manager_export.h"

namespace TarnPlanView {

namespace {

void EndNow() {
  if (CViewModelDataManager::IsCreated()) {
    CViewModelDataManager::Instance().UninitManager();
  }
  ReleasePlugin();
}

/// Whether EndNow() is asked for. Gone when the library is unloaded, and the routine with it.
class CRoutine {
 public:
  ~CRoutine() { Remove(); }

  void Add() {
    if (!added_) {
      qAddPostRoutine(&EndNow);
      added_ = true;
    }
  }
  void Remove() {
    if (added_) {
      qRemovePostRoutine(&EndNow);
      added_ = false;
    }
  }

 private:
  bool added_ = false;
};

CRoutine& Routine() {
  static CRoutine routine;
  return routine;
}

}  // namespace

void ReleasePlugin() {
  HostCalls::AwaitCalls();
  HostCalls::ReleaseQuestionPool();
  CViewModelDataManagerExport::Release();
  CViewModelDataManager::Release();
  CAutoPlanHelper::Release();
  CViewConfigManager::Release();
  CPlanIconCache::Clear();
  Routine().Remove();
}

void ReleaseWithTheApplication() {
  Routine().Add();
}

}  // namespace TarnPlanView

#include "plugin_shutdown.h"

#include "auto_plan_helper.h"
#include "question_pool.h"
#include "view_config_manager.h"
#include "view_model_data_manager.h"
#include "view_model_data_manager_export.h"
#include "view_public_def.h"

namespace TarnPlanView {

void ReleasePlugin() {
  ReleaseQuestionPool();
  CViewModelDataManagerExport::Release();
  CViewModelDataManager::Release();
  CAutoPlanHelper::Release();
  CViewConfigManager::Release();
  CViewPublicDef::ReleaseCachedIcons();
}

}  // namespace TarnPlanView

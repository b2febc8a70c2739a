#include "accounts/administrators.h"

#include "plan_rules/rights.h"

namespace TarnHost::Store {

void CAdministrators::RequireKept() {
  if (were_there_ && !AreThere()) {
    throw CStoreError(
        CStoreError::kRefused,
        QT_TRANSLATE_NOOP("TarnHost::Store", "The last user who may configure the site keeps that right."));
  }
}

bool CAdministrators::AreThere() {
  return engine_
      .Value("SELECT 1 FROM user_right JOIN app_user ON id = user_id WHERE code = ? LIMIT 1",
             {view_plugin_protocol::kConfigureRight})
      .isValid();
}

}  // namespace TarnHost::Store

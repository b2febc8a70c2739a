#include "app/client_translator.h"

#include "LyraPluginManager/view_business_interface_mgr.h"

namespace TarnClient {

namespace {

constexpr int kPlanWording = 1;
constexpr char kViewTexts[] = "view";

}  // namespace

void CClientTranslator::TakeWording() {
  view_plugin_protocol::GetPlanConfigResponse config;
  LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanConfig({}, config);
  SetSaysView(config.show_mode != kPlanWording);
}

// A text without a second one is the same in both wordings: it is found by its source then.
QString CClientTranslator::translate(const char* context, const char* source, const char* disambiguation, int n) const {
  const bool is_distinguished = disambiguation && *disambiguation;
  if (says_view_ && !is_distinguished) {
    return QTranslator::translate(context, source, kViewTexts, n);
  }
  return QTranslator::translate(context, source, disambiguation, n);
}

}  // namespace TarnClient

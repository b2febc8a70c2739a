#include "app/client_translator.h"

#include "LyraPluginManager/view_business_interface_mgr.h"

namespace TarnClient {

namespace {

constexpr int kPlanWording = 1;
constexpr char kViewTexts[] = "view";

// What Qt itself shows in the menus of fields: no catalogue of its own is brought along.
[[maybe_unused]] constexpr const char* kTextsOfQt[] = {
    QT_TRANSLATE_NOOP("QLineEdit", "&Undo"),
    QT_TRANSLATE_NOOP("QLineEdit", "&Redo"),
    QT_TRANSLATE_NOOP("QLineEdit", "Cu&t"),
    QT_TRANSLATE_NOOP("QLineEdit", "Delete"),
    QT_TRANSLATE_NOOP("QLineEdit", "Select All"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Undo"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Redo"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Cu&t"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Copy"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "&Paste"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Delete"),
    QT_TRANSLATE_NOOP("QWidgetTextControl", "Select All"),
    QT_TRANSLATE_NOOP("QAbstractSpinBox", "&Select All"),
    QT_TRANSLATE_NOOP("QAbstractSpinBox", "&Step up"),
    QT_TRANSLATE_NOOP("QAbstractSpinBox", "Step &down"),
};

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

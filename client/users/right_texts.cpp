#include "users/right_texts.h"

#include <QCoreApplication>
#include <QStringList>

#include "plan_rules/rights.h"

namespace TarnClient {

namespace {

using view_plugin_protocol::kConfigureRight;

struct RightTexts {
  int code;
  const char *whole, *brief;
};

constexpr RightTexts kTexts[] = {
    {view_plugin_protocol::AddRight, QT_TRANSLATE_NOOP("TarnClient::Rights", "Add plans and groups"),
     QT_TRANSLATE_NOOP("TarnClient::Rights", "add")},
    {view_plugin_protocol::EditRight, QT_TRANSLATE_NOOP("TarnClient::Rights", "Change plans and groups"),
     QT_TRANSLATE_NOOP("TarnClient::Rights", "change")},
    {view_plugin_protocol::DeleteRight, QT_TRANSLATE_NOOP("TarnClient::Rights", "Delete plans and groups"),
     QT_TRANSLATE_NOOP("TarnClient::Rights", "delete")},
    {kConfigureRight, QT_TRANSLATE_NOOP("TarnClient::Rights", "Configure the site: cameras, users, limits"),
     QT_TRANSLATE_NOOP("TarnClient::Rights", "configure")},
};

QString Translated(const char* text) {
  return QCoreApplication::translate("TarnClient::Rights", text);
}

}  // namespace

std::vector<int> AllRights() {
  std::vector<int> codes;
  for (const RightTexts& right : kTexts) {
    codes.push_back(right.code);
  }
  return codes;
}

QString TextOfRight(int code) {
  for (const RightTexts& right : kTexts) {
    if (right.code == code) {
      return Translated(right.whole);
    }
  }
  return QString::number(code);
}

QString ShortTextOf(const std::set<int>& rights) {
  QStringList texts;
  for (const RightTexts& right : kTexts) {
    if (rights.count(right.code) != 0) {
      texts << Translated(right.brief);
    }
  }
  return texts.join(QStringLiteral(", "));
}

}  // namespace TarnClient

#include "help/about_text.h"

#include <TarnPlanView/plugin_version.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QSysInfo>

#include "TarnHost/host_version.h"
#include "TarnHost/plan_store.h"

namespace TarnClient {

namespace {

QString Text(const char* source) {
  return QCoreApplication::translate("TarnClient::AboutText", source);
}

}  // namespace

StoreFacts FactsOf(const QString& store_url) {
  StoreFacts facts;
  facts.engine = QStringLiteral("PostgreSQL");
  if (store_url.startsWith(QLatin1String("sqlite:"))) {
    facts.engine = QStringLiteral("SQLite");
  }
  facts.address = TarnHost::CPlanStore::ShownAddress(store_url);
  facts.layout_version = TarnHost::CPlanStore::LayoutVersion();
  return facts;
}

QList<QPair<QString, QString>> AboutLines(const StoreFacts& store) {
  return {
      {Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "Program")), QStringLiteral(TARN_CLIENT_VERSION)},
      {Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "Plug-in")),
       Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "%1, interface %2"))
           .arg(TarnPlanView::PluginVersion())
           .arg(TarnPlanView::InterfaceVersion())},
      {Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "Host libraries")), TarnHost::HostVersion()},
      {QStringLiteral("Qt"), Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "%1 (built with %2)"))
                                 .arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR))},
      {Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "Store")),
       Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "%1, layout %2")).arg(store.engine).arg(store.layout_version)},
      {Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "Address")), store.address},
      {Text(QT_TRANSLATE_NOOP("TarnClient::AboutText", "System")),
       QStringLiteral("%1, %2").arg(QSysInfo::prettyProductName(), QGuiApplication::platformName())},
  };
}

QString VersionText() {
  const QStringList lines{
      QStringLiteral("tarn-client " TARN_CLIENT_VERSION),
      QStringLiteral("libTarnPlanView %1, interface %2")
          .arg(TarnPlanView::PluginVersion())
          .arg(TarnPlanView::InterfaceVersion()),
      QStringLiteral("libTarnHost %1").arg(TarnHost::HostVersion()),
      QStringLiteral("store layout %1").arg(TarnHost::CPlanStore::LayoutVersion()),
      QStringLiteral("Qt %1 (built with %2)").arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR)),
      QString(),
  };
  return lines.join(QLatin1Char('\n'));
}

}  // namespace TarnClient

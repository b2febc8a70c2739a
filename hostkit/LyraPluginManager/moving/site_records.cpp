#include "moving/site_records.h"

#include <QCryptographicHash>

#include "plan_rules/families.h"

namespace TarnHost::Moving {

QString FamilyName(int32_t family) {
  switch (family) {
    case view_plugin_protocol::PublicFamily:
      return QStringLiteral("public");
    case view_plugin_protocol::OwnFamily:
      return QStringLiteral("own");
    case view_plugin_protocol::ReceivedFamily:
      return QStringLiteral("received");
    default:
      return QStringLiteral("unknown");
  }
}

QByteArray DigestOf(const PlanRecord& plan) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  hash.addData(QByteArray::number(plan.pages.size()) + ' ' + plan.pages);
  hash.addData(plan.thumbnail);
  return hash.result();
}

QString Named(const char* kind, const QString& name, int32_t code) {
  QString shown;
  for (const QChar c : name) {
    if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator) {
      shown += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    } else {
      shown += c;
    }
  }
  const QString text = QStringLiteral("%1 \"%2\"").arg(QLatin1String(kind), shown);
  if (code == 0) {
    return text;
  }
  return text + QStringLiteral(" (%1)").arg(code);
}

}  // namespace TarnHost::Moving

#include "store/plan_soundness.h"

#include <QCryptographicHash>
#include <QStringList>

#include "plan_rules/splits.h"
#include "store/page_codec.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::IsKnownSplit;
using view_plugin_protocol::kMostWindowsOfPage;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

constexpr int kHashCharacters = 16;

CStoreText FaultIn(const PlanWindow& window) {
  if (window.window_no < 0 || window.window_no > kMostWindowsOfPage) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "a page has a window number %1"), {QString::number(window.window_no)}};
  }
  if (window.content_kind < 0 || window.stream_type < 0 || window.preset_no < 0) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "a window has a number below zero");
  }
  return {};
}

CStoreText FaultIn(const PlanPage& page) {
  if (page.page_no < 0) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "a page has the number %1"), {QString::number(page.page_no)}};
  }
  if (!IsKnownSplit(page.split_type)) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "a page has an unknown split %1"), {QString::number(page.split_type)}};
  }
  for (const PlanWindow& window : page.windows) {
    const CStoreText fault = FaultIn(window);
    if (!fault.IsEmpty()) {
      return fault;
    }
  }
  return {};
}

// As a database hands it back: some change the two characters that are none.
QByteArray Bytes(QString text) {
  const QChar replacement(QChar::ReplacementCharacter);
  return text.replace(QChar(0xfffe), replacement).replace(QChar(0xffff), replacement).toUtf8();
}

// Each part with its length before it, or what goes from the end of one to the next would not show.
QString HashOf(const QList<QByteArray>& parts) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const QByteArray& part : parts) {
    hash.addData(QByteArray::number(part.size()) + ' ' + part);
  }
  return QString::fromLatin1(hash.result().toHex().left(kHashCharacters));
}

QString PlayedHash(const StoredPlan& plan, const QString& pages_text) {
  const PlanRow& row = plan.row;
  return HashOf({QByteArray::number(row.code), QByteArray::number(row.split_type), QByteArray::number(row.page_count),
                 QByteArray::number(int(row.auto_run)), Bytes(plan.begin_time), Bytes(plan.end_time),
                 Bytes(pages_text)});
}

QString RestHash(const StoredPlan& plan) {
  const PlanRow& row = plan.row;
  return HashOf({QByteArray::number(row.parent), QByteArray::number(row.family), QByteArray::number(row.owner),
                 Bytes(plan.name), plan.thumbnail, Bytes(plan.creator), Bytes(plan.creation_time),
                 Bytes(plan.changed_by), Bytes(plan.changed_at)});
}

CStoreText FaultIn(const StoredPlan& plan, const QString& pages_text, const QString& checksum, bool readable) {
  const auto stored = static_cast<int32_t>(plan.pages.size());
  if (!readable) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "its pages cannot be read");
  }
  if (stored != plan.row.page_count) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "it has %1 of its %2 pages"),
            {QString::number(stored), QString::number(plan.row.page_count)}};
  }
  const CStoreText fault = FaultOf(plan.pages);
  if (!fault.IsEmpty()) {
    return fault;
  }
  if (plan.row.split_type != SplitOf(plan.pages)) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "its split is not that of its first page");
  }
  const bool denied = CheckedBy(checksum, plan, pages_text) == Vouched::kNo;
  if (denied) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "its content is not what was saved");
  }
  return {};
}

}  // namespace

CStoreText FaultOf(const std::list<PlanPage>& pages) {
  for (const PlanPage& page : pages) {
    const CStoreText fault = FaultIn(page);
    if (!fault.IsEmpty()) {
      return fault;
    }
  }
  return {};
}

QString ChecksumOf(const StoredPlan& plan, const QString& pages_text) {
  return QStringLiteral("%1:%2:%3").arg(plan.revision).arg(PlayedHash(plan, pages_text), RestHash(plan));
}

Vouched CheckedBy(const QString& checksum, const StoredPlan& plan, const QString& pages_text) {
  const QString expected = ChecksumOf(plan, pages_text);
  if (checksum == expected) {
    return Vouched::kYes;
  }
  const QStringList stored = checksum.split(':');
  if (checksum.isEmpty() || stored.first() != QString::number(plan.revision)) {
    return Vouched::kUnknown;
  }
  const bool plays_as_saved = stored.value(1) == expected.section(':', 1, 1);
  return plays_as_saved ? Vouched::kRestChanged : Vouched::kNo;
}

void TakePages(StoredPlan* plan, const QString& pages_text, const QString& checksum) {
  plan->has_checksum = !checksum.isEmpty();
  const auto pages = PagesFromText(pages_text);
  plan->pages = pages.value_or(std::list<PlanPage>());
  const CStoreText fault = FaultIn(*plan, pages_text, checksum, pages.has_value());
  if (!fault.IsEmpty()) {
    plan->damage = {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan \"%1\" (%2) is damaged: %3."),
                    {plan->name, QString::number(plan->row.code), fault}};
  }
}

}  // namespace TarnHost::Store

#include "conflict_words.h"

#include <QLocale>
#include <QStringList>

#include "MarUIControl/moment_text.h"
#include "MarUIControl/string_conversion.h"

namespace TarnPlanView {

using MarUIControl::StringToQString;

QString CConflictWords::SavedBy(const view_plugin_protocol::GetPlanDetailResponse& theirs, const QDateTime& now) {
  const QString who = StringToQString(theirs.changed_by);
  if (who.isEmpty()) {
    return tr("Another user saved the plan while you were editing.");
  }
  const QString when = When(StringToQString(theirs.changed_at), now);
  if (when.isEmpty()) {
    return tr("Saved by %1 while you were editing.").arg(who);
  }
  return tr("Saved by %1 at %2 while you were editing.").arg(who, when);
}

QString CConflictWords::When(const QString& stamp, const QDateTime& now) {
  const QDateTime at = QLocale::c().toDateTime(stamp, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  if (!at.isValid()) {
    return QString();
  }
  return MarUIControl::MomentText(at, now);
}

QString CConflictWords::Changes(const PlanDraft& opened, const PlanDraft& theirs) {
  QStringList changes;
  if (opened.name != theirs.name) {
    changes.append(tr("the name, now %1").arg(theirs.name));
  }
  if (opened.group_code != theirs.group_code) {
    changes.append(tr("the group, now %1").arg(theirs.group_name));
  }
  if (opened.auto_run != theirs.auto_run || opened.begin != theirs.begin || opened.end != theirs.end) {
    changes.append(tr("the automatic run"));
  }
  const QString pages = ChangedPages(opened, theirs);
  if (!pages.isEmpty()) {
    changes.append(pages);
  }
  if (changes.isEmpty()) {
    return QString();
  }
  return tr("Changed: %1.").arg(changes.join(QStringLiteral("; ")));
}

QString CConflictWords::ChangedPages(const PlanDraft& opened, const PlanDraft& theirs) {
  if (opened.pages.size() != theirs.pages.size()) {
    return tr("the number of pages, now %1").arg(theirs.pages.size());
  }
  QStringList changed;
  for (int i = 0; i < opened.pages.size(); ++i) {
    if (opened.pages[i] != theirs.pages[i]) {
      changed.append(QString::number(i + 1));
    }
  }
  if (changed.isEmpty()) {
    return QString();
  }
  return tr("page(s) %1", nullptr, changed.size()).arg(changed.join(QStringLiteral(", ")));
}

}  // namespace TarnPlanView

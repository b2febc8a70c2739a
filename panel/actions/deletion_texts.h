#pragma once

#include <QModelIndex>
#include <QString>
#include <QStringList>
#include <optional>

namespace TarnPlanView {

/// What stands below a group, on all levels.
struct RowsInside {
  int groups = 0, plans = 0;
};

/// What a question or an offer says of the row that it is about.
struct DeletionSubject {
  QString name;
  bool is_group = false;
  bool playing = false;              // the plan, or one in the group
  std::optional<RowsInside> inside;  // of a group; none when neither tree nor host can say
};

/// What the tree knows of the row, and the host of what is not loaded below it. Thread: GUI.
DeletionSubject DeletionSubjectOf(const QModelIndex& row);

/// `text` with each of its places %1 to %9 that there is a value for replaced by that, a value's own text left alone.
/// A text without places stays as it is. Thread: any.
QString FillPlaces(const QString& text, const QStringList& values);

/// "12 plans". Thread: GUI.
QString PlansText(int count);

/// The question before a deletion; %1 of its text is the name, %2 the kind, %3 what is inside. Thread: GUI.
QString DeletionQuestion(const DeletionSubject& subject);
/// "Deleted North gate, 12 plans." Thread: GUI.
QString DeletionNotice(const DeletionSubject& subject);

}  // namespace TarnPlanView

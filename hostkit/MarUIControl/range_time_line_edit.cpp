#include "MarUIControl/range_time_line_edit.h"

#include <QHBoxLayout>
#include <QLabel>

#include "MarUIControl/time_edit.h"

namespace MarUIControl {

namespace {

QTime OrMidnight(const QTime& time) {
  if (!time.isValid()) {
    return QTime(0, 0);
  }
  return time;
}

}  // namespace

CRangeTimeLineEdit::CRangeTimeLineEdit(QWidget* parent) : QWidget(parent) {
  begin_ = MakeEdit(tr("Begin time"));
  end_ = MakeEdit(tr("End time"));
  auto* dash = new QLabel(QStringLiteral("\u2013"), this);
  dash->setObjectName(QStringLiteral("range_time_dash"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(1, 1, 1, 1);
  row->setSpacing(4);
  row->addWidget(begin_, 1);
  row->addWidget(dash);
  row->addWidget(end_, 1);
  setFocusProxy(begin_);
}

CRangeTimeLineEdit::~CRangeTimeLineEdit() = default;

void CRangeTimeLineEdit::SetBeginTime(const QTime& time) {
  begin_->setTime(OrMidnight(time));
}

void CRangeTimeLineEdit::SetEndTime(const QTime& time) {
  end_->setTime(OrMidnight(time));
}

QTime CRangeTimeLineEdit::GetBeginTime() const {
  return begin_->time();
}

QTime CRangeTimeLineEdit::GetEndTime() const {
  return end_->time();
}

QTimeEdit* CRangeTimeLineEdit::MakeEdit(const QString& name) {
  auto* edit = new CTimeEdit(this);
  edit->setAccessibleName(name);
  edit->setToolTip(name);
  connect(edit, &QTimeEdit::timeChanged, this, [this] { Q_EMIT SignalTimeChanged(GetBeginTime(), GetEndTime()); });
  return edit;
}

}  // namespace MarUIControl

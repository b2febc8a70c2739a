#pragma once

#include <QTime>
#include <QWidget>

#include "host_export.h"

class QTimeEdit;

namespace MarUIControl {

/// Two times of day side by side, each HH:mm:ss. Neither bounds the other. Thread: GUI.
class TARN_HOST_EXPORT CRangeTimeLineEdit : public QWidget {
  Q_OBJECT
 public:
  explicit CRangeTimeLineEdit(QWidget* parent = nullptr);
  ~CRangeTimeLineEdit() override;

  /// The first of the two; an invalid time counts as 00:00:00, which both are at first.
  void SetBeginTime(const QTime& time);
  /// The second; an invalid time counts as 00:00:00.
  void SetEndTime(const QTime& time);
  /// The first; always valid, to the second.
  QTime GetBeginTime() const;
  /// The second; always valid, may come before the first.
  QTime GetEndTime() const;

 Q_SIGNALS:
  /// One of the two has changed, by the user or by a call.
  void SignalTimeChanged(const QTime& begin, const QTime& end);

 private:
  QTimeEdit* MakeEdit(const QString& name);

  QTimeEdit *begin_ = nullptr, *end_ = nullptr;
};

}  // namespace MarUIControl

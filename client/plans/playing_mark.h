#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

namespace TarnClient {

class CPlanFamily;

/// Keeps what plays marked in the trees. The mark of a plan is lost when rows are made again, so it is set again after
/// rows came in, without a change of the current row; several such changes in a row lead to one renewal. Thread: GUI.
class CPlayingMark : public QObject {
  Q_OBJECT
 public:
  explicit CPlayingMark(QObject* parent = nullptr);

  /// Not owned; destroyed families drop out by themselves.
  void Watch(CPlanFamily* family);
  /// Marks this plan and no other; an empty code takes the mark away. What the user has asked for becomes current, too.
  void Set(const QString& code, bool makes_current);
  /// The plans of this group play in turn; an empty code for none.
  void SetCycling(const QString& group_code);

 private:
  void RenewLater();
  void Renew();

  QVector<CPlanFamily*> families_;
  QString code_;
  QTimer renew_;
};

}  // namespace TarnClient

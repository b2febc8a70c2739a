#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

namespace TarnClient {

class CPlanFamily;

/// Keeps the plan that plays marked in the trees. The mark is lost when rows are made anew, so it is set again after
/// rows came in; several such changes in a row lead to one renewal. Thread: GUI.
class CPlayingMark : public QObject {
  Q_OBJECT
 public:
  explicit CPlayingMark(QObject* parent = nullptr);

  /// Not owned; destroyed families drop out by themselves.
  void Watch(CPlanFamily* family);
  /// Marks this plan and no other; an empty code takes the mark away.
  void Set(const QString& code);

 private:
  void RenewLater();
  void Renew();

  QVector<CPlanFamily*> families_;
  QString code_;
  QTimer renew_;
};

}  // namespace TarnClient

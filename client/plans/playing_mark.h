#pragma once

#include <TarnPlanView/standard_plan_model.h>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

namespace TarnClient {

/// Keeps the plan that plays marked in the trees. The mark is lost when rows are made anew, so it is set again after
/// rows came in; several such changes in a row lead to one renewal. Thread: GUI.
class CPlayingMark : public QObject {
  Q_OBJECT
 public:
  explicit CPlayingMark(QObject* parent = nullptr);

  void Watch(TarnPlanView::CStandardPlanModel* model);
  /// Marks this plan and no other; an empty code takes the mark away.
  void Set(const QString& code);

 private:
  void Renew();

  QVector<QPointer<TarnPlanView::CStandardPlanModel>> models_;
  QString code_;
  QTimer renew_;
};

}  // namespace TarnClient

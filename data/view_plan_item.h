#pragma once

#include <QObject>

#include "record_item.h"
#include "view_manager_param.h"

namespace TarnPlanView {

/// Row of a plan. Owned by the model it is inserted into.
class CViewPlanItem : public QObject, public CRecordItem {
  Q_OBJECT
 public:
  CViewPlanItem(const ViewManagerParam& param, const view_plugin_protocol::PlanBasicInfo& plan);
  /// Shares `plan` with the plan's rows in other models.
  CViewPlanItem(const ViewManagerParam& param, CRowRecord::Ptr plan);
  ~CViewPlanItem() override;

  using CRecordItem::setData;

  /// Also what assistive technology is to say: that the plan plays, starts by itself or turns pages.
  QVariant data(int role = Qt::UserRole + 1) const override;

  /// Renews the icon, then role 673.
  void SetPlayState(bool playing);
};

}  // namespace TarnPlanView

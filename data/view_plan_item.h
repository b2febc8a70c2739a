#pragma once

#include <QObject>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/standard_item.h"
#include "view_manager_param.h"

namespace TarnPlanView {

/// Row of a plan. Owned by the model it is inserted into.
class CViewPlanItem : public QObject, public MarUIControl::CStandardItem {
  Q_OBJECT
 public:
  CViewPlanItem(const ViewManagerParam& param, const view_plugin_protocol::PlanBasicInfo& plan);
  ~CViewPlanItem() override;

  using MarUIControl::CStandardItem::setData;

  /// Also what assistive technology is to say: that the plan plays, starts by itself or turns pages.
  QVariant data(int role = Qt::UserRole + 1) const override;

  /// Renews the icon, then role 673.
  void SetPlayState(bool playing);

 private:
  ViewManagerParam param_;
  view_plugin_protocol::PlanBasicInfo plan_;
};

}  // namespace TarnPlanView

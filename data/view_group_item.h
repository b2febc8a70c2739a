#pragma once

#include <QObject>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/standard_item.h"
#include "view_manager_param.h"

namespace TarnPlanView {

/// Row of a plan group. Owned by the model it is inserted into.
class CViewGroupItem : public QObject, public MarUIControl::CStandardItem {
  Q_OBJECT
 public:
  CViewGroupItem(const ViewManagerParam& param, const view_plugin_protocol::PlanGroup& group);
  ~CViewGroupItem() override;

  using MarUIControl::CStandardItem::setData;

 private:
  ViewManagerParam param_;
  view_plugin_protocol::PlanGroup group_;
};

}  // namespace TarnPlanView

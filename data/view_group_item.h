#pragma once

#include <QObject>

#include "record_item.h"
#include "view_manager_param.h"

namespace TarnPlanView {

/// Row of a plan group. Owned by the model it is inserted into.
class CViewGroupItem : public QObject, public CRecordItem {
  Q_OBJECT
 public:
  CViewGroupItem(const ViewManagerParam& param, const view_plugin_protocol::PlanGroup& group);
  /// Shares `group` with the group's rows in other models.
  CViewGroupItem(const ViewManagerParam& param, CRowRecord::Ptr group);
  ~CViewGroupItem() override;

  using CRecordItem::setData;
};

}  // namespace TarnPlanView

#include "view_group_item.h"

#include <utility>

namespace TarnPlanView {

CViewGroupItem::CViewGroupItem(const ViewManagerParam& param, const view_plugin_protocol::PlanGroup& group)
    : CViewGroupItem(param, CRowRecord::Of(group)) {}

CViewGroupItem::CViewGroupItem(const ViewManagerParam& param, CRowRecord::Ptr group)
    : CRecordItem(std::move(group), param) {}

CViewGroupItem::~CViewGroupItem() = default;

}  // namespace TarnPlanView

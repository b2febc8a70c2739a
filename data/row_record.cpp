#include "row_record.h"

#include <memory>
#include <utility>

#include "item_type.h"
#include "level_places.h"
#include "plan_rules/families.h"

namespace TarnPlanView {

using view_plugin_protocol::PlanBasicInfo;
using view_plugin_protocol::PlanGroup;

namespace {

int GroupItemType(int family) {
  switch (family) {
    case view_plugin_protocol::PublicFamily:
      return PublicGroupItem;
    case view_plugin_protocol::ReceivedFamily:
      return ReceivedGroupItem;
    default:
      return OwnGroupItem;
  }
}

int PlanItemType(int family) {
  switch (family) {
    case view_plugin_protocol::PublicFamily:
      return PublicPlanItem;
    case view_plugin_protocol::ReceivedFamily:
      return ReceivedPlanItem;
    default:
      return OwnPlanItem;
  }
}

}  // namespace

template <class Source>
CRowRecord::CRowRecord(const Source& record, int item_type, bool is_group)
    : item_type_(static_cast<qint16>(item_type)),
      is_group_(is_group),
      has_code_(!record.index_code.empty()),
      host_(QVariant::fromValue(record)),
      name_(QString::fromStdString(record.name)),
      number_(view_plugin_protocol::NumberOfCode(QString::fromStdString(record.index_code))) {}

CRowRecord::~CRowRecord() {
  delete name_key_.load();
}

// Who comes second, on another thread, throws his own away.
const MarUIControl::CollationKey& CRowRecord::NameKey() const {
  const MarUIControl::CollationKey* key = name_key_.load();
  if (!key) {
    auto made = std::make_unique<const MarUIControl::CollationKey>(MarUIControl::MakeCollationKey(name_));
    if (name_key_.compare_exchange_strong(key, made.get())) {
      key = made.release();
    }
  }
  return *key;
}

// The family comes from the record, not from the model that shows it.
CRowRecord::Ptr CRowRecord::Of(const PlanGroup& group) {
  return Ptr(new CRowRecord(group, GroupItemType(group.type), true));
}

CRowRecord::Ptr CRowRecord::Of(const PlanBasicInfo& plan) {
  return Ptr(new CRowRecord(plan, PlanItemType(plan.type), false));
}

QString CRowRecord::Code() const {
  return QString::fromStdString(is_group_ ? Group().index_code : Plan().index_code);
}

int CRowRecord::Family() const {
  if (is_group_) {
    return Group().type;
  }
  return Plan().type;
}

const PlanGroup& CRowRecord::Group() const {
  Q_ASSERT(is_group_);
  return *static_cast<const PlanGroup*>(host_.constData());
}

const PlanBasicInfo& CRowRecord::Plan() const {
  Q_ASSERT(!is_group_);
  return *static_cast<const PlanBasicInfo*>(host_.constData());
}

ChildRecords ChildRecords::Of(const QList<PlanGroup>& groups, const QList<PlanBasicInfo>& plans) {
  return {groups, plans, CRowRecord::OfAll(groups), CRowRecord::OfAll(plans), nullptr};
}

void ChildRecords::PlaceAll() {
  CLevelPlaces::Records all(of_groups.cbegin(), of_groups.cend());
  all.insert(all.end(), of_plans.cbegin(), of_plans.cend());
  places = CLevelPlaces::Of(std::move(all));
}

}  // namespace TarnPlanView

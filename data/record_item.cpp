#include "record_item.h"

#include <QSignalBlocker>
#include <QStandardItemModel>
#include <algorithm>
#include <iterator>
#include <memory>
#include <typeinfo>
#include <utility>

#include "plan_item_role.h"
#include "view_group_item.h"
#include "view_manager_param.h"
#include "view_plan_item.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

constexpr int kGroupRoles[] = {Qt::DisplayRole, ItemTypeRole,  Qt::DecorationRole, ItemRecordRole, GroupIndexCodeRole,
                               IsGroupRole,     GroupTypeRole, GroupMarkRole,      ItemMarkRole,   GroupLoadedRole};
constexpr int kPlanRoles[] = {Qt::DisplayRole,   ItemTypeRole, Qt::DecorationRole, ItemRecordRole,
                              PlanIndexCodeRole, IsGroupRole,  PlanTypeRole,       PlayingRole};

constexpr quint16 BitOf(int role) {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return 1 << 0;
    case Qt::DecorationRole:
      return 1 << 1;
    case ItemMarkRole:
      return 1 << 2;
    case GroupMarkRole:
      return 1 << 3;
    case ItemTypeRole:
      return 1 << 4;
    case GroupLoadedRole:
      return 1 << 5;
    case PlanIndexCodeRole:
      return 1 << 6;
    case GroupIndexCodeRole:
      return 1 << 7;
    case ItemRecordRole:
      return 1 << 8;
    case IsGroupRole:
      return 1 << 9;
    case PlanTypeRole:
      return 1 << 10;
    case GroupTypeRole:
      return 1 << 11;
    case PlayingRole:
      return 1 << 12;
    default:
      return 0;
  }
}

template <size_t count>
constexpr quint16 BitsOf(const int (&roles)[count]) {
  quint16 bits = 0;
  for (const int role : roles) {
    bits |= BitOf(role);
  }
  return bits;
}

template <class Function>
void ForEachRole(bool is_group, const Function& function) {
  if (is_group) {
    std::for_each(std::begin(kGroupRoles), std::end(kGroupRoles), function);
  } else {
    std::for_each(std::begin(kPlanRoles), std::end(kPlanRoles), function);
  }
}

}  // namespace

CRecordItem::CRecordItem(CRowRecord::Ptr record, const ViewManagerParam& param)
    : record_(std::move(record)),
      from_record_(record_->IsGroup() ? BitsOf(kGroupRoles) : BitsOf(kPlanRoles)),
      is_dark_(param.type == PublicTheme),
      item_mark_(!param.flag9) {}

CRecordItem::~CRecordItem() = default;

// Asked of each row that comes into a model: a comparison of types is a tenth of a cast that searches the bases.
const CRecordItem* CRecordItem::Of(const QStandardItem* item) {
  if (!item) {
    return nullptr;
  }
  const std::type_info& type = typeid(*item);
  if (type == typeid(CViewPlanItem) || type == typeid(CViewGroupItem)) {
    return static_cast<const CRecordItem*>(item);
  }
  return dynamic_cast<const CRecordItem*>(item);
}

bool CRecordItem::IsFromRecord(int role) const {
  return from_record_ & BitOf(role);
}

QVariant CRecordItem::data(int role) const {
  return IsFromRecord(role) ? fromRecord(role) : CStandardItem::data(role);
}

QVariant CRecordItem::fromRecord(int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return record_->Name();
    case Qt::DecorationRole:
      return record_->IsGroup() ? CViewPublicDef::GetPlanGroupIcon(is_dark_)
                                : CViewPublicDef::GetPlanIcon(is_dark_, false);
    case ItemMarkRole:
      return item_mark_;
    case GroupMarkRole:
      return true;
    case ItemTypeRole:
      return record_->ItemType();
    case PlanIndexCodeRole:
    case GroupIndexCodeRole:
      return record_->Code();
    case ItemRecordRole:
      return record_->Host();
    case IsGroupRole:
      return record_->IsGroup();
    case PlanTypeRole:
    case GroupTypeRole:
      return record_->Family();
    default:
      return false;  // neither loaded nor playing
  }
}

void CRecordItem::setData(const QVariant& value, int role) {
  if (IsFromRecord(role)) {
    const QVariant present = fromRecord(role);
    if (value.isValid() && value.userType() == present.userType() && value == present) {
      return;
    }
    from_record_ &= ~BitOf(role);
    if (!value.isValid()) {
      // Stored here and taken out again below, which is what sends the notice.
      const QSignalBlocker quiet(model());
      CStandardItem::setData(value, role);
    }
  }
  is_as_made_ = false;
  CStandardItem::setData(value, role);
}

void CRecordItem::AddRecordData(QMap<int, QVariant>* values) const {
  ForEachRole(record_->IsGroup(), [&](int role) {
    if (IsFromRecord(role)) {
      values->insert(role, fromRecord(role));
    }
  });
}

void CRecordItem::StoreEverything() {
  is_as_made_ = false;
  const QSignalBlocker quiet(model());
  ForEachRole(record_->IsGroup(), [&](int role) {
    if (IsFromRecord(role)) {
      const QVariant value = fromRecord(role);
      from_record_ &= ~BitOf(role);
      CStandardItem::setData(value, role);
    }
  });
}

QStandardItem* CRecordItem::clone() const {
  QStandardItem* copy = CStandardItem::clone();
  QMap<int, QVariant> values;
  AddRecordData(&values);
  for (auto value = values.cbegin(); value != values.cend(); ++value) {
    copy->setData(value.value(), value.key());
  }
  return copy;
}

void CRecordItem::read(QDataStream& in) {
  from_record_ = 0;
  is_as_made_ = false;
  CStandardItem::read(in);
}

void CRecordItem::write(QDataStream& out) const {
  std::unique_ptr<QStandardItem>(clone())->write(out);
}

void CRecordItem::clearData() {
  StoreEverything();
  CStandardItem::clearData();
}

}  // namespace TarnPlanView

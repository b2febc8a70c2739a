#include "MarUIControl/standard_item_model.h"

#include <algorithm>

#include "MarUIControl/collation_key_cache.h"

namespace MarUIControl {

namespace {

// UTF-16 units in the order of the code points they stand for: surrogates after the rest of the basic plane.
ushort CodePointOrder(QChar unit) {
  const ushort value = unit.unicode();
  if (value < 0xD800) {
    return value;
  }
  if (value < 0xE000) {
    return static_cast<ushort>(value + 0x2000);
  }
  return static_cast<ushort>(value - 0x800);
}

bool LessByCodePoint(const QString& left, const QString& right) {
  return std::lexicographical_compare(left.cbegin(), left.cend(), right.cbegin(), right.cend(),
                                      [](QChar a, QChar b) { return CodePointOrder(a) < CodePointOrder(b); });
}

bool LessForPeople(const QString& left, const QString& right) {
  const int order = CollationKeyCache::OfThisThread().Compare(left, right);
  return order < 0 || (order == 0 && LessByCodePoint(left, right));
}

}  // namespace

CStandardItemModel::CStandardItemModel(QObject* parent) : QStandardItemModel(parent) {}

CStandardItemModel::~CStandardItemModel() = default;

bool CStandardItemModel::hasChildren(const QModelIndex& parent) const {
  return QStandardItemModel::hasChildren(parent) || canFetchMore(parent);
}

// Rows that came from elsewhere say nothing about the rest, so they do not end the right to fetch.
bool CStandardItemModel::canFetchMore(const QModelIndex& parent) const {
  const QStandardItem* item = itemFromIndex(parent);
  return item && item->data(GroupMarkRole).toBool() && !item->data(ChildrenFetchedRole).toBool();
}

void CStandardItemModel::fetchMore(const QModelIndex& parent) {
  Q_UNUSED(parent)
}

void CStandardItemModel::SetChildrenFetched(const QModelIndex& index, bool fetched) {
  if (QStandardItem* item = itemFromIndex(index)) {
    item->setData(fetched, ChildrenFetchedRole);
  }
}

bool CStandardItemModel::AreChildrenFetched(const QModelIndex& index) const {
  return index.data(ChildrenFetchedRole).toBool();
}

bool CStandardItemModel::CustomStringCompare(const QString& left, const QString& right, int mode) {
  switch (mode) {
    case 0:
      return LessByCodePoint(left, right);
    case 1:
      return LessByCodePoint(left.toCaseFolded(), right.toCaseFolded());
    default:
      return LessForPeople(left, right);
  }
}

}  // namespace MarUIControl

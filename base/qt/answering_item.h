#pragma once

#include <QStandardItem>

namespace TarnQt {

/// A row whose data() decides what it shows: since Qt 6 views ask for several roles at once, past data().
template <class Item>
class CAnsweringItem : public Item {
 public:
  using Item::Item;

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  void multiData(QModelRoleDataSpan roles) const override {
    for (QModelRoleData& role : roles) {
      role.setData(this->data(role.role()));
    }
  }
#endif
};

}  // namespace TarnQt

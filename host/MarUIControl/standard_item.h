#pragma once

#include <QStandardItem>

#include "host_export.h"

namespace MarUIControl {

/// Row of the host's item model. A check spreads to the rows below; the rows above become partially checked.
class TARN_HOST_EXPORT CStandardItem : public QStandardItem {
 public:
  CStandardItem();
  explicit CStandardItem(const QString& text);
  ~CStandardItem() override;

  void setData(const QVariant& value, int role = Qt::UserRole + 1) override;
  QStandardItem* clone() const override;
  int type() const override;

 private:
  void SpreadDown(Qt::CheckState state);
  void RenewAbove();
};

}  // namespace MarUIControl

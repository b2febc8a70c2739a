#pragma once

#include <QStandardItem>

#include "host_export.h"

namespace MarUIControl {

/// Row of the host's item model. A check spreads to the rows below that have one; the rows above take the state that
/// those below them have, or become partially checked where they differ. Thread: that of the model.
class TARN_HOST_EXPORT CStandardItem : public QStandardItem {
 public:
  /// A row without a text.
  CStandardItem();
  /// A row with this text.
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

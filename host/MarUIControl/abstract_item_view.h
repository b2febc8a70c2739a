#pragma once

#include <QTreeView>

#include "host_export.h"

namespace MarUIControl {

/// Base of the host's item views: rows are not edited in place. Thread: GUI.
class TARN_HOST_EXPORT CAbstractItemView : public QTreeView {
  Q_OBJECT
 public:
  explicit CAbstractItemView(QWidget* parent = nullptr);
  ~CAbstractItemView() override;

  /// Whether `column` follows the width of its contents or stretches. Nothing for a column that the header has not got:
  /// so after the model was set.
  void setColumnResizeToContents(int column, bool resize);
};

}  // namespace MarUIControl

#pragma once

#include <QPersistentModelIndex>

#include "MarUIControl/location_combo_box.h"
#include "host_export.h"

namespace MarUIControl {

/// Location combo box over a tree: the closed box shows the chosen row's name, its tool tip the way to it from the
/// root. A chosen row that vanishes leaves the box empty; a renamed one is shown under its new name. Thread: GUI.
class TARN_HOST_EXPORT CMultilevelComboBox : public CLocationComboBox {
  Q_OBJECT
 public:
  explicit CMultilevelComboBox(QWidget* parent = nullptr);
  ~CMultilevelComboBox() override;

  /// Chooses a row: an index of the view's model; any other, or an invalid one, clears the choice. Expands what stands
  /// above it in the view. SignalCurrentIndexChanged() comes when that is another row than before.
  void SetCurrentIndex(const QModelIndex& index);
  /// The chosen row; invalid for none, and for one of a model that the view has no longer.
  QModelIndex GetCurrentIndex() const;

 Q_SIGNALS:
  /// Another row is chosen, by the user or by a call; invalid when the chosen row has gone. Of a choice of the user
  /// SignalIndexActivated() comes after it.
  void SignalCurrentIndexChanged(const QModelIndex& index);

 protected:
  void Choose(const QModelIndex& index) override;
  void PrepareView() override;

 private:
  QModelIndex OwnRow(const QModelIndex& index) const;
  void WatchModel();
  void RenewText();

  QPersistentModelIndex current_;
  bool chosen_ = false;
  QMetaObject::Connection on_changed_, on_removed_, on_reset_;
};

}  // namespace MarUIControl

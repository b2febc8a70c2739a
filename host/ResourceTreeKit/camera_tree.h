#pragma once

#include <QVector>
#include <memory>

#include "MarUIControl/tree_view.h"
#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/logic_node_param.h"
#include "host_export.h"

namespace ResourceTreeKit {

/// The site's cameras in their regions, with their online state, a filter and, on demand, the user's favourites on top.
///
/// Loads off the GUI thread, at the first show or by Reload(). Filtering works in slices that never hold the event loop
/// longer than 8 ms; a region's hit keeps all below it. F5 loads again. Double click and Return activate a camera; a
/// region opens. Drags carry "_drag_json_data_" with one object a camera:
/// `[{"_source_id_":"7","_station_id_":"...","_source_type_":"_type_camera_",
/// "_normal_resource":{"name":"CAM 007"}}]`; a region drags all its cameras, in order. Thread: GUI.
class TARN_HOST_EXPORT CCameraTree : public MarUIControl::CTreeView {
  Q_OBJECT
 public:
  explicit CCameraTree(QWidget* parent = nullptr);
  ~CCameraTree() override;

  /// Which cameras are shown. Loads again, unless the first show is still to come.
  void SetLogicNodeParam(const LogicNodeParam& param);
  /// Shows the favourites' branch and the mark on each camera (key F toggles it, as does the row's menu).
  void SetFavoritesVisible(bool visible);
  /// Loads again off the GUI thread and ends with SignalLoaded(). A failure leaves the rows as they are; where there
  /// are any, it is shown as a message, else as a notice in their place.
  void Reload();
  /// The same in the background: a failure is not shown, and while the cameras are being loaded anyway nothing happens.
  /// What has not changed stays as it is; else expanded and selected rows and the place in the list stay. Under a
  /// pressed mouse button or an open menu nothing changes.
  void Renew();
  /// Whether cameras of the host's have ever come.
  bool IsLoaded() const;
  /// Case-insensitive part of a camera's or region's name; an empty text shows everything. What is above a hit stays.
  void SetFilterText(const QString& text);
  /// The text that was set last; what is shown may still be that of an earlier one.
  QString FilterText() const;
  /// Whether what is shown is still that of an earlier text.
  bool IsFiltering() const;
  /// How many cameras the tree holds, filtered or not.
  int CameraCount() const;

  /// A camera without a code for a row that is none.
  CCameraItemInfo CameraAt(const QModelIndex& index) const;
  /// The camera of the row, or all below a region, in the order shown; what the filter hides is left out.
  QVector<CCameraItemInfo> CamerasBelow(const QModelIndex& index) const;
  /// The camera with this code; without a code when the site has none (any more).
  CCameraItemInfo FindCamera(const std::string& index_code) const;

 Q_SIGNALS:
  /// Double click, Return or the menu of a camera's row.
  void SignalCameraActivated(const ResourceTreeKit::CCameraItemInfo& camera);
  /// The user wants all cameras of a region (Ctrl+Return on it, or its menu), or of several selected rows.
  void SignalRegionActivated(const QVector<ResourceTreeKit::CCameraItemInfo>& cameras);
  /// Loading has ended; `error` is empty when the cameras are there, else a text for the user.
  void SignalLoaded(const QString& error);
  /// Filtering has ended with so many cameras in sight.
  void SignalFiltered(int cameras);

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void startDrag(Qt::DropActions supported_actions) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace ResourceTreeKit

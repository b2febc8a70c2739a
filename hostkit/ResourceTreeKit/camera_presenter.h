#pragma once

#include <QTimer>
#include <optional>

#include "ResourceTreeKit/camera_filter.h"
#include "ResourceTreeKit/camera_loader.h"
#include "ResourceTreeKit/shown_rows.h"

namespace ResourceTreeKit {

class CCameraTreeNotice;

/// Brings the host's cameras into the rows of a tree: loads them, filters them and shows them, or says in their place
/// why there are none. Thread: GUI.
class CCameraPresenter : public QObject {
  Q_OBJECT
 public:
  CCameraPresenter(QTreeView* view, CCameraModel* model);

  /// Which cameras; for the next load.
  void SetParam(const LogicNodeParam& param) { param_ = param; }
  void Load();
  /// The same in the background; see CCameraTree::Renew().
  void Renew();
  bool IsLoading() const { return loader_.IsLoading(); }
  bool IsLoaded() const { return rows_.Any(); }
  void SetText(const QString& text);
  QString Text() const { return text_; }
  bool IsFiltering() const { return filter_.IsRunning(); }
  void ShowFavorites(bool visible);
  void ToggleFavorite(const QModelIndex& row);

 Q_SIGNALS:
  /// `error` is empty when the cameras are there.
  void Loaded(const QString& error);
  /// Filtering has ended with so many cameras in sight.
  void Filtered(int cameras);

 private:
  void OnRenewed(const CameraAnswer& answer);
  void OnAnswer(const CameraAnswer& answer);
  bool IsAsShown(const CameraAnswer& answer) const;
  void Take(const CameraAnswer& answer);
  void OnFailure();
  void OnFiltered(const CCameraRows& rows, const std::vector<int>& open);
  void ShowAnswer(const CameraAnswer& answer, const CCameraRows& rows);
  void OnFavoriteSaved(const QString& code, bool favorite);
  void UpdateNotice();
  QString NoticeText() const;
  QString EmptyText() const;
  void ShowMessage(const QString& text) const;

  QTreeView* const view_;
  CCameraModel* const model_;
  CCameraTreeNotice* const notice_;
  CCameraLoader loader_;
  CCameraFilter filter_;
  CShownRows rows_;
  LogicNodeParam param_;
  QString text_;                         // what the user wants to see
  QString error_;                        // of the last load
  std::optional<CameraAnswer> waiting_;  // loaded, but not filtered yet: exactly while its content is being filtered
  QTimer late_;                          // runs until a load that takes long is shown as such
  bool keeps_favorites_ = false;         // the host
  bool favorites_wanted_ = false;
};

}  // namespace ResourceTreeKit

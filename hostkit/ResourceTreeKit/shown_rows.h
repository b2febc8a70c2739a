#pragma once

#include <QSet>
#include <QTreeView>
#include <functional>
#include <optional>
#include <vector>

#include "ResourceTreeKit/camera_model.h"

namespace ResourceTreeKit {

/// The rows that a camera tree shows. They come again all at once, which costs far less than taking out and putting in
/// thousands one after the other; what the user has made of them stays. Thread: GUI.
class CShownRows {
 public:
  CShownRows(QTreeView* view, CCameraModel* model);

  /// Whether rows of the host's were ever shown.
  bool Any() const { return text_.has_value(); }
  /// Whether they are those that `text` leaves.
  bool AreOf(const QString& text) const { return text_ == text; }

  /// `make_rows` resets the model to the rows of `content` that `text` leaves; `open` names the regions with hits below
  /// them. For another text these expand, or for an empty one what was expanded before the first, and the current row
  /// comes into sight; for the same text nothing moves, and only those expand that are new.
  void Make(const QString& text, const CCameraContent& content, const std::vector<int>& open,
            const std::function<void()>& make_rows);
  void ShowFavorites(bool visible);

 private:
  void MakeForOldText(const CCameraContent& content, const std::vector<int>& open,
                      const std::function<void()>& make_rows);
  void MakeForNewText(const QString& text, const std::vector<int>& open, const std::function<void()>& make_rows);
  QSet<CameraRowKey> NewRegions(const CCameraContent& content, const std::vector<int>& open) const;
  QSet<CameraRowKey> RowsWithHits(const std::vector<int>& open) const;
  QSet<CameraRowKey> FirstExpansion() const;

  QTreeView* const view_;
  CCameraModel* const model_;
  std::optional<QString> text_;
  QSet<CameraRowKey> expanded_;  // of all rows, when the text became another than empty
};

}  // namespace ResourceTreeKit

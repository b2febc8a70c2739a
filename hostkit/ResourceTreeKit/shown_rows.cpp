#include "ResourceTreeKit/shown_rows.h"

#include "ResourceTreeKit/camera_tree_state.h"

namespace ResourceTreeKit {

CShownRows::CShownRows(QTreeView* view, CCameraModel* model) : view_(view), model_(model) {}

void CShownRows::Make(const QString& text, const CCameraContent& content, const std::vector<int>& open,
                      const std::function<void()>& make_rows) {
  if (AreOf(text)) {
    MakeForOldText(content, open, make_rows);
  } else {
    MakeForNewText(text, open, make_rows);
  }
  text_ = text;
}

void CShownRows::MakeForOldText(const CCameraContent& content, const std::vector<int>& open,
                                const std::function<void()>& make_rows) {
  const QSet<CameraRowKey> expanded = CCameraTreeState::Expanded(*view_, *model_) + NewRegions(content, open);
  const CCameraTreeState state = CCameraTreeState::Take(*view_, *model_);
  make_rows();
  CCameraTreeState::Expand(view_, *model_, expanded);
  state.Restore(view_, *model_, CCameraTreeState::kStay);
}

void CShownRows::MakeForNewText(const QString& text, const std::vector<int>& open,
                                const std::function<void()>& make_rows) {
  if (AreOf(QString())) {
    expanded_ = CCameraTreeState::Expanded(*view_, *model_);
  }
  const CCameraTreeState state = CCameraTreeState::Take(*view_, *model_);
  make_rows();
  if (!Any()) {
    expanded_ = FirstExpansion();
  }
  CCameraTreeState::Expand(view_, *model_, text.isEmpty() ? expanded_ : RowsWithHits(open));
  state.Restore(view_, *model_, CCameraTreeState::kShowCurrent);
}

void CShownRows::ShowFavorites(bool visible) {
  QSet<CameraRowKey> expanded = CCameraTreeState::Expanded(*view_, *model_);
  expanded.insert(CameraRowKey::Favorites());
  const CCameraTreeState state = CCameraTreeState::Take(*view_, *model_);
  model_->SetFavoritesVisible(visible);
  CCameraTreeState::Expand(view_, *model_, expanded);
  state.Restore(view_, *model_, CCameraTreeState::kStay);
}

// Those of `open` that have no row yet. Before the rows of `content` stand in the model.
QSet<CameraRowKey> CShownRows::NewRegions(const CCameraContent& content, const std::vector<int>& open) const {
  QSet<CameraRowKey> keys;
  for (const int node : open) {
    const CameraRowKey key = CameraRowKey::Region(content.At(node).code);
    if (!model_->Find(key).isValid()) {
      keys.insert(key);
    }
  }
  return keys;
}

QSet<CameraRowKey> CShownRows::RowsWithHits(const std::vector<int>& open) const {
  QSet<CameraRowKey> keys{CameraRowKey::Favorites()};
  for (const int node : open) {
    keys.insert(model_->KeyOf(model_->IndexOfNode(node)));
  }
  return keys;
}

QSet<CameraRowKey> CShownRows::FirstExpansion() const {
  QSet<CameraRowKey> keys{CameraRowKey::Favorites()};
  for (const CCameraContent::Node& node : model_->Content().Nodes()) {
    if (node.parent == 0 && !node.IsCamera()) {
      keys.insert(CameraRowKey::Region(node.code));
    }
  }
  return keys;
}

}  // namespace ResourceTreeKit

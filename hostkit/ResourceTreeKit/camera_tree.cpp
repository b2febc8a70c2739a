#include "ResourceTreeKit/camera_tree.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHash>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <optional>
#include <utility>

#include "ResourceTreeKit/camera_drag.h"
#include "ResourceTreeKit/camera_filter.h"
#include "ResourceTreeKit/camera_loader.h"
#include "ResourceTreeKit/camera_model.h"
#include "ResourceTreeKit/camera_row_delegate.h"
#include "ResourceTreeKit/camera_tree_notice.h"
#include "ResourceTreeKit/camera_tree_state.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "TarnUIDataController/popup_menu.h"
#include "WidgetKit/drag.h"
#include "host_calls/ask.h"

namespace ResourceTreeKit {

namespace {

constexpr int kLoadingNoticeMs = 200;
const char kAddCursor[] = ":/Images/TarnUIDataController/FavImg/monitoring_window_add_resource.svg";

bool IsReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

class CCameraTree::Private : public QObject {
 public:
  explicit Private(CCameraTree* tree);

  void Load();
  void LoadQuietly();
  bool IsLoading() const { return loads_.IsUnderWay(); }
  void Filter(const QString& new_text);
  void ShowFavorites(bool visible);
  void ToggleFavorite(const QModelIndex& row);
  void Activate(const QModelIndex& row);
  void ActivateSelection();
  void FillMenu(QMenu* menu, const QModelIndex& row);
  QVector<CCameraItemInfo> SelectedCameras() const;
  void AddBelow(const QModelIndex& row, QVector<CCameraItemInfo>* cameras) const;

  CCameraTree* const q;
  CCameraModel* const model;
  LogicNodeParam param;
  QString text;  // what the user wants to see
  bool loaded = false;
  CCameraFilter filter;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddSelected(const QModelIndex& parent, const QSet<QModelIndex>& selected,
                   QVector<CCameraItemInfo>* cameras) const;
  void OnAnswer(CameraAnswer answer);
  void OnFiltered(const CCameraRows& rows, const std::vector<int>& open);
  static bool IsInUse();
  bool IsAsShown(const CameraAnswer& answer) const;
  void TakeAnswer(CameraAnswer answer);
  void Show(const std::function<void()>& make_rows, const std::vector<int>& open, const CCameraContent& content);
  QSet<CameraRowKey> RowsToExpand(const std::vector<int>& open);
  QSet<CameraRowKey> NewRegions(const std::vector<int>& open, const CCameraContent& content) const;
  QSet<CameraRowKey> FirstExpansion() const;
  void OnSaved(const QString& code, bool favorite, const QString& error);
  void OnFailure();
  void UpdateNotice();
  QString NoticeText() const;
  QModelIndex StarAt(const QPoint& position) const;

  HostCalls::CCallScope loads_;
  std::optional<CameraAnswer> waiting_;  // loaded, but not filtered yet: exactly while its content is being filtered
  QTimer late_;                          // runs until an unanswered load is worth a word
  QHash<QString, bool> saved_;           // favourites changed since the load began, which may not know of them
  QString error_, shown_text_;
  bool keeps_favorites_ = false, favorites_wanted_ = false, quiet_ = false;
  QSet<CameraRowKey> expanded_;  // what the user had expanded when filtering began
  QPersistentModelIndex pressed_star_;
  CCameraTreeNotice* const notice_;
};

CCameraTree::Private::Private(CCameraTree* tree)
    : q(tree), model(new CCameraModel(tree)), notice_(new CCameraTreeNotice(tree->viewport())) {
  late_.setSingleShot(true);
  late_.setInterval(kLoadingNoticeMs);
  connect(&late_, &QTimer::timeout, this, [this] { UpdateNotice(); });
  connect(&filter, &CCameraFilter::Finished, this,
          [this](const CCameraRows& rows, const std::vector<int>& open) { OnFiltered(rows, open); });
  connect(notice_, &CCameraTreeNotice::Retry, q, &CCameraTree::Reload);
  q->viewport()->installEventFilter(this);
}

void CCameraTree::Private::Load() {
  quiet_ = false;
  saved_.clear();
  HostCalls::Ask(LoadCameras(param, model->SharedContent()))
      .Replacing(loads_)
      .Then(this, [this](const CameraAnswer& answer) { OnAnswer(answer); });
  late_.start();
}

void CCameraTree::Private::LoadQuietly() {
  if (!IsLoading()) {
    Load();
    quiet_ = true;
    late_.stop();
  }
}

void CCameraTree::Private::OnAnswer(CameraAnswer answer) {
  late_.stop();
  for (auto change = saved_.cbegin(); change != saved_.cend(); ++change) {
    answer.SetFavorite(change.key(), change.value());
  }
  if (quiet_ && loaded && (!answer.error.isEmpty() || IsInUse())) {  // what stands here stays, and what is said of it
    Q_EMIT q->SignalLoaded(answer.error);
    return;
  }
  error_ = answer.error;
  if (!error_.isEmpty()) {
    OnFailure();
    return;
  }
  if (IsAsShown(answer)) {
    UpdateNotice();
    Q_EMIT q->SignalLoaded(QString());
    return;
  }
  TakeAnswer(std::move(answer));
}

// A drag or a menu belongs to the rows as they are.
bool CCameraTree::Private::IsInUse() {
  return QApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget();
}

bool CCameraTree::Private::IsAsShown(const CameraAnswer& answer) const {
  return loaded && !waiting_ && answer.content == model->SharedContent() &&
         answer.keeps_favorites == keeps_favorites_ && model->HasFavorites(answer.favorites);
}

void CCameraTree::Private::TakeAnswer(CameraAnswer answer) {
  waiting_ = std::move(answer);
  if (text.isEmpty()) {
    filter.Stop();
    OnFiltered(CCameraRows(waiting_->rows), {});
  } else {
    filter.Start(waiting_->content, text);
  }
}

// Where rows stand the notice has no room.
void CCameraTree::Private::OnFailure() {
  UpdateNotice();
  if (notice_->Text().isEmpty() && q->isVisible()) {
    tarn_ui_data_controller::CNomalMessageManager::Instance().ShowMessage(q->window(), error_, 1);
  }
  Q_EMIT q->SignalLoaded(error_);
}

void CCameraTree::Private::Filter(const QString& new_text) {
  if (new_text == text) {
    return;
  }
  text = new_text;
  if (loaded || waiting_) {
    filter.Start(waiting_ ? waiting_->content : model->SharedContent(), text);
  }
}

void CCameraTree::Private::OnFiltered(const CCameraRows& rows, const std::vector<int>& open) {
  const std::optional<CameraAnswer> answer = std::exchange(waiting_, std::nullopt);
  Show(
      [&] {
        if (answer) {
          keeps_favorites_ = answer->keeps_favorites;
          model->SetFavoritesVisible(favorites_wanted_ && keeps_favorites_);
          model->SetContent(answer->content, rows, answer->favorites);
        } else {
          model->SetRows(rows);
        }
      },
      open, answer ? *answer->content : model->Content());
  loaded = true;
  const bool filtered = std::exchange(shown_text_, text) != text || !text.isEmpty();
  UpdateNotice();
  const QPointer<CCameraTree> alive(q);
  if (answer) {
    Q_EMIT q->SignalLoaded(QString());
  }
  if (alive && filtered) {
    Q_EMIT q->SignalFiltered(model->Rows().CameraCount());
  }
}

// The rows come again all at once, which costs far less than taking out and putting in thousands one after the other.
void CCameraTree::Private::Show(const std::function<void()>& make_rows, const std::vector<int>& open,
                                const CCameraContent& content) {
  const bool same_text = loaded && shown_text_ == text;
  const QSet<CameraRowKey> expanded = loaded ? CCameraTreeState::Expanded(*q, *model) : QSet<CameraRowKey>();
  if (shown_text_.isEmpty() && loaded) {
    expanded_ = expanded;
  }
  const QSet<CameraRowKey> fresh = same_text ? NewRegions(open, content) : QSet<CameraRowKey>();
  const CCameraTreeState state = CCameraTreeState::Take(*q, *model);
  make_rows();
  CCameraTreeState::Expand(q, *model, same_text ? expanded + fresh : RowsToExpand(open));
  state.Restore(q, *model, same_text ? CCameraTreeState::kStay : CCameraTreeState::kShowCurrent);
}

// Those of `open` that have no row yet. Before the rows of `content` stand in the model.
QSet<CameraRowKey> CCameraTree::Private::NewRegions(const std::vector<int>& open, const CCameraContent& content) const {
  QSet<CameraRowKey> keys;
  for (const int node : open) {
    const CameraRowKey key{CameraRowKey::kRegion, content.At(node).code};
    if (!model->Find(key).isValid()) {
      keys.insert(key);
    }
  }
  return keys;
}

QSet<CameraRowKey> CCameraTree::Private::RowsToExpand(const std::vector<int>& open) {
  if (!loaded) {
    expanded_ = FirstExpansion();
  }
  if (text.isEmpty()) {
    return expanded_;
  }
  QSet<CameraRowKey> keys{{CameraRowKey::kFavorites, QString()}};
  for (const int node : open) {
    keys.insert(model->KeyOf(model->IndexOfNode(node)));
  }
  return keys;
}

QSet<CameraRowKey> CCameraTree::Private::FirstExpansion() const {
  QSet<CameraRowKey> keys{{CameraRowKey::kFavorites, QString()}};
  for (const CCameraContent::Node& node : model->Content().Nodes()) {
    if (node.parent == 0 && node.camera < 0) {
      keys.insert({CameraRowKey::kRegion, node.code});
    }
  }
  return keys;
}

void CCameraTree::Private::UpdateNotice() {
  notice_->ShowText(NoticeText(), !error_.isEmpty() && !loads_.IsUnderWay());
  if (q->accessibleDescription() != notice_->Text()) {  // each call is read out
    q->setAccessibleDescription(notice_->Text());
  }
}

QString CCameraTree::Private::NoticeText() const {
  if (loaded && model->rowCount() > 0) {
    return {};
  }
  if (loads_.IsUnderWay()) {
    return CCameraTree::tr("Loading cameras...");
  }
  if (!error_.isEmpty() || !loaded) {
    return error_;
  }
  return model->Content().CameraCount() > 0 && !text.isEmpty() ? CCameraTree::tr("No hit")
                                                               : CCameraTree::tr("No cameras");
}

void CCameraTree::Private::ShowFavorites(bool visible) {
  favorites_wanted_ = visible;
  if (loaded && model->AreFavoritesVisible() != (visible && keeps_favorites_)) {
    const QSet<CameraRowKey> expanded = CCameraTreeState::Expanded(*q, *model);
    const CCameraTreeState state = CCameraTreeState::Take(*q, *model);
    model->SetFavoritesVisible(visible && keeps_favorites_);
    CCameraTreeState::Expand(q, *model, expanded + QSet<CameraRowKey>{{CameraRowKey::kFavorites, QString()}});
    state.Restore(q, *model, CCameraTreeState::kStay);
  }
}

void CCameraTree::Private::ToggleFavorite(const QModelIndex& row) {
  const CCameraItemInfo* camera = model->CameraAt(row);
  if (!camera || !model->AreFavoritesVisible()) {
    return;
  }
  const QString code = QString::fromStdString(camera->index_code);
  const bool favorite = !model->IsFavorite(code);
  HostCalls::Ask(SaveFavorite(code, favorite)).Then(this, [this, code, favorite](const QString& error) {
    OnSaved(code, favorite, error);
  });
}

void CCameraTree::Private::OnSaved(const QString& code, bool favorite, const QString& error) {
  if (!error.isEmpty()) {
    tarn_ui_data_controller::CNomalMessageManager::Instance().ShowMessage(q->window(), error, 1);
    return;
  }
  saved_.insert(code, favorite);
  if (waiting_) {
    waiting_->SetFavorite(code, favorite);
  }
  const CameraRowKey branch{CameraRowKey::kFavorites, QString()};
  const bool first = !model->Find(branch).isValid();
  model->SetFavorite(code, favorite);
  if (first && model->Find(branch).isValid()) {
    q->expand(model->Find(branch));
  }
}

void CCameraTree::Private::Activate(const QModelIndex& row) {
  if (const CCameraItemInfo* camera = model->CameraAt(row)) {
    const CCameraItemInfo copy = *camera;
    Q_EMIT q->SignalCameraActivated(copy);
  }
}

void CCameraTree::Private::ActivateSelection() {
  const QVector<CCameraItemInfo> cameras = SelectedCameras();
  if (!cameras.isEmpty()) {
    Q_EMIT q->SignalRegionActivated(cameras);
  }
}

void CCameraTree::Private::AddBelow(const QModelIndex& row, QVector<CCameraItemInfo>* cameras) const {
  if (const CCameraItemInfo* camera = model->CameraAt(row)) {
    cameras->append(*camera);
    return;
  }
  for (int child = 0; child < model->rowCount(row); ++child) {
    AddBelow(model->index(child, 0, row), cameras);
  }
}

void CCameraTree::Private::AddSelected(const QModelIndex& parent, const QSet<QModelIndex>& selected,
                                       QVector<CCameraItemInfo>* cameras) const {
  for (int row = 0; row < model->rowCount(parent); ++row) {
    const QModelIndex index = model->index(row, 0, parent);
    if (selected.contains(index)) {
      AddBelow(index, cameras);
    } else {
      AddSelected(index, selected, cameras);
    }
  }
}

// In the order of the tree, each camera once, though it may be selected among the favourites and with its region, too.
QVector<CCameraItemInfo> CCameraTree::Private::SelectedCameras() const {
  const QModelIndexList rows = q->selectionModel()->selectedIndexes();
  QVector<CCameraItemInfo> all, cameras;
  AddSelected(QModelIndex(), QSet<QModelIndex>(rows.begin(), rows.end()), &all);
  QSet<QString> seen;
  for (const CCameraItemInfo& camera : qAsConst(all)) {
    const QString code = QString::fromStdString(camera.index_code);
    if (!seen.contains(code)) {
      seen.insert(code);
      cameras.append(camera);
    }
  }
  return cameras;
}

void CCameraTree::Private::FillMenu(QMenu* menu, const QModelIndex& row) {
  const QPersistentModelIndex kept = row;
  const CCameraItemInfo* camera = model->CameraAt(row);
  const int count = SelectedCameras().size();
  if (camera && count == 1) {
    menu->addAction(CCameraTree::tr("Put into the window"), this, [this, kept] { Activate(kept); });
  } else if (count > 0) {
    menu->addAction(CCameraTree::tr("Put all into windows (%1)").arg(count), this, [this] { ActivateSelection(); });
  }
  if (camera && model->AreFavoritesVisible()) {
    const bool favorite = model->IsFavorite(QString::fromStdString(camera->index_code));
    menu->addAction(favorite ? CCameraTree::tr("Remove from favorites") : CCameraTree::tr("Add to favorites"), this,
                    [this, kept] { ToggleFavorite(kept); });
  }
  menu->addAction(CCameraTree::tr("Load again"), q, &CCameraTree::Reload);
}

QModelIndex CCameraTree::Private::StarAt(const QPoint& position) const {
  const QModelIndex row = q->indexAt(position);
  const QRect star = CCameraRowDelegate::StarRect(q->visualRect(row), row, q->layoutDirection());
  return star.adjusted(-3, -3, 3, 3).contains(position) && !star.isEmpty() ? row : QModelIndex();
}

// A click on a star is about the star alone: it neither selects, drags nor activates.
bool CCameraTree::Private::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  if (press || event->type() == QEvent::MouseButtonRelease) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QModelIndex star = mouse->button() == Qt::LeftButton ? StarAt(mouse->pos()) : QModelIndex();
    if (press) {
      pressed_star_ = star;
      return star.isValid();
    }
    const QPersistentModelIndex pressed = std::exchange(pressed_star_, QPersistentModelIndex());
    if (pressed.isValid()) {
      if (star == pressed) {
        ToggleFavorite(star);
      }
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

CCameraTree::CCameraTree(QWidget* parent) : CTreeView(parent), d_(new Private(this)) {
  qRegisterMetaType<ResourceTreeKit::CCameraItemInfo>();
  setModel(d_->model);
  setItemDelegate(new CCameraRowDelegate(this));
  setHeaderHidden(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  viewport()->setAttribute(Qt::WA_Hover);
  setAccessibleName(tr("Cameras"));
  connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& row) { d_->Activate(row); });
}

CCameraTree::~CCameraTree() = default;

void CCameraTree::SetLogicNodeParam(const LogicNodeParam& param) {
  d_->param = param;
  if (d_->loaded || d_->IsLoading() || isVisible()) {
    Reload();
  }
}

void CCameraTree::SetFavoritesVisible(bool visible) {
  d_->ShowFavorites(visible);
}

void CCameraTree::Reload() {
  d_->Load();
}

void CCameraTree::Renew() {
  d_->LoadQuietly();
}

bool CCameraTree::IsLoaded() const {
  return d_->loaded;
}

void CCameraTree::SetFilterText(const QString& text) {
  d_->Filter(text);
}

QString CCameraTree::FilterText() const {
  return d_->text;
}

bool CCameraTree::IsFiltering() const {
  return d_->filter.IsRunning();
}

int CCameraTree::CameraCount() const {
  return d_->model->Content().CameraCount();
}

CCameraItemInfo CCameraTree::CameraAt(const QModelIndex& index) const {
  const CCameraItemInfo* camera = d_->model->CameraAt(index);
  return camera ? *camera : CCameraItemInfo();
}

QVector<CCameraItemInfo> CCameraTree::CamerasBelow(const QModelIndex& index) const {
  QVector<CCameraItemInfo> cameras;
  if (index.isValid()) {
    d_->AddBelow(index, &cameras);
  }
  return cameras;
}

CCameraItemInfo CCameraTree::FindCamera(const std::string& index_code) const {
  const CCameraItemInfo* camera = d_->model->Content().FindCamera(QString::fromStdString(index_code));
  return camera ? *camera : CCameraItemInfo();
}

void CCameraTree::showEvent(QShowEvent* event) {
  CTreeView::showEvent(event);
  if (!d_->loaded && !d_->IsLoading()) {
    d_->Load();
  }
}

void CCameraTree::keyPressEvent(QKeyEvent* event) {
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool camera = d_->model->CameraAt(currentIndex()) != nullptr;
  event->accept();
  if (IsReturn(*event) && modifiers == Qt::ControlModifier) {
    d_->ActivateSelection();
  } else if (IsReturn(*event) && modifiers == Qt::NoModifier && camera) {
    d_->Activate(currentIndex());
  } else if (event->key() == Qt::Key_F && modifiers == Qt::NoModifier && camera && d_->model->AreFavoritesVisible()) {
    d_->ToggleFavorite(currentIndex());
  } else if (event->key() == Qt::Key_F5 && modifiers == Qt::NoModifier) {
    Reload();
  } else {
    CTreeView::keyPressEvent(event);
  }
}

void CCameraTree::startDrag(Qt::DropActions) {
  const QVector<CCameraItemInfo> cameras = d_->SelectedCameras();
  if (cameras.isEmpty()) {
    return;
  }
  auto* drag = new WidgetKit::CDrag(this);
  drag->setMimeData(MakeCameraDragData(cameras));
  drag->setPixmap(MakeCameraDragPicture(cameras, this));
  drag->SetCursorPicture(QString::fromLatin1(kAddCursor), Qt::CopyAction);
  drag->exec(Qt::CopyAction);
}

void CCameraTree::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  const QModelIndex row = by_key ? currentIndex() : indexAt(event->pos());
  auto* menu = new tarn_ui_data_controller::CPopupMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  d_->FillMenu(menu, row);
  const QPoint place = by_key && row.isValid() ? visualRect(row).center() : event->pos();
  menu->PopupAt(viewport()->mapToGlobal(place));
  event->accept();
}

}  // namespace ResourceTreeKit

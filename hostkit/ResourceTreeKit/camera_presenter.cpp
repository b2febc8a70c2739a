#include "ResourceTreeKit/camera_presenter.h"

#include <QApplication>
#include <QPointer>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "ResourceTreeKit/camera_tree.h"
#include "ResourceTreeKit/camera_tree_notice.h"
#include "TarnUIDataController/nomal_message_manager.h"

namespace ResourceTreeKit {

namespace {

constexpr int kLoadingNoticeMs = 200;

// A drag or a menu belongs to the rows as they are.
bool IsMouseOrMenuInUse() {
  return QApplication::mouseButtons() != Qt::NoButton || QApplication::activePopupWidget();
}

}  // namespace

CCameraPresenter::CCameraPresenter(QTreeView* view, CCameraModel* model)
    : view_(view), model_(model), notice_(new CCameraTreeNotice(view->viewport())), rows_(view, model) {
  late_.setSingleShot(true);
  late_.setInterval(kLoadingNoticeMs);
  connect(&late_, &QTimer::timeout, this, &CCameraPresenter::UpdateNotice);
  connect(&filter_, &CCameraFilter::Finished, this, &CCameraPresenter::OnFiltered);
  connect(&loader_, &CCameraLoader::FavoriteSaved, this, &CCameraPresenter::OnFavoriteSaved);
  connect(&loader_, &CCameraLoader::FavoriteRefused, this, &CCameraPresenter::ShowMessage);
  connect(notice_, &CCameraTreeNotice::Retry, this, &CCameraPresenter::Load);
}

void CCameraPresenter::Load() {
  loader_.Load(param_, model_->SharedContent(), [this](const CameraAnswer& answer) { OnAnswer(answer); });
  late_.start();
}

void CCameraPresenter::Renew() {
  if (!IsLoading()) {
    loader_.Load(param_, model_->SharedContent(), [this](const CameraAnswer& answer) { OnRenewed(answer); });
  }
}

// What stands here stays, and what is said of it, when there is nothing better or the user is at it.
void CCameraPresenter::OnRenewed(const CameraAnswer& answer) {
  if (IsLoaded() && (!answer.error.isEmpty() || IsMouseOrMenuInUse())) {
    Q_EMIT Loaded(answer.error);
    return;
  }
  OnAnswer(answer);
}

void CCameraPresenter::OnAnswer(const CameraAnswer& answer) {
  late_.stop();
  error_ = answer.error;
  if (!error_.isEmpty()) {
    OnFailure();
  } else if (IsAsShown(answer)) {
    UpdateNotice();
    Q_EMIT Loaded(QString());
  } else {
    Take(answer);
  }
}

bool CCameraPresenter::IsAsShown(const CameraAnswer& answer) const {
  return IsLoaded() && !waiting_ && answer.content == model_->SharedContent() &&
         answer.keeps_favorites == keeps_favorites_ && model_->HasFavorites(answer.favorites);
}

void CCameraPresenter::Take(const CameraAnswer& answer) {
  waiting_ = answer;
  if (text_.isEmpty()) {
    filter_.Stop();
    OnFiltered(answer.rows, {});
  } else {
    filter_.Start(answer.content, text_);
  }
}

// Where rows stand the notice has no room.
void CCameraPresenter::OnFailure() {
  UpdateNotice();
  if (notice_->Text().isEmpty() && view_->isVisible()) {
    ShowMessage(error_);
  }
  Q_EMIT Loaded(error_);
}

void CCameraPresenter::SetText(const QString& text) {
  if (text == text_) {
    return;
  }
  text_ = text;
  if (waiting_) {
    filter_.Start(waiting_->content, text_);
  } else if (IsLoaded()) {
    filter_.Start(model_->SharedContent(), text_);
  }
}

void CCameraPresenter::OnFiltered(const CCameraRows& rows, const std::vector<int>& open) {
  const std::optional<CameraAnswer> answer = std::exchange(waiting_, std::nullopt);
  const bool other_text = IsLoaded() && !rows_.AreOf(text_);
  if (answer) {
    rows_.Make(text_, *answer->content, open, [&] { ShowAnswer(*answer, rows); });
  } else {
    rows_.Make(text_, model_->Content(), open, [&] { model_->SetRows(rows); });
  }
  UpdateNotice();
  const QPointer<CCameraPresenter> alive(this);
  if (answer) {
    Q_EMIT Loaded(QString());
  }
  if (alive && (other_text || !text_.isEmpty())) {
    Q_EMIT Filtered(model_->Rows().CameraCount());
  }
}

void CCameraPresenter::ShowAnswer(const CameraAnswer& answer, const CCameraRows& rows) {
  keeps_favorites_ = answer.keeps_favorites;
  model_->SetFavoritesVisible(favorites_wanted_ && keeps_favorites_);
  model_->SetContent(answer.content, rows, answer.favorites);
}

void CCameraPresenter::UpdateNotice() {
  notice_->ShowText(NoticeText(), !error_.isEmpty() && !IsLoading());
  if (view_->accessibleDescription() != notice_->Text()) {  // each call is read out
    view_->setAccessibleDescription(notice_->Text());
  }
}

QString CCameraPresenter::NoticeText() const {
  if (IsLoaded() && model_->rowCount() > 0) {
    return {};
  }
  if (IsLoading()) {
    return CCameraTree::tr("Loading cameras...");
  }
  if (!error_.isEmpty() || !IsLoaded()) {
    return error_;
  }
  return EmptyText();
}

QString CCameraPresenter::EmptyText() const {
  if (model_->Content().CameraCount() > 0 && !text_.isEmpty()) {
    return CCameraTree::tr("No hit");
  }
  return CCameraTree::tr("No cameras");
}

void CCameraPresenter::ShowMessage(const QString& text) const {
  tarn_ui_data_controller::CNomalMessageManager::Instance().ShowMessage(view_->window(), text,
                                                                        MarUIControl::CNomalMessage::Failure);
}

void CCameraPresenter::ShowFavorites(bool visible) {
  favorites_wanted_ = visible;
  if (IsLoaded() && model_->AreFavoritesVisible() != (visible && keeps_favorites_)) {
    rows_.ShowFavorites(visible && keeps_favorites_);
  }
}

void CCameraPresenter::ToggleFavorite(const QModelIndex& row) {
  const CCameraItemInfo* camera = model_->CameraAt(row);
  if (camera && model_->AreFavoritesVisible()) {
    const QString code = QString::fromStdString(camera->index_code);
    loader_.SaveFavorite(code, !model_->IsFavorite(code));
  }
}

void CCameraPresenter::OnFavoriteSaved(const QString& code, bool favorite) {
  if (waiting_) {
    waiting_->SetFavorite(code, favorite);
  }
  const bool first = !model_->Find(CameraRowKey::Favorites()).isValid();
  model_->SetFavorite(code, favorite);
  const QModelIndex branch = model_->Find(CameraRowKey::Favorites());
  if (first && branch.isValid()) {
    view_->expand(branch);
  }
}

}  // namespace ResourceTreeKit

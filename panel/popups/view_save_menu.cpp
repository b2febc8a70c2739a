#include "view_save_menu.h"

#include <QEvent>
#include <QFontMetrics>
#include <QKeyEvent>

#include "keep_on_screen.h"
#include "ui_view_save_menu.h"
#include "view_config_manager.h"

namespace TarnPlanView {

namespace {
constexpr int kHeightOfOne = 32;
constexpr int kHeightOfBoth = 62;
constexpr int kRoomBesideOne = 34;
constexpr int kRoomBesideBoth = 64;
constexpr int kNoSaveAs = 2;
}  // namespace

struct CViewSaveMenu::Body {
  Ui::CViewSaveMenu ui;
  // Both stand in the form.
  bool save_visible = true;
  bool save_as_visible = true;

  int TextWidth(const QPushButton* button) const {
    ui.ptr_save_as_btn->ensurePolished();
    return QFontMetrics(ui.ptr_save_as_btn->font()).horizontalAdvance(button->text());
  }
  QSize Size() const;
};

QSize CViewSaveMenu::Body::Size() const {
  if (save_visible && save_as_visible) {
    return {qMax(TextWidth(ui.ptr_save_btn_), TextWidth(ui.ptr_save_as_btn)) + kRoomBesideBoth, kHeightOfBoth};
  }
  int text = 0;
  if (save_as_visible) {
    text = TextWidth(ui.ptr_save_as_btn);
  } else if (save_visible) {
    text = TextWidth(ui.ptr_save_btn_);
  }
  return {text + kRoomBesideOne, kHeightOfOne};
}

CViewSaveMenu::CViewSaveMenu(QWidget* parent) : QWidget(parent), body_(std::make_shared<Body>()) {
  body_->ui.setupUi(this);
  setAttribute(Qt::WA_StyledBackground);
  setFixedHeight(kHeightOfOne);
  setWindowFlags(Qt::FramelessWindowHint | Qt::Popup);
  qRegisterMetaType<ViewSaveActions>("ViewSaveActions");
  if (CViewConfigManager::Instance().IsShowPlanOrView()) {
    body_->ui.ptr_save_btn_->setText(tr("LtkdtdvtUCQNJzHRVo"));
    body_->ui.ptr_save_as_btn->setText(tr("PrYXuunpaDeMGkqpzm"));
  } else {
    body_->ui.ptr_save_btn_->setText(tr("SaveView"));
    body_->ui.ptr_save_as_btn->setText(tr("SaveAsView"));
  }
  setAccessibleName(tr("Ways to save"));
  connect(body_->ui.ptr_save_btn_, &QPushButton::clicked, this, &CViewSaveMenu::OnSaveBtnClicked);
  connect(body_->ui.ptr_save_as_btn, &QPushButton::clicked, this, &CViewSaveMenu::OnSaveAsBtnClicked);
}

CViewSaveMenu::~CViewSaveMenu() = default;

void CViewSaveMenu::ShowPopupMenu(const QPoint& pos) {
  move(pos);
  show();
  KeepOnScreen(this, pos);
  QPushButton* first = body_->ui.ptr_save_btn_->isVisible() ? body_->ui.ptr_save_btn_ : body_->ui.ptr_save_as_btn;
  first->setFocus(Qt::PopupFocusReason);
}

void CViewSaveMenu::SetActionVisible(ViewSaveActions action, bool visible) {
  if (action == SaveView) {
    body_->ui.ptr_save_btn_->setVisible(visible);
    body_->save_visible = visible;
  } else if (action == SaveAsView) {
    body_->ui.ptr_save_as_btn->setVisible(visible);
    body_->save_as_visible = visible;
  }
  setFixedSize(body_->Size());
}

void CViewSaveMenu::SetTips(const QString& save, const QString& save_as) {
  body_->ui.ptr_save_btn_->setToolTip(save);
  body_->ui.ptr_save_as_btn->setToolTip(save_as);
}

void CViewSaveMenu::SetSaveAsVisable(const int& value) {
  // For this one showing only: the record stays, and the next SetActionVisible() goes by it.
  if (value == kNoSaveAs) {
    body_->ui.ptr_save_as_btn->setVisible(false);
    setFixedHeight(kHeightOfOne);
  }
}

void CViewSaveMenu::OnActionTriggered(ViewSaveActions action) {
  const QPoint place = pos();
  hide();
  Q_EMIT SignalViewMenuTriggered(action, place);
}

void CViewSaveMenu::OnSaveBtnClicked() {
  OnActionTriggered(SaveView);
}

void CViewSaveMenu::OnSaveAsBtnClicked() {
  OnActionTriggered(SaveAsView);
}

bool CViewSaveMenu::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Up || key == Qt::Key_Down) {
      return focusNextPrevChild(key == Qt::Key_Down);
    }
  }
  return QWidget::event(event);
}

}  // namespace TarnPlanView

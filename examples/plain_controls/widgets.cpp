// WidgetKit, ResourceTreeKit and tarn_ui_data_controller: search fields, drags, docks, cameras, messages and menus.
#include <QtWidgets>

#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_finder.h"
#include "ResourceTreeKit/camera_tree.h"
#include "TarnUIDataController/download_slide_widget_pos_rule.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "TarnUIDataController/popup_menu.h"
#include "TarnUIDataController/qss_widget_box.h"
#include "TarnUIDataController/show_message_tip.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/dock_widget.h"
#include "WidgetKit/drag.h"
#include "WidgetKit/high_dpi_svg_icon.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"
#include "plain_controls.h"

namespace WidgetKit {

QIcon GetHighDpiSvgIcon(const QString& normal, const QString& selected, const QSize& size) {
  QIcon icon;
  icon.addFile(normal, size, QIcon::Normal);
  icon.addFile(selected, size, QIcon::Selected);
  return icon;
}

CDrag::CDrag(QObject* source) : QDrag(source) {}
CDrag::~CDrag() = default;
void CDrag::setMimeData(QMimeData* data) {
  const QObject* from = source();
  const bool is_view =
      qobject_cast<const QAbstractItemView*>(from) || (from && qobject_cast<const QAbstractItemView*>(from->parent()));
  data->setProperty("_tree_drop_", is_view);
  QDrag::setMimeData(data);
}
void CDrag::SetCursorPicture(const QString& path, Qt::DropAction action) { setDragCursor(QPixmap(path), action); }

CSlideOutData::CSlideOutData() = default;
CSlideOutData::~CSlideOutData() = default;
void CSlideOutData::SetVal_slide_width(int width) { slide_width_ = width; }
int CSlideOutData::GetVal_slide_width() const { return slide_width_; }
void CSlideOutData::SetVal_ptr_dock_widget(QWidget* widget) { dock_widget_ = widget; }
QWidget* CSlideOutData::GetVal_ptr_dock_widget() const { return dock_widget_; }
void CSlideOutData::SetVal_ptr_dock_pos_rule(std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> rule) {
  pos_rule_ = std::move(rule);
}
std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> CSlideOutData::GetVal_ptr_dock_pos_rule() const {
  return pos_rule_;
}

// A dock is the widget itself as a child of the window; its parent of before is kept as a property.
void ShowDockWidget(const CSlideOutData& data) {
  QWidget* widget = data.GetVal_ptr_dock_widget();
  const auto rule = data.GetVal_ptr_dock_pos_rule();
  QWidget* beside = rule && rule->PosAttachTo() ? rule->PosAttachTo() : widget->parentWidget();
  if (!beside || IsDockWidgetShown(widget)) {
    return;
  }
  QWidget* window = beside->window();
  const QRect right(window->width() - data.GetVal_slide_width(), 0, data.GetVal_slide_width(), window->height());
  const QRect place = rule ? rule->Place(data.GetVal_slide_width()) : right;
  widget->setProperty("dock_home", QVariant::fromValue<QObject*>(widget->parentWidget()));
  widget->setParent(window);
  widget->setGeometry(place.isEmpty() ? right : place);
  widget->setAutoFillBackground(true);
  widget->show();
  widget->raise();
  widget->setFocus();
}
void HideDockWidget(QWidget* widget) {
  if (IsDockWidgetShown(widget)) {
    widget->hide();
    widget->setParent(qobject_cast<QWidget*>(widget->property("dock_home").value<QObject*>()));
    widget->setProperty("dock_home", QVariant());
  }
}
bool IsDockWidgetShown(const QWidget* widget) { return widget && widget->property("dock_home").isValid(); }

class CNewSearchLine::Private {
 public:
  QTimer pause;
  bool as_typed = false, is_typed = false;
};

CNewSearchLine::CNewSearchLine(QWidget* parent) : CLineEdit(parent), search_(new Private) {
  setClearButtonEnabled(true);
  search_->pause.setSingleShot(true);
  search_->pause.setInterval(300);
  connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
    if (search_->as_typed && text.trimmed().size() > 1) {
      search_->pause.start();
    }
  });
  connect(&search_->pause, &QTimer::timeout, this, [this] {
    search_->is_typed = true;
    Q_EMIT SignalSearch();
    search_->is_typed = false;
  });
}
CNewSearchLine::~CNewSearchLine() = default;
void CNewSearchLine::SetSearchesAsTyped(bool as_typed) { search_->as_typed = as_typed; }
bool CNewSearchLine::IsTypedSearch() const { return search_->is_typed; }
void CNewSearchLine::DropWait() { search_->pause.stop(); }
void CNewSearchLine::ForgetSearched() {}
bool CNewSearchLine::event(QEvent* event) { return CLineEdit::event(event); }
void CNewSearchLine::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    clear();
    Q_EMIT SignalLeave();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    DropWait();
    Q_EMIT SignalSearch();
  } else if (event->key() == Qt::Key_Down) {
    Q_EMIT SignalToHits();
  } else {
    CLineEdit::keyPressEvent(event);
  }
}

class CNewLocationViewWidget::Private {
 public:
  QPointer<QAbstractItemView> view;
  QList<QPersistentModelIndex> hits;
  int at = -1;
};

CNewLocationViewWidget::CNewLocationViewWidget(QWidget* parent) : CNewSearchLine(parent), d_(new Private) {
  connect(this, &QLineEdit::textChanged, this, &CNewLocationViewWidget::Locate);
  connect(this, &CNewSearchLine::SignalSearch, this, [this] {
    if (!d_->hits.isEmpty()) {
      d_->at = (d_->at + 1) % d_->hits.size();
      d_->view->setCurrentIndex(d_->hits[d_->at]);
    }
  });
}
CNewLocationViewWidget::~CNewLocationViewWidget() = default;
void CNewLocationViewWidget::SetView(QAbstractItemView* view) { d_->view = view; }
QString CNewLocationViewWidget::FilterText() const { return text(); }
void CNewLocationViewWidget::ClearFilterText() { clear(); }
void CNewLocationViewWidget::Locate() {
  d_->hits.clear();
  if (!d_->view || !d_->view->model()) {
    return;
  }
  Q_EMIT SignalLocating();
  d_->view->setProperty("located_text", text());
  d_->view->viewport()->update();
  if (!text().isEmpty()) {
    const auto how = Qt::MatchContains | Qt::MatchRecursive;
    for (const QModelIndex& hit :
         d_->view->model()->match(d_->view->model()->index(0, 0), Qt::DisplayRole, text(), -1, how)) {
      d_->hits << hit;
    }
  }
  Q_EMIT SignalLocated(HitCount());
}
bool CNewLocationViewWidget::IsLocating() const { return false; }
void CNewLocationViewWidget::SetAwaitsRows(bool) {}
int CNewLocationViewWidget::HitCount() const { return d_->hits.size(); }
void CNewLocationViewWidget::SetSearching(bool) {}
QString CNewLocationViewWidget::LocatedText(const QWidget* view) { return view->property("located_text").toString(); }
void CNewLocationViewWidget::keyPressEvent(QKeyEvent* event) { CNewSearchLine::keyPressEvent(event); }
void CNewLocationViewWidget::resizeEvent(QResizeEvent* event) { CNewSearchLine::resizeEvent(event); }

CNewLocationComboBox::CNewLocationComboBox(QWidget* parent)
    : CMultilevelComboBox(parent), own_tree_(new MarUIControl::CTreeView) {
  own_tree_->setHeaderHidden(true);
  SetLocationView(own_tree_);
}
CNewLocationComboBox::~CNewLocationComboBox() = default;
MarUIControl::CTreeView* CNewLocationComboBox::LocationTree() const {
  return qobject_cast<MarUIControl::CTreeView*>(LocationView());
}

}  // namespace WidgetKit

namespace ResourceTreeKit {

class CCameraTree::Private {
 public:
  QStandardItemModel model;
  bool loaded = false;
};

CCameraTree::CCameraTree(QWidget* parent) : CTreeView(parent), d_(new Private) {
  setModel(&d_->model);
  setHeaderHidden(true);
  setDragEnabled(true);
  connect(this, &QAbstractItemView::doubleClicked, this,
          [this](const QModelIndex& row) { Q_EMIT SignalCameraActivated(CameraAt(row)); });
}
CCameraTree::~CCameraTree() { setModel(nullptr); }
void CCameraTree::SetLogicNodeParam(const LogicNodeParam&) {}  // there are no regions
void CCameraTree::SetFavoritesVisible(bool) {}
void CCameraTree::Reload() {
  d_->model.clear();
  for (const CCameraItemInfo& camera : PlainControls::Cameras()) {
    auto* row = new QStandardItem(QString::fromStdString(camera.name));
    row->setData(QString::fromStdString(camera.index_code));
    d_->model.appendRow(row);
  }
  d_->loaded = true;
  Q_EMIT SignalLoaded({});
}
bool CCameraTree::IsLoaded() const { return d_->loaded; }
void CCameraTree::SetFilterText(const QString& text) {
  for (int row = 0; row < d_->model.rowCount(); ++row) {
    setRowHidden(row, {}, !d_->model.item(row)->text().contains(text, Qt::CaseInsensitive));
  }
}
CCameraItemInfo CCameraTree::CameraAt(const QModelIndex& index) const {
  return FindCamera(index.data(Qt::UserRole + 1).toString().toStdString());
}
CCameraItemInfo CCameraTree::FindCamera(const std::string& index_code) const {
  const auto cameras = PlainControls::Cameras();
  const auto found = std::find_if(cameras.begin(), cameras.end(),
                                  [&](const CCameraItemInfo& camera) { return camera.index_code == index_code; });
  return found == cameras.end() ? CCameraItemInfo() : *found;
}
void CCameraTree::showEvent(QShowEvent* event) {
  CTreeView::showEvent(event);
  if (!d_->loaded) {
    Reload();
  }
}
void CCameraTree::keyPressEvent(QKeyEvent* event) { CTreeView::keyPressEvent(event); }
void CCameraTree::startDrag(Qt::DropActions) {
  const CCameraItemInfo camera = CameraAt(currentIndex());
  const QString name = QString::fromStdString(camera.name);
  const QJsonArray dragged{QJsonObject{{"_source_id_", QString::fromStdString(camera.index_code)},
                                       {"_station_id_", QString::fromStdString(PlainControls::Station())},
                                       {"_source_type_", "_type_camera_"},
                                       {"_normal_resource", QJsonObject{{"name", name}}}}};
  auto* data = new QMimeData;
  data->setData("_drag_json_data_", QJsonDocument(dragged).toJson(QJsonDocument::Compact));
  auto* drag = new WidgetKit::CDrag(this);
  drag->setMimeData(data);
  drag->exec(Qt::CopyAction);
}
void CCameraTree::contextMenuEvent(QContextMenuEvent* event) { CTreeView::contextMenuEvent(event); }

CCameraFinder::CCameraFinder(QWidget* parent)
    : QWidget(parent), search_(new WidgetKit::CNewSearchLine), tree_(new CCameraTree) {
  auto* column = new QVBoxLayout(this);
  column->addWidget(search_);
  column->addWidget(tree_);
  connect(search_, &QLineEdit::textChanged, tree_, &CCameraTree::SetFilterText);
  connect(tree_, &CCameraTree::SignalCameraActivated, this, &CCameraFinder::SignalCameraChosen);
}
void CCameraFinder::FocusSearch() { search_->setFocus(); }
void CCameraFinder::ClearSearch() { search_->clear(); }
bool CCameraFinder::eventFilter(QObject*, QEvent*) { return false; }
void CCameraFinder::showEvent(QShowEvent* event) { QWidget::showEvent(event); }
void CCameraFinder::hideEvent(QHideEvent* event) { QWidget::hideEvent(event); }

}  // namespace ResourceTreeKit

namespace tarn_ui_data_controller {

CSignalTransferManager::CSignalTransferManager() = default;
CSignalTransferManager::~CSignalTransferManager() = default;

class CSkinLoader::Private {};
CSkinLoader::CSkinLoader() = default;
CSkinLoader::~CSkinLoader() = default;
QString CSkinLoader::GetCurrentSkin() const { return "white"; }  // the desktop's own colours
QColor CSkinLoader::GetColor(const QString& name) const {
  const QMap<QString, QPalette::ColorRole> roles{{"background", QPalette::Base}, {"accent", QPalette::Highlight}};
  return QGuiApplication::palette().color(roles.value(name, QPalette::Text));
}

class CMessageTipManager::Private {
 public:
  QPointer<QLabel> tip;
};

CMessageTipManager::CMessageTipManager() : d_(new Private) {}
CMessageTipManager::~CMessageTipManager() = default;
void CMessageTipManager::ShowTip(const QString& text, int state, QWidget* widget) {
  ShowMessage(widget, text, state, 1, 48);
}
void CMessageTipManager::ShowMessage(QWidget* window, const QString& text, int kind, int, int distance) {
  Q_EMIT SignalTipAsked(text, kind);
  delete d_->tip;
  QWidget* over = window ? window->window() : QApplication::activeWindow();
  if (!over) {
    return;
  }
  d_->tip = new QLabel(text, over);
  d_->tip->setTextFormat(Qt::PlainText);
  d_->tip->setAutoFillBackground(true);
  d_->tip->adjustSize();
  d_->tip->move((over->width() - d_->tip->width()) / 2, distance);
  d_->tip->show();
  QTimer::singleShot(kind == MarUIControl::CNomalMessage::Success ? 4000 : 10000, d_->tip, &QObject::deleteLater);
  Q_EMIT SignalTipShown(text, kind);
}

CNomalMessageManager::CNomalMessageManager() = default;
CNomalMessageManager::~CNomalMessageManager() = default;
void CNomalMessageManager::ShowMessage(QWidget* window, const QString& text, int level) {
  CMessageTipManager::Instance().ShowTip(text, level, window);
  Q_EMIT SignalMessageShown(text, level);
}

int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons) {
  return ShowMessageTip(text, state, widget, buttons, MarUIControl::CModalTipDialog::tr("OK"));
}
int ShowMessageTip(const QString& text, int, QWidget* widget, int buttons, const QString& confirm_text) {
  using MarUIControl::CModalTipDialog;
  const QPointer<CModalTipDialog> box = new CModalTipDialog(MarUIControl::GetIndependentWindow(widget));
  box->SetContent(text);
  box->SetConfirmText(confirm_text);
  box->SetConfirmVisible(buttons & 1);
  box->SetCancelVisible(buttons & 2);
  box->SetDialogModel(buttons == 3 ? CModalTipDialog::QuestionModel : CModalTipDialog::HintModel);
  const int result = box->exec();
  delete box;
  return result == CModalTipDialog::Confirmed ? 1 : 0;
}

class CPopupMenu::Private {
 public:
  QMap<int, QAction*> entries;
  QList<QAction*> more;
  QVariant data;
};

CPopupMenu::CPopupMenu(QWidget* parent) : QMenu(parent), d_(new Private) { setToolTipsVisible(true); }
CPopupMenu::~CPopupMenu() = default;
QAction* CPopupMenu::AddMenuItem(MsgType type, const QString& text) {
  QAction*& entry = d_->entries[type];
  if (!entry) {
    entry = addAction(text);
    connect(entry, &QAction::triggered, this, [this, type] { Q_EMIT signalPopupMenuClicked(type, d_->data); });
  }
  entry->setText(text);
  return entry;
}
QAction* CPopupMenu::MenuItem(MsgType type) const { return d_->entries.value(type); }
void CPopupMenu::SetMenuItemVisible(MsgType type, bool visible) {
  if (QAction* entry = MenuItem(type)) {
    entry->setVisible(visible);
  }
}
void CPopupMenu::SetMenuItemEnabled(MsgType type, bool enabled, const QString& reason) {
  if (QAction* entry = MenuItem(type)) {
    entry->setEnabled(enabled);
    entry->setToolTip(enabled ? QString() : reason);
  }
}
void CPopupMenu::SetMoreActions(const QList<QAction*>& actions) {
  for (QAction* action : std::exchange(d_->more, actions)) {
    removeAction(action);
  }
  addActions(actions);
}
void CPopupMenu::SetMenuData(const QVariant& data) { d_->data = data; }
void CPopupMenu::PopupAt(const QPoint& position) { popup(position); }

CQssWidgetBox::CQssWidgetBox(QWidget* parent, int flag) : QWidget(parent, Qt::Dialog) {
  setWindowFlag(Qt::WindowStaysOnTopHint, flag == 1);
}
CQssWidgetBox::~CQssWidgetBox() = default;
void CQssWidgetBox::CloseBox() { close(); }
void CQssWidgetBox::showEvent(QShowEvent*) { Q_EMIT signalVisiblityChanged(true); }
void CQssWidgetBox::hideEvent(QHideEvent*) { Q_EMIT signalVisiblityChanged(false); }
void CQssWidgetBox::paintEvent(QPaintEvent* event) { QWidget::paintEvent(event); }
void CQssWidgetBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    return CloseBox();
  }
  QWidget::keyPressEvent(event);
}

CSlideWidgetPosRule::CSlideWidgetPosRule() = default;
CSlideWidgetPosRule::~CSlideWidgetPosRule() = default;
void CSlideWidgetPosRule::SetPosAttachTo(QWidget* widget) { attach_to_ = widget; }
QWidget* CSlideWidgetPosRule::PosAttachTo() const { return attach_to_; }
CDownloadSlideWidgetPosRule::CDownloadSlideWidgetPosRule() = default;
CDownloadSlideWidgetPosRule::~CDownloadSlideWidgetPosRule() = default;
QRect CDownloadSlideWidgetPosRule::Place(int width) const {
  if (!PosAttachTo() || !PosAttachTo()->isVisible()) {
    return {};
  }
  const QWidget* window = PosAttachTo()->window();
  const QPoint corner = PosAttachTo()->mapTo(window, QPoint());
  return QRect(corner, QSize(qMin(width, window->width() - corner.x()), PosAttachTo()->height()));
}

}  // namespace tarn_ui_data_controller

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QLineEdit>
#include <QtTest>
#include <utility>

#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/offer_strip.h"
#include "TarnUIDataController/msg_type.h"
#include "client_desk.h"
#include "colour_contrast.h"
#include "commands/row_menu.h"
#include "help/help_desk.h"
#include "messages/message_desk.h"
#include "screen_reader.h"
#include "settings/settings_dialog.h"

namespace {

constexpr double kSeen = 3.0;      // contrast by which a mark of the focus differs from what was there before
constexpr int kLongestRound = 80;  // steps by Tab
constexpr int kShortSide = 32;

using TarnTest::Contrast;

int PixelsThatDiffer(const QImage& one, const QImage& other, const QRect& where) {
  int count = 0;
  const QRect both = where & one.rect() & other.rect();
  for (int y = both.top(); y <= both.bottom(); ++y) {
    for (int x = both.left(); x <= both.right(); ++x) {
      count += one.pixel(x, y) != other.pixel(x, y) && Contrast(one.pixelColor(x, y), other.pixelColor(x, y)) >= kSeen;
    }
  }
  return count;
}

QString NameOf(const QWidget* widget) {
  return QStringLiteral("%1 \"%2\"").arg(widget->metaObject()->className(), widget->objectName());
}

// The wall below an open editor shows a corner at most.
bool IsCovered(const QWidget& widget) {
  const QWidget* seen = widget.window()->childAt(widget.mapTo(widget.window(), widget.rect().center()));
  return seen && seen != &widget && !widget.isAncestorOf(seen);
}

bool IsInteractive(const QAccessibleInterface& object) {
  switch (object.role()) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
      return true;
    default:
      return object.state().focusable;
  }
}

bool HasRows(const QAccessibleInterface& object) {
  return object.role() == QAccessible::List || object.role() == QAccessible::Tree ||
         object.role() == QAccessible::Table;
}

// A step of a spin box, a scroll bar: parts of a control that has a name.
bool IsPart(const QAccessibleInterface& object) {
  if (object.role() == QAccessible::MenuItem) {
    return false;
  }
  const auto* widget = qobject_cast<QWidget*>(object.object());
  return !widget || !widget->isVisible() || object.role() == QAccessible::ScrollBar;
}

void FindUnnamed(QAccessibleInterface* object, const QString& path, QStringList* faults) {
  if (!object || object->state().invisible) {
    return;
  }
  const QString name = object->text(QAccessible::Name);
  const QString here =
      path +
      QStringLiteral(" > %1 \"%2\"").arg(object->object() ? object->object()->metaObject()->className() : "", name);
  if (IsInteractive(*object) && !IsPart(*object)) {
    if (name.trimmed().isEmpty()) {
      *faults << QStringLiteral("no name: ") + here;
    }
    if (object->role() == QAccessible::Client || object->role() == QAccessible::NoRole) {
      *faults << QStringLiteral("no role: ") + here;
    }
  }
  if (HasRows(*object)) {
    return;
  }
  QStringList names;
  for (int i = 0; i < object->childCount(); ++i) {
    QAccessibleInterface* child = object->child(i);
    if (child && !child->state().invisible && child->object() && IsInteractive(*child)) {
      names << child->text(QAccessible::Name);
    }
    FindUnnamed(child, here, faults);
  }
  if (names.removeDuplicates() > 0) {
    *faults << QStringLiteral("the same name twice: ") + here;
  }
}

}  // namespace

/// Every window of the client as somebody sees it who goes by keys, or hears it.
class ClientLooksTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void FocusIsSeenEverywhere_data() { ListWindows({"menu"}); }  // which has no focus, but a current entry
  void FocusIsSeenEverywhere();
  void EverythingHasANameAndARole_data() { ListWindows(); }
  void EverythingHasANameAndARole();
  void EveryWindowHasTheIcon();

 private:
  using Opener = QWidget* (ClientLooksTest::*)();

  static const QMap<QString, Opener>& Openers();
  static void ListWindows(const QStringList& but = {});
  QWidget* OpenWindow();
  QWidget* MainWindow() { return window_.get(); }
  QWidget* Settings();
  QWidget* Cameras();
  QWidget* CameraForm();
  QWidget* History();
  QWidget* NameEditor();
  QWidget* Question();
  QWidget* Share() { return Popup(tarn_ui_data_controller::Share, "CShareViewWgt"); }
  QWidget* CreationInfo() { return Popup(tarn_ui_data_controller::CreationInfo, "CreationInfoDlgUi"); }
  QWidget* SaveAs();
  QWidget* Editor();
  QWidget* Conflict();
  QWidget* Messages();
  QWidget* Help();
  QWidget* About();
  QWidget* MoveTo();
  QWidget* Menu();
  QWidget* Offers();
  QWidget* Popup(int command, const char* name);
  QAbstractButton* Button(const char* name) {
    return window_->CurrentFamily().Panel()->findChild<QAbstractButton*>(name);
  }
  void MakeCurrent(const QString& row) { Tree()->setCurrentIndex(Row(row)); }
  /// What such a step finds: each widget by Tab, and how the window looks while it has the focus.
  struct Stop {
    QPointer<QWidget> widget;
    QImage picture;
    QRect place;  // in the picture
  };
  static QVector<Stop> GoRound(QWidget* window);
};

const QMap<QString, ClientLooksTest::Opener>& ClientLooksTest::Openers() {
  static const QMap<QString, Opener> openers{{"main window", &ClientLooksTest::MainWindow},
                                             {"settings", &ClientLooksTest::Settings},
                                             {"cameras", &ClientLooksTest::Cameras},
                                             {"camera form", &ClientLooksTest::CameraForm},
                                             {"history", &ClientLooksTest::History},
                                             {"name editor", &ClientLooksTest::NameEditor},
                                             {"question", &ClientLooksTest::Question},
                                             {"share", &ClientLooksTest::Share},
                                             {"creation info", &ClientLooksTest::CreationInfo},
                                             {"save as", &ClientLooksTest::SaveAs},
                                             {"editor", &ClientLooksTest::Editor},
                                             {"conflict", &ClientLooksTest::Conflict},
                                             {"messages", &ClientLooksTest::Messages},
                                             {"help", &ClientLooksTest::Help},
                                             {"about", &ClientLooksTest::About},
                                             {"move to", &ClientLooksTest::MoveTo},
                                             {"offers", &ClientLooksTest::Offers},
                                             {"menu", &ClientLooksTest::Menu}};
  return openers;
}

void ClientLooksTest::ListWindows(const QStringList& but) {
  QTest::addColumn<QString>("skin");
  QTest::addColumn<QString>("window");
  for (const QString skin : {"redblack", "white"}) {
    for (const QString& window : Openers().keys()) {
      if (!but.contains(window)) {
        QTest::addRow("%s, %s", qPrintable(skin), qPrintable(window)) << skin << window;
      }
    }
  }
}

QWidget* ClientLooksTest::OpenWindow() {
  QFETCH(const QString, skin);
  QFETCH(const QString, window);
  QApplication::setCursorFlashTime(0);
  Open();
  tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(skin);
  window_->activateWindow();
  MakeCurrent(QStringLiteral("Public A plan 2"));
  QWidget* opened = (this->*Openers()[window])();
  if (opened) {
    opened->activateWindow();
    opened->setFocus();
  }
  return opened;
}

QWidget* ClientLooksTest::Settings() {
  window_->OpenSettings();
  return window_->findChild<QWidget*>("settings_dialog");
}

QWidget* ClientLooksTest::Cameras() {
  QWidget* settings = Settings();
  window_->Settings()->OpenCameras();
  auto* list = settings->findChild<QAbstractItemView*>("site_list");
  return QTest::qWaitFor([list] { return list && list->isVisible(); }) ? settings : nullptr;
}

QWidget* ClientLooksTest::CameraForm() {
  QWidget* settings = Cameras();
  settings->findChild<QAbstractButton*>("site_add_camera_btn")->click();
  return settings->findChild<QWidget*>("camera_form");
}

QWidget* ClientLooksTest::History() {
  Play(QStringLiteral("Public A plan 2"));
  window_->OpenHistory();
  return window_->findChild<QWidget*>("history_popup");
}

QWidget* ClientLooksTest::NameEditor() {
  MakeCurrent(QStringLiteral("Public A"));
  Button("add_group_btn")->click();
  for (auto* widget : window_->findChildren<QWidget*>()) {
    if (widget->isVisible() && widget->inherits("TarnPlanView::CViewNameEdit")) {
      return widget;
    }
  }
  return nullptr;
}

QWidget* ClientLooksTest::Question() {
  auto* question = new MarUIControl::CModalTipDialog(window_.get());
  question->SetDialogModel(MarUIControl::CModalTipDialog::QuestionModel);
  question->SetTitle("Delete");
  question->SetContent("Delete \"Gate\" and 12 plans?");
  question->show();
  return question;
}

QWidget* ClientLooksTest::Popup(int command, const char* name) {
  const QString code = Tree()->currentIndex().data(TarnPlanView::PlanIndexCodeRole).toString();
  Q_EMIT Tree()->SignalMenuClicked(static_cast<tarn_ui_data_controller::MsgType>(command), code);
  QWidget* popup = nullptr;
  [&] {
    QTRY_VERIFY([&] {
      for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top->isVisible() && (top->objectName() == name || top->findChild<QWidget*>(name))) {
          popup = top;
        }
      }
      return popup != nullptr;
    }());
  }();
  return popup;
}

QWidget* ClientLooksTest::SaveAs() {
  Play(QStringLiteral("Public A plan 2"));
  window_->SaveAs();
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->isVisible() && top->objectName() == "CSavePlanAsDlg") {
      return top;
    }
  }
  return nullptr;
}

QWidget* ClientLooksTest::Editor() {
  window_->Family(0).Panel()->EditPlanByIndex(Row("Public A plan 2"));
  [&] {
    QTRY_VERIFY(window_->findChild<QLineEdit*>("plan_name_edit"));
    const auto* name = window_->findChild<QLineEdit*>("plan_name_edit");
    QTRY_COMPARE(name->text(), QString("Public A plan 2"));
    QPoint place;
    int looks_alike = 0;  // it slides in
    QTRY_VERIFY([&] {
      const QPoint before = std::exchange(place, name->mapToGlobal(QPoint()));
      looks_alike = before == place ? looks_alike + 1 : 0;
      return looks_alike > 5;
    }());
  }();
  return window_.get();
}

QWidget* ClientLooksTest::Conflict() {
  Editor();
  window_->findChild<QLineEdit*>("plan_name_edit")->setText("Mine");
  view_plugin_protocol::UpdatePlanRequest theirs;
  const auto plan = Stored("Public A plan 2");
  theirs.plan_index_code = plan.index_code;
  theirs.plan_name = "Theirs";
  theirs.parent_index_code = plan.group_index_code;
  theirs.pages = plan.pages;
  [&] {
    QCOMPARE(fixture_.InStore().Update(theirs), QString());
    window_->findChild<QAbstractButton*>("save_plan_btn")->click();
    QTRY_VERIFY(window_->findChild<QWidget*>("conflict_bar")->isVisible());
  }();
  ForgetTips();
  return window_.get();
}

QWidget* ClientLooksTest::Messages() {
  for (const int kind : {0, 1}) {
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip("saved", kind, window_.get());
  }
  window_->Messages().Open();
  return window_->findChild<QWidget*>("messages_window");
}

QWidget* ClientLooksTest::Help() {
  window_->Help().Open();
  return window_->Help().Window();
}

QWidget* ClientLooksTest::About() {
  window_->OpenAbout();
  return window_->findChild<QWidget*>("about_dialog");
}

QWidget* ClientLooksTest::MoveTo() {
  window_->RowMenu(0).Of(TarnClient::RowCommand::MoveTo)->trigger();
  return window_->findChild<QWidget*>("move_to_dlg");
}

QWidget* ClientLooksTest::Offers() {
  for (auto* strip : window_->findChildren<MarUIControl::COfferStrip*>()) {
    strip->Offer("Deleted \"Gate\".", "Undo", 60, {});
  }
  return window_.get();
}

QWidget* ClientLooksTest::Menu() {
  window_->OpenMenu();
  return window_->findChild<QWidget*>("main_menu");
}

QVector<ClientLooksTest::Stop> ClientLooksTest::GoRound(QWidget* window) {
  QVector<Stop> round;
  for (int step = 0; step < kLongestRound; ++step) {
    QWidget* before = window->focusWidget() ? window->focusWidget() : window;
    QTest::keyClick(before, Qt::Key_Tab);
    QWidget* now = window->focusWidget();
    QCoreApplication::processEvents();
    if (!now || (!round.isEmpty() && now == round.first().widget)) {
      break;
    }
    const QImage picture = window->grab().toImage();
    round.append({now, picture, QRect(now->mapTo(window, QPoint()), now->size())});
  }
  if (QWidget* last = window->focusWidget()) {
    last->clearFocus();
  }
  QCoreApplication::processEvents();
  round.append({nullptr, window->grab().toImage(), QRect()});
  return round;
}

void ClientLooksTest::FocusIsSeenEverywhere() {
  QWidget* window = OpenWindow();
  QVERIFY(window && window->isVisible());
  const QVector<Stop> round = GoRound(window);
  QVERIFY2(round.size() > 1 && round.size() < kLongestRound, qPrintable(QString::number(round.size())));
  QStringList faults;
  int looked_at = 0;
  for (int i = 0; i + 1 < round.size(); ++i) {
    const QWidget* widget = round[i].widget;
    if (!widget || IsCovered(*widget)) {
      continue;
    }
    ++looked_at;
    const QRect where = round[i].place;
    const int wanted = 2 * qMin(kShortSide, qMin(where.width(), where.height()));
    const QImage& without = round[i + 1].picture;
    const int seen = PixelsThatDiffer(round[i].picture, without, where.adjusted(-3, -3, 3, 3));
    if (seen < wanted) {
      faults << QStringLiteral("%1: %2 of %3 pixels").arg(NameOf(widget)).arg(seen).arg(wanted);
    }
  }
  QVERIFY2(faults.isEmpty(), qPrintable(faults.join("\n    ")));
  QVERIFY2(2 * looked_at > round.size() - 1, qPrintable(QString("%1 of %2").arg(looked_at).arg(round.size() - 1)));
}

void ClientLooksTest::EverythingHasANameAndARole() {
  const TarnTest::CScreenReader reader;
  QWidget* window = OpenWindow();
  QVERIFY(window && window->isVisible());
  QStringList faults;
  FindUnnamed(QAccessible::queryAccessibleInterface(window), QString(), &faults);
  QVERIFY2(faults.isEmpty(), qPrintable(faults.join("\n    ")));
}

void ClientLooksTest::EveryWindowHasTheIcon() {
  Open();
  const QImage icon = window_->windowIcon().pixmap(QSize(16, 16)).toImage();
  QVERIFY(!icon.isNull() && qAlpha(icon.pixel(8, 1)) > 0);
  QCOMPARE(Settings()->windowIcon().pixmap(QSize(16, 16)).toImage(), icon);
}

QTEST_MAIN(ClientLooksTest)
#include "test_client_looks.moc"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QRegExpValidator>
#include <QScreen>
#include <QShortcut>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

#include "MarUIControl/label.h"
#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/multilevel_combo_box.h"
#include "MarUIControl/placehold_line_edit.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/shadow_widget.h"
#include "MarUIControl/spin_box.h"
#include "MarUIControl/standard_item.h"
#include "MarUIControl/standard_item_model.h"
#include "MarUIControl/switch_control.h"
#include "MarUIControl/tree_view.h"
#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"

using namespace MarUIControl;  // NOLINT: the test is about this library alone

namespace {

/// Counts how often its window lost or got the activation.
class ActivationCount : public QObject {
 public:
  explicit ActivationCount(QWidget* window) { window->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    changes += event->type() == QEvent::ActivationChange ? 1 : 0;
    return QObject::eventFilter(watched, event);
  }
  int changes = 0;
};

void ClickSection(QTimeEdit* edit, int section) {
  auto* line = edit->findChild<QLineEdit*>();
  QPoint place(0, line->height() / 2);
  while (line->cursorPositionAt(place) < 3 * section + 1 && place.x() < line->width()) {
    place.rx() += 1;
  }
  QTest::mouseClick(line, Qt::LeftButton, Qt::NoModifier, place);
}

void Paste(QLineEdit* edit, const QString& text) {
  QGuiApplication::clipboard()->setText(text);
  QTest::keySequence(edit, QKeySequence::Paste);
}

}  // namespace

class ControlsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack"); }
  void init() {
    window_ = std::make_unique<QWidget>();
    window_->setGeometry(100, 100, 320, 360);
    new QVBoxLayout(window_.get());
  }

  void cleanup() {
    TarnHost::SetModalAnswer({});
    window_.reset();
    model_.clear();
  }

  void PasteFollowsTheRules() {
    const struct {
      const char *what, *before, *pasted, *after;
    } rows[] = {{"lines", "", "\nGate\r\nYard\n", "Gate Yard"},
                {"forbidden characters", "x", "a/b:c*d%", "xabcd"},
                {"nothing allowed", "keep", "//\n", "keep"},
                {"too long, behind forbidden", "12345", "??67890123", "1234567890"},
                {"no half of a pair", "123456789", "\xF0\x9F\x9A\xAA", "123456789"}};
    for (const auto& row : rows) {
      CPlaceholdLineEdit edit;
      edit.setMaxLineEditLength(10);
      edit.setValidator(new QRegExpValidator(QRegExp("^[^\\\\/:*?\"<|'%>]{1,10}$"), &edit));
      edit.setText(row.before);
      Paste(&edit, QString::fromUtf8(row.pasted));
      QVERIFY2(edit.text() == row.after, row.what);
      edit.setReadOnly(true);
      Paste(&edit, "z");
      QVERIFY2(edit.text() == row.after, row.what);
    }
  }

  void PasteIsOneStepOfUndo() {
    CLineEdit edit;
    QTest::keyClicks(&edit, "abc");
    Paste(&edit, "X\nY");
    QTest::keyClicks(&edit, "d");
    QCOMPARE(edit.text(), QString("abcX Yd"));
    edit.undo();
    QCOMPARE(edit.text(), QString("abcX Y"));
    edit.undo();
    QCOMPARE(edit.text(), QString("abc"));
    edit.setSelection(0, 2);
    Paste(&edit, "Z");
    QCOMPARE(edit.text(), QString("Zc"));
    edit.undo();
    QCOMPARE(edit.text(), QString("abc"));
  }

  void MenuAndDropPasteAlike() {
    CLineEdit edit;
    edit.setValidator(new QRegExpValidator(QRegExp("^[^/]*$"), &edit));
    edit.show();
    QGuiApplication::clipboard()->setText("a/\nb");
    QContextMenuEvent menu_key(QContextMenuEvent::Keyboard, QPoint(5, 5), edit.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&edit, &menu_key);
    const QPointer<QMenu> menu = edit.findChild<QMenu*>();
    QVERIFY(menu && menu->isVisible());
    menu->findChild<QAction*>("edit-paste")->trigger();
    QCOMPARE(edit.text(), QString("a b"));
    menu->close();
    QTRY_VERIFY(!menu);

    QMimeData dropped;
    dropped.setText("/c\n");
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&edit, &enter);
    QDropEvent drop(QPointF(edit.width() - 1, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&edit, &drop);
    QCOMPARE(edit.text(), QString("a bc"));
  }

  void LongTextsEndInAnEllipsis() {
    CLabel label(QString("<b>") + QString(200, 'w'));
    label.resize(120, 20);
    QVERIFY(label.minimumSizeHint().width() < 120);
    const QImage elided = label.grab().toImage();
    label.setText(label.text() + "tail");
    QCOMPARE(label.grab().toImage(), elided);  // what follows the ellipsis does not show
    label.SetText("<i>x</i>");
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), QString("<i>x</i>"));
    CLineEdit edit;
    edit.setToolTip("<b>no markup</b>");
    QVERIFY(edit.toolTip().contains("&lt;b&gt;"));
  }

  void SwitchReportsChangesOnly() {
    CSwitchControl control;
    QSignalSpy toggled(&control, &CSwitchControl::toggled);
    control.setToggle(false);
    control.setToggle(true);
    control.setToggle(true);
    QCOMPARE(toggled.size(), 1);
    QTest::mouseClick(&control, Qt::LeftButton);
    QTest::keyClick(&control, Qt::Key_Space);
    QTest::keyClick(&control, Qt::Key_Return);
    QCOMPARE(toggled.size(), 4);
    QVERIFY(!control.isToggled());
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&control);
    QCOMPARE(spoken->role(), QAccessible::CheckBox);
    control.setToggle(true);
    QVERIFY(spoken->state().checked);
  }

  void TimesAreIndependent() {
    CRangeTimeEdit range;
    QSignalSpy changed(&range, &CRangeTimeEdit::SignalTimeChanged);
    range.SetBeginTime(QTime(23, 59, 58));
    range.SetEndTime(QTime(0, 0, 1));
    QCOMPARE(range.GetBeginTime(), QTime(23, 59, 58));
    QCOMPARE(range.GetEndTime(), QTime(0, 0, 1));
    range.SetEndTime(QTime());
    QCOMPARE(range.GetEndTime(), QTime(0, 0));
    QCOMPARE(changed.size(), 3);
  }

  void TimesAreTyped_data() {
    QTest::addColumn<int>("section");  // that is clicked, of 09:41:07
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("time");
    const auto row = [](int section, const char* keys, const char* time) {
      QTest::addRow("%d %s", section, keys) << section << QString(keys) << QString(time);
    };
    row(0, "2105", "21:05:07");
    row(0, "2105302", "21:05:02");  // the last section begins again
    row(0, "73", "07:03:07");       // no hour begins with 7
    row(0, "27", "02:41:07");       // no hour 27
    row(0, "272", "22:41:07");
    row(0, "6:7:8", "06:07:08");
    row(0, "21:05", "21:05:07");
    row(0, "1:2.3", "01:02:03");
    row(0, ":12", "09:12:07");
    row(0, "1.x5", "01:05:07");
    row(1, "5", "09:05:07");
    row(1, "61", "09:06:01");
    row(2, "59", "09:41:59");
    row(1, "<", "09:00:07");
    row(1, "3<", "09:00:07");
  }

  void TimesAreTyped() {
    QFETCH(int, section);
    QFETCH(QString, keys);
    CRangeTimeEdit range;
    range.resize(240, 32);
    range.show();
    range.SetEndTime(QTime(9, 41, 7));
    auto* end = range.findChildren<QTimeEdit*>().value(1);
    ClickSection(end, section);
    for (const QChar key : keys) {
      if (key == '<') {
        QTest::keyClick(end, Qt::Key_Backspace);
      } else {
        QTest::keyClick(end, key.toLatin1());
      }
    }
    QTEST(end->time().toString("HH:mm:ss"), "time");
    QCOMPARE(range.GetEndTime(), end->time());
  }

  void TimesByOtherKeysAndPasted() {
    CRangeTimeEdit range;
    range.resize(240, 32);
    range.show();
    range.activateWindow();
    auto* begin = range.findChildren<QTimeEdit*>().value(0);
    const auto time = [begin] { return begin->time().toString("HH:mm:ss"); };
    begin->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(begin->hasFocus());
    QTest::keyClicks(begin, "1");
    QTest::keyClick(begin, Qt::Key_Tab);
    QTest::keyClicks(begin, "2");
    QTest::keyClick(begin, Qt::Key_Right);
    QTest::keyClicks(begin, "33");
    QTest::keyClick(begin, Qt::Key_Home);
    QTest::keyClick(begin, Qt::Key_Up);
    QTest::keyClick(begin, Qt::Key_End);
    QTest::keyClick(begin, Qt::Key_Down);
    QCOMPARE(time(), QString("02:02:32"));
    QTest::keyClick(begin, Qt::Key_Home);
    QTest::keyClicks(begin, "2");
    for (const Qt::Key beside : {Qt::Key_Shift, Qt::Key_CapsLock, Qt::Key_NumLock}) {
      QTest::keyClick(begin, beside);
    }
    QTest::keyClicks(begin, "1");
    QCOMPARE(time(), QString("21:02:32"));
    QTest::keyClicks(begin, "2");
    range.SetBeginTime(QTime(21, 15));  // as undo does
    QTest::keyClicks(begin, "4");
    QCOMPARE(time(), QString("21:04:00"));
    const auto paste = [begin, &time](const char* text) {
      QGuiApplication::clipboard()->setText(text);
      QTest::keySequence(begin, QKeySequence::Paste);
      return time();
    };
    QCOMPARE(paste(" 21:05\n"), QString("21:05:00"));
    QCOMPARE(paste("7.30"), QString("07:30:00"));
    QCOMPARE(paste("235958"), QString("23:59:58"));
    for (const char* no_time : {"24:00", "21:5", "noon", "", "21:05 or 21:10", "210"}) {
      QCOMPARE(paste(no_time), QString("23:59:58"));
    }
    QTest::keySequence(begin, QKeySequence::SelectAll);
    QTest::keyClicks(begin, "4");
    QCOMPARE(time(), QString("04:59:58"));
    QTest::keySequence(begin, QKeySequence::SelectAll);
    QTest::keyClick(begin, Qt::Key_Delete);
    QCOMPARE(time(), QString("00:00:00"));
  }

  // The window has a command under it; without one the text must not go either.
  void ControlUIsTheWindows() {
    QWidget window;
    auto* field = new CPlaceholdLineEdit(&window);
    auto* time = (new CRangeTimeEdit(&window))->findChild<QTimeEdit*>();
    auto* number = new MarUIControl::CSpinBox(&window);
    field->setText("typed");
    QShortcut users(QKeySequence("Ctrl+U"), &window);
    QSignalSpy opened(&users, &QShortcut::activated);
    window.show();
    window.activateWindow();
    QTRY_VERIFY(window.isActiveWindow());
    for (QWidget* widget : std::initializer_list<QWidget*>{field, time, number}) {
      widget->setFocus();
      QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_U, Qt::ControlModifier);
      asked.ignore();
      QApplication::sendEvent(widget, &asked);
      QVERIFY(!asked.isAccepted());
      QTest::keyClick(widget, Qt::Key_U, Qt::ControlModifier);
    }
    QCOMPARE(opened.size(), 3);
    users.setEnabled(false);
    for (QWidget* widget : std::initializer_list<QWidget*>{field, number}) {
      QTest::keyClick(widget, Qt::Key_U, Qt::ControlModifier);
    }
    QCOMPARE(field->text() + number->text(), QString("typed0"));
  }

  void WheelsThatPassOverChangeNoTime() {
    QWidget window;
    auto* range = new CRangeTimeEdit(&window);
    auto* field = new QLineEdit(&window);
    window.show();
    window.activateWindow();
    field->setFocus();
    QTRY_VERIFY(field->hasFocus());
    auto* begin = range->findChildren<QTimeEdit*>().value(0);
    const auto turn = [begin] {
      QWheelEvent wheel(QPointF(5, 5), begin->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, 120), Qt::NoButton,
                        Qt::NoModifier, Qt::NoScrollPhase, false);
      QApplication::sendEvent(begin, &wheel);
    };
    turn();
    QCOMPARE(range->GetBeginTime(), QTime(0, 0));
    QVERIFY(field->hasFocus());
    begin->setFocus();
    turn();
    QVERIFY(range->GetBeginTime() != QTime(0, 0));
  }

  void ComboByMouseWithRowsThatComeLate() {
    MakeCombo();
    QSignalSpy asked(tree_, &CTreeView::AsynchronousExpand);
    QSignalSpy chosen(combo_, &CMultilevelComboBox::SignalIndexActivated);
    const ActivationCount activation(window_.get());
    QTest::mouseClick(combo_, Qt::LeftButton);
    QVERIFY(combo_->IsPopupVisible());
    QCOMPARE(QApplication::activePopupWidget(), tree_->window());

    const QRect root = tree_->visualRect(Row("Plans"));
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(root.left() - 8, root.center().y()));
    QCOMPARE(asked.size(), 1);
    QVERIFY(combo_->IsPopupVisible() && tree_->IsWaiting(Row("Plans")));
    model_.item(0)->appendRow(new CStandardItem("Gates"));
    tree_->FinishExpand(Row("Plans"), true, true);
    QVERIFY(tree_->isExpanded(Row("Plans")));

    ClickRow(Row("Closed"));
    QVERIFY(combo_->IsPopupVisible());
    ClickRow(Row("Gates"));
    QVERIFY(!combo_->IsPopupVisible());
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(combo_->GetCurrentIndex(), Row("Gates"));
    QCOMPARE(combo_->CurrentText(), QString("Gates"));
    QCOMPARE(combo_->toolTip(), QString("Plans / Gates"));

    QTest::mouseClick(combo_, Qt::LeftButton);
    QTest::mouseClick(tree_->window(), Qt::LeftButton, Qt::NoModifier, QPoint(-60, 10));
    QVERIFY(!combo_->IsPopupVisible());
    QTest::mouseClick(combo_, Qt::LeftButton);
    window_->hide();
    QVERIFY(!tree_->window()->isVisible());
    QVERIFY(chosen.size() == 1 && activation.changes <= 1);  // the last for the window's own hiding
  }

  void ComboByKeys() {
    MakeCombo();
    for (int row = 0; row < 3; ++row) {
      model_.item(0)->appendRow(new CStandardItem(QString("Gate %1").arg(row)));
    }
    model_.SetChildrenFetched(Row("Plans"), true);
    QSignalSpy changed(combo_, &CMultilevelComboBox::SignalCurrentIndexChanged);
    combo_->SetCurrentIndex(Row("Gate 1"));
    combo_->SetCurrentIndex(Row("Gate 1"));
    QVERIFY(changed.size() == 1 && tree_->isExpanded(Row("Plans")));
    const ActivationCount activation(window_.get());

    const QVector<QPair<Qt::Key, Qt::KeyboardModifiers>> openers = {
        {Qt::Key_Down, Qt::AltModifier}, {Qt::Key_F4, Qt::NoModifier}, {Qt::Key_Space, Qt::NoModifier}};
    for (const auto& opener : openers) {
      QTest::keyClick(combo_, opener.first, opener.second);
      QVERIFY(combo_->IsPopupVisible());
      QTest::keyClick(tree_, Qt::Key_Down);
      QTest::keyClick(tree_, Qt::Key_Escape);
      QVERIFY(!combo_->IsPopupVisible() && window_->isVisible());
      QCOMPARE(combo_->GetCurrentIndex(), Row("Gate 1"));
    }
    QTest::keyClick(combo_, Qt::Key_F4);
    QCOMPARE(tree_->currentIndex(), Row("Gate 1"));  // moving about without choosing leaves no trace
    QTest::keyClick(tree_, Qt::Key_Down);
    QTest::keyClick(tree_, Qt::Key_Return);
    QVERIFY(!combo_->IsPopupVisible());
    QCOMPARE(combo_->CurrentText(), QString("Gate 2"));
    QVERIFY(combo_->hasFocus());
    QCOMPARE(activation.changes, 0);

    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(combo_);
    QCOMPARE(spoken->role(), QAccessible::ComboBox);
    QCOMPARE(spoken->text(QAccessible::Value), QString("Gate 2"));
  }

  void ComboFindsByTyping() {
    MakeCombo();
    model_.item(0)->appendRows({new CStandardItem("North gate"), new CStandardItem("South gate")});
    model_.SetChildrenFetched(Row("Plans"), true);
    combo_->SetEditLabelVisible(true);
    QTest::keyClick(combo_, Qt::Key_Space);
    auto* search = tree_->window()->findChild<QLineEdit*>();
    QVERIFY(search && search->isVisible() && search->hasFocus());
    QTest::keyClicks(search, "south");
    QTest::keyClick(search, Qt::Key_Return);  // before anything was looked for: chooses nothing
    QVERIFY(combo_->IsPopupVisible());
    QTRY_COMPARE(tree_->currentIndex(), Row("South gate"));
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(!combo_->IsPopupVisible());
    QCOMPARE(combo_->CurrentText(), QString("South gate"));
    QTest::keyClick(combo_, Qt::Key_Space);
    QTest::keyClick(search, Qt::Key_Escape);
    QTest::keyClick(search, Qt::Key_Escape);
    QVERIFY(!combo_->IsPopupVisible() && window_->isVisible());
  }

  void ComboFollowsItsRow() {
    MakeCombo();
    auto* gates = new CStandardItem("Gates");
    model_.item(0)->appendRow(gates);
    combo_->SetCurrentIndex(Row("Gates"));
    QSignalSpy changed(combo_, &CMultilevelComboBox::SignalCurrentIndexChanged);
    gates->setText("Doors");
    QCOMPARE(combo_->CurrentText(), QString("Doors"));
    combo_->ShowPopup();
    model_.removeRow(0);
    QVERIFY(combo_->CurrentText().isEmpty() && !combo_->GetCurrentIndex().isValid());
    QCOMPARE(changed.size(), 1);
    combo_->SetCurrentIndex(Row("Closed"));
    model_.clear();
    QVERIFY(combo_->CurrentText().isEmpty());
    delete tree_;
    QVERIFY(!combo_->LocationView() && !combo_->LocationModel());
    combo_->HidePopup();
    combo_->ShowPopup();
    QVERIFY(!combo_->IsPopupVisible());
  }

  void ComboBringsItsTree() {
    MakeCombo();
    QPointer<QWidget> replaced;
    {
      WidgetKit::CNewLocationComboBox box;
      window_->layout()->addWidget(&box);
      replaced = box.LocationTree();
      QVERIFY(replaced && !box.SearchLine()->isHidden());
      box.LocationTree()->setModel(&model_);
      box.SetCurrentIndex(Row("Closed"));
      QCOMPARE(box.CurrentText(), QString("Closed"));
      box.SetLocationView(tree_);
      QCOMPARE(box.LocationTree(), tree_);
    }
    QVERIFY(!replaced);
  }

  void DropDownStaysOnItsScreen() {
    MakeCombo();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QVector<QPoint> places = {screen.topLeft(), screen.bottomRight() - QPoint(300, 40),
                                    QPoint(screen.left() - 60, screen.bottom() - 330)};
    for (const QPoint& place : places) {
      window_->move(place);
      combo_->ShowPopup();
      const QRect drop_down = tree_->window()->geometry();
      const QRect box(combo_->mapToGlobal(QPoint(0, 0)), combo_->size());
      QVERIFY(screen.contains(drop_down) && drop_down.height() > 100);
      QVERIFY(!drop_down.intersects(box));
      combo_->HidePopup();
    }
  }

  void ModalBoxAnswers() {
    window_->show();
    CModalTipDialog box(window_.get());
    box.SetTitle("Code 7");
    box.SetContent(QString("A <b>text</b> that needs several lines. ").repeated(6));
    QList<TarnHost::ModalQuestion> asked;
    TarnHost::SetModalAnswer([&asked](const TarnHost::ModalQuestion& question) {
      asked.append(question);
      TarnHost::SetModalAnswer({});
      return 1;
    });
    QCOMPARE(box.exec(), 1);
    QVERIFY(!box.isVisible() && asked.size() == 1);
    QVERIFY(asked[0].title == "Code 7" && asked[0].text == box.Content() && asked[0].buttons == 3);

    int shown = 0;
    const auto press = [&](Qt::Key key) {
      QMetaObject::invokeMethod(
          &box,
          [&box, &shown, key, this] {
            shown += box.isVisible() && box.isModal() ? 1 : 0;
            QVERIFY((box.geometry().center() - window_->geometry().center()).manhattanLength() <= 2);
            QTest::keyClick(&box, key);
          },
          Qt::QueuedConnection);
      return box.exec();
    };
    QCOMPARE(press(Qt::Key_Return), 1);
    QCOMPARE(press(Qt::Key_Escape), 0);
    box.SetConfirmVisible(false);
    QCOMPARE(press(Qt::Key_Return), 0);  // the only button left
    QCOMPARE(shown, 3);
    const int wrapped = box.height();
    box.SetContent("Short");
    QCOMPARE(press(Qt::Key_Escape), 0);
    QVERIFY(box.height() < wrapped);
  }

  // A name may be as long as it may be, and without a space.
  void ModalBoxHoldsLongNames() {
    const QString name = QString("Perimeter_fence_north").repeated(8);
    MarUIControl::CModalTipDialog box(window_.get());
    box.SetTitle(name);
    box.SetContent("Delete \"" + name + "\"?");
    box.show();
    const auto* content = box.findChild<QLabel*>("modal_tip_content");
    QVERIFY(content->minimumSizeHint().width() <= content->width());
    QVERIFY(content->height() > 3 * content->fontMetrics().height());
    QVERIFY(box.rect().contains(content->geometry().translated(content->mapTo(&box, QPoint()) - content->pos())));
    QVERIFY(box.findChild<QLabel*>("modal_tip_title")->width() <= box.width());
    QCOMPARE(box.Content(), "Delete \"" + name + "\"?");
  }

  void ModalBoxKeysGoThroughItsButtonsAsTheyStand() {
    MarUIControl::CModalTipDialog box(window_.get());
    box.SetConfirmText("Save");
    box.SetOtherText("Throw away");
    box.SetCancelText("Keep editing");
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    const auto pressed = [](int key) {
      QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
      return qobject_cast<QAbstractButton*>(QApplication::focusWidget())->text();
    };
    for (auto* button : box.findChildren<QAbstractButton*>()) {
      if (button->text() == "Keep editing") {
        button->setFocus();
      }
    }
    QCOMPARE(pressed(Qt::Key_Left), QString("Throw away"));
    QCOMPARE(pressed(Qt::Key_Left), QString("Save"));
    QCOMPARE(pressed(Qt::Key_Right), QString("Throw away"));
  }

  void ModalBoxOutlivesItsParent() {
    auto* parent = new QWidget;
    parent->show();
    const QPointer<CModalTipDialog> box = new CModalTipDialog(parent);
    QMetaObject::invokeMethod(
        parent, [parent] { delete parent; }, Qt::QueuedConnection);
    QCOMPARE(box->exec(), 0);
    QVERIFY(!box);
  }

  void ShadowFollowsItsContent() {
    window_->setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    const Qt::WindowFlags flags = Qt::Tool | Qt::WindowTransparentForInput;
    auto* shadow = new CShadowWidget(window_.get(), flags);
    shadow->SetContentWidget(window_.get(), 0);
    shadow->SetShadowMode(1);
    shadow->SetAutoShow(true);
    QVERIFY(!shadow->isVisible());
    QCOMPARE(shadow->windowFlags() & flags, flags);
    if (QGuiApplication::platformName() == "xcb") {  // the test's display blends no windows
      window_->show();
      QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
      QVERIFY(!shadow->isVisible());
      return;
    }
    for (int round = 0; round < 2; ++round) {
      window_->show();
      QVERIFY(QTest::qWaitForWindowActive(window_.get()));
      QVERIFY(shadow->isVisible() && !shadow->isActiveWindow());
      window_->move(200 + round, 150);
      window_->resize(240, 200 + round);
      QTRY_VERIFY(shadow->geometry().contains(window_->geometry()));
      QCOMPARE(shadow->geometry().center(), window_->geometry().center());
      window_->hide();
      QVERIFY(!shadow->isVisible());
    }
    window_->show();
    shadow->SetShadowMode(0);
    QVERIFY(!shadow->isVisible());
    shadow->SetShadowMode(1);
    QTRY_COMPARE(QApplication::activeWindow(), window_.get());
    QVERIFY(shadow->isVisible());
  }

 private:
  // A root whose children come only when they are asked for, and one group that may not be chosen.
  void MakeCombo() {
    auto* root = new CStandardItem("Plans");
    root->setData(true, CModelKeyMapping::GroupMarkRole);
    model_.appendRow(root);
    auto* closed = new CStandardItem("Closed");
    closed->setSelectable(false);
    model_.appendRow(closed);
    combo_ = new CMultilevelComboBox(window_.get());
    tree_ = new CTreeView;
    tree_->setHeaderHidden(true);
    tree_->setModel(&model_);
    combo_->SetLocationView(tree_);
    window_->layout()->addWidget(combo_);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    combo_->setFocus();
  }

  void ClickRow(const QModelIndex& index) {
    tree_->scrollTo(index);
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, tree_->visualRect(index).center());
  }

  QModelIndex Row(const QString& name) const {
    return model_.match(model_.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
  }

  std::unique_ptr<QWidget> window_;
  CStandardItemModel model_;
  CTreeView* tree_ = nullptr;
  CMultilevelComboBox* combo_ = nullptr;
};

QTEST_MAIN(ControlsTest)
#include "test_controls.moc"

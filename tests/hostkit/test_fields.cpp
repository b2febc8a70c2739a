#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QTimeEdit>
#include <QtTest>

#include "MarUIControl/label.h"
#include "MarUIControl/placehold_line_edit.h"
#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/spin_box.h"
#include "MarUIControl/switch_control.h"
#include "TarnUIDataController/skin_loader.h"
#include "qt/pattern_validator.h"

using namespace MarUIControl;  // NOLINT: the test is about this library alone

namespace {

void Paste(QLineEdit* edit, const QString& text) {
  QGuiApplication::clipboard()->setText(text);
  QTest::keySequence(edit, QKeySequence::Paste);
}

}  // namespace

class FieldsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack"); }
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
      edit.setValidator(TarnQt::MakePatternValidator("^[^\\\\/:*?\"<|'%>]{1,10}$", &edit));
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
    edit.setValidator(TarnQt::MakePatternValidator("^[^/]*$", &edit));
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
};

QTEST_MAIN(FieldsTest)
#include "test_fields.moc"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTimeEdit>
#include <QtTest>

#include "MarUIControl/range_time_edit.h"
#include "TarnUIDataController/skin_loader.h"

using namespace MarUIControl;  // NOLINT: the test is about this library alone

namespace {

void ClickSection(QTimeEdit* edit, int section) {
  auto* line = edit->findChild<QLineEdit*>();
  QPoint place(0, line->height() / 2);
  while (line->cursorPositionAt(place) < 3 * section + 1 && place.x() < line->width()) {
    place.rx() += 1;
  }
  QTest::mouseClick(line, Qt::LeftButton, Qt::NoModifier, place);
}

}  // namespace

class TimesTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack"); }
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
};

QTEST_MAIN(TimesTest)
#include "test_times.moc"

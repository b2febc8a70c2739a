#include <QAbstractButton>
#include <QTabWidget>
#include <QtTest>

#include "client_desk.h"

using TarnTest::CPlanFixture;

// The client's window by keyboard alone: where the first keys go, and where Tab leads.
class ClientKeysTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void FirstKeysGoToTheTree_data();
  void FirstKeysGoToTheTree();
  void TabWalksThroughTheWindow();
  void ChangingTheTabGoesToTheRows();

 private:
  /// The widget with the focus, by its name.
  static QString Focus();
  /// Where this key leads, until it comes back.
  static QStringList Walk(Qt::Key key);
};

QString ClientKeysTest::Focus() {
  const QWidget* focus = QApplication::focusWidget();
  if (!focus) {
    return "nothing";
  }
  return focus->objectName();
}

QStringList ClientKeysTest::Walk(Qt::Key key) {
  const QWidget* start = QApplication::focusWidget();
  QStringList names;
  do {
    QTest::keyClick(QApplication::focusWidget(), key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
    names << Focus();
  } while (QApplication::focusWidget() && QApplication::focusWidget() != start && names.size() < 60);
  return names;
}

void ClientKeysTest::FirstKeysGoToTheTree_data() {
  QTest::addColumn<QString>("after");
  for (const char* after : {"the start", "rows that come late", "a retry", "a log-in", "a log-in by mouse"}) {
    QTest::newRow(after) << QString(after);
  }
}

void ClientKeysTest::FirstKeysGoToTheTree() {
  QFETCH(QString, after);
  Open({{"load_all", 1}});
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  fixture_.Messages().Expect("The line is down");
  const auto retry = [this]() -> QAbstractButton* {
    for (auto* button : window_->Family(0).Panel()->findChildren<QAbstractButton*>()) {
      if (button->isVisible() && button->text().contains("again", Qt::CaseInsensitive)) {
        return button;
      }
    }
    return nullptr;
  };
  if (after == "rows that come late") {
    // The rows of the top are asked for on the GUI's thread, which is not held: only what comes before them may be
    // late.
    fixture_.Services().Hold("IsViewResourceDownFinish");
    const QSignalSpy gone(fixture_.Public(), &QAbstractItemModel::rowsRemoved);
    QVERIFY(fixture_.Store().LogIn({"operator"}).IsDone());
    QTRY_VERIFY(!gone.isEmpty());
    fixture_.Services().ReleaseAll();
  } else if (after == "a retry") {
    fixture_.Services().Fail("GetPlanGroups", "The line is down");
    QVERIFY(fixture_.Store().LogIn({"operator"}).IsDone());
    QTRY_VERIFY(retry());
    fixture_.Services().Mend("GetPlanGroups");
    retry()->setFocus();
    QTest::keyClick(retry(), Qt::Key_Space);
  } else if (after == "a log-in") {
    SwitchUser("viewer");
  } else if (after == "a log-in by mouse") {
    window_->findChild<QWidget*>("user_btn")->setFocus();
    SwitchUser("viewer");
  }
  WaitForPlans();
  QTRY_COMPARE(QApplication::focusWidget(), Tree());
  QTRY_COMPARE(Tree()->currentIndex(), Row("Plans"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  QVERIFY(Tree()->currentIndex().parent() == Row("Plans"));
}

void ClientKeysTest::TabWalksThroughTheWindow() {
  Open();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  Play("Public A plan 2");
  CPlanFixture::Drain();
  const QStringList around = Walk(Qt::Key_Tab);
  int place = -1;
  for (const char* part :
       {"live_wall", "wall_stop_btn", "wall_save_menu_btn", "user_btn", "settings_btn", "qt_tabwidget_tabbar",
        "history_btn", "add_group_btn", "search_btn", "view_location_line_edit", "plan_view_tree"}) {
    QVERIFY2(around.indexOf(part) > place, qPrintable(part + (": " + around.join(' '))));
    place = around.indexOf(part);
  }
  QStringList back(around.rbegin(), around.rend());
  back.move(0, back.size() - 1);  // it begins where it ended
  QCOMPARE(Walk(Qt::Key_Backtab), back);
  // What stays on the wall when it is empty, and what then may be had again.
  QTest::keyClick(Tree(), Qt::Key_Escape);
  QVERIFY(!Wall().IsPlaying());
  QCOMPARE(Walk(Qt::Key_Tab).mid(0, 3), (QStringList{"live_wall", "offer_action", "offer_close"}));
  QTest::keyClick(&Wall(), Qt::Key_R, Qt::ControlModifier);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
}

void ClientKeysTest::ChangingTheTabGoesToTheRows() {
  Open();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  WaitForPlans();
  QTRY_COMPARE(QApplication::focusWidget(), Tree());
  QTest::keyClick(Tree(), Qt::Key_Tab, Qt::ControlModifier);
  QCOMPARE(window_->findChild<QTabWidget*>()->currentIndex(), 1);
  QCOMPARE(QApplication::focusWidget(), Tree(1));
}

QTEST_MAIN(ClientKeysTest)
#include "test_client_keys.moc"

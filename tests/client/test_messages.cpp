#include <QAbstractItemModelTester>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

#include "client_desk.h"
#include "messages/message_desk.h"
#include "messages/message_filter.h"
#include "messages/message_log.h"
#include "messages/messages_window.h"
#include "window/window_actions.h"

using tarn_ui_data_controller::CMessageTipManager;
using TarnClient::CMessageFilter;
using TarnClient::CMessageLog;

class MessagesTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void KeepsTheLastOnesAndCountsRepeats();
  void FiltersByWordsAndKind();
  void PageShowsCopiesAndClears();

 private:
  QTreeView* List() const { return window_->findChild<QTreeView*>("messages_list"); }
  void Refuse() { CMessageTipManager::Instance().ShowTip("Not saved: nothing plays.", 1, window_.get()); }
  void Press(const char* button) { window_->findChild<QPushButton*>(button)->click(); }
};

void MessagesTest::KeepsTheLastOnesAndCountsRepeats() {
  CMessageLog log;
  const QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::QtTest);
  QSignalSpy unread(&log, &CMessageLog::SignalUnreadChanged);
  for (int i = 0; i < CMessageLog::kMost + 7; ++i) {
    log.Add(QString("text %1").arg(i), i % 4);
  }
  QCOMPARE(log.rowCount(), CMessageLog::kMost);
  QCOMPARE(log.index(0, CMessageLog::Text).data().toString(), QString("text 206"));
  QCOMPARE(log.index(199, CMessageLog::Text).data().toString(), QString("text 7"));
  QCOMPARE(log.Unread(), 104);  // failures and warnings, those that went included
  log.MarkRead();
  QCOMPARE(unread.last().at(0).toInt(), 0);
  log.Add("again", 1);
  log.Add("again", 1);
  log.Add("again", 0);  // says something else
  log.Add("again", 1);
  QCOMPARE(log.index(0, CMessageLog::Text).data().toString(), QString("again"));
  QCOMPARE(log.index(2, CMessageLog::Text).data().toString(), QString::fromUtf8("again  \u00d72"));
  QCOMPARE(log.Unread(), 3);
  log.Clear();
  QVERIFY(log.rowCount() == 0 && log.Unread() == 0);
}

void MessagesTest::FiltersByWordsAndKind() {
  CMessageLog log;
  CMessageFilter filter;
  filter.setSourceModel(&log);
  const QAbstractItemModelTester tester(&filter, QAbstractItemModelTester::FailureReportingMode::QtTest);
  log.Add("North gate was deleted", 0);
  log.Add("Gate overview cannot be saved", 1);
  filter.SetText(" gate  NORTH ");
  QCOMPARE(filter.rowCount(), 1);
  filter.SetKind(1);
  QCOMPARE(filter.rowCount(), 0);
  filter.SetText("");
  QCOMPARE(filter.index(0, CMessageLog::Text).data().toString(), QString("Gate overview cannot be saved"));
  log.Add("The line is down", 1);  // what comes meanwhile is filtered, too
  log.Add("done", 0);
  QCOMPARE(filter.rowCount(), 2);
}

void MessagesTest::PageShowsCopiesAndClears() {
  Open();
  auto* button = window_->findChild<QToolButton*>("messages_btn");
  Refuse();
  QTRY_VERIFY(!Tip().isEmpty());
  QCOMPARE(button->text(), QString("1"));
  QVERIFY2(button->toolTip().contains("Ctrl+M"), qPrintable(button->toolTip()));
  CMessageTipManager::Instance().ShowTip("saved", 0, window_.get());
  QTest::mouseClick(window_->findChild<QFrame*>("message_tip"), Qt::LeftButton);
  QTRY_VERIFY(window_->Messages().Page());
  QVERIFY(Tip().isEmpty() && window_->Messages().Log().Unread() == 0);
  QCOMPARE(List()->model()->rowCount(), 2);
  CMessageTipManager::Instance().ShowTip("read at once", 1, window_.get());
  QCOMPARE(window_->Messages().Log().Unread(), 0);

  Press("messages_copy_btn");
  QCOMPARE(QGuiApplication::clipboard()->text().count('\n'), 2);
  List()->selectionModel()->select(List()->model()->index(1, 0),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  List()->setFocus();
  QTest::keyClick(List(), Qt::Key_C, Qt::ControlModifier);
  QVERIFY(QGuiApplication::clipboard()->text().endsWith("\tsaved"));
  window_->findChild<QLineEdit*>("messages_filter")->setText("at once");
  QCOMPARE(List()->model()->rowCount(), 1);
  Press("messages_clear_btn");
  QVERIFY(List()->isHidden());
  QTest::keyClick(window_->Messages().Page(), Qt::Key_Escape);
  QTRY_VERIFY(!window_->Messages().Page());

  Refuse();
  QCOMPARE(window_->Messages().Log().rowCount(), 1);
  QCOMPARE(button->text(), QString("1"));  // the page that was closed reads no more
  window_->Messages().Open();
  window_->Messages().Page()->showMinimized();
  Refuse();
  QCOMPARE(button->text(), QString("1"));
  window_->Messages().Open();
  QCOMPARE(button->text(), QString(" "));
  QVERIFY(!window_->Messages().Page()->isMinimized());
  Refuse();
  QVERIFY(!Tip().isEmpty());
  SwitchUser("viewer");
  QVERIFY2(!Tip().startsWith("Not saved"), qPrintable(Tip()));
  for (int row = 0; row < window_->Messages().Log().rowCount(); ++row) {
    const QString text = window_->Messages().Log().index(row, CMessageLog::Text).data().toString();
    QVERIFY2(!text.startsWith("Not saved"), qPrintable(text));  // the last user's
  }
  WaitForPlans();
}

QTEST_MAIN(MessagesTest)
#include "test_messages.moc"

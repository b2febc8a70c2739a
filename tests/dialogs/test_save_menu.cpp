#include <QPushButton>
#include <QScreen>

#include "plan_test.h"
#include "qt/known_types.h"
#include "view_save_menu.h"

using namespace TarnPlanView;

class SaveMenuTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup();
  void ShowsWhatIsVisible();
  void SaysWhereItStood();
  void Keys();

 private:
  void Begin(int mode = 1) {
    cleanup();
    Open({{"show_mode", mode}}, false);
    menu_ = std::make_unique<CViewSaveMenu>(nullptr);
    QCOMPARE(menu_->height(), 32);
    menu_->SetActionVisible(SaveView, true);
    menu_->SetActionVisible(SaveAsView, true);
  }
  QPushButton* Save() { return menu_->findChild<QPushButton*>("ptr_save_btn_"); }
  QPushButton* SaveAs() { return menu_->findChild<QPushButton*>("ptr_save_as_btn"); }
  QString Shown() {
    return QString("%1%2%3")
        .arg(Save()->isHidden() ? "" : "save ", SaveAs()->isHidden() ? "" : "as ")
        .arg(menu_->height());
  }

  std::unique_ptr<CViewSaveMenu> menu_;
};

void SaveMenuTest::cleanup() {
  menu_.reset();
  Shut();
}

void SaveMenuTest::ShowsWhatIsVisible() {
  QStringList texts;
  for (const int mode : {1, 0}) {
    Begin(mode);
    texts << Save()->text() << SaveAs()->text();
    QVERIFY(menu_->width() > menu_->fontMetrics().horizontalAdvance(texts.last()));
  }
  const QStringList plans{"LtkdtdvtUCQNJzHRVo", "PrYXuunpaDeMGkqpzm"}, views{"SaveView", "SaveAsView"};
  QVERIFY2(texts == plans + views || texts == views + plans, qPrintable(texts.join(' ')));

  menu_->SetSaveAsVisable(1);
  QCOMPARE(Shown(), QString("save as 62"));
  menu_->SetSaveAsVisable(2);
  QCOMPARE(Shown(), QString("save 32"));
  menu_->SetActionVisible(SaveView, true);  // goes by the record, which still has both
  QCOMPARE(Shown(), QString("save 62"));
  menu_->SetActionVisible(static_cast<ViewSaveActions>(7), false);
  menu_->SetActionVisible(SaveView, false);
  QCOMPARE(Shown(), QString("32"));
  menu_->SetActionVisible(SaveAsView, true);
  QCOMPARE(Shown(), QString("as 32"));
}

void SaveMenuTest::SaysWhereItStood() {
  Begin();
  QStringList said;
  connect(menu_.get(), &CViewSaveMenu::SignalViewMenuTriggered, this, [&](ViewSaveActions action, const QPoint& place) {
    QVERIFY(!menu_->isVisible());
    said << QString("%1 at %2,%3").arg(action).arg(place.x()).arg(place.y());
  });
  menu_->ShowPopupMenu(QPoint(80, 90));
  QTest::mouseClick(SaveAs(), Qt::LeftButton);
  menu_->ShowPopupMenu(QPoint(80, 90));
  menu_->move(60, 70);
  QTest::mouseClick(Save(), Qt::LeftButton);
  QCOMPARE(said, QStringList({"2 at 80,90", "1 at 60,70"}));
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  menu_->ShowPopupMenu(screen.bottomRight());
  QVERIFY(screen.contains(menu_->geometry()));
  // The signal may cross threads.
  QVERIFY(TarnQt::IsKnownType("ViewSaveActions"));
}

void SaveMenuTest::Keys() {
  Begin();
  QSignalSpy chosen(menu_.get(), &CViewSaveMenu::SignalViewMenuTriggered);
  menu_->ShowPopupMenu(QPoint(80, 90));
  QTRY_VERIFY(Save()->hasFocus());
  const auto press = [this](Qt::Key key) { QTest::keyClick(menu_->windowHandle(), key); };
  press(Qt::Key_Down);
  QVERIFY(SaveAs()->hasFocus());
  press(Qt::Key_Up);
  QVERIFY(Save()->hasFocus());
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  QCOMPARE(chosen.size(), 1);
  QCOMPARE(chosen[0][0].value<ViewSaveActions>(), SaveAsView);
  menu_->SetActionVisible(SaveView, false);
  menu_->ShowPopupMenu(QPoint(80, 90));
  QTRY_VERIFY(SaveAs()->hasFocus());
  press(Qt::Key_Escape);
  QVERIFY(!menu_->isVisible());
  QCOMPARE(chosen.size(), 1);
}

QTEST_MAIN(SaveMenuTest)
#include "test_save_menu.moc"

#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>

#include "plan_test.h"
#include "view_save_menu.h"

using namespace TarnPlanView;

class SaveMenuTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void Wording();
  void Sizes();
  void TellsWhereItStood();
  void Keys();

 private:
  QPushButton* Button(const char* name) { return menu_->findChild<QPushButton*>(name); }
  int TextWidth(const char* name) {
    return QFontMetrics(Button("ptr_save_as_btn")->font()).horizontalAdvance(Button(name)->text());
  }

  std::unique_ptr<CViewSaveMenu> menu_;
};

void SaveMenuTest::init() {
  Open({{"show_mode", 1}}, false);
  menu_ = std::make_unique<CViewSaveMenu>(nullptr);
}

void SaveMenuTest::cleanup() {
  menu_.reset();
  Shut();
}

void SaveMenuTest::Wording() {
  QStringList texts;
  for (const int mode : {1, 0}) {
    menu_.reset();
    Shut();
    Open({{"show_mode", mode}}, false);
    menu_ = std::make_unique<CViewSaveMenu>(nullptr);
    QCOMPARE(menu_->height(), 32);
    texts << Button("ptr_save_btn_")->text() << Button("ptr_save_as_btn")->text();
  }
  const QStringList plans{"LtkdtdvtUCQNJzHRVo", "PrYXuunpaDeMGkqpzm"}, views{"SaveView", "SaveAsView"};
  QVERIFY2(texts == plans + views || texts == views + plans, qPrintable(texts.join(' ')));
}

void SaveMenuTest::Sizes() {
  menu_->SetActionVisible(SaveView, true);
  menu_->SetActionVisible(SaveAsView, true);
  const QSize both(qMax(TextWidth("ptr_save_btn_"), TextWidth("ptr_save_as_btn")) + 64, 62);
  QCOMPARE(menu_->size(), both);
  menu_->SetSaveAsVisable(1);
  QCOMPARE(menu_->size(), both);
  menu_->SetSaveAsVisable(2);
  QCOMPARE(menu_->height(), 32);
  QVERIFY(Button("ptr_save_as_btn")->isHidden());
  menu_->SetActionVisible(SaveView, true);  // goes by the record, which still has both
  QCOMPARE(menu_->size(), both);
  menu_->SetActionVisible(SaveView, false);
  QCOMPARE(menu_->size(), QSize(TextWidth("ptr_save_as_btn") + 34, 32));
  menu_->SetActionVisible(SaveAsView, false);
  QCOMPARE(menu_->size(), QSize(34, 32));
  menu_->SetActionVisible(SaveView, true);
  QCOMPARE(menu_->size(), QSize(TextWidth("ptr_save_btn_") + 34, 32));
  menu_->SetActionVisible(static_cast<ViewSaveActions>(7), false);
  QVERIFY(!Button("ptr_save_btn_")->isHidden());
}

void SaveMenuTest::TellsWhereItStood() {
  menu_->SetActionVisible(SaveView, true);
  menu_->SetActionVisible(SaveAsView, true);
  QStringList said;
  connect(menu_.get(), &CViewSaveMenu::SignalViewMenuTriggered, this, [&](ViewSaveActions action, const QPoint& place) {
    QVERIFY(!menu_->isVisible());
    said << QString("%1 at %2,%3").arg(action).arg(place.x()).arg(place.y());
  });
  menu_->ShowPopupMenu(QPoint(80, 90));
  QTest::mouseClick(Button("ptr_save_as_btn"), Qt::LeftButton);
  menu_->ShowPopupMenu(QPoint(80, 90));
  menu_->move(60, 70);
  QTest::mouseClick(Button("ptr_save_btn_"), Qt::LeftButton);
  QCOMPARE(said, QStringList({"2 at 80,90", "1 at 60,70"}));
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  menu_->ShowPopupMenu(screen.bottomRight());
  QVERIFY(screen.contains(menu_->geometry()));
  // The signal may cross threads.
  QVERIFY(QMetaType::type("ViewSaveActions") != QMetaType::UnknownType);
}

void SaveMenuTest::Keys() {
  QSignalSpy chosen(menu_.get(), &CViewSaveMenu::SignalViewMenuTriggered);
  menu_->SetActionVisible(SaveView, true);
  menu_->SetActionVisible(SaveAsView, true);
  menu_->ShowPopupMenu(QPoint(80, 90));
  QTRY_VERIFY(Button("ptr_save_btn_")->hasFocus());
  QTest::keyClick(menu_->windowHandle(), Qt::Key_Down);
  QVERIFY(Button("ptr_save_as_btn")->hasFocus());
  QTest::keyClick(menu_->windowHandle(), Qt::Key_Up);
  QVERIFY(Button("ptr_save_btn_")->hasFocus());
  QTest::keyClick(menu_->windowHandle(), Qt::Key_Down);
  QTest::keyClick(menu_->windowHandle(), Qt::Key_Return);
  QCOMPARE(chosen.size(), 1);
  QCOMPARE(chosen[0][0].value<ViewSaveActions>(), SaveAsView);
  menu_->SetActionVisible(SaveView, false);
  menu_->ShowPopupMenu(QPoint(80, 90));
  QTRY_VERIFY(Button("ptr_save_as_btn")->hasFocus());
  QTest::keyClick(menu_->windowHandle(), Qt::Key_Escape);
  QVERIFY(!menu_->isVisible());
  QCOMPARE(chosen.size(), 1);
}

QTEST_MAIN(SaveMenuTest)
#include "test_save_menu.moc"

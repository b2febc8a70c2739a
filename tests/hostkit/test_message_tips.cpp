#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "screen_reader.h"

using tarn_ui_data_controller::CMessageTipManager;
using tarn_ui_data_controller::CSkinLoader;

class MessageTipsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    CSkinLoader::Instance().LoadSkin("redblack");
    window_ = std::make_unique<QWidget>();
    edit_ = new QLineEdit(window_.get());
    (new QVBoxLayout(window_.get()))->addWidget(edit_);
    window_->resize(500, 300);
    window_->show();
    window_->activateWindow();
    edit_->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  }

  void cleanup() {
    window_.reset();
    CMessageTipManager::Release();
  }

  void OneAfterTheOtherWithoutFocus() {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    QSignalSpy shown(&tips, &CMessageTipManager::SignalTipShown);
    QElapsedTimer clock;
    clock.start();
    tips.ShowTip("saved", 0, edit_);
    tips.ShowTip("", 1, edit_);
    QCOMPARE(shown.size(), 1);
    QCOMPARE(tips.CurrentText(), QString("saved"));
    QVERIFY(Tip() && Tip()->isVisible() && !Tip()->isWindow());
    QCOMPARE(Tip()->accessibleName(), QString("saved"));
    QTest::mouseClick(edit_, Qt::LeftButton);
    QTest::keyClicks(QApplication::focusWidget(), "abc");
    QCOMPARE(edit_->text(), QString("abc"));
    QVERIFY(window_->isActiveWindow());

    QTRY_COMPARE_WITH_TIMEOUT(shown.size(), 2, 30000);
    QVERIFY(clock.elapsed() >= 1900);
    QCOMPARE(shown.at(1).at(1).toInt(), 1);
    QVERIFY(clock.elapsed() < 3900);  // alone it would have stayed for four
    QVERIFY(tips.CurrentText().isEmpty() && Tip());
    QSignalSpy clicked(&tips, &CMessageTipManager::SignalTipClicked);
    QTest::mouseClick(Tip(), Qt::LeftButton);
    QTRY_COMPARE(clicked.size(), 1);
    QVERIFY(!Tip());
    QCOMPARE(QApplication::focusWidget(), edit_);
  }

  void LongTextStaysInsideTheWindow() {
    const QString text = QString("The plan <b>Gate</b> was changed by somebody else. ").repeated(4);
    for (const char* skin : {"redblack", "white"}) {
      CSkinLoader::Instance().LoadSkin(skin);
      CMessageTipManager::Instance().ShowTip(text, 1, window_.get());
      for (const QSize& size : {QSize(500, 300), QSize(260, 400), QSize(1200, 500)}) {
        window_->resize(size);
        QTRY_VERIFY(Tip() && window_->rect().contains(Tip()->geometry()));
        const auto* label = Tip()->findChild<QLabel*>("message_tip_text");
        QCOMPARE(label->text(), text);
        QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
      }
      CMessageTipManager::Release();
      QVERIFY(!Tip());
    }
  }

  // On Linux a screen reader hears of an alert by its being shown; the alert event itself is not passed on there.
  void IsReadOutAsAnAlert() {
    const TarnTest::CScreenReader reader;
    CMessageTipManager::Instance().ShowTip("Renamed to Gate", 0, window_.get());
    for (const auto event : {QAccessible::ObjectShow, QAccessible::Alert}) {
      QCOMPARE(reader.Heard(event, QAccessible::AlertMessage), QStringList("Renamed to Gate"));
    }
  }

  void AFloodIsCountedAndLeavesFewTips() {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    QSignalSpy asked(&tips, &CMessageTipManager::SignalTipAsked), shown(&tips, &CMessageTipManager::SignalTipShown);
    for (int i = 0; i < 12; ++i) {
      tips.ShowTip("the line is down", 1, window_.get());
    }
    QCOMPARE(Tip()->findChild<QLabel*>("message_tip_count")->text(), QString::fromUtf8("\u00d712"));
    for (int i = 0; i < 100; ++i) {
      tips.ShowTip(QString("saved %1").arg(i), 0, window_.get());
      tips.ShowTip(QString("refused %1").arg(i % 2), 1, window_.get());
    }
    QCOMPARE(asked.size(), 212);
    while (Tip()) {  // one click each, and all are read
      const int before = shown.size();
      QTest::mouseClick(Tip(), Qt::LeftButton);
      QTRY_VERIFY(!Tip() || shown.size() > before);
    }
    QStringList texts;
    for (const auto& one : shown) {
      texts << one.at(0).toString();
    }
    QCOMPARE(texts, QStringList({"the line is down", "refused 0", "refused 1", "saved 99"}));
    tips.ShowTip("one", 0, window_.get());
    tips.ShowTip("another", 0, window_.get());
    tips.TakeAway();
    QVERIFY(!Tip() && tips.CurrentText().isEmpty());
  }

  void WindowGoesAwayWithItsTips() {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    QWidget other;
    other.resize(300, 200);
    other.show();
    QSignalSpy shown(&tips, &CMessageTipManager::SignalTipShown);
    tips.ShowTip("first", 0, window_.get());
    tips.ShowTip("never seen", 0, window_.get());
    tips.ShowTip("elsewhere", 0, &other);
    window_.reset();
    QVERIFY(tips.CurrentText().isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(tips.CurrentText(), QString("elsewhere"), 1000);
    QCOMPARE(shown.size(), 2);
  }

 private:
  QFrame* Tip() const { return window_->findChild<QFrame*>("message_tip"); }

  std::unique_ptr<QWidget> window_;
  QLineEdit* edit_ = nullptr;
};

QTEST_MAIN(MessageTipsTest)
#include "test_message_tips.moc"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
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

    QVERIFY(NextTipWithin(3000));  // alone it would have stayed for four seconds
    QCOMPARE(shown.at(1).at(1).toInt(), 1);
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
    const QString text = "Renamed to " + QString(40, 'x');  // broken on screen
    for (int time = 0; time < 3; ++time) {
      CMessageTipManager::Instance().ShowTip(text, 0, window_.get());
    }
    for (const auto event : {QAccessible::ObjectShow, QAccessible::Alert}) {
      QCOMPARE(reader.Heard(event, QAccessible::AlertMessage), QStringList(text));
    }
    QCOMPARE(reader.Heard(QAccessible::DescriptionChanged), QStringList());
    const auto* tip = QAccessible::queryAccessibleInterface(Tip());
    QCOMPARE(tip->text(QAccessible::Description), QString::fromUtf8("\u00d73"));
    const auto* label = QAccessible::queryAccessibleInterface(Tip()->findChild<QLabel*>("message_tip_text"));
    QCOMPARE(label->text(QAccessible::Name), text);
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

  void TipsOutliveTheirWindow() {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    auto dialog = std::make_unique<QWidget>();
    dialog->show();
    tips.ShowTip("just seen", 1, dialog.get());
    tips.ShowTip("never seen", 1, dialog.get());
    tips.ShowTip("elsewhere", 1, window_.get());
    QCOMPARE(tips.CurrentText(), QString("just seen"));
    dialog->hide();
    dialog.reset();  // in the same turn, as a box does that has its answer
    for (const char* text : {"just seen", "never seen", "elsewhere"}) {
      QTRY_VERIFY(Tip());
      QCOMPARE(tips.CurrentText(), QString(text));
      QTest::mouseClick(Tip(), Qt::LeftButton);
      QTRY_VERIFY(tips.CurrentText() != text);
    }
  }

  void WaitsForAWindowOnScreen() {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    for (QWidget* over : {window_.get(), static_cast<QWidget*>(nullptr)}) {
      window_->showMinimized();
      tips.ShowTip("refused", 1, over);
      QVERIFY(!Tip());
      window_->showNormal();
      QTRY_VERIFY(Tip() && Tip()->isVisible());
      QCOMPARE(tips.CurrentText(), QString("refused"));
      tips.TakeAway();
    }
  }

  void ComesWhereItIsSeen() {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    QWidget dialog;
    tips.ShowTip("dialog not open", 1, &dialog);
    QVERIFY(Tip() && Tip()->isVisible());
    tips.TakeAway();
    dialog.show();
    tips.ShowTip("saved", 0, &dialog);
    tips.ShowTip("done", 0, &dialog);
    QVERIFY(!Tip());
    dialog.hide();  // at once: no one has read it
    QTRY_VERIFY(Tip() && Tip()->isVisible());
    QCOMPARE(tips.CurrentText(), QString("saved"));
    QTest::mouseClick(Tip(), Qt::LeftButton);
    QTRY_COMPARE(tips.CurrentText(), QString("done"));
    QVERIFY(Tip());
  }

 private:
  // By the event loop's own order, which a slow machine does not change.
  static bool NextTipWithin(int milliseconds) {
    CMessageTipManager& tips = CMessageTipManager::Instance();
    QTimer late;
    late.setSingleShot(true);
    bool in_time = false;
    connect(&tips, &CMessageTipManager::SignalTipShown, &late, [&] { in_time = late.isActive(); });
    QSignalSpy shown(&tips, &CMessageTipManager::SignalTipShown);
    late.start(milliseconds);
    return shown.wait(30000) && in_time;
  }
  QFrame* Tip() const { return window_->findChild<QFrame*>("message_tip"); }

  std::unique_ptr<QWidget> window_;
  QLineEdit* edit_ = nullptr;
};

QTEST_MAIN(MessageTipsTest)
#include "test_message_tips.moc"

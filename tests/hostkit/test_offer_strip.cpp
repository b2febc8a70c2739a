#include <QAbstractButton>
#include <QAccessible>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

#include "MarUIControl/offer_strip.h"
#include "MarUIControl/offer_time.h"
#include "TarnUIDataController/skin_loader.h"

using MarUIControl::COfferStrip;
using MarUIControl::OfferTime;

class OfferStripTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack");
    window_ = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(window_.get());
    edit_ = new QLineEdit(window_.get());
    strip_ = new COfferStrip(window_.get());
    layout->addWidget(edit_);
    layout->addWidget(strip_);
    window_->resize(320, 200);
    window_->show();
    QCursor::setPos(window_->frameGeometry().bottomRight() + QPoint(50, 50));  // what is shown under it is held
    window_->activateWindow();
    edit_->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QVERIFY(!strip_->isVisible());
  }

  void cleanup() { window_.reset(); }

  void TimeIsHeldForAWhileOnly() {
    OfferTime time(10000, 30000);
    time.Pass(4000, false);
    QCOMPARE(time.PartLeft(), 0.6);
    time.Pass(29000, true);
    QCOMPARE(time.PartLeft(), 0.6);
    time.Pass(3000, true);  // one second of it is free
    QCOMPARE(time.PartLeft(), 0.4);
    time.Pass(3999, true);
    QVERIFY(!time.IsOver());
    time.Pass(60000, false);
    QVERIFY(time.IsOver());
    QCOMPARE(time.PartLeft(), 0.0);
  }

  void TakenOnceFromTheKeyboard() {
    QSignalSpy taken(strip_, &COfferStrip::SignalTaken);
    QSignalSpy over(strip_, &COfferStrip::SignalOver);
    int calls = 0;
    strip_->Offer("Deleted North gate. ", "Undo", 60, [&] {
      ++calls;
      QVERIFY(!strip_->isVisible());
    });
    QCOMPARE(QApplication::focusWidget(), edit_);
    QTest::keyClick(edit_, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), Button("offer_action"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), Button("offer_close"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(calls, 1);
    QCOMPARE(taken.size(), 1);
    QCOMPARE(QApplication::focusWidget(), edit_);
    strip_->Take();
    QCOMPARE(calls, 1);
    QVERIFY(over.isEmpty() && strip_->Text().isEmpty());
  }

  // Without and with a place for the focus in the window in between.
  void KnowsTheFocusAfterAnotherWindow() {
    for (const bool has_field : {false, true}) {
      QWidget other;
      QLineEdit field(&other);
      field.setEnabled(has_field);
      QLineEdit next(window_.get());  // where the focus falls when it has no place
      next.show();
      strip_->Offer("Deleted", "Undo", 60, {});
      edit_->setFocus();
      Button("offer_action")->setFocus();
      other.show();
      other.activateWindow();
      QVERIFY(QTest::qWaitForWindowActive(&other));
      QCOMPARE(field.hasFocus(), has_field);
      window_->activateWindow();
      QVERIFY(QTest::qWaitForWindowActive(window_.get()));
      QTRY_COMPARE(QApplication::focusWidget(), Button("offer_action"));
      strip_->Take();
      QCOMPARE(QApplication::focusWidget(), edit_);
    }
  }

  void EveryOtherEndCallsNothing() {
    QSignalSpy over(strip_, &COfferStrip::SignalOver);
    const auto offer = [this](int seconds) { strip_->Offer("Stopped", "Play again", seconds, [] { QFAIL("taken"); }); };
    offer(60);
    offer(60);
    QCOMPARE(over.size(), 1);
    Button("offer_close")->setFocus();
    QTest::keyClick(Button("offer_close"), Qt::Key_Escape);
    QCOMPARE(over.size(), 2);
    offer(60);
    QTest::mouseClick(Button("offer_close"), Qt::LeftButton);
    offer(60);
    strip_->Withdraw();
    QCOMPARE(over.size(), 4);
    offer(0);
    QTRY_COMPARE_WITH_TIMEOUT(over.size(), 5, 30000);
    QVERIFY(!strip_->isVisible() && !strip_->IsOffering());
  }

  void MouseOrFocusHoldTheTime() {
    QSignalSpy over(strip_, &COfferStrip::SignalOver);
    const auto hold_longer_than_another = [this] {
      COfferStrip other(window_.get());
      other.Offer("Stopped", "Play again", 1, {});
      return QTest::qWaitFor([&other] { return !other.IsOffering(); }, 30000) && strip_->IsOffering();
    };
    strip_->Offer("Deleted", "Undo", 1, {});
    Button("offer_action")->setFocus();
    QVERIFY(hold_longer_than_another());
    strip_->setAttribute(Qt::WA_UnderMouse);
    edit_->setFocus();
    QVERIFY(hold_longer_than_another());
    strip_->setAttribute(Qt::WA_UnderMouse, false);
    QTRY_COMPARE_WITH_TIMEOUT(over.size(), 1, 30000);
  }

  void CallbackCanOfferAgain() {
    strip_->Offer("first", "Undo", 60, [this] { strip_->Offer("second", "Undo", 60, {}); });
    strip_->Take();
    QVERIFY(strip_->isVisible());
    QCOMPARE(strip_->Text(), QString("second"));
  }

  void LongTextLeavesTheButtonsTheirRoom() {
    const QString text = "Deleted " + QString("<b>North</b> gate ").repeated(20);
    for (const char* skin : {"redblack", "white"}) {
      tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(skin);
      strip_->Offer(text, "Undo", 60, {});
      window_->resize(240, 200);
      QTRY_VERIFY(window_->rect().contains(strip_->geometry()) && window_->width() == 240);
      for (const char* name : {"offer_action", "offer_close"}) {
        QVERIFY(strip_->rect().contains(Button(name)->geometry()));
        QVERIFY(Button(name)->width() >= Button(name)->minimumSizeHint().width());
      }
      auto* label = strip_->findChild<QWidget*>("offer_text");
      QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), label->mapToGlobal(QPoint(5, 5)));
      QApplication::sendEvent(label, &help);
      QVERIFY(QToolTip::text().contains("North"));
      QToolTip::hideText();
    }
  }

  void IsAnAlertWithTheTextAsItsName() {
    strip_->Offer("first", "Undo", 60, {});
    strip_->Offer("second", "Undo", 60, {});
    QAccessibleInterface* strip = QAccessible::queryAccessibleInterface(strip_);
    QCOMPARE(strip->role(), QAccessible::AlertMessage);
    QCOMPARE(strip->text(QAccessible::Name), QString("second"));
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(Button("offer_action"));
    QCOMPARE(button->text(QAccessible::Description), QString("second"));
  }

 private:
  QAbstractButton* Button(const char* name) const { return strip_->findChild<QAbstractButton*>(name); }

  std::unique_ptr<QWidget> window_;
  QLineEdit* edit_ = nullptr;
  COfferStrip* strip_ = nullptr;
};

QTEST_MAIN(OfferStripTest)
#include "test_offer_strip.moc"

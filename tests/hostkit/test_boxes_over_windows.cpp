#include <QAbstractButton>
#include <QGuiApplication>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/shadow_widget.h"
#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/show_message_tip.h"
#include "TarnUIDataController/skin_loader.h"

using namespace MarUIControl;  // NOLINT: the test is about this library alone
using tarn_ui_data_controller::ShowMessageTip;

class BoxesOverWindowsTest : public QObject {
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

  void TipsAsk() {
    window_->show();
    QStringList said;
    // By a click on the button of this name, else by Esc.
    const auto answer = [&](int buttons, const QString& click, QWidget* over) {
      QTimer::singleShot(0, this, [&said, click] {
        QWidget* box = QApplication::activeModalWidget();
        const auto* text = box->findChild<QLabel*>("modal_tip_content");
        QCOMPARE(text->textFormat(), Qt::PlainText);  // names of plans are no markup
        said = QStringList(text->text());
        QAbstractButton* clicked = nullptr;
        for (auto* button : box->findChildren<QAbstractButton*>()) {
          if (button->isVisible()) {
            said << button->text();
            clicked = button->text() == click ? button : clicked;
          }
        }
        clicked ? clicked->click() : QTest::keyClick(box, Qt::Key_Escape);
      });
      return ShowMessageTip("Delete <b>it</b>?", CNomalMessage::Failure, over, buttons, "Delete");
    };
    const struct {
      int buttons;
      const char* click;
      int answer;
      const char* names;
    } rows[] = {{3, "Delete", 1, "Delete Cancel"},
                {3, "Cancel", 0, "Delete Cancel"},
                {3, "", 0, "Delete Cancel"},
                {1, "Delete", 1, "Delete"},
                {1, "", 0, "Delete"},
                {2, "Close", 0, "Close"},  // closing is no consent
                {2, "", 0, "Close"}};
    for (QWidget* over : {window_.get(), static_cast<QWidget*>(nullptr)}) {
      for (const auto& row : rows) {
        QCOMPARE(answer(row.buttons, row.click, over), row.answer);
        QCOMPARE(said.join(' '), QString("Delete <b>it</b>? ") + row.names);
      }
    }
    TarnHost::SetModalAnswer([](const TarnHost::ModalQuestion&) { return 1; });
    QCOMPARE(ShowMessageTip("Not empty", CNomalMessage::Failure, window_.get(), 2), 0);
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
  std::unique_ptr<QWidget> window_;
};

QTEST_MAIN(BoxesOverWindowsTest)
#include "test_boxes_over_windows.moc"

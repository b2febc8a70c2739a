#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeView>

#include "MarUIControl/string_conversion.h"
#include "TarnHost/host_services.h"
#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "creation_info_dlg.h"
#include "dialog_test.h"
#include "plan_test.h"
#include "share_view_wgt.h"

using namespace TarnPlanView;
using TarnTest::CDialogGround;
using view_plugin_protocol::ViewShareResquestInfo;

namespace {

constexpr char kShareLine[] = "LyraClientInfo 1 [TarnPlanView::CShareViewWgt::OnShareBtnClick(#)] - ";

TarnHost::PlanSite SiteOfFour() {
  TarnHost::PlanSite site = TarnTest::SmallSite();
  site.users.push_back({"<b>night</b>", {}});
  site.users.push_back({"guard", {}});
  return site;
}

/// A host that takes every share and reports an error with it.
class CErringServices : public TarnTest::CRecordingServices {
 public:
  using CRecordingServices::CRecordingServices;
  bool ViewShareUsers(const ViewShareResquestInfo&, view_plugin_protocol::ShareViewResponseInfo& response) override {
    response.error_code = 7;
    return true;
  }
};

}  // namespace

class ShareAndCreationTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void ListsTheOthers();
  void NoneChecked();
  void SharesWithThoseChecked();
  void HostRefuses();
  void ErrorInATrueAnswerIsSilent();
  void UsersUnknown();
  void ClosesWithTheActivation();
  void Keyboard();
  void CreationBox();

 private:
  void OpenPopup() {
    CDialogGround::PutCursor(QPoint(200, 300));
    popup_->ClearCheck();
    popup_->show();
    popup_->move(200, 100);
    popup_->SetShareViewIndexCode(MarUIControl::QStringToString(fixture_.Code("A1 plan 2")));
    popup_->RefreshUsers();
    QVERIFY(QTest::qWaitForWindowActive(popup_.get()));
  }
  QTreeView* Tree() { return popup_->findChild<QTreeView*>("user_tree_view_"); }
  QStandardItem* All() { return qobject_cast<QStandardItemModel*>(Tree()->model())->item(0); }
  QPushButton* ShareButton() { return popup_->findChild<QPushButton*>("share_button_"); }
  std::vector<ViewShareResquestInfo> Sent() { return Services().Requests<ViewShareResquestInfo>(); }
  static QString Tip() { return tarn_ui_data_controller::CMessageTipManager::Instance().CurrentText(); }
  QStringList LogLines() {
    QStringList lines = fixture_.Log().Lines();
    fixture_.Log().Clear();
    return lines.filter("TarnPlanView::CShare");
  }

  std::unique_ptr<CDialogGround> ground_;
  std::unique_ptr<CShareViewWgt> popup_;
};

void ShareAndCreationTest::init() {
  Open({}, false, SiteOfFour);
  ground_ = std::make_unique<CDialogGround>();
  popup_ = std::make_unique<CShareViewWgt>(ground_->Window());
  fixture_.Log().Clear();
  Services().ForgetCalls();
}

void ShareAndCreationTest::cleanup() {
  TarnHost::SetModalAnswer({});
  popup_.reset();
  ground_.reset();
  Shut();
}

void ShareAndCreationTest::ListsTheOthers() {
  OpenPopup();
  QCOMPARE(TarnTest::Outline(Tree()->model()), QString("All(viewer,<b>night</b>,guard)"));
  QVERIFY(Tree()->isExpanded(All()->index()));
  QVERIFY(!(All()->flags() & Qt::ItemIsEditable));
  // A check on the first row spreads; opening again takes all checks away and asks again.
  All()->setCheckState(Qt::Checked);
  QCOMPARE(All()->child(2)->checkState(), Qt::Checked);
  popup_->close();
  Services().ForgetCalls();
  OpenPopup();
  QCOMPARE(Services().Count("GetAllUserInfo"), 1);
  QCOMPARE(All()->checkState(), Qt::Unchecked);
  QCOMPARE(All()->child(2)->checkState(), Qt::Unchecked);
  QCOMPARE(All()->rowCount(), 3);
}

void ShareAndCreationTest::NoneChecked() {
  OpenPopup();
  QTest::mouseClick(ShareButton(), Qt::LeftButton);
  QVERIFY(Sent().empty() && popup_->isVisible());
  QCOMPARE(Tip(), QString("ShareUserNotSelectedxvCWOZhu"));
  QCOMPARE(LogLines(), QStringList(kShareLine + QString("UserId Null")));
}

void ShareAndCreationTest::SharesWithThoseChecked() {
  OpenPopup();
  All()->child(2)->setCheckState(Qt::Checked);
  All()->child(0)->setCheckState(Qt::Checked);
  const QString ids = QString("%1,%2").arg(All()->child(0)->data(257).toInt()).arg(All()->child(2)->data(257).toInt());
  QTest::mouseClick(ShareButton(), Qt::LeftButton);
  QCOMPARE(Sent().size(), size_t(1));
  QCOMPARE(QString::fromStdString(Sent()[0].user_ids), ids);
  QCOMPARE(QString::fromStdString(Sent()[0].plan_index_code), fixture_.Code("A1 plan 2"));
  QVERIFY(!popup_->isVisible());
  QCOMPARE(Tip(), QString("Orbis-ControlClient.0fe6c50bd0374aa995cf6c6f39844977.msg"));
  QCOMPARE(LogLines(), QStringList(kShareLine + QString("Share View Success")));
  QVERIFY(fixture_.Store().LogIn({"guard"}).IsDone());
  QTRY_VERIFY(!fixture_.Code("Shared").isEmpty());
}

void ShareAndCreationTest::HostRefuses() {
  Services().Fail("ViewShareUsers", "The user <b>night</b> is gone.");
  QStringList asked;
  TarnHost::SetModalAnswer([&](const TarnHost::ModalQuestion& question) {
    asked << QString("%1|%2|%3").arg(question.title, question.text).arg(question.buttons);
    return 0;
  });
  OpenPopup();
  All()->setCheckState(Qt::Checked);
  QTest::mouseClick(ShareButton(), Qt::LeftButton);
  QCOMPARE(asked, QStringList("Error 0|The user <b>night</b> is gone.|2"));
  QVERIFY(!popup_->isVisible());
  QCOMPARE(LogLines(), QStringList(kShareLine + QString("error_model: 0, error_code: 0, error_info: "
                                                        "The user <b>night</b> is gone.")));
  // The panel, and the pop-up with it, may go while the box is open.
  TarnHost::SetModalAnswer([this](const TarnHost::ModalQuestion&) {
    popup_.reset();
    return 0;
  });
  OpenPopup();
  All()->setCheckState(Qt::Checked);
  popup_->OnShareBtnClick();
  QVERIFY(!popup_);
}

void ShareAndCreationTest::ErrorInATrueAnswerIsSilent() {
  const auto real = TarnHost::InstalledHostServices();
  TarnHost::InstallHostServices(std::make_shared<CErringServices>(real));
  OpenPopup();
  All()->setCheckState(Qt::Checked);
  QTest::mouseClick(ShareButton(), Qt::LeftButton);
  TarnHost::InstallHostServices(real);
  QVERIFY(popup_->isVisible() && Tip().isEmpty() && LogLines().isEmpty());
}

void ShareAndCreationTest::UsersUnknown() {
  Services().Fail("GetCurrentUser");
  Services().Fail("GetAllUserInfo");
  OpenPopup();
  const QString line =
      "LyraClientInfo 1 [TarnPlanView::CShareViewModel::GetUserInfoInsert(#)] - GetAllUserInfo Get All User Failed";
  QCOMPARE(LogLines(), QStringList({line, line}));
  const auto* no_users = popup_->findChild<QLabel*>("no_users_label_");
  QVERIFY(no_users->isVisible() && !Tree()->isVisible() && !ShareButton()->isEnabled());
  QCOMPARE(ShareButton()->toolTip(), no_users->text());
  Services().Mend("GetAllUserInfo");
  popup_->RefreshUsers();
  QVERIFY(ShareButton()->isEnabled() && ShareButton()->toolTip().isEmpty());
  QVERIFY(Tree()->isVisible() && !no_users->isVisible());
  QCOMPARE(All()->rowCount(), 4);  // who asks is not known, so all are listed
}

void ShareAndCreationTest::ClosesWithTheActivation() {
  OpenPopup();
  CDialogGround::PutCursor(popup_->geometry().center());
  ground_->ActivateAnother();
  QVERIFY(popup_->isVisible());
  CDialogGround::Activate(popup_.get());
  CDialogGround::PutCursor(popup_->geometry().topLeft() - QPoint(1, 0));
  ground_->ActivateAnother();
  QVERIFY(!popup_->isVisible());
  popup_->show();
  popup_->move(-40, -40);
  QVERIFY(popup_->x() >= 0 && popup_->y() >= 0);
}

void ShareAndCreationTest::Keyboard() {
  OpenPopup();
  auto* find = popup_->findChild<QLineEdit*>("location_view_");
  QTRY_VERIFY(find->hasFocus());
  QTest::keyClicks(find, "guard");
  QTRY_COMPARE(Tree()->currentIndex().data().toString(), QString("guard"));
  QTest::keyClick(find, Qt::Key_Tab);
  QVERIFY(Tree()->hasFocus());
  QTest::keyClick(Tree(), Qt::Key_Space);
  QCOMPARE(All()->child(2)->checkState(), Qt::Checked);
  QCOMPARE(All()->checkState(), Qt::PartiallyChecked);
  QTest::keyClick(Tree(), Qt::Key_Escape);
  QVERIFY(!popup_->isVisible());
  OpenPopup();
  QCOMPARE(find->text(), QString());
  QTest::keyClicks(find, "guard");
  QTest::keyClick(find, Qt::Key_Return);  // before that was looked for
  QTRY_COMPARE(All()->child(2)->checkState(), Qt::Checked);
  QCOMPARE(find->selectedText(), QString("guard"));
  find->clear();
  QTest::keyClick(find, Qt::Key_Space);
  QCOMPARE(All()->child(2)->checkState(), Qt::Unchecked);
  QTest::keyClick(find, Qt::Key_Space);
  QTest::keyClick(find, Qt::Key_Return);
  QTRY_COMPARE(Sent().size(), size_t(1));
  OpenPopup();
  QTest::keyClick(find, Qt::Key_Escape);
  QVERIFY(!popup_->isVisible());
}

void ShareAndCreationTest::CreationBox() {
  using tarn_ui_data_controller::CSignalTransferManager;
  QSignalSpy modal(&CSignalTransferManager::Instance(), &CSignalTransferManager::signalModalityRequested);
  CCreationInfoDlg box(ground_->Window());
  QCOMPARE(box.windowModality(), Qt::WindowModal);
  box.SetCreationInfo("<b>night</b>", "2026-01-02 03:04:05");
  box.show();
  QVERIFY(QTest::qWaitForWindowActive(&box));
  auto* creator = box.findChild<QLabel*>("creator_info_widget");
  QCOMPARE(creator->text(), QString("<b>night</b>"));
  QCOMPARE(creator->textFormat(), Qt::PlainText);
  QCOMPARE(box.findChild<QLabel*>("creation_time_info_widget")->text(), QString("2026-01-02 03:04:05"));
  box.SetCreationInfo(QString(), QString());
  QCOMPARE(creator->text(), QString());
  QTRY_VERIFY(box.findChild<QPushButton*>("close_push_button")->hasFocus());
  QTest::keyClick(box.focusWidget(), Qt::Key_Return);
  QVERIFY(!box.isVisible());
  box.show();
  QTest::keyClick(&box, Qt::Key_Escape);
  QVERIFY(!box.isVisible());
  QCOMPARE(modal, (QList<QList<QVariant>>{{true}, {false}, {true}, {false}}));
}

QTEST_MAIN(ShareAndCreationTest)
#include "test_share_and_creation.moc"

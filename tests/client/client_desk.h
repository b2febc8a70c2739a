#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <memory>

#include "TarnHost/site_users.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "hand_clock.h"
#include "log_in/log_in_dialog.h"
#include "plan_fixture.h"
#include "plan_item_role.h"
#include "plan_view_tree.h"
#include "plans/plan_family.h"
#include "plans/plan_player.h"
#include "settings/user_settings.h"
#include "view_model_data_manager_export.h"
#include "wall/live_wall.h"
#include "window/main_window.h"

namespace TarnTest {

/// Base of tests with the client's whole window over a real store. After each test all is shut down in order, and a
/// warning no one expected fails.
class CClientDesk : public QObject {
  Q_OBJECT
 protected:
  void Open(const QMap<QString, int>& switches = {{"load_all", 1}}, const QString& user = "operator",
            const QString& url = "sqlite::memory:") {
    tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(skin_);
    PlanFixtureOptions options;
    options.switches = switches;
    options.user = user;
    options.url = url;
    options.now = now_;
    QString error;
    QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
    fixture_.Messages().Expect("propagateSizeHints");
    fixture_.Messages().Expect("QString::arg: Argument missing");  // keys without their texts have no places
    fixture_.Start();
    TarnClient::CMainWindow::Setup setup;
    setup.user = user;
    setup.station_id = QString::fromStdString(fixture_.Store().StationId());
    setup.log_in.log_in = [this](const auto& request, const auto& steps) {
      return fixture_.Store().LogIn(request, steps);
    };
    setup.log_in.check_password = [this](const auto& request) { return fixture_.Store().CheckPassword(request); };
    setup.log_in.has_password = [this](const QString& name) { return fixture_.Store().HasPassword(name); };
    auto clock = std::make_unique<CHandClock>();
    clock_ = clock.get();
    setup.cycle_clock = std::move(clock);
    setup.settings = settings_;
    if (settings_) {
      settings_->Load(setup.station_id, user);
    }
    window_ = std::make_unique<TarnClient::CMainWindow>(std::move(setup));
    FollowSwitches();
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    WaitForPlans();
  }
  /// Another user comes, whose plans are still to come.
  void SwitchUser(const QString& user) {
    QSignalSpy switched(window_.get(), &TarnClient::CMainWindow::SignalUserSwitched);
    window_->SwitchUser(user);
    QTRY_COMPARE(switched.size(), 1);
  }
  void SetPassword(const QString& name, const char* password) {
    TarnHost::SiteUsers site;
    std::string error;
    QVERIFY2(fixture_.Store().GetSiteUsers(site, &error), error.c_str());
    for (const auto& user : site.users) {
      if (user.name == name) {
        TarnHost::SiteUserChanges changes;
        changes.users.push_back({{user, user}, TarnHost::CSecret(password)});
        QVERIFY2(fixture_.Store().ChangeSiteUsers(changes, &error), error.c_str());
      }
    }
    QTRY_VERIFY(fixture_.Store().HasPassword(name));
  }
  TarnClient::CLogInDialog* LogInDialog() const { return window_->findChild<TarnClient::CLogInDialog*>(); }
  void TypeLogIn(const QString& user, const QString& password) const {
    LogInDialog()->findChild<QLineEdit*>("log_in_user")->setText(user);
    LogInDialog()->findChild<QLineEdit*>("log_in_password")->setText(password);
    LogInDialog()->findChild<QPushButton*>("log_in_confirm_btn")->click();
  }
  QString LogInFault() const { return LogInDialog()->findChild<QLabel*>("form_fault")->text(); }
  /// After a switch of user: for those of the new one.
  void WaitForPlans() {
    WaitForRows();
    CPlanFixture::Drain();
  }
  /// The same while a call is held.
  void WaitForRows() {
    QTRY_VERIFY(!old_plans_);
    QTRY_VERIFY(TarnPlanView::CViewModelDataManagerExport::Instance().IsViewModelInitFinish());
    QTRY_VERIFY(Row("Plans").isValid());
  }

  void CloseDesk() {
    window_.reset();
    tarn_ui_data_controller::CNomalMessageManager::Release();
    ForgetTips();
    QCOMPARE(fixture_.Close(), QStringList());
  }

  TarnClient::CLiveWall& Wall() { return window_->Wall(); }
  TarnPlanView::CPlanViewTree* Tree(size_t family = 0) { return window_->Family(family).Panel()->GetPlanViewTree(); }
  QModelIndex Row(const QString& name, size_t family = 0) { return Rows(Qt::DisplayRole, name, family).value(0); }
  std::string Code(const QString& name) const { return fixture_.Code(name).toStdString(); }
  /// Names of all rows that are marked as playing, of both families.
  QString MarkedRows() {
    QStringList names;
    for (size_t family = 0; family < window_->FamilyCount(); ++family) {
      for (const QModelIndex& row : Rows(TarnPlanView::PlayingRole, true, family)) {
        names << row.data().toString();
      }
    }
    return names.join(',');
  }
  void Play(const QString& name) {
    window_->Player().Play(Code(name));
    QTRY_COMPARE(Wall().PlanName(), name);
  }
  view_plugin_protocol::GetPlanDetailResponse Stored(const QString& name) {
    return fixture_.InStore().Detail(Code(name));
  }
  static QString Tip() { return tarn_ui_data_controller::CMessageTipManager::Instance().CurrentText(); }
  static void ForgetTips() { tarn_ui_data_controller::CMessageTipManager::Release(); }

  QString skin_ = QStringLiteral("redblack");  // of the next Open()
  std::function<QDateTime()> now_;             // the store's clock from the next Open() on
  CPlanFixture fixture_;
  std::unique_ptr<TarnClient::CMainWindow> window_;
  CHandClock* clock_ = nullptr;
  TarnClient::CUserSettings* settings_ = nullptr;  // of the next Open(); null: nothing is kept

 private:
  // A new user's plans come with the store's notice, so at first all is still as it was for the last user; one who was
  // deleted sees none.
  void FollowSwitches() {
    old_plans_ = false;
    connect(window_.get(), &TarnClient::CMainWindow::SignalUserSwitched, this,
            [this] { old_plans_ = fixture_.Public()->rowCount() > 0; });
    connect(fixture_.Public(), &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex& parent) { old_plans_ = old_plans_ && parent.isValid(); });
  }
  QModelIndexList Rows(int role, const QVariant& value, size_t family) {
    const QAbstractItemModel* rows = Tree(family)->model();
    const auto exactly = Qt::MatchExactly | Qt::MatchRecursive;
    return rows && rows->rowCount() > 0 ? rows->match(rows->index(0, 0), role, value, -1, exactly) : QModelIndexList();
  }

  bool old_plans_ = false;

 private Q_SLOTS:
  void cleanup() { CloseDesk(); }
};

}  // namespace TarnTest

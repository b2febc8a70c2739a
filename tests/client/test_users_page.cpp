#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTreeWidget>
#include <QtTest>

#include "MarUIControl/line_edit.h"
#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "plan_test.h"
#include "users/users_page.h"

using namespace TarnClient;
using TarnHost::SiteUser;
using TarnHost::SiteUsers;

/// The page of the settings on which users, user groups and limits are kept.
class UsersPageTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup() {
    page_.reset();
    TarnHost::SetModalAnswer(nullptr);
    Shut();
  }
  void ShowsUsers();
  void MakesAndChangesAUser();
  void KeepsPasswordsToThemselves();
  void LimitsAGroup();
  void DeletesAfterAQuestion();
  void SaysWhatCannotBe();

 private:
  void OpenPage() {
    Open({}, true);
    fixture_.Messages().Expect("propagateSizeHints");
    fixture_.Messages().Expect("raise()");
    page_ = std::make_unique<CUsersPage>();
    page_->resize(900, 600);
    page_->show();
    page_->activateWindow();
    QTRY_VERIFY(!Rows().isEmpty());
  }
  QTreeWidget* List() const { return page_->findChild<QTreeWidget*>("users_list"); }
  template <class Widget = QPushButton>
  Widget* Part(const char* name) const {
    return page_->findChild<Widget*>(name);
  }
  QStringList Rows() const {
    QStringList rows;
    for (int row = 0; row < List()->topLevelItemCount(); ++row) {
      QStringList texts;
      for (int column = 0; column < List()->columnCount(); ++column) {
        texts << List()->topLevelItem(row)->text(column);
      }
      rows << texts.join('|');
    }
    return rows;
  }
  void Choose(const QString& name) const {
    const auto found = List()->findItems(name, Qt::MatchExactly);
    QVERIFY2(!found.isEmpty(), qPrintable(name));
    List()->setCurrentItem(found.first());
  }
  void ShowKind(int kind) const { Part<QTabBar>("users_kinds")->setCurrentIndex(kind); }
  void Type(const char* field, const QString& text) const { Part<QLineEdit>(field)->setText(text); }
  void Check(const char* list, const QString& item) const {
    Part<QListWidget>(list)->findItems(item, Qt::MatchExactly).first()->setCheckState(Qt::Checked);
  }
  QString Fault() const { return Part<QLabel>("form_fault")->text(); }
  void AddUserGroup(const QString& name, const QString& member) {
    ShowKind(1);
    Part("users_add_btn")->click();
    Type("user_group_name", name);
    Check("user_group_members", member);
    Part("user_group_form_confirm_btn")->click();
    QTRY_VERIFY(Rows().contains(name + '|' + member));
  }

  std::unique_ptr<CUsersPage> page_;
};

void UsersPageTest::ShowsUsers() {
  OpenPage();
  QVERIFY(Rows().contains("operator|add, change, delete, configure||none"));
  ShowKind(1);
  QVERIFY(Rows().isEmpty() && Part<QLabel>("site_state")->text().contains("no user groups yet"));
  QVERIFY(Part("users_add_btn")->isEnabled() && !Part("users_remove_btn")->isEnabled());
  ShowKind(2);
  QVERIFY(!Part("users_add_btn")->isEnabled());  // to whom?
  page_.reset();
  fixture_.Services().Fail("GetSiteUsers", "The line is down");
  page_ = std::make_unique<CUsersPage>();
  QTRY_VERIFY(Part<QLabel>("site_state")->text().contains("The line is down"));
  QVERIFY(!Part("users_add_btn")->isEnabled());
}

void UsersPageTest::MakesAndChangesAUser() {
  OpenPage();
  AddUserGroup("Owls", "operator");
  ShowKind(0);
  Part("users_add_btn")->click();
  Type("user_name", "Weber");
  Part<QCheckBox>("user_right_6")->setChecked(true);
  Check("user_groups", "Owls");
  Part("user_form_confirm_btn")->click();
  QTRY_VERIFY(Rows().contains("Weber|change|Owls|none"));
  Choose("Weber");
  Part("users_edit_btn")->click();
  Type("user_name", "Weber B");
  Part<QCheckBox>("user_right_6")->setChecked(false);
  Part("user_form_confirm_btn")->click();
  QTRY_VERIFY(Rows().contains("Weber B||Owls|none"));
  QCOMPARE(List()->currentItem()->text(0), QString("Weber B"));
  ShowKind(1);
  QCOMPARE(Rows(), QStringList("Owls|operator, Weber B"));
}

void UsersPageTest::KeepsPasswordsToThemselves() {
  OpenPage();
  Choose("viewer");
  const auto open = [this] { Part("users_edit_btn")->click(); };
  const auto save = [this] { Part("user_form_confirm_btn")->click(); };
  open();
  Part<QCheckBox>("user_has_password")->setChecked(true);
  save();
  QVERIFY(Fault().contains("Type a password"));
  Type("user_password", "gate 7");
  save();
  QVERIFY(Fault().contains("not the same"));
  Type("user_password_again", "gate 7");
  save();
  QTRY_VERIFY(Rows().filter("viewer").join("").endsWith("|yes"));
  QCOMPARE(fixture_.Store().LogIn({"viewer", TarnHost::CSecret("gate 8")}).outcome,
           TarnHost::LogInOutcome::kWrongPassword);
  QTRY_VERIFY(!Part<QDialog>("user_form"));
  open();
  QVERIFY(Part<QLineEdit>("user_password")->text().isEmpty());
  save();  // left empty, it stays
  QTRY_VERIFY(!Part<QDialog>("user_form"));
  QVERIFY(fixture_.Store().CheckPassword({"viewer", TarnHost::CSecret("gate 7")}).IsDone());
  open();
  Part<QCheckBox>("user_has_password")->setChecked(false);
  save();
  QTRY_VERIFY(Rows().filter("viewer").join("").endsWith("|none"));
}

void UsersPageTest::LimitsAGroup() {
  OpenPage();
  AddUserGroup("Owls", "operator");
  ShowKind(2);
  Part("users_add_btn")->click();
  Type("limit_path", "Nowhere");
  Check("limit_user_groups", "Owls");
  Part("limit_form_confirm_btn")->click();
  QVERIFY(Fault().contains("no one group"));
  SiteUsers site;
  std::string error;
  QVERIFY(fixture_.Store().GetSiteUsers(site, &error) && !site.groups.empty());
  const QString path = site.groups.front().path;
  Type("limit_path", path);
  Part("limit_form_confirm_btn")->click();
  QTRY_COMPARE(Rows(), QStringList(path + "|Owls"));
}

void UsersPageTest::DeletesAfterAQuestion() {
  OpenPage();
  QStringList questions;
  bool answer = false;
  TarnHost::SetModalAnswer([&](const TarnHost::ModalQuestion& question) {
    questions << question.text;
    return answer ? 1 : 0;
  });
  Choose("viewer");
  Part("users_remove_btn")->click();
  QVERIFY(questions.size() == 1 && questions.first().contains("viewer"));
  QVERIFY(Rows().join(";").contains("viewer"));
  answer = true;
  Part("users_remove_btn")->click();
  QTRY_VERIFY(!Rows().join(";").contains("viewer"));
}

// Of two administrators the second learns what the first has done, and keeps what was typed.
void UsersPageTest::SaysWhatCannotBe() {
  OpenPage();
  Choose("viewer");
  Part("users_edit_btn")->click();
  Type("user_name", "watcher");
  SiteUsers site;
  std::string error;
  QVERIFY(fixture_.Store().GetSiteUsers(site, &error));
  TarnHost::SiteUserChanges changes;
  for (const SiteUser& user : site.users) {
    if (user.name == "viewer") {
      SiteUser after = user;
      after.rights = {7};
      changes.users.push_back({{user, after}, std::nullopt});
    }
  }
  QVERIFY(fixture_.Store().ChangeSiteUsers(changes, &error));
  Part("user_form_confirm_btn")->click();
  QTRY_VERIFY(Fault().contains("changed by somebody else"));
  QCOMPARE(Part<QLineEdit>("user_name")->text(), QString("watcher"));
  Part("form_cancel_btn")->click();
  QTRY_VERIFY(Rows().contains("viewer|delete||none"));
  Choose("operator");
  Part("users_edit_btn")->click();
  Part<QCheckBox>("user_right_8")->setChecked(false);
  Part("user_form_confirm_btn")->click();
  QTRY_VERIFY(Fault().contains("last user"));
}

QTEST_MAIN(UsersPageTest)
#include "test_users_page.moc"

#include "cold_site.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QtTest>
#include <utility>

#include "TarnHost/store_care.h"
#include "TarnHost/store_copies.h"

namespace StoreTest {

using TarnHost::StoreCopies;
using TarnHost::StoreTrouble;

namespace {

TarnHost::PlanSite ColdSite() {
  auto site = SmallSite();
  site.users = {{"ann", {5, 6, 7, 8}}, {"bob", {5, 6}}, {"cid", {5}}};
  site.user_groups = {{"Guards", {1}}};
  site.groups[1].audience = {0};
  site.cameras.push_back({"Gate camera", 0, true, {}, {0}});
  site.plans.back().auto_run = true;
  site.plans.back().begin_time = "00:00:00";
  site.plans.back().end_time = "23:59:59";
  site.switches = {{"timed_play", 1}};
  return site;
}

}  // namespace

TarnHost::LogInRequest As(const char* user, const char* password) {
  return {QString::fromUtf8(user), TarnHost::CSecret(password)};
}

QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

void CColdTest::init() {
  CStoreTest::init();
  if (!CStoreFixture::OnPostgres()) {
    QSKIP("only a server can be away");
  }
  fixture_->options.first_content = ColdSite;
  fixture_->MakeRoles();
  folder_ = std::make_unique<QTemporaryDir>();
  line_ = std::make_unique<CFaultyLine>(QUrl(fixture_->Url()));
  seen_.clear();
  asked_ = 0;
  servers_ = 1;
  const CDirectAccess owner(fixture_->Url());
  owner.Run(QString("INSERT INTO camera_access VALUES (1001, $$%1$$, $$%2$$, '')").arg(kLogin, kSecret));
  owner.Run("UPDATE camera_stream SET url = 'rtsp://cameras.example/1' WHERE camera_id = 1001");
  owner.Run(
      QString("UPDATE camera_stream SET url = 'rtsp://cameras.example/2?%1' WHERE camera_id = 1002").arg(kHidden));
  owner.Run("UPDATE camera_stream SET url = 'rtsp://cameras.example/3' WHERE camera_id = 1003");
}

void CColdTest::cleanup() {
  for (const QString& role : std::exchange(asked_roles_, {})) {
    CDirectAccess(CStoreFixture::SuperuserUrl()).Run("REVOKE asks_for_password FROM " + role);
  }
  line_.reset();
  folder_.reset();
  CStoreTest::cleanup();
}

void CColdTest::Accounts() {
  QTest::addColumn<bool>("roles");
  QTest::newRow("under the users' roles") << true;
  QTest::newRow("under the owner's account") << false;
}

TarnHost::PlanStoreOptions CColdTest::OptionsOf(const QString& user, bool roles) const {
  auto options = fixture_->options;
  QUrl url(line_->Url());
  url.setUserName(roles ? user : url.userName());
  const QString server = url.host() + ':' + QString::number(url.port());
  options.url = url.toString().replace(server, QStringList(QVector<QString>(servers_, server).toList()).join(','));
  options.copies = Folder();
  options.copy_pause = std::chrono::milliseconds(50);
  return options;
}

QString CColdTest::File() const {
  const QDir folder(Folder());
  return folder.filePath(folder.entryList({"*.copy"}, QDir::Files).value(0));
}

QString CColdTest::InCopy(const QString& statement) const {
  return QFileInfo(File()).isFile() ? CDirectAccess("sqlite:" + File()).Try(statement) : QString();
}

QStringList CColdTest::UsersWithCopies() const {
  QStringList users;
  for (const auto& copy : StoreCopies::Of(Folder(), OptionsOf("cid", false).url)) {
    users.append(copy.user);
  }
  users.sort();
  return users;
}

std::shared_ptr<TarnHost::CPlanStore> CColdTest::OpenAs(const TarnHost::PlanStoreOptions& options,
                                                        const TarnHost::LogInRequest& user) {
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn(user).IsDone() ||
      !QTest::qWaitFor([&] { return store->IsViewResourceDownFinish(); }, kColdWaitMs)) {
    qFatal("the store does not get ready: %s", qPrintable(error));
  }
  return store;
}

CClient CColdTest::Cold(const TarnHost::LogInRequest& user, bool roles) {
  auto options = OptionsOf(user.user, roles);
  options.shows_of = user.user;
  options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
  options.on_password_asked = [this] { ++asked_; };
  return CClient(OpenAs(options, user));
}

void CColdTest::Keep(const TarnHost::LogInRequest& user, bool roles, const QString& plan) const {
  const CClient desk = Online(user, roles);
  QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains(plan), kColdWaitMs);
}

void CColdTest::KeepCopy(const TarnHost::LogInRequest& user, bool roles, size_t copies) const {
  auto options = OptionsOf(user.user, roles);
  options.account = roles ? user : TarnHost::LogInRequest();
  const CClient desk(OpenAs(options, user));
  QTRY_COMPARE_WITH_TIMEOUT(StoreCopies::Of(Folder(), options.url).size(), copies, kColdWaitMs);
}

void CColdTest::SetPassword(const QString& user, const char* password) const {
  TarnHost::SiteUsers users;
  QString error;
  TarnHost::StoreCare::ReadUsers(fixture_->Url(), &users, &error);
  TarnHost::SiteUserChanges changes;
  for (const TarnHost::SiteUser& one : users.users) {
    if (one.name == user) {
      changes.users.emplace_back();
      changes.users.back().before = changes.users.back().after = one;
      changes.users.back().password = TarnHost::CSecret(password);
    }
  }
  QVERIFY2(TarnHost::StoreCare::ChangeUsers(fixture_->Url(), changes, &error), qPrintable(error));
}

void CColdTest::AskForPasswords(const QStringList& roles) {
  asked_roles_ = roles;
  for (const QString& role : roles) {
    CDirectAccess(CStoreFixture::SuperuserUrl()).Run("GRANT asks_for_password TO " + role);
  }
}

}  // namespace StoreTest

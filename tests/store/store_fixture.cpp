#include "store_fixture.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QtTest>

#include "TarnHost/store_care.h"

namespace StoreTest {
namespace {

using TarnHost::PlanSite;
using TarnTest::SitePlan;

// A database of its own in the server that the environment names.
QString NewPostgresDatabase() {
  static int number = 0;
  QUrl url(QString::fromLocal8Bit(qgetenv("TARN_TEST_POSTGRES")));
  const QString name = QStringLiteral("store_%1_%2").arg(QCoreApplication::applicationPid()).arg(++number);
  url.setPath("/postgres");
  CDirectAccess(url.toString()).Run("CREATE DATABASE " + name);
  url.setPath("/" + name);
  return url.toString();
}

}  // namespace

CDirectAccess::CDirectAccess(const QString& address) {
  static int number = 0;
  name_ = QString("direct %1").arg(++number);
  const QUrl url(address);
  const bool file = url.scheme() == "sqlite";
  QSqlDatabase database = QSqlDatabase::addDatabase(file ? "QSQLITE" : "QPSQL", name_);
  database.setHostName(url.host());
  database.setPort(url.port());
  database.setUserName(url.userName());
  database.setDatabaseName(file ? url.path() : url.path().mid(1));
  database.open();
}

CDirectAccess::~CDirectAccess() {
  QSqlDatabase::removeDatabase(name_);
}

QString CDirectAccess::Run(const QString& statement) const {
  const QString answer = Try(statement);
  if (answer.startsWith('!')) {
    qFatal("%s fails: %s", qPrintable(statement), qPrintable(answer));
  }
  return answer;
}

QString CDirectAccess::Try(const QString& statement) const {
  QSqlQuery query(QSqlDatabase::database(name_, false));
  if (!query.exec(statement)) {
    return '!' + query.lastError().text();
  }
  return query.next() ? query.value(0).toString() : QString();
}

PlanSite SmallSite() {
  PlanSite site;
  site.root_name = "All plans";
  site.users = {{"ann", {5, 6, 7}}, {"bob", {5, 6}}, {"cid", {}}, {"dora", {7}}, {"eve", {5}}, {"fred", {6}}};
  site.regions = {{"Yard", -1}};
  site.cameras = {{"Lane camera", 0, true, {"Wide", "Close"}, {0, 1}}, {"Yard camera", 0, false, {}, {0}}};
  site.groups = {
      {"Gates", -1, 0, -1}, {"North", 0, 0, -1}, {"Ann's", -1, 1, 0}, {"Bob's", -1, 1, 1}, {"Common", -1, 2, -1}};
  const std::vector<view::PlanPage> pages = {CameraPage(1, 2, {"#0", "#1"}), CameraPage(2, 1)};
  site.plans = {SitePlan("Gate A", 0, 0, -1, pages), SitePlan("Gate B", 1, 0, -1, pages),
                SitePlan("Ann's gate", 2, 1, 0, pages), SitePlan("Bob's gate", 3, 1, 1, pages),
                SitePlan("Top", -1, 0, -1, pages)};
  return site;
}

bool CStoreFixture::OnPostgres() {
  return qEnvironmentVariableIsSet("TARN_TEST_POSTGRES");
}

QString CStoreFixture::SuperuserUrl() {
  return QString::fromLocal8Bit(qgetenv("TARN_TEST_POSTGRES_SUPERUSER")) + "/postgres";
}

bool CStoreFixture::UnderRoles() {
  return qEnvironmentVariableIsSet("TARN_TEST_ROLES");
}

CStoreFixture::CStoreFixture() {
  options.url = OnPostgres() ? NewPostgresDatabase() : "sqlite:" + folder_.filePath("plans.db");
  options.first_content = SmallSite;
}

QString CStoreFixture::File() const {
  return options.url.mid(7);
}

void CStoreFixture::RunPastTheStore(const QString& statement) const {
  const CDirectAccess access(options.url);
  access.Run(statement);
  if (OnPostgres()) {
    access.Run("NOTIFY tarn_changes");
  }
}

QString CStoreFixture::OpeningError() const {
  QString error;
  return TarnHost::CPlanStore::Open(options, &error) ? QString() : error;
}

QString CStoreFixture::UrlOf(const QString& user) const {
  QUrl url(options.url);
  url.setUserName(user);
  return url.toString();
}

void CStoreFixture::AgeDeletions() const {
  if (OnPostgres()) {
    RunPastTheStore("UPDATE deletion SET noted_at = now() - interval '1 hour'");
  }
}

void CStoreFixture::MakeRoles() const {
  QString said, error;
  if (!TarnHost::CPlanStore::Open(options, &error) || !TarnHost::StoreCare::UseRoles(options.url, &said, &error)) {
    qFatal("there are no roles: %s", qPrintable(error));
  }
  has_roles_ = true;
}

std::shared_ptr<TarnHost::CPlanStore> CStoreFixture::OpenAs(const QString& user) const {
  QString error;
  TarnHost::PlanStoreOptions as_user = options;
  if (UnderRoles()) {
    as_user.url = UrlOf(user);
  }
  auto store = TarnHost::CPlanStore::Open(as_user, &error);
  if (!store) {
    qFatal("the store cannot be opened: %s", qPrintable(error));
  }
  return store;
}

std::shared_ptr<TarnHost::CPlanStore> CStoreFixture::Open(const QString& user) const {
  if (UnderRoles() && !has_roles_) {
    MakeRoles();
  }
  QString error;
  auto store = OpenAs(user);
  if (!store || !TarnTest::LogIn(*store, user, &error)) {
    qFatal("the store does not get ready: %s", qPrintable(error));
  }
  return store;
}

CWritersHold::CWritersHold(const CStoreFixture& fixture) : access_(fixture.Url()) {
  access_.Run(CStoreFixture::OnPostgres() ? "BEGIN" : "BEGIN IMMEDIATE");
  if (CStoreFixture::OnPostgres()) {
    access_.Run("LOCK TABLE counter IN EXCLUSIVE MODE");
  }
}

TarnHost::CPlanStore* CClient::operator->() const {
  if (!desk_->store) {
    desk_->store = desk_->fixture->Open(desk_->user);
  }
  return desk_->store.get();
}

QStringList AnswersToAStranger(const CClient& stranger, const CClient& owner, const std::string& group,
                               const std::string& plan, const std::string& own) {
  return {stranger.Groups(group).value(0),
          stranger.Plans(group).value(0),
          QString::fromStdString(stranger.Detail(plan).error_info),
          stranger.AddGroup(group, "x"),
          stranger.AddPlan(group, "x"),
          stranger.RenameGroup(group, "x"),
          stranger.DeleteGroup(group),
          stranger.Update(owner.Unchanged(plan)),
          stranger.DeletePlan(plan),
          stranger.Share(plan, "3"),
          stranger.SetDefaultView(plan, kPlanType),
          stranger.SetDefaultView(group, kGroupType),
          stranger.Update(TarnTest::ChangedPlan(own, "Put in", group))};
}

void CStoreTest::init() {
  fixture_ = std::make_unique<CStoreFixture>();
  ann_ = CClient(fixture_.get(), "ann");
  bob_ = CClient(fixture_.get(), "bob");
}

void CStoreTest::FollowTroubles(const std::set<TarnHost::StoreTrouble>& wanted) {
  troubles_.clear();
  fixture_->options.on_trouble = [this, wanted](TarnHost::StoreTrouble trouble, const QString& line) {
    QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
    QVERIFY(line.isEmpty() ? trouble == TarnHost::StoreTrouble::kNone : wanted.count(trouble) != 0);
    troubles_.append(line);
  };
}

void CStoreTest::cleanup() {
  ann_.Leave();
  bob_.Leave();
  fixture_.reset();
}

}  // namespace StoreTest

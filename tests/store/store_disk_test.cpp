// Each write and sync of a save fails in turn: the store stays sound, and holds what it held before or what was saved.
#include <QFile>
#include <QtTest>

#include "TarnHost/store_care.h"
#include "failing_disk.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

constexpr int kMostWrites = 1000, kGoesOnMs = 30000, kMostSaid = 1000;

std::list<view::PlanPage> FullPages(int count) {
  std::list<view::PlanPage> pages;
  for (int number = 1; number <= count; ++number) {
    pages.push_back(CameraPage(number, 8, std::vector<std::string>(16, "1001")));
  }
  return pages;
}

QString Remains(const QString& file) {
  QStringList findings;
  QString summary, error;
  if (!TarnHost::StoreCare::Check("sqlite:" + file, &findings, &summary, &error)) {
    return error;
  }
  return findings.join('\n');
}

}  // namespace

class StoreDiskTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void HoldsTheStateBeforeOrAfter_data();
  void HoldsTheStateBeforeOrAfter();

 private:
  /// One round: the save while the disk fails, then what is there. Answers whether the fault came to pass.
  bool SaveWhile(CFailingDisk::Fault fault, int number);
  QString Save(const CClient& client) const;
  /// Names and contents of the plans, as a client that opens the store reads them.
  QString State() const;
  QString StateOf(const CClient& client) const;
  void TakeBase() const;

  std::unique_ptr<CStoreFixture> fixture_;
  QByteArray base_;
  QString what_, before_, after_;
  int refused_ = 0, refused_but_saved_ = 0;
};

void StoreDiskTest::init() {
  fixture_ = std::make_unique<CStoreFixture>();
  fixture_->Make();
  QFile file(fixture_->File());
  QVERIFY(file.open(QIODevice::ReadOnly) && !QFile::exists(fixture_->File() + "-wal"));
  base_ = file.readAll();
}

void StoreDiskTest::TakeBase() const {
  for (const char* end : {"-wal", "-shm"}) {
    QFile::remove(fixture_->File() + end);
  }
  QFile file(fixture_->File());
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(base_) != base_.size()) {
    qFatal("the store cannot be set back");
  }
}

QString StoreDiskTest::Save(const CClient& client) const {
  const std::string gate = client.Plan("Gate A");
  if (what_ == "add") {
    auto plan = TarnTest::NewPlan("Added", "-1", FullPages(20));
    plan.thumbnail = std::string(6000, 'p');
    return client.AddPlan(plan);
  }
  if (what_ == "delete") {
    return client.DeleteGroup(client.Group("-1", "Gates"));
  }
  auto change = client.Unchanged(gate);
  change.plan_name = "Changed";
  change.pages = FullPages(8);
  return client.Update(change);
}

QString StoreDiskTest::StateOf(const CClient& client) const {
  QStringList rows = client.Groups("-1") + client.Plans("-1");
  for (const char* name : {"Gate A", "Gate B", "Changed", "Added"}) {
    const std::string code = client.Plan(name);
    if (!code.empty()) {
      const auto plan = client.Detail(code);
      rows << QString::fromStdString(plan.error_info + plan.name + TarnTest::Words(plan.pages));
    }
  }
  return rows.join('\n');
}

QString StoreDiskTest::State() const {
  return StateOf(CClient(fixture_->Open()));
}

bool StoreDiskTest::SaveWhile(CFailingDisk::Fault fault, int number) {
  TakeBase();
  const CClient client(fixture_->Open());
  StateOf(client);  // all that reading has to write is written
  bool came_to_pass = false;
  QString error;
  {
    const CFailingDisk disk(fixture_->File(), fault, number);
    error = Save(client);
    if (fault == CFailingDisk::kStaysFull) {
      client.Leave();  // and has to close on it
    }
    came_to_pass = CFailingDisk::Count() >= number;
  }
  const auto where = [&] { return QString("%1, write %2: %3\n").arg(what_).arg(number).arg(error); };
  // The client's own rows are true, and it goes on when the disk does.
  if (fault != CFailingDisk::kStaysFull) {
    QString again;
    const auto goes_on = [&] { return (again = client.AddGroup("-1", "Later")).isEmpty(); };
    if (!QTest::qWaitFor(goes_on, kGoesOnMs)) {
      qFatal("%s", qPrintable(where() + again));
    }
    if (client.Groups("-1").count("Later@-1") != 1 || !client.DeleteGroup(client.Group("-1", "Later")).isEmpty()) {
      qFatal("%s", qPrintable(where() + client.Groups("-1").join(' ')));
    }
  }
  client.Leave();
  const QString remains = Remains(fixture_->File()), state = State();
  if (!remains.isEmpty() || (state != after_ && (error.isEmpty() || state != before_))) {
    qFatal("%s", qPrintable(where() + remains + '\n' + state.left(kMostSaid)));
  }
  refused_ += error.isEmpty() ? 0 : 1;
  refused_but_saved_ += !error.isEmpty() && state == after_ ? 1 : 0;
  return came_to_pass;
}

void StoreDiskTest::HoldsTheStateBeforeOrAfter_data() {
  QTest::addColumn<QString>("what");
  QTest::addColumn<int>("fault");
  for (const char* what : {"add", "change", "delete"}) {
    QTest::addRow("%s, an error of the disk", what) << what << int(CFailingDisk::kFailsOnce);
    QTest::addRow("%s, a torn write", what) << what << int(CFailingDisk::kTornOnce);
    QTest::addRow("%s, a full disk", what) << what << int(CFailingDisk::kStaysFull);
  }
}

void StoreDiskTest::HoldsTheStateBeforeOrAfter() {
  QFETCH(QString, what);
  QFETCH(int, fault);
  what_ = what;
  refused_ = refused_but_saved_ = 0;
  before_ = State();
  {
    const CClient client(fixture_->Open());
    QCOMPARE(Save(client), QString());
    after_ = StateOf(client);
  }
  QVERIFY(after_ != before_);
  int number = 1;
  while (number < kMostWrites && SaveWhile(static_cast<CFailingDisk::Fault>(fault), number)) {
    ++number;
  }
  qInfo("%d writes and syncs, %d saves refused, of these %d are there", number - 1, refused_, refused_but_saved_);
  QVERIFY(number > 5 && number < kMostWrites && refused_ > 0);
}

QTEST_GUILESS_MAIN(StoreDiskTest)
#include "store_disk_test.moc"

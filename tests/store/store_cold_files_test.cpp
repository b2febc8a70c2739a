#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include "TarnHost/store_care.h"
#include "TarnHost/store_copies.h"
#include "cold_site.h"

using namespace StoreTest;
using TarnHost::LogInOutcome;
using TarnHost::StoreCopies;

/// The file of a copy: damaged, cut off, of another state of the site, of users who are gone.
class StoreColdFilesTest : public CColdTest {
  Q_OBJECT
 private Q_SLOTS:
  void RefusesWhatIsNoCopy_data();
  void RefusesWhatIsNoCopy();
  void TakesBackWhatAPowerCutLeft();
  void IsReadWhileItIsBroughtUp();
  void FollowsAServerThatWasPutBack();
  void ForgetsWhoIsGone();
  void LeavesTheCopiesOfOthers_data();
  void LeavesTheCopiesOfOthers();

 private:
  /// As the disk is after a power cut in the midst of a long update.
  static void CutPower(const QString& path) {
    QByteArray file, journal;
    {
      const CDirectAccess copy("sqlite:" + path);
      copy.Run("PRAGMA cache_size = 10");
      copy.Run("BEGIN IMMEDIATE");
      copy.Run("UPDATE plan SET name = 'half'");
      copy.Run(
          "WITH RECURSIVE row(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM row WHERE i < 500)"
          " INSERT INTO plan_log SELECT '', i, hex(zeroblob(1000)), 0, 0 FROM row");
      file = BytesOf(path);
      journal = BytesOf(path + "-journal");
      copy.Run("ROLLBACK");
    }
    QVERIFY(file.contains("half") && !journal.isEmpty() && file.size() > QFileInfo(path).size());
    QVERIFY(Write(path, file) && Write(path + "-journal", journal));
  }
  /// Under the numbers that the site gave last, other changes were made.
  void PutBack(const QString& top) const {
    fixture_->RunPastTheStore("UPDATE change_log SET origin = 'another desk' || seq || origin");
    fixture_->RunPastTheStore(QString("UPDATE plan SET name = '%1', checksum = '%1' WHERE parent_code = -1").arg(top));
    fixture_->RunPastTheStore(QString("UPDATE camera_name SET name = '%1' || number").arg(top));
  }
};

void StoreColdFilesTest::RefusesWhatIsNoCopy_data() {
  QTest::addColumn<QString>("fault");
  for (const char* fault : {"cut", "empty", "foreign", "newer", "older", "another user's", "no copy", "gone"}) {
    QTest::newRow(fault) << fault;
  }
}

void StoreColdFilesTest::RefusesWhatIsNoCopy() {
  QFETCH(QString, fault);
  Keep(As("cid"), true);
  line_->Cut();
  const QString path = File();
  const QMap<QString, QString> statements = {
      {"newer", "UPDATE store_info SET value = '9999' WHERE name = 'version'"},
      {"older", "UPDATE store_info SET value = '2' WHERE name = 'version'"},
      {"another user's", "UPDATE store_info SET value = 'bob' WHERE name = 'copy_user'"},
      {"no copy", "DELETE FROM store_info WHERE name LIKE 'copy%'"}};
  if (statements.contains(fault)) {
    CDirectAccess("sqlite:" + path).Run(statements.value(fault));
  }
  const QByteArray whole = BytesOf(path);
  if (fault == "cut") {
    QVERIFY(Write(path, whole.left(whole.size() / 2)));
  }
  if (fault == "empty" || fault == "foreign") {
    QVERIFY(Write(path, fault == "empty" ? QByteArray() : QByteArray(5000, 'x')));
  }
  if (fault == "gone") {
    QVERIFY(QFile::remove(path));
  }
  auto options = OptionsOf("cid", true);
  options.shows_of = "cid";
  QString error, why_not;
  QVERIFY(!TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(!error.isEmpty() && !error.contains('\n'), qPrintable(error));
  const auto copies = StoreCopies::Of(Folder(), options.url, &why_not);
  if (fault == "another user's") {  // his, under a name that is another's
    QCOMPARE(copies.size(), size_t(1));
    QVERIFY(StoreCopies::Check(Folder(), options.url, As("bob")).outcome == LogInOutcome::kWrongPassword);
  } else {
    QVERIFY(copies.empty());
    QVERIFY(fault == "gone" || why_not.contains("The copy of the plans") || why_not.contains("no copy"));
  }
  QVERIFY(!StoreCopies::Check(Folder(), options.url, As("cid")).IsDone());
  // The store makes a sound one of it.
  line_->Mend();
  const CClient desk = Online(As("cid"), true);
  const auto is_sound = [&] {
    const auto now = StoreCopies::Of(Folder(), options.url);
    return now.size() == 1 && now.front().user == "cid";
  };
  QTRY_VERIFY_WITH_TIMEOUT(is_sound(), kColdWaitMs);
}

// The copy is as it was before the update; and what it had then comes into none that is made in its place.
void StoreColdFilesTest::TakesBackWhatAPowerCutLeft() {
  Keep(As("cid"), true);
  const QString path = File();
  CutPower(path);
  QCOMPARE(UsersWithCopies(), QStringList{"cid"});
  QCOMPARE(CopiedPlans(), QString("Gate A, Top"));
  CutPower(path);
  QVERIFY(Write(path, QByteArray(5000, 'x')));
  QCOMPARE(UsersWithCopies(), QStringList());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Top"), "Renamed", "-1")), QString());
  {
    const CClient desk = Online(As("cid"), true);
    QTRY_VERIFY_WITH_TIMEOUT(BytesOf(path).contains("Renamed"), kColdWaitMs);
  }
  QCOMPARE(UsersWithCopies(), QStringList{"cid"});
  QCOMPARE(CopiedPlans(), QString("Gate A, Renamed"));
}

// The store may fall silent in the midst of a long update.
void StoreColdFilesTest::IsReadWhileItIsBroughtUp() {
  Keep(As("cid"), true);
  const CDirectAccess owner(fixture_->Url());
  owner.Run(
      "INSERT INTO plan (code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time,"
      " end_time, cameras, creator, creation_time, revision, changed_by, changed_at, checksum)"
      " SELECT 500000 + n, parent_code, family, owner_id, 'Many ' || n, split_type, page_count, 0, '', '', '',"
      " creator, creation_time, revision, changed_by, changed_at, '' FROM plan, generate_series(1, 400) n"
      " WHERE name = 'Top'");
  owner.Run(
      "INSERT INTO plan_content (code, pages, thumbnail) SELECT code, repeat('x', 20000), '' FROM plan"
      " WHERE code > 500000");
  owner.Run("UPDATE counter SET value = value + 100 WHERE name = 'seq'");
  line_->FailAfter({"LEFT JOIN plan_content", ", 500300"}, CFaultyLine::kSilent);
  const CClient desk = Online(As("cid"), true);
  QTRY_VERIFY_WITH_TIMEOUT(line_->HasFailed(), kColdWaitMs);
  QCOMPARE(UsersWithCopies(), QStringList{"cid"});
  QCOMPARE(CopiedPlans(), QString("Gate A, Top"));
  QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains("Many 400"), kColdWaitMs);
}

// A standby that lagged became the server, or a backup was put back: also while the desk is away.
void StoreColdFilesTest::FollowsAServerThatWasPutBack() {
  std::string added;
  QCOMPARE(ann_.AddPlan("-1", "Lost", &added), QString());
  Keep(As("cid"), true, "Lost");
  PutBack("Put back");
  const CClient desk = Online(As("cid"), true);
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Put back, Put back"), kColdWaitMs);
  QVERIFY(InCopy("SELECT min(name) FROM camera_name").startsWith("Put back"));
  line_->Cut();
  PutBack("Again");
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Again, Again, Gate A"), kColdWaitMs);
  QVERIFY(InCopy("SELECT min(name) FROM camera_name").startsWith("Again"));
}

void StoreColdFilesTest::ForgetsWhoIsGone() {
  Keep(As("cid"), false);
  const QString of_cid = File();
  TarnHost::SiteUsers users;
  QString error;
  QVERIFY(TarnHost::StoreCare::ReadUsers(fixture_->Url(), &users, &error));
  TarnHost::SiteUserChanges changes;
  changes.users.emplace_back();
  QCOMPARE(users.users.back().name, QString("cid"));
  changes.users.back().before = users.users.back();
  QVERIFY2(TarnHost::StoreCare::ChangeUsers(fixture_->Url(), changes, &error), qPrintable(error));
  const CClient desk = Online(As("bob"), false);
  QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(of_cid), kColdWaitMs);
  QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains("Bob's gate"), kColdWaitMs);
  StoreCopies::Remove(Folder(), OptionsOf("bob", false).url);
  QVERIFY(!StoreCopies::HasAny(Folder(), OptionsOf("bob", false).url));
}

void StoreColdFilesTest::LeavesTheCopiesOfOthers_data() {
  QTest::addColumn<bool>("stays");
  QTest::newRow("after a power cut") << true;
  QTest::newRow("of a newer program") << true;
  QTest::newRow("damaged") << false;
}

void StoreColdFilesTest::LeavesTheCopiesOfOthers() {
  QFETCH(bool, stays);
  Keep(As("cid"), false);
  const QString of_cid = File(), row = QTest::currentDataTag();
  if (row == "after a power cut") {
    CutPower(of_cid);
  } else if (row == "damaged") {
    QVERIFY(Write(of_cid, QByteArray(5000, 'x')));
  } else {
    CDirectAccess("sqlite:" + of_cid).Run("UPDATE store_info SET value = '9999' WHERE name = 'version'");
  }
  const CClient desk = Online(As("bob"), false);
  QTRY_VERIFY_WITH_TIMEOUT(UsersWithCopies().contains("bob"), kColdWaitMs);
  if (stays) {
    desk.Leave();  // by then it has looked at them
  }
  QTRY_COMPARE_WITH_TIMEOUT(QFile::exists(of_cid), stays, kColdWaitMs);
  QCOMPARE(UsersWithCopies().contains("cid"), row == "after a power cut");
}

QTEST_GUILESS_MAIN(StoreColdFilesTest)
#include "store_cold_files_test.moc"

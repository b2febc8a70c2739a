#include <QtTest>

#include "accounts/log_in_tries.h"
#include "accounts/password_hash.h"

using TarnHost::CSecret;
using namespace TarnHost::Store;

Q_DECLARE_METATYPE(LogInTries)

/// The rules for wrong passwords, and what counts as the same one.
class AccountsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void LocksAfterFiveWrongTries();
  void LocksForAMinute_data();
  void LocksForAMinute();
  void KnowsAPassword_data();
  void KnowsAPassword();
};

void AccountsTest::LocksAfterFiveWrongTries() {
  constexpr int64_t kNow = 1'700'000'000;
  LogInTries tries;
  for (int wrong = 1; wrong < LogInTries::kMost; ++wrong) {
    tries = WithOneMore(tries, kNow + wrong * 1000);  // however long ago the others were
    QCOMPARE(tries.wrong, wrong);
    QCOMPARE(LockedSeconds(tries, kNow + wrong * 1000), 0);
  }
  tries = WithOneMore(tries, kNow + 9000);
  QCOMPARE(LockedSeconds(tries, kNow + 9000), 60);
  tries = WithOneMore(tries, kNow + 9060);
  QCOMPARE(tries.wrong, 1);  // the count begins again with the next minute
}

void AccountsTest::LocksForAMinute_data() {
  QTest::addColumn<LogInTries>("tries");
  QTest::addColumn<qint64>("now");
  QTest::addColumn<int>("seconds");
  QTest::addColumn<qint64>("locked_at");
  QTest::newRow("none") << LogInTries{0, 0} << 1000ll << 0 << 0ll;
  QTest::newRow("four") << LogInTries{4, 0} << 1000ll << 0 << 0ll;
  QTest::newRow("just locked") << LogInTries{5, 1000} << 1000ll << 60 << 1000ll;
  QTest::newRow("nearly over") << LogInTries{5, 1000} << 1059ll << 1 << 1000ll;
  QTest::newRow("over") << LogInTries{5, 1000} << 1060ll << 0 << 0ll;
  QTest::newRow("clock an hour back") << LogInTries{5, 4600} << 1000ll << 60 << 1000ll;
  QTest::newRow("more than can be") << LogInTries{1000, 1000} << 1030ll << 30 << 1000ll;
  QTest::newRow("spoilt") << LogInTries{5, -1} << 1000ll << 0 << 0ll;
}

void AccountsTest::LocksForAMinute() {
  QFETCH(LogInTries, tries);
  QFETCH(qint64, now);
  QTEST(LockedSeconds(tries, now), "seconds");
  QTEST(qint64(TriesAt(tries, now).locked_at), "locked_at");
}

void AccountsTest::KnowsAPassword_data() {
  QTest::addColumn<QByteArray>("kept");
  QTest::addColumn<QByteArray>("given");
  QTest::addColumn<bool>("fits");
  const QByteArray with_nul("a\0b", 3), composed = "sch\xC3\xB6n", decomposed = "scho\xCC\x88n";
  QTest::newRow("same") << QByteArray("gate 7") << QByteArray("gate 7") << true;
  QTest::newRow("case") << QByteArray("gate 7") << QByteArray("Gate 7") << false;
  QTest::newRow("blank behind") << QByteArray("gate 7") << QByteArray("gate 7 ") << false;
  QTest::newRow("nothing") << QByteArray("gate 7") << QByteArray() << false;
  QTest::newRow("NUL") << with_nul << with_nul << true;
  QTest::newRow("up to the NUL") << with_nul << QByteArray("a") << false;
  QTest::newRow("1000 characters") << QByteArray(1000, 'x') << QByteArray(1000, 'x') << true;
  QTest::newRow("one of 1000 less") << QByteArray(1000, 'x') << QByteArray(999, 'x') << false;
  QTest::newRow("composed and not") << composed << decomposed << true;
  QTest::newRow("not composed and composed") << decomposed << composed << true;
  QTest::newRow("another script") << QByteArray("\xE5\xAF\x86\xE7\xA0\x81") << QByteArray("\xE5\xAF\x86\xE7\xA0\x81")
                                  << true;
  QTest::newRow("no text") << QByteArray("\xFF\xFE") << QByteArray("\xFF\xFD") << false;
}

void AccountsTest::KnowsAPassword() {
  QFETCH(QByteArray, kept);
  QFETCH(QByteArray, given);
  const QString hash = PasswordHash::Of(CSecret(kept.toStdString()));
  QVERIFY(hash.startsWith("$argon2id$"));
  QVERIFY(hash != PasswordHash::Of(CSecret(kept.toStdString())));  // each with a salt of its own
  QTEST(PasswordHash::Fits(hash, CSecret(given.toStdString())), "fits");
}

QTEST_GUILESS_MAIN(AccountsTest)
#include "accounts_test.moc"

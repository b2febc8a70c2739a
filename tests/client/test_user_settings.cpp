#include <QFile>
#include <QJsonDocument>
#include <QLockFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include <thread>

#include "settings/user_settings.h"

using TarnClient::ChosenSettings;
using TarnClient::CSettingsFile;
using TarnClient::CUserSettings;
using TarnClient::OpensFirst;
using TarnClient::RememberedDesk;
using TarnClient::SettingsTrouble;

// The file of settings, whatever has become of it.
class UserSettingsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void KeepsEachUsersOwn();
  void SpoiledFiles_data();
  void SpoiledFiles();
  void SpoiledValues_data();
  void SpoiledValues();
  void NewerFileStays();
  void PlacesThatCannotBeWritten_data();
  void PlacesThatCannotBeWritten();
  void TwoClientsAtOnce();
  void AChoiceLeavesOtherValuesAlone();
  void ALockedFileIsWrittenLater();
  void SpoiledValuesAreWrittenOnce();
  void ADiskThatAnswersLate();
  void AChoiceOutlastsALateRead();
  void ADamagedFileThatCannotBeKept();
  void WhatThisVersionDoesNotKnowStays();
  void OnlyTheOwnerReads();
  void TheFileStaysSmall();
  void WithoutAFile();

 private:
  QByteArray Bytes() const;
  void Put(const QByteArray& bytes) const;
  static RememberedDesk SomeDesk();

  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;
};

void UserSettingsTest::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  path_ = folder_->filePath("config/settings.json");
}

QByteArray UserSettingsTest::Bytes() const {
  QFile file(path_);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void UserSettingsTest::Put(const QByteArray& bytes) const {
  QVERIFY(QDir().mkpath(QFileInfo(path_).path()));
  QFile file(path_);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

RememberedDesk UserSettingsTest::SomeDesk() {
  RememberedDesk desk;
  desk.window = QRect(-1200, 40, 1100, 700);
  desk.is_maximized = desk.is_full_screen = true;
  desk.side_width = 412;
  desk.shown_family = 1;
  desk.families = {{{{"7", "1"}, {"9", "7"}}, {"gate", "\u95e8"}}, {}};
  desk.history = {{"12", "Gate & \"yard\"", "Public / Gates", QDateTime({2026, 3, 1}, {4, 5, 6})}};
  desk.last_played = {"7", true};
  desk.screen = "HDMI-1";
  desk.screen_place = QRect(-1280, 0, 1280, 1024);
  TarnClient::RememberedWall closed = desk;
  closed.number = 3;
  closed.is_open = false;
  desk.walls = {closed};
  return desk;
}

void UserSettingsTest::KeepsEachUsersOwn() {
  ChosenSettings chosen;
  chosen.language = "zh_CN";
  chosen.skin = "white";
  chosen.seconds_per_plan = 45;
  chosen.asks_before_closing = false;
  chosen.opens_first = OpensFirst::LastPlayed;
  QString error;
  {
    CUserSettings settings(path_);
    settings.Load("site", "ann");
    QVERIFY(settings.TroubleText().isEmpty() && settings.Chosen() == ChosenSettings());
    QSignalSpy signal(&settings, &CUserSettings::SignalChosen);
    QVERIFY2(settings.Choose(settings.Chosen(), chosen, &error), qPrintable(error));
    QCOMPARE(signal.size(), 1);
    settings.Remember(SomeDesk());
    settings.Load("site", "bob");  // what was to be written later is written for its user
    QVERIFY(settings.Chosen() == ChosenSettings() && settings.Remembered() == RememberedDesk());
    RememberedDesk desk;
    desk.side_width = 300;
    settings.Remember(desk);
  }
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QVERIFY2(settings.TroubleText().isEmpty(), qPrintable(settings.TroubleText()));
  QVERIFY(settings.Chosen() == chosen);
  QCOMPARE(settings.Remembered().ToJson(), SomeDesk().ToJson());
  QCOMPARE(settings.Remembered().history.first().time, SomeDesk().history.first().time);
  settings.Load("other site", "ann");
  QVERIFY(settings.Chosen() == ChosenSettings() && settings.Remembered() == RememberedDesk());
  settings.Load("site", "bob");
  QCOMPARE(settings.Remembered().side_width, 300);
}

void UserSettingsTest::SpoiledFiles_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::newRow("empty") << QByteArray("");
  QTest::newRow("cut short") << QByteArray(R"({"version": 1, "users": [{"store": "site", "us)");
  QTest::newRow("garbage") << QByteArray("\x7f\x45\x4c\x46\x00\x01\xff\xfe", 8);
  QTest::newRow("no object") << QByteArray(R"(["version", 1])");
  QTest::newRow("no version") << QByteArray(R"({"users": []})");
  QTest::newRow("version is a text") << QByteArray(R"({"version": "1", "users": []})");
  QTest::newRow("users are no list") << QByteArray(R"({"version": 1, "users": {"ann": {}}})");
  QTest::newRow("too deep") << QByteArray(100000, '[');
  QTest::newRow("huge") << QByteArray(R"({"version": 1, "users": [], "x": ")") +
                               QByteArray(CSettingsFile::kMostBytes, 'x') + "\"}";
}

// The client starts with its defaults, says so once, and what is saved then is there again.
void UserSettingsTest::SpoiledFiles() {
  QFETCH(QByteArray, bytes);
  Put(bytes);
  {
    CUserSettings settings(path_);
    settings.Load("site", "ann");
    QVERIFY(settings.TroubleText().contains("damaged") && settings.Chosen() == ChosenSettings());
    QCOMPARE(Bytes(), bytes);
    QSignalSpy trouble(&settings, &CUserSettings::SignalTrouble);
    settings.Remember(SomeDesk());
    QVERIFY(settings.Flush());
    QTRY_VERIFY(settings.TroubleText().isEmpty());
    QCOMPARE(trouble.size(), 0);
  }
  QFile kept(CSettingsFile(path_, {}, {}).KeptAs());
  QVERIFY(kept.open(QIODevice::ReadOnly));
  QCOMPARE(kept.readAll(), bytes);
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QVERIFY(settings.TroubleText().isEmpty());
  QCOMPARE(settings.Remembered().ToJson(), SomeDesk().ToJson());
}

void UserSettingsTest::SpoiledValues_data() {
  QTest::addColumn<QByteArray>("values");
  QTest::newRow("skin") << QByteArray(R"("chosen": {"skin": 7, "seconds_per_plan": 33})");
  QTest::newRow("number as text") << QByteArray(R"("chosen": {"language": [], "seconds_per_plan": 33})");
  QTest::newRow("start") << QByteArray(R"("chosen": {"opens_first": "the door", "seconds_per_plan": 33})");
  QTest::newRow("flag") << QByteArray(R"("chosen": {"asks_before_closing": "no", "seconds_per_plan": 33})");
  QTest::newRow("long text") << QByteArray(R"("chosen": {"seconds_per_plan": 33, "skin": ")") + QByteArray(5000, 'x') +
                                    "\"}";
  const auto desk = [](const char* row, const char* values) {
    QTest::newRow(row) << QByteArray(R"("chosen": {"seconds_per_plan": 33}, "remembered": {)") + values + "}";
  };
  desk("window", R"("window": {"x": 1e300, "y": 0, "width": 10, "height": 10})");
  desk("window without width", R"("window": {"x": 1, "y": 0, "width": 0, "height": 10})");
  desk("no number", R"("side_width": 1.5)");
  desk("family", R"("shown_family": 99)");
  desk("groups", R"("families": [{"open_groups": [5, ["1"], [{}, null]], "searches": [1, {}]}])");
  desk("families", R"("families": [1, "a", null])");
  desk("history", R"("history": [{"code": "1"}, 5, {"code": "1", "name": "a", "time": "yesterday"}])");
  desk("last played", R"("last_played": [])");
  desk("screen", R"("screen": 5, "screen_place": {"x": 0, "y": 0, "width": 10, "height": 10})");
  desk("walls", R"("walls": [5, {"number": 0}, {"number": 4}])");
  desk("wall without a number", R"("walls": [{"open": true}])");
  desk("too many walls", R"("walls": [{"number": 1}, {"number": 2}, {"number": 3}, {"number": 1}])");
  QTest::newRow("part") << QByteArray(R"("chosen": {"seconds_per_plan": 33}, "remembered": "much")");
}

// The other values hold.
void UserSettingsTest::SpoiledValues() {
  QFETCH(QByteArray, values);
  Put(R"({"version": 1, "users": [3, {"store": "site", "user": "ann", )" + values + "}]}");
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QVERIFY2(settings.TroubleText().contains("Some of your settings"), qPrintable(settings.TroubleText()));
  ChosenSettings chosen;
  chosen.seconds_per_plan = 33;
  QVERIFY(settings.Chosen() == chosen);
  RememberedDesk desk = settings.Remembered();
  desk.families.clear();
  QVERIFY(desk == RememberedDesk());
  QString error;
  QVERIFY(settings.Choose(settings.Chosen(), chosen, &error));
  settings.Remember(SomeDesk());
  QVERIFY(settings.Flush());
  settings.Load("site", "ann");
  QVERIFY2(settings.TroubleText().isEmpty(), qPrintable(settings.TroubleText()));
}

void UserSettingsTest::NewerFileStays() {
  const QByteArray bytes = R"({"version": 2, "users": [{"store": "site", "user": "ann", "chosen": {"skin": "pink"}}]})";
  Put(bytes);
  CUserSettings settings(path_);
  QSignalSpy trouble(&settings, &CUserSettings::SignalTrouble);
  settings.Load("site", "ann");
  QVERIFY2(settings.TroubleText().contains("newer"), qPrintable(settings.TroubleText()));
  QVERIFY(settings.Chosen() == ChosenSettings());
  QString error;
  ChosenSettings chosen;
  chosen.skin = "white";
  QVERIFY(!settings.Choose(settings.Chosen(), chosen, &error) && error.contains("newer"));
  QVERIFY(settings.Chosen() == ChosenSettings());
  settings.Remember(SomeDesk());
  QVERIFY(settings.Flush());
  QCoreApplication::processEvents();
  QCOMPARE(trouble.size(), 0);  // it was said at the start
  QCOMPARE(Bytes(), bytes);
}

void UserSettingsTest::PlacesThatCannotBeWritten_data() {
  QTest::addColumn<QString>("place");
  for (const char* place : {"file", "folder", "no folder", "directory", "dangling link"}) {
    QTest::newRow(place) << QString(place);
  }
}

void UserSettingsTest::PlacesThatCannotBeWritten() {
  QFETCH(QString, place);
  const QByteArray bytes =
      R"({"version": 1, "users": [{"store": "site", "user": "ann", "chosen": {"skin": "white"}}]})";
  const bool is_readable = place == "file" || place == "folder";
  if (is_readable) {
    Put(bytes);
    const QString what = place == "file" ? path_ : QFileInfo(path_).path();
    QVERIFY(QFile::setPermissions(what, QFile::ReadOwner | QFile::ExeOwner));
  } else if (place == "no folder") {
    QFile in_its_place(QFileInfo(path_).path());
    QVERIFY(in_its_place.open(QIODevice::WriteOnly));
  } else if (place == "directory") {
    QVERIFY(QDir().mkpath(path_));
  } else {
    QVERIFY(QDir().mkpath(QFileInfo(path_).path()) && QFile::link("/nowhere/settings.json", path_));
  }
  CUserSettings settings(path_);
  QSignalSpy trouble(&settings, &CUserSettings::SignalTrouble);
  settings.Load("site", "ann");
  QVERIFY(!settings.TroubleText().isEmpty());
  QCOMPARE(settings.Chosen().skin, QString(is_readable ? "white" : "redblack"));
  QString error;
  QVERIFY(!settings.Choose(ChosenSettings(), settings.Chosen(), &error) && error.startsWith("Your settings cannot be"));
  settings.Remember(SomeDesk());
  QVERIFY(settings.Flush());
  QCoreApplication::processEvents();
  QCOMPARE(trouble.size(), 0);
  QVERIFY(!is_readable || Bytes() == bytes);
  QFile::setPermissions(QFileInfo(path_).path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Each writes its own user's part and one that both share; the file is whole after every write.
void UserSettingsTest::TwoClientsAtOnce() {
  constexpr int kWrites = 25;
  const auto write = [this](const QString& name) {
    for (int i = 1; i <= kWrites; ++i) {
      const QJsonObject own{{"remembered", QJsonObject{{"side_width", i}}}};
      const QJsonObject shared{{"remembered", QJsonObject{{"side_width", i}, {"by", name}}}};
      if (CSettingsFile(path_, "site", name).Write(own).trouble != SettingsTrouble::None ||
          CSettingsFile(path_, "site", "both").Write(shared).trouble != SettingsTrouble::None ||
          CSettingsFile(path_, "site", "both").Read().trouble != SettingsTrouble::None) {
        return;
      }
    }
  };
  std::thread other(write, "ann");
  write("bob");
  other.join();
  for (const char* name : {"ann", "bob"}) {
    QCOMPARE(CSettingsFile(path_, "site", name).Read().values.value("remembered")["side_width"].toInt(), kWrites);
  }
  const QJsonValue shared = CSettingsFile(path_, "site", "both").Read().values.value("remembered");
  QVERIFY(shared["by"].toString() == "ann" || shared["by"].toString() == "bob");
  QCOMPARE(QDir(QFileInfo(path_).path()).entryList(QDir::Files), QStringList{"settings.json"});
}

// Of the same user: what the other one has changed meanwhile stays.
void UserSettingsTest::AChoiceLeavesOtherValuesAlone() {
  CUserSettings one(path_), other(path_);
  one.Load("site", "ann");
  other.Load("site", "ann");
  ChosenSettings white = one.Chosen(), slow = other.Chosen();
  white.skin = "white";
  slow.seconds_per_plan = 90;
  QString error;
  QVERIFY(one.Choose(one.Chosen(), white, &error) && other.Choose(other.Chosen(), slow, &error));
  one.Load("site", "ann");
  QCOMPARE(one.Chosen().skin, QString("white"));
  QCOMPARE(one.Chosen().seconds_per_plan, 90);
}

// What is held up for too long is refused, and counts when it was written after all; the desk is not lost.
void UserSettingsTest::ALockedFileIsWrittenLater() {
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QString error;
  QVERIFY(settings.Choose(ChosenSettings(), settings.Chosen(), &error));
  QLockFile lock(path_ + ".lock");
  QVERIFY(lock.lock());
  RememberedDesk desk;
  for (const int width : {300, 310}) {
    desk.side_width = width;
    settings.Remember(desk);
    QVERIFY(!settings.Flush());
  }
  ChosenSettings white;
  white.skin = "white";
  QSignalSpy chosen(&settings, &CUserSettings::SignalChosen);
  QVERIFY(!settings.Choose(settings.Chosen(), white, &error));
  QVERIFY2(error.contains("does not answer") && settings.Chosen() == ChosenSettings(), qPrintable(error));
  lock.unlock();
  QTRY_COMPARE(chosen.size(), 1);
  QCOMPARE(settings.Chosen().skin, QString("white"));
  QVERIFY2(settings.TroubleText().contains("locked"), qPrintable(settings.TroubleText()));
  QVERIFY(settings.Flush());
  const QJsonObject values = CSettingsFile(path_, "site", "ann").Read().values;
  QCOMPARE(values.value("chosen")["skin"].toString(), QString("white"));
  QCOMPARE(values.value("remembered")["side_width"].toInt(), 310);
}

// What could not be read is written with the next choice, also after a write that failed.
void UserSettingsTest::SpoiledValuesAreWrittenOnce() {
  Put(R"({"version": 1, "users": [{"store": "site", "user": "ann", "chosen": {"skin": 7, "seconds_per_plan": 33}}]})");
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QVERIFY(QFile::setPermissions(path_, QFile::ReadOwner));
  settings.Remember(SomeDesk());
  QVERIFY(settings.Flush());
  QTRY_VERIFY(settings.TroubleText().contains("read-only"));
  QVERIFY(QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner));
  const auto choose_seconds = [&settings](int seconds) {
    ChosenSettings chosen = settings.Chosen();
    chosen.seconds_per_plan = seconds;
    QString error;
    QVERIFY2(settings.Choose(settings.Chosen(), chosen, &error), qPrintable(error));
  };
  choose_seconds(44);
  const auto stored_skin = [this] {
    return CSettingsFile(path_, "site", "ann").Read().values.value("chosen")["skin"].toString();
  };
  QCOMPARE(stored_skin(), QString("redblack"));
  QVERIFY(CSettingsFile(path_, "site", "ann").Write({{"chosen", QJsonObject{{"skin", "white"}}}}).trouble ==
          SettingsTrouble::None);
  choose_seconds(55);  // that alone, now that all is sound
  QCOMPARE(stored_skin(), QString("white"));
}

// The desk stands by the time the disk answers, and must not take the place of the stored one.
void UserSettingsTest::ADiskThatAnswersLate() {
  ChosenSettings white;
  white.skin = "white";
  QVERIFY(CSettingsFile(path_, "site", "bob")
              .Write({{"chosen", white.ToJson()}, {"remembered", SomeDesk().ToJson()}})
              .trouble == SettingsTrouble::None);
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QLockFile lock(path_ + ".lock");
  QVERIFY(lock.lock());
  settings.SetPatience(20);
  settings.Remember(SomeDesk());
  QSignalSpy chosen(&settings, &CUserSettings::SignalChosen);
  settings.Load("site", "bob");  // behind a write that waits
  QVERIFY2(settings.TroubleText().contains("does not answer"), qPrintable(settings.TroubleText()));
  QVERIFY(settings.Chosen() == ChosenSettings() && settings.Remembered() == RememberedDesk());
  RememberedDesk desk;
  desk.side_width = 300;
  settings.Remember(desk);
  lock.unlock();
  QTRY_COMPARE(chosen.size(), 1);
  QVERIFY(settings.Chosen() == white && settings.TroubleText().isEmpty());
  QCOMPARE(settings.Remembered().side_width, 300);
  settings.SetPatience(5000);
  settings.Load("site", "bob");
  QCOMPARE(settings.Remembered().ToJson(), SomeDesk().ToJson());
}

void UserSettingsTest::AChoiceOutlastsALateRead() {
  ChosenSettings white, other;
  white.skin = "white";
  QVERIFY(CSettingsFile(path_, "site", "bob").Write({{"chosen", white.ToJson()}}).trouble == SettingsTrouble::None);
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QLockFile lock(path_ + ".lock");
  QVERIFY(lock.lock());
  settings.SetPatience(20);
  settings.Remember(SomeDesk());
  settings.Load("site", "bob");  // behind a write that waits
  lock.unlock();
  settings.SetPatience(5000);
  other.seconds_per_plan = 45;
  const QSignalSpy chosen(&settings, &CUserSettings::SignalChosen);
  QString error;
  QVERIFY2(settings.Choose(ChosenSettings(), other, &error), qPrintable(error));
  QTRY_COMPARE(chosen.size(), 2);  // the read, and the choice
  QVERIFY(settings.Chosen().seconds_per_plan == 45 && settings.Chosen().skin == "white");
}

void UserSettingsTest::ADamagedFileThatCannotBeKept() {
  Put("garbage");
  const CSettingsFile file(path_, "site", "ann");
  QVERIFY(QDir().mkpath(file.KeptAs() + "/full"));
  const CSettingsFile::Answer answer = file.Write({});
  QVERIFY(answer.trouble == SettingsTrouble::NotWritten);
  QCOMPARE(answer.detail, QDir::toNativeSeparators(file.KeptAs()));
  QCOMPARE(Bytes(), QByteArray("garbage"));
}

void UserSettingsTest::WhatThisVersionDoesNotKnowStays() {
  Put(R"({"version": 1, "note": "mine", "users": [{"store": "site", "user": "bob", "x": 1}, "text",)"
      R"({"store": "site", "user": "ann", "y": 2, "chosen": {"sound": "loud"}}]})");
  CUserSettings settings(path_);
  settings.Load("site", "ann");
  QVERIFY2(settings.TroubleText().isEmpty(), qPrintable(settings.TroubleText()));
  QString error;
  QVERIFY(settings.Choose(ChosenSettings(), settings.Chosen(), &error));
  const QJsonObject content = QJsonDocument::fromJson(Bytes()).object();
  QCOMPARE(content["note"].toString(), QString("mine"));
  const QJsonArray users = content["users"].toArray();
  QCOMPARE(users.size(), 3);
  QVERIFY(users[0]["y"].toInt() == 2 && users[0]["chosen"]["sound"].toString() == "loud");
  QVERIFY(users[1]["x"].toInt() == 1 && users[2].toString() == "text");
}

void UserSettingsTest::OnlyTheOwnerReads() {
  constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  const CSettingsFile file(path_, "site", "ann");
  QVERIFY(file.Write({}).trouble == SettingsTrouble::None);
  QVERIFY(!(QFile::permissions(path_) & kOthers));
  QVERIFY(!(QFile::permissions(QFileInfo(path_).path()) & kOthers));
  QVERIFY(QFile::setPermissions(path_, QFile::permissions(path_) | QFile::ReadGroup | QFile::ReadOther));
  QVERIFY(file.Write({}).trouble == SettingsTrouble::None);
  QVERIFY(!(QFile::permissions(path_) & kOthers));
}

// Users who have not been here for long make room; the one who writes keeps his own.
void UserSettingsTest::TheFileStaysSmall() {
  const QString text(CSettingsFile::kMostBytes / 3, 'x');
  for (const char* name : {"ann", "bob", "carl", "dora"}) {
    QVERIFY(CSettingsFile(path_, "site", name).Write({{"remembered", QJsonObject{{"text", text}}}}).trouble ==
            SettingsTrouble::None);
  }
  QVERIFY(Bytes().size() <= CSettingsFile::kMostBytes);
  QVERIFY(CSettingsFile(path_, "site", "ann").Read().values.isEmpty());
  QVERIFY(!CSettingsFile(path_, "site", "carl").Read().values.isEmpty());
  QVERIFY(!CSettingsFile(path_, "site", "dora").Read().values.isEmpty());
}

void UserSettingsTest::WithoutAFile() {
  CUserSettings settings({});
  settings.Load("site", "ann");
  ChosenSettings chosen;
  chosen.skin = "white";
  QString error;
  QVERIFY(settings.Choose(settings.Chosen(), chosen, &error));
  QCOMPARE(settings.Chosen().skin, QString("white"));
  settings.Remember(SomeDesk());
  QVERIFY(settings.Flush() && settings.TroubleText().isEmpty());
}

QTEST_GUILESS_MAIN(UserSettingsTest)
#include "test_user_settings.moc"

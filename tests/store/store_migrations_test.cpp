#include <QTemporaryDir>
#include <QtTest>

#include "store/migrations.h"
#include "store/page_codec.h"
#include "store/sqlite_engine.h"

using namespace TarnHost::Store;

namespace {

QStringList AddsColour(const CSqlEngine&) {
  return {"ALTER TABLE plan_group ADD COLUMN colour TEXT DEFAULT 'red'"};
}
QStringList AddsNote(const CSqlEngine&) {
  return {"CREATE TABLE note (text TEXT)"};
}
QStringList Breaks(const CSqlEngine&) {
  return {"CREATE TABLE half (text TEXT)", "CREATE TABLE plan (again TEXT)"};
}

}  // namespace

class StoreMigrationsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    engine_ = std::make_unique<CSqliteEngine>(folder_->filePath("plans.db"), CSqliteEngine::kMake);
    engine_->Open();
    CTransaction transaction(*engine_, CTransaction::kWrite);
    MakeLayout(*engine_);
    transaction.Commit();
    engine_->Execute("INSERT INTO plan_group (code, parent_code, family, owner_id, name) VALUES (1, -1, 0, 0, 'G')");
  }

  void CarriesContentOver();
  void LeavesAStoreAsItWasWhenAStepFails();
  void LetsWhoMayDoEverythingConfigure();
  void KeepsWhatNewerProgramsWrote();
  void FindsTheCamerasOfAnyText();

 private:
  bool HasTable(const char* name) {
    return engine_->Value("SELECT 1 FROM sqlite_master WHERE name = ?", {name}).isValid();
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<CSqliteEngine> engine_;
};

void StoreMigrationsTest::CarriesContentOver() {
  const int newest = AllMigrations().back().to;
  QCOMPARE(StoredVersion(*engine_), newest);
  auto steps = AllMigrations();
  steps.push_back({newest + 1, AddsColour});
  steps.push_back({newest + 2, AddsNote});
  CSqliteEngine other(folder_->filePath("plans.db"), CSqliteEngine::kExisting);
  other.Open();
  for (CSqlEngine* client :
       std::initializer_list<CSqlEngine*>{engine_.get(), engine_.get(), &other}) {  // each step runs once
    Migrate(*client, "store", steps);
    QCOMPARE(StoredVersion(*client), newest + 2);
  }
  QCOMPARE(engine_->Value("SELECT colour FROM plan_group WHERE name = 'G'").toString(), QString("red"));
  QVERIFY(HasTable("note"));
  QVERIFY_EXCEPTION_THROWN(Migrate(*engine_, "store"), CStoreError);  // for the program of before it is too new
}

void StoreMigrationsTest::LeavesAStoreAsItWasWhenAStepFails() {
  const int newest = AllMigrations().back().to;
  auto steps = AllMigrations();
  steps.push_back({newest + 1, AddsNote});
  steps.push_back({newest + 2, Breaks});
  QVERIFY_EXCEPTION_THROWN(Migrate(*engine_, "store", steps), CStoreError);
  QCOMPARE(StoredVersion(*engine_), newest + 1);
  QVERIFY(HasTable("note") && !HasTable("half"));
  QCOMPARE(engine_->Value("SELECT count(*) FROM plan_group").toInt(), 1);
  CTransaction usable(*engine_, CTransaction::kWrite);  // no transaction was left open
}

// Limits of groups came with layout 5: who could see and do everything before still can.
void StoreMigrationsTest::LetsWhoMayDoEverythingConfigure() {
  CSqliteEngine old(folder_->filePath("old.db"), CSqliteEngine::kMake);
  old.Open();
  MakeLayout(old, {AllMigrations().begin(), AllMigrations().begin() + 4});
  old.Execute("INSERT INTO user_right (user_id, code) VALUES (1, 5), (1, 6), (1, 7), (2, 5), (2, 6), (3, 7)");
  Migrate(old, "store");
  QCOMPARE(old.Value("SELECT count(*) FROM user_right WHERE code = 8").toInt(), 1);
  QVERIFY(old.Value("SELECT 1 FROM user_right WHERE user_id = 1 AND code = 8").isValid());
}

void StoreMigrationsTest::KeepsWhatNewerProgramsWrote() {
  const QString text =
      R"([{"colour":"red","dwell":30,"name":"P","no":1,"split":2,)"
      R"("windows":[{"code":"7","kind":1,"name":"Gate","no":1,"preset":0,"stream":0,"zoom":{"x":1}}]},)"
      R"({"dwell":10,"name":"","no":2,"split":1,"windows":[]}])";
  auto pages = *PagesFromText(text);
  QVERIFY(!pages.front().extra.empty() && pages.back().extra.empty());
  QCOMPARE(PagesToText(pages), text);
  pages.front().windows.front().preset_no = 3;
  pages.front().extra = "no object";
  QCOMPARE(PagesToText(pages), QString(text).replace(R"("preset":0)", R"("preset":3)").remove(R"("colour":"red",)"));
}

// As all of the pages say, however the text is written.
void StoreMigrationsTest::FindsTheCamerasOfAnyText() {
  const auto pages_with = [](const QString& windows) {
    return R"([{"dwell":10,"name":"code","no":1,"split":4,"windows":[)" + windows + "]}]";
  };
  const QString gate = R"({"code":"7","kind":1,"name":"Gate","no":1,"preset":0,"stream":0)";
  const QString texts[] = {
      pages_with(gate + "}"),
      pages_with(gate + "}," + gate + "}"),
      pages_with(gate + R"(,"zoom":{"code":"8","kind":1,"name":"No window"}})"),
      pages_with(gate + R"(,"more":[{"code":"8","kind":1,"name":"No window","no":1,"preset":0,"stream":0}]})"),
      pages_with(QString(gate).replace("code", "c\u006fde") + "}"),
      pages_with(QString(gate).replace("Gate", R"(Gate \"A\")") + "}"),
      pages_with(QString(gate).replace("\"kind\":1,", "") + R"(,"kind":1})"),
      R"([{"windows":[{"kind":1,"code":"7","name":"Gate"}]}])",
      R"([{"dwell":10,"name":"","no":2,"split":1,"windows":[]}])",
      "[]",
  };
  for (const QString& text : texts) {
    const auto pages = PagesFromText(text);
    QVERIFY2(pages, qPrintable(text));
    QStringList from_text, from_pages;
    for (const NamedCamera& camera : CamerasInText(text)) {
      from_text << QString::fromStdString(camera.code + ' ' + camera.name);
    }
    for (const NamedCamera& camera : CamerasOf(*pages)) {
      from_pages << QString::fromStdString(camera.code + ' ' + camera.name);
    }
    QVERIFY2(from_text == from_pages, qPrintable(text + ": " + from_text.join('|')));
  }
}

QTEST_GUILESS_MAIN(StoreMigrationsTest)
#include "store_migrations_test.moc"

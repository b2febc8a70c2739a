#include <QtTest>

#include "TarnHost/store_care.h"
#include "older_store.h"

using namespace StoreTest;

/// Stores of older programs, each of a layout of before, with content.
class OlderStoresTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void KeepAllOfTheirContent_data();
  void KeepAllOfTheirContent();
  void NumberCamerasBehindThoseThatPlansName();
  void KnowThatTheyArePretended();
  void TakeDamagedPlansAlong();

 private:
  /// All that a plan has, as a client reads it; the checksum, which no client sees, at the end.
  QString Whole(const std::string& plan) const {
    const auto detail = ann_.Detail(plan);
    QString whole = QString::fromStdString(detail.name + '|' + detail.group_index_code + '|' + detail.start_time + '|' +
                                           detail.creator + '|' + detail.creation_time + '|' + detail.changed_at);
    for (const view::PlanPage& page : detail.pages) {
      whole += QString("|%1 %2 %3").arg(page.page_no).arg(page.split_type).arg(page.windows.size());
      for (const view::PlanWindow& window : page.windows) {
        whole += QString::fromStdString(" " + window.resource_code + window.resource_name);
      }
    }
    return whole + '|' + QString::fromLatin1(QByteArray::fromStdString(detail.thumbnail).toHex());
  }
  QStringList All(const QStringList& names) const {
    QStringList all = ann_.Search("lane cam", 0);
    for (const QString& name : names) {
      all << Whole(ann_.Plan(qPrintable(name)));
    }
    return all;
  }
  QStringList Findings() const {
    QStringList findings;
    QString summary, error;
    return TarnHost::StoreCare::Check(fixture_->Url(), &findings, &summary, &error) ? findings : QStringList(error);
  }
};

void OlderStoresTest::KeepAllOfTheirContent_data() {
  QTest::addColumn<int>("version");
  for (int version = 1; version < TarnHost::CPlanStore::LayoutVersion(); ++version) {
    QTest::addRow("%d", version) << version;
  }
}

void OlderStoresTest::KeepAllOfTheirContent() {
  QFETCH(int, version);
  auto request = ann_.Unchanged(ann_.Plan("Gate A"));
  request.thumbnail = std::string("\0\xff picture", 10) + std::string(20000, 'p');  // too long to stand in a row itself
  request.pages.front().windows.front().resource_name = "Lane camera, \"old\"";
  QCOMPARE(ann_.Update(request), QString());
  const std::string top = ann_.Plan("Top");
  const QString whole_top = Whole(top);
  const QStringList names = {"Gate A", "Gate B", "Ann's gate"};
  QCOMPARE(ann_.DeletePlan(top), QString());
  const QStringList before = All(names);
  ann_.Leave();
  SetBack(*fixture_, version);

  QCOMPARE(All(names), before);
  QCOMPARE(Findings(), QStringList());
  QCOMPARE(fixture_->ReadPastTheStore("SELECT count(*) FROM plan_content"), QString(version < 4 ? "4" : "5"));
  if (version >= 4) {
    QCOMPARE(ann_.RestorePlan(top), QString());
    QCOMPARE(Whole(ann_.Plan("Top")), whole_top);
  }
  std::string copy, error;
  std::vector<std::string> favorites;
  QVERIFY(ann_->SetFavoriteCamera("1001", true, &error) && ann_->GetFavoriteCameras(favorites, &error));
  QCOMPARE(favorites, std::vector<std::string>{"1001"});
  QCOMPARE(ann_.AddPlan("-2", "New", &copy), QString());  // codes and numbers of cameras go on where they were
  request.revision = 0;                                   // of now
  request.pages.front().windows.front().resource_name = "Side door";
  QCOMPARE(ann_.Update(request), QString());
  QCOMPARE(bob_.Search("side door", 0).size(), 1);
  QCOMPARE(Findings(), QStringList());
}

// Cameras got no numbers of their own before: a plan that names a removed one must not show the next that is added.
void OlderStoresTest::NumberCamerasBehindThoseThatPlansName() {
  auto request = ann_.Unchanged(ann_.Plan("Gate A"));
  request.pages.front().windows.front().resource_code = "1005";
  QCOMPARE(ann_.Update(request), QString());
  ann_.Leave();
  SetBack(*fixture_, 6);
  fixture_->RunPastTheStore("INSERT INTO user_right (user_id, code) VALUES (1, 8)");
  TarnHost::CameraChanges changes;
  changes.regions = {{"", "Hall", ""}};
  changes.cameras.resize(1);
  changes.cameras[0].name = "Door";
  TarnHost::CameraChangesMade made;
  std::string error;
  QVERIFY2(ann_->ChangeCameras(changes, made, &error), error.c_str());
  QCOMPARE(made.regions, std::vector<std::string>{"2"});
  QCOMPARE(made.cameras, std::vector<std::string>{"1006"});
}

// What was made as the demo site and is it still, and nothing that may have got cameras since.
void OlderStoresTest::KnowThatTheyArePretended() {
  const std::pair<const char*, bool> cases[] = {
      {"SELECT 1", true},
      {"UPDATE camera SET name = 'Gate' WHERE id = 1001", false},
      {"DELETE FROM camera WHERE id = 1001", false},
      {"UPDATE camera_stream SET url = 'rtsp://192.0.2.1' WHERE camera_id = 1001", false},
      {"INSERT INTO camera_access VALUES (1001, '', '', 'http://192.0.2.1')", false}};
  for (const auto& [change, is_pretended] : cases) {
    CStoreFixture demo;
    demo.options.first_content = TarnHost::MakeDemoSite;
    QCOMPARE(demo.OpeningError(), QString());
    demo.RunPastTheStore("DELETE FROM store_info WHERE name = 'pretended'");
    demo.RunPastTheStore(change);
    SetBack(demo, 7);
    QCOMPARE(demo.OpeningError(), QString());
    QVERIFY2(demo.ReadPastTheStore("SELECT count(*) FROM store_info WHERE name = 'pretended'") ==
                 QString::number(int(is_pretended)),
             change);
  }
}

// What could not be played before is named now as then, and hinders nothing else.
void OlderStoresTest::TakeDamagedPlansAlong() {
  const std::string plan = ann_.Plan("Gate A");
  const QString gate_b = Whole(ann_.Plan("Gate B"));
  ann_.Leave();
  SetBack(*fixture_, 5);
  fixture_->RunPastTheStore("UPDATE plan SET pages = 'no pages' WHERE name = 'Gate A'");
  QVERIFY(QString::fromStdString(ann_.Detail(plan).error_info).endsWith("is damaged: its pages cannot be read."));
  QCOMPARE(Whole(ann_.Plan("Gate B")), gate_b);
  ann_.Leave();
  fixture_->RunPastTheStore(QString("DELETE FROM plan_content WHERE code = %1").arg(QString::fromStdString(plan)));
  QVERIFY(QString::fromStdString(ann_.Detail(plan).error_info).endsWith("is damaged: its pages cannot be read."));
  QCOMPARE(Findings().size(), 1);
}

QTEST_GUILESS_MAIN(OlderStoresTest)
#include "older_stores_test.moc"

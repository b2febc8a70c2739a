#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTextDocument>
#include <QtTest>
#include <memory>
#include <utility>

#include "ResourceTreeKit/camera_tree.h"
#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "camera_sites.h"
#include "filter_gate.h"
#include "host_calls/call_pool.h"
#include "outline.h"
#include "screen_reader.h"

using ResourceTreeKit::CCameraItemInfo;
using ResourceTreeKit::CCameraTree;
using tarn_ui_data_controller::CNomalMessageManager;
using TarnTest::CBrokenSite;
using TarnTest::CChangingSite;
using TarnTest::CFilterGate;
using TarnTest::Outline;

namespace {

// Regions "Building" (with "Hall" below it) and "Yard"; CAM 10 was made before CAM 2.
TarnHost::PlanSite Site() {
  TarnHost::PlanSite site;
  site.users = {{"operator", {5, 6, 7}}};
  site.regions = {{"Yard", -1}, {"Building", -1}, {"Hall", 1}};
  site.cameras = {{"CAM 10 gate", 0, true, {}, {}},   {"CAM 2 fence", 0, false, {}, {}},
                  {"CAM 30 door", 2, true, {}, {}},   {"CAM 31 gate", 2, true, {}, {}},
                  {"CAM 40 stairs", 1, true, {}, {}}, {"Roaming", -1, true, {}, {}}};
  return site;
}

// In the order of the tree.
const QStringList kCameras{"Roaming", "CAM 40 stairs", "CAM 2 fence", "CAM 10 gate", "CAM 30 door", "CAM 31 gate"};

QStringList Names(const QVector<CCameraItemInfo>& cameras) {
  QStringList names;
  for (const CCameraItemInfo& camera : cameras) {
    names.append(QString::fromStdString(camera.name));
  }
  return names;
}

// What a filter and favorites must show, without cleverness.
QString Expected(const QStringList& favorites, const QString& text) {
  const auto hit = [&text](const QString& name) { return name.contains(text, Qt::CaseInsensitive); };
  const auto region = [&](const QString& name, const QStringList& cameras, bool all, const QStringList& inner = {}) {
    QStringList shown = inner;
    for (const QString& camera : cameras) {
      if (all || hit(name) || hit(camera)) {
        shown.append(camera);
      }
    }
    return shown.isEmpty() ? QStringList() : QStringList{name + "(" + shown.join(",") + ")"};
  };
  const QStringList hall = region("Hall", {"CAM 30 door", "CAM 31 gate"}, hit("Building"));
  QStringList rows = region("Building", {"CAM 40 stairs"}, false, hall);
  rows += region("Yard", {"CAM 2 fence", "CAM 10 gate"}, false);
  rows += hit("Roaming") ? QStringList{"Roaming"} : QStringList{};
  QStringList top;
  for (const QString& camera : kCameras) {
    if (favorites.contains(camera) && rows.join(",").contains(camera)) {
      top.append(camera);
    }
  }
  if (!top.isEmpty()) {
    rows.prepend("Favorites(" + top.join(",") + ")");
  }
  return rows.join(",");
}

}  // namespace

class CameraTreeTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    TarnHost::PlanStoreOptions options;
    options.url = "sqlite::memory:";
    options.first_content = Site;
    QString error;
    store_ = TarnHost::CPlanStore::Open(options, &error);
    QVERIFY2(store_ && store_->LogIn({"operator"}).IsDone(), qPrintable(error));
    services_ = std::make_shared<TarnTest::CRecordingServices>(store_);
    TarnHost::InstallHostServices(services_);
    tree_ = std::make_unique<CCameraTree>();
    tree_->resize(320, 400);
    tester_ = std::make_unique<QAbstractItemModelTester>(tree_->model(),
                                                         QAbstractItemModelTester::FailureReportingMode::QtTest);
  }

  void cleanup() {
    services_->ReleaseAll();
    if (tree_) {
      QTest::mouseRelease(tree_->viewport(), Qt::LeftButton);  // double clicks of the test library end with it down
    }
    tester_.reset();
    tree_.reset();
    TarnHost::InstallHostServices(nullptr);
    HostCalls::AwaitCalls();
    services_.reset();
    store_.reset();
  }

  void LoadsAtTheFirstShow() {
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    QCOMPARE(services_->Count("GetCameraTree"), 0);
    Show();
    tree_->hide();
    tree_->show();
    QCOMPARE(loaded.size(), 1);
    QVERIFY(loaded[0][0].toString().isEmpty());
    QCOMPARE(services_->Count("GetCameraTree"), 1);
    for (const auto& call : services_->Calls()) {
      QVERIFY2(!call.on_gui_thread, qPrintable(call.name));
    }
    QCOMPARE(Rows(),
             QString("Building(Hall(CAM 30 door,CAM 31 gate),CAM 40 stairs),Yard(CAM 2 fence,CAM 10 gate),Roaming"));
    QCOMPARE(tree_->CameraCount(), 6);
    QVERIFY(tree_->isExpanded(Row("Building")) && !tree_->isExpanded(Row("Hall")));
    QCOMPARE(Row("CAM 2 fence").data(Qt::AccessibleTextRole).toString(), QString("CAM 2 fence, offline"));
    QCOMPARE(Row("CAM 10 gate").data(Qt::AccessibleTextRole).toString(), QString("CAM 10 gate"));
    const auto picture = [this](const char* name) {
      return Row(name).data(Qt::DecorationRole).value<QIcon>().pixmap(20).toImage();
    };
    QVERIFY(picture("CAM 2 fence") != picture("CAM 10 gate"));  // the state shows without colour, too
    const CCameraItemInfo gate = tree_->CameraAt(Row("CAM 10 gate"));
    QVERIFY(gate.online && tree_->FindCamera(gate.index_code).name == "CAM 10 gate");
    QVERIFY(tree_->FindCamera("no such code").index_code.empty());
  }

  void ShowsPartOfTheSite() {
    Show();
    const std::string yard = tree_->CameraAt(Row("CAM 10 gate")).region_index_code;
    const std::string fence = tree_->CameraAt(Row("CAM 2 fence")).index_code;
    tree_->SetLogicNodeParam({yard, false});
    QTRY_COMPARE(Rows(), QString("Yard(CAM 10 gate)"));
    QCOMPARE(tree_->FindCamera(fence).name, std::string("CAM 2 fence"));  // the site has it all the same
    tree_->SetLogicNodeParam({"gone", true});
    QTRY_COMPARE(Notice(), QString("No cameras"));
  }

  // Texts that are typed before the cameras are there, or before an earlier text was looked for.
  void LatestTextWins() {
    services_->Hold("GetCameraTree");
    QSignalSpy filtered(tree_.get(), &CCameraTree::SignalFiltered);
    tree_->show();
    QVERIFY(services_->WaitUntilHeld("GetCameraTree"));
    QTRY_COMPARE(Notice(), QString("Loading cameras..."));
    tree_->SetFilterText("yard");
    services_->Release("GetCameraTree");
    QTRY_COMPARE(Rows(), QString("Yard(CAM 2 fence,CAM 10 gate)"));
    QVERIFY(Notice().isEmpty() && tree_->isExpanded(Row("Yard")));  // the hit itself, with what it keeps
    tree_->SetFilterText("door");
    tree_->SetFilterText("stairs");
    QTRY_COMPARE(Rows(), QString("Building(CAM 40 stairs)"));
    QCOMPARE(filtered, (QList<QList<QVariant>>{{2}, {1}}));
  }

  void LoadsAgainWhileItFilters() {
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    bool reloaded = false;
    const CFilterGate gate([&] {
      if (!std::exchange(reloaded, true)) {
        tree_->Reload();
      }
      return true;
    });
    tree_->SetFilterText("gate");
    tree_->show();
    QTRY_COMPARE(loaded.size(), 2);
    QVERIFY(reloaded);
    QCOMPARE(Rows(), QString("Building(Hall(CAM 31 gate)),Yard(CAM 10 gate)"));
    QCOMPARE(tree_->CameraCount(), 6);
  }

  void KeepsWhatTheUserMadeOfIt() {
    Show();
    tree_->collapse(Row("Yard"));
    tree_->expand(Row("Hall"));
    Filter("gate");
    QVERIFY(tree_->isExpanded(Row("Yard")));
    tree_->setCurrentIndex(Row("CAM 10 gate"));
    Filter("gat");
    QCOMPARE(tree_->currentIndex(), Row("CAM 10 gate"));
    QVERIFY(tree_->selectionModel()->isSelected(Row("CAM 10 gate")));
    Filter("");
    QCOMPARE(tree_->currentIndex(), Row("CAM 10 gate"));
    QVERIFY(tree_->isExpanded(Row("Yard")) &&
            tree_->isExpanded(Row("Hall")));  // the way to the found camera stays open
    tree_->setCurrentIndex(Row("CAM 31 gate"));
    tree_->collapse(Row("Yard"));
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    QTest::keyClick(tree_.get(), Qt::Key_F5);
    QTRY_COMPARE(loaded.size(), 1);
    QVERIFY(!tree_->isExpanded(Row("Yard")) && tree_->isExpanded(Row("Hall")));
    QCOMPARE(tree_->currentIndex(), Row("CAM 31 gate"));
  }

  void ActivatesByMouseAndKeys() {
    Show();
    QSignalSpy one(tree_.get(), &CCameraTree::SignalCameraActivated);
    QSignalSpy many(tree_.get(), &CCameraTree::SignalRegionActivated);
    const QPoint roaming = tree_->visualRect(Row("Roaming")).center();
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, roaming);
    QTest::mouseDClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, roaming);
    QTest::keyClick(tree_.get(), Qt::Key_Return);
    QCOMPARE(one.size(), 2);
    QCOMPARE(one[0][0].value<CCameraItemInfo>().name, std::string("Roaming"));
    tree_->setCurrentIndex(Row("Building"));
    QTest::keyClick(tree_.get(), Qt::Key_Return);
    QVERIFY(!tree_->isExpanded(Row("Building")) && one.size() == 2 && many.isEmpty());
    QTest::keyClick(tree_.get(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(Names(many.takeFirst()[0].value<QVector<CCameraItemInfo>>()),
             (QStringList{"CAM 30 door", "CAM 31 gate", "CAM 40 stairs"}));
    tree_->selectAll();
    QTest::keyClick(tree_.get(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(many.takeFirst()[0].value<QVector<CCameraItemInfo>>().size(), 6);

    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, tree_->visualRect(Row("Yard")).center());
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(tree_->viewport(), &asked);
    auto* menu = tree_->findChild<QMenu*>();
    QVERIFY(menu);
    for (QAction* action : menu->actions()) {
      if (action->text() == "Put all into windows (2)") {
        action->trigger();
      }
    }
    menu->close();
    QCOMPARE(many.size(), 1);
    QCOMPARE(Names(many.takeFirst()[0].value<QVector<CCameraItemInfo>>()), (QStringList{"CAM 2 fence", "CAM 10 gate"}));
  }

  void FavoritesComeAndGo() {
    Show(true);
    const QString all = Rows();
    ToggleFavorite(Row("CAM 10 gate"));
    QCOMPARE(Row("CAM 10 gate", Row("Yard")).data(Qt::AccessibleTextRole).toString(), QString("CAM 10 gate, favorite"));
    ToggleFavorite(Row("CAM 31 gate"));
    tree_->selectAll();
    QCOMPARE(tree_->CamerasBelow(Row("Favorites")).size(), 2);
    QSignalSpy many(tree_.get(), &CCameraTree::SignalRegionActivated);
    QTest::keyClick(tree_.get(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(many[0][0].value<QVector<CCameraItemInfo>>().size(), 6);  // a favorite once, not twice

    const QRect row = tree_->visualRect(Row("CAM 10 gate", Row("Yard")));
    QSignalSpy one(tree_.get(), &CCameraTree::SignalCameraActivated);
    const QPoint star(row.right() - 13, row.center().y());
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, star);
    QTest::mouseDClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, star);
    QTRY_COMPARE(Rows(), "Favorites(CAM 31 gate)," + all);  // a click on the star
    QVERIFY(one.isEmpty());
    tree_->SetFavoritesVisible(false);
    QCOMPARE(Rows(), all);

    CCameraTree second;  // they are the user's, not the tree's
    second.SetFavoritesVisible(true);
    second.Reload();
    QTRY_VERIFY(second.IsLoaded());
    QCOMPARE(Outline(second.model()), "Favorites(CAM 31 gate)," + all);
  }

  // The favorites of a load may have been read before a star was set or taken off; what the user did counts.
  void FavoritesOutliveAnOlderAnswer() {
    Show(true);
    const QString all = Rows();
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    for (const QString& expected : {"Favorites(CAM 10 gate)," + all, all}) {
      services_->Hold("GetFavoriteCameras", TarnTest::CRecordingServices::AfterCall);
      loaded.clear();
      tree_->Renew();
      QVERIFY(services_->WaitUntilHeld("GetFavoriteCameras"));
      ToggleFavorite(Row("CAM 10 gate"));
      services_->ReleaseAll();
      QTRY_COMPARE(loaded.size(), 1);
      QCOMPARE(Rows(), expected);
    }

    Filter("gate");
    std::string error;
    QVERIFY(store_->SetFavoriteCamera(tree_->CameraAt(Row("CAM 31 gate")).index_code, true, &error));
    bool open = false;
    const CFilterGate gate([&open] { return open; });
    tree_->Renew();
    QTRY_VERIFY(tree_->IsFiltering());
    ToggleFavorite(Row("CAM 10 gate"));
    open = true;
    QTRY_VERIFY(!tree_->IsFiltering());
    QCOMPARE(Rows(), QString("Favorites(CAM 10 gate,CAM 31 gate),Building(Hall(CAM 31 gate)),Yard(CAM 10 gate)"));
  }

  void FailureCanBeTriedAgain() {
    services_->Fail("GetCameraTree", "The site does not answer.");
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    tree_->show();
    QTRY_COMPARE(Notice(), QString("The site does not answer."));
    QCOMPARE(loaded.takeFirst()[0].toString(), Notice());
    tree_->hide();
    tree_->show();
    QTRY_COMPARE(loaded.size(), 1);
    auto* retry = tree_->findChild<QAbstractButton*>();
    QVERIFY(retry && retry->isVisible() && !tree_->IsLoaded());
    services_->Mend("GetCameraTree");
    QTest::mouseClick(retry, Qt::LeftButton);
    QTRY_VERIFY(tree_->IsLoaded());
    QVERIFY(Notice().isEmpty() && !retry->isVisible());
  }

  // What stands in place of the rows is read out once, and again when it is the answer to something else.
  void SaysWhyThereAreNoRows() {
    const TarnTest::CScreenReader reader;
    const auto times = [&reader](const char* text) { return reader.Heard(QAccessible::Alert).count(text); };
    services_->Fail("GetCameraTree", "The site does not answer.");
    tree_->show();
    QTRY_COMPARE(times("The site does not answer."), 1);
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    QTest::mouseClick(tree_->findChild<QAbstractButton*>(), Qt::LeftButton);
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(times("The site does not answer."), 2);

    services_->Mend("GetCameraTree");
    Load(&CCameraTree::Reload);
    for (const char* text : {"roof", "roof top", "gate", "roof"}) {
      Filter(text);
    }
    QCOMPARE(times("No hit"), 2);
    tree_->hide();
    Filter("cellar");
    QCOMPARE(times("No hit"), 2);
    tree_->show();
    QCOMPARE(times("No hit"), 3);
  }

  void FailuresLeaveWhatIsThere() {
    Show(true);
    const QString all = Rows();
    QSignalSpy messages(&CNomalMessageManager::Instance(), &CNomalMessageManager::SignalMessageShown);
    services_->Fail("SetFavoriteCamera", "The store is full.");
    tree_->setCurrentIndex(Row("Roaming"));
    QTest::keyClick(tree_.get(), Qt::Key_F);
    QTRY_COMPARE(messages.size(), 1);
    QCOMPARE(messages.takeFirst()[0].toString(), QString("The store is full."));
    QCOMPARE(Rows(), all);

    services_->Fail("GetCameraTree", "");
    Load(&CCameraTree::Reload);
    QVERIFY(!error_.isEmpty() && tree_->CameraCount() == 6 && Notice().isEmpty());
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0][0].toString(), error_);

    services_->Mend("GetCameraTree");
    services_->Fail("GetFavoriteCameras");
    Load(&CCameraTree::Reload);
    QVERIFY(!Row("Roaming").data(Qt::UserRole + 1).isValid());  // no mark that could not be kept
  }

  void RenewsWithoutMovingAnything() {
    const auto site = std::make_shared<CChangingSite>(store_);
    TarnHost::InstallHostServices(site);
    Show();
    QSignalSpy reset(tree_->model(), &QAbstractItemModel::modelReset);
    Load(&CCameraTree::Renew);
    QVERIFY(reset.isEmpty());

    tree_->setCurrentIndex(Row("CAM 110"));
    tree_->collapse(Row("North"));  // around the current row
    tree_->scrollTo(Row("CAM 140"), QAbstractItemView::PositionAtTop);
    const auto top = [this] { return tree_->indexAt(QPoint(0, 0)).data().toString(); };
    QCOMPARE(top(), QString("CAM 140"));
    site->Change([](auto& cameras) {
      cameras.erase(cameras.begin() + 35, cameras.begin() + 38);
      cameras[33].name = "Renamed";
      cameras.push_back({"500", "A new one", "2", true});
      cameras.push_back({"501", "CAM 14x", "4", true});
    });
    Load(&CCameraTree::Renew);
    QCOMPARE(reset.size(), 1);
    QVERIFY(!Row("CAM 135").isValid() && Row("A new one").isValid() && Row("Renamed").isValid());
    QCOMPARE(top(), QString("CAM 140"));
    QCOMPARE(tree_->currentIndex(), Row("CAM 110"));
    QVERIFY(!tree_->isExpanded(Row("North")) && tree_->isExpanded(Row("South")) && tree_->isExpanded(Row("West")));

    Filter("CAM 1");
    tree_->collapse(Row("South"));
    site->Change([](auto& cameras) { cameras.erase(cameras.begin() + 40, cameras.begin() + 42); });
    Load(&CCameraTree::Renew);
    QVERIFY(!tree_->isExpanded(Row("South")) && tree_->isExpanded(Row("West")));
    QVERIFY(tree_->FilterText() == "CAM 1" && !Row("A new one").isValid());
  }

  void RenewsWithoutAWord() {
    const auto site = std::make_shared<CChangingSite>(store_);
    TarnHost::InstallHostServices(site);
    Show();
    QSignalSpy messages(&CNomalMessageManager::Instance(), &CNomalMessageManager::SignalMessageShown);
    site->FailWith("gone fishing");
    Load(&CCameraTree::Renew);
    QCOMPARE(error_, QString("gone fishing"));
    QVERIFY(messages.isEmpty() && Row("CAM 188").isValid());
    Filter("fence");
    Load(&CCameraTree::Renew);
    QCOMPARE(Notice(), QString("No hit"));
    site->FailWith({});
    site->Change([](auto& cameras) { cameras.push_back({"502", "Fence", "2", true}); });
    QMenu menu;
    menu.popup(QPoint());
    Load(&CCameraTree::Renew);
    QVERIFY(!Row("Fence").isValid());  // under an open menu nothing moves
    menu.close();
    Load(&CCameraTree::Renew);
    for (QModelIndex above = Row("Fence").parent(); above.isValid(); above = above.parent()) {
      QVERIFY(tree_->isExpanded(above));  // a hit that comes in is in sight
    }
  }

  void NamesAreNoMarkup() {
    const auto site = std::make_shared<CChangingSite>(store_);
    site->Change([](auto& cameras) {
      cameras[0].name = "<b>x";
      cameras[1].name = "Gate A & B";
    });
    TarnHost::InstallHostServices(site);
    Show();
    for (const char* name : {"<b>x", "Gate A & B"}) {
      const QString tip = Row(name).data(Qt::ToolTipRole).toString();
      QTextDocument shown;
      Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
      QCOMPARE(shown.toPlainText(), QString(name));
    }
  }

  void DiesWhileItLoads() {
    services_->Hold("GetCameraTree");
    tree_->show();
    QVERIFY(services_->WaitUntilHeld("GetCameraTree"));
    tree_->Reload();
    tester_.reset();
    tree_.reset();
    services_->ReleaseAll();
    HostCalls::AwaitCalls();
    QCoreApplication::processEvents();

    TarnHost::InstallHostServices(nullptr);
    CCameraTree late;
    QSignalSpy loaded(&late, &CCameraTree::SignalLoaded);
    late.Reload();
    QTRY_COMPARE(loaded.size(), 1);
    QVERIFY(!loaded[0][0].toString().isEmpty());
  }

  void BrokenRegionsLoseNoCamera() {
    TarnHost::InstallHostServices(std::make_shared<CBrokenSite>(store_));
    Show();
    QCOMPARE(Rows(), QString("A(B,In the ring),Lost,Self,Nowhere"));
  }

  void RandomCommandsAgainstAPlainTree() {
    Show(true);
    QRandomGenerator random(20);
    const QStringList texts{"", "gate", "cam", "HALL", "building", "3", "yard", "oa", "none"};
    QStringList favorites;
    for (int step = 0; step < 120; ++step) {
      const QString camera = kCameras[random.bounded(kCameras.size())];
      const QModelIndex row = Row(camera);
      if (random.bounded(3) == 0) {
        Filter(texts[random.bounded(texts.size())]);
      } else if (row.isValid()) {
        ToggleFavorite(row);
        if (!favorites.removeOne(camera)) {
          favorites.append(camera);
        }
      } else {
        Load(&CCameraTree::Reload);
      }
      QCOMPARE(Rows(), Expected(favorites, tree_->FilterText()));
    }
  }

 private:
  void Show(bool favorites = false) {
    tree_->SetFavoritesVisible(favorites);
    tree_->show();
    QVERIFY(QTest::qWaitForWindowExposed(tree_.get()));
    QTRY_VERIFY(tree_->IsLoaded());
  }

  QModelIndex Row(const QString& name, const QModelIndex& below = QModelIndex()) const;
  void Filter(const QString& text) {
    tree_->SetFilterText(text);
    QTRY_VERIFY(!tree_->IsFiltering());
  }

  void ToggleFavorite(const QModelIndex& row) {
    const int before = services_->Count("SetFavoriteCamera");
    const QString outline = Rows();
    tree_->setCurrentIndex(row);
    QTest::keyClick(tree_.get(), Qt::Key_F);
    QTRY_COMPARE(services_->Count("SetFavoriteCamera"), before + 1);
    QTRY_VERIFY(Rows() != outline);
  }

  QString Notice() const {
    const auto* label = tree_->findChild<QLabel*>("empty_state_text");
    return label->isVisible() ? label->text() : QString();
  }

  QString Rows() const { return Outline(tree_->model()); }
  /// Calls Reload() or Renew() and waits for the end.
  void Load(void (CCameraTree::*how)()) {
    QSignalSpy loaded(tree_.get(), &CCameraTree::SignalLoaded);
    (tree_.get()->*how)();
    QTRY_COMPARE(loaded.size(), 1);
    error_ = loaded[0][0].toString();
  }

  std::shared_ptr<TarnHost::CPlanStore> store_;
  std::shared_ptr<TarnTest::CRecordingServices> services_;
  std::unique_ptr<CCameraTree> tree_;
  std::unique_ptr<QAbstractItemModelTester> tester_;
  QString error_;  // of the last Load()
};

QModelIndex CameraTreeTest::Row(const QString& name, const QModelIndex& below) const {
  for (int row = 0; row < tree_->model()->rowCount(below); ++row) {
    const QModelIndex index = tree_->model()->index(row, 0, below);
    const QModelIndex found = index.data().toString() == name ? index : Row(name, index);
    if (found.isValid()) {
      return found;
    }
  }
  return QModelIndex();
}

QTEST_MAIN(CameraTreeTest)
#include "test_camera_tree.moc"

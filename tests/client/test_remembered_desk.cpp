#include <QAbstractButton>
#include <QComboBox>
#include <QRegularExpression>
#include <QScreen>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include "TarnHost/modal_answer.h"
#include "client_desk.h"
#include "default_load_view_display.h"
#include "history/play_history.h"
#include "settings/settings_dialog.h"
#include "settings/user_settings.h"
#include "window/window_place.h"

using TarnClient::ChosenSettings;
using TarnClient::CUserSettings;
using TarnClient::OpensFirst;
using TarnTest::CPlanFixture;

Q_DECLARE_METATYPE(TarnClient::OpensFirst)

// The desk as its user left it, at the next start and after a switch of user.
class RememberedDeskTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void AWindowOpensOnAScreen_data();
  void AWindowOpensOnAScreen();
  void ComesBackAfterARestart_data();
  void ComesBackAfterARestart();
  void TheWholeScreenComesBack();
  void EachUserHasHisOwn();
  void OpensWhatWasChosen_data();
  void OpensWhatWasChosen();
  void WhatIsGoneCostsNothing();
  void TroublesAreSaidOnce();
  void SecondsCountFromTheNextTurn();
  void ClosingAsksWhileSomethingPlays();
  void TheDialogStoresWhatWasChanged();
  void cleanup() { CloseDesk(); }

 private:
  void OpenAgain(const QMap<QString, int>& switches = {}, const QString& user = "operator");
  void Expand(const char* name, size_t family = 0);
  void Choose(const std::function<void(ChosenSettings&)>& change);
  QSplitter* Splitter() { return window_->findChild<QSplitter*>(); }
  QTabWidget* Tabs() { return window_->findChild<QTabWidget*>(); }
  QString SettingsPath() const { return folder_->filePath("settings.json"); }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<CUserSettings> kept_;
};

void RememberedDeskTest::init() {
  folder_ = std::make_unique<QTemporaryDir>();
}

// The window goes before its settings, as at the end of the program.
void RememberedDeskTest::OpenAgain(const QMap<QString, int>& switches, const QString& user) {
  if (window_) {
    CloseDesk();
  }
  kept_ = std::make_unique<CUserSettings>(SettingsPath());
  settings_ = kept_.get();
  Open(switches, user, "sqlite:" + folder_->filePath("site.sqlite"));
}

void RememberedDeskTest::Expand(const char* name, size_t family) {
  QTRY_VERIFY2(Row(name, family).isValid(), name);
  Tree(family)->ExpandAsync(Row(name, family));
  QTRY_VERIFY2(Tree(family)->isExpanded(Row(name, family)), name);
}

void RememberedDeskTest::Choose(const std::function<void(ChosenSettings&)>& change) {
  ChosenSettings chosen = kept_->Chosen();
  change(chosen);
  QString error;
  QVERIFY2(kept_->Choose(kept_->Chosen(), chosen, &error), qPrintable(error));
}

void RememberedDeskTest::AWindowOpensOnAScreen_data() {
  QTest::addColumn<QVector<QRect>>("screens");
  QTest::addColumn<QRect>("remembered");
  QTest::addColumn<QRect>("opened");
  const QRect main(0, 0, 1920, 1080), right(1920, 0, 2560, 1440), left(-1280, 0, 1280, 1024);
  const QRect here(100, 100, 1200, 800);
  QTest::newRow("as it was") << QVector<QRect>{main} << here << here;
  QTest::newRow("on the second screen") << QVector<QRect>{main, right} << here.translated(1920, 0)
                                        << here.translated(1920, 0);
  QTest::newRow("over two screens") << QVector<QRect>{main, right} << QRect(1000, 50, 2000, 900)
                                    << QRect(1000, 50, 2000, 900);
  QTest::newRow("screen at the right is gone")
      << QVector<QRect>{main} << here.translated(1920, 0) << QRect(360, 152, 1200, 800);
  QTest::newRow("screen at the left is gone")
      << QVector<QRect>{main} << QRect(-1200, 50, 1100, 700) << QRect(410, 202, 1100, 700);
  QTest::newRow("one of two is gone") << QVector<QRect>{main} << QRect(1000, 50, 2000, 900) << QRect(8, 50, 1904, 900);
  QTest::newRow("now smaller") << QVector<QRect>{{0, 0, 1366, 768}} << QRect(0, 30, 1900, 1040)
                               << QRect(8, 32, 1350, 728);
  QTest::newRow("beyond an edge") << QVector<QRect>{main, left} << QRect(1500, 700, 1100, 700)
                                  << QRect(812, 372, 1100, 700);
  QTest::newRow("screen less than the window") << QVector<QRect>{{0, 0, 800, 600}} << here << QRect(8, 32, 1008, 660);
  QTest::newRow("far away") << QVector<QRect>{main} << QRect(1000000, -1000000, 1100, 700)
                            << QRect(410, 202, 1100, 700);
  QTest::newRow("no screen") << QVector<QRect>{} << here << here;
}

void RememberedDeskTest::AWindowOpensOnAScreen() {
  QFETCH(QVector<QRect>, screens);
  QFETCH(QRect, remembered);
  QTEST(TarnClient::WindowPlaceOn(screens, remembered), "opened");
}

void RememberedDeskTest::ComesBackAfterARestart_data() {
  QTest::addColumn<int>("load_all");
  QTest::newRow("groups load when they open") << 0;
  QTest::newRow("all is loaded") << 1;
}

void RememberedDeskTest::ComesBackAfterARestart() {
  QFETCH(int, load_all);
  OpenAgain({{"load_all", load_all}});
  for (const char* name : {"Public A", "A1", "Public B"}) {
    Expand(name);
  }
  Tree()->collapse(Row("Public B"));
  window_->ShowFamily(1);
  Expand("Own C", 1);
  Splitter()->setSizes({400, Splitter()->width() - 400});
  const int side = Splitter()->sizes().first();
  window_->resize(1100, 700);
  const QRect place = window_->geometry();
  Play("Public A plan 2");
  Play("Public root plan");

  OpenAgain({{"load_all", load_all}});
  QCOMPARE(window_->geometry(),
           TarnClient::WindowPlaceOn({QGuiApplication::primaryScreen()->availableGeometry()}, place));
  QCOMPARE(Splitter()->sizes().first(), side);
  QCOMPARE(Tabs()->currentIndex(), 1);
  QTRY_VERIFY(Row("A1").isValid() && Tree()->isExpanded(Row("A1")));
  QTRY_VERIFY(Row("Own C", 1).isValid() && Tree(1)->isExpanded(Row("Own C", 1)));
  QVERIFY(Tree()->isExpanded(Row("Public A")) && !Tree()->isExpanded(Row("Public B")));
  QCOMPARE(window_->History().rowCount(), 2);
  QCOMPARE(window_->History().At(0).name, QString("Public root plan"));
  QVERIFY(!Wall().IsPlaying());

  // What has not come yet when the client is left again is not lost.
  fixture_.Services().Hold("GetPlanGroups");
  OpenAgain({{"load_all", load_all}});
  OpenAgain({{"load_all", load_all}});
  QTRY_VERIFY(Row("A1").isValid() && Tree()->isExpanded(Row("A1")));
}

void RememberedDeskTest::TheWholeScreenComesBack() {
  OpenAgain();
  const QSize before = window_->size();
  const int side = Splitter()->sizes().value(0);
  window_->ShowWallAlone(true);
  OpenAgain();
  QVERIFY(window_->isFullScreen() && !Tabs()->isVisible());
  QVERIFY(window_->focusWidget() == &Wall());
  window_->ShowWallAlone(false);
  QVERIFY(Tabs()->isVisible());
  QTRY_COMPARE(window_->size(), before);
  QCOMPARE(Splitter()->sizes().value(0), side);
}

void RememberedDeskTest::EachUserHasHisOwn() {
  OpenAgain({{"load_all", 1}});
  Expand("Public A");
  Play("Public A plan 2");
  const auto searches = [this] { return window_->CurrentFamily().Panel()->GetLastSearches(); };
  window_->ShowFamily(1);
  window_->CurrentFamily().Panel()->SetLastSearches({"gate"});
  SwitchUser("viewer");
  QCOMPARE(searches(), QStringList());
  WaitForPlans();
  QCOMPARE(window_->History().rowCount(), 0);
  QCOMPARE(Tabs()->currentIndex(), 0);
  QVERIFY(!Tree()->isExpanded(Row("Public A")));
  Expand("Public B");
  SwitchUser("operator");
  WaitForPlans();
  QCOMPARE(window_->History().rowCount(), 1);
  QCOMPARE(Tabs()->currentIndex(), 1);
  QCOMPARE(searches(), QStringList("gate"));
  QTRY_VERIFY(Tree()->isExpanded(Row("Public A")));
  QVERIFY(!Tree()->isExpanded(Row("Public B")));
  OpenAgain({{"load_all", 1}}, "viewer");
  QTRY_VERIFY(Tree()->isExpanded(Row("Public B")));
  QVERIFY(!Tree()->isExpanded(Row("Public A")));
}

void RememberedDeskTest::OpensWhatWasChosen_data() {
  QTest::addColumn<OpensFirst>("choice");
  QTest::addColumn<QString>("last");
  QTest::addColumn<QString>("playing");
  QTest::newRow("default view") << OpensFirst::DefaultView << "Public A plan 2"
                                << "Public B plan 2";
  QTest::newRow("last plan") << OpensFirst::LastPlayed << "Public A plan 2"
                             << "Public A plan 2";
  QTest::newRow("last group") << OpensFirst::LastPlayed << "Own C"
                              << "C1 plan 2";
  QTest::newRow("nothing was played") << OpensFirst::LastPlayed << ""
                                      << "";
  QTest::newRow("nothing") << OpensFirst::Nothing << "Public A plan 2"
                           << "";
}

void RememberedDeskTest::OpensWhatWasChosen() {
  QFETCH(OpensFirst, choice);
  QFETCH(QString, last);
  QFETCH(QString, playing);
  OpenAgain({{"load_all", 1}});
  QCOMPARE(fixture_.InStore().SetDefaultView(Code("Public B plan 2"), 16000), QString());
  Choose([&](ChosenSettings& chosen) { chosen.opens_first = choice; });
  if (last.startsWith("Own")) {
    window_->Player().PlayGroup(fixture_.Code(last));
    QTRY_VERIFY(Wall().IsPlaying());
  } else if (!last.isEmpty()) {
    Play(last);
  }
  QTest::keyClick(&Wall(), Qt::Key_Escape);  // what was stopped was played last all the same
  OpenAgain({{"load_all", 1}});
  window_->OpenFirst();
  QTRY_COMPARE(Wall().PlanName(), playing);
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), playing);
  QVERIFY2(Tip().isEmpty(), qPrintable(Tip()));
}

void RememberedDeskTest::WhatIsGoneCostsNothing() {
  OpenAgain({{"load_all", 1}});
  Expand("Public A");
  Play("Public B plan 2");
  QCOMPARE(fixture_.InStore().DeletePlan(Code("Public B plan 2")), QString());
  Choose([&](ChosenSettings& chosen) { chosen.opens_first = OpensFirst::LastPlayed; });
  OpenAgain({{"load_all", 1}});
  window_->OpenFirst();
  QTRY_VERIFY(!Tip().isEmpty());
  QVERIFY(!Wall().IsPlaying());
  QTRY_VERIFY(Tree()->isExpanded(Row("Public A")));
}

void RememberedDeskTest::TroublesAreSaidOnce() {
  QFile file(SettingsPath());
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(R"({"version": 9})");
  file.close();
  OpenAgain({{"load_all", 1}});
  QTRY_VERIFY2(Tip().contains("newer version"), qPrintable(Tip()));
  ForgetTips();
  SwitchUser("viewer");
  WaitForPlans();
  Expand("Public A");
  QVERIFY(kept_->Flush());
  CPlanFixture::Drain();
  QVERIFY2(Tip().isEmpty(), qPrintable(Tip()));
}

void RememberedDeskTest::SecondsCountFromTheNextTurn() {
  OpenAgain({{"load_all", 1}});
  Choose([](ChosenSettings& chosen) { chosen.seconds_per_plan = 45; });
  window_->Player().PlayGroup(fixture_.Code("Public B"));
  QTRY_COMPARE(clock_->Seconds(), 45);
  Choose([](ChosenSettings& chosen) { chosen.seconds_per_plan = 90; });
  QCOMPARE(clock_->Seconds(), 45);
  clock_->EndTurn();
  QTRY_COMPARE(clock_->Seconds(), 90);
}

void RememberedDeskTest::ClosingAsksWhileSomethingPlays() {
  OpenAgain({{"load_all", 1}});
  int questions = 0;
  bool answer = false;
  TarnHost::SetModalAnswer([&](const TarnHost::ModalQuestion&) {
    ++questions;
    return answer ? 1 : 0;
  });
  Play("Public A plan 2");
  QVERIFY(!window_->close() && window_->isVisible());
  answer = true;
  QVERIFY(window_->close());
  QCOMPARE(questions, 2);
  window_->show();
  Choose([](ChosenSettings& chosen) { chosen.asks_before_closing = false; });
  QVERIFY(window_->close());
  window_->show();
  Choose([](ChosenSettings& chosen) { chosen.asks_before_closing = true; });
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(window_->close());
  QCOMPARE(questions, 2);
  TarnHost::SetModalAnswer({});
}

// By the keyboard alone. A failed save keeps the dialog and what was entered.
void RememberedDeskTest::TheDialogStoresWhatWasChanged() {
  OpenAgain({{"load_all", 1}});
  window_->OpenSettings();
  auto* dialog = window_->Settings();
  auto* save = dialog->findChild<QAbstractButton*>("settings_save_btn");
  auto* skin = dialog->findChild<QComboBox*>("settings_skin");
  auto* seconds = dialog->findChild<QSpinBox*>("settings_seconds");
  auto* start = dialog->findChild<QComboBox*>("settings_start");
  QVERIFY(!save->isEnabled());
  QTest::keyClick(skin, Qt::Key_Down);
  QVERIFY(save->isEnabled());
  QTest::keyClick(skin, Qt::Key_Up);
  QVERIFY(!save->isEnabled());
  QTest::keyClick(skin, Qt::Key_Down);
  seconds->selectAll();
  QTest::keyClicks(seconds, "33");
  QTest::keyClick(start, Qt::Key_End);
  QVERIFY(!dialog->DefaultView()->isEnabled());
  for (const QWidget* field :
       dialog->findChildren<QWidget*>(QRegularExpression("settings_(language|skin|start|seconds|asks)"))) {
    QVERIFY2(!field->accessibleName().isEmpty(), qPrintable(field->objectName()));
  }
  QVERIFY(QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::ExeOwner));
  save->click();
  QVERIFY(dialog->isVisible() && save->isEnabled() && seconds->value() == 33);
  QVERIFY2(Tip().contains("read-only"), qPrintable(Tip()));
  QVERIFY(kept_->Chosen() == ChosenSettings());
  QVERIFY(QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  QTest::keyClick(dialog, Qt::Key_Return);
  QTRY_VERIFY(!window_->Settings());
  QCOMPARE(kept_->Chosen().skin, QString("white"));
  QCOMPARE(kept_->Chosen().seconds_per_plan, 33);
  QVERIFY(kept_->Chosen().opens_first == OpensFirst::Nothing);

  window_->OpenSettings();  // in the dark skin, whatever is stored
  skin = window_->Settings()->findChild<QComboBox*>("settings_skin");
  save = window_->Settings()->findChild<QAbstractButton*>("settings_save_btn");
  QCOMPARE(skin->currentData().toString(), QString("redblack"));
  QVERIFY(!save->isEnabled());
  QTest::keyClick(skin, Qt::Key_Down);
  QVERIFY(save->isEnabled());  // the stored one can be had
  QTest::keyClick(skin, Qt::Key_Up);
  QSignalSpy skins(kept_.get(), &CUserSettings::SignalSkinChosen);
  window_->Settings()->findChild<QSpinBox*>("settings_seconds")->setValue(44);
  save->click();
  QTRY_VERIFY(!window_->Settings());
  QVERIFY(kept_->Chosen().seconds_per_plan == 44 && kept_->Chosen().skin == "white");  // that was not touched
  QCOMPARE(skins.size(), 0);
}

QTEST_MAIN(RememberedDeskTest)
#include "test_remembered_desk.moc"

#include <QFutureWatcher>

#include "default_view_stage.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::ChangedPlan;
using TarnTest::CPlanFixture;

// What the chooser offers, saves and shows, and what becomes of it when rows and answers change.
class DefaultViewTest : public CDefaultViewStage {
  Q_OBJECT
 private Q_SLOTS:
  void OffersBothFamiliesOnce();
  void RootsCannotBeChosenAndGroupsCan();
  void GroupsFollowTheirSwitch();
  void SavesEveryKindOfRow();
  void ReadsAndFindsWhatIsNotLoaded_data();
  void ReadsAndFindsWhatIsNotLoaded();
  void UnknownCodesLeaveTheChoice_data();
  void UnknownCodesLeaveTheChoice();
  void FailuresKeepTheHostsText();
  void WayThatCannotBeLoadedEndsTheSearch_data();
  void WayThatCannotBeLoadedEndsTheSearch();
  void PlanThatIsNotOfferedEndsTheSearch();
  void FollowsDeletionsMovesAndReloads();
  void UnsavedChoiceThatVanishesGivesWayToTheStored_data();
  void UnsavedChoiceThatVanishesGivesWayToTheStored();
  void FailedCallsAreNoDeletions_data();
  void FailedCallsAreNoDeletions();
  void ChoosesByKeys();
  void TypesTellCodesApart();
  void LeavesTheManagerWithItsOwnModels();
};

void DefaultViewTest::OffersBothFamiliesOnce() {
  Begin({{"create_under_root", 1}});
  int row = 0;
  for (const char* top : {"No default view", "Public plans", "My plans"}) {
    QCOMPARE(Tree()->model()->index(row++, 0).data().toString(), QString(top));
  }
  QTRY_VERIFY(Row("Own root plan").isValid());
  for (const char* group : {"Own C", "C1"}) {
    QTRY_VERIFY(Row(group).isValid());
    Tree()->ExpandAsync(Row(group));
  }
  QTRY_VERIFY(Row("C1 plan 10").isValid() && Tree()->isExpanded(Row("C1")));
}

void DefaultViewTest::RootsCannotBeChosenAndGroupsCan() {
  Begin();
  const auto selectable = [this](const char* row) { return bool(Row(row).flags() & Qt::ItemIsSelectable); };
  QVERIFY(!selectable("Public plans") && !selectable("My plans"));
  QVERIFY(Row("Public plans").flags() & Qt::ItemIsEnabled);
  QVERIFY(selectable("Public A") && selectable("No default view"));
  Choose("My plans");
  QCOMPARE(Chosen(), QString());
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::GroupsFollowTheirSwitch() {
  Begin({{"group_cycle", 0}});
  StoreAndRead(kGroup, Code("Public A"));
  SelectStored();
  QTRY_COMPARE(Chosen(), QString("Public A"));  // what is stored stays to be seen
  QVERIFY(!(Row("Public A").flags() & Qt::ItemIsSelectable) && !(Row("Public B").flags() & Qt::ItemIsSelectable));
  Choose("Public B");
  QCOMPARE(Chosen(), QString("Public A"));
}

void DefaultViewTest::SavesEveryKindOfRow() {
  Begin({{"create_under_root", 1}});
  QVERIFY(chooser_->ReadDefaultView());
  for (const auto& [row, type] :
       {std::pair("Own C", kGroup), {"Public root plan", kPlan}, {"Public A", kGroup}, {"Own root plan", kPlan}}) {
    Choose(row);
    QCOMPARE(Chosen(), QString(row));
    QVERIFY(chooser_->IsChanged());
    QVERIFY(chooser_->SaveChosenView());
    QVERIFY(!chooser_->IsChanged());
    QCOMPARE(Stored(), Code(row));
    QCOMPARE(Services().Requests<ClienDefaultViewConfigRequest>().back().type, type);
  }
  QCOMPARE(tips_->count(), 4);
  QCOMPARE(tips_->last().at(1).toInt(), int(MarUIControl::CNomalMessage::Success));
  Choose("No default view");
  QVERIFY(chooser_->SaveChosenView());
  QCOMPARE(Services().Requests<ClienDefaultViewConfigRequest>().back().index_code, std::string("-3"));
  QCOMPARE(Stored(), std::string("-3"));
}

void DefaultViewTest::ReadsAndFindsWhatIsNotLoaded_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<int>("type");
  QTest::addColumn<bool>("load_all");
  for (const bool load_all : {false, true}) {
    const char* when = load_all ? "loaded" : "on demand";
    QTest::addRow("plan of an own subgroup, %s", when) << "C1 plan 2" << kPlan << load_all;
    QTest::addRow("public subgroup, %s", when) << "A1" << kGroup << load_all;
    QTest::addRow("none, %s", when) << "No default view" << 0 << load_all;
  }
}

void DefaultViewTest::ReadsAndFindsWhatIsNotLoaded() {
  QFETCH(QString, name);
  QFETCH(int, type);
  QFETCH(bool, load_all);
  Begin({{"load_all", load_all}});
  const std::string code = type == 0 ? "-3" : Code(name);
  StoreAndRead(type, code);
  QCOMPARE(chooser_->GetIndexCode(), code);
  QCOMPARE(chooser_->GetResourceType(), type);
  SelectStored();
  QTRY_COMPARE(Chosen(), name);
  QCOMPARE(Tree()->currentIndex().data().toString(), name);
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::UnknownCodesLeaveTheChoice_data() {
  QTest::addColumn<int>("type");
  QTest::addColumn<QByteArray>("code");
  QTest::newRow("no such plan") << kPlan << QByteArray("987654");
  QTest::newRow("no such group") << kGroup << QByteArray("987654");
  QTest::newRow("no number") << kPlan << QByteArray("Gate");
  QTest::newRow("too large") << kGroup << QByteArray("99999999999999999999");
  QTest::newRow("empty") << kPlan << QByteArray();
}

void DefaultViewTest::UnknownCodesLeaveTheChoice() {
  QFETCH(int, type);
  QFETCH(QByteArray, code);
  Begin();
  Choose("Public A");
  chooser_->SelectView(type, code.toStdString());
  QVERIFY(!chooser_->SaveChosenView());  // not before it is known whether there is such a row
  CPlanFixture::Drain();
  QTRY_VERIFY(chooser_->IsChanged());
  QCOMPARE(Chosen(), QString("Public A"));
  QCOMPARE(Tree()->currentIndex().data().toString(), QString("Public A"));
  QVERIFY(chooser_->SaveChosenView());
  QCOMPARE(Stored(), Code("Public A"));
}

void DefaultViewTest::FailuresKeepTheHostsText() {
  Begin();
  Services().Fail("GetClientViewConfig", "The line is down");
  QVERIFY(!chooser_->ReadDefaultView());
  Choose("Own C");
  controller_->DeletePlanGroupByIndex(Row("Own C"));
  QTRY_COMPARE(Chosen(), QString("No default view"));
  QVERIFY(chooser_->IsChanged());  // it is not known that there is none
  Services().Mend("GetClientViewConfig");
  StoreAndRead(kGroup, Code("Public B"));
  Services().Fail("GetClientViewConfig", "The line is down");
  QVERIFY(!chooser_->ReadDefaultView());
  QCOMPARE(chooser_->GetResponseText(), std::string("The line is down"));
  QCOMPARE(chooser_->GetIndexCode(), Code("Public B"));
  Services().Fail("SetClientViewConfig", "The disk is full");
  Choose("Public A");
  QVERIFY(!chooser_->SaveChosenView());
  QCOMPARE(chooser_->GetResponseText(), std::string("The disk is full"));
  QVERIFY(chooser_->IsChanged());
  QCOMPARE(tips_->count(), 4);  // the first is of the deletion
  QCOMPARE(tips_->last().first().toString(), QString("The disk is full"));

  chooser_->SetViewController(nullptr);
  QVERIFY(!chooser_->ReadDefaultView() && !chooser_->SaveChosenView());
  chooser_->SetViewController(controller_.get());
  controller_.reset();
  QVERIFY(!chooser_->ReadDefaultView() && !chooser_->SaveChosenView());
}

void DefaultViewTest::WayThatCannotBeLoadedEndsTheSearch_data() {
  QTest::addColumn<bool>("load_all");
  QTest::newRow("on demand") << false;
  QTest::newRow("all at the start") << true;
}

void DefaultViewTest::WayThatCannotBeLoadedEndsTheSearch() {
  QFETCH(bool, load_all);
  Begin({{"load_all", load_all}});
  chooser_.reset();
  Services().Fail("GetPlansInGroup", "The line is down");
  MakeChooser();
  CPlanFixture::Drain();
  StoreAndRead(kPlan, Code("C1 plan 2"));
  tips_->clear();
  SelectStored();
  QTRY_COMPARE(changes_->count(), 1);
  QTRY_COMPARE(tips_->count(), 1);
  QVERIFY(Chosen().isEmpty() && !chooser_->IsChanged());
  Services().Mend("GetPlansInGroup");
  SelectStored();
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::PlanThatIsNotOfferedEndsTheSearch() {
  Begin({{"create_under_root", 0}});
  StoreAndRead(kPlan, Code("Public root plan"));
  SelectStored();
  QTRY_COMPARE(changes_->count(), 1);
  QCOMPARE(tips_->count(), 1);
  QCOMPARE(Chosen(), QString());
  QVERIFY(!chooser_->IsChanged() && !chooser_->SaveChosenView());
  QCOMPARE(Stored(), Code("Public root plan"));

  // That one plan is not to be had says nothing about the one that was asked for since.
  Services().Hold("GetPlanGroups");
  chooser_->SelectView(kPlan, "987654");
  chooser_->SelectView(kPlan, Code("C1 plan 2"));
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  QTRY_COMPARE(chooser_->findChildren<QFutureWatcherBase*>().size(), 1);
  Services().ReleaseAll();
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
}

void DefaultViewTest::FollowsDeletionsMovesAndReloads() {
  Begin({{"create_under_root", 1}});
  StoreAndRead(kPlan, Code("A1 plan 2"));
  SelectStored();
  QTRY_COMPARE(Chosen(), QString("A1 plan 2"));
  Manager().OnUpdateViewModelData();
  QTRY_COMPARE(Chosen(), QString("A1 plan 2"));
  QVERIFY(!chooser_->IsChanged());

  controller_->UpdatePlanParam(ChangedPlan(Code("A1 plan 2"), "A1 plan moved", Code("Public B")), "A1 plan 2");
  QTRY_COMPARE(Chosen(), QString("A1 plan moved"));
  QTRY_COMPARE(Row("A1 plan moved").parent().data().toString(), QString("Public B"));
  QVERIFY(!chooser_->IsChanged());

  controller_->DeletePlanByIndex(Row("A1 plan moved"));
  QTRY_COMPARE(Chosen(), QString("No default view"));
  QCOMPARE(Stored(), std::string("-3"));
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::UnsavedChoiceThatVanishesGivesWayToTheStored_data() {
  QTest::addColumn<QString>("stored");
  QTest::addColumn<QString>("choice");
  const auto add = [](const char* row, const char* stored, const char* choice) {
    QTest::newRow(row) << stored << choice;
  };
  add("plan after plan", "C1 plan 2", "Public root plan");
  add("group after plan", "C1 plan 2", "Public B");
  add("plan after group", "A1", "Own root plan");
}

void DefaultViewTest::UnsavedChoiceThatVanishesGivesWayToTheStored() {
  QFETCH(QString, stored);
  QFETCH(QString, choice);
  Begin({{"create_under_root", 1}});
  StoreAndRead(stored == "A1" ? kGroup : kPlan, Code(stored));
  SelectStored();
  QTRY_COMPARE(Chosen(), stored);
  Choose(choice);
  QVERIFY(chooser_->IsChanged());
  if (choice == "Public B") {
    controller_->DeletePlanGroupByIndex(Row(choice));
  } else {
    controller_->DeletePlanByIndex(Row(choice));
  }
  QTRY_COMPARE(Chosen(), stored);
  QVERIFY(!chooser_->IsChanged());
  Manager().OnUpdateViewModelData();
  CPlanFixture::Drain();
  QTRY_COMPARE(Chosen(), stored);
  QCOMPARE(tips_->count(), 1);  // of the deletion itself
  QCOMPARE(tips_->first().at(1).toInt(), int(MarUIControl::CNomalMessage::Success));
  Choose("No default view");
  QVERIFY(chooser_->IsChanged() && chooser_->SaveChosenView());
}

void DefaultViewTest::FailedCallsAreNoDeletions_data() {
  QTest::addColumn<QStringList>("calls");
  QTest::addColumn<bool>("deleted");
  QTest::newRow("plan") << QStringList{"GetPlanDetail"} << false;
  QTest::newRow("all but the roots") << QStringList{"GetPlanDetail", "GetPlansInGroup", "GetClientViewConfig"} << false;
  QTest::newRow("deleted meanwhile") << QStringList{"GetPlanDetail", "GetClientViewConfig"} << true;
}

void DefaultViewTest::FailedCallsAreNoDeletions() {
  QFETCH(QStringList, calls);
  QFETCH(bool, deleted);
  Begin();
  StoreAndRead(kPlan, Code("C1 plan 2"));
  SelectStored();
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  for (const QString& call : calls) {
    Services().Fail(call, "The line is down");
  }
  Manager().OnUpdateViewModelData();
  const auto said = [this] {
    return std::count_if(tips_->begin(), tips_->end(),
                         [](const QVariantList& tip) { return tip.first().toString().contains("default view"); });
  };
  QTRY_COMPARE(said(), 1);
  CPlanFixture::Drain();
  QCOMPARE(Chosen(), QString());
  QVERIFY(!chooser_->IsChanged() && !chooser_->SaveChosenView());
  QCOMPARE(Stored(), Code("C1 plan 2"));
  QVERIFY(!deleted || fixture_.InStore().DeletePlan(Code("C1 plan 2")).isEmpty());
  for (const QString& call : calls) {
    Services().Mend(call);
  }
  Manager().OnUpdateViewModelData();
  QTRY_COMPARE(Chosen(), QString(deleted ? "No default view" : "C1 plan 2"));
  QVERIFY(!chooser_->IsChanged());
  QCOMPARE(said(), 1);
}

void DefaultViewTest::ChoosesByKeys() {
  Begin();
  auto* box = chooser_->GetLocationComboBox();
  QVERIFY(!box->accessibleName().isEmpty() && chooser_->focusProxy() == box);
  QTest::keyClick(box, Qt::Key_F4);
  Tree()->setCurrentIndex(Row("Public A"));
  QTest::keyClick(Tree(), Qt::Key_Right);
  QTRY_VERIFY(Row("A1").isValid());
  QTest::keyClick(Tree(), Qt::Key_Down);
  QTest::keyClick(Tree(), Qt::Key_Return);
  QCOMPARE(Chosen(), QString("A1"));
  QVERIFY(!box->IsPopupVisible());
  QCOMPARE(changes_->count(), 1);
}

void DefaultViewTest::TypesTellCodesApart() {
  Begin();
  for (const int type : {kPlan, kGroup}) {
    Choose("Public A");
    chooser_->SelectView(type, "-3");  // none, whatever stands beside it
    QCOMPARE(Chosen(), QString("No default view"));
  }
  // Another host's codes may serve a group and a plan.
  CStandardPlanModel* own = Manager().GetViewManagerByTheme("default_view", OwnTheme);
  const PlanBasicInfo namesake = TarnTest::PlanRecord(Code("Own C"), "namesake", 1);
  Manager().addPlanView(own, own->FindTargetItemByIndexCode("-2", true), namesake);
  StoreAndRead(kGroup, namesake.index_code);
  Choose("namesake");
  QVERIFY(chooser_->IsChanged());
  Choose("Own C");
  QVERIFY(!chooser_->IsChanged());
  QCOMPARE(tips_->count(), 0);
}

void DefaultViewTest::LeavesTheManagerWithItsOwnModels() {
  Begin();
  const QPointer<CStandardPlanModel> model = Manager().GetViewManagerByTheme("default_view", OwnTheme);
  QVERIFY(model);
  chooser_.reset();
  QVERIFY(!model && !Manager().GetViewManagerByTheme("default_view", OwnTheme) &&
          !Manager().GetViewManagerByTheme("default_view", PublicTheme));
  Manager().OnUpdateViewModelData();
  CPlanFixture::Drain();
  // Before the plans are there it fills with all other trees.
  Manager().ClearModelData();
  MakeChooser();
  // A request under way when it dies.
  chooser_->SelectView(kPlan, Code("C1 plan 2"));
  chooser_.reset();
  CPlanFixture::Drain();
}

QTEST_MAIN(DefaultViewTest)
#include "test_default_view.moc"

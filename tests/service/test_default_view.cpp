#include <QAbstractItemModelTester>
#include <QFutureWatcher>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>
#include <algorithm>

#include "MarUIControl/tree_view.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"
#include "default_load_view_display.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanFixture;

namespace {

constexpr int kPlan = 16000, kGroup = 16001;

}  // namespace

// The default-view chooser over the real store.
class DefaultViewTest : public TarnTest::CPlanTest {
  Q_OBJECT

 private Q_SLOTS:
  void cleanup();
  void OffersBothFamiliesOnce_data();
  void OffersBothFamiliesOnce();
  void RootsCannotBeChosenAndGroupsCan();
  void GroupsFollowTheirSwitch();
  void SavesEveryKindOfRow();
  void ReadsAndFindsWhatIsNotLoaded_data();
  void ReadsAndFindsWhatIsNotLoaded();
  void UnknownCodesLeaveTheChoice_data();
  void UnknownCodesLeaveTheChoice();
  void FailuresKeepTheHostsText();
  void WayThatCannotBeLoadedEndsTheSearch();
  void PlanThatIsNotOfferedEndsTheSearch();
  void LoadingAllAgainAfterAFailure();
  void FollowsDeletionsMovesAndReloads();
  void UnsavedChoiceThatVanishesGivesWayToTheStored_data();
  void UnsavedChoiceThatVanishesGivesWayToTheStored();
  void FailedCallsAreNoDeletions_data();
  void FailedCallsAreNoDeletions();
  void ChoosesByKeys();
  void TypesTellCodesApart();
  void SearchFindsWhatIsNotLoaded();
  void SearchSaysHowItStands();
  void SearchAsksForTheLastTextAlone();
  void FoundPlanThatCannotBeShownCanBeSaved();
  void SearchOfALoadedTreeAsksNobody();
  void LeavesTheManagerWithItsOwnModels();

 private:
  void Begin(const QMap<QString, int>& switches = {});
  void MakeChooser();
  MarUIControl::CTreeView* Tree() { return chooser_->GetLocationComboBox()->LocationTree(); }
  QString Chosen() { return chooser_->GetLocationComboBox()->CurrentText(); }
  /// Loads the way to a row.
  QModelIndex Row(const QString& name);
  void Choose(const QString& name);
  void Store(int type, const std::string& code);
  GetClientDefaultViewConfigResponse Stored();
  std::string Code(const QString& name) { return fixture_.Code(name).toStdString(); }
  WidgetKit::CNewLocationViewWidget* Line() { return chooser_->GetLocationComboBox()->SearchLine(); }
  /// Types into the open drop-down.
  void LookFor(const QString& text);
  QString Counter() { return Line()->findChild<QLabel*>("locate_counter")->text(); }
  /// "state: plan, plan" as the rows above the tree show it; empty without them.
  QString Found();

  std::unique_ptr<CStandardViewController> controller_;
  std::unique_ptr<CDefaultLoadViewDisplay> chooser_;
};

void DefaultViewTest::Begin(const QMap<QString, int>& switches) {
  Open(switches);
  fixture_.Messages().Expect("propagateSizeHints");
  QTRY_VERIFY(CViewModelDataManager::Instance().IsViewModelInitFinish());
  CPlanFixture::Drain();
  controller_ = std::make_unique<CStandardViewController>(fixture_.Public());
  MakeChooser();
}

void DefaultViewTest::MakeChooser() {
  chooser_ = std::make_unique<CDefaultLoadViewDisplay>();
  CPlanFixture::Watch(Tree()->model());
  chooser_->SetViewController(controller_.get());
  chooser_->show();
  QTRY_COMPARE(Tree()->model()->rowCount(), 3);
}

void DefaultViewTest::cleanup() {
  chooser_.reset();
  controller_.reset();
  Shut();
}

QModelIndex DefaultViewTest::Row(const QString& name) {
  const QAbstractItemModel* rows = Tree()->model();
  return rows->match(rows->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
}

// As a click on it does.
void DefaultViewTest::Choose(const QString& name) {
  QTRY_VERIFY2(Row(name).isValid(), qPrintable(name));
  auto* box = chooser_->GetLocationComboBox();
  box->ShowPopup();
  Tree()->setCurrentIndex(Row(name));
  Q_EMIT Tree()->clicked(Row(name));
}

void DefaultViewTest::Store(int type, const std::string& code) {
  ClienDefaultViewConfigRequest request;
  request.index_code = code;
  request.type = type;
  ClienDefaultViewConfigReponse response;
  QVERIFY(fixture_.Store().SetClientViewConfig(request, response));
}

GetClientDefaultViewConfigResponse DefaultViewTest::Stored() {
  GetClientDefaultViewConfigResponse response;
  fixture_.Store().GetClientViewConfig({}, response);
  return response;
}

void DefaultViewTest::LookFor(const QString& text) {
  chooser_->GetLocationComboBox()->ShowPopup();
  Line()->clear();
  QTest::keyClicks(Line(), text);
}

QString DefaultViewTest::Found() {
  const QModelIndex top = Tree()->model()->index(0, 0);
  if (top.data(GroupIndexCodeRole).isValid()) {
    return QString();
  }
  QStringList plans;
  for (int row = 0; row < Tree()->model()->rowCount(top); ++row) {
    plans << Tree()->model()->index(row, 0, top).data().toString();
  }
  return top.data().toString() + ": " + plans.join(", ");
}

void DefaultViewTest::OffersBothFamiliesOnce_data() {
  QTest::addColumn<bool>("load_all");
  QTest::newRow("on demand") << false;
  QTest::newRow("all at the start") << true;
}

void DefaultViewTest::OffersBothFamiliesOnce() {
  QFETCH(bool, load_all);
  Begin({{"load_all", load_all}, {"create_under_root", 1}});
  const QStringList tops{Tree()->model()->index(0, 0).data().toString(), Tree()->model()->index(1, 0).data().toString(),
                         Tree()->model()->index(2, 0).data().toString()};
  QCOMPARE(tops, QStringList({"No default view", "Public plans", "My plans"}));
  QTRY_VERIFY(Row("Public A").isValid() && Row("Own root plan").isValid());
  Tree()->ExpandAsync(Row("Own C"));
  QTRY_VERIFY(Row("C1").isValid());
  Tree()->ExpandAsync(Row("C1"));
  QTRY_VERIFY(Row("C1 plan 10").isValid() && Tree()->isExpanded(Row("C1")));
  // Where everything is loaded the search finds what no one has expanded.
  if (load_all) {
    QTRY_VERIFY(Row("A1 plan 10").isValid());
  }
}

void DefaultViewTest::RootsCannotBeChosenAndGroupsCan() {
  Begin();
  QTRY_VERIFY(Row("Public A").isValid());
  QVERIFY(!(Row("Public plans").flags() & Qt::ItemIsSelectable) && Row("Public plans").flags() & Qt::ItemIsEnabled);
  QVERIFY(!(Row("My plans").flags() & Qt::ItemIsSelectable));
  QVERIFY(Row("Public A").flags() & Qt::ItemIsSelectable && Row("No default view").flags() & Qt::ItemIsSelectable);
  Choose("My plans");
  QCOMPARE(Chosen(), QString());
  QVERIFY(!chooser_->IsChanged());
  auto& manager = CViewModelDataManager::Instance();
  for (const auto theme : {PublicTheme, OwnTheme}) {
    CStandardPlanModel* model = manager.GetViewManagerByTheme("default_view", theme);
    QVERIFY(model && model->IsGroupCanSelected());
    model->SetViewGroupSeleted(false);
  }
  QVERIFY(!(Row("Public A").flags() & Qt::ItemIsSelectable));
}

void DefaultViewTest::GroupsFollowTheirSwitch() {
  Begin({{"group_cycle", 0}});
  Store(kGroup, Code("Public A"));
  QVERIFY(chooser_->ReadDefaultView());
  chooser_->SelectView(kGroup, Code("Public A"));
  QTRY_COMPARE(Chosen(), QString("Public A"));  // what is stored stays to be seen
  QVERIFY(!(Row("Public A").flags() & Qt::ItemIsSelectable) && !(Row("Public B").flags() & Qt::ItemIsSelectable));
  Choose("Public B");
  QCOMPARE(Chosen(), QString("Public A"));
}

void DefaultViewTest::SavesEveryKindOfRow() {
  Begin({{"create_under_root", 1}});
  const struct {
    const char* row;
    int type;
  } choices[] = {{"Own C", kGroup}, {"Public root plan", kPlan}, {"Public A", kGroup}, {"Own root plan", kPlan}};
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  QVERIFY(chooser_->ReadDefaultView());
  for (const auto& choice : choices) {
    Choose(choice.row);
    QCOMPARE(Chosen(), QString(choice.row));
    QVERIFY(chooser_->IsChanged());
    QVERIFY(chooser_->SaveChosenView());
    QVERIFY(!chooser_->IsChanged());
    QCOMPARE(Stored().index_code, Code(choice.row));
    QCOMPARE(Stored().type, choice.type);
  }
  QCOMPARE(tips.count(), 4);
  QCOMPARE(tips.last().at(1).toInt(), int(MarUIControl::CNomalMessage::Success));
  Services().ForgetCalls();
  Choose("No default view");
  QVERIFY(chooser_->SaveChosenView());
  QCOMPARE(Services().Requests<ClienDefaultViewConfigRequest>().at(0).index_code, std::string("-3"));
  QCOMPARE(Stored().index_code, std::string("-3"));
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
  Store(type, code);
  QVERIFY(chooser_->ReadDefaultView());
  QCOMPARE(chooser_->GetIndexCode(), code);
  QCOMPARE(chooser_->GetResourceType(), type);
  chooser_->SelectView(chooser_->GetResourceType(), chooser_->GetIndexCode());
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
  QCOMPARE(Stored().index_code, Code("Public A"));
}

void DefaultViewTest::FailuresKeepTheHostsText() {
  Begin();
  Store(kGroup, Code("Public B"));
  QVERIFY(chooser_->ReadDefaultView());
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  Services().Fail("GetClientViewConfig", "The line is down");
  QVERIFY(!chooser_->ReadDefaultView());
  QCOMPARE(chooser_->GetResponseText(), std::string("The line is down"));
  QCOMPARE(chooser_->GetIndexCode(), Code("Public B"));
  Services().Fail("SetClientViewConfig", "The disk is full");
  Choose("Public A");
  QVERIFY(!chooser_->SaveChosenView());
  QCOMPARE(chooser_->GetResponseText(), std::string("The disk is full"));
  QVERIFY(chooser_->IsChanged());
  QCOMPARE(tips.count(), 2);
  QCOMPARE(tips.last().first().toString(), QString("The disk is full"));

  chooser_->SetViewController(nullptr);
  QVERIFY(!chooser_->ReadDefaultView() && !chooser_->SaveChosenView());
  chooser_->SetViewController(controller_.get());
  controller_.reset();
  QVERIFY(!chooser_->ReadDefaultView() && !chooser_->SaveChosenView());
}

void DefaultViewTest::WayThatCannotBeLoadedEndsTheSearch() {
  Begin();
  QTRY_VERIFY(Row("Own C").isValid());
  Store(kPlan, Code("C1 plan 2"));
  Services().Fail("GetClientViewConfig");
  QVERIFY(!chooser_->ReadDefaultView());
  Choose("No default view");
  QVERIFY(chooser_->IsChanged());  // nobody knows that there is none
  Services().Mend("GetClientViewConfig");
  QVERIFY(chooser_->ReadDefaultView());

  Services().Fail("GetPlansInGroup", "The line is down");
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  QSignalSpy changes(chooser_.get(), &CDefaultLoadViewDisplay::SignalChoiceChanged);
  chooser_->SelectView(kPlan, chooser_->GetIndexCode());
  QTRY_COMPARE(changes.count(), 1);
  QTRY_COMPARE(tips.count(), 1);
  QCOMPARE(Chosen(), QString("No default view"));
  QVERIFY(chooser_->IsChanged());
  Services().Mend("GetPlansInGroup");
  chooser_->SelectView(kPlan, chooser_->GetIndexCode());
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::PlanThatIsNotOfferedEndsTheSearch() {
  Begin({{"create_under_root", 0}});
  Store(kPlan, Code("Public root plan"));
  QVERIFY(chooser_->ReadDefaultView());
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  QSignalSpy changes(chooser_.get(), &CDefaultLoadViewDisplay::SignalChoiceChanged);
  chooser_->SelectView(kPlan, chooser_->GetIndexCode());
  QTRY_COMPARE(changes.count(), 1);
  QCOMPARE(tips.count(), 1);
  QCOMPARE(Chosen(), QString());
  QVERIFY(!chooser_->IsChanged() && !chooser_->SaveChosenView());
  QCOMPARE(Stored().index_code, Code("Public root plan"));

  // That one plan is not to be had says nothing about the one that was asked for since.
  Services().Hold("GetPlanGroups");
  chooser_->SelectView(kPlan, "987654");
  chooser_->SelectView(kPlan, Code("C1 plan 2"));
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  QTRY_COMPARE(chooser_->findChildren<QFutureWatcherBase*>().size(), 1);
  Services().ReleaseAll();
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
}

void DefaultViewTest::LoadingAllAgainAfterAFailure() {
  Begin({{"load_all", 1}});
  Store(kPlan, Code("C1 plan 2"));
  chooser_.reset();
  Services().Fail("GetPlansInGroup", "The line is down");
  MakeChooser();
  CPlanFixture::Drain();
  QVERIFY(chooser_->ReadDefaultView());
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  QSignalSpy changes(chooser_.get(), &CDefaultLoadViewDisplay::SignalChoiceChanged);
  chooser_->SelectView(kPlan, chooser_->GetIndexCode());
  QTRY_COMPARE(changes.count(), 1);
  QCOMPARE(tips.count(), 1);
  QVERIFY(Chosen().isEmpty() && !chooser_->IsChanged());
  Services().Mend("GetPlansInGroup");
  chooser_->SelectView(kPlan, chooser_->GetIndexCode());
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
}

void DefaultViewTest::FollowsDeletionsMovesAndReloads() {
  Begin({{"create_under_root", 1}});
  Store(kPlan, Code("A1 plan 2"));
  QVERIFY(chooser_->ReadDefaultView());
  chooser_->SelectView(kPlan, Code("A1 plan 2"));
  QTRY_COMPARE(Chosen(), QString("A1 plan 2"));
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(Chosen(), QString("A1 plan 2"));
  QVERIFY(!chooser_->IsChanged());

  UpdatePlanRequest moved;
  moved.plan_index_code = Code("A1 plan 2");
  moved.plan_name = "A1 plan moved";
  moved.parent_index_code = Code("Public B");
  controller_->UpdatePlanParam(moved, "A1 plan 2");
  QTRY_COMPARE(Chosen(), QString("A1 plan moved"));
  QTRY_COMPARE(Row("A1 plan moved").parent().data().toString(), QString("Public B"));
  QVERIFY(!chooser_->IsChanged());

  controller_->DeletePlanByIndex(Row("A1 plan moved"));
  QTRY_COMPARE(Chosen(), QString("No default view"));
  QCOMPARE(Stored().index_code, std::string("-3"));
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::UnsavedChoiceThatVanishesGivesWayToTheStored_data() {
  QTest::addColumn<QString>("stored");
  QTest::addColumn<QString>("choice");
  QTest::newRow("plan after plan") << "C1 plan 2"
                                   << "Public root plan";
  QTest::newRow("group after plan") << "C1 plan 2"
                                    << "Public B";
  QTest::newRow("plan after group") << "A1"
                                    << "Own root plan";
}

void DefaultViewTest::UnsavedChoiceThatVanishesGivesWayToTheStored() {
  QFETCH(QString, stored);
  QFETCH(QString, choice);
  Begin({{"create_under_root", 1}});
  Store(stored == "A1" ? kGroup : kPlan, Code(stored));
  QVERIFY(chooser_->ReadDefaultView());
  chooser_->SelectView(chooser_->GetResourceType(), chooser_->GetIndexCode());
  QTRY_COMPARE(Chosen(), stored);
  Choose(choice);
  QVERIFY(chooser_->IsChanged());
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  if (choice == "Public B") {
    controller_->DeletePlanGroupByIndex(Row(choice));
  } else {
    controller_->DeletePlanByIndex(Row(choice));
  }
  QTRY_COMPARE(Chosen(), stored);
  QVERIFY(!chooser_->IsChanged());
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  CPlanFixture::Drain();
  QTRY_COMPARE(Chosen(), stored);
  QCOMPARE(tips.count(), 1);  // of the deletion itself
  QCOMPARE(tips.first().at(1).toInt(), int(MarUIControl::CNomalMessage::Success));
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
  Store(kPlan, Code("C1 plan 2"));
  QVERIFY(chooser_->ReadDefaultView());
  chooser_->SelectView(kPlan, Code("C1 plan 2"));
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  for (const QString& call : calls) {
    Services().Fail(call, "The line is down");
  }
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  const auto said = [&tips] {
    return std::count_if(tips.begin(), tips.end(),
                         [](const QList<QVariant>& tip) { return tip.first().toString().contains("default view"); });
  };
  QTRY_COMPARE(said(), 1);
  CPlanFixture::Drain();
  QCOMPARE(Chosen(), QString());
  QVERIFY(!chooser_->IsChanged() && !chooser_->SaveChosenView());
  QCOMPARE(Stored().index_code, Code("C1 plan 2"));
  if (deleted) {
    DeletePlanResquest request;
    request.plan_index_code = Code("C1 plan 2");
    DeletePlanResponse response;
    QVERIFY(fixture_.Store().DeletePlan(request, response));
  }
  for (const QString& call : calls) {
    Services().Mend(call);
  }
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(Chosen(), QString(deleted ? "No default view" : "C1 plan 2"));
  QVERIFY(!chooser_->IsChanged());
  QCOMPARE(said(), 1);
}

void DefaultViewTest::ChoosesByKeys() {
  Begin();
  auto* box = chooser_->GetLocationComboBox();
  QVERIFY(!box->accessibleName().isEmpty() && chooser_->focusProxy() == box);
  QSignalSpy changes(chooser_.get(), &CDefaultLoadViewDisplay::SignalChoiceChanged);
  QTRY_VERIFY(Row("Public B").isValid());
  QTest::keyClick(box, Qt::Key_Space);
  QVERIFY(box->IsPopupVisible());
  Tree()->setCurrentIndex(Row("Public A"));
  QTest::keyClick(Tree(), Qt::Key_Escape);  // looking about is no choice
  QCOMPARE(Chosen(), QString());
  QCOMPARE(changes.count(), 0);
  QTest::keyClick(box, Qt::Key_F4);
  Tree()->setCurrentIndex(Row("Public A"));
  QTest::keyClick(Tree(), Qt::Key_Right);
  QTRY_VERIFY(Row("A1").isValid());
  QTest::keyClick(Tree(), Qt::Key_Down);
  QTest::keyClick(Tree(), Qt::Key_Return);
  QCOMPARE(Chosen(), QString("A1"));
  QVERIFY(!box->IsPopupVisible());
  QCOMPARE(changes.count(), 1);
}

void DefaultViewTest::TypesTellCodesApart() {
  Begin();
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  for (const int type : {kPlan, kGroup}) {
    Choose("Public A");
    chooser_->SelectView(type, "-3");  // none, whatever stands beside it
    QCOMPARE(Chosen(), QString("No default view"));
  }
  // Another host's codes may serve a group and a plan.
  auto& manager = CViewModelDataManager::Instance();
  CStandardPlanModel* own = manager.GetViewManagerByTheme("default_view", OwnTheme);
  PlanBasicInfo namesake;
  namesake.index_code = Code("Own C");
  namesake.name = "namesake";
  namesake.type = 1;
  QTRY_VERIFY(Row("Own C").isValid());
  manager.addPlanView(own, own->FindTargetItemByIndexCode("-2", true), namesake);
  Store(kGroup, namesake.index_code);
  QVERIFY(chooser_->ReadDefaultView());
  Choose("namesake");
  QVERIFY(chooser_->IsChanged());
  Choose("Own C");
  QVERIFY(!chooser_->IsChanged());
  QCOMPARE(tips.count(), 0);
}

void DefaultViewTest::SearchFindsWhatIsNotLoaded() {
  Begin();
  QTRY_VERIFY(Row("Own C").isValid());
  Services().Hold("SearchPlan");
  LookFor("plan 2");
  QVERIFY(Services().WaitUntilHeld("SearchPlan"));
  QCOMPARE(Found(), QString("Searching for further plans...: "));
  QCOMPARE(Counter(), QString("\u2026"));  // not "No hit": that is not known yet
  Services().ReleaseAll();
  QTRY_COMPARE(Found(), QString("Further plans found: 5: A1 plan 2 (A1), Public A plan 2 (Public A), "
                                "Public B plan 2 (Public B), C1 plan 2 (C1), Own C plan 2 (Own C)"));
  QTRY_COMPARE(Counter(), QString("1/5"));
  QCOMPARE(Tree()->currentIndex().data().toString(), QString("A1 plan 2 (A1)"));
  for (int step = 0; step < 3; ++step) {
    QTest::keyClick(Line(), Qt::Key_Down);
  }
  QTest::keyClick(Line(), Qt::Key_Return);
  // Its own row is loaded and chosen, and counts once.
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  QCOMPARE(chooser_->GetLocationComboBox()->GetCurrentIndex().parent().data().toString(), QString("C1"));
  QTRY_COMPARE(Found().left(23), QString("Further plans found: 3:"));
  QVERIFY(chooser_->IsChanged() && chooser_->SaveChosenView());
  QCOMPARE(Stored().index_code, Code("C1 plan 2"));
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  QTRY_VERIFY(Found().startsWith("Further plans found:"));
  Line()->clear();
  QCOMPARE(Found(), QString());
  QCOMPARE(Chosen(), QString("C1 plan 2"));
}

void DefaultViewTest::SearchSaysHowItStands() {
  Begin();
  QTRY_VERIFY(Row("Own C").isValid());
  LookFor("no such plan");
  QTRY_COMPARE(Found(), QString("No further plans found: "));
  QTRY_COMPARE(Counter(), QString("No hit"));
  LookFor("further");  // the words of the state are no hit
  QTRY_COMPARE(Counter(), QString("No hit"));
  LookFor("root plan");  // not offered in the tree either
  QTRY_COMPARE(Found(), QString("No further plans found: "));
  LookFor("Own C");  // what is there is found without the host's help
  QTRY_COMPARE(Tree()->currentIndex().data().toString(), QString("Own C"));
  QTRY_COMPARE(Found(), QString("Further plans found: 2: Own C plan 2 (Own C), Own C plan 10 (Own C)"));

  Services().Fail("SearchPlan", "The line is down");
  LookFor("a1 plan");
  QTRY_COMPARE(Found(), QString("The search got no answer: The line is down: "));
  QTRY_VERIFY(!Line()->IsLocating());
  Services().Mend("SearchPlan");
  QTest::keyClick(Line(), Qt::Key_Return);  // once more
  QTRY_COMPARE(Found(), QString("Further plans found: 2: A1 plan 2 (A1), A1 plan 10 (A1)"));
  LookFor("   ");
  QCOMPARE(Found(), QString());
}

void DefaultViewTest::SearchAsksForTheLastTextAlone() {
  Begin();
  QTRY_VERIFY(Row("Own C").isValid());
  Services().Hold("SearchPlan", TarnTest::CRecordingServices::AfterCall);
  LookFor("A1 plan");
  QVERIFY(Services().WaitUntilHeld("SearchPlan"));
  LookFor("C1 plan");
  QVERIFY(Services().WaitUntilHeld("SearchPlan", 2));
  Services().ReleaseAll();
  const QString found = "Further plans found: 2: C1 plan 2 (C1), C1 plan 10 (C1)";
  QTRY_COMPARE(Found(), found);
  CPlanFixture::Drain();
  QCOMPARE(Found(), found);
  Services().Hold("SearchPlan", TarnTest::CRecordingServices::AfterCall);
  LookFor("A1");
  QVERIFY(Services().WaitUntilHeld("SearchPlan"));
  Line()->clear();
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Found(), QString());
  LookFor("A1");
  chooser_.reset();  // with a search under way
  CPlanFixture::Drain();
}

void DefaultViewTest::FoundPlanThatCannotBeShownCanBeSaved() {
  Begin();
  LookFor("c1 plan 10");
  QTRY_COMPARE(Found(), QString("Further plans found: 1: C1 plan 10 (C1)"));
  Services().Fail("GetPlanDetail", "The line is down");
  QSignalSpy tips(controller_.get(), &CStandardViewController::signalShowMessage);
  QTRY_COMPARE(Counter(), QString("1/1"));
  QTest::keyClick(Line(), Qt::Key_Return);
  QTRY_COMPARE(tips.count(), 1);
  QCOMPARE(tips.first().first().toString(), QString("The line is down"));
  QCOMPARE(Chosen(), QString("C1 plan 10 (C1)"));
  QVERIFY(chooser_->IsChanged() && chooser_->SaveChosenView());
  QCOMPARE(Stored().index_code, Code("C1 plan 10"));
  QCOMPARE(Stored().type, kPlan);
  // The row that it stands in goes with the text; by then it is found.
  Services().Mend("GetPlanDetail");
  Line()->clear();
  QTRY_COMPARE(Chosen(), QString("C1 plan 10"));
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewTest::SearchOfALoadedTreeAsksNobody() {
  Begin({{"load_all", 1}});
  LookFor("c1 plan 10");
  QTRY_COMPARE(Counter(), QString("1/1"));
  QCOMPARE(Services().Count("SearchPlan"), 0);
  QCOMPARE(Found(), QString());
}

void DefaultViewTest::LeavesTheManagerWithItsOwnModels() {
  Begin();
  auto& manager = CViewModelDataManager::Instance();
  QPointer<CStandardPlanModel> model = manager.GetViewManagerByTheme("default_view", OwnTheme);
  QVERIFY(model);
  chooser_.reset();
  QVERIFY(!model && !manager.GetViewManagerByTheme("default_view", OwnTheme) &&
          !manager.GetViewManagerByTheme("default_view", PublicTheme));
  manager.OnUpdateViewModelData();
  CPlanFixture::Drain();
  // Before the plans are there it fills with all other trees.
  manager.ClearModelData();
  MakeChooser();
  QTRY_VERIFY(Row("Own C").isValid());
  // A request under way when it dies.
  chooser_->SelectView(kPlan, Code("C1 plan 2"));
  chooser_.reset();
  CPlanFixture::Drain();
}

QTEST_MAIN(DefaultViewTest)
#include "test_default_view.moc"

#include <QtTest>

#include "item_type.h"
#include "plan_commands.h"

using namespace TarnPlanView;
using view_plugin_protocol::AddRight;
using view_plugin_protocol::kRights;
using view_plugin_protocol::Rights;

namespace {

// g add group, p add plan, e edit, d delete; "-" where the button is off.
QString Letters(bool add_group, bool add_plan, bool edit, bool remove) {
  const bool on[] = {add_group, add_plan, edit, remove};
  QString letters = "gped";
  for (int i = 0; i < letters.size(); ++i) {
    letters[i] = on[i] ? letters[i] : QChar('-');
  }
  return letters;
}

BarGrants Grants(const QString& letters) {
  return {letters.contains('g'), letters.contains('p'), letters.contains('e'), letters.contains('d')};
}

// Of the rights to add, edit and delete.
Rights RightsOf(const QString& letters) {
  Rights rights;
  const QString all = "aed";
  for (int i = 0; i < all.size(); ++i) {
    if (letters.contains(all[i])) {
      rights.Add(kRights[i]);
    }
  }
  return rights;
}

constexpr PlanCommand kBar[] = {PlanCommand::AddGroup, PlanCommand::AddPlan, PlanCommand::Edit, PlanCommand::Delete};

}  // namespace

// Which commands there are: by row, rights, switches and what the panel shows.
class PlanCommandsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void RowsGrantTheButtons();
  void StatesFollowTheSituation_data();
  void StatesFollowTheSituation();
  void WhatIsMadeFollowsTheRow();
  void WhatIsOffSaysWhy();
  void MenusShowWhatSuitsTheRow();
  void HitsAreShownInTheTree();
};

void PlanCommandsTest::RowsGrantTheButtons() {
  const QList<int> received = {ReceivedRootItem, ReceivedGroupItem, ReceivedPlanItem, ReceivedLeafItem};
  const struct {
    QList<int> types;
    const char *none, *add, *edit, *remove, *all;  // by the rights that the user has
    const char* all_without_root;                  // all rights, and no plans under the root
  } rows[] = {
      {{PublicRootItem}, "----", "gp--", "----", "----", "gp--", "g---"},
      {{OwnRootItem}, "gp--", "gp--", "gp--", "gp--", "gp--", "g---"},
      {{PublicGroupItem, PublicPlanItem, PublicLeafItem}, "----", "gp--", "--e-", "---d", "gped", "gped"},
      {{OwnGroupItem, OwnPlanItem, OwnLeafItem}, "gped", "gped", "gped", "gped", "gped", "gped"},
      // These leave edit and delete as they were, others everything.
      {received, "g-e-", "g-e-", "g-e-", "g-e-", "g-e-", "g-e-"},
      {{PlaceholderItem, 0, 9, 14}, "-pe-", "-pe-", "-pe-", "-pe-", "-pe-", "-pe-"},
  };
  for (const auto& row : rows) {
    for (const int type : row.types) {
      const auto after = [type](const char* rights, bool under_root) {
        const BarGrants grants = GrantsAfter(Grants("-pe-"), type, RightsOf(rights), under_root);
        return Letters(grants.add_group, grants.add_plan, grants.edit, grants.remove);
      };
      const QStringList found = {after("", true),  after("a", true),   after("e", true),
                                 after("d", true), after("aed", true), after("aed", false)};
      QCOMPARE(found, QStringList({row.none, row.add, row.edit, row.remove, row.all, row.all_without_root}));
    }
  }
}

void PlanCommandsTest::StatesFollowTheSituation_data() {
  // T the tree, S a search or W the wait page is shown, E the editor is open, O a new plan is being opened, U between
  // two users.
  QTest::addColumn<QString>("mode");
  QTest::addColumn<int>("type");
  QTest::addColumn<QString>("grants");
  QTest::addColumn<QString>("rights");
  QTest::addColumn<QString>("buttons");
  QTest::addColumn<QString>("enabled");
  // Of each button: . none, a e d the right, L a search, M nothing marked, N no row, R a root, G plans stand in groups,
  // X received, E the editor is open, O it is being opened, W the load.
  QTest::addColumn<QString>("reasons");
  const auto add = [](const char* name, const char* mode, int type, const char* grants, const char* rights,
                      const char* buttons, const char* enabled, const char* reasons) {
    QTest::newRow(name) << QString(mode) << type << QString(grants) << QString(rights) << QString(buttons)
                        << QString(enabled) << QString(reasons);
  };
  add("as granted", "T", PublicPlanItem, "gped", "aed", "gped", "gped", "....");
  add("no rights", "T", PublicPlanItem, "----", "", "----", "----", "aaed");
  add("one right", "T", PublicGroupItem, "--e-", "e", "--e-", "--e-", "aa.d");
  add("root", "T", PublicRootItem, "g---", "aed", "g---", "g---", ".GRR");
  add("received", "T", ReceivedPlanItem, "g---", "", "g---", "g---", ".XXX");
  add("no row", "T", 0, "----", "", "----", "----", "NNNN");
  add("editing", "TE", PublicPlanItem, "gped", "aed", "-p--", "-p--", "E.EE");
  add("opening", "TO", PublicPlanItem, "gped", "aed", "g-ed", "g-ed", ".O..");
  add("wait", "W", PublicPlanItem, "gped", "aed", "gped", "gp--", "..WW");
  add("between users", "WU", PublicPlanItem, "gped", "", "--ed", "----", "WWWW");
  add("public hit", "S", PublicPlanItem, "gped", "aed", "-pe-", "-pe-", "L..L");
  add("hit of one's own", "S", OwnPlanItem, "g---", "", "--e-", "--e-", "LL.L");
  add("hit without the right", "S", PublicPlanItem, "gped", "", "-pe-", "-p--", "a.ed");
  add("received hit", "S", ReceivedPlanItem, "g---", "aed", "----", "----", "LLXL");
  add("no hit", "S", 0, "gped", "aed", "-pe-", "-p--", "L.ML");
  add("editing a hit", "SE", OwnPlanItem, "gped", "aed", "-p--", "-p--", "L.EL");
  add("search between users", "SU", PublicPlanItem, "--ed", "aed", "--e-", "--e-", "WW.W");
}

void PlanCommandsTest::StatesFollowTheSituation() {
  QFETCH(QString, mode);
  QFETCH(int, type);
  QFETCH(QString, grants);
  QFETCH(QString, rights);
  QFETCH(QString, reasons);
  PanelSituation situation;
  situation.page = static_cast<PanelPage>(QString("TSW").indexOf(mode.left(1)));
  situation.editing = mode.contains('E');
  situation.opening = mode.contains('O');
  situation.between_users = mode.contains('U');
  situation.item_type = type;
  situation.grants = Grants(grants);
  situation.rights = RightsOf(rights);
  const CommandStates states = StatesOf(situation);
  const auto letters = [&states](bool CommandState::*member) {
    return Letters(states[kBar[0]].*member, states[kBar[1]].*member, states[kBar[2]].*member, states[kBar[3]].*member);
  };
  QTEST(letters(&CommandState::button_enabled), "buttons");
  QTEST(letters(&CommandState::enabled), "enabled");
  QString found;
  for (const PlanCommand command : kBar) {
    found += QStringLiteral(".aedsLMNRGXEOW").at(static_cast<int>(states[command].reason));
  }
  QCOMPARE(found, reasons);
  QCOMPARE(states[PlanCommand::Share].enabled, situation.rights.Has(AddRight));
  QCOMPARE(states[PlanCommand::Share].reason == Refusal::NoShareRight, !situation.rights.Has(AddRight));
}

// The same for a row of the tree and for a hit, and whatever row was current before.
void PlanCommandsTest::WhatIsMadeFollowsTheRow() {
  const struct {
    int type;
    const char* rights;
    bool editing;
    Refusal group, plan;
  } rows[] = {
      {ItemTypeIn(0, false, false), "a", false, Refusal::None, Refusal::None},
      {ItemTypeIn(0, false, true), "ed", false, Refusal::NoAddRight, Refusal::NoAddRight},
      {ItemTypeIn(0, true, true), "a", false, Refusal::None, Refusal::PlansStandInGroups},
      {ItemTypeIn(1, false, true), "", true, Refusal::EditorOpen, Refusal::None},
      {ItemTypeIn(1, true, true), "", false, Refusal::None, Refusal::PlansStandInGroups},
      {ItemTypeIn(2, false, false), "aed", false, Refusal::None, Refusal::Received},
  };
  for (const auto& row : rows) {
    for (const PanelPage page : {PanelPage::Tree, PanelPage::Search}) {
      PanelSituation situation;
      situation.page = page;
      situation.item_type = row.type;
      situation.rights = RightsOf(row.rights);
      situation.editing = row.editing;
      QCOMPARE(WhyNothingNew(PlanCommand::AddGroup, situation, false), row.group);
      QCOMPARE(WhyNothingNew(PlanCommand::AddPlan, situation, false), row.plan);
    }
  }
}

// In every situation that the panel can be in, also in those that nothing leads to today.
void PlanCommandsTest::WhatIsOffSaysWhy() {
  for (int bits = 0; bits < 1 << 12; ++bits) {
    PanelSituation situation;
    const auto bit = [bits](int number) { return (bits >> number & 1) != 0; };
    situation.grants = {bit(0), bit(1), bit(2), bit(3)};
    for (int right = 0; right < 3; ++right) {
      if (bit(4 + right)) {
        situation.rights.Add(kRights[right]);
      }
    }
    situation.editing = bit(7);
    situation.opening = bit(8);
    situation.between_users = bit(9);
    situation.page = static_cast<PanelPage>(qMin(bits >> 10, 2));
    for (situation.item_type = PlaceholderItem; situation.item_type <= ReceivedLeafItem; ++situation.item_type) {
      const CommandStates states = StatesOf(situation);
      for (int command = 0; command < kPlanCommands; ++command) {
        const CommandState& state = states[static_cast<PlanCommand>(command)];
        const bool on = state.enabled && state.button_enabled;
        QVERIFY2(on == TextOf(state.reason).isEmpty(), qPrintable(QString("%1 %2").arg(bits).arg(command)));
      }
    }
  }
}

void PlanCommandsTest::MenusShowWhatSuitsTheRow() {
  PanelSituation situation;
  const auto shown = [&situation](int type) {
    situation.item_type = type;
    const CommandStates states = StatesOf(situation);
    QString letters;
    for (int command = 0; command < kPlanCommands; ++command) {
      letters += states[static_cast<PlanCommand>(command)].shown ? QStringLiteral("gped/>s*i").at(command) : QChar();
    }
    return letters.remove(QChar());
  };
  situation.switches.group_cycle = false;
  QCOMPARE(shown(OwnPlanItem), QString("gped/>s"));
  QCOMPARE(shown(OwnGroupItem), QString("gped/"));
  situation.switches.enable_search = false;
  situation.switches.group_cycle = situation.switches.creation_info = true;
  QCOMPARE(shown(ReceivedLeafItem), QString("gped>si"));
  QCOMPARE(shown(PublicGroupItem), QString("gped*"));
  QCOMPARE(shown(PublicRootItem), QString("gped"));
}

void PlanCommandsTest::HitsAreShownInTheTree() {
  const struct {
    PanelPage page;
    int type;
    bool loading, in_no_tree, shown;
    Refusal reason;
  } rows[] = {
      {PanelPage::Search, PublicPlanItem, false, false, true, Refusal::None},
      {PanelPage::Search, ReceivedPlanItem, false, true, true, Refusal::InNoTree},
      {PanelPage::Search, OwnPlanItem, true, true, true, Refusal::Loading},
      {PanelPage::Search, 0, false, false, false, Refusal::NothingMarked},
      {PanelPage::Tree, PublicPlanItem, false, false, false, Refusal::None},
  };
  for (const auto& row : rows) {
    PanelSituation situation;
    situation.page = row.page;
    situation.item_type = row.type;
    situation.loading = row.loading;
    situation.in_no_tree = row.in_no_tree;
    const CommandStates states = StatesOf(situation);
    const CommandState& state = states[PlanCommand::ShowInTree];
    QVERIFY(state.shown == row.shown && state.reason == row.reason);
    QCOMPARE(state.enabled, row.reason == Refusal::None);
    QCOMPARE(TextOf(state.reason).isEmpty(), row.reason == Refusal::None);
  }
  PanelSituation hit;
  hit.page = PanelPage::Search;
  hit.item_type = PublicPlanItem;
  QVERIFY(StatesOf(hit)[PlanCommand::AddPlan].reason == Refusal::NoAddRight);  // leaving the search would not help
}

QTEST_APPLESS_MAIN(PlanCommandsTest)
#include "test_plan_commands.moc"

#include <rapidcheck.h>

#include <QTemporaryDir>
#include <QtTest>
#include <set>

#include "plan_fixture.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnHost::CPlanStore;
using TarnTest::ChangedPlan;
using TarnTest::CPlanFixture;
using TarnTest::CRecordingServices;
using TarnTest::NewPlan;

namespace {

// Hears of changes at the root, after the plug-in: when a marker has come, everything before it has.
class MarkerObserver : public ResourceData::IResourceObserver {
 public:
  void OnResourceUpdate(const Param& param) override { seen.insert(param.second); }
  std::set<std::string> seen;
};

// At once: a failing run is repeated by the library, may then succeed, and says nothing of what was wrong before.
void Fail(const QString& why) {
  qCritical().noquote() << why;
  RC_FAIL(why.toStdString());
}

void Require(bool holds, const QString& what) {
  if (!holds) {
    Fail(what);
  }
}

struct Node {
  QString code, name;
  bool is_group = false;
};

// Two clients on one file: this one with all its trees, the other a bare store. After any commands, and once everything
// has been answered, the trees must agree with each other and with the store.
class RandomSite {
 public:
  RandomSite() {
    TarnTest::PlanFixtureOptions options;
    options.url = "sqlite:" + folder_.filePath("plans.db");
    options.switches = {{"create_under_root", 1}, {"timed_play", *rc::gen::arbitrary<bool>()}};
    QString error;
    Require(fixture_.Open(options, &error), "not opened: " + error);
    fixture_.Start();
    fixture_.Store().ViewRegisterResourceUpdate(&marker_, {ResourceData::RT_VIEW_GROUP, "root", 1});
    TarnHost::PlanStoreOptions other;
    other.url = options.url;
    other_ = CPlanStore::Open(other, &error);
    Require(other_ && other_->LogIn({"operator"}).IsDone(), "not opened elsewhere: " + error);
    Require(QTest::qWaitFor([this] { return other_->IsViewResourceDownFinish(); }), "the other store did not load");
    for (CStandardPlanModel* model : {fixture_.Public(), fixture_.Own()}) {
      controllers_ << new CStandardViewController(model);
      controllers_.last()->OnExpandViewTreeItem(model->index(0, 0));
    }
  }

  ~RandomSite() {
    fixture_.Services().ReleaseAll();
    CPlanFixture::Drain();
    fixture_.Store().ViewRegisterResourceUpdate(&marker_, {ResourceData::RT_VIEW_GROUP, "root", 0});
    qDeleteAll(controllers_);
    other_->Close();
    // Not an assertion: this may run while one unwinds.
    for (const QString& warning : fixture_.Close()) {
      QTest::qFail(qPrintable(warning), __FILE__, __LINE__);
    }
  }

  void Step() {
    which_ = *rc::gen::inRange(0, 2);
    switch (*rc::gen::inRange(0, 12)) {
      case 0:
      case 1:
      case 2:
        controller()->OnExpandViewTreeItem(row(true));
        break;
      case 3:
        controller()->AddPlanGroupByIndexName(row(true), name());
        break;
      case 4:
        controller()->UpdatePlanGroupName(row(true), name());
        break;
      case 5:
        deleteRow();
        break;
      case 6:
        addPlan();
        break;
      case 7:
        controller()->UpdatePlanParam(update(), "");
        break;
      case 8:
        changeElsewhere();
        break;
      case 9:
        holdOrFail();
        break;
      case 10:
        *rc::gen::inRange(0, 3) == 0 ? CViewModelDataManager::Instance().OnUpdateViewModelData() : letNoticesCome();
        break;
      default:
        QCoreApplication::processEvents();
    }
  }

  /// Everything held is let go, everything asked is answered, all notices have come; then all must agree, at the latest
  /// when what had no answer was asked again.
  void SettleAndCheck() {
    for (const char* call : kCalls) {
      fixture_.Services().Mend(call);
    }
    fixture_.Services().ReleaseAll();
    CPlanFixture::Drain();
    letNoticesCome();
    CPlanFixture::Drain();
    QString wrong;
    if (!QTest::qWaitFor([&] { return (wrong = firstFault()).isEmpty(); })) {
      Fail(wrong);
    }
  }

 private:
  static constexpr const char* kCalls[] = {"GetPlanGroups", "GetPlansInGroup", "AddPlan",         "UpdatePlan",
                                           "DeletePlan",    "AddPlanGroup",    "UpdatePlanGroup", "DeletePlanGroup"};

  void letNoticesCome() {
    std::string marker;
    const QString error = TarnTest::CPlanCalls(*other_).AddGroup("-1", "marker", &marker);
    Require(error.isEmpty(), "no marker: " + error);
    Require(QTest::qWaitFor([&] { return marker_.seen.count(marker) > 0; }), "the marker's notice did not come");
  }

  CStandardPlanModel* model() const { return which_ == 0 ? fixture_.Public() : fixture_.Own(); }
  CStandardViewController* controller() const { return controllers_[which_]; }
  static QString name() { return QString("name %1").arg(*rc::gen::inRange(0, 1000)); }

  static void collect(const QStandardItem* parent, bool groups, QList<QModelIndex>* rows) {
    for (int row = 0; row < parent->rowCount(); ++row) {
      if (parent->child(row)->data(IsGroupRole).toBool() == groups) {
        rows->append(parent->child(row)->index());
      }
      collect(parent->child(row), groups, rows);
    }
  }

  /// A row on screen; invalid when there is none.
  QModelIndex row(bool group) const {
    QList<QModelIndex> rows;
    collect(model()->invisibleRootItem(), group, &rows);
    return rows.isEmpty() ? QModelIndex() : rows.at(*rc::gen::inRange<int>(0, rows.size()));
  }

  void collectStored(const QString& code, QList<Node>* nodes) const {
    for (const Node& node : childrenOf(*other_, code)) {
      nodes->append(node);
      if (node.is_group) {
        collectStored(node.code, nodes);
      }
    }
  }

  /// A group (or root) or plan of the store, on screen or not; empty when there is none.
  std::string stored(bool group) const {
    const QString root = which_ == 0 ? "-1" : "-2";
    QList<Node> all{{root, {}, true}};
    collectStored(root, &all);
    QStringList codes;
    for (const Node& node : all) {
      if (node.is_group == group) {
        codes << node.code;
      }
    }
    return codes.isEmpty() ? std::string() : codes.at(*rc::gen::inRange<int>(0, codes.size())).toStdString();
  }

  void deleteRow() {
    if (*rc::gen::inRange(0, 3) > 0) {
      controller()->DeletePlanByIndex(row(false));
      return;
    }
    const QModelIndex group = row(true);
    if (group.parent().isValid()) {
      controller()->DeletePlanGroupByIndex(group);
    }
  }

  void addPlan() {
    AddPlanRequest request = NewPlan(name(), stored(true));
    request.index_type = which_;
    controller()->AddPlanParam(request);
  }

  UpdatePlanRequest update() const {
    UpdatePlanRequest request = ChangedPlan(stored(false), name(), stored(true));
    request.index_type = which_;
    return request;
  }

  void changeElsewhere() {
    const TarnTest::CPlanCalls other(*other_);
    switch (*rc::gen::inRange(0, 6)) {
      case 0:
        other.AddGroup(stored(true), name());
        break;
      case 1:
        other.RenameGroup(stored(true), name());
        break;
      case 2:
        other.DeleteGroup(stored(true));
        break;
      case 3:
        other.AddPlan(NewPlan(name(), stored(true)));
        break;
      case 4:
        other.Update(update());
        break;
      default:
        other.DeletePlan(stored(false));
    }
  }

  // What was true before may come back late; a change may also be late as a whole.
  void holdOrFail() {
    const int place = *rc::gen::inRange(0, 8);
    if (*rc::gen::inRange(0, 3) == 0) {
      fixture_.Services().Fail(kCalls[place]);
    } else {
      fixture_.Services().Hold(kCalls[place], place < 2 || *rc::gen::arbitrary<bool>()
                                                  ? CRecordingServices::AfterCall
                                                  : CRecordingServices::BeforeCall);
    }
  }

  static QList<Node> childrenOf(CPlanStore& store, const QString& code) {
    QList<Node> nodes;
    GetPlanGroupsResponse groups;
    store.GetPlanGroups({code.toStdString(), 0}, groups);
    for (const auto& group : qAsConst(groups.groups)) {
      nodes.append({QString::fromStdString(group.index_code), QString::fromStdString(group.name), true});
    }
    GetPlansInGroupResponse plans;
    store.GetPlansInGroup({code.toStdString(), 0}, plans);
    for (const auto& plan : qAsConst(plans.plans)) {
      nodes.append({QString::fromStdString(plan.index_code), QString::fromStdString(plan.name), false});
    }
    return nodes;
  }

  static QString codeOf(const QModelIndex& index) {
    return index.data(index.data(IsGroupRole).toBool() ? GroupIndexCodeRole : PlanIndexCodeRole).toString();
  }

  static QString dump(const CStandardPlanModel* model, const QModelIndex& parent) {
    QStringList rows;
    for (int row = 0; row < model->rowCount(parent); ++row) {
      const QModelIndex index = model->index(row, 0, parent);
      rows << QString("%1 %2 (%3)").arg(codeOf(index), index.data().toString(), dump(model, index));
    }
    return rows.join(",");
  }

  /// Where a tree differs from the other trees of its family or from the store; empty when all agree.
  QString firstFault() const {
    const auto models = fixture_.Models();
    for (int place = 0; place < models.size(); ++place) {
      const int first = place == 8 ? 1 : place % 2;
      if (dump(models[place], {}) != dump(models[first], {})) {
        return QString("tree %1: %2 / %3").arg(place).arg(dump(models[place], {}), dump(models[first], {}));
      }
    }
    std::set<QString> codes;
    const QString wrong = faultBelow(models[0], models[0]->index(0, 0), &codes);
    return wrong.isEmpty() ? faultBelow(models[1], models[1]->index(0, 0), &codes) : wrong;
  }

  QString faultBelow(const CStandardPlanModel* model, const QModelIndex& parent, std::set<QString>* codes) const {
    QMap<QString, Node> expected;
    for (const Node& node : childrenOf(fixture_.Store(), codeOf(parent))) {
      expected[node.code] = node;
    }
    if (model->AreChildrenFetched(parent) && model->rowCount(parent) != expected.size()) {
      return "rows missing below " + codeOf(parent) + ": " + dump(model, {}) + ", stored " +
             QStringList(expected.keys()).join(",");
    }
    for (int row = 0; row < model->rowCount(parent); ++row) {
      const QModelIndex index = model->index(row, 0, parent);
      const Node node = expected.value(codeOf(index));
      if (node.code.isEmpty() || node.name != index.data().toString() ||
          node.is_group != index.data(IsGroupRole).toBool() || !codes->insert(codeOf(index)).second) {
        return "wrong row " + codeOf(index) + " below " + codeOf(parent) + ": " + dump(model, {});
      }
      const QString wrong = faultBelow(model, index, codes);
      if (!wrong.isEmpty()) {
        return wrong;
      }
    }
    return {};
  }

  QTemporaryDir folder_;
  mutable CPlanFixture fixture_;
  MarkerObserver marker_;
  std::shared_ptr<CPlanStore> other_;
  QList<CStandardViewController*> controllers_;
  int which_ = 0;  // family of the step under way
};

}  // namespace

class TreesRandomTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase() {
    if (!qEnvironmentVariableIsSet("RC_PARAMS")) {
      // A run talks to two databases; a smaller counterexample is not worth the minutes that it takes.
      qputenv("RC_PARAMS", "max_success=25 noshrink=1");
    }
  }
  void TreesAgreeWithTheStore() {
    QVERIFY(rc::check("after any commands the trees agree with each other and with the store", [] {
      RandomSite site;
      for (int round = 0; round < 2; ++round) {
        for (int steps = *rc::gen::inRange(5, 40); steps > 0; --steps) {
          site.Step();
        }
        site.SettleAndCheck();
      }
    }));
  }
};

QTEST_MAIN(TreesRandomTest)
#include "test_trees_random.moc"

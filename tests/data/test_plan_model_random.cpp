#include <rapidcheck.h>

#include <QtTest>
#include <algorithm>
#include <memory>
#include <random>

#include "plan_fixture.h"
#include "plan_item_role.h"
#include "plan_rules/code_table.h"
#include "qt/first_rows.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"

using namespace TarnPlanView;
using view_plugin_protocol::NumberOfCode;

namespace {

// Few codes, so that several rows of one model often share one; decimals, and what only looks like one.
const QStringList& Codes() {
  static const QStringList codes{"0",  "7",      "007", "+7", "-7", "9223372036854775807", "9223372036854775808",
                                 "a7", u8"Ünï 7"};
  return codes;
}

QString RandomCode() {
  return Codes().at(*rc::gen::inRange<int>(0, Codes().size()));
}

// Runs random changes against a plan model; what its look-ups answer must be what a plain search finds.
class RandomModel {
 public:
  RandomModel() : model_(ViewManagerParam(PublicTheme, "0"), nullptr) {
    // The last to ask before a change and the first after it: the watcher asks as well.
    const auto look = [this] { lookAtIndexes(); };
    for (const auto done : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
      QObject::connect(&model_, done, &model_, look);
    }
    QObject::connect(&model_, &QAbstractItemModel::dataChanged, &model_, look);
    QObject::connect(&model_, &QAbstractItemModel::layoutChanged, &model_, look);
    QObject::connect(&model_, &QAbstractItemModel::modelReset, &model_, look);
    TarnTest::CPlanFixture::Watch(&model_);
    for (const auto about_to :
         {&QAbstractItemModel::rowsAboutToBeInserted, &QAbstractItemModel::rowsAboutToBeRemoved}) {
      QObject::connect(&model_, about_to, &model_, look);
    }
    QObject::connect(&model_, &QAbstractItemModel::layoutAboutToBeChanged, &model_, look);
  }

  void Step() {
    switch (*rc::gen::inRange(0, 10)) {
      case 0:
      case 1:
        insert();
        break;
      case 2:
        remove();
        break;
      case 3:
        move();
        break;
      case 4:
        if (QStandardItem* row = anyRow()) {
          row->setText(RandomCode());
        }
        break;
      case 5:
        changeCode();
        break;
      case 6:
        play();
        break;
      case 7:
        model_.sort(0, *rc::gen::element(Qt::AscendingOrder, Qt::DescendingOrder));
        break;
      case 8:
        replace();
        break;
      default:
        if (*rc::gen::inRange(0, 8) == 0) {
          *rc::gen::arbitrary<bool>() ? model_.UninitModelRootItem() : model_.clear();
        }
    }
  }

  void Check() {
    for (const QString& code : Codes()) {
      RC_ASSERT(model_.FindIndexByIndexCode(code, true) == plainSearch(GroupIndexCodeRole, code));
      RC_ASSERT(model_.FindIndexByIndexCode(code, false) == plainSearch(PlanIndexCodeRole, code));
    }
    RC_ASSERT(!model_.FindItemByIndexCode("", true) &&
              !model_.FindItemByIndexCode("", false));  // though rows have none
    const QStandardItem* playing = model_.FindItemPlanPlaying();
    RC_ASSERT((playing ? playing->index() : QModelIndex()) == plainSearch(PlayingRole, true));
    lookAtIndexes();
    RC_ASSERT(wrong_indexes_ == 0);
  }

 private:
  // Also in the midst of changes, when others ask, too; each time in another order, for the model remembers what it was
  // asked last.
  void lookAtIndexes() {
    QList<QStandardItem*> rows;
    collect(model_.invisibleRootItem(), &rows);
    std::shuffle(rows.begin(), rows.end(), order_);
    for (const QStandardItem* row : qAsConst(rows)) {
      const QModelIndex index = row->index();
      wrong_indexes_ += model_.index(row->row(), 0, index.parent()) == index ? 0 : 1;
      wrong_indexes_ += model_.index(row->rowCount(), 0, index).isValid() ? 1 : 0;
    }
  }

  QModelIndex plainSearch(int role, const QVariant& value) const {
    return model_.match(model_.index(0, 0), role, value, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
  }

  void collect(const QStandardItem* parent, QList<QStandardItem*>* rows) const {
    for (int row = 0; row < parent->rowCount(); ++row) {
      rows->append(parent->child(row));
      collect(parent->child(row), rows);
    }
  }

  QStandardItem* anyRow() const {
    QList<QStandardItem*> rows;
    collect(model_.invisibleRootItem(), &rows);
    return rows.isEmpty() ? nullptr : rows.at(*rc::gen::inRange<int>(0, rows.size()));
  }

  QStandardItem* anyParent() const {
    QStandardItem* row = *rc::gen::inRange(0, 3) == 0 ? nullptr : anyRow();
    return row ? row : model_.invisibleRootItem();
  }

  static QStandardItem* newRow() {
    if (*rc::gen::arbitrary<bool>()) {
      view_plugin_protocol::PlanGroup group;
      group.index_code = RandomCode().toStdString();
      return new CViewGroupItem({}, group);
    }
    view_plugin_protocol::PlanBasicInfo plan;
    plan.index_code = RandomCode().toStdString();
    auto* row = new CViewPlanItem({}, plan);
    row->SetPlayState(*rc::gen::inRange(0, 4) == 0);
    return row;
  }

  static QStandardItem* newSubtree() {
    QStandardItem* top = newRow();
    for (int count = *rc::gen::inRange(0, 3); count > 0; --count) {
      QStandardItem* child = newRow();
      top->appendRow(child);
      if (*rc::gen::arbitrary<bool>()) {
        child->appendRow(newRow());
      }
    }
    return top;
  }

  void insert() {
    QStandardItem* parent = anyParent();
    const int at = *rc::gen::inRange(0, parent->rowCount() + 1);
    if (*rc::gen::arbitrary<bool>()) {
      parent->insertRow(at, newSubtree());
      return;
    }
    // Bare rows: this call of Qt's does not tell rows further below which model they are in.
    QList<QStandardItem*> rows;
    for (int count = *rc::gen::inRange(1, 4); count > 0; --count) {
      rows << newRow();
    }
    TarnQt::InsertRows(parent, at, rows);
  }

  void remove() {
    QStandardItem* parent = anyParent();
    if (parent->rowCount() > 0) {
      const int first = *rc::gen::inRange(0, parent->rowCount());
      parent->removeRows(first, *rc::gen::inRange(1, parent->rowCount() - first + 1));
    }
  }

  void move() {
    QStandardItem* row = anyRow();
    if (!row) {
      return;
    }
    QStandardItem* from = row->parent() ? row->parent() : model_.invisibleRootItem();
    const QList<QStandardItem*> taken = from->takeRow(row->row());
    Check();  // the subtree is out of the tree
    QStandardItem* to = anyParent();
    to->insertRow(*rc::gen::inRange(0, to->rowCount() + 1), taken);
  }

  void changeCode() {
    if (QStandardItem* row = anyRow()) {
      const int role = *rc::gen::element(int(GroupIndexCodeRole), int(PlanIndexCodeRole));
      const QVariant code = *rc::gen::element(QVariant(), QVariant(QString()), QVariant(RandomCode()));
      *rc::gen::arbitrary<bool>() ? row->setData(code, role) : void(model_.setData(row->index(), code, role));
    }
  }

  void play() {
    if (QStandardItem* row = anyRow()) {
      row->setData(*rc::gen::arbitrary<bool>(), PlayingRole);
    }
  }

  void replace() {
    QStandardItem* parent = anyParent();
    if (parent->rowCount() > 0) {
      parent->setChild(*rc::gen::inRange(0, parent->rowCount()), newSubtree());
    }
  }

  int wrong_indexes_ = 0;
  std::minstd_rand order_;
  CStandardPlanModel model_;
};

}  // namespace

class PlanModelRandomTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase() {
    if (!qEnvironmentVariableIsSet("RC_PARAMS")) {
      qputenv("RC_PARAMS", "max_success=500");
    }
  }
  void CodesOfOneHashAreKeptApart();
  void LookUpsEqualAPlainSearch() {
    QVERIFY(rc::check("look-ups equal a plain search after each change", [] {
      RandomModel random;
      for (int steps = *rc::gen::inRange(1, 60); steps > 0; --steps) {
        random.Step();
        random.Check();
      }
    }));
  }
};

void PlanModelRandomTest::CodesOfOneHashAreKeptApart() {
  CStandardPlanModel model(ViewManagerParam(PublicTheme, "0"), nullptr);
  std::mt19937 random(11);
  QHash<quint64, QString> seen;
  QString code;
  QString other;
  while (other.isEmpty() || other == code) {
    QVERIFY2(seen.size() < 2000000, "so many codes share no hash");
    code = QString("%1-%2").arg(random(), 0, 36).arg(random(), 0, 36);
    other = seen.value(NumberOfCode(code).value);
    seen.insert(NumberOfCode(code).value, code);
  }
  view_plugin_protocol::PlanBasicInfo plan;
  plan.index_code = code.toStdString();
  model.appendRow(new CViewPlanItem({}, plan));
  QVERIFY(model.FindItemByIndexCode(code, false));
  QVERIFY(!model.FindItemByIndexCode(other, false));
}

QTEST_MAIN(PlanModelRandomTest)
#include "test_plan_model_random.moc"

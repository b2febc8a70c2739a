#include <rapidcheck.h>

#include <QDataStream>
#include <QSet>
#include <QtTest>
#include <algorithm>
#include <memory>

#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

constexpr int kGroupRoles[] = {Qt::DisplayRole, ItemTypeRole,  Qt::DecorationRole, ItemRecordRole, GroupIndexCodeRole,
                               IsGroupRole,     GroupTypeRole, GroupMarkRole,      ItemMarkRole,   GroupLoadedRole};
constexpr int kPlanRoles[] = {Qt::DisplayRole,   ItemTypeRole, Qt::DecorationRole, ItemRecordRole,
                              PlanIndexCodeRole, IsGroupRole,  PlanTypeRole,       PlayingRole};
constexpr int kOtherRoles[] = {Qt::EditRole, Qt::ToolTipRole, Qt::CheckStateRole, Qt::UserRole + 1};

QList<int> AllRoles() {
  QSet<int> roles;
  for (const auto& list : {QList<int>(std::begin(kGroupRoles), std::end(kGroupRoles)),
                           QList<int>(std::begin(kPlanRoles), std::end(kPlanRoles)),
                           QList<int>(std::begin(kOtherRoles), std::end(kOtherRoles))}) {
    roles += QSet<int>(list.cbegin(), list.cend());
  }
  QList<int> sorted = roles.values();
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

QString Said(const QVariant& value) {
  QString said = QString::fromLatin1(value.typeName()) + ":";
  if (value.userType() == qMetaTypeId<view_plugin_protocol::PlanBasicInfo>()) {
    return said + QString::fromStdString(value.value<view_plugin_protocol::PlanBasicInfo>().name);
  }
  if (value.userType() == qMetaTypeId<view_plugin_protocol::PlanGroup>()) {
    return said + QString::fromStdString(value.value<view_plugin_protocol::PlanGroup>().name);
  }
  if (value.userType() == QMetaType::QIcon) {
    return said + QString::number(value.value<QIcon>().cacheKey());
  }
  return said + value.toString();
}

// All that a row and its model say of it.
QStringList Shown(const QStandardItem* row) {
  QStringList shown{QString::number(int(row->flags()))};
  for (const int role : AllRoles()) {
    shown << QString("%1=%2").arg(role).arg(Said(row->data(role)));
    shown << Said(row->model() ? row->index().data(role) : row->data(role));
  }
  if (row->model()) {
    const auto stored = row->model()->itemData(row->index());
    for (auto value = stored.cbegin(); value != stored.cend(); ++value) {
      shown << QString("%1:%2").arg(value.key()).arg(Said(value.value()));
    }
  }
  return shown;
}

// Two models with rows of shared records, and a third whose rows are plain and hold everything themselves. What is done
// to a row is done to its plain twin; neither what they show nor what they tell may differ.
class SharedRows {
 public:
  SharedRows() : plain_(nullptr) {
    for (int number = 0; number < kRows; ++number) {
      const bool is_group = number % 2 == 0;
      const CRowRecord::Ptr record = is_group ? CRowRecord::Of(Group(number)) : CRowRecord::Of(Plan(number));
      for (const auto& model : ours_) {
        model->appendRow(is_group ? static_cast<QStandardItem*>(new CViewGroupItem({}, record))
                                  : new CViewPlanItem({}, record));
      }
      plain_.appendRow(PlainTwin(*record));
    }
    for (const auto& model : ours_) {
      Listen(model.get(), &heard_ours_);
    }
    Listen(&plain_, &heard_plain_);
    untouched_ = ShownBy(*ours_[1]);
  }

  void Step() {
    const int number = *rc::gen::inRange(0, kRows);
    QStandardItem* row = ours_[0]->item(number);
    QStandardItem* twin = plain_.item(number);
    heard_ours_.clear();
    heard_plain_.clear();
    switch (*rc::gen::inRange(0, 12)) {
      case 0:
        setSome(row, twin);
        break;
      case 1:
        RC_ASSERT(ours_[0]->clearItemData(row->index()) == plain_.clearItemData(twin->index()));
        break;
      case 2:
        play(row, twin);
        break;
      case 3:
        row->setEnabled(!row->isEnabled());
        twin->setEnabled(!twin->isEnabled());
        break;
      case 4:
        throughStream(row, twin);
        break;
      default:
        setOne(row, twin);
    }
    RC_ASSERT(heard_ours_ == heard_plain_);
  }

  void Check() const {
    for (int number = 0; number < kRows; ++number) {
      const QStandardItem* row = ours_[0]->item(number);
      const QStandardItem* twin = plain_.item(number);
      RC_ASSERT(Shown(row) == Shown(twin));
      const std::unique_ptr<QStandardItem> copy(row->clone()), twin_copy(twin->clone());
      RC_ASSERT(Shown(copy.get()) == Shown(twin_copy.get()));
    }
    RC_ASSERT(ShownBy(*ours_[1]) == untouched_);  // the records themselves are not touched
  }

 private:
  static constexpr int kRows = 4;

  static view_plugin_protocol::PlanGroup Group(int number) {
    view_plugin_protocol::PlanGroup group;
    group.name = "group " + std::to_string(number);
    group.index_code = std::to_string(number);
    group.type = number % 3;
    return group;
  }
  static view_plugin_protocol::PlanBasicInfo Plan(int number) {
    view_plugin_protocol::PlanBasicInfo plan;
    plan.name = "plan " + std::to_string(number);
    plan.index_code = std::to_string(number);
    plan.type = number % 3;
    return plan;
  }

  static QStandardItem* PlainTwin(const CRowRecord& record) {
    auto* twin = new MarUIControl::CStandardItem;
    twin->setText(record.Name());
    twin->setData(record.ItemType(), ItemTypeRole);
    twin->setIcon(record.IsGroup() ? CViewPublicDef::GetPlanGroupIcon(true) : CViewPublicDef::GetPlanIcon(true, false));
    twin->setData(record.Host(), ItemRecordRole);
    twin->setData(record.Code(), record.IsGroup() ? GroupIndexCodeRole : PlanIndexCodeRole);
    twin->setData(record.IsGroup(), IsGroupRole);
    twin->setData(record.Family(), record.IsGroup() ? GroupTypeRole : PlanTypeRole);
    if (record.IsGroup()) {
      twin->setData(true, GroupMarkRole);
      twin->setData(true, ItemMarkRole);
    }
    twin->setData(false, record.IsGroup() ? GroupLoadedRole : PlayingRole);
    return twin;
  }

  static void Listen(QStandardItemModel* model, QStringList* heard) {
    QObject::connect(model, &QStandardItemModel::itemChanged, model,
                     [heard](const QStandardItem* item) { *heard << QString("item %1").arg(item->row()); });
    QObject::connect(model, &QStandardItemModel::dataChanged, model,
                     [heard](const QModelIndex& top, const QModelIndex&, const QVector<int>& roles) {
                       *heard << QString("row %1").arg(top.row());
                       for (const int role : roles) {
                         *heard << QString::number(role);
                       }
                     });
  }

  static QStringList ShownBy(const QStandardItemModel& model) {
    QStringList shown;
    for (int row = 0; row < model.rowCount(); ++row) {
      shown += Shown(model.item(row));
    }
    return shown;
  }

  static QVariant anyValue(const QStandardItem* row, int role) {
    switch (*rc::gen::inRange(0, 6)) {
      case 0:
      case 1:
        return {};
      case 2:
        return row->data(role);
      case 3:
        return *rc::gen::arbitrary<bool>();
      case 4:
        return *rc::gen::inRange(0, 3);
      default:
        return QString::number(*rc::gen::inRange(0, 6));
    }
  }

  static int anyRole() {
    static const QList<int> roles = AllRoles();
    return roles.at(*rc::gen::inRange<int>(0, roles.size()));
  }

  void setOne(QStandardItem* row, QStandardItem* twin) {
    const int role = anyRole();
    const QVariant value = anyValue(row, role);
    if (*rc::gen::arbitrary<bool>()) {
      row->setData(value, role);
    } else {
      ours_[0]->setData(row->index(), value, role);
    }
    twin->setData(value, role);
  }

  void setSome(QStandardItem* row, QStandardItem* twin) {
    QMap<int, QVariant> values;
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
      const int role = anyRole();
      values.insert(role, anyValue(row, role));
    }
    RC_ASSERT(ours_[0]->setItemData(row->index(), values) == plain_.setItemData(twin->index(), values));
  }

  static void play(QStandardItem* row, QStandardItem* twin) {
    if (auto* plan = dynamic_cast<CViewPlanItem*>(row)) {
      const bool playing = *rc::gen::arbitrary<bool>();
      plan->SetPlayState(playing);
      twin->setIcon(CViewPublicDef::GetPlanIcon(true, playing));
      twin->setData(playing, PlayingRole);
    }
  }

  // Host records cannot be written; without them both sides read back what was written.
  static void throughStream(QStandardItem* row, QStandardItem* twin) {
    for (QStandardItem* item : {row, twin}) {
      item->setData(QString(), ItemRecordRole);
      item->setData(QString(), Qt::DecorationRole);
      QByteArray bytes;
      QDataStream out(&bytes, QIODevice::WriteOnly);
      out << *item;
      QDataStream in(&bytes, QIODevice::ReadOnly);
      in >> *item;
    }
  }

  const std::unique_ptr<CStandardPlanModel> ours_[2] = {
      std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "0"), nullptr),
      std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "1"), nullptr)};
  MarUIControl::CStandardItemModel plain_;
  QStringList heard_ours_, heard_plain_, untouched_;
};

}  // namespace

class SharedRowsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase() {
    if (!qEnvironmentVariableIsSet("RC_PARAMS")) {
      qputenv("RC_PARAMS", "max_success=300");
    }
  }
  void cleanupTestCase() { CViewPublicDef::ReleaseCachedIcons(); }
  void RowsAreLikePlainOnes();
  void RecordsGoWithTheLastRow();
};

void SharedRowsTest::RowsAreLikePlainOnes() {
  QVERIFY(rc::check("rows of shared records show and tell what plain rows do", [] {
    SharedRows random;
    for (int steps = *rc::gen::inRange(1, 40); steps > 0; --steps) {
      random.Step();
      random.Check();
    }
  }));
}

void SharedRowsTest::RecordsGoWithTheLastRow() {
  view_plugin_protocol::PlanBasicInfo plan;
  plan.name = "Gate";
  plan.index_code = "7";
  CRowRecord::Ptr record = CRowRecord::Of(plan);
  const CRowRecord* const shared = record.data();
  auto first = std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "0"), nullptr);
  auto second = std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "1"), nullptr);
  first->appendRow(new CViewPlanItem(first->GetViewMangageParam(), record));
  second->appendRow(new CViewPlanItem(second->GetViewMangageParam(), record));
  QCOMPARE(int(shared->ref.loadRelaxed()), 3);
  record.reset();
  first->item(0)->setText("Yard");
  const QVariant kept = first->item(0)->data(ItemRecordRole);
  first.reset();  // a model goes, its records live on
  QCOMPARE(int(shared->ref.loadRelaxed()), 1);
  QCOMPARE(second->item(0)->text(), QString("Gate"));
  const std::unique_ptr<QStandardItem> taken(second->takeRow(0).first());
  second.reset();  // the other way round: a row outlives its model
  QCOMPARE(taken->data(PlanIndexCodeRole), QVariant("7"));
  QCOMPARE(kept.value<view_plugin_protocol::PlanBasicInfo>().name, std::string("Gate"));
}

QTEST_MAIN(SharedRowsTest)
#include "test_shared_rows.moc"

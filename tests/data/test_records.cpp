#include <QApplication>
#include <QStandardItemModel>
#include <QtTest>

#include "btn_image_info.h"
#include "item_type.h"
#include "plan_camera_tree_info.h"
#include "plan_item_role.h"
#include "plan_region_info.h"
#include "plan_test.h"
#include "view_group_item.h"
#include "view_manager_param.h"
#include "view_plan_item.h"
#include "view_public_def.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;

// Rows, codes, paths, icons and shared records, without a host behind them.
class RecordsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void cleanupTestCase() { CViewPublicDef::ReleaseCachedIcons(); }
  void ClassifiesByItemType();
  void DarkPath();
  void RowsTakeTheirFamilyFromTheRecord_data();
  void RowsTakeTheirFamilyFromTheRecord();
  void PlayStateShowsInEveryTheme();
  void ParametersCarryFlags();
  void CopiesShareOneBody();
  void IconsAreThere();
};

void RecordsTest::ClassifiesByItemType() {
  const struct {
    QVariant type;
    int family, kind;
    const char* code;
  } rows[] = {{1, 0, -1, "-1"},    {2, 0, 0, "group"},        {3, 0, 1, "plan"},  {4, 0, 1, "plan"},  {5, 1, -1, "-1"},
              {6, 1, 0, "group"},  {7, 1, 1, "plan"},         {8, 1, 1, "plan"},  {9, -1, -1, "-1"},  {10, 2, -1, "-1"},
              {11, 2, 0, "group"}, {12, 2, 1, "plan"},        {13, 2, 1, "plan"}, {14, -1, -1, "-1"}, {0, -1, -1, "-1"},
              {-1, -1, -1, "-1"},  {QVariant(), -1, -1, "-1"}};
  QStandardItemModel model;
  auto* item = new QStandardItem;
  item->setData("group", GroupIndexCodeRole);
  item->setData("plan", PlanIndexCodeRole);
  model.appendRow(item);
  for (const auto& row : rows) {
    item->setData(row.type, ItemTypeRole);
    const QString type = "type " + row.type.toString();
    QVERIFY2(CViewPublicDef::GetIndexType(item->index()) == row.family, qPrintable(type));
    QVERIFY2(CViewPublicDef::GetIndexItemType(item->index()) == row.kind, qPrintable(type));
    QVERIFY2(CViewPublicDef::IsPlanGroup(item->index()) == (row.kind == 0), qPrintable(type));
    QVERIFY2(CViewPublicDef::GetIndexCode(item->index()) == row.code, qPrintable(type));
  }
  QCOMPARE(CViewPublicDef::GetIndexCode(QModelIndex()), std::string("-1"));
}

void RecordsTest::DarkPath() {
  const std::pair<const char*, const char*> paths[] = {
      {":/a.svg", ":/a_d.svg"},   {":/x.svg.svg", ":/x.svg_d.svg"},  // the last one counts
      {":/x.svgz", ":/x_d.svgz"}, {":/a.SVG", ":/a.SVG"},           {":/a.png", ":/a.png"}, {"", ""}};
  for (const auto& [path, dark] : paths) {
    QCOMPARE(CViewPublicDef::GetDarkPath(path, true), QString(dark));
    QCOMPARE(CViewPublicDef::GetDarkPath(path, false), QString(path));
  }
}

void RecordsTest::RowsTakeTheirFamilyFromTheRecord_data() {
  QTest::addColumn<int>("family");
  QTest::addColumn<int>("group_type");
  QTest::addColumn<int>("plan_type");
  QTest::newRow("public") << 0 << int(PublicGroupItem) << int(PublicPlanItem);
  QTest::newRow("own") << 1 << int(OwnGroupItem) << int(OwnPlanItem);
  QTest::newRow("received") << 2 << int(ReceivedGroupItem) << int(ReceivedPlanItem);
  QTest::newRow("unknown counts as own") << 7 << int(OwnGroupItem) << int(OwnPlanItem);
}

void RecordsTest::RowsTakeTheirFamilyFromTheRecord() {
  QFETCH(int, family);
  const QString name = QString::fromUtf8("Gr\u00fc\u00dfe");
  for (const bool flag9 : {false, true}) {
    ViewManagerParam param(PublicTheme, "0");
    param.flag9 = flag9;
    const CViewGroupItem item(param, TarnTest::GroupRecord("17", name, family, "-1"));
    QCOMPARE(item.text(), name);
    QTEST(item.data(ItemTypeRole).toInt(), "group_type");
    QCOMPARE(item.data(GroupIndexCodeRole), QVariant("17"));
    QCOMPARE(item.data(IsGroupRole), QVariant(true));
    QCOMPARE(item.data(GroupTypeRole), QVariant(family));
    QCOMPARE(item.data(GroupMarkRole), QVariant(true));
    QCOMPARE(item.data(ItemMarkRole), QVariant(!flag9));
    QCOMPARE(item.data(GroupLoadedRole), QVariant(false));
    QCOMPARE(item.data(ItemRecordRole).value<PlanGroup>().parent_index_code, std::string("-1"));
    QVERIFY(!item.data(PlanIndexCodeRole).isValid());
    QCOMPARE(item.icon().cacheKey(), CViewPublicDef::GetPlanGroupIcon(true).cacheKey());
  }
  PlanBasicInfo plan = TarnTest::PlanRecord("18", "Gate", family);
  plan.page_count = 3;
  const CViewPlanItem item(ViewManagerParam(PublicTheme, "0"), plan);
  QCOMPARE(item.text(), QString("Gate"));
  QTEST(item.data(ItemTypeRole).toInt(), "plan_type");
  QCOMPARE(item.data(PlanIndexCodeRole), QVariant("18"));
  QCOMPARE(item.data(IsGroupRole), QVariant(false));
  QCOMPARE(item.data(PlanTypeRole), QVariant(family));
  QCOMPARE(item.data(ItemRecordRole).value<PlanBasicInfo>().page_count, 3);
  QVERIFY(!item.data(GroupIndexCodeRole).isValid());
}

void RecordsTest::PlayStateShowsInEveryTheme() {
  for (const auto theme : {PublicTheme, OwnTheme, ReceivedTheme}) {
    const bool dark = theme == PublicTheme;
    CViewPlanItem item(ViewManagerParam(theme, "0"), TarnTest::PlanRecord("18", "Gate"));
    for (const bool playing : {false, true, false}) {
      item.SetPlayState(playing);
      QCOMPARE(item.data(PlayingRole), QVariant(playing));
      QCOMPARE(item.icon().cacheKey(), CViewPublicDef::GetPlanIcon(dark != playing, playing).cacheKey());
      QCOMPARE(item.data(Qt::AccessibleTextRole), playing ? QVariant("Gate, playing") : QVariant());
    }
  }
}

void RecordsTest::ParametersCarryFlags() {
  const ViewManagerParam none;
  QVERIFY(!none.flag0 && !none.flag8 && !none.flag9 && none.type == PublicTheme && none.name.isEmpty());
  const ViewManagerParam made(OwnTheme, "2");
  QVERIFY(made.flag0 && made.flag1 && made.flag2 && made.flag3 && made.flag4);
  QVERIFY(made.flag5 && made.flag6 && made.flag7 && made.flag8 && !made.flag9);
  QVERIFY(made.type == OwnTheme && made.name == "2");
}

// The handles of one record are one record: what is set through a copy is seen through all.
void RecordsTest::CopiesShareOneBody() {
  PlanRegionInfo record;
  CPlanRegionInfo region(record), copy(region), assigned;
  assigned = region;
  copy.SetVal_name("Hall");
  QCOMPARE(region.GetVal_name(), std::string("Hall"));
  QVERIFY(record.name.empty());  // the record itself was copied
  PlanRegionInfo other;
  other.index_code = "9";
  assigned.SetData(other);  // assigns into the shared body
  QCOMPARE(region.GetVal_index_code(), std::string("9"));
  QVERIFY(CPlanRegionInfo().GetDataPtr() != CPlanRegionInfo().GetDataPtr());

  CPlanCameraTreeInfo camera, camera_copy = camera;
  camera_copy.SetVal_stTreeItemInfo_(region);
  camera_copy.SetVal_emType_(4);
  QCOMPARE(camera.GetVal_emType_(), 4);
  camera.GetVal_stTreeItemInfo_().SetVal_name("Dock");  // the handle inside shares, too
  QCOMPARE(region.GetVal_name(), std::string("Dock"));

  const QIcon icon(QPixmap(4, 4));
  CBtnImageInfo images, images_copy = images;
  images_copy.SetVal_hover_black_icon(icon);
  QCOMPARE(images.GetVal_hover_black_icon().cacheKey(), icon.cacheKey());
  QVERIFY(images.GetVal_hover_icon().isNull());
  const CViewManagerParam parameters(std::make_shared<ViewManagerParam>()), parameters_copy = parameters;
  parameters_copy.GetDataPtr()->name = "3";
  QCOMPARE(parameters.GetDataPtr()->name, QString("3"));
}

// Those of plans and groups are looked at in tests/panel, too, at every scale.
void RecordsTest::IconsAreThere() {
  using Split = MarUIControl::struSplitTypeData;
  using Get = QIcon (*)();
  const Get icons[] = {&CViewPublicDef::GetCustomViewGroupIcon, &CViewPublicDef::GetCustomViewItemIcon,
                       &CViewPublicDef::GetPlayViewItemIcon,    &CViewPublicDef::GetCameraOnlineIcon,
                       &CViewPublicDef::GetCameraOfflineIcon,   &CViewPublicDef::GetCameraOnlineAlarmIcon,
                       &CViewPublicDef::GetCameraPlaying,       &CViewPublicDef::GetCameraPlayingAlarm,
                       &CViewPublicDef::GetCameraRecording,     &CViewPublicDef::GetCameraRecordingAlarm,
                       &CViewPublicDef::GetResourceGroupIcon,   &CViewPublicDef::GetScreenIcon};
  for (const Get icon : icons) {
    QVERIFY(!icon().pixmap(16, 16).isNull());  // the icon of a missing file is not null itself
  }
  for (const auto split : {Split::Split1, Split::Split4, Split::Split9, Split::Split16}) {
    QVERIFY(!CViewPublicDef::GetViewIcon(split).pixmap(16, 16).isNull());
  }
  QVERIFY(CViewPublicDef::GetViewIcon(static_cast<Split::SplitType>(3)).isNull());
  QVERIFY(CViewPublicDef::GetRootViewIcon().isNull());
  const qint64 key = CViewPublicDef::GetPlanIcon(true, false).cacheKey();
  QVERIFY(key != CViewPublicDef::GetPlanIcon(false, false).cacheKey());
  CViewPublicDef::ReleaseCachedIcons();
  QVERIFY(!CViewPublicDef::GetPlanIcon(true, false).isNull());  // built again
  QVERIFY(CViewPublicDef::GetPlanIcon(true, false).cacheKey() != key);
}

QTEST_MAIN(RecordsTest)
#include "test_records.moc"

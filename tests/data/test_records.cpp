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
  void ClassifiesByItemType_data();
  void ClassifiesByItemType();
  void DarkPath_data();
  void DarkPath();
  void GroupRowTakesFamilyFromRecord_data();
  void GroupRowTakesFamilyFromRecord();
  void PlanRowAndPlayState_data();
  void PlanRowAndPlayState();
  void ParametersCarryFlags();
  void CopiesShareOneBody();
  void IconsAreThere();
};

void RecordsTest::ClassifiesByItemType_data() {
  QTest::addColumn<QVariant>("type");
  QTest::addColumn<int>("family");
  QTest::addColumn<int>("kind");
  QTest::addColumn<QString>("code");
  const struct {
    QVariant type;
    int family, kind;
    const char* code;
  } rows[] = {{1, 0, -1, "-1"},    {2, 0, 0, "group"},        {3, 0, 1, "plan"},  {4, 0, 1, "plan"},  {5, 1, -1, "-1"},
              {6, 1, 0, "group"},  {7, 1, 1, "plan"},         {8, 1, 1, "plan"},  {9, -1, -1, "-1"},  {10, 2, -1, "-1"},
              {11, 2, 0, "group"}, {12, 2, 1, "plan"},        {13, 2, 1, "plan"}, {14, -1, -1, "-1"}, {0, -1, -1, "-1"},
              {-1, -1, -1, "-1"},  {QVariant(), -1, -1, "-1"}};
  for (const auto& row : rows) {
    QTest::newRow(qPrintable("type " + row.type.toString())) << row.type << row.family << row.kind << row.code;
  }
}

void RecordsTest::ClassifiesByItemType() {
  QFETCH(QVariant, type);
  QStandardItemModel model;
  auto* item = new QStandardItem;
  item->setData(type, ItemTypeRole);
  item->setData("group", GroupIndexCodeRole);
  item->setData("plan", PlanIndexCodeRole);
  model.appendRow(item);
  QTEST(CViewPublicDef::GetIndexType(item->index()), "family");
  QTEST(CViewPublicDef::GetIndexItemType(item->index()), "kind");
  QCOMPARE(CViewPublicDef::IsPlanGroup(item->index()), CViewPublicDef::GetIndexItemType(item->index()) == 0);
  QTEST(QString::fromStdString(CViewPublicDef::GetIndexCode(item->index())), "code");
  QCOMPARE(CViewPublicDef::GetIndexCode(QModelIndex()), std::string("-1"));
}

void RecordsTest::DarkPath_data() {
  QTest::addColumn<QString>("path");
  QTest::addColumn<QString>("dark");
  QTest::newRow("plain") << ":/a.svg"
                         << ":/a_d.svg";
  QTest::newRow("last one counts") << ":/x.svg.svg"
                                   << ":/x.svg_d.svg";
  QTest::newRow("in the middle") << ":/x.svgz"
                                 << ":/x_d.svgz";
  QTest::newRow("case-sensitive") << ":/a.SVG"
                                  << ":/a.SVG";
  QTest::newRow("other kind") << ":/a.png"
                              << ":/a.png";
  QTest::newRow("empty") << ""
                         << "";
}

void RecordsTest::DarkPath() {
  QFETCH(QString, path);
  QTEST(CViewPublicDef::GetDarkPath(path, true), "dark");
  QCOMPARE(CViewPublicDef::GetDarkPath(path, false), path);
}

void RecordsTest::GroupRowTakesFamilyFromRecord_data() {
  QTest::addColumn<int>("family");
  QTest::addColumn<int>("group_type");
  QTest::addColumn<int>("plan_type");
  QTest::newRow("public") << 0 << int(PublicGroupItem) << int(PublicPlanItem);
  QTest::newRow("own") << 1 << int(OwnGroupItem) << int(OwnPlanItem);
  QTest::newRow("received") << 2 << int(ReceivedGroupItem) << int(ReceivedPlanItem);
  QTest::newRow("unknown counts as own") << 7 << int(OwnGroupItem) << int(OwnPlanItem);
}

void RecordsTest::GroupRowTakesFamilyFromRecord() {
  QFETCH(int, family);
  for (const bool flag9 : {false, true}) {
    ViewManagerParam param(PublicTheme, "0");
    param.flag9 = flag9;
    PlanGroup group;
    group.name =
        "Gr\xC3\xBC\xC3\x9F"
        "e";
    group.index_code = "17";
    group.parent_index_code = "-1";
    group.type = family;
    CViewGroupItem item(param, group);
    QCOMPARE(item.text(), QString::fromUtf8("Gr\xC3\xBC\xC3\x9F"
                                            "e"));
    QTEST(item.data(ItemTypeRole).toInt(), "group_type");
    QCOMPARE(item.data(GroupIndexCodeRole), QVariant("17"));
    QCOMPARE(item.data(IsGroupRole), QVariant(true));
    QCOMPARE(item.data(GroupTypeRole), QVariant(family));
    QCOMPARE(item.data(GroupMarkRole), QVariant(true));
    QCOMPARE(item.data(ItemMarkRole), QVariant(!flag9));
    QCOMPARE(item.data(GroupLoadedRole), QVariant(false));
    QCOMPARE(item.data(ItemRecordRole).value<PlanGroup>().parent_index_code, group.parent_index_code);
    QVERIFY(!item.data(PlanIndexCodeRole).isValid());
    QCOMPARE(item.icon().cacheKey(), CViewPublicDef::GetPlanGroupIcon(true).cacheKey());
  }
}

void RecordsTest::PlanRowAndPlayState_data() {
  GroupRowTakesFamilyFromRecord_data();
}

void RecordsTest::PlanRowAndPlayState() {
  QFETCH(int, family);
  PlanBasicInfo plan;
  plan.name = "Gate";
  plan.index_code = "18";
  plan.type = family;
  plan.page_count = 3;
  for (const auto theme : {PublicTheme, OwnTheme, ReceivedTheme}) {
    const bool dark = theme == PublicTheme;
    CViewPlanItem item(ViewManagerParam(theme, "0"), plan);
    QCOMPARE(item.text(), QString("Gate"));
    QTEST(item.data(ItemTypeRole).toInt(), "plan_type");
    QCOMPARE(item.data(PlanIndexCodeRole), QVariant("18"));
    QCOMPARE(item.data(IsGroupRole), QVariant(false));
    QCOMPARE(item.data(PlanTypeRole), QVariant(family));
    QCOMPARE(item.data(PlayingRole), QVariant(false));
    QCOMPARE(item.data(ItemRecordRole).value<PlanBasicInfo>().page_count, 3);
    QVERIFY(!item.data(GroupIndexCodeRole).isValid());
    QCOMPARE(item.icon().cacheKey(), CViewPublicDef::GetPlanIcon(dark, false).cacheKey());
    item.SetPlayState(true);
    QCOMPARE(item.data(PlayingRole), QVariant(true));
    QCOMPARE(item.icon().cacheKey(), CViewPublicDef::GetPlanIcon(!dark, true).cacheKey());
    QCOMPARE(item.data(Qt::AccessibleTextRole), QVariant("Gate, playing"));
    item.SetPlayState(false);
    QCOMPARE(item.data(PlayingRole), QVariant(false));
    QVERIFY(!item.data(Qt::AccessibleTextRole).isValid());
    QCOMPARE(item.icon().cacheKey(), CViewPublicDef::GetPlanIcon(dark, false).cacheKey());
  }
}

void RecordsTest::ParametersCarryFlags() {
  const ViewManagerParam none;
  QVERIFY(!none.flag0 && !none.flag8 && !none.flag9 && none.type == PublicTheme && none.name.isEmpty());
  const ViewManagerParam made(OwnTheme, "2");
  QVERIFY(made.flag0 && made.flag1 && made.flag2 && made.flag3 && made.flag4);
  QVERIFY(made.flag5 && made.flag6 && made.flag7 && made.flag8 && !made.flag9);
  QVERIFY(made.type == OwnTheme && made.name == "2");
  const CViewManagerParam wrapper(std::make_shared<ViewManagerParam>(made));
  const CViewManagerParam copy = wrapper;
  copy.GetDataPtr()->name = "3";
  QCOMPARE(wrapper.GetDataPtr()->name, QString("3"));
}

void RecordsTest::CopiesShareOneBody() {
  PlanRegionInfo record;
  record.name = "Yard";
  CPlanRegionInfo region(record);
  CPlanRegionInfo copy(region), assigned;
  assigned = region;
  copy.SetVal_name("Hall");
  copy.SetVal_total_online_quantity(3);
  copy.SetVal_lst_region_path({"1", "2"});
  QCOMPARE(region.GetVal_name(), std::string("Hall"));
  QCOMPARE(assigned.GetVal_total_online_quantity(), 3);
  QCOMPARE(assigned.GetVal_lst_region_path().size(), size_t(2));
  QCOMPARE(record.name, std::string("Yard"));  // the record itself was copied
  PlanRegionInfo other;
  other.index_code = "9";
  other.cascade_type = ResourceData::CT_LOWER_SITE;
  assigned.SetData(other);  // assigns into the shared body
  QCOMPARE(region.GetVal_index_code(), std::string("9"));
  QCOMPARE(copy.GetVal_cascade_type(), ResourceData::CT_LOWER_SITE);
  QVERIFY(CPlanRegionInfo().GetDataPtr() != CPlanRegionInfo().GetDataPtr());
  const auto body = std::make_shared<PlanRegionInfo>();
  QCOMPARE(CPlanRegionInfo(body).GetDataPtr(), body);

  CPlanCameraTreeInfo camera;
  CPlanCameraTreeInfo camera_copy = camera;
  ResourceTreeKit::CCameraItemInfo info;
  info.name = "CAM 001";
  camera_copy.SetVal_stCameraInfo_(info);
  camera_copy.SetVal_stTreeItemInfo_(region);
  camera_copy.SetVal_emType_(4);
  QCOMPARE(camera.GetVal_stCameraInfo_().name, std::string("CAM 001"));
  QCOMPARE(camera.GetVal_emType_(), 4);
  camera.GetVal_stTreeItemInfo_().SetVal_name("Dock");  // the handle inside shares, too
  QCOMPARE(region.GetVal_name(), std::string("Dock"));

  QPixmap pixmap(4, 4);
  pixmap.fill(Qt::red);
  const QIcon icon(pixmap);
  CBtnImageInfo images, images_copy = images;
  images_copy.SetVal_hover_black_icon(icon);
  QCOMPARE(images.GetVal_hover_black_icon().cacheKey(), icon.cacheKey());
  QVERIFY(images.GetVal_hover_icon().isNull());
}

void RecordsTest::IconsAreThere() {
  using Split = MarUIControl::struSplitTypeData;
  for (const QIcon& icon : {CViewPublicDef::GetPlanGroupIcon(true),
                            CViewPublicDef::GetPlanGroupIcon(false),
                            CViewPublicDef::GetPlanIcon(true, false),
                            CViewPublicDef::GetPlanIcon(false, false),
                            CViewPublicDef::GetPlanIcon(false, true),
                            CViewPublicDef::GetCustomViewGroupIcon(),
                            CViewPublicDef::GetCustomViewItemIcon(),
                            CViewPublicDef::GetPlayViewItemIcon(),
                            CViewPublicDef::GetCameraOnlineIcon(),
                            CViewPublicDef::GetCameraOfflineIcon(),
                            CViewPublicDef::GetCameraOnlineAlarmIcon(),
                            CViewPublicDef::GetCameraPlaying(),
                            CViewPublicDef::GetCameraPlayingAlarm(),
                            CViewPublicDef::GetCameraRecording(),
                            CViewPublicDef::GetCameraRecordingAlarm(),
                            CViewPublicDef::GetResourceGroupIcon(),
                            CViewPublicDef::GetScreenIcon(),
                            CViewPublicDef::GetViewIcon(Split::Split1),
                            CViewPublicDef::GetViewIcon(Split::Split4),
                            CViewPublicDef::GetViewIcon(Split::Split9),
                            CViewPublicDef::GetViewIcon(Split::Split16)}) {
    // A null QIcon of a missing file is not null; its pixmap is.
    QVERIFY(!icon.pixmap(16, 16).isNull());
  }
  QVERIFY(CViewPublicDef::GetViewIcon(static_cast<Split::SplitType>(3)).isNull());
  QVERIFY(CViewPublicDef::GetRootViewIcon().isNull());
  const qint64 key = CViewPublicDef::GetPlanIcon(true, false).cacheKey();
  QVERIFY(key != CViewPublicDef::GetPlanIcon(false, false).cacheKey());
  QVERIFY(!CViewPublicDef::GetPlanGroupIcon(true).pixmap(16, 16, QIcon::Selected).isNull());
  CViewPublicDef::ReleaseCachedIcons();
  QVERIFY(!CViewPublicDef::GetPlanIcon(true, false).isNull());  // built again
  QVERIFY(CViewPublicDef::GetPlanIcon(true, false).cacheKey() != key);
}

QTEST_MAIN(RecordsTest)
#include "test_records.moc"

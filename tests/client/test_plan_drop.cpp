#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QtTest>

#include "client_desk.h"
#include "wall/drag_payload.h"
#include "wall/plan_drop.h"

using TarnClient::PlanDrop;

namespace {

constexpr char kFormat[] = "_drag_json_data_";

QByteArray Payload(const char* type, const QString& code, const QString& station) {
  return QString(R"([{"_source_id_":"%2","_station_id_":"%3","_source_type_":"%1",)"
                 R"("_normal_resource":{"name":"Gate A","item_type":3},"_view_index_code_":"%2"}])")
      .arg(QLatin1String(type), code, station)
      .toUtf8();
}

}  // namespace

class PlanDropTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void RefusesWhatIsNoPlan_data();
  void RefusesWhatIsNoPlan();
  void PlaysWhatIsDropped();

 private:
  bool Enter(const QMimeData& data) {
    QDragEnterEvent event(Wall().rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Wall(), &event);
    return event.isAccepted();
  }
  // A drop reaches only what the drag has entered.
  void Drop(const QMimeData& data) {
    QVERIFY(Enter(data));
    QDropEvent event(Wall().rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Wall(), &event);
  }
};

void PlanDropTest::RefusesWhatIsNoPlan_data() {
  QTest::addColumn<QByteArray>("payload");
  QTest::addColumn<bool>("taken");
  const QByteArray good = Payload("_type_view_", "7", "here");
  const auto with = [&good](const char* from, const char* to) { return QByteArray(good).replace(from, to); };
  QTest::newRow("plan") << good << true;
  QTest::newRow("group") << Payload("_type_view_group_", "7", "here") << true;
  QTest::newRow("nothing but a code") << with(R"("_normal_resource":{"name":"Gate A","item_type":3},)", "") << true;
  QTest::newRow("empty") << QByteArray() << false;
  QTest::newRow("no JSON") << QByteArray("Gate A") << false;
  QTest::newRow("cut short") << good.left(40) << false;
  QTest::newRow("no array") << good.mid(1, good.size() - 2) << false;
  QTest::newRow("empty array") << QByteArray("[]") << false;
  QTest::newRow("array of numbers") << QByteArray("[1,2]") << false;
  QTest::newRow("two at once") << good.left(good.size() - 1) + "," + good.mid(1) << false;
  QTest::newRow("code of another type") << with(R"("_source_id_":"7")", R"("_source_id_":7)") << false;
  QTest::newRow("no code") << with(R"("_source_id_":"7")", R"("_source_id_":"")") << false;
  QTest::newRow("type of another type") << with(R"("_type_view_")", "{}") << false;
  QTest::newRow("unknown type") << Payload("_type_camera_", "7", "here") << false;
  QTest::newRow("other site") << Payload("_type_view_", "7", "there") << false;
  QTest::newRow("10 MB") << good + QByteArray(10 * 1024 * 1024, ' ') << false;
  QTest::newRow("deeply nested") << QByteArray(30000, '[') << false;
}

void PlanDropTest::RefusesWhatIsNoPlan() {
  QFETCH(QByteArray, payload);
  QFETCH(bool, taken);
  QMimeData data;
  data.setData(kFormat, payload);
  const auto drop = PlanDrop::Read(TarnClient::SourcesOfDrag(&data), "here");
  QCOMPARE(drop.has_value(), taken);
  QVERIFY(!drop || drop->code == "7");
}

void PlanDropTest::PlaysWhatIsDropped() {
  Open();
  const QString here = QString::fromStdString(fixture_.Store().StationId());
  const auto* hint = Wall().findChild<QWidget*>("wall_drop_hint");
  QMimeData data;
  data.setText("Gate A");
  QVERIFY(!Enter(data) && !hint->isVisible());
  data.setData(kFormat, Payload("_type_view_", fixture_.Code("Public A plan 2"), here));
  QVERIFY(Enter(data) && hint->isVisible());
  QDragLeaveEvent leave;
  QCoreApplication::sendEvent(&Wall(), &leave);
  QVERIFY(!hint->isVisible());
  Drop(data);
  QVERIFY(!hint->isVisible());
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));

  data.setData(kFormat, Payload("_type_view_group_", fixture_.Code("Public B"), here));
  Drop(data);
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QCOMPARE(clock_->Seconds(), 20);

  // No such plan: that is known only after the drop.
  data.setData(kFormat, Payload("_type_view_", "987654", here));
  Drop(data);
  QTRY_VERIFY(Tip().contains("does not exist"));
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
}

QTEST_MAIN(PlanDropTest)
#include "test_plan_drop.moc"

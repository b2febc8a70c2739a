#include <QtTest>

#include "site/camera_csv.h"
#include "site/device_cameras.h"

using namespace TarnClient;

namespace {

/// Regions "House" with "Hall" in it and cameras "Door" (1001, in the hall) and "Roof" (1002, in no region).
SiteTable Site() {
  SiteTable site;
  site.regions = {{"1", "House", ""}, {"2", "Hall", "1"}};
  site.cameras = {{"1001", "Door", "2", true}, {"1002", "Roof", "", true}};
  site.access["1001"] = {"1001", {{0, "rtsp://cam/1"}, {1, "rtsp://cam/2"}}, "ann", TarnHost::CSecret("geheim"), ""};
  site.access["1002"] = {"1002", {{0, "rtsp://cam/?password=x"}}, "", {}, "http://dev/"};
  site.Arrange();
  return site;
}

/// The rows with a bar between cells and the number of the line before them.
QString Shown(const CCsvText& table) {
  QStringList rows;
  for (const auto& row : table.Rows()) {
    rows << QString::number(row.line) + ": " + row.cells.join('|');
  }
  return rows.join(" / ");
}

QString Shown(const CameraImport& plan) {
  QStringList parts = {
      QString("+%1 ~%2 =%3 regions %4").arg(plan.added).arg(plan.changed).arg(plan.same).arg(plan.new_regions)};
  for (const auto& region : plan.changes.regions) {
    parts << QString::fromStdString("[" + *region.name + " in " + region.parent.value_or("-") + "]");
  }
  for (const auto& camera : plan.changes.cameras) {
    QString text = QString::fromStdString(camera.index_code + ":" + *camera.name + "@" + camera.region.value_or("-"));
    for (const auto& stream : camera.streams) {
      text += QString(" %1=%2").arg(stream.type).arg(QString::fromStdString(stream.url));
    }
    if (camera.user) {
      text += QString::fromStdString(" " + *camera.user);
    }
    parts << text + (camera.secret ? QString::fromStdString(" " + camera.secret->Reveal()) : QString());
  }
  return (parts + plan.left_out).join("; ");
}

}  // namespace

/// Cameras from elsewhere: out of a table in a file, and from a device.
class CameraCsvTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void ReadsTables_data();
  void ReadsTables();
  void ReadsEncodings_data();
  void ReadsEncodings();
  void ReadsOlderTablesAsTheUserWritesThem();
  void PlansAnImport_data();
  void PlansAnImport();
  void GoesThereAndBack();
  void WritesPasswordsOnlyWhenAsked();
  void PlansTenThousandRows();
  void FindsItsWayInManyRegions();
  void TakesTheCamerasOfADevice();
};

void CameraCsvTest::ReadsTables_data() {
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<QString>("shown");
  const auto add = [](const char* what, const char* text, const char* shown) {
    QTest::newRow(what) << QByteArray(text) << shown;
  };
  add("plain", "a,b\r\n1,2\r\n", "1: a|b / 2: 1|2");
  add("no last break", "a,b\n1,2", "1: a|b / 2: 1|2");
  add("old breaks", "a,b\r1,2\r", "1: a|b / 2: 1|2");
  add("quotes", "a,\"b \"\"x\"\", c\"\n\"\",2", "1: a|b \"x\", c / 2: |2");
  add("breaks in quotes", "\"a\r\nb\nc\",1\r\nnext,2", "1: a\r\nb\nc|1 / 4: next|2");
  add("a quote in the middle", "a,5\" wide", "1: a|5\" wide");
  add("empty lines", "\n\na,b\n,\n\n1,2\n", "3: a|b / 6: 1|2");
  add("empty cells at the end", "a,b,\n1,,", "1: a|b| / 2: 1||");
  add("semicolons", "a;\"b;,\";c\n1,5;2;3", "1: a|b;,|c / 2: 1,5|2|3");
  add("tabs", "a\tb\n1,\t2", "1: a|b / 2: 1,|2");
  add("never closed", "a,b\n1,\"2\n3", "!line 2 is never closed");
  add("blanks behind a quote", "\"a\" ,b", "1: a|b");
  add("quotes behind a quote", "a,b\n\"abc\" \"def\",2", "!line 2 something");
  add("behind a quote", "a,b\n\"1\"x,2", "!line 2 something");
  add("nothing", "", "");
}

void CameraCsvTest::ReadsTables() {
  QFETCH(QByteArray, text);
  QFETCH(QString, shown);
  CCsvText table;
  QString why;
  if (shown.startsWith('!')) {
    QVERIFY(!table.Read(text, "GB18030", &why));
    QVERIFY2(why.contains(shown.mid(1)), qPrintable(why));
  } else {
    QVERIFY2(table.Read(text, "GB18030", &why), qPrintable(why));
    QCOMPARE(Shown(table), shown);
  }
}

void CameraCsvTest::ReadsEncodings_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<QString>("encoding");
  const QString text = QString::fromUtf8("name,main\n\xe5\x8c\x97\xe9\x97\xa8,rtsp://cam\n");
  QByteArray little_end_first, big_end_first;
  for (const QChar c : text) {
    const char cell = static_cast<char>(c.cell()), row = static_cast<char>(c.row());
    little_end_first.append(cell).append(row);
    big_end_first.append(row).append(cell);
  }
  QTest::newRow("UTF-8") << text.toUtf8() << "UTF-8";
  QTest::newRow("UTF-8 with a mark") << "\xef\xbb\xbf" + text.toUtf8() << "UTF-8";
  QTest::newRow("UTF-16") << "\xff\xfe" + little_end_first << "UTF-16LE";
  QTest::newRow("UTF-16, the other way") << "\xfe\xff" + big_end_first << "UTF-16BE";
  QTest::newRow("UTF-16 without a mark") << little_end_first << "UTF-16LE";
  QTest::newRow("GBK") << QByteArray("name,main\n\xb1\xb1\xc3\xc5,rtsp://cam\n") << "GB18030";
  QTest::newRow("cut short") << "\xff\xfe" + little_end_first.chopped(1) << "";
  QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xff", 18) << "";
  QTest::newRow("no text") << QByteArray("a\xff\xfe,\x80") << "";
}

void CameraCsvTest::ReadsEncodings() {
  QFETCH(QByteArray, bytes);
  QFETCH(QString, encoding);
  CCsvText table;
  QString why;
  QCOMPARE(table.Read(bytes, "GB18030", &why), !encoding.isEmpty());
  if (encoding.isEmpty()) {
    QVERIFY(why.contains("GB18030"));
  } else {
    QCOMPARE(table.Encoding(), encoding);
    QCOMPARE(Shown(table), QString::fromUtf8("1: name|main / 2: \xe5\x8c\x97\xe9\x97\xa8|rtsp://cam"));
  }
}

// Chinese letters in the one encoding are as good a text in the other.
void CameraCsvTest::ReadsOlderTablesAsTheUserWritesThem() {
  const QByteArray bytes =
      "name,main\nEingang S\xfc"
      "d,rtsp://cam\n";
  CCsvText table;
  QString why;
  QVERIFY(table.Read(bytes, CCsvText::OlderEncodingOf(QLocale::English, QLocale::German), &why));
  QCOMPARE(Shown(table), QString::fromUtf8("1: name|main / 2: Eingang S\xc3\xbc"
                                           "d|rtsp://cam"));
  for (const auto& [client, system] :
       {std::pair(QLocale::Chinese, QLocale::English), std::pair(QLocale::English, QLocale::Chinese)}) {
    QCOMPARE(CCsvText::OlderEncodingOf(client, system), "GB18030");
  }
}

void CameraCsvTest::PlansAnImport_data() {
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<QString>("shown");
  const auto add = [](const char* text, const char* shown) { QTest::newRow(text) << QByteArray(text) << shown; };
  add("name,main\nGate,rtsp://new", "+1 ~0 =0 regions 0; :Gate@- 0=rtsp://new");
  add(" MAIN ;Name\nrtsp://b:c@new;Gate", "+1 ~0 =0 regions 0; :Gate@- 0=rtsp://new b c");
  add("name,main,sub,note\nGate,,,x", "+1 ~0 =0 regions 0; :Gate@-");
  add("name,main,region,sub\nDoor,rtsp://cam/1,House/Hall,rtsp://cam/2", "+0 ~0 =1 regions 0");
  add("name,main,region,sub\nDoor,rtsp://cam/1, House / Hall ,", "+0 ~1 =0 regions 0; 1001:Door@- 0=rtsp://cam/1 1=");
  add("name,main,region\nDoor,rtsp://x,Yard/Gate\nPost,,Yard/Gate",
      "+2 ~0 =0 regions 2; [Yard in ]; [Gate in #0]; :Door@#1 0=rtsp://x; :Post@#1");
  add("code,name,main,region\n1001,Renamed,rtsp://cam/1,House/Hall",
      "+0 ~1 =0 regions 0; 1001:Renamed@- 0=rtsp://cam/1");
  add("code,name,main,region\n1001,Door,rtsp://cam/1,House", "+0 ~1 =0 regions 0; 1001:Door@1 0=rtsp://cam/1");
  add("code,name,main,region\n1001,Other,rtsp://x,Elsewhere",
      "+0 ~0 =0 regions 0; Line 2: code 1001 is \"Door\" here; neither name nor region fit.");
  add("code,name,main,password\n1001,Door,rtsp://cam/1,", "+0 ~0 =1 regions 0");
  add("name,main,user,region\nDoor,rtsp://bob@cam/1,,House/Hall", "+0 ~1 =0 regions 0; 1001:Door@- 0=rtsp://cam/1 bob");
  add("name,main,user\nA,rtsp://b:c@new,d\nB,rtsp://b:c@new,b",
      "+2 ~0 =0 regions 0; :A@- 0=rtsp://new d; :B@- 0=rtsp://new b c");
  add("name,main,device\nA,rtsp://new,http://b:c@dev", "+1 ~0 =0 regions 0; :A@- 0=rtsp://new b c");
  add("name,main,sub\nA,rtsp://b:c@new,rtsp://d:c@new",
      "+0 ~0 =0 regions 0; Line 2: The addresses name different users or passwords.");
  add("name,main,device,region\nRoof,*,*,\nNew,*,,Attic\nOther,,*,",
      "+0 ~0 =1 regions 0; Line 3: the camera is new here, and the table withholds an address of it.; Line 4: the"
      " camera is new here, and the table withholds an address of it.");
  add("code,name,main,password\n1001,Door,*, x ", "+0 ~1 =0 regions 0; 1001:Door@-  x ");
  add("code,name,main\n77,Roof,*", "+0 ~0 =1 regions 0");  // another site's code: by its name
  add("name,main\nA,rtsp://x\nA,rtsp://y",
      "+1 ~0 =0 regions 0; :A@- 0=rtsp://x; Line 3: the camera of line 2 once more.");
  add("name,main\n,rtsp://x\nA,ftp://x\nB,rtsp://",
      "+0 ~0 =0 regions 0; Line 2: The name is empty.; Line 3: The address"
      " does not begin with rtsp:// or rtsps://.; Line 4: The address names no computer.");
  add("name\nA", "!no column \"main\"");
  add("a,b\n1,2", "!no column \"name\", \"main\"");
  add("\n", "!is empty");
}

void CameraCsvTest::PlansAnImport() {
  QFETCH(QByteArray, text);
  QFETCH(QString, shown);
  CCsvText table;
  QString why;
  QVERIFY(table.Read(text, "GB18030", &why));
  const auto plan = CCameraCsv::Plan(table, Site(), &why);
  QCOMPARE(!plan, shown.startsWith('!'));
  if (plan) {
    QCOMPARE(Shown(*plan), shown);
  } else {
    QVERIFY2(why.contains(shown.mid(1)), qPrintable(why));
  }
}

void CameraCsvTest::GoesThereAndBack() {
  SiteTable site = Site();
  site.cameras[0].name = "Door \"A\", left;";
  for (const bool with_passwords : {false, true}) {
    int withheld = 0;
    CCsvText table;
    QString why;
    QVERIFY(table.Read(CCsvText::Write(CCameraCsv::Rows(site, with_passwords, &withheld)), "GB18030", &why));
    const auto plan = CCameraCsv::Plan(table, site, &why);
    QVERIFY(plan && !plan->ChangesAnything());
    QCOMPARE(plan->same, 2);
    QCOMPARE(withheld, int(!with_passwords));
  }
}

void CameraCsvTest::WritesPasswordsOnlyWhenAsked() {
  int withheld = 0;
  const QByteArray without = CCsvText::Write(CCameraCsv::Rows(Site(), false, &withheld));
  QVERIFY(!without.contains("geheim") && !without.contains("password"));
  QCOMPARE(withheld, 1);
  SiteTable site = Site();
  site.access["1001"].device_url = "http://dev/?user=a&pw=b";
  QVERIFY(!CCsvText::Write(CCameraCsv::Rows(site, false, &withheld)).contains("pw=b"));
  QCOMPARE(withheld, 2);
  const QByteArray with = CCsvText::Write(CCameraCsv::Rows(Site(), true, &withheld));
  QVERIFY(with.contains("ann,geheim,") && with.contains("?password=x"));
}

void CameraCsvTest::PlansTenThousandRows() {
  QByteArray text = "name,region,main,sub\n";
  for (int row = 0; row < 10000; ++row) {
    text += QString("Camera %1,Floor %2/Room %3,rtsp://cam/%1/main,rtsp://cam/%1/sub\n")
                .arg(row)
                .arg(row % 10)
                .arg(row % 500)
                .toUtf8();
  }
  CCsvText table;
  QString why;
  QVERIFY(table.Read(text, "GB18030", &why));
  const auto plan = CCameraCsv::Plan(table, Site(), &why);
  QVERIFY(plan && plan->left_out.isEmpty());
  QCOMPARE(plan->added, 10000);
  QCOMPARE(plan->new_regions, 510);
}

// As each form does on the GUI thread, and a removal of all.
void CameraCsvTest::FindsItsWayInManyRegions() {
  SiteTable site;
  for (int region = 1; region <= 20000; ++region) {
    const std::string code = std::to_string(region);
    site.regions.push_back({code, "Region " + code, region % 16 == 1 ? "" : std::to_string(region - 1)});
    site.cameras.push_back({"c" + code, "Camera", code, true});
  }
  site.regions.push_back({"a", "A", "b"});  // past the program
  site.regions.push_back({"b", "B", "a"});
  site.Arrange();
  QCOMPARE(site.PathOf("3"), QString("Region 1/Region 2/Region 3"));
  QElapsedTimer clock;
  clock.start();
  std::vector<std::string> all;
  for (const auto& [path, code] : site.Paths()) {
    all.push_back(code);
    QVERIFY(site.Region(code) && path.endsWith(QString::fromStdString(site.Region(code)->name)));
  }
  const SiteTable::Below below = site.CollectBelow({"a", "b"});
  QCOMPARE(below.regions, (std::vector<std::string>{"b", "a"}));
  QCOMPARE(site.CollectBelow({"1"}).regions.front(), std::string("16"));
  QCOMPARE(site.CollectBelow({"2"}).cameras.size(), size_t(15));
  QCOMPARE(site.CollectBelow(all).cameras.size(), size_t(20000));
  QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));  // one by one: more than 10 s
}

void CameraCsvTest::TakesTheCamerasOfADevice() {
  const auto camera = [](const char* main) {
    DeviceCamera lens;
    lens.streams = {{0, "H264", {1280, 720}, QUrl(main), "p1"}, {1, "H264", {320, 240}, QUrl("rtsp://dev/sub"), "p2"}};
    lens.presets = {{"5", " Home "}, {"abc", ""}, {"1", "Gate"}, {"-3", "Back"}};
    return lens;
  };
  DeviceAnswer device;
  device.name = "Hall camera";
  device.model = "M 1";
  device.cameras = {camera("rtsp://dev/a"), camera("rtsp://cam/1")};
  const DeviceChoice choice{QUrl("http://u:p@dev/onvif"), "Found", "ann", "2", TarnHost::CSecret("x")};
  int known = 0;
  const auto changes = CamerasOfDevice(device, choice, Site(), &known);
  QCOMPARE(known, 1);  // the site shows the second lens already
  QCOMPARE(changes.cameras.size(), size_t(1));
  const auto& added = changes.cameras[0];
  QCOMPARE(QString::fromStdString(*added.name + "@" + *added.region + " " + *added.user + " " + *added.device_url),
           QString("Hall camera 1@2 ann http://dev/onvif"));
  QVERIFY(added.streams.size() == 2 && added.streams[1].url == "rtsp://dev/sub" && added.secret->Reveal() == "x");
  QStringList presets;
  for (const auto& preset : *added.presets) {
    presets << QString("%1 %2").arg(preset.preset_no).arg(QString::fromStdString(preset.name));
  }
  QCOMPARE(presets, QStringList({"5 Home", "1 Gate", "2 2", "3 Back"}));
}

QTEST_GUILESS_MAIN(CameraCsvTest)
#include "test_camera_csv.moc"

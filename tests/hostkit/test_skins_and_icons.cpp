#include <QDirIterator>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QStandardItemModel>
#include <QSvgRenderer>
#include <QToolButton>
#include <QToolTip>
#include <QtTest>
#include <thread>

#include "MarUIControl/tree_view.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/high_dpi_svg_icon.h"
#include "colour_contrast.h"
#include "qt/sharp_screens.h"

using tarn_ui_data_controller::CSkinLoader;

namespace {

using TarnTest::Contrast;

const QString kTree = ":/Bolt/Public/TreePublic/Images/Public/TreePublic/tree_main_";

QImage Drawn(const QIcon& icon, QIcon::Mode mode, int size) {
  return icon.pixmap(QSize(size, size), mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

int OpaquePixels(const QImage& image, int least_alpha) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      count += qAlpha(image.pixel(x, y)) >= least_alpha;
    }
  }
  return count;
}

// What a widget shows at its icon or arrow: the colour that stands out most from the ground.
QColor StrongestOn(const QImage& image, const QColor& ground, const QRect& where) {
  QColor strongest = ground;
  for (int y = where.top(); y <= where.bottom(); ++y) {
    for (int x = where.left(); x <= where.right(); ++x) {
      if (Contrast(image.pixelColor(x, y), ground) > Contrast(strongest, ground)) {
        strongest = image.pixelColor(x, y);
      }
    }
  }
  return strongest;
}

// The most opaque colour of a picture: what the eye takes for the icon's own.
QColor MainColor(const QImage& image) {
  QHash<QRgb, int> count;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > 240) {
        ++count[image.pixel(x, y)];
      }
    }
  }
  QRgb most = 0;
  for (auto it = count.cbegin(); it != count.cend(); ++it) {
    most = it.value() > count.value(most) ? it.key() : most;
  }
  return QColor(most);
}

}  // namespace

class SkinsAndIconsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TextIsReadable() {
    // What is written or drawn on which grounds, and the least contrast.
    const struct {
      const char* front;
      std::vector<const char*> backs;
      double least;
    } rows[] = {{"text", {"background", "surface", "raised", "hover", "wall"}, 4.5},
                {"text_muted", {"background", "surface", "raised"}, 4.5},
                {"accent_text", {"accent", "accent_hover"}, 4.5},
                {"accent_on_surface", {"surface", "raised", "hover"}, 4.5},
                {"selection_text", {"selection"}, 4.5},
                {"success_text", {"success"}, 4.5},
                {"failure_text", {"failure"}, 4.5},
                {"warning_text", {"warning"}, 4.5},
                {"hint_text", {"hint"}, 4.5},
                {"wall_text", {"wall_bar", "wall_empty"}, 4.5},
                {"wall_hint", {"wall_empty"}, 4.5},
                {"wall_focus", {"wall_empty", "wall_bar"}, 3.0},
                {"focus", {"surface", "background"}, 3.0},
                {"control_border", {"surface"}, 3.0}};
    CSkinLoader& loader = CSkinLoader::Instance();
    for (const QString skin : {"redblack", "white"}) {
      QSignalSpy changed(&loader, &CSkinLoader::SignalSkinChanged);
      QVERIFY(loader.LoadSkin(skin));
      QCOMPARE(changed.size(), 1);
      QVERIFY2(!qApp->styleSheet().contains('@'), "a colour of the style sheet is missing in this skin");
      QCOMPARE(QApplication::palette().color(QPalette::Text), loader.GetColor("text"));
      for (const auto& row : rows) {
        for (const char* ground : row.backs) {
          const QColor front = loader.GetColor(row.front), back = loader.GetColor(ground);
          const QString pair = QString("%1: %2 on %3: %4").arg(skin, row.front, ground).arg(Contrast(front, back));
          QVERIFY2(front.isValid() && back.isValid() && Contrast(front, back) >= row.least, qPrintable(pair));
        }
      }
    }
  }

  void UnknownNamesChangeNothing() {
    CSkinLoader& loader = CSkinLoader::Instance();
    QVERIFY(loader.LoadSkin("white"));
    QVERIFY(!loader.LoadSkin("no such skin"));
    QString seen_elsewhere;
    std::thread([&] { seen_elsewhere = loader.GetCurrentSkin(); }).join();
    QCOMPARE(seen_elsewhere, QString("white"));
    QVERIFY(!loader.GetColor("no such colour").isValid());
  }

  void EveryIconDraws() {
    QStringList paths = {":/TarnHost/icons/search.svg"};
    for (const char* folder : {":/Bolt", ":/Images"}) {
      for (QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        paths << files.next();
      }
    }
    // Those that are asked for by name, here or by hosts; the rows of trees ask for theirs in a test of their own.
    for (const char* path : {":/Images/TarnUIDataController/ResourceTree/default_no_data.svg",
                             ":/Images/TarnUIDataController/ResourceTree/default_no_data_d.svg",
                             ":/Bolt/Preview/Images/Preview/monitoring_window_add_resource.svg",
                             ":/Images/TarnUIDataController/FavImg/monitoring_window_add_resource.svg",
                             ":/Bolt/Public/Draw/Images/Public/TreePublic/smart wall.svg"}) {
      QVERIFY2(paths.contains(path), path);
    }
    for (const QString& path : qAsConst(paths)) {
      if (path.endsWith(".svg")) {
        const int side = path.contains("no_data") ? 120 : 20;
        QVERIFY2(QSvgRenderer(path).defaultSize() == QSize(side, side), qPrintable(path));
      }
      const QColor color = MainColor(Drawn(QIcon(path), QIcon::Normal, 60));
      QVERIFY2(color.isValid() && color != QColor(0, 0, 0), qPrintable("nothing was drawn: " + path));
      const bool own_ground = path.contains("add_resource") || path.contains("no_data");
      for (const char* skin : {"redblack", "white"}) {
        CSkinLoader::Instance().LoadSkin(skin);
        const QColor back = CSkinLoader::Instance().GetColor(path.contains("_sel") ? "selection" : "surface");
        QVERIFY2(own_ground || Contrast(color, back) >= 3.0, qPrintable(path + " in " + skin));
      }
    }
  }

  // Colour alone must not carry a state: the shapes differ when only the opaque parts are looked at.
  void IconsTellApartWithoutColour() {
    const QStringList names = {"view",           "view_play",    "group",       "camera",
                               "camera_offline", "camera_alarm", "camera_play", "camera_recording"};
    const auto shape = [](const QString& name) {
      return Drawn(QIcon(kTree + name + ".svg"), QIcon::Normal, 40).createAlphaMask();
    };
    for (int i = 0; i < names.size(); ++i) {
      for (int j = i + 1; j < names.size(); ++j) {
        const QImage a = shape(names[i]), b = shape(names[j]);
        int different = 0;
        for (int y = 0; y < a.height(); ++y) {
          for (int x = 0; x < a.width(); ++x) {
            different += a.pixelIndex(x, y) != b.pixelIndex(x, y);
          }
        }
        QVERIFY2(different >= 40, qPrintable(names[i] + " / " + names[j]));
      }
    }
  }

  // Of the painted button: a disabled one is still seen, and cannot be mistaken for an enabled one, hovered or not.
  void DisabledIconsLookDisabled() {
    for (const QString skin : {"redblack", "white"}) {
      CSkinLoader::Instance().LoadSkin(skin);
      for (const QString& icon : {kTree + "view.svg", QString(":/TarnHost/icons/search.svg")}) {
        QWidget window;
        window.resize(40, 40);
        QToolButton button(&window);
        button.setIcon(WidgetKit::GetHighDpiSvgIcon(icon, QString(), QSize()));
        button.setIconSize(QSize(20, 20));
        button.setGeometry(5, 5, 30, 30);
        const auto strength = [&window, &button](bool enabled, bool hovered) {
          button.setEnabled(enabled);
          button.setAttribute(Qt::WA_UnderMouse, hovered);
          const QImage image = window.grab(button.geometry()).toImage();
          const QColor ground = image.pixelColor(3, 3);
          return Contrast(StrongestOn(image, ground, image.rect().adjusted(4, 4, -4, -4)), ground);
        };
        const double enabled = strength(true, false), hovered = strength(true, true), off = strength(false, false);
        const QString figures = QString("%1: %2, enabled %3, hovered %4, disabled %5");
        const QByteArray text = figures.arg(skin, icon).arg(enabled).arg(hovered).arg(off).toUtf8();
        qInfo("%s", text.constData());
        QVERIFY2(enabled >= 3 && hovered >= 3, text);
        QVERIFY2(off >= 1.2 && off <= 2, text);
        QVERIFY2(qMin(enabled, hovered) / off >= 1.8, text);
      }
    }
  }

  void ExpanderShowsOnEachRow() {
    for (const QString skin : {"redblack", "white"}) {
      CSkinLoader::Instance().LoadSkin(skin);
      QStandardItemModel model;
      for (const char* name : {"plain", "selected"}) {
        auto* group = new QStandardItem(name);
        group->appendRow(new QStandardItem("plan"));
        model.appendRow(group);
      }
      MarUIControl::CTreeView tree;
      tree.setHeaderHidden(true);
      tree.setModel(&model);
      tree.resize(200, 120);
      tree.setCurrentIndex(model.index(1, 0));
      for (const bool open : {false, true}) {
        tree.setExpanded(model.index(1, 0), open);
        const QImage image = tree.viewport()->grab().toImage();
        for (int row = 0; row < 2; ++row) {
          const QRect name = tree.visualRect(model.index(row, 0));
          const QRect expander(0, name.top() + 2, name.left() - 1, name.height() - 4);
          const QColor ground = image.pixelColor(1, name.top() + 2);
          const QColor selection = CSkinLoader::Instance().GetColor("selection");
          QVERIFY2(row == 0 || ground == selection, qPrintable(ground.name()));
          const double seen = Contrast(StrongestOn(image, ground, expander), ground);
          QVERIFY2(seen >= 4.5, qPrintable(QString("%1, row %2: %3").arg(skin).arg(row).arg(seen)));
        }
      }
    }
  }

  void ToolTipsWrapAndTakeNoMarkup() {
    CSkinLoader::Instance().LoadSkin("redblack");
    const QString words = QString("A camera of the north gate. ").repeated(12);
    const QString one_word = QString("Perimeter-fence").repeated(30);
    const QString marked = QString("<b>Gate</b> ").repeated(40);
    QWidget window;
    for (const QString& text : {words, one_word, marked.toHtmlEscaped().prepend("<p>"), QString("short")}) {
      QToolTip::showText(QPoint(700, 500), text, &window);
      QLabel* tip = nullptr;
      for (QWidget* top : QApplication::topLevelWidgets()) {
        tip = top->inherits("QTipLabel") && top->isVisible() ? static_cast<QLabel*>(top) : tip;
      }
      QVERIFY(tip);
      QVERIFY2(tip->width() <= 420, qPrintable(QString::number(tip->width())));
      QVERIFY(tip->height() >= tip->heightForWidth(tip->width()));
      QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(tip->geometry()));
      QVERIFY(text != words || tip->height() > 3 * tip->fontMetrics().height());
    }
    QToolTip::hideText();
  }

  // As many pixels as a screen of this scale shows, none of them stretched.
  void SvgIconIsSharpInEachModeAndScale() {
    const QString normal = kTree + "view.svg", selected = kTree + "view_sel.svg";
    const QIcon icon = WidgetKit::GetHighDpiSvgIcon(normal, selected, QSize());
    TarnQt::UseSharpPictures();
    const auto canvas = [](double scale) {
      QImage image(QSize(20, 20) * scale, QImage::Format_ARGB32_Premultiplied);
      image.fill(Qt::transparent);
      return image;
    };
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
      for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected, QIcon::Disabled}) {
        QImage exact = canvas(scale), painted = canvas(scale);
        QPainter drawing(&exact);
        QSvgRenderer(mode == QIcon::Selected ? selected : normal).render(&drawing);
        drawing.end();
        painted.setDevicePixelRatio(scale);
        QPainter painting(&painted);
        icon.paint(&painting, QRect(0, 0, 20, 20), Qt::AlignCenter, mode);
        painting.end();
        painted.setDevicePixelRatio(1);
        QVERIFY(mode == QIcon::Disabled || painted.createAlphaMask() == exact.createAlphaMask());
        QVERIFY(mode != QIcon::Disabled || OpaquePixels(painted, 45) - OpaquePixels(exact, 128) <= 3);
        QVERIFY(mode == QIcon::Disabled || MainColor(painted) == MainColor(exact));
      }
    }
    QCOMPARE(MainColor(Drawn(icon, QIcon::Selected, 20)), QColor("#ffffff"));
    QVERIFY(WidgetKit::GetHighDpiSvgIcon(QString(), QString(), QSize()).isNull());
  }
};

QTEST_MAIN(SkinsAndIconsTest)
#include "test_skins_and_icons.moc"

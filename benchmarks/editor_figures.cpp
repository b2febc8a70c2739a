#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTreeView>
#include <algorithm>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_tree.h"
#include "TarnUIDataController/skin_loader.h"
#include "figures.h"
#include "host_fixture.h"
#include "paint_watch.h"
#include "standard_plan_model.h"
#include "tarn_add_plan_widget.h"
#include "view_model_data_manager.h"
#include "window_grid.h"

using namespace TarnPlanView;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

constexpr int kPages = 8;
constexpr int kWindows = 16;
constexpr int kRounds = 25;
const QSize kDock(770, 720);

view_plugin_protocol::PlanPage FullPage(int number) {
  view_plugin_protocol::PlanPage page;
  page.page_no = number + 1;
  page.split_type = 8;
  for (int window = 0; window < kWindows; ++window) {
    const std::string camera = "#" + std::to_string(number * kWindows + window);
    page.windows.push_back({window + 1, 1, camera, {}, 0, 0});
  }
  return page;
}

TarnHost::PlanSite EditorSite() {
  TarnHost::PlanSite site;
  site.users.push_back({"operator", {5, 6, 7}});
  site.regions.push_back({"Yard", -1});
  for (int camera = 0; camera < kPages * kWindows; ++camera) {
    site.cameras.push_back({"CAM " + std::to_string(camera), 0, true, {"Gate"}, {0, 1}});
  }
  TarnHost::PlanSite::Plan plan;
  plan.name = "Full plan";
  for (int page = 0; page < kPages; ++page) {
    plan.pages.push_back(FullPage(page));
  }
  site.plans.push_back(plan);
  return site;
}

GetPlanDetailResponse FullPlan() {
  auto& service = LyraPluginManager::CViewBusinessInterfaceMgr::Instance();
  view_plugin_protocol::GetPlansInGroupResponse plans;
  service.GetPlansInGroup({"-1", 0}, plans);
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = plans.plans.value(0).index_code;
  GetPlanDetailResponse detail;
  service.GetPlanDetail(request, detail);
  return detail;
}

/// Shows a widget and runs the event loop until it has painted.
class ShownWidget {
 public:
  explicit ShownWidget(QWidget* widget) : watch_(widget) {
    widget->resize(kDock);
    widget->show();
    WaitForPaint();
  }
  void WaitForPaint() {
    watch_.Forget();
    HostFixture::WaitFor([this] { return watch_.HasPainted(); });
  }

 private:
  PaintWatch watch_;
};

/// The editor with the plan in it, as the panel opens it, but with the plan already fetched.
class OpenEditor {
 public:
  explicit OpenEditor(const GetPlanDetailResponse& plan) : editor(nullptr) {
    opening_ms_ = TimeMs([&] {
      editor.SetModel(CViewModelDataManager::Instance().GetViewManagerByTheme(QStringLiteral("0"), PublicTheme));
      editor.OpenPlan(MarUIControl::StringToQString(plan.index_code));
      editor.OnPlanInfo(plan);
      shown = std::make_unique<ShownWidget>(&editor);
    });
  }
  ~OpenEditor() { WaitForCameras(); }
  void WaitForCameras() const {
    const auto* cameras = editor.findChild<ResourceTreeKit::CCameraTree*>();
    HostFixture::WaitFor([cameras] { return cameras->IsLoaded(); });
  }
  CWindowGrid* Grid() const { return editor.findChild<CWindowGrid*>(); }
  double OpeningMs() const { return opening_ms_; }

  CTarnAddPlanWidget editor;
  std::unique_ptr<ShownWidget> shown;

 private:
  double opening_ms_ = 0;
};

/// What stands in the editor, to be built again from Qt's own parts.
struct Part {
  enum Kind { Label, Button, Line, Spin, Box, List, Tree, Grid } kind;
  QString text;
};
using Recipe = QVector<Part>;

bool IsInside(const QWidget* widget, const QWidget* top) {
  for (const QWidget* above = widget->parentWidget(); above && above != top; above = above->parentWidget()) {
    if (qobject_cast<const QComboBox*>(above) || qobject_cast<const QAbstractSpinBox*>(above) ||
        qobject_cast<const QAbstractItemView*>(above)) {
      return true;  // comes with the part it stands in
    }
  }
  return false;
}

void AddPart(const QWidget* widget, Recipe* recipe) {
  if (const auto* label = qobject_cast<const QLabel*>(widget)) {
    recipe->append(Part{Part::Label, label->text()});
  } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
    recipe->append(Part{Part::Button, button->text()});
  } else if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
    recipe->append(Part{Part::Line, line->text()});
  } else if (qobject_cast<const QAbstractSpinBox*>(widget)) {
    recipe->append(Part{Part::Spin, QString()});
  } else if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
    recipe->append(Part{Part::Box, box->currentText()});
  } else if (qobject_cast<const QListView*>(widget)) {
    recipe->append(Part{Part::List, QString()});
  } else if (qobject_cast<const QTreeView*>(widget)) {
    recipe->append(Part{Part::Tree, QString()});
  } else if (qobject_cast<const CWindowGrid*>(widget)) {
    recipe->append(Part{Part::Grid, QString()});
  }
}

Recipe RecipeOf(const QWidget* editor) {
  Recipe recipe;
  for (const QWidget* widget : editor->findChildren<QWidget*>()) {
    if (!IsInside(widget, editor)) {
      AddPart(widget, &recipe);
    }
  }
  return recipe;
}

/// The same parts in one form, with the same texts.
class PlainForm {
 public:
  PlainForm(const Recipe& recipe, const GetPlanDetailResponse& plan) : plan_(plan) {
    building_ms_ = TimeMs([&] {
      layout_ = new QGridLayout(&form_);
      for (const Part& part : recipe) {
        layout_->addWidget(Make(part), layout_->count() / kColumns, layout_->count() % kColumns);
      }
      ShownWidget shown(&form_);
    });
  }
  double BuildingMs() const { return building_ms_; }

 private:
  static constexpr int kColumns = 4;

  QWidget* Make(const Part& part) {
    switch (part.kind) {
      case Part::Label:
        return new QLabel(part.text, &form_);
      case Part::Button:
        return new QPushButton(part.text, &form_);
      case Part::Line:
        return new QLineEdit(part.text, &form_);
      case Part::Spin:
        return new QSpinBox(&form_);
      case Part::Box:
        return MakeBox(part.text);
      case Part::List:
        return MakeList();
      case Part::Tree:
        return new QTreeView(&form_);
      case Part::Grid:
        return MakeGrid();
    }
    return nullptr;
  }
  QWidget* MakeBox(const QString& text) {
    auto* box = new QComboBox(&form_);
    box->addItem(text);
    return box;
  }
  QWidget* MakeList() {
    auto* list = new QListView(&form_);
    auto* pages = new QStandardItemModel(list);
    for (const auto& page : plan_.pages) {
      pages->appendRow(new QStandardItem(QString::number(page.page_no)));
    }
    list->setModel(pages);
    return list;
  }
  QWidget* MakeGrid() {
    auto* grid = new QWidget(&form_);
    auto* cells = new QGridLayout(grid);
    for (const auto& window : plan_.pages.front().windows) {
      auto* cell = new QLabel(MarUIControl::StringToQString(window.resource_name), grid);
      cells->addWidget(cell, cells->count() / 4, cells->count() % 4);
    }
    return grid;
  }

  const GetPlanDetailResponse& plan_;
  QWidget form_;
  QGridLayout* layout_ = nullptr;
  double building_ms_ = 0;
};

void Click(const OpenEditor& open, const char* button) {
  open.editor.findChild<QAbstractButton*>(QLatin1String(button))->click();
}

/// One edit of each kind that changes much on screen.
void Edit(const OpenEditor& open) {
  QKeyEvent clear_window(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QCoreApplication::sendEvent(open.Grid(), &clear_window);
  for (const char* button :
       {"split_4_btn", "split_16_btn", "clear_page_btn", "duplicate_page_btn", "remove_page_btn", "add_page_btn"}) {
    Click(open, button);
    QCoreApplication::processEvents();
  }
}

struct Undoing {
  double worst_ms = 0;
  int steps = 0;
};

/// Undoes everything, each step until it is on screen.
Undoing UndoAll(const OpenEditor& open) {
  const auto* undo = open.editor.findChild<QAbstractButton*>(QStringLiteral("undo_btn"));
  Undoing undoing;
  for (; undo->isEnabled(); ++undoing.steps) {
    const double ms = TimeMs([&] {
      Click(open, "undo_btn");
      QCoreApplication::processEvents();
    });
    undoing.worst_ms = std::max(undoing.worst_ms, ms);
  }
  return undoing;
}

Figure OpeningFigure(const GetPlanDetailResponse& plan, const Recipe& recipe) {
  const Sides sides = MeasureByTurns(
      kRounds, [&plan] { return OpenEditor(plan).OpeningMs(); }, [&] { return PlainForm(recipe, plan).BuildingMs(); });
  return {QStringLiteral("editor_open"),
          QStringLiteral("opening the editor on 8 pages and 128 windows until painted, against the same parts of Qt's"),
          sides.Ratio(),
          2.0,
          Figure::AtMost,
          sides.Note() + QStringLiteral("; %1 parts").arg(recipe.size())};
}

Figure UndoFigure(const GetPlanDetailResponse& plan, const Recipe& recipe) {
  int steps = 0;
  const Sides sides = MeasureByTurns(
      kRounds,
      [&] {
        const OpenEditor open(plan);
        open.WaitForCameras();
        Edit(open);
        const Undoing undoing = UndoAll(open);
        steps = undoing.steps;
        return undoing.worst_ms;
      },
      [&] { return PlainForm(recipe, plan).BuildingMs(); });
  return {QStringLiteral("editor_undo"),
          QStringLiteral("the slowest undo in that editor until painted, against the same parts of Qt's"),
          sides.Ratio(),
          2.0,
          Figure::AtMost,
          sides.Note() + QStringLiteral("; slowest of %1 steps").arg(steps)};
}

}  // namespace

Figures MeasureEditor() {
  HostFixture host(EditorSite(), {});
  host.RestartPlugin();
  CViewModelDataManager::Instance().LoadAllViewManagerModelData();
  tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(QStringLiteral("redblack"));
  const GetPlanDetailResponse plan = FullPlan();
  const OpenEditor model(plan);
  const Recipe recipe = RecipeOf(&model.editor);
  return {OpeningFigure(plan, recipe), UndoFigure(plan, recipe)};
}

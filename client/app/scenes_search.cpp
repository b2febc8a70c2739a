#include <TarnPlanView/view_extern_widget.h>

#include <QListView>

#include "WidgetKit/new_location_view_widget.h"
#include "app/scenes.h"
#include "plans/plan_family.h"
#include "window/main_window.h"

// What a search shows.
namespace TarnClient {

void CScene::Search() {
  Browse();
  AddSearch(QStringLiteral("gate"));
}

void CScene::SearchWithoutHit() {
  Browse();
  AddSearch(QStringLiteral("helicopter"));
}

void CScene::SearchCamera() {
  Browse();
  AddSearch(QStringLiteral("CAM 01"));
}

void CScene::SearchMenu() {
  Search();
  Add([this] {
    auto* hits = window_->CurrentFamily().Panel()->findChild<QListView*>(QStringLiteral("search_list_view"));
    if (!hits->currentIndex().isValid()) {
      return false;
    }
    Press(hits, Qt::Key_Menu);
    return true;
  });
}

void CScene::LastSearches() {
  for (const char* text : {"gate", "CAM 017", "fence"}) {
    AddSearch(QString::fromLatin1(text));
  }
  Add([this] {
    auto* panel = window_->CurrentFamily().Panel();
    if (!panel->findChild<QListView*>(QStringLiteral("search_list_view"))->currentIndex().isValid()) {
      return false;
    }
    Press(panel->GetLocateViewWidget(), Qt::Key_Escape);
    Press(panel->GetLocateViewWidget(), Qt::Key_Down);
    return true;
  });
}

// The demo site's store answers at once: what an answer that takes its time looks like is put there.
void CScene::SearchRunning() {
  Search();
  Add([this] {
    auto* panel = window_->CurrentFamily().Panel();
    auto* field = qobject_cast<WidgetKit::CNewLocationViewWidget*>(panel->GetLocateViewWidget());
    if (!panel->findChild<QListView*>(QStringLiteral("search_list_view"))->currentIndex().isValid()) {
      return false;
    }
    field->setText(QStringLiteral("gates"));
    field->SetSearching(true);
    return true;
  });
}

}  // namespace TarnClient

#include "cameras/camera_panel.h"

#include <TarnPlanView/view_config_manager.h>

#include <QLayout>

#include "ResourceTreeKit/camera_tree.h"
#include "WidgetKit/new_search_line.h"

namespace TarnClient {

CCameraPanel::CCameraPanel(QWidget* parent) : CCameraFinder(parent) {
  setObjectName(QStringLiteral("camera_panel"));
  layout()->setContentsMargins(8, 8, 8, 8);
  Search()->setObjectName(QStringLiteral("wall_camera_search"));
  Search()->setPlaceholderText(tr("Search cameras"));
  Search()->setAccessibleName(tr("Search cameras"));
  Search()->setToolTip(tr("Search cameras and regions. Return takes the only hit."));
  Tree()->setObjectName(QStringLiteral("wall_camera_tree"));
  Tree()->setAccessibleName(tr("Cameras"));
  Tree()->setToolTip(tr("Double click or Return shows a camera on the wall, Ctrl+Return a whole region"));
  ShowFavorites(QString());
  connect(Tree(), &ResourceTreeKit::CCameraTree::SignalLoaded, this, &CCameraPanel::ShowFavorites);
}

// Those that are here belong to the user only once they were read for him.
void CCameraPanel::ShowFavorites(const QString& error) {
  if (error.isEmpty()) {
    Tree()->SetFavoritesVisible(TarnPlanView::CViewConfigManager::Instance().SupportAddCameraFromFavorite());
  }
}

void CCameraPanel::ForgetUser() {
  ClearSearch();
  if (Tree()->IsLoaded()) {
    Tree()->SetFavoritesVisible(false);
    Tree()->Reload();
  }
}

void CCameraPanel::FocusRows() {
  Tree()->setFocus(Qt::TabFocusReason);
}

}  // namespace TarnClient

#pragma once

#include "ResourceTreeKit/camera_finder.h"

namespace TarnClient {

/// The site's cameras beside the wall, to be put into its windows. Thread: GUI.
class CCameraPanel : public ResourceTreeKit::CCameraFinder {
  Q_OBJECT
 public:
  explicit CCameraPanel(QWidget* parent);

  /// For the first keys of a user who comes here.
  void FocusRows();
  /// Another user has logged in: search and favourites are the last one's.
  void ForgetUser();

 private:
  void ShowFavorites(const QString& error);
};

}  // namespace TarnClient

#include "window/close_popups.h"

#include <QApplication>
#include <QWidget>

namespace TarnClient {

bool CloseAllPopups() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    popup->close();
    if (popup == QApplication::activePopupWidget()) {
      return false;
    }
  }
  return true;
}

}  // namespace TarnClient

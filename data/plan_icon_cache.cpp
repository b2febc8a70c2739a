#include "plan_icon_cache.h"

#include "end_with_application.h"

namespace TarnPlanView {

QIcon* CPlanIconCache::Icons() {
  static QIcon icons[SlotCount];
  return icons;
}

QIcon CPlanIconCache::Get(Slot slot, const std::function<QIcon()>& build) {
  QIcon& icon = Icons()[slot];
  if (icon.isNull()) {
    ReleaseWithTheApplication();
    icon = build();
  }
  return icon;
}

void CPlanIconCache::Clear() {
  for (int slot = 0; slot < SlotCount; ++slot) {
    Icons()[slot] = QIcon();
  }
}

}  // namespace TarnPlanView

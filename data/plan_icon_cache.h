#pragma once

#include <QIcon>
#include <functional>

namespace TarnPlanView {

/// The tree's icons, each built when first asked for. An icon that is null when asked for is built again.
/// Thread: GUI.
class CPlanIconCache {
 public:
  enum Slot { GroupDark, GroupLight, PlanDark, PlanLight, PlanPlaying, SlotCount };

  static QIcon Get(Slot slot, const std::function<QIcon()>& build);
  static void Clear();

 private:
  static QIcon* Icons();
};

}  // namespace TarnPlanView

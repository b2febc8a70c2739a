#pragma once

namespace tarn_ui_data_controller {

/// Kinds of message tips, as callers number them.
enum TipKind { kSuccessTip = 0, kFailureTip = 1, kWarningTip = 2, kHintTip = 3 };

/// Where a tip stands in its window: at the top, in the middle of the width.
inline constexpr int kTipPlaceTop = 1;

}  // namespace tarn_ui_data_controller

#pragma once

#include <QLabel>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "TarnUIDataController/message_tip_manager.h"

/// Stands for a wall of live pictures: says what would be seen there.
class LiveView : public QLabel {
  Q_OBJECT
 public:
  LiveView() { setAlignment(Qt::AlignCenter); }

  void Play(const view_plugin_protocol::GetPlanDetailResponse& plan) {
    size_t windows = 0;
    for (const view_plugin_protocol::PlanPage& page : plan.pages) {
      windows += page.windows.size();
    }
    setText(QStringLiteral("%1: %2 cameras").arg(QString::fromStdString(plan.name)).arg(windows));
    Q_EMIT SignalPlaying(QString::fromStdString(plan.index_code));
  }

  /// What the panel has to say comes up over the window.
  void ShowMessage(const QString& text, int state) {
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, state, this);
  }

 Q_SIGNALS:
  void SignalPlaying(const QString& plan_code);
};

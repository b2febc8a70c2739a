#pragma once

#include <QFrame>

#include "host_export.h"

namespace MarUIControl {

/// Frame that takes its background from the skin. Thread: GUI.
class TARN_HOST_EXPORT CFrame : public QFrame {
  Q_OBJECT
 public:
  explicit CFrame(QWidget* parent = nullptr);
  ~CFrame() override;
};

}  // namespace MarUIControl

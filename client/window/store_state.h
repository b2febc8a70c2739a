#pragma once

#include <QFrame>

class QLabel;

namespace TarnHost {
enum class StoreTrouble;
}

namespace TarnClient {

/// Names the plan store in the status line, or what is wrong with it while that lasts. Thread: GUI.
class CStoreState : public QFrame {
  Q_OBJECT
 public:
  explicit CStoreState(const QString& store_url, QWidget* parent);

  /// `line` says more, as the tool tip; kNone is the end of the trouble.
  void ShowTrouble(TarnHost::StoreTrouble trouble, const QString& line);

  /// For the user; empty for none.
  static QString TextOf(TarnHost::StoreTrouble trouble);

 private:
  void ShowText(const QString& text, const QString& more, bool is_trouble);

  const QString name_;
  QLabel *mark_ = nullptr, *text_ = nullptr;
};

}  // namespace TarnClient

#pragma once

#include <QWidget>

class QLabel;

namespace MarUIControl {
class CPushButton;
}

namespace TarnPlanView {

class CPageList;
class CPlanDocument;

/// The plan's pages with the buttons that add, duplicate and delete them. Thread: GUI.
class CPageStrip : public QWidget {
  Q_OBJECT
 public:
  /// The document outlives the strip.
  CPageStrip(CPlanDocument* document, QWidget* parent);

 private:
  MarUIControl::CPushButton* MakeButton(const char* name, const QString& text, const QString& tip);
  void RenewButtons();

  CPlanDocument* const document_;
  QLabel* title_ = nullptr;
  MarUIControl::CPushButton *add_ = nullptr, *duplicate_ = nullptr, *remove_ = nullptr;
  CPageList* list_ = nullptr;
};

}  // namespace TarnPlanView

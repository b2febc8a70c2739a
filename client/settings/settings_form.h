#pragma once

#include <QWidget>

#include "settings/chosen_settings.h"

class QBoxLayout;
class QComboBox;

namespace MarUIControl {
class CSpinBox;
class CSwitchControl;
}  // namespace MarUIControl

namespace TarnClient {

class CFolderField;

/// The fields for what a user chooses. Thread: GUI.
class CSettingsForm : public QWidget {
  Q_OBJECT
 public:
  /// Takes in the chooser of the default view, which is on only while it counts.
  CSettingsForm(QWidget* default_view, QWidget* parent);

  void Show(const ChosenSettings& chosen);
  /// What the fields say; a value that none of them offers stays as it was shown.
  ChosenSettings Entered() const;

 Q_SIGNALS:
  void SignalChanged();

 protected:
  /// A wheel that only passes over changes nothing.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QBoxLayout* Column(const QString& label, QWidget* field);
  QWidget* Note(const QString& text);
  QComboBox* MakeBox(const char* name, const QString& label);
  void MakeLanguages();
  void MakeSkins();
  void MakeStart();
  void MakeSeconds();
  void FollowFields();
  QBoxLayout* SwitchRow();
  void OnChanged();

  ChosenSettings shown_;
  QWidget* const default_view_;
  QComboBox *language_ = nullptr, *skin_ = nullptr, *start_ = nullptr;
  MarUIControl::CSpinBox* seconds_ = nullptr;
  MarUIControl::CSwitchControl* asks_ = nullptr;
  CFolderField* snapshots_ = nullptr;
};

}  // namespace TarnClient

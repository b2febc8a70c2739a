#pragma once

#include <QPointer>

#include "plan_document.h"
#include "tarn_add_plan_widget.h"
#include "window_text.h"

class QScrollArea;

namespace TarnPlanView {

class CConflictBar;
class CEditorCameras;
class CEditorFooter;
class CEditorHeader;
class CPageSettings;
class CPageStrip;
class CPlanSaving;
class CWindowGrid;
class CWindowSettings;

class CTarnAddPlanWidget::Private {
 public:
  explicit Private(CTarnAddPlanWidget* editor);

  void Build();
  void BuildPages();
  void BuildCameras();
  void BuildFrame();
  void Connect();
  void ConnectSaving();
  void GatherUndo();
  void AddShortcut(const QKeySequence& keys, const std::function<void()>& run);

  /// Before another plan comes in, or none.
  void Reset();
  /// Leaves the editor empty and clean.
  void ThrowAway();
  void TakeTyped();
  struct Question {
    QString title, text, yes, other, no;
  };
  int Ask(const Question& words);
  bool MayLeaveSave();
  void SetBusy(const QString& work);
  /// Whether it still waits where SetBusy() has put it, or nowhere: never is it taken from where the user has put it.
  bool IsFocusFree() const;
  void GiveFocusBack();
  void Refuse(const QString& text);
  /// Names the right that the user lacks to add or to change the plan; empty when he has it.
  QString MissingRight(bool adding) const;
  /// Why the plan cannot be sent; empty when it can.
  QString FindProblem(bool adding);
  bool HasNothingToSave() const;
  void SaveIt();
  void Send();
  std::string Thumbnail() const;
  void OnLoadAnswered(bool ok, const QString& reason);
  void OnSaved();
  void OnNotSaved(const QString& reason);
  void OnControllerLost();
  void ShowNotLoaded(const QString& reason);
  void LoadTheirs();
  void Overwrite();
  void SaveAsNew();

  CTarnAddPlanWidget* const q;
  CPlanDocument document;
  CWindowText text;
  CPlanSaving* saving = nullptr;
  CEditorHeader* header = nullptr;
  CEditorCameras* cameras = nullptr;
  CPageStrip* strip = nullptr;
  CPageSettings* page_settings = nullptr;
  CWindowGrid* grid = nullptr;
  CWindowSettings* window_settings = nullptr;
  CConflictBar* conflict = nullptr;
  CEditorFooter* footer = nullptr;
  QScrollArea* scroll = nullptr;
  QWidget* pages_side = nullptr;

  QPointer<CStandardPlanModel> model;
  QPointer<CStandardViewController> controller;
  QPointer<QWidget> had_focus;  // before the work that is going on
  QString awaited;              // code of the plan that is being fetched
  int load_no = 0;
  bool original_gone = false;  // the host no longer has the plan that was loaded
  bool renewing = false;       // the save under way makes a new plan of an old one
  QString copy_note;           // what that plan has not taken over
  QVector<DraftPage> opened_pages;
  view_plugin_protocol::GetPlanDetailResponse theirs;
};

}  // namespace TarnPlanView

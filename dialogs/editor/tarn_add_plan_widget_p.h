#pragma once

#include <QPointer>

#include "busy_focus.h"
#include "host_calls/call_scope.h"
#include "plan_document.h"
#include "plan_standing.h"
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
class CPlanWatch;
class CWindowGrid;
class CWindowSettings;
struct CallAnswer;

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
  /// Whether the user is in the editor to see their version, and his own would go with it.
  bool HidesEdits() const { return !document.IsDirty() && document.ReplacedEdits(); }
  int AskBeforeLoss();
  /// `work` is what the user reads meanwhile; empty: done.
  void SetBusy(const QString& work);
  void Refuse(const QString& text);

  void OnLoadAnswered(const CallAnswer& answer);
  void OnControllerLost();
  void ShowNotLoaded(const QString& reason);

  static QString NotAvailable();
  /// Names the right that the user lacks to add or to change the plan; empty when he has it.
  QString MissingRight(bool adding) const;
  /// Why the plan cannot be sent; empty when it can.
  QString FindProblem(bool adding);
  bool HasNothingToSave() const;
  /// Says why the plan cannot be sent, if so.
  bool IsRefused(bool adding);
  void SaveIt();
  void Send();
  std::string Thumbnail() const;
  void OnStored(const QString& plan_code, const QString& group_code);
  void OnNotStored(const QString& reason);
  void OnConflict(SaveConflict conflict, const view_plugin_protocol::GetPlanDetailResponse& theirs);
  /// A look at the host's plan, while it is being edited here.
  void OnLooked(const HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>& now);
  /// Says how the plan stands to the host's, and offers what can be done.
  void ShowStanding();
  /// The same after an edit, its undo or redo, of which most change nothing of it.
  void OnUndoMoved();
  QString WhatTheySaved() const;
  QString WhoseIsShown() const;
  QString HowItWasDeleted() const;
  /// The next save goes over the host's version as it is known here.
  void GoOverTheirs();
  void LoadTheirs();
  void KeepMine();
  void BackToMine();
  void Overwrite();
  void SaveAsNew();

  CTarnAddPlanWidget* const q;
  CPlanDocument document;
  CWindowText text;
  CPlanSaving* saving = nullptr;
  CPlanWatch* watch = nullptr;
  CEditorHeader* header = nullptr;
  CEditorCameras* cameras = nullptr;
  CPageStrip* strip = nullptr;
  CPageSettings* page_settings = nullptr;
  CWindowGrid* grid = nullptr;
  CWindowSettings* window_settings = nullptr;
  CConflictBar* conflict_bar = nullptr;
  CEditorFooter* footer = nullptr;
  QScrollArea* scroll = nullptr;
  QWidget* pages_side = nullptr;

  QPointer<CStandardPlanModel> model;
  QPointer<CStandardViewController> controller;
  CBusyFocus focus;
  PlanStanding standing;
  HostCalls::CCallScope loads;  // of the awaited plan
  QString stored_note;          // to be said once the save under way has succeeded
};

}  // namespace TarnPlanView

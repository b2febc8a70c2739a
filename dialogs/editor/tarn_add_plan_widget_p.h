#pragma once

#include <QPointer>
#include <optional>

#include "busy_focus.h"
#include "host_calls/call_scope.h"
#include "plan_document.h"
#include "save_conflict.h"
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
  /// Says what is known of the host's plan, and offers what can be done.
  void ShowNews();
  void SayDeleted();
  QString WhatTheySaved() const;
  void LoadTheirs();
  void KeepMine();
  void BackToMine();
  void OnUndoStep(int index);
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
  QString awaited;              // code of the plan that is being fetched
  HostCalls::CCallScope loads;  // of that plan
  QVector<DraftPage> opened_pages;
  SaveConflict conflict = SaveConflict::None;          // what the last save or look found
  view_plugin_protocol::GetPlanDetailResponse theirs;  // the plan as the host has it, when it was changed elsewhere
  std::optional<int> mine;           // where in the undo stack the user's version is, while theirs is shown
  std::optional<QString> copy_note;  // while a new plan is made of an old one: what it has not taken over
};

}  // namespace TarnPlanView

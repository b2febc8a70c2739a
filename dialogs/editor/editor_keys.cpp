#include "editor_keys.h"

#include <QCoreApplication>

namespace TarnPlanView {

using MarUIControl::KeyEntry;

namespace {

QString Text(const char* source) {
  return QCoreApplication::translate("TarnPlanView::EditorKeys", source);
}

QList<KeyEntry> OwnKeys() {
  const QString group = Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "In the plan editor"));
  return {
      {group, {QKeySequence::Save}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Save"))},
      {group, {QKeySequence::Undo}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Undo"))},
      {group,
       {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Redo"))},
      {group, {QKeySequence::Find}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Find a camera"))},
      {group,
       {Qt::CTRL | Qt::Key_1, Qt::CTRL | Qt::Key_2, Qt::CTRL | Qt::Key_3, Qt::CTRL | Qt::Key_4},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Split the page into 1, 4, 9 or 16 windows"))},
      {group, {Qt::Key_Escape}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Close the editor"))},
  };
}

QList<KeyEntry> PageKeys() {
  const QString group = Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "On the editor's pages"));
  return {
      {group, {Qt::Key_Insert}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Add a page"))},
      {group, {Qt::CTRL | Qt::Key_D}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Duplicate the page"))},
      {group,
       {Qt::CTRL | Qt::SHIFT | Qt::Key_Left, Qt::CTRL | Qt::SHIFT | Qt::Key_Right},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Move the page"))},
      {group, {Qt::Key_Delete}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Remove the page"))},
  };
}

QList<KeyEntry> WindowKeys() {
  const QString group = Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "On the editor's windows"));
  return {
      {group,
       {Qt::CTRL | Qt::Key_Left, Qt::CTRL | Qt::Key_Right, Qt::CTRL | Qt::Key_Up, Qt::CTRL | Qt::Key_Down},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Swap with the neighbour"))},
      {group,
       {QKeySequence::Cut, QKeySequence::Paste},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Mark a window, and swap another one with it"))},
      {group, {Qt::Key_Delete}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Empty the window"))},
      {group,
       {Qt::Key_PageUp, Qt::Key_PageDown},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Previous and next page"))},
      {group,
       {Qt::Key_Menu, Qt::SHIFT | Qt::Key_F10},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Menu of the window"))},
  };
}

QList<KeyEntry> CameraKeys() {
  const QString group = Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "On the editor's cameras"));
  return {
      {group,
       {Qt::Key_Return},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Put the camera into the current window"))},
      {group,
       {Qt::CTRL | Qt::Key_Return},
       Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Put all that is marked into windows from there on"))},
      {group, {Qt::Key_F}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Make or unmake a favorite"))},
      {group, {Qt::Key_F5}, Text(QT_TRANSLATE_NOOP("TarnPlanView::EditorKeys", "Read the cameras again"))},
  };
}

}  // namespace

QList<KeyEntry> EditorKeys() {
  return OwnKeys() + PageKeys() + WindowKeys() + CameraKeys();
}

}  // namespace TarnPlanView

#pragma once

#include <QApplication>
#include <QCursor>
#include <QtTest>
#include <memory>

#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "place_texts.h"

namespace TarnTest {

/// A window for dialogs to stand over, the messages they show in it, and where the cursor is. Thread: GUI.
class CDialogGround {
 public:
  CDialogGround() : messages_(&Manager(), &tarn_ui_data_controller::CNomalMessageManager::SignalMessageShown) {
    tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(QStringLiteral("redblack"));
    window_.setGeometry(20, 20, 500, 700);
    other_.setGeometry(540, 20, 200, 200);
    window_.show();
    Activate(&window_);
  }
  ~CDialogGround() { tarn_ui_data_controller::CMessageTipManager::Release(); }

  QWidget* Window() { return &window_; }
  static void PutCursor(const QPoint& place) {
    QCursor::setPos(place);
    QCOMPARE(QCursor::pos(), place);
  }
  /// Gives the activation to a window that has nothing to do with any dialog.
  void ActivateAnother() {
    other_.show();
    Activate(&other_);
  }
  static void Activate(QWidget* window) {
    window->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window);
  }
  /// The text of the only message since the last call, with its level; empty for none.
  QString TakeMessage() {
    const QList<QVariant> message = messages_.size() == 1 ? messages_.takeFirst() : QList<QVariant>();
    messages_.clear();
    return message.isEmpty() ? QString() : message[0].toString() + ' ' + message[1].toString();
  }

 private:
  static tarn_ui_data_controller::CNomalMessageManager& Manager() {
    return tarn_ui_data_controller::CNomalMessageManager::Instance();
  }

  CPlaceTexts texts_;
  QWidget window_, other_;
  QSignalSpy messages_;
};

}  // namespace TarnTest

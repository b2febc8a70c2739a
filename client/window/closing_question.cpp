#include "window/closing_question.h"

#include <QApplication>
#include <QPointer>
#include <QStringList>

#include "MarUIControl/modal_tip_dialog.h"
#include "settings/user_settings.h"

namespace TarnClient {

using MarUIControl::CModalTipDialog;

namespace {

class Texts {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CWalls)
};

bool Ask(const QString& question, QWidget* over) {
  const QPointer<CModalTipDialog> dialog(new CModalTipDialog(over));
  dialog->SetDialogModel(CModalTipDialog::QuestionModel);
  dialog->SetTitle(Texts::tr("Close"));
  dialog->SetContent(question);
  dialog->SetConfirmText(Texts::tr("Close"));
  dialog->SetCancelText(Texts::tr("Cancel"));
  const bool confirmed = dialog->exec() == CModalTipDialog::Confirmed;
  delete dialog;
  return confirmed;
}

}  // namespace

QString ClosingQuestion(const QVector<IWallChoice::Wall>& walls) {
  QStringList playing;
  for (const IWallChoice::Wall& wall : walls) {
    if (!wall.playing.isEmpty()) {
      playing << Texts::tr("%1: \"%2\"").arg(WallName(wall.number), wall.playing);
    }
  }
  if (playing.isEmpty()) {
    return QString();
  }
  if (walls.size() == 1) {
    return Texts::tr("\"%1\" is playing. Close all the same?").arg(walls.first().playing);
  }
  return Texts::tr("All walls close. These are playing:\n%1\nClose all the same?").arg(playing.join(QLatin1Char('\n')));
}

// The end of the desktop's session is no slip of the hand.
bool MayClose(const QVector<IWallChoice::Wall>& walls, const CUserSettings& settings, QWidget* over) {
  const QString question = ClosingQuestion(walls);
  return question.isEmpty() || !settings.Chosen().asks_before_closing || qApp->isSavingSession() || Ask(question, over);
}

}  // namespace TarnClient

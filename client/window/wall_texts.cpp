#include "window/wall_texts.h"

#include "MarUIControl/string_conversion.h"
#include "plans/plan_player.h"
#include "plans/programme_texts.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"

namespace TarnClient {

using MarUIControl::StringToQString;

CWallTexts::CWallTexts(CPlanPlayer* player, CLiveWall* wall, NameOf name_of, QObject* parent)
    : QObject(parent), player_(player), wall_(wall), name_of_(std::move(name_of)) {
  connect(player_, &CPlanPlayer::SignalStateChanged, this, &CWallTexts::Renew);
}

void CWallTexts::Renew() {
  const CProgramme::State& state = player_->State();
  wall_->Await(Awaited());
  wall_->Bar()->ShowCycle(CProgrammeTexts::ProgressOf(state));
  wall_->ShowNote(CProgrammeTexts::NoteOf(state));
  ShowFailure();
  Q_EMIT SignalTitle(CProgrammeTexts::TitleOf(state));
}

QString CWallTexts::Awaited() const {
  const CProgramme::State& state = player_->State();
  if (state.on_its_way) {
    const QString name = name_of_(StringToQString(state.on_its_way->code));
    if (name.isEmpty()) {
      return tr("The plan is being fetched...");
    }
    return tr("\"%1\" is being fetched...").arg(name);
  }
  if (CProgramme::AwaitsTurn(state)) {
    return tr("The next plan of the group is being fetched...");
  }
  return QString();
}

void CWallTexts::ShowFailure() {
  const std::optional<CProgramme::Failed>& failed = player_->State().failed;
  if (!failed) {
    return wall_->ShowFailure(QString(), QString(), false);
  }
  QString name = failed->play.name;
  if (name.isEmpty() && !failed->cycle) {
    name = name_of_(StringToQString(failed->play.code));
  }
  wall_->ShowFailure(CProgrammeTexts::Of(*failed, name), failed->reason, failed->may_pass);
}

}  // namespace TarnClient

#include "composing/wall_commands.h"

#include <QAction>
#include <QIcon>
#include <QKeySequence>
#include <QWidget>

#include "MarUIControl/key_guide.h"
#include "MarUIControl/split_type_data.h"

namespace TarnClient {

using MarUIControl::struSplitTypeData;

namespace {

struct Look {
  const char* text;
  const char* icon;  // null for none
  QList<QKeySequence> keys;
};

std::array<Look, kWallCommands> Looks() {
  return {{
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Enlarge the window"), nullptr, {Qt::Key_Return, Qt::Key_Enter}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Look closer"), nullptr, {Qt::Key_Plus, Qt::Key_Equal}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Look from further away"), nullptr, {Qt::Key_Minus}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Whole picture"), nullptr, {Qt::Key_0}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Smaller stream"), nullptr, {Qt::Key_T}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Presets..."), nullptr, {Qt::Key_P}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Keep a snapshot"), nullptr, {Qt::Key_S}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Choose another camera"), nullptr, {Qt::Key_R}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "Empty the window"), nullptr, {Qt::Key_Delete}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "One window"), "split_1", {Qt::CTRL | Qt::Key_1}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "4 windows"), "split_4", {Qt::CTRL | Qt::Key_2}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "9 windows"), "split_9", {Qt::CTRL | Qt::Key_3}},
      {QT_TRANSLATE_NOOP("TarnClient::CWallCommands", "16 windows"), "split_16", {Qt::CTRL | Qt::Key_4}},
  }};
}

bool IsCheckable(WallCommand command) {
  return command == WallCommand::Enlarge || command == WallCommand::SmallStream || SplitOf(command) > 0;
}

}  // namespace

int SplitOf(WallCommand command) {
  switch (command) {
    case WallCommand::Split1:
      return struSplitTypeData::Split1;
    case WallCommand::Split4:
      return struSplitTypeData::Split4;
    case WallCommand::Split9:
      return struSplitTypeData::Split9;
    case WallCommand::Split16:
      return struSplitTypeData::Split16;
    default:
      return 0;
  }
}

QString WhyNot(WallCommand command, const WallSituation& situation) {
  if (situation.is_locked) {
    return CWallCommands::tr("the desk is locked");
  }
  if (SplitOf(command) > 0) {
    return situation.is_editing ? CWallCommands::tr("the plan editor is open") : QString();
  }
  if (!situation.has_window) {
    return CWallCommands::tr("no window is chosen");
  }
  switch (command) {
    case WallCommand::Enlarge:
    case WallCommand::Replace:
      return QString();
    case WallCommand::Empty:
      return situation.has_content ? QString() : CWallCommands::tr("the window is empty");
    case WallCommand::ZoomOut:
    case WallCommand::WholePicture:
      return situation.is_zoomed ? QString() : CWallCommands::tr("the picture is whole");
    default:
      return situation.has_camera ? QString() : CWallCommands::tr("the window has no camera");
  }
}

bool IsChosen(WallCommand command, const WallSituation& situation) {
  if (command == WallCommand::Enlarge) {
    return situation.is_enlarged;
  }
  if (command == WallCommand::SmallStream) {
    return situation.has_small_stream;
  }
  return SplitOf(command) > 0 && SplitOf(command) == situation.split_type;
}

CWallCommands::CWallCommands(QWidget* windows, QWidget* wall, QObject* parent) : QObject(parent) {
  const auto looks = Looks();
  for (int number = 0; number < kWallCommands; ++number) {
    const auto command = static_cast<WallCommand>(number);
    const Look& look = looks[static_cast<size_t>(number)];
    auto* action = new QAction(tr(look.text), this);
    action->setShortcuts(look.keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setShortcutVisibleInContextMenu(true);
    action->setCheckable(IsCheckable(command));
    action->setAutoRepeat(command == WallCommand::ZoomIn || command == WallCommand::ZoomOut);
    action->setToolTip(MarUIControl::TipWithKeys(action->text(), action->shortcuts()));
    if (look.icon) {
      action->setIcon(QIcon(QStringLiteral(":/TarnClient/images/%1.svg").arg(QLatin1String(look.icon))));
    }
    connect(action, &QAction::triggered, this, [this, command] { Q_EMIT SignalTriggered(command); });
    (SplitOf(command) > 0 ? wall : windows)->addAction(action);
    actions_[static_cast<size_t>(number)] = action;
  }
}

QList<QAction*> CWallCommands::All() const {
  return QList<QAction*>(actions_.begin(), actions_.end());
}

QList<QAction*> CWallCommands::Splits() const {
  return All().mid(static_cast<int>(WallCommand::Split1));
}

void CWallCommands::Renew(const WallSituation& situation, bool shows_why_not) {
  for (int number = 0; number < kWallCommands; ++number) {
    const auto command = static_cast<WallCommand>(number);
    QAction* action = Of(command);
    if (action->isCheckable()) {
      action->setChecked(IsChosen(command, situation));
    }
    // A key that does nothing would not say why; but those of the page are the editor's while that is open.
    const bool is_off = shows_why_not || SplitOf(command) > 0;
    action->setEnabled(!is_off || WhyNot(command, situation).isEmpty());
  }
}

}  // namespace TarnClient

#pragma once

#include <QVector>

#include "commands/wall_choice.h"

class QWidget;

namespace TarnClient {

class CUserSettings;

/// What a user is asked who closes these walls; empty when nothing plays there. What plays alone needs no wall's name.
QString ClosingQuestion(const QVector<IWallChoice::Wall>& walls);

/// Whether nothing plays there, or the user, if these settings have him asked, closes them all the same.
bool MayClose(const QVector<IWallChoice::Wall>& walls, const CUserSettings& settings, QWidget* over);

}  // namespace TarnClient

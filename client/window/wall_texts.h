#pragma once

#include <QObject>
#include <functional>

namespace TarnClient {

class CLiveWall;
class CPlanPlayer;

/// Says what plays, is awaited, has ended, was stopped or has failed: on the wall, in its bar and in the window's
/// title. Thread: GUI.
class CWallTexts : public QObject {
  Q_OBJECT
 public:
  using NameOf = std::function<QString(const QString& code)>;

  /// `name_of`: of a plan that is not on the wall; empty when it is not known. Player and wall are not owned and
  /// outlive this.
  CWallTexts(CPlanPlayer* player, CLiveWall* wall, NameOf name_of, QObject* parent);

 Q_SIGNALS:
  /// For the window: what plays; empty for nothing.
  void SignalTitle(const QString& text);

 private:
  void Renew();
  QString Awaited() const;
  void ShowFailure();

  CPlanPlayer* const player_;
  CLiveWall* const wall_;
  const NameOf name_of_;
};

}  // namespace TarnClient

#pragma once

#include <QObject>
#include <functional>
#include <vector>

namespace TarnClient {

class CLiveWall;
class CPlanFamily;
class CWindowActions;

/// "Show in tree": finds the panel whose tree has a plan, brings it to the front and has it show the row. For the plan
/// on the wall, by the window's action, and for plans that one panel leaves to another. Thread: GUI.
class CShowInTree : public QObject {
  Q_OBJECT
 public:
  CShowInTree(CWindowActions* actions, CLiveWall* wall, QObject* parent);

  /// `bring_to_front` shows the family's panel. Not owned.
  void Attach(CPlanFamily* family, std::function<void()> bring_to_front);
  /// A plan of this family, a ThemeNodeType.
  void Show(const QString& plan_code, int family);

 Q_SIGNALS:
  /// For the user; `state` is that of a tip.
  void SignalMessage(const QString& text, int state);

 private:
  struct Tree {
    CPlanFamily* family;
    std::function<void()> bring_to_front;
  };
  void ShowPlaying();
  void Offer();

  CWindowActions* const actions_;
  CLiveWall* const wall_;
  std::vector<Tree> trees_;
};

}  // namespace TarnClient

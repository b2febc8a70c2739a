#pragma once

#include <QObject>
#include <optional>

#include "wall/arrangement.h"
#include "wall/wall_place.h"

namespace TarnClient {

class CLiveWall;
class CPlanPlayer;

/// What can be taken back for some seconds, in the strip below the wall: a plan that was stopped, or a changed
/// arrangement that has left the wall, which comes first since nothing else brings it back. Thread: GUI.
class CWallOffers : public QObject {
  Q_OBJECT
 public:
  /// Player and wall are not owned and outlive this.
  CWallOffers(CPlanPlayer* player, CLiveWall* wall, QObject* parent);

  /// As CPlanSaver says it: of what has left the wall while it was being saved, the rest alone is offered.
  void OnSaved(const view_plugin_protocol::GetPlanDetailResponse& plan,
               const std::list<view_plugin_protocol::PlanPage>& pages);
  /// The arrangement of a user who has gone is not offered to the next one.
  void ForgetUser();

 private:
  struct Left {
    CArrangement arrangement;
    WallPlace place;
  };

  void OnLeft(const CArrangement& arrangement, const WallPlace& place);
  void OnOver();
  void Renew();
  void OfferLeft();
  void GoBack();

  CPlanPlayer* const player_;
  CLiveWall* const wall_;
  std::optional<Left> left_;
};

}  // namespace TarnClient

#include "window/wall_offers.h"

#include <utility>

#include "MarUIControl/offer_strip.h"
#include "MarUIControl/string_conversion.h"
#include "plans/plan_player.h"
#include "plans/programme_texts.h"
#include "wall/live_wall.h"

namespace TarnClient {

using MarUIControl::COfferStrip;
using MarUIControl::StringToQString;

namespace {

constexpr int kOfferSeconds = 10;

}  // namespace

CWallOffers::CWallOffers(CPlanPlayer* player, CLiveWall* wall, QObject* parent)
    : QObject(parent), player_(player), wall_(wall) {
  connect(player_, &CPlanPlayer::SignalStateChanged, this, &CWallOffers::Renew);
  connect(wall_, &CLiveWall::SignalLeft, this, &CWallOffers::OnLeft);
  connect(wall_->Strip(), &COfferStrip::SignalOver, this, &CWallOffers::OnOver);
}

void CWallOffers::ForgetUser() {
  left_.reset();
  wall_->Strip()->Withdraw();
}

void CWallOffers::OnLeft(const CArrangement& arrangement, const WallPlace& place) {
  left_ = Left{arrangement, place};
  OfferLeft();
}

void CWallOffers::OnSaved(const view_plugin_protocol::GetPlanDetailResponse& plan,
                          const std::list<view_plugin_protocol::PlanPage>& pages) {
  if (!left_ || !left_->arrangement.RestsOn(plan)) {
    return;
  }
  left_->arrangement.Saved(pages);
  if (!left_->arrangement.IsChanged()) {
    left_.reset();
    wall_->Strip()->Withdraw();
    Renew();
  }
}

void CWallOffers::OfferLeft() {
  const Left left = *left_;
  QString text = tr("Your cameras have left the live view."), action = tr("Back to them");
  if (left.arrangement.HasPlan()) {
    const QString name = StringToQString(left.arrangement.PlanAsFetched().name);
    text = tr("%1 was changed and not saved.").arg(name);
    action = tr("Back to \"%1\"").arg(name);
  }
  wall_->Strip()->Offer(text, action, kOfferSeconds, [this] { GoBack(); });
  left_ = left;  // an offer that this one has replaced was over
}

void CWallOffers::OnOver() {
  left_.reset();
  player_->ForgetStopped();
}

void CWallOffers::Renew() {
  const std::optional<CProgramme::Stopped>& stopped = player_->State().stopped;
  COfferStrip* strip = wall_->Strip();
  if (left_) {
    return;
  }
  if (!stopped) {
    strip->Withdraw();
  } else if (!strip->IsOffering()) {
    strip->Offer(CProgrammeTexts::Of(*stopped), tr("Play again"), kOfferSeconds, [this] { player_->PlayAgain(); });
  }
}

void CWallOffers::GoBack() {
  const std::optional<Left> left = std::exchange(left_, std::nullopt);
  if (!left) {
    return;
  }
  player_->BringBack(left->arrangement, left->place);
}

}  // namespace TarnClient

#include "pictures/rtsp_sign_in.h"

#include <QRandomGenerator>

namespace TarnClient {

namespace {

// A camera that knows no digest but another one is named as such.
constexpr char kKnownAlgorithm[] = "MD5";

}  // namespace

CRtspSignIn::CRtspSignIn(const QString& user, const TarnHost::CSecret& secret)
    : user_(user.toUtf8()), secret_(secret) {}

std::optional<SignInOffer> CRtspSignIn::BestOf(const std::vector<SignInOffer>& offers) const {
  std::optional<SignInOffer> best;
  for (const SignInOffer& offer : offers) {
    const bool is_known = offer.Algorithm() == kKnownAlgorithm && !DigestAnswer(offer, {}).isEmpty();
    if (is_known) {
      return offer;
    }
    if (offer.IsBasic()) {
      best = offer;
    }
  }
  return best;
}

CRtspSignIn::Answer CRtspSignIn::Take(const QVector<QByteArray>& challenges, bool answered) {
  offer_ = BestOf(ReadSignInOffers(challenges.toList().join(", ")));
  count_ = 0;
  if (!offer_) {
    return Answer::UnknownWay;
  }
  if (user_.isEmpty() || answered) {
    return Answer::Refused;
  }
  return Answer::CanAnswer;
}

QByteArray CRtspSignIn::Header(const QByteArray& method, const QByteArray& uri) {
  if (!offer_) {
    return {};
  }
  const QByteArray own = QByteArray::number(QRandomGenerator::global()->generate64(), 16);
  const SignInRequest request{user_, QByteArray::fromStdString(secret_.Reveal()), method, uri, own, ++count_};
  if (offer_->IsBasic()) {
    return BasicAnswer(request);
  }
  return DigestAnswer(*offer_, request);
}

}  // namespace TarnClient

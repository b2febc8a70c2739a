#include "devices/login_answer.h"

#include "sign_in/sign_in_offer.h"

namespace TarnClient {

QByteArray LoginAnswer(const QByteArray& challenge, const LoginRequest& request) {
  const SignInRequest signed_request{request.user.toUtf8(), request.password.toUtf8(), request.method, request.uri,
                                     request.nonce};
  QByteArray basic;
  for (const SignInOffer& offer : ReadSignInOffers(challenge)) {
    const QByteArray digest = DigestAnswer(offer, signed_request);
    if (!digest.isEmpty()) {
      return digest;
    }
    if (offer.IsBasic() && request.is_encrypted) {
      basic = BasicAnswer(signed_request);
    }
  }
  return basic;
}

}  // namespace TarnClient

#pragma once

#include <QByteArray>
#include <QMap>
#include <vector>

namespace TarnClient {

/// One of the ways in which a server lets someone sign in, by HTTP or RTSP.
struct SignInOffer {
  QByteArray scheme;                    // lower case
  QMap<QByteArray, QByteArray> values;  // keys in lower case

  bool IsBasic() const { return scheme == "basic"; }
  bool IsDigest() const { return scheme == "digest"; }
  /// Of a digest, in upper case.
  QByteArray Algorithm() const { return values.value("algorithm", "MD5").toUpper(); }
};

/// Who asks for what.
struct SignInRequest {
  QByteArray user, password;
  QByteArray method, uri;
  QByteArray nonce;  // ours, new each time
  int count = 1;     // of requests that were signed for the same offer
};

/// All that the values of WWW-Authenticate offer, in their order; several lines are parted by a comma.
std::vector<SignInOffer> ReadSignInOffers(const QByteArray& header);
/// The value of Authorization, by SHA-256 or MD5. Empty for another way of digest, or none.
QByteArray DigestAnswer(const SignInOffer& offer, const SignInRequest& request);
/// The same with the password itself, for anyone to read who listens.
QByteArray BasicAnswer(const SignInRequest& request);

}  // namespace TarnClient

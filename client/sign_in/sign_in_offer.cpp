#include "sign_in/sign_in_offer.h"

#include <QCryptographicHash>
#include <optional>
#include <utility>

namespace TarnClient {

namespace {

/// Takes the header apart; a text in quotes may hold commas.
class COfferReader {
 public:
  explicit COfferReader(QByteArray text) : text_(std::move(text)) {}

  std::vector<SignInOffer> Read() {
    std::vector<SignInOffer> offers;
    while (at_ < text_.size()) {
      const QByteArray word = Word();
      if (word.isEmpty()) {
        ++at_;  // a comma, a space, or noise
      } else if (at_ < text_.size() && text_[at_] == '=') {
        ++at_;
        const QByteArray value = Value();
        if (!offers.empty()) {
          offers.back().values.insert(word.toLower(), value);
        }
      } else {
        offers.push_back({word.toLower(), {}});
      }
    }
    return offers;
  }

 private:
  QByteArray Word() {
    const int begin = at_;
    while (at_ < text_.size() && !QByteArray(" ,=\t\"").contains(text_[at_])) {
      ++at_;
    }
    return text_.mid(begin, at_ - begin);
  }
  QByteArray Value() {
    if (at_ >= text_.size() || text_[at_] != '"') {
      return Word();
    }
    QByteArray value;
    for (++at_; at_ < text_.size() && text_[at_] != '"'; ++at_) {
      at_ += int(text_[at_] == '\\' && at_ + 1 < text_.size());
      value.append(text_[at_]);
    }
    ++at_;
    return value;
  }

  const QByteArray text_;
  int at_ = 0;
};

std::optional<QCryptographicHash::Algorithm> HashOf(const SignInOffer& offer) {
  const QByteArray name = offer.Algorithm();
  if (name == "MD5") {
    return QCryptographicHash::Md5;
  }
  if (name == "SHA-256") {
    return QCryptographicHash::Sha256;
  }
  return std::nullopt;
}

// Protection of the whole message is not known.
bool IsProtectionKnown(const SignInOffer& offer) {
  if (!offer.values.contains("qop")) {
    return true;
  }
  return offer.values.value("qop").simplified().replace(' ', "").split(',').contains("auth");
}

QByteArray Quoted(QByteArray text) {
  return '"' + text.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

}  // namespace

std::vector<SignInOffer> ReadSignInOffers(const QByteArray& header) {
  return COfferReader(header).Read();
}

QByteArray DigestAnswer(const SignInOffer& offer, const SignInRequest& request) {
  const auto algorithm = HashOf(offer);
  if (!offer.IsDigest() || !algorithm || !IsProtectionKnown(offer)) {
    return QByteArray();
  }
  const auto hash = [&](const QByteArrayList& parts) {
    return QCryptographicHash::hash(parts.join(':'), *algorithm).toHex();
  };
  const QByteArray realm = offer.values.value("realm"), nonce = offer.values.value("nonce");
  const QByteArray secret = hash({request.user, realm, request.password}), what = hash({request.method, request.uri});
  QByteArray answer = "Digest username=" + Quoted(request.user) + ", realm=" + Quoted(realm) +
                      ", nonce=" + Quoted(nonce) + ", uri=" + Quoted(request.uri);
  if (offer.values.contains("qop")) {
    const QByteArray count = QByteArray::number(request.count, 16).rightJustified(8, '0');
    answer += ", qop=auth, nc=" + count + ", cnonce=" + Quoted(request.nonce) +
              ", response=" + Quoted(hash({secret, nonce, count, request.nonce, "auth", what}));
  } else {
    answer += ", response=" + Quoted(hash({secret, nonce, what}));
  }
  if (offer.values.contains("algorithm")) {
    answer += ", algorithm=" + offer.values.value("algorithm");
  }
  if (offer.values.contains("opaque")) {
    answer += ", opaque=" + Quoted(offer.values.value("opaque"));
  }
  return answer;
}

QByteArray BasicAnswer(const SignInRequest& request) {
  return "Basic " + (request.user + ':' + request.password).toBase64();
}

}  // namespace TarnClient

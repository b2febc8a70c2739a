#pragma once

#include <QByteArrayList>
#include <QThread>
#include <QUrl>

namespace StoreTest {

/// A line to a server that can go wrong at a chosen moment. Passes bytes on between its clients and the server, on a
/// thread of its own, so that a client that blocks the test's thread is served, too.
class CFaultyLine {
 public:
  enum Fault {
    kSilent,      // nothing passes any more, in neither direction; no end of the line is to be seen
    kCutBefore,   // cut; the server does not get the last words
    kCutAnswered  // cut when the server has answered them; the answer is lost
  };

  explicit CFaultyLine(const QUrl& server);
  ~CFaultyLine();
  CFaultyLine(const CFaultyLine&) = delete;
  CFaultyLine& operator=(const CFaultyLine&) = delete;

  /// The server's address over this line.
  QString Url() const;
  /// The fault happens once, on the first connection whose client has said these words one after the other. A line that
  /// was cut takes no calls until it is mended.
  void FailAfter(const QByteArrayList& words, Fault fault);
  bool HasFailed() const;
  /// How many connections have been made over it.
  int Calls() const;
  /// Cuts all connections.
  void Cut();
  /// Nothing passes any more over any connection, of before or new; none is cut, and calls are taken.
  void Silence();
  /// Takes calls again, and passes on what was held back.
  void Mend();

 private:
  class Exchange;

  QUrl address_;
  QThread thread_;
  Exchange* exchange_;
};

}  // namespace StoreTest

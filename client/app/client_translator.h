#pragma once

#include <QTranslator>

namespace TarnClient {

/// The texts of a catalogue, in the site's wording: what one site calls plans another calls views. The catalogue has
/// the texts that say "plan", and a second one with the comment "view" for each of them. Thread: GUI, but for
/// translate(), any.
class CClientTranslator : public QTranslator {
  Q_OBJECT
 public:
  using QTranslator::QTranslator;

  /// Asks the host; to be called before the texts are installed.
  void TakeWording();
  void SetSaysView(bool view) { says_view_ = view; }

  QString translate(const char* context, const char* source, const char* disambiguation = nullptr,
                    int n = -1) const override;

 private:
  bool says_view_ = false;
};

}  // namespace TarnClient

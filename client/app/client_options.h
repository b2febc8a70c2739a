#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

namespace TarnClient {

/// What the command line asks for.
struct ClientOptions {
  QString store_url;            // empty: the store in the user's data folder
  bool demo = false;            // fills an empty PostgreSQL database with the demo site
  QString user;                 // empty: the store's default user
  QString skin, language;       // empty: as the user has set them
  QString settings_file;        // empty: the usual one, or none, see UsesSettings()
  QMap<QString, int> switches;  // by name, for this start only
  QString play;                 // name of the plan to play at the start
  QString scene;                // what to open for a picture
  QString screenshot;
  std::optional<double> quit_after_seconds;
  int download_delay_ms = 0;
  QString log_file;  // empty: in the user's data folder
  bool help = false;
  bool check = false;   // look through the store instead of showing the client
  QString backup_file;  // copy the store into this file instead of showing the client
  QString limit;        // "GROUP=USERGROUP,...": see --limit, likewise
  QString user_group;   // "USERGROUP=USER,...": see --user-group, likewise

  /// What counts in this start: what was asked for, else what the user has chosen, as far as it is known; else the
  /// usual skin and the system's language.
  QString SkinFor(const QString& chosen) const;
  QString LanguageFor(const QString& chosen) const;
  /// Whether the user's settings and what is remembered are used in this start. Not those of a picture or a measured
  /// run, which is to be the same every time, unless it names a file of its own.
  bool UsesSettings() const;

  bool WantsStoreTool() const { return check || !backup_file.isEmpty() || !limit.isEmpty() || !user_group.isEmpty(); }

  /// What a store that is made at this start is filled with: the demo site, or nothing but a user.
  bool FillsWithDemo() const;

  /// Reads the arguments (the program's name first). Empty with one line in `error` when they cannot be followed.
  /// Needs no application object.
  static std::optional<ClientOptions> Parse(const QStringList& arguments, QString* error);
  /// The text of --help. Needs an application object.
  static QString HelpText();
  /// Those of the catalogues that the program carries.
  static QStringList Languages();
  static QStringList Skins();
  /// The one of Languages() that the system speaks, else English.
  static QString SystemLanguage();
};

}  // namespace TarnClient

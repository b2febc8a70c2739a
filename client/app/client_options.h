#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

#include "TarnHost/secret.h"

namespace TarnClient {

/// What the command line asks for.
struct ClientOptions {
  QString store_url;                          // empty: the store in the user's data folder
  bool demo = false;                          // fills an empty PostgreSQL database with the demo site
  QString user;                               // empty: the store's default user
  bool log_in = false;                        // asks who it is in any case
  std::optional<int> password_descriptor;     // where the password of `user` or of --admin stands
  std::optional<TarnHost::CSecret> password;  // not from the arguments, see given_password.h
  QString skin, language;                     // empty: as the user has set them
  QString settings_file;                      // empty: the usual one, or none, see UsesSettings()
  QString copies_folder;                      // of copies of stores on servers; empty: the usual one, or none
  bool keeps_no_copy = false;                 // and removes those of the store that is there
  QMap<QString, int> switches;                // by name, for this start only
  QString cameras_at;                         // where cameras without an address have their pictures; empty: nowhere
  QString devices_at;                         // which device turns these; empty: none
  QString play;                               // name of the plan to play at the start
  QString scene;                              // what to open for a picture
  QString screenshot;
  std::optional<double> quit_after_seconds;
  int download_delay_ms = 0;
  QString log_file;  // empty: in the user's data folder
  bool help = false;
  bool version = false;
  bool check = false;   // look through the store instead of showing the client
  QString backup_file;  // copy the store into this file instead of showing the client
  QString export_file;  // write the site into this file, likewise
  QString import_file;  // bring this file into the store, likewise
  bool dry_run = false;
  QString limit;       // "GROUP=USERGROUP,...": see --limit, likewise
  QString user_group;  // "USERGROUP=USER,...": see --user-group, likewise
  QStringList admin;   // command and what it is about: see --admin, likewise

  /// What counts in this start: what was asked for, else what the user has chosen, as far as it is known; else the
  /// usual skin and the system's language.
  QString SkinFor(const QString& chosen) const;
  QString LanguageFor(const QString& chosen) const;
  /// Not that for a picture or a measured run, which is to be the same every time.
  bool IsUsualStart() const;
  /// Whether the user's settings and what is remembered are used in this start: in a usual one, or one that names a
  /// file of its own.
  bool UsesSettings() const;

  bool WantsStoreTool() const {
    return check || !(backup_file + export_file + import_file + limit + user_group).isEmpty() || !admin.isEmpty();
  }

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

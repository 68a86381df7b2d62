#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace brindle {

/// An application as its desktop entry describes it. A plain value.
struct DesktopApplication
{
    /// The name of its entry, without the suffix and with the folders in it: "kde-dolphin".
    QString id;
    /// Where the entry lies.
    QString path;
    /// In the user's language.
    QString name;
    /// A name in the icon theme, or an absolute path; may be empty.
    QString icon;
    QString command;
    QString workingFolder;
    QString windowClass;
    /// Its identifier as a Flatpak; empty when it is none.
    QString flatpak;
    /// Whether people find it in menus.
    bool isListed = true;
    bool wantsTerminal = false;
};

/// The keys of a desktop entry; empty when there is none that can be read. Any thread.
QHash<QString, QString> readDesktopEntry(const QString &path);

/// Absent when the entry is of something else, is hidden, or what it starts is not installed. `languages` are
/// tried in this order, as entries spell them.
std::optional<DesktopApplication> readApplication(
    const QString &path, const QString &id, const QStringList &languages);

/// The spellings of a locale ("de_AT.UTF-8@euro") in a desktop entry, the closest first.
QStringList entryLanguages(const QString &locale);

/// The program of the application, and its arguments, to open `url` where there is one. Absent when its
/// command cannot be read, or is empty.
std::optional<QStringList> commandOf(
    const DesktopApplication &application, const std::optional<QUrl> &url = std::nullopt);

} // namespace brindle

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace brindle {

struct ProcessIdentity;

/// An application that has a well-known identifier of its own, and how a Linux desktop knows it.
struct KnownApplication
{
    /// "com.google.Chrome".
    QString identifier;
    /// Names of its desktop entries, as its makers and the distributors call them; the usual one first.
    QStringList desktopIds;
    /// How the path of the running program ends.
    QStringList executables;
    /// Its identifier as a Flatpak; empty where there is none.
    QString flatpak;
    /// A browser's folder within the user's configuration; empty for the rest.
    QString profile;
};

/// All of them. Any thread.
const QList<KnownApplication> &knownApplications();

/// Null when there is none of that identifier.
const KnownApplication *knownApplication(const QString &identifier);
/// The application that a process belongs to, null when it is none of these.
const KnownApplication *knownApplication(const ProcessIdentity &process);

} // namespace brindle

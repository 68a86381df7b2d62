#pragma once

#include <QImage>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>

namespace brindle {

/// The applications of the desktop: which are installed, which run, what they look like. Main thread.
///
/// An application is named by its bundle identifier, in the platform's own spelling; where applications of
/// other platforms have well-known identifiers ("com.google.Chrome"), these name them too.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Where the application lies, absent when none of that identifier is installed. May read small files
    /// once; answers from memory afterwards.
    virtual std::optional<QUrl> urlForApplication(const QString &bundleIdentifier) const = 0;
    /// The name to show for what lies at `url`, absent when it has none.
    virtual std::optional<QString> localizedName(const QUrl &url) const = 0;
    /// The icon of what lies at `path`; never null, since whatever has none gets a plain one.
    virtual QImage icon(const QString &path) const = 0;
    /// The identifiers of all running applications that have one.
    virtual QSet<QString> runningApplications() const = 0;

    /// Starts the application at `url`, or brings it forward. Returns at once; failure shows nothing.
    virtual void openApplication(const QUrl &url) = 0;
    /// Opens `url` with whatever is there for it. Returns at once; false when nothing is.
    virtual bool open(const QUrl &url) = 0;
};

} // namespace brindle

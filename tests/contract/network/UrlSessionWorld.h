#pragma once

#include "foundation/ManualScheduler.h"
#include "platform/fake/FakeUrlSession.h"
#include "platform/linux/network/QtUrlSession.h"
#include "support/EventLoop.h"
#include "support/http/LoopbackServer.h"

#include <QTemporaryDir>

namespace brindle::test {

/// A network in memory.
class FakeUrlWorld
{
public:
    ManualScheduler time;
    FakeUrlSession session{time};

    static QUrl url(const QString &path) { return QUrl(QStringLiteral("http://example.org") + path); }
    void serve(const QString &path, const QByteArray &content) { session.serve(url(path), content); }
    /// Nothing arrives at this path's address, nor at any other from now on.
    QUrl hang(const QString &path)
    {
        session.hold();
        return url(path);
    }
    bool eventually(const std::function<bool()> &holds)
    {
        time.runPosted();
        return holds();
    }
};

/// The real session beside a real server.
class QtUrlWorld
{
public:
    ManualScheduler time;
    LoopbackServer server;
    QTemporaryDir folder;
    QString cacheFolder = folder.filePath(QStringLiteral("cache"));
    QtUrlSession session{time, cacheFolder};

    QUrl url(const QString &path) const { return server.url(path); }
    void serve(const QString &path, const QByteArray &content) { server.serve(path, {content}); }
    QUrl hang(const QString &path)
    {
        server.serve(path, {.body = "half", .hangs = true});
        return url(path);
    }
    bool eventually(const std::function<bool()> &holds)
    {
        return test::eventually([&] {
            time.runPosted();
            return holds();
        });
    }
};

} // namespace brindle::test

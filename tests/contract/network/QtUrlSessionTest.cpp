#include "contract/network/UrlSessionWorld.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace brindle::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class QtUrlSessionTest : public testing::Test
{
protected:
    /// What a fetch gives, waited for.
    std::optional<QByteArray> fetched(const QUrl &url, qint64 size = 1000)
    {
        bool isAnswered = false;
        std::optional<QByteArray> result;
        const Subscription subscription =
            world.session.fetch(url, {size, 30}, [&](const std::optional<QByteArray> &content) {
                isAnswered = true;
                result = content;
            });
        EXPECT_TRUE(world.eventually([&isAnswered] { return isAnswered; })) << url.toString().toStdString();
        return result;
    }
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(world.folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QtUrlWorld world;
};

TEST_F(QtUrlSessionTest, AnErrorPageIsAFailure)
{
    world.server.serve(QStringLiteral("/a"), {"sorry", "500 Internal Server Error"});
    EXPECT_FALSE(fetched(world.url(QStringLiteral("/a"))));
}

TEST_F(QtUrlSessionTest, ARedirectionIsFollowed)
{
    world.serve(QStringLiteral("/b"), "content");
    world.server.serve(QStringLiteral("/a"), {"", "302 Found", {"Location: /b"}});
    EXPECT_EQ(fetched(world.url(QStringLiteral("/a"))), "content");
}

TEST_F(QtUrlSessionTest, ARedirectionToAFileIsAFailure)
{
    const QByteArray file = QUrl::fromLocalFile(write(QStringLiteral("secret"), "secret")).toEncoded();
    world.server.serve(QStringLiteral("/a"), {"", "302 Found", {"Location: " + file}});
    EXPECT_FALSE(fetched(world.url(QStringLiteral("/a"))));
}

TEST_F(QtUrlSessionTest, WhatTheServerLetsUsKeepIsNotAskedForAgain)
{
    world.server.serve(QStringLiteral("/a"), {"content", "200 OK", {"Cache-Control: max-age=3600"}});
    EXPECT_EQ(fetched(world.url(QStringLiteral("/a"))), "content");
    EXPECT_EQ(fetched(world.url(QStringLiteral("/a"))), "content");
    EXPECT_EQ(world.server.requests.size(), 1);
}

TEST_F(QtUrlSessionTest, NoCookieIsTakenOrSent)
{
    world.server.serve(QStringLiteral("/a"), {"content", "200 OK", {"Set-Cookie: who=you"}});
    fetched(world.url(QStringLiteral("/a")));
    fetched(world.url(QStringLiteral("/a")));
    ASSERT_EQ(world.server.requests.size(), 2);
    EXPECT_THAT(world.server.requests[1].toStdString(), Not(HasSubstr("who=you")));
}

TEST_F(QtUrlSessionTest, TheConnectionOfADroppedFetchEnds)
{
    const QUrl url = world.hang(QStringLiteral("/a"));
    Subscription subscription = world.session.fetch(url, {1000, 30}, [](const auto &) { FAIL(); });
    ASSERT_TRUE(world.eventually([this] { return world.server.requests.size() == 1; }));
    subscription.reset();
    EXPECT_TRUE(world.eventually([this] { return world.server.closed == 1; }));
}

TEST_F(QtUrlSessionTest, TheCacheIsForTheUserAloneAndNotMadeBeforeItIsNeeded)
{
    EXPECT_FALSE(QFileInfo::exists(world.cacheFolder));
    fetched(world.url(QStringLiteral("/a")));
    EXPECT_EQ(QFileInfo(world.cacheFolder).permissions() & (QFile::ReadGroup | QFile::ReadOther),
        QFile::Permissions());
}

TEST_F(QtUrlSessionTest, FilesAndDataAddressesAreRead)
{
    EXPECT_EQ(fetched(QUrl::fromLocalFile(write(QStringLiteral("a"), "content"))), "content");
    EXPECT_EQ(fetched(QUrl(QStringLiteral("data:text/plain,content"))), "content");
    EXPECT_FALSE(fetched(QUrl::fromLocalFile(world.folder.filePath(QStringLiteral("missing")))));
}

TEST_F(QtUrlSessionTest, AFileBeyondTheLimitIsAFailure)
{
    const QUrl url = QUrl::fromLocalFile(write(QStringLiteral("a"), QByteArray(11, 'x')));
    EXPECT_FALSE(fetched(url, 10));
    EXPECT_TRUE(fetched(url, 11));
}

TEST_F(QtUrlSessionTest, PipesDevicesAndFoldersAreFailuresAndHoldNothingUp)
{
    const QString pipe = world.folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {pipe, QStringLiteral("/dev/zero"), world.folder.path()})
        EXPECT_FALSE(fetched(QUrl::fromLocalFile(path)));
}

TEST_F(QtUrlSessionTest, AddressesOfOtherKindsAreFailures)
{
    for (const char *url : {"", "relative", "ftp://example.org/a", "qrc:/brindle/symbols/bolt.fill.svg",
             "file://elsewhere/a", "http://"})
        EXPECT_FALSE(fetched(QUrl(QString::fromLatin1(url)))) << url;
}

} // namespace
} // namespace brindle::test

#include "contract/network/UrlSessionWorld.h"

#include <gtest/gtest.h>

namespace brindle::test {

/// What the port promises, whoever keeps it.
template <typename World> class UrlSessionContract : public testing::Test
{
protected:
    static constexpr UrlSession::Limits ample{1000, 30};

    void fetch(const QUrl &url, const UrlSession::Limits &limits = ample)
    {
        subscription = world.session.fetch(url, limits, [this](const std::optional<QByteArray> &content) {
            ++answers;
            answer = content;
        });
    }
    bool isAnswered()
    {
        return world.eventually([this] { return answers > 0; });
    }

    World world;
    int answers = 0;
    std::optional<QByteArray> answer;
    Subscription subscription;
};

using Worlds = testing::Types<FakeUrlWorld, QtUrlWorld>;
TYPED_TEST_SUITE(UrlSessionContract, Worlds);

TYPED_TEST(UrlSessionContract, WhatIsThereArrivesOnALaterTurn)
{
    this->world.serve(QStringLiteral("/a"), "content");
    this->fetch(this->world.url(QStringLiteral("/a")));
    EXPECT_EQ(this->answers, 0);
    ASSERT_TRUE(this->isAnswered());
    EXPECT_EQ(this->answer, "content");
    EXPECT_EQ(this->answers, 1);
}

TYPED_TEST(UrlSessionContract, WhatIsNotThereIsAnsweredWithNothing)
{
    this->fetch(this->world.url(QStringLiteral("/nowhere")));
    ASSERT_TRUE(this->isAnswered());
    EXPECT_FALSE(this->answer);
}

TYPED_TEST(UrlSessionContract, AnEmptyContentIsNoFailure)
{
    this->world.serve(QStringLiteral("/a"), "");
    this->fetch(this->world.url(QStringLiteral("/a")));
    ASSERT_TRUE(this->isAnswered());
    EXPECT_EQ(this->answer, "");
}

TYPED_TEST(UrlSessionContract, ContentOfJustTheLimitArrives)
{
    this->world.serve(QStringLiteral("/a"), QByteArray(1000, 'x'));
    this->fetch(this->world.url(QStringLiteral("/a")));
    ASSERT_TRUE(this->isAnswered());
    EXPECT_EQ(this->answer, QByteArray(1000, 'x'));
}

TYPED_TEST(UrlSessionContract, ContentBeyondTheLimitIsAFailure)
{
    this->world.serve(QStringLiteral("/a"), QByteArray(1001, 'x'));
    this->fetch(this->world.url(QStringLiteral("/a")));
    ASSERT_TRUE(this->isAnswered());
    EXPECT_FALSE(this->answer);
}

TYPED_TEST(UrlSessionContract, ContentThatDoesNotComeInTimeIsAFailure)
{
    this->fetch(this->world.hang(QStringLiteral("/a")));
    this->world.time.advance(29.9);
    EXPECT_EQ(this->answers, 0);
    this->world.time.advance(0.2);
    EXPECT_EQ(this->answers, 1);
    EXPECT_FALSE(this->answer);
}

TYPED_TEST(UrlSessionContract, AFetchThatWasDroppedIsNotAnswered)
{
    this->world.serve(QStringLiteral("/a"), "content");
    this->fetch(this->world.url(QStringLiteral("/a")));
    this->subscription.reset();
    int others = 0;
    const Subscription other = this->world.session.fetch(
        this->world.url(QStringLiteral("/a")), this->ample, [&others](const auto &) { ++others; });
    ASSERT_TRUE(this->world.eventually([&others] { return others > 0; }));
    this->world.time.advance(60);
    EXPECT_EQ(this->answers, 0);
}

TYPED_TEST(UrlSessionContract, AnAnsweredFetchMayBeDroppedFromWithin)
{
    this->world.serve(QStringLiteral("/a"), "content");
    this->subscription = this->world.session.fetch(
        this->world.url(QStringLiteral("/a")), this->ample, [this](const auto &content) {
            ++this->answers;
            this->answer = content;
            this->subscription.reset();
        });
    ASSERT_TRUE(this->isAnswered());
    this->world.time.advance(60);
    EXPECT_EQ(this->answers, 1);
}

} // namespace brindle::test

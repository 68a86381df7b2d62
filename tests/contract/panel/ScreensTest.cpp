#include "foundation/SystemScheduler.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/linux/QtScreens.h"
#include "support/EventLoop.h"
#include "support/x11/Desktop.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>

namespace brindle {
namespace {

/// The displays, and the hand that changes the first one's size in points.
struct World
{
    SystemScheduler time;
    std::unique_ptr<Screens> screens;
    std::function<bool(QSize)> resize;
};

struct Kind
{
    const char *name;
    std::function<std::unique_ptr<World>()> make;

    friend void PrintTo(const Kind &kind, std::ostream *out) { *out << kind.name; }
};

std::unique_ptr<World> makeFake()
{
    auto world = std::make_unique<World>();
    auto screens = std::make_unique<FakeScreens>();
    world->resize = [fake = screens.get()](QSize size) {
        fake->set({{QStringLiteral("Fake"), QRectF(QPointF(), QSizeF(size)), 0, 1}});
        return true;
    };
    world->screens = std::move(screens);
    return world;
}

std::unique_ptr<World> makeX11()
{
    auto world = std::make_unique<World>();
    world->screens = std::make_unique<QtScreens>(world->time);
    world->resize = test::resizeDisplay;
    return world;
}

class ScreenLists : public testing::TestWithParam<Kind>
{
protected:
    std::unique_ptr<World> m_world = GetParam().make();
    Screens &m_screens = *m_world->screens;
};

TEST_P(ScreenLists, ThePrimaryDisplayIsAtTheOrigin)
{
    ASSERT_FALSE(m_screens.screens().isEmpty());
    EXPECT_EQ(m_screens.screens().constFirst().frame.topLeft(), QPointF(0, 0));
}

TEST_P(ScreenLists, EveryDisplayHasANameASizeAndAScale)
{
    for (const Screen &screen : m_screens.screens()) {
        EXPECT_FALSE(screen.localizedName.isEmpty());
        EXPECT_FALSE(screen.frame.isEmpty());
        EXPECT_GT(screen.scale, 0);
        EXPECT_GE(screen.safeAreaTop, 0);
    }
}

TEST_P(ScreenLists, TheMainScreenIsOneOfThem)
{
    ASSERT_TRUE(m_screens.mainScreen());
    EXPECT_TRUE(m_screens.screens().contains(*m_screens.mainScreen()));
}

TEST_P(ScreenLists, ANewSizeIsToldAndIsThereWhenItIsTold)
{
    QList<QSizeF> told;
    QObject::connect(&m_screens, &Screens::parametersChanged, &m_screens,
        [&] { told.append(m_screens.screens().constFirst().frame.size()); });
    for (const QSize size : {QSize(1280, 720), QSize(1024, 768)}) {
        ASSERT_TRUE(m_world->resize(size));
        ASSERT_TRUE(test::eventually([&] { return !told.isEmpty() && told.constLast() == QSizeF(size); }));
    }
    EXPECT_EQ(m_screens.screens().constFirst().frame.topLeft(), QPointF(0, 0));
}

INSTANTIATE_TEST_SUITE_P(All, ScreenLists, testing::Values(Kind{"Fake", makeFake}, Kind{"X11", makeX11}),
    [](const auto &instance) { return std::string(instance.param.name); });

} // namespace
} // namespace brindle

#include "platform/linux/dbus/SingleInstance.h"

#include "foundation/SystemScheduler.h"
#include "platform/linux/dbus/BusConnection.h"
#include "support/EventLoop.h"
#include "support/dbus/DbusMock.h"
#include "support/dbus/PrivateBus.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <memory>
#include <thread>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using Claim = SingleInstance::Claim;

/// A start of the program, as far as the bus sees it.
struct Start
{
    explicit Start(const BusConnection::Open &open) : connection(open, time) { }

    SystemScheduler time;
    BusConnection connection;
    SingleInstance instance{connection};
};

class SingleInstanceTest : public testing::Test
{
protected:
    std::unique_ptr<Start> start() { return std::make_unique<Start>(BusConnection::busAt(bus.address())); }

    std::unique_ptr<QDBusPendingCallWatcher> ask(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            SingleInstance::name, SingleInstance::path, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        return std::make_unique<QDBusPendingCallWatcher>(bus.control().asyncCall(message));
    }

    PrivateBus bus;
};

} // namespace

TEST_F(SingleInstanceTest, TheFirstStartTakesTheName)
{
    const auto first = start();
    EXPECT_EQ(first->instance.claim(), Claim::first);
    EXPECT_TRUE(bus.hasOwner(u"com.brindle.app"_s));
}

TEST_F(SingleInstanceTest, ASecondStartFindsTheNameTaken)
{
    const auto first = start();
    const auto second = start();
    EXPECT_EQ(first->instance.claim(), Claim::first);
    EXPECT_EQ(second->instance.claim(), Claim::second);
}

TEST_F(SingleInstanceTest, ASecondStartNeverInheritsTheName)
{
    auto first = start();
    const auto second = start();
    first->instance.claim();
    second->instance.claim();
    first.reset();
    EXPECT_TRUE(bus.waitForNoName(SingleInstance::name));
}

TEST_F(SingleInstanceTest, AfterTheFirstHasGoneTheNextStartIsTheFirst)
{
    start()->instance.claim();
    EXPECT_TRUE(bus.waitForNoName(SingleInstance::name));
    EXPECT_EQ(start()->instance.claim(), Claim::first);
}

TEST_F(SingleInstanceTest, ASecondStartAsksTheFirstToShowItself)
{
    const auto first = start();
    const auto second = start();
    QSignalSpy activations(&first->instance, &SingleInstance::activated);
    first->instance.claim();
    second->instance.claim();
    // The other process of real life.
    std::thread other([&second] { second->instance.activateFirst(); });
    EXPECT_TRUE(eventually([&] { return activations.size() == 1; }));
    other.join();
}

TEST_F(SingleInstanceTest, ASecondStartDoesNotWaitForeverForAFirstThatHangs)
{
    DbusMock first{
        DbusMock::Bare{bus, SingleInstance::name, SingleInstance::path, u"org.freedesktop.Application"_s}};
    first.freeze();
    const auto second = start();
    EXPECT_EQ(second->instance.claim(), Claim::second);
    second->instance.activateFirst();
}

TEST_F(SingleInstanceTest, ActivateAsksTheProgramToShowItself)
{
    const auto first = start();
    QSignalSpy activations(&first->instance, &SingleInstance::activated);
    first->instance.claim();
    const auto reply = ask(u"Activate"_s, {QVariantMap{{u"activation-token"_s, u"x"_s}}});
    EXPECT_TRUE(eventually([&] { return reply->isFinished(); }));
    EXPECT_FALSE(reply->isError());
    EXPECT_EQ(activations.size(), 1);
}

TEST_F(SingleInstanceTest, AnActionArrivesByItsName)
{
    const auto first = start();
    QSignalSpy actions(&first->instance, &SingleInstance::actionActivated);
    first->instance.claim();
    const auto reply = ask(u"ActivateAction"_s, {u"toggle"_s, QVariantList(), QVariantMap()});
    EXPECT_TRUE(eventually([&] { return reply->isFinished(); }));
    EXPECT_FALSE(reply->isError());
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions[0][0], u"toggle"_s);
}

TEST_F(SingleInstanceTest, ACallOfAWrongShapeIsRefusedAndDoesNothing)
{
    const auto first = start();
    QSignalSpy activations(&first->instance, &SingleInstance::activated);
    QSignalSpy actions(&first->instance, &SingleInstance::actionActivated);
    first->instance.claim();
    const auto activate = ask(u"Activate"_s, {7});
    const auto action = ask(u"ActivateAction"_s, {u"toggle"_s});
    const auto unknown = ask(u"activated"_s, {});
    EXPECT_TRUE(
        eventually([&] { return activate->isFinished() && action->isFinished() && unknown->isFinished(); }));
    EXPECT_TRUE(activate->isError() && action->isError() && unknown->isError());
    EXPECT_TRUE(activations.isEmpty() && actions.isEmpty());
}

TEST(SingleInstanceWithoutABus, TheProgramRunsAllTheSame)
{
    Start start{BusConnection::busAt(u"unix:path=/nowhere"_s)};
    EXPECT_EQ(start.instance.claim(), Claim::noBus);
}

} // namespace brindle::test

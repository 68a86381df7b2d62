#include "unit/activities/SystemControlsFixture.h"

#include <QSignalSpy>

namespace brindle {
namespace {

/// One test for each way from one state to another.
class SystemControlsPermission : public SystemControls
{
protected:
    void requestWithoutAccess()
    {
        startWith(true);
        service.requestPermission();
        ASSERT_EQ(service.permissionState(), State::requesting);
    }
    void grant() { machine.monitoring.isGranted = true; }
    void withdraw() { machine.monitoring.isGranted = false; }
};

TEST_F(SystemControlsPermission, IsDisabledBeforeTheStartAndWithTheSettingOff)
{
    EXPECT_EQ(service.permissionState(), State::disabled);
    startWith(false);
    EXPECT_EQ(service.permissionState(), State::disabled);
}

TEST_F(SystemControlsPermission, FromDisabledWithoutAccessItIsRequiredAndNobodyIsAsked)
{
    startWith(false);
    setEnabled(true);
    EXPECT_EQ(service.permissionState(), State::permissionRequired);
    EXPECT_FALSE(machine.keys.isObserved());
    EXPECT_EQ(machine.monitoring.requests, 0);
}

TEST_F(SystemControlsPermission, FromDisabledWithAccessItIsAuthorized)
{
    grant();
    startWith(false);
    setEnabled(true);
    EXPECT_EQ(service.permissionState(), State::authorized);
    EXPECT_TRUE(machine.keys.isObserved());
}

TEST_F(SystemControlsPermission, FromDisabledWithAccessButNoMonitorItIsUnavailable)
{
    grant();
    machine.keys.refusesMonitors = true;
    startWith(false);
    setEnabled(true);
    EXPECT_EQ(service.permissionState(), State::unavailable);
    EXPECT_FALSE(service.isMonitoringKeys());
}

TEST_F(SystemControlsPermission, TheStateAtLaunchIsThatOfTheSetting)
{
    grant();
    startWith(true);
    EXPECT_EQ(service.permissionState(), State::authorized);
}

TEST_F(SystemControlsPermission, ARequestWithoutAccessAsksThePerson)
{
    startWith(true);
    service.requestPermission();
    EXPECT_EQ(service.permissionState(), State::requesting);
    EXPECT_EQ(machine.monitoring.requests, 1);
    EXPECT_TRUE(service.isAwaitingPermission());
}

TEST_F(SystemControlsPermission, ARequestWithAccessNeedsNobody)
{
    startWith(true);
    grant();
    service.requestPermission();
    EXPECT_EQ(service.permissionState(), State::authorized);
    EXPECT_EQ(machine.monitoring.requests, 0);
    EXPECT_FALSE(service.isAwaitingPermission());
}

TEST_F(SystemControlsPermission, ARequestWithAccessButNoMonitorIsUnavailable)
{
    startWith(true);
    grant();
    machine.keys.refusesMonitors = true;
    service.requestPermission();
    EXPECT_EQ(service.permissionState(), State::unavailable);
}

TEST_F(SystemControlsPermission, ARequestWithTheSettingOffDoesNothing)
{
    startWith(false);
    service.requestPermission();
    EXPECT_EQ(service.permissionState(), State::disabled);
    EXPECT_EQ(machine.monitoring.requests, 0);
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsPermission, ARequestAfterAWithdrawalNobodyNoticedEndsTheMonitor)
{
    grant();
    startWith(true);
    withdraw();
    service.requestPermission();
    EXPECT_EQ(service.permissionState(), State::requesting);
    EXPECT_FALSE(machine.keys.isObserved());
}

TEST_F(SystemControlsPermission, AnotherRequestAsksAgainAndWaitsOnce)
{
    requestWithoutAccess();
    machine.time.advance(0.5);
    service.requestPermission();
    EXPECT_EQ(machine.monitoring.requests, 2);
    const int preflights = machine.monitoring.preflights;
    machine.time.advance(0.9);
    EXPECT_EQ(machine.monitoring.preflights, preflights);
    machine.time.advance(0.1);
    EXPECT_EQ(machine.monitoring.preflights, preflights + 1);
}

TEST_F(SystemControlsPermission, ARequestIsAuthorizedAtTheNextSecondAfterTheGrant)
{
    requestWithoutAccess();
    machine.time.advance(86400);
    EXPECT_EQ(service.permissionState(), State::requesting);
    grant();
    machine.time.advance(0.5);
    EXPECT_EQ(service.permissionState(), State::requesting);
    machine.time.advance(0.5);
    EXPECT_EQ(service.permissionState(), State::authorized);
    EXPECT_FALSE(service.isAwaitingPermission());
    EXPECT_TRUE(machine.keys.isObserved());
}

TEST_F(SystemControlsPermission, ARequestThatIsGrantedWithoutAMonitorIsUnavailable)
{
    requestWithoutAccess();
    grant();
    machine.keys.refusesMonitors = true;
    machine.time.advance(1);
    EXPECT_EQ(service.permissionState(), State::unavailable);
    EXPECT_FALSE(service.isAwaitingPermission());
}

TEST_F(SystemControlsPermission, APersonWhoReturnsWithoutGrantingIsStillWaitedFor)
{
    requestWithoutAccess();
    machine.host.becomeActive();
    EXPECT_EQ(service.permissionState(), State::permissionRequired);
    EXPECT_TRUE(service.isAwaitingPermission());
    grant();
    machine.time.advance(1);
    EXPECT_EQ(service.permissionState(), State::authorized);
}

TEST_F(SystemControlsPermission, AWithdrawalIsNoticedWhenThePersonReturns)
{
    grant();
    startWith(true);
    withdraw();
    machine.host.becomeActive();
    EXPECT_EQ(service.permissionState(), State::permissionRequired);
    EXPECT_FALSE(machine.keys.isObserved());
    EXPECT_TRUE(service.isObservingLevels());
}

TEST_F(SystemControlsPermission, AGrantIsNoticedWhenThePersonReturns)
{
    startWith(true);
    grant();
    machine.host.becomeActive();
    EXPECT_EQ(service.permissionState(), State::authorized);
}

TEST_F(SystemControlsPermission, AReturnWithAccessMakesTheMonitorAnewAndKeepsOne)
{
    grant();
    startWith(true);
    machine.host.becomeActive();
    EXPECT_EQ(machine.keys.monitorsMade, 2);
    EXPECT_EQ(service.permissionState(), State::authorized);
    machine.audio.set({{1, false}});
    press(MediaKeyCode::soundUp);
    EXPECT_EQ(news().size(), 1);
}

TEST_F(SystemControlsPermission, AReturnWithTheSettingOffChangesNothing)
{
    grant();
    startWith(false);
    machine.host.becomeActive();
    EXPECT_EQ(service.permissionState(), State::disabled);
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsPermission, SwitchingOffWhileRequestingEndsTheWait)
{
    requestWithoutAccess();
    settings.setSystemControlsEnabled(false);
    machine.time.advance(1);
    EXPECT_EQ(service.permissionState(), State::disabled);
    EXPECT_FALSE(service.isAwaitingPermission());
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsPermission, SwitchingOffDisablesFromEveryState)
{
    startWith(true);
    ASSERT_EQ(service.permissionState(), State::permissionRequired);
    setEnabled(false);
    EXPECT_EQ(service.permissionState(), State::disabled);

    grant();
    setEnabled(true);
    ASSERT_EQ(service.permissionState(), State::authorized);
    setEnabled(false);
    EXPECT_EQ(service.permissionState(), State::disabled);

    machine.keys.refusesMonitors = true;
    setEnabled(true);
    ASSERT_EQ(service.permissionState(), State::unavailable);
    setEnabled(false);
    EXPECT_EQ(service.permissionState(), State::disabled);
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsPermission, StoppingWhileRequestingEndsTheWait)
{
    requestWithoutAccess();
    service.stop();
    EXPECT_EQ(service.permissionState(), State::disabled);
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsPermission, ObserversHearOfAChangeOnly)
{
    QSignalSpy changes(&service, &SystemControlsService::permissionStateChanged);
    startWith(false);
    EXPECT_EQ(changes.count(), 0);
    setEnabled(true);
    EXPECT_EQ(changes.count(), 1);
    machine.host.becomeActive();
    EXPECT_EQ(changes.count(), 1);
    service.requestPermission();
    EXPECT_EQ(changes.count(), 2);
}

} // namespace
} // namespace brindle

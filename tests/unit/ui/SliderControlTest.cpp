#include "ui/SliderControl.h"

#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SliderControlTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { QQuickWindow::setGraphicsApi(QSGRendererInterface::Software); }

    SliderControlTest()
    {
        slider.setParentItem(window.contentItem());
        slider.setSize({220, 20});
        slider.setInset(10);
        slider.setMaximumValue(100);
        slider.setPosition(50);
        slider.setStepSize(5);
        window.resize(300, 100);
        window.show();
        window.requestActivate();
        QObject::connect(&slider, &SliderControl::editingStarted, &slider, [this] { told << "start"; });
        QObject::connect(&slider, &SliderControl::edited, &slider,
            [this](double value) { told << QString::number(value).toLatin1(); });
        QObject::connect(&slider, &SliderControl::editingEnded, &slider, [this] { told << "end"; });
        QObject::connect(&slider, &SliderControl::editingCancelled, &slider, [this] { told << "cancel"; });
    }

    void press(int x) { QTest::mousePress(&window, Qt::LeftButton, {}, {x, 10}); }
    void moveTo(int x) { QTest::mouseMove(&window, {x, 10}); }
    void release(int x) { QTest::mouseRelease(&window, Qt::LeftButton, {}, {x, 10}); }
    void key(QEvent::Type type, int code, bool isRepeat = false)
    {
        slider.forceActiveFocus();
        QKeyEvent event(type, code, Qt::NoModifier, {}, isRepeat);
        QCoreApplication::sendEvent(&window, &event);
    }

    QQuickWindow window;
    SliderControl slider;
    QList<QByteArray> told;
};

TEST_F(SliderControlTest, APressTakesTheThumbThereAndAReleaseEndsTheEdit)
{
    press(30);
    EXPECT_TRUE(slider.isEditing());
    EXPECT_THAT(told, ElementsAre("start", "10"));
    moveTo(110);
    release(110);
    EXPECT_THAT(told, ElementsAre("start", "10", "50", "50", "end"));
    EXPECT_FALSE(slider.isEditing());
    EXPECT_EQ(slider.position(), 50) << "the position is its owner's";
}

TEST_F(SliderControlTest, AHandBeyondTheEndsIsAtTheEnds)
{
    press(110);
    moveTo(290);
    moveTo(1);
    release(1);
    EXPECT_THAT(told, ElementsAre("start", "50", "100", "0", "0", "end"));
}

TEST_F(SliderControlTest, ReportsDuringAnEditDoNotDisturbIt)
{
    press(30);
    slider.setPosition(77);
    moveTo(50);
    EXPECT_EQ(told.constLast(), "20");
    release(50);
}

TEST_F(SliderControlTest, AHeldKeyIsOneEdit)
{
    key(QEvent::KeyPress, Qt::Key_Right);
    key(QEvent::KeyRelease, Qt::Key_Right, true);
    key(QEvent::KeyPress, Qt::Key_Right, true);
    key(QEvent::KeyRelease, Qt::Key_Right);
    EXPECT_THAT(told, ElementsAre("start", "55", "60", "end"));
}

TEST_F(SliderControlTest, KeysGoBackAndToTheEnds)
{
    for (const int code : {Qt::Key_Left, Qt::Key_Home, Qt::Key_End}) {
        key(QEvent::KeyPress, code);
        key(QEvent::KeyRelease, code);
    }
    EXPECT_THAT(told, ElementsAre("start", "45", "end", "start", "0", "end", "start", "100", "end"));
}

TEST_F(SliderControlTest, OtherKeysAreLeftToOthers)
{
    slider.forceActiveFocus();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    event.accept();
    QCoreApplication::sendEvent(&slider, &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(SliderControlTest, LosingTheKeyboardEndsTheEditOfAKey)
{
    key(QEvent::KeyPress, Qt::Key_Right);
    slider.setFocus(false);
    EXPECT_THAT(told, ElementsAre("start", "55", "end"));
}

TEST_F(SliderControlTest, AssistiveToolsSetAValueInOneEdit)
{
    slider.setProperty("value", 80.0);
    slider.step(-1);
    EXPECT_THAT(told, ElementsAre("start", "80", "end", "start", "45", "end"));
    EXPECT_EQ(slider.property("value"), 50);
}

TEST_F(SliderControlTest, WithoutAnythingToMoveAlongItCannotBeMoved)
{
    slider.setMaximumValue(0);
    press(30);
    release(30);
    key(QEvent::KeyPress, Qt::Key_Right);
    slider.jump(10);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(SliderControlTest, AnEditIsVoidWhenTheSliderIsTakenAwayFromTheHand)
{
    press(30);
    slider.setEnabled(false);
    EXPECT_THAT(told, ElementsAre("start", "10", "cancel"));
    release(60);
    EXPECT_THAT(told, ElementsAre("start", "10", "cancel")) << "the release finds nobody";
}

TEST_F(SliderControlTest, AnEditIsVoidWhenItsLengthIsLost)
{
    press(30);
    slider.setMaximumValue(0);
    EXPECT_EQ(told.constLast(), "cancel");
    release(30);
    EXPECT_EQ(told.constLast(), "cancel");
}

TEST_F(SliderControlTest, AHandThatIsTakenAwayWantsNothing)
{
    press(30);
    slider.ungrabMouse();
    EXPECT_EQ(told.constLast(), "cancel");
}

} // namespace
} // namespace brindle

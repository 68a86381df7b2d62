#pragma once

#include "screens/Surroundings.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStringList>

#include <gmock/gmock.h>

namespace brindle {

/// The island's views, seen and worked as assistive tools and hands do.
class ViewsTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        pinSurroundings();
        QAccessible::setActive(true);
    }

    /// Everything in the accessibility tree that is not hidden.
    QList<QAccessibleInterface *> accessibles()
    {
        QList<QAccessibleInterface *> result;
        collect(QAccessible::queryAccessibleInterface(&scene.window()), result);
        return result;
    }
    static void collect(QAccessibleInterface *from, QList<QAccessibleInterface *> &into)
    {
        for (int i = 0; from && i < from->childCount(); ++i) {
            into << from->child(i);
            collect(from->child(i), into);
        }
    }
    std::vector<std::string> names()
    {
        std::vector<std::string> result;
        for (const QAccessibleInterface *each : accessibles())
            result.push_back(each->text(QAccessible::Name).toStdString());
        return result;
    }
    QAccessibleInterface *named(const QString &name)
    {
        for (QAccessibleInterface *each : accessibles()) {
            if (each->text(QAccessible::Name) == name)
                return each;
        }
        return nullptr;
    }
    void press(const QString &name)
    {
        QAccessibleInterface *control = named(name);
        ASSERT_NE(control, nullptr) << name.toStdString();
        control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    void hover(QPointF position)
    {
        QMouseEvent event(QEvent::MouseMove, position, position, Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(&scene.window(), &event);
        scene.pass(0.1);
    }
    void leave()
    {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(&scene.window(), &event);
        scene.pass(0.1);
    }
    /// As when the island has opened and has the keyboard.
    void focusWindow()
    {
        QFocusEvent event(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(&scene.window(), &event);
    }
    void key(int code)
    {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, Qt::NoModifier);
            QCoreApplication::sendEvent(&scene.window(), &event);
        }
    }
    /// Where an element's middle is in the window.
    QPointF middleOf(QAccessibleInterface *element)
    {
        return QRectF(element->rect()).center() - QPointF(scene.window().position());
    }
    /// Frames that were asked for while time passes.
    int framesDuring(double seconds)
    {
        scene.content();
        int asked = 0;
        auto &control = scene.control();
        const auto count = [&asked] { ++asked; };
        const auto changed = QObject::connect(&control, &QQuickRenderControl::sceneChanged, &control, count);
        const auto wanted =
            QObject::connect(&control, &QQuickRenderControl::renderRequested, &control, count);
        int frames = 0;
        for (double passed = 0; passed < seconds; passed += 0.01) {
            scene.pass(0.01);
            frames += asked > 0;
            asked = 0;
            scene.content();
            asked = 0;
        }
        QObject::disconnect(changed);
        QObject::disconnect(wanted);
        return frames;
    }
    qsizetype waiting() const { return scene.session.platform.time.pendingCount(); }

    IslandScene scene;
};

} // namespace brindle

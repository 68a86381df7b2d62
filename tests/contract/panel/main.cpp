#include "support/x11/PrivateDisplay.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const brindle::test::PrivateDisplay display;
    if (!display.isRunning()) {
        std::fputs("no X server (package xvfb)\n", stderr);
        return 1;
    }
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

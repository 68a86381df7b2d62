#include "ui/SoftShadow.h"
#include "ui/SymbolImages.h"
#include "ui/Theme.h"

#include <QGuiApplication>
#include <QPainter>

#include <gtest/gtest.h>

namespace brindle {
namespace {

int inkOf(const QImage &image)
{
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ink += qAlpha(image.pixel(x, y));
    }
    return ink / 255;
}

TEST(Theme, TheSharedColoursAreTheirOwn)
{
    EXPECT_NEAR(Theme::secondary().alphaF(), 0.58, 1e-4);
    EXPECT_EQ(Theme::secondary().rgb(), QColor(Qt::white).rgb());
    EXPECT_NEAR(Theme::charging().redF(), 0.7, 1e-4);
    EXPECT_NEAR(Theme::charging().greenF(), 0.96, 1e-4);
    EXPECT_NEAR(Theme::charging().blueF(), 0.77, 1e-4);
    EXPECT_EQ(Theme::charging().alphaF(), 1);
}

TEST(Theme, TypeIsTheDesktopsInTheSizeAsked)
{
    const QFont font = Theme::font(11.5, QFont::DemiBold);
    EXPECT_EQ(font.family(), QGuiApplication::font().family());
    EXPECT_EQ(font.weight(), QFont::DemiBold);
    EXPECT_NEAR(QFontInfo(font).pixelSize(), 11.5, 0.6);
}

TEST(SymbolImages, AreDrawnInDevicePixels)
{
    const QImage image = SymbolImages::image(QStringLiteral("bolt.fill"), 12, 2, Qt::white);
    EXPECT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(image.deviceIndependentSize(), QSizeF(16, 16));
    EXPECT_GT(inkOf(image), 50);
}

TEST(SymbolImages, TakeTheColourAsked)
{
    const QImage image = SymbolImages::image(QStringLiteral("pause.fill"), 20, 2, QColor(10, 200, 30));
    bool seen = false;
    for (int x = 0; x < image.width(); ++x) {
        const QColor pixel = image.pixelColor(x, image.height() / 2);
        seen = seen || pixel == QColor(10, 200, 30);
    }
    EXPECT_TRUE(seen);
}

TEST(SymbolImages, AnUnknownNameIsNoPicture)
{
    EXPECT_TRUE(SymbolImages::image(QStringLiteral("no.such.symbol"), 12, 1, Qt::white).isNull());
    EXPECT_TRUE(SymbolImages::image(QString(), 12, 1, Qt::white).isNull());
}

TEST(SymbolImages, TheSameSymbolIsDrawnOnce)
{
    const QImage first = SymbolImages::image(QStringLiteral("gearshape"), 13, 1, Qt::white);
    const QImage second = SymbolImages::image(QStringLiteral("gearshape"), 13, 1, Qt::white);
    EXPECT_EQ(first.constBits(), second.constBits());
}

TEST(SymbolImages, AGlowReachesBeyondTheSymbol)
{
    const QImage plain = SymbolImages::image(QStringLiteral("battery.100percent"), 15, 1, Qt::white);
    const QImage glowing = SymbolImages::withGlow(plain, QColor(180, 240, 200, 61), 7);
    const int margin = SymbolImages::glowMargin(7);
    EXPECT_EQ(glowing.width(), plain.width() + 2 * margin);
    const int beside = qAlpha(glowing.pixel(margin - 2, glowing.height() / 2));
    EXPECT_GT(beside, 0);
    EXPECT_LT(beside, 62);
    EXPECT_EQ(qAlpha(glowing.pixel(0, 0)), 0);
}

TEST(SoftShadow, IsTheSameToBothSidesOfTheMiddle)
{
    const SoftShadow shadow(QList<double>(38, 116), 12, -12, 80, 0.25);
    for (const int row : {-10, 0, 19, 37, 60}) {
        for (const int x : {0, 40, 100, 115, 130, 150})
            EXPECT_EQ(shadow.alphaAt(x, row), shadow.alphaAt(-x - 1, row));
    }
}

TEST(SoftShadow, IsFullyDarkWithinAndGoneBeyondItsReach)
{
    const SoftShadow shadow(QList<double>(300, 400), 12, -12, 350, 0.42);
    EXPECT_NEAR(shadow.alphaAt(0, 150), 0.42 * 255, 1);
    EXPECT_NEAR(shadow.alphaAt(399, 150), 0.21 * 255, 4) << "half of it on the edge";
    EXPECT_EQ(shadow.alphaAt(440, 150), 0);
    EXPECT_EQ(shadow.alphaAt(0, 340), 0);
}

TEST(SoftShadow, FallsOffSteadily)
{
    const SoftShadow shadow(QList<double>(38, 116), 12, -12, 80, 0.25);
    for (int row = 20; row < 79; ++row)
        EXPECT_GE(shadow.alphaAt(0, row), shadow.alphaAt(0, row + 1));
    for (int x = 60; x < 150; ++x)
        EXPECT_GE(shadow.alphaAt(x, 20), shadow.alphaAt(x + 1, 20));
}

TEST(SoftShadow, OfNothingIsNothing)
{
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    SoftShadow().paint(painter, {10, 0});
    SoftShadow({}, 12, 0, 20, 1).paint(painter, {10, 0});
    SoftShadow(QList<double>(5, 0), 12, 0, 20, 1).paint(painter, {10, 0});
    EXPECT_EQ(inkOf(image), 0);
}

TEST(SoftShadow, IsPaintedAsItIsComputed)
{
    const SoftShadow shadow(QList<double>(38, 60), 12, -12, 80, 1);
    QImage image(240, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    shadow.paint(painter, {120, 12});
    for (const int x : {-100, -60, -30, -1, 0, 30, 59, 95})
        EXPECT_EQ(qAlpha(image.pixel(120 + x, 12 + 30)), shadow.alphaAt(x, 30)) << x;
}

} // namespace
} // namespace brindle

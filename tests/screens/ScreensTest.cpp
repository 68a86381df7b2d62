#include "screens/Surroundings.h"

#include <QDir>

#include <algorithm>
#include <gtest/gtest.h>

namespace brindle {

void PrintTo(const ScreenState &state, std::ostream *out)
{
    *out << state.name.constData();
}

namespace {

/// Pixels that a viewer would tell apart. Small differences at the edges of glyphs and curves are another
/// font renderer's.
qint64 differingPixels(const QImage &one, const QImage &other)
{
    constexpr int visible = 40;
    qint64 count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            const int difference = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                std::abs(qBlue(a) - qBlue(b))});
            count += difference > visible;
        }
    }
    return count;
}

class Screens : public testing::TestWithParam<ScreenState>
{
protected:
    static void SetUpTestSuite() { pinSurroundings(); }

    static void looksAsKept(int scale)
    {
        const QString name = fileNameOf(GetParam(), scale);
        const QString keptPath = QStringLiteral(BRINDLE_KEPT_DIR "/") + name;
        const QString drawnPath = QDir(QStringLiteral(BRINDLE_DRAWN_DIR)).filePath(name);
        const QImage drawn = pictureOf(GetParam(), scale);
        const QImage kept(keptPath);
        const qint64 allowed = qint64(40) * scale * scale;
        if (kept.size() == drawn.size() && differingPixels(kept, drawn) <= allowed)
            return;
        QDir().mkpath(QStringLiteral(BRINDLE_DRAWN_DIR));
        drawn.save(drawnPath);
        ADD_FAILURE() << "looks different\n  kept:  " << keptPath.toStdString()
                      << "\n  drawn: " << drawnPath.toStdString();
    }
};

TEST_P(Screens, LooksAsKeptAtScaleOne)
{
    looksAsKept(1);
}

TEST_P(Screens, LooksAsKeptAtScaleTwo)
{
    looksAsKept(2);
}

std::string nameOf(const testing::TestParamInfo<ScreenState> &info)
{
    std::string name = info.param.name.toStdString();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Island, Screens, testing::ValuesIn(allScreenStates()), nameOf);

} // namespace
} // namespace brindle

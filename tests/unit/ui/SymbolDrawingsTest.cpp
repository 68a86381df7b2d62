#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <QSvgRenderer>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kGrid = 24;
constexpr int kPixelsPerUnit = 10;
constexpr int kEdge = kPixelsPerUnit; // the outermost unit of the grid stays free

QDir symbolsFolder()
{
    return QDir(QStringLiteral(BRINDLE_SYMBOLS_DIR));
}

QStringList symbolNames()
{
    QStringList names = symbolsFolder().entryList({u"*.svg"_s}, QDir::Files, QDir::Name);
    for (QString &name : names) {
        name.chop(4);
    }
    return names;
}

QString fileOf(const QString &symbol)
{
    return symbolsFolder().filePath(symbol + u".svg"_s);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Only coverage is kept: the colour of a symbol is given when it is drawn.
QImage pictureOf(const QString &symbol)
{
    QSvgRenderer drawing(fileOf(symbol));
    QImage image(kGrid * kPixelsPerUnit, kGrid * kPixelsPerUnit, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter, QRectF(image.rect()));
    painter.end();
    return image.convertToFormat(QImage::Format_Alpha8);
}

struct Coverage
{
    double share = 0; // of the whole grid, 0 to 1
    bool touchesEdge = false;
};

Coverage coverageOf(const QImage &picture)
{
    const QRect live = picture.rect().adjusted(kEdge, kEdge, -kEdge, -kEdge);
    Coverage coverage;
    for (int y = 0; y < picture.height(); ++y) {
        const uchar *line = picture.constScanLine(y);
        for (int x = 0; x < picture.width(); ++x) {
            coverage.share += line[x] / 255.0;
            coverage.touchesEdge = coverage.touchesEdge || (line[x] != 0 && !live.contains(x, y));
        }
    }
    coverage.share /= picture.width() * picture.height();
    return coverage;
}

double shareThatDiffers(const QImage &a, const QImage &b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uchar *lineA = a.constScanLine(y);
        const uchar *lineB = b.constScanLine(y);
        for (int x = 0; x < a.width(); ++x) {
            sum += std::abs(lineA[x] - lineB[x]) / 255.0;
        }
    }
    return sum / (a.width() * a.height());
}

// The text literals of the sources that can only be meant as a symbol: what QML assigns to a property
// `symbol`, and dotted names that begin like a drawing that exists.
QHash<QString, QString> namesInSources()
{
    static const QRegularExpression assigned(uR"~(\bsymbol\s*:\s*"([^"]+)")~"_s);
    static const QRegularExpression dotted(uR"~("([a-z]+(?:\.[a-z0-9]+)+)")~"_s);
    static const QRegularExpression fileOrHost(u"\\.(com|json|png|svg)$"_s);
    QSet<QString> families;
    for (const QString &symbol : symbolNames()) {
        if (symbol.contains(u'.')) {
            families.insert(symbol.section(u'.', 0, 0));
        }
    }
    QHash<QString, QString> found;
    QDirIterator files(QStringLiteral(BRINDLE_SOURCE_DIR), {u"*.h"_s, u"*.cpp"_s, u"*.qml"_s}, QDir::Files,
        QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString text = QString::fromUtf8(contentOf(path));
        for (auto match = assigned.globalMatch(text); match.hasNext();) {
            found.insert(match.next().captured(1), path);
        }
        for (auto match = dotted.globalMatch(text); match.hasNext();) {
            const QString name = match.next().captured(1);
            if (families.contains(name.section(u'.', 0, 0)) && !name.contains(fileOrHost)) {
                found.insert(name, path);
            }
        }
    }
    return found;
}

TEST(SymbolDrawings, EachIsReadAndStandsOnTheOneGrid)
{
    ASSERT_FALSE(symbolNames().isEmpty());
    for (const QString &symbol : symbolNames()) {
        const QSvgRenderer drawing(fileOf(symbol));
        EXPECT_TRUE(drawing.isValid()) << symbol.toStdString();
        EXPECT_EQ(drawing.viewBoxF(), QRectF(0, 0, kGrid, kGrid)) << symbol.toStdString();
        EXPECT_EQ(drawing.defaultSize(), QSize(kGrid, kGrid)) << symbol.toStdString();
    }
}

TEST(SymbolDrawings, EachIsMadeOfPlainShapesInOneColour)
{
    static const QRegularExpression element(u"<([a-zA-Z]+)"_s);
    static const QRegularExpression paint(u"(?:fill|stroke)=\"([^\"]+)\""_s);
    const QSet<QString> shapes{u"svg"_s, u"path"_s, u"circle"_s, u"rect"_s};
    const QSet<QString> paints{u"#000"_s, u"none"_s};
    for (const QString &symbol : symbolNames()) {
        const QString text = QString::fromUtf8(contentOf(fileOf(symbol)));
        for (auto match = element.globalMatch(text); match.hasNext();) {
            EXPECT_TRUE(shapes.contains(match.next().captured(1))) << symbol.toStdString();
        }
        for (auto match = paint.globalMatch(text); match.hasNext();) {
            EXPECT_TRUE(paints.contains(match.next().captured(1))) << symbol.toStdString();
        }
    }
}

TEST(SymbolDrawings, EachFillsSomeOfTheGridAndLeavesItsEdgeFree)
{
    for (const QString &symbol : symbolNames()) {
        const Coverage coverage = coverageOf(pictureOf(symbol));
        EXPECT_GT(coverage.share, 0.05) << symbol.toStdString();
        EXPECT_LT(coverage.share, 0.75) << symbol.toStdString();
        EXPECT_FALSE(coverage.touchesEdge) << symbol.toStdString();
    }
}

TEST(SymbolDrawings, NoTwoShowTheSamePicture)
{
    const QStringList names = symbolNames();
    std::vector<QImage> pictures;
    for (const QString &symbol : names) {
        pictures.push_back(pictureOf(symbol));
    }
    for (std::size_t a = 0; a < pictures.size(); ++a) {
        for (std::size_t b = a + 1; b < pictures.size(); ++b) {
            EXPECT_GT(shareThatDiffers(pictures[a], pictures[b]), 0.01)
                << names.at(static_cast<int>(a)).toStdString() << " and "
                << names.at(static_cast<int>(b)).toStdString();
        }
    }
}

TEST(SymbolDrawings, EveryNameInTheSourcesHasItsDrawing)
{
    const QHash<QString, QString> names = namesInSources();
    for (auto name = names.cbegin(); name != names.cend(); ++name) {
        EXPECT_TRUE(QFile::exists(fileOf(name.key())))
            << name.key().toStdString() << ", named in " << name.value().toStdString()
            << ", has no file in resources/symbols";
    }
}

} // namespace

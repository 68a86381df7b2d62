// Draws every symbol of the program on one sheet, at the sizes in use, so that a person can look at them
// together.
//
// Usage: brindle_symbol_sheet <output folder>. Writes symbols-1x.png and symbols-2x.png there.

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

#include <array>

namespace {

constexpr std::array kSizes{9, 12, 16, 20, 28};
constexpr int kGap = 12;
constexpr int kCellWidth = 208;
constexpr int kCellHeight = 64;
constexpr int kColumns = 6;
constexpr int kMargin = 16;

// The files are black; what is seen is their coverage in the colour of the moment, here white.
QImage tinted(QSvgRenderer &drawing, int size, int scale)
{
    QImage image(size * scale, size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter, QRectF(image.rect()));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), Qt::white);
    painter.end();
    image.setDevicePixelRatio(scale);
    return image;
}

void drawCell(QPainter &painter, const QPoint &origin, const QFileInfo &file, int scale)
{
    QSvgRenderer drawing(file.filePath());
    int x = origin.x();
    for (const int size : kSizes) {
        painter.drawImage(QPoint(x, origin.y() + (kSizes.back() - size) / 2), tinted(drawing, size, scale));
        x += size + kGap;
    }
    painter.setPen(QColor(255, 255, 255, 148));
    painter.drawText(QPoint(origin.x(), origin.y() + kSizes.back() + 14), file.completeBaseName());
}

QImage sheet(const QFileInfoList &files, int scale)
{
    const int rows = (static_cast<int>(files.size()) + kColumns - 1) / kColumns;
    const QSize size(2 * kMargin + kColumns * kCellWidth, 2 * kMargin + rows * kCellHeight);
    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    QPainter painter(&image);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(10);
    painter.setFont(font);
    for (int index = 0; index < files.size(); ++index) {
        const QPoint origin(
            kMargin + index % kColumns * kCellWidth, kMargin + index / kColumns * kCellHeight);
        drawCell(painter, origin, files.at(index), scale);
    }
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QTextStream errors(stderr);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        errors << "usage: brindle_symbol_sheet <output folder>\n";
        return 2;
    }
    const QDir symbols(QStringLiteral(BRINDLE_SYMBOLS_DIR));
    const QFileInfoList files = symbols.entryInfoList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    if (files.isEmpty() || !QDir().mkpath(arguments.at(1))) {
        errors << "no symbols in " << symbols.path() << ", or no folder " << arguments.at(1) << "\n";
        return 1;
    }
    for (const int scale : {1, 2}) {
        const QString path = QStringLiteral("%1/symbols-%2x.png").arg(arguments.at(1)).arg(scale);
        if (!sheet(files, scale).save(path)) {
            errors << "cannot write " << path << "\n";
            return 1;
        }
    }
    return 0;
}

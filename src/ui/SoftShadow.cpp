#include "ui/SoftShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace brindle {
namespace {

using Row = std::vector<float>;

// One row of a blurred bar of half width `half`: how much of the bar each of the points -outer … -inner sees.
Row blurredBar(double half, double sigma, int outer, int inner)
{
    Row row(std::size_t(outer - inner), 0.0F);
    const double scale = 1 / (sigma * std::numbers::sqrt2);
    for (std::size_t i = 0; half > 0 && i < row.size(); ++i) {
        const double x = outer - double(i) - 0.5;
        row[i] = float(0.5 * (std::erf((half - x) * scale) + std::erf((half + x) * scale)));
    }
    return row;
}

// Each row becomes the mean of itself and `reach` rows on either side; three such passes are near to a
// Gaussian.
void averageRows(std::vector<Row> &rows, int reach)
{
    const int count = int(rows.size());
    const float share = 1.0F / float(2 * reach + 1);
    Row sum(rows.front().size(), 0.0F);
    std::vector<Row> result(rows.size(), sum);
    const auto add = [&](int row, float sign) {
        if (row < 0 || row >= count)
            return;
        for (std::size_t i = 0; i < sum.size(); ++i)
            sum[i] += sign * rows[std::size_t(row)][i];
    };
    for (int row = 0; row < reach; ++row)
        add(row, 1);
    for (int row = 0; row < count; ++row) {
        add(row + reach, 1);
        add(row - reach - 1, -1);
        for (std::size_t i = 0; i < sum.size(); ++i)
            result[std::size_t(row)][i] = sum[i] * share;
    }
    rows.swap(result);
}

// The half width of the box whose threefold average has this standard deviation.
int boxReach(double sigma)
{
    return std::max(1, int(std::lround((std::sqrt(4 * sigma * sigma + 1) - 1) / 2)));
}

} // namespace

SoftShadow::SoftShadow(
    const QList<double> &halfWidths, double sigma, int firstRow, int endRow, double opacity)
    : m_firstRow(firstRow)
{
    const int margin = int(std::ceil(3 * sigma));
    const int reach = boxReach(sigma);
    const auto [least, greatest] = std::minmax_element(halfWidths.begin(), halfWidths.end());
    if (halfWidths.isEmpty() || *greatest <= 0 || endRow <= firstRow)
        return;
    m_outer = int(std::ceil(*greatest)) + margin;
    m_inner = std::max(0, int(std::floor(*least)) - margin);

    // Room for three averages above and below, where the silhouette has no rows.
    const int padding = 3 * reach;
    const Row nothing(std::size_t(m_outer - m_inner), 0.0F);
    std::vector<Row> rows(std::size_t(halfWidths.size() + qsizetype(2) * padding), nothing);
    double lastHalf = -1;
    for (qsizetype i = 0; i < halfWidths.size(); ++i) {
        const auto at = std::size_t(i + padding);
        rows[at] =
            halfWidths[i] == lastHalf ? rows[at - 1] : blurredBar(halfWidths[i], sigma, m_outer, m_inner);
        lastHalf = halfWidths[i];
    }
    for (int pass = 0; pass < 3; ++pass)
        averageRows(rows, reach);

    m_flank = QImage(m_outer - m_inner, endRow - firstRow, QImage::Format_ARGB32_Premultiplied);
    m_flank.fill(Qt::transparent);
    for (int row = firstRow; row < endRow; ++row) {
        const int from = row + padding;
        if (from < 0 || from >= int(rows.size()))
            continue;
        auto *pixels = reinterpret_cast<QRgb *>(m_flank.scanLine(row - firstRow));
        for (int i = 0; i < m_flank.width(); ++i) {
            const float dark = rows[std::size_t(from)][std::size_t(i)] * float(opacity);
            pixels[i] = qRgba(0, 0, 0, int(std::lround(std::clamp(dark, 0.0F, 1.0F) * 255)));
        }
    }
}

int SoftShadow::alphaAt(int x, int row) const
{
    const int distance = x < 0 ? -x - 1 : x;
    if (m_flank.isNull() || distance >= m_outer || row < m_firstRow || row >= m_firstRow + m_flank.height())
        return 0;
    return qAlpha(m_flank.pixel(std::min(m_outer - 1 - distance, m_flank.width() - 1), row - m_firstRow));
}

void SoftShadow::paint(QPainter &painter, QPointF topCentre) const
{
    if (m_flank.isNull())
        return;
    painter.save();
    painter.translate(topCentre);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QPointF(-m_outer, m_firstRow), m_flank);
    painter.drawImage(QPointF(m_inner, m_firstRow), m_flank.mirrored(true, false));
    for (int y = 0; m_inner > 0 && y < m_flank.height(); ++y) {
        const int dark = qAlpha(m_flank.pixel(m_flank.width() - 1, y));
        painter.fillRect(QRectF(-m_inner, m_firstRow + y, 2 * m_inner, 1), QColor(0, 0, 0, dark));
    }
    painter.restore();
}

} // namespace brindle

#include "SalesChart.h"

#include "inventory/SalesSummary.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace marlet::host {

namespace {

constexpr int chartHeight = 420;
constexpr int margin = 60;
constexpr int barWidth = 48;
constexpr int barGap = 16;

QString amount(double value)
{
    return QString::number(value, 'f', 2);
}

void drawChart(QImage& image, const SalesSummary& summary)
{
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(image.rect(), Qt::white);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    painter.setFont(font);
    const int plotTop = margin;
    const int plotBottom = image.height() - margin;
    const int plotHeight = plotBottom - plotTop;
    double highest = 0;
    for (const SalesLine& line : summary.days)
        highest = std::max(highest, line.money);
    painter.setPen(Qt::black);
    painter.drawText(QRect(0, 10, image.width(), 30), Qt::AlignCenter, QStringLiteral("Money per day"));
    painter.drawLine(margin, plotBottom, image.width() - margin / 2, plotBottom);
    painter.drawLine(margin, plotTop, margin, plotBottom);
    int x = margin + barGap;
    for (auto day = summary.days.cbegin(); day != summary.days.cend(); ++day, x += barWidth + barGap) {
        const int height = highest > 0 ? int(plotHeight * day.value().money / highest) : 0;
        const QRect bar(x, plotBottom - height, barWidth, height);
        painter.fillRect(bar, QColor(0x2e, 0x6d, 0xb4));
        painter.drawText(QRect(x - barGap / 2, plotBottom - height - 20, barWidth + barGap, 18),
            Qt::AlignCenter,
            amount(day.value().money));
        painter.drawText(QRect(x - barGap / 2, plotBottom + 4, barWidth + barGap, 18),
            Qt::AlignCenter,
            day.key().toString(QStringLiteral("dd MMM")));
    }
    if (summary.days.isEmpty())
        painter.drawText(image.rect(), Qt::AlignCenter, QStringLiteral("No sales in this period"));
}

} // namespace

std::unique_ptr<QCoreApplication> pictureApplication(int& argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

bool writeSalesChart(const SalesSummary& summary, const QString& file, QString& error)
{
    const int width = std::max(480, 2 * margin + int(summary.days.size()) * (barWidth + barGap) + barGap);
    QImage image(width, chartHeight, QImage::Format_RGB32);
    drawChart(image, summary);
    if (!image.save(file, "PNG")) {
        error = QStringLiteral("cannot write the chart to %1").arg(file);
        return false;
    }
    return true;
}

} // namespace marlet::host

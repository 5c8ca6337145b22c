#include "TextTestSupport.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

void SaveChainPicture(const TextCharacter* chain, const std::string& fileName) {
    float width = 0, yMin = 0, yMax = 1;
    for (const TextCharacter* c = chain; c; c = c->next) {
        width += std::max(c->advance, c->xMax);
        yMin = std::min(yMin, c->yMin);
        yMax = std::max(yMax, c->yMax);
    }
    const float scale = 120.0f, margin = 20.0f;
    QImage image(int(width * scale + 2 * margin) + 1, int((yMax - yMin) * scale + 2 * margin) + 1,
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    float pen = 0;
    auto toImage = [&](float x, float y) {
        return QPointF(margin + (pen + x) * scale, margin + (yMax - y) * scale);
    };
    auto addPolygon = [&](QPainterPath& path, const float* points, std::uint32_t count) {
        for (std::uint32_t i = 0; i < count; ++i) {
            const QPointF p = toImage(points[2 * i], points[2 * i + 1]);
            if (i == 0)
                path.moveTo(p);
            else
                path.lineTo(p);
        }
        path.closeSubpath();
    };
    for (const TextCharacter* c = chain; c; c = c->next) {
        for (const OuterContour* outer = c->contours; outer; outer = outer->next) {
            QPainterPath path;
            path.setFillRule(Qt::OddEvenFill);
            addPolygon(path, outer->points, outer->count);
            for (const HoleContour* hole = outer->holes; hole; hole = hole->next)
                addPolygon(path, hole->points, hole->count);
            painter.fillPath(path, QColor(150, 180, 230));
            painter.setPen(QPen(QColor(20, 40, 120), 1.0));
            painter.drawPath(path);
            // Points that subdivision added are drawn red, outline points black.
            auto dots = [&](const float* points, const std::uint8_t* smooth, std::uint32_t n) {
                for (std::uint32_t i = 0; i < n; ++i) {
                    painter.setPen(Qt::NoPen);
                    painter.setBrush(smooth[i] ? QColor(220, 30, 30) : QColor(0, 0, 0));
                    painter.drawEllipse(toImage(points[2 * i], points[2 * i + 1]), 1.6, 1.6);
                }
            };
            dots(outer->points, outer->smooth, outer->count);
            for (const HoleContour* hole = outer->holes; hole; hole = hole->next)
                dots(hole->points, hole->smooth, hole->count);
            painter.setBrush(Qt::NoBrush);
        }
        painter.setPen(QPen(QColor(0, 160, 0), 1.0, Qt::DashLine));
        painter.drawLine(toImage(0, 0), toImage(c->advance, 0));
        pen += c->advance;
    }
    painter.end();
    image.save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + fileName));
}

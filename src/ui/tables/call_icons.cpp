// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The shapes are drawn, not stored as pictures, so they are sharp at any scale and take any colour.
// They differ in outline and filling, and can be told apart in grey. Tested by
// result_tones_test.cpp.
#include "ui/tables/call_icons.h"

#include <QCoreApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace ui {
namespace {

/// Shapes are drawn in a square of this many units and scaled to the icon's rectangle.
constexpr qreal kUnits = 16.0;

QPolygonF diamond() {
    return QPolygonF({{8.0, 1.5}, {14.5, 8.0}, {8.0, 14.5}, {1.5, 8.0}});
}

void drawHalfDiamond(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(diamond());
    painter.setBrush(painter.pen().color());
    painter.drawPolygon(QPolygonF({{8.0, 1.5}, {8.0, 14.5}, {1.5, 8.0}}));
}

void drawQuestionDiamond(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(diamond());
    QPainterPath mark(QPointF(6.0, 6.6));
    mark.cubicTo(6.0, 3.6, 10.2, 3.8, 10.0, 6.6);
    mark.cubicTo(9.9, 7.8, 8.0, 7.8, 8.0, 9.4);
    painter.drawPath(mark);
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(QPointF(8.0, 11.6), 0.3, 0.3);
}

void drawShape(QPainter& painter, CallShape shape) {
    switch (shape) {
    case CallShape::triangle:
        painter.drawPolygon(QPolygonF({{8.0, 2.0}, {14.5, 13.5}, {1.5, 13.5}}));
        break;
    case CallShape::circle:
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QRectF(2.5, 2.5, 11.0, 11.0));
        break;
    case CallShape::square:
        painter.drawRect(QRectF(2.5, 2.5, 11.0, 11.0));
        break;
    case CallShape::questionDiamond:
        drawQuestionDiamond(painter);
        break;
    case CallShape::hollowDiamond:
        painter.setBrush(Qt::NoBrush);
        painter.drawPolygon(diamond());
        break;
    case CallShape::halfDiamond:
        drawHalfDiamond(painter);
        break;
    case CallShape::filledDiamond:
        painter.drawPolygon(diamond());
        break;
    case CallShape::hollowSquare:
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(2.5, 2.5, 11.0, 11.0));
        break;
    case CallShape::none:
        break;
    }
}

class CallIconEngine : public QIconEngine {
public:
    CallIconEngine(CallShape shape, const QColor& colour, const QColor& selected)
        : m_shape(shape), m_colour(colour), m_selected(selected) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QColor colour = mode == QIcon::Selected ? m_selected : m_colour;
        const int side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center() + QPointF(0.5, 0.5) - QPointF(side, side) / 2.0);
        painter->scale(side / kUnits, side / kUnits);
        painter->setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(colour);
        drawShape(*painter, m_shape);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new CallIconEngine(*this); }

private:
    CallShape m_shape;
    QColor m_colour;
    QColor m_selected;
};

QString shapeWords(const char* words) {
    return QCoreApplication::translate("ui::CallShape", words);
}

} // namespace

QString wordsOf(CallShape shape) {
    switch (shape) {
    case CallShape::triangle:
        return shapeWords("Finding");
    case CallShape::circle:
        return shapeWords("Nothing found");
    case CallShape::square:
        return shapeWords("Control not working");
    case CallShape::questionDiamond:
        return shapeWords("Not decided");
    case CallShape::hollowDiamond:
        return shapeWords("Both alleles wild type");
    case CallShape::halfDiamond:
        return shapeWords("One allele mutant");
    case CallShape::filledDiamond:
        return shapeWords("Both alleles mutant");
    case CallShape::hollowSquare:
        return shapeWords("Not assessable");
    case CallShape::none:
        break;
    }
    return {};
}

QIcon callIcon(CallShape shape, const QColor& colour, const QColor& selected) {
    return shape == CallShape::none ? QIcon() : QIcon(new CallIconEngine(shape, colour, selected));
}

} // namespace ui

// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSet>
#include <QTextEdit>
#include <QtTest>

/// What a screen reader and a keyboard find in a window. Each function gives the controls that
/// fail, named, so that a test compares with the empty list and its message says which.
namespace support {

/// Whether a person works with the widget or reads a value from it. Parts that the toolkit makes
/// for itself (the corner of a table, the arrows of a spin box) are the toolkit's to name.
inline bool isControl(const QWidget& widget) {
    const bool internal = widget.objectName().startsWith(QStringLiteral("qt_")) ||
                          QByteArray(widget.metaObject()->className()) == "QTableCornerButton" ||
                          qobject_cast<const QHeaderView*>(&widget) != nullptr ||
                          qobject_cast<const QScrollBar*>(&widget) != nullptr;
    const bool control = qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
                         qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
                         qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
                         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
                         qobject_cast<const QComboBox*>(&widget) != nullptr ||
                         qobject_cast<const QLineEdit*>(&widget) != nullptr ||
                         qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
                         qobject_cast<const QProgressBar*>(&widget) != nullptr ||
                         qobject_cast<const QTextEdit*>(&widget) != nullptr;
    return control && !internal;
}

inline QList<QWidget*> controlsOf(const QWidget& window) {
    QList<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (isControl(*widget)) {
            controls.append(widget);
        }
    }
    return controls;
}

inline QString accessibleText(QWidget& widget, QAccessible::Text kind) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
    return interface == nullptr ? QString() : interface->text(kind);
}

inline QString nameForTests(const QWidget& widget) {
    return QString::fromLatin1(widget.metaObject()->className()) + QLatin1Char(' ') +
           widget.objectName();
}

/// Controls that a screen reader could only call "button" or "text".
inline QStringList controlsWithoutName(const QWidget& window) {
    QStringList missing;
    for (QWidget* control : controlsOf(window)) {
        if (accessibleText(*control, QAccessible::Name).trimmed().isEmpty()) {
            missing.append(nameForTests(*control));
        }
    }
    return missing;
}

/// Controls of the class `Control` without an accessible description: for kinds whose name alone
/// does not say what they do.
template <class Control>
QStringList controlsWithoutDescription(const QWidget& window) {
    QStringList missing;
    for (QWidget* control : controlsOf(window)) {
        if (qobject_cast<Control*>(control) != nullptr &&
            accessibleText(*control, QAccessible::Description).trimmed().isEmpty()) {
            missing.append(nameForTests(*control));
        }
    }
    return missing;
}

/// Controls in use that Tab never comes to. REQUIRES: the window is active.
inline QStringList controlsThatTabMisses(QWidget& window) {
    QSet<const QWidget*> reached;
    const auto steps = window.findChildren<QWidget*>().size() + 1;
    for (int step = 0; step < steps; ++step) {
        reached.insert(QApplication::focusWidget());
        QWidget* focus = window.focusWidget() == nullptr ? &window : window.focusWidget();
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    QStringList missed;
    for (const QWidget* control : controlsOf(window)) {
        const bool inUse = control->isVisible() && control->isEnabled() &&
                           qobject_cast<const QProgressBar*>(control) == nullptr;
        if (inUse && !reached.contains(control)) {
            missed.append(nameForTests(*control));
        }
    }
    return missed;
}

} // namespace support

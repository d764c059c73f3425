// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <clocale>
#include <memory>
#include <stdexcept>

#include <QMessageBox>
#include <QtTest>

#include "ui/application/vexta_application.h"
#include "ui/window_test.h"

namespace {

QMessageBox* failureBox() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QStringLiteral("failureBox") && widget->isVisible()) {
            return qobject_cast<QMessageBox*>(widget);
        }
    }
    return nullptr;
}

} // namespace

/// One application object for all tests: a process adopts the user's locale only once.
class VextaApplicationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        qputenv("LC_ALL", "de_DE.UTF-8");
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        m_application = std::make_unique<ui::VextaApplication>(argc, argv);
    }

    void attentionIsNeverAskedFor() {
        using Attention = ui::VextaApplication::UserAttention;
        QCOMPARE(m_application->requestUserAttention(Attention::critical), 1957);
        QCOMPARE(m_application->requestUserAttention(Attention::informational), 1957);
    }

    void anExceptionIsToldAndTheProgramGoesOn() {
        QObject receiver;
        bool wentOn = false;
        QMetaObject::invokeMethod(
            &receiver, [] { throw std::runtime_error("<b>no memory</b>"); }, Qt::QueuedConnection);
        QMetaObject::invokeMethod(
            &receiver, [&wentOn] { wentOn = true; }, Qt::QueuedConnection);
        QTRY_VERIFY(failureBox() != nullptr);
        QVERIFY(wentOn);
        QVERIFY(!failureBox()->isModal());
        QCOMPARE(failureBox()->textFormat(), Qt::PlainText);
        QVERIFY(failureBox()->informativeText().endsWith(QStringLiteral("<b>no memory</b>")));
        failureBox()->close();
        QTRY_VERIFY(failureBox() == nullptr);
    }

    void numbersStayUnderTheCLocaleInAGermanSession() {
        QCOMPARE(std::setlocale(LC_CTYPE, nullptr), "de_DE.UTF-8");
        QCOMPARE(std::setlocale(LC_NUMERIC, nullptr), "C");
    }

private:
    std::unique_ptr<ui::VextaApplication> m_application;
};

WINDOW_TEST(VextaApplicationTest, support::NoApplication)
#include "vexta_application_test.moc"

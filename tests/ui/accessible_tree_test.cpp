// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/accessible_tree.h"
#include "ui/window_test.h"

class AccessibleTreeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aControlWithoutANameIsFound() {
        QWidget window;
        auto* rows = new QVBoxLayout(&window);
        auto* nameless = new QLineEdit;
        nameless->setObjectName(QStringLiteral("nameless"));
        rows->addWidget(nameless);
        QCOMPARE(support::controlsWithoutName(window),
                 QStringList{QStringLiteral("QLineEdit nameless")});
        QCOMPARE(support::controlsWithoutDescription<QLineEdit>(window).size(), 1);
    }

    void aLabelsBuddyHasItsName() {
        QWidget window;
        auto* rows = new QVBoxLayout(&window);
        auto* field = new QLineEdit;
        auto* label = new QLabel(QStringLiteral("&Threshold"));
        label->setBuddy(field);
        rows->addWidget(label);
        rows->addWidget(field);
        QCOMPARE(support::controlsWithoutName(window), QStringList());
    }

    void aControlThatTabMissesIsFound() {
        QWidget window;
        auto* rows = new QVBoxLayout(&window);
        auto* reached = new QPushButton(QStringLiteral("reached"));
        auto* missed = new QPushButton(QStringLiteral("missed"));
        missed->setObjectName(QStringLiteral("missed"));
        missed->setFocusPolicy(Qt::NoFocus);
        rows->addWidget(reached);
        rows->addWidget(missed);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(support::controlsThatTabMisses(window),
                 QStringList{QStringLiteral("QPushButton missed")});
    }
};

WINDOW_TEST(AccessibleTreeTest, QApplication)
#include "accessible_tree_test.moc"

// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include "ui/application/qt_ports.h"
#include "ui/window_test.h"

namespace {

/// What a person saw of the box, taken while it was open.
struct SeenBox {
    QString text;
    QString informativeText;
    QStringList buttons;
    bool allPlain = true;
    int labels = 0;
};

/// Looks at the box that opens next and presses `key` in it.
void answerNextBox(SeenBox& seen, Qt::Key key) {
    QTimer::singleShot(0, qApp, [&seen, key] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            answerNextBox(seen, key);
            return;
        }
        seen.text = box->text();
        seen.informativeText = box->informativeText();
        for (const QAbstractButton* button : box->buttons()) {
            seen.buttons.append(button->text());
        }
        for (const QLabel* label : box->findChildren<QLabel*>()) {
            seen.allPlain = seen.allPlain && label->textFormat() == Qt::PlainText;
            ++seen.labels;
        }
        QTest::keyClick(box, key);
    });
}

/// Deletes the window as soon as a box is above it.
void deleteUnderNextBox(std::unique_ptr<QWidget>& window) {
    QTimer::singleShot(0, qApp, [&window] {
        if (QApplication::activeModalWidget() == nullptr) {
            deleteUnderNextBox(window);
        } else {
            window.reset();
        }
    });
}

} // namespace

class MessageAlertsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAlertHasOneButtonOk() {
        SeenBox seen;
        answerNextBox(seen, Qt::Key_Return);
        ui::MessageAlerts().showAlert("Files are not paired or incompatible.", "");
        QCOMPARE(seen.text, QStringLiteral("Files are not paired or incompatible."));
        QCOMPARE(seen.informativeText, QString());
        QCOMPARE(seen.buttons, QStringList{QStringLiteral("OK")});
    }

    void escapeClosesTheAlert() {
        SeenBox seen;
        answerNextBox(seen, Qt::Key_Escape);
        ui::MessageAlerts().showAlert("Patient 2 has unpaired fastq file.", "");
        QCOMPARE(seen.text, QStringLiteral("Patient 2 has unpaired fastq file."));
    }

    void anAlertWhoseWindowGoesIsOver() {
        auto window = std::make_unique<QWidget>();
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        deleteUnderNextBox(window);
        ui::MessageAlerts().showAlert("Files are not paired or incompatible.", "");
        QVERIFY(!window);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void textsThatLookLikeHtmlAreShownAsTheyStand() {
        SeenBox seen;
        answerNextBox(seen, Qt::Key_Return);
        ui::MessageAlerts().showAlert("<b>bold</b>_S1_R1_001.fastq", "<img src=x>");
        QCOMPARE(seen.text, QStringLiteral("<b>bold</b>_S1_R1_001.fastq"));
        QVERIFY(seen.labels >= 2);
        QVERIFY(seen.allPlain);
    }
};

WINDOW_TEST(MessageAlertsTest, QApplication)
#include "message_alerts_test.moc"
